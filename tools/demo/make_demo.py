#!/usr/bin/env python3
"""Writes data/demo: a made-up sample installation with a logbook of six years, its lists and two import folders.

Files of the logbook are windows-1252 with CR LF. "@DEMO@" in LOGBOOK.INI stands for the directory that the sample is
copied to. The same run always writes the same bytes.
"""

import random
import shutil
from dataclasses import dataclass, replace
from datetime import datetime, timedelta
from pathlib import Path

from geo import distance, distance_text
from make_stations import Station, build_stations
from openings import ES, FAVOURITES, LAST_DAY, METEORS, NOTES_ES, NOTES_METEOR, NOTES_TROPO, RDSDX_DAY, RDSSPY_DAY, TROPO
from sites import SITES, Site

OUTPUT = Path(__file__).resolve().parent.parent.parent / "data" / "demo"
SEED = 2019
HOME_LAT, HOME_LON = 51.34, 6.57
UNKNOWN = "TBD"
ES_KM = (900, 2300)
TROPO_KM = (150, 700)
OPENING_RADIUS_KM = 420


@dataclass(frozen=True)
class Reception:
    """One line of the logbook."""

    when: datetime
    prop: str
    freq: str
    pi: str
    ps: str
    country: str = UNKNOWN
    site: Site | None = None
    kw: float | None = None
    notes: str = ""
    fmlist: str = ""
    uid: str = ""

    def line(self) -> str:
        fields = (self.pi, self.when.strftime("%d/%m/%Y %H:%M:%S"), self.prop, self.freq,
                  self.site.name if self.site else "", self.country, self.notes.replace("\n", "CRLF"),
                  self.ps.replace(" ", "_"), f"{self.kw:g}" if self.kw is not None else "",
                  dist_of(self.site) if self.site else "", self.fmlist, self.uid)
        return "".join(field + "|" for field in fields)


def km_from_home(site: Site) -> float:
    return distance(HOME_LAT, HOME_LON, site.lat, site.lon)


def dist_of(site: Site) -> str:
    return distance_text(km_from_home(site))


def in_range(station: Station, limits: tuple[int, int]) -> bool:
    return limits[0] <= km_from_home(station.site) <= limits[1]


class Listener:
    """Hears stations of the list and writes them down, as a person does: now and then incompletely."""

    def __init__(self, stations: list[Station], rng: random.Random) -> None:
        self._stations = stations
        self._rng = rng
        self._by_name = {site.name: site for site in SITES}

    def opening(self, day: str, hour: int, centre: str, count: int, prop: str) -> list[Reception]:
        """Receptions of one band opening towards the surroundings of a site, in the order of their time."""
        middle = self._by_name[centre]
        limits = ES_KM if prop == "Es" else TROPO_KM
        candidates = [s for s in self._stations if in_range(s, limits) and s.kw >= (1 if prop == "Tropo" else 0.1)
                      and distance(middle.lat, middle.lon, s.site.lat, s.site.lon) <= OPENING_RADIUS_KM]
        heard = self._draw(candidates, count, prop)
        if prop == "Es":
            heard.sort(key=lambda s: float(s.freq) + self._rng.uniform(0, 6))  # the highest channel opens last
        notes = NOTES_ES if prop == "Es" else NOTES_TROPO
        when = datetime.fromisoformat(day) + timedelta(hours=hour, seconds=self._rng.randrange(1800))
        receptions = []
        for station in heard:
            receptions.append(self._write_down(station, when, prop, notes))
            when += timedelta(seconds=self._rng.randrange(25, 900))
        return receptions

    def meteor(self, moment: str) -> Reception:
        """One ping: a second or two of signal, enough for a PI code and seldom for the name."""
        candidates = [s for s in self._stations if in_range(s, (700, 1900)) and s.kw >= 20]
        station = self._rng.choice(candidates)
        reception = self._write_down(station, datetime.fromisoformat(moment), "MS", NOTES_METEOR)
        return reception if self._rng.random() < 0.3 else replace(reception, ps="")

    def _draw(self, candidates: list[Station], count: int, prop: str) -> list[Station]:
        """Strong stations and, with sporadic E, low channels are heard more often; none twice."""
        def key(station: Station) -> float:
            weight = station.kw ** 0.5 * ((110 - float(station.freq)) if prop == "Es" else 10)
            return self._rng.random() ** (1 / weight)
        return sorted(candidates, key=key, reverse=True)[:count]

    def _write_down(self, station: Station, when: datetime, prop: str, notes: list[str]) -> Reception:
        rng = self._rng
        note = rng.choice(notes) if rng.random() < 0.35 else ""
        heard = Reception(when, prop, station.freq, station.pi, station.ps, notes=note)
        kind = rng.random()
        if kind < 0.03:
            return replace(heard, ps=station.ps[:rng.randrange(2, 5)], fmlist="fml=none#")  # not decoded to the end
        if kind < 0.07:
            return replace(heard, country=station.site.itu, fmlist="fml=multi#")
        known = replace(heard, country=station.site.itu, site=station.site, kw=station.kw)
        if kind < 0.14:
            return known  # identified by hand
        if kind < 0.16:
            known = replace(known, pi="")
        elif kind < 0.18:
            known = replace(known, ps="")
        sent = rng.random() < (0.5 if when.year == 2025 else 0.95)
        return replace(known, uid=str(station.uid), fmlist="fml=sent#" if sent else "")


