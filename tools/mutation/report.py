"""What the runs of tools/mutants found, as a page."""
from collections import Counter, defaultdict

HEAD = """# Changes that no test notices

`tools/mutants` changes the sources in one place at a time (a comparison, a constant, the order of two statements, a dropped
statement or check), builds, and runs the tests of the folder. A change that they do not notice has survived: it is either a
test more or a line less. This page is what `tools/mutants --report` wrote of the last runs; nothing of it is computed.

"""


def latest(results):
    """The last result of each change, and the first."""
    first, last = {}, {}
    for each in results:
        key = (each["path"], each["was"], each["now"], each["seed"])
        first.setdefault(key, each)
        last[key] = each
    return first, last


def table(first, last):
    rows = defaultdict(Counter)
    for key, each in last.items():
        folder = each["path"].rpartition("/")[0]
        if each["fate"] != "passed over":
            rows[folder]["tried"] += 1
            rows[folder]["killed at first"] += first[key]["fate"] == "killed"
            rows[folder]["killed now"] += each["fate"] in ("killed", "line gone")
    total = sum(rows.values(), Counter())
    lines = ["| Folder | Changes | Killed at first | Killed now |", "|---|---:|---:|---:|"]
    for folder, row in [*sorted(rows.items()), ("all", total)]:
        share = 100 * row["killed now"] / row["tried"] if row["tried"] else 0
        lines.append(f"| {folder} | {row['tried']} | {row['killed at first']} | {row['killed now']} ({share:.0f} of 100) |")
    return "\n".join(lines)


def survivors(last):
    lines = []
    for each in sorted(last.values(), key=lambda one: (one["path"], one["line"])):
        if each["fate"] == "survived":
            now = f"`{each['now']}`" if each["now"] else "nothing"
            lines.append(f"- {each['path']}:{each['line']} ({each['kind']}): `{each['was']}` became {now}")
    return "\n".join(lines) or "None."


def report(results):
    first, last = latest(results)
    seeds = ", ".join(str(seed) for seed in sorted({each["seed"] for each in results}))
    passed = sum(each["fate"] == "passed over" for each in last.values())
    return (f"{HEAD}Seeds: {seeds}. {passed} more changes were passed over: the compiler refused them, or made the same "
            f"code of them.\n\n{table(first, last)}\n\n## Survived\n\n{survivors(last)}\n")
