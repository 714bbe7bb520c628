"""What the runs of tools/mutants found, as a page."""
import json
from collections import Counter, defaultdict
from pathlib import Path

from mutation.unseen import UNSEEN

HEAD = """# Changes that no test notices

`tools/mutants` changes the sources in one place at a time (a comparison, a constant, the order of two statements, a dropped
statement or check), builds, and runs the tests of the folder. A change that they do not notice has survived: it is either a
test more or a line less. This page is what the runs that were made have found; headers were not
tried. "At first" is before the survivors were looked at, "now" with the tests that came of them: only the first
says what a change elsewhere would meet. "Of no effect" is what nobody could notice, or what is a matter of taste, such as a pixel
of a place; the reason stands beside each.

    tools/mutants --seed 2 --count 400                                       places spread over all folders
    tools/mutants --seed 2 --folder import/ui --meeting 'import|progress'    a folder of windows, with tests of the main window
    tools/mutants --again                                                    the survivors, against the tests as they are now
    tools/mutants --report                                                   this page, of what stands in tools/mutation

The floors without windows met the tests of their own folder. The windows' folders met theirs and those tests of the main window that
open them, `core/ui` all of its own; half of seed 1 met its own folder's alone at first. Eight changes of seed 1 in each of the twelve
lower folders, eleven in `document`, were tried by an earlier state of the program, and stand in the table by their numbers. A test
that takes too long counts as one that fails; since the changes of `app` a test has to fail twice.

"""
# Of runs whose single results are not there any more.
EARLIER = json.loads((Path(__file__).parent / "earlier.json").read_text())


def latest(results):
    """The first and the last result of each change that was tried."""
    first, last = {}, {}
    for each in results:
        if each["fate"] != "passed over":
            key = (each["path"], each["was"], each["now"], each["seed"])
            first.setdefault(key, each)
            last[key] = each
    return first, last


def why_unseen(each):
    return UNSEEN.get((each["path"], each["was"], each["now"]))


def table(first, last):
    rows = defaultdict(Counter, {folder: Counter(row) for folder, row in EARLIER["folders"].items()})
    for key, each in last.items():
        row = rows[each["path"].rpartition("/")[0]]
        row["tried"] += 1
        row["killed at first"] += first[key]["fate"] == "killed"
        row["killed now"] += each["fate"] in ("killed", "line gone")
        row["unseen"] += each["fate"] == "survived" and why_unseen(each) is not None
    total = sum(rows.values(), Counter())
    lines = ["| Folder | Changes | Killed at first | Killed or gone now | Of no effect |", "|---|---:|---:|---:|---:|"]
    for folder, row in [*sorted(rows.items()), ("all", total)]:
        lines.append(f"| {folder} | {row['tried']} | {row['killed at first']} | {row['killed now']} | {row['unseen']} |")
    effective = max(total["tried"] - total["unseen"], 1)
    share = 100 * total["killed now"] / effective
    before = 100 * total["killed at first"] / effective
    lines.append(f"\n{total['tried']} changes in {len(rows)} folders. Of those that have an effect, {before:.0f} of 100 were killed at "
                 f"first and {share:.1f} are now.")
    return "\n".join(lines)


def told(each, why=""):
    now = f"`{each['now']}`" if each["now"] else "nothing"
    return f"- {each['path']}:{each['line']} ({each['kind']}): `{each['was']}` became {now}{why}"


def survivors(last):
    alive = sorted((each for each in last.values() if each["fate"] == "survived"), key=lambda one: (one["path"], one["line"]))
    seen = [told(each) for each in alive if not why_unseen(each)]
    unseen = sorted({told(each, ": " + why_unseen(each)) for each in alive if why_unseen(each)} | set(EARLIER["of no effect"]))
    return f"## Survived\n\n{chr(10).join(seen) or 'None.'}\n\n## Of no effect\n\n{chr(10).join(unseen) or 'None.'}\n"


def report(results):
    first, last = latest(results)
    seeds = " and ".join(str(seed) for seed in sorted({each["seed"] for each in results}))
    passed = EARLIER["passed over"] + sum(each["fate"] == "passed over" for each in results)
    return (f"{HEAD}Seeds {seeds}. {passed} more changes were passed over: the compiler refused them, or made the same code of "
            f"them.\n\n{table(first, last)}\n\n{survivors(last)}")