def local_receptions(stations: list[Station]) -> list[Reception]:
    """What is always there, logged on the first evening."""
    when = datetime(2019, 4, 27, 18, 5, 12)
    receptions = []
    for name in ("WDR 2", "1LIVE", "KÖLN", "3FM", "L1", "STUBRU"):
        station = min((s for s in stations if s.ps == name), key=lambda s: km_from_home(s.site))
        receptions.append(Reception(when, "", station.freq, station.pi, station.ps, station.site.itu, station.site,
                                    station.kw, "Local, every day", "fml=sent#", str(station.uid)))
        when += timedelta(minutes=3, seconds=17)
    return receptions


def favourite_receptions(stations: list[Station]) -> list[Reception]:
    by_key = {(s.ps, s.site.name): s for s in stations}
    receptions = []
    for moment, prop, ps, site in FAVOURITES:
        s = by_key[ps, site]
        receptions.append(Reception(datetime.fromisoformat(moment), prop, s.freq, s.pi, s.ps, s.site.itu, s.site, s.kw,
                                    "First time logged", "fml=sent#", str(s.uid)))
    return receptions


def last_day(stations: list[Station], rng: random.Random) -> list[Reception]:
    """25 receptions still to be looked up: 17 that one station of the list fits, 5 that several fit, 3 that none."""
    fitting: dict[tuple[str, str, str], list[Station]] = {}
    for station in stations:
        fitting.setdefault((station.freq, station.pi, station.ps), []).append(station)
    south = {key: found for key, found in fitting.items()
             if all(in_range(s, ES_KM) and s.site.lat < 44 and s.site.lon < 15 for s in found)}
    several = rng.sample(sorted(key for key, found in south.items() if len(found) > 1), 5)
    one = rng.sample(sorted(key for key, found in south.items() if len(found) == 1 and found[0].kw >= 20), 17)
    none = []
    for freq, pi, ps in rng.sample(one, 3):
        other = f"{float(freq) + 0.2:.1f}"
        assert (other, pi, ps) not in fitting
        none.append((other, pi, ps))
    heard = several + one + none
    rng.shuffle(heard)
    when = datetime.fromisoformat(LAST_DAY) + timedelta(hours=15, minutes=41, seconds=8)
    receptions = []
    for freq, pi, ps in heard:
        receptions.append(Reception(when, "Es", freq, pi, ps))
        when += timedelta(seconds=rng.randrange(15, 420))
    return receptions


def build_logbook(stations: list[Station]) -> list[Reception]:
    rng = random.Random(SEED)
    listener = Listener(stations, rng)
    receptions = local_receptions(stations) + favourite_receptions(stations)
    for prop, openings in (("Es", ES), ("Tropo", TROPO)):
        for day, hour, centre, count in openings:
            receptions += listener.opening(day, hour, centre, count, prop)
    receptions += [listener.meteor(moment) for moment in METEORS]
    receptions += last_day(stations, rng)
    return sorted(receptions, key=lambda r: r.when)


def transmitter_lines(receptions: list[Reception]) -> list[str]:
    """The sites in the order in which they were first heard, then the others."""
    heard = dict.fromkeys(r.site for r in receptions if r.site)
    sites = [*heard, *(site for site in SITES if site not in heard)]
    return [f"{s.name}|{s.itu}|{s.lat:.4f}|{s.lon:.4f}|{dist_of(s)}|" for s in sites]


