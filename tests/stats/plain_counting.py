#!/usr/bin/env python3
"""Counts a log once more, as plainly as it can be told, and says where the program counted otherwise.

    plain_counting.py DUMP

DUMP is a JSON file: "log" are the receptions, "counted" is what the program made of them. Prints a line for
each table that differs; the exit code says whether there is one.
"""
import datetime
import json
import sys

MODES = ["Es", "Tropo", "MS", "TEP", "Aur", "F2", "FAI", "Other"]
EPOCH = datetime.datetime(1970, 1, 1)


def number(text):
    """The number in a field above 0, or None."""
    try:
        value = float(text.strip().replace(",", "."))
    except ValueError:
        return None
    return value if value > 0 else None


def kilometres(entry, in_miles):
    value = number(entry["dist"])
    if value is None:
        return 0
    return round(value * 1.6093, 1) if in_miles else value


def mode(entry):
    return entry["prop"] if entry["prop"] in MODES[:-1] else "Other"


def moment(entry):
    return EPOCH + datetime.timedelta(seconds=entry["seconds"])


def has_country(entry):
    return entry["country"] not in ("", "TBD")


def station(entry):
    if entry["pi"]:
        return ("pi", entry["pi"], entry["site"], entry["country"])
    if entry["name"]:
        return ("name", entry["name"], entry["site"], entry["country"])
    return None


def tally(entries):
    return {
        "count": len(entries),
        "farthest": max((e["km"] for e in entries), default=0),
        "first": min((e["seconds"] for e in entries), default=0),
        "last": max((e["seconds"] for e in entries), default=0),
    }


def countries(log):
    result = []
    for country in sorted({e["country"] for e in log if has_country(e)}):
        theirs = [e for e in log if e["country"] == country]
        row = {"country": country, "All": tally(theirs)}
        for name in MODES:
            row[name] = tally([e for e in theirs if mode(e) == name])
        result.append(row)
    return result


def stations(log):
    result = []
    for key in dict.fromkeys(station(e) for e in log):
        if key:
            theirs = [e for e in log if station(e) == key]
            names = [e["name"] for e in theirs if e["name"]]
            result.append({"pi": theirs[0]["pi"], "name": names[-1] if names else "", "site": key[2],
                           "country": key[3], **tally(theirs)})
    return result


def records(log):
    def once(entries):
        best = {}
        for e in entries:
            key = station(e)
            if key and e["km"] and (key not in best or e["km"] > best[key]["km"]):
                best[key] = e
        return list(best.values())

    result = []
    for name in MODES:
        ranked = sorted(once(e for e in log if mode(e) == name),
                        key=lambda e: (-e["km"], e["seconds"], e["number"]))
        result += [{"list": name, "rank": i + 1, "entry": e["number"], "km": e["km"]}
                   for i, e in enumerate(ranked[:10])]
    weak = [dict(e, weak=number(e["power"]) * 1000 / e["km"])
            for e in once(e for e in log if number(e["power"]))]
    weak.sort(key=lambda e: (e["weak"], e["seconds"], e["number"]))
    result += [{"list": "power", "rank": i + 1, "entry": e["number"], "km": e["km"]}
               for i, e in enumerate(weak[:10])]
    return result


def years(log):
    result = []
    if not log:
        return result
    for year in range(moment(log[0]).year, moment(log[-1]).year + 1):
        theirs = [e for e in log if moment(e).year == year]
        days = [moment(e).timetuple().tm_yday - 1 for e in theirs]
        es = [moment(e).timetuple().tm_yday - 1 for e in theirs if mode(e) == "Es"]
        result.append({
            "year": year, "count": len(theirs), "days": len(set(days)), "daysWithEs": len(set(es)),
            "firstEs": min(es, default=-1), "lastEs": max(es, default=-1),
            "byDay": [days.count(day) for day in range(366)],
        })
    return result


def directions(log):
    result = {"unknown": sum(1 for e in log if e["azimuth"] == "")}
    for step in range(36):
        for name in MODES:
            result[f"{step * 10} {name}"] = sum(
                1 for e in log if e["azimuth"] != "" and int(e["azimuth"]) // 10 == step and mode(e) == name)
    return result


def openings(log, marks):
    runs = []
    for e in log:
        if mode(e) == "Es":
            if runs and e["seconds"] - runs[-1][-1]["seconds"] < 60 * 60:
                runs[-1].append(e)
            else:
                runs.append([e])
    result = []
    for run in runs:
        if len(run) < 3:
            continue
        far = max(e["km"] for e in run)
        mufs = [e["muf"] for e in run if e["muf"]]
        result.append({
            "entries": [e["number"] for e in run],
            "muf": max(mufs, key=float, default=""),
            "farthest": next((e["number"] for e in run if e["km"] == far), -1) if far else -1,
            "countries": sorted({e["country"] for e in run if has_country(e)}),
            "news": [sum(1 for e in run if marks[e["number"]][mark]) for mark in range(6)],
        })
    return result


def new_marks(log):
    """By number of the entry: whether it is new in each of the six ways."""
    marks = {}
    before = []
    for e in log:
        def first(key):
            return key(e) is not None and all(key(other) != key(e) for other in before)

        marks[e["number"]] = [
            first(lambda x: x["pi"] or None),
            first(lambda x: (x["site"], x["country"]) if x["site"] else None),
            first(lambda x: x["country"] if has_country(x) else None),
            first(lambda x: (x["country"], x["prop"]) if has_country(x) and x["prop"] else None),
            bool(e["prop"]) and number(e["dist"]) is not None and all(
                (number(other["dist"]) or 0) < number(e["dist"])
                for other in before if other["prop"] == e["prop"]),
            first(lambda x: (station(x), moment(x).year) if station(x) else None),
        ]
        before.append(e)
    return marks


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        dump = json.load(file)
    log = [e for e in dump["log"] if e["pi"] != "delete"]
    log.sort(key=lambda e: (e["seconds"], e["number"]))
    for e in log:
        e["km"] = kilometres(e, dump["inMiles"])
    marks = new_marks(log)
    shown = [e for e in log if e["shown"]]
    wanted = {
        "countries": countries(shown),
        "stations": stations(shown),
        "records": records(shown),
        "years": years(shown),
        "directions": directions(shown),
        "openings": openings(shown, marks),
        "marks": [marks.get(e["number"], [False] * 6) for e in dump["log"]],
    }
    wrong = [name for name, table in wanted.items() if table != dump["counted"][name]]
    for name in wrong:
        print(f"{name}: counted {json.dumps(dump['counted'][name])}\n   wanted {json.dumps(wanted[name])}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