def config_lines() -> list[str]:
    note = ("Antenna: 7 elements, rotor to 180 degrees, 12 m above ground", "",
            "To do:", "- look up the opening of 12 July", "- import 13 July (RDS Spy) and 14 July (RDSDX)")
    return [
        "LOG_BOOK_CALLSIGN=DEMO",
        f"HOME_DEC_LAT={HOME_LAT:.4f}",
        f"HOME_DEC_LON={HOME_LON:.4f}",
        "RDSDX_LOG=@DEMO@/rdsdx",
        "RDSSPY_LOGS=@DEMO@/rdsspy",
        "OMID=1234",
        "EMAIL=demo@example.org",
        "LOGBOOK_FILENAME=RDSLog.log",
        "AS_MILES=FALSE",
        "TIME_OFFSET=0",
        "SCRATCH_PAD=" + "CRLF".join(note).replace(",", "|"),
    ]


def write_lines(path: Path, lines: list[str]) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))


def write_rdsspy(folder: Path, stations: list[Station]) -> None:
    """One file a reception, all on 87.5 MHz. Two belong to the evening before, so that the choice of a day shows."""
    rng = random.Random(SEED + 1)
    lowest = [s for s in stations if s.freq == "87.5" and in_range(s, ES_KM) and s.site.lat < 44]
    chosen = rng.sample([s for s in lowest if s.ps != "Chérie"], 14) + [s for s in lowest if s.ps == "Chérie"]
    when = datetime.fromisoformat(RDSSPY_DAY) + timedelta(hours=9, minutes=2, seconds=33)
    moments = [when - timedelta(hours=10, minutes=7), when - timedelta(hours=9, minutes=51, seconds=20)]
    for _ in chosen:
        moments.append(when)
        when += timedelta(seconds=rng.randrange(20, 1300))
    for moment, station in zip(moments, chosen[:2] + chosen, strict=True):
        name = f"{moment:%Y-%m-%d %H-%M-%S} {station.pi} {station.ps}.txt"
        write_lines(folder / name, [f"PI: {station.pi}  PS: {station.ps}", f"First block: {moment:%H:%M:%S}"])


def rdsdx_line(freq: str, pi: str, ps: str, moment: datetime, country: str, station: str) -> str:
    return f"{freq:>6} {pi:4} {ps:8} {moment:%H%M %S} {country:3} {station}"


def write_rdsdx(folder: Path, stations: list[Station]) -> None:
    """One day's file: a header and 25 receptions in fixed columns, one without frequency, some with odd station texts."""
    rng = random.Random(SEED + 2)
    near = [s for s in stations if in_range(s, ES_KM) and s.kw >= 20 and 38 < s.site.lat < 44 and 6 < s.site.lon < 22]
    moment = datetime.fromisoformat(RDSDX_DAY) + timedelta(hours=16, minutes=10, seconds=5)
    lines = ["  Freq PI   PS       Time    ITU Station|Remarks"]
    for number, s in enumerate(rng.sample(near, 25)):
        remark = rng.choice(("", "", "strong", "fading", "stereo", "RT decoded", f"{rng.randrange(18, 61)} dBf"))
        text = {6: s.site.name, 13: f"{s.ps},{s.site.name},{s.site.itu}", 19: f"{s.ps}, {s.site.name}"}
        station = text.get(number, f"{s.ps},{s.site.name}") + "|" + remark
        freq = "" if number == 16 else s.freq
        pi = "" if number == 9 else s.pi
        country = UNKNOWN if number in (3, 22) else s.site.itu
        lines.append(rdsdx_line(freq, pi, s.ps, moment, country, station))
        moment += timedelta(seconds=rng.randrange(8, 240))
    write_lines(folder / f"{moment:%Y%m%d}.txt", lines)


def main() -> None:
    stations = build_stations()
    receptions = build_logbook(stations)
    shutil.rmtree(OUTPUT, ignore_errors=True)
    write_lines(OUTPUT / "LOGBOOK.INI", config_lines())
    write_lines(OUTPUT / "RDSLog.log", [reception.line() for reception in receptions])
    write_lines(OUTPUT / "tx.lst", transmitter_lines(receptions))
    write_rdsspy(OUTPUT / "rdsspy", stations)
    write_rdsdx(OUTPUT / "rdsdx", stations)


if __name__ == "__main__":
    main()
