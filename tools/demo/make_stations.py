#!/usr/bin/env python3
"""Writes tools/fmlist-standin/stations.csv: made-up stations at true transmitter sites.

One line a station, windows-1252, LF: freq;pi;ps;ITU;region, site;kW;lat;lon;uid
And data/demo/stations.lst: those of 1 kW and more, as the program keeps a list of stations.
The same run always writes the same bytes.
"""

import random
from pathlib import Path
from typing import NamedTuple

from geo import distance
from networks import COUNTRY_DIGITS, LOCAL_WORDS, networks_of
from sites import SITES, Site

OUTPUT = Path(__file__).resolve().parent.parent / "fmlist-standin" / "stations.csv"
DEMO_LIST = Path(__file__).resolve().parents[2] / "data" / "demo" / "stations.lst"
DEMO_KW = 1  # weaker stations are not in it
SEED = 875
STATIONS_A_SITE = 17
CHANNELS = range(875, 1080)  # tenths of a MHz
SAME_SITE_GAP = 3  # tenths of a MHz between two stations of a site
SAME_CHANNEL_KM = 150  # nearest site that may use the same channel

# Channels that are not drawn: chains that use one channel at many far-apart sites, and single stations.
CHAINS = {("5218", "I"): 1025, ("F201", "F"): 878, ("E211", "E"): 887, ("E2A2", "ROU"): 1067,
          ("8201", "POR"): 957, ("1214", "MRC"): 1043, ("7211", "TUN"): 949}
SINGLE = {("F21D", "Ajaccio (Coti-Chiavari)"): 875, ("D313", "Wendelstein"): 985, ("D313", "Ochsenkopf"): 994}


class Station(NamedTuple):
    freq: str
    pi: str
    ps: str
    site: Site
    kw: float
    uid: int

    def line(self) -> str:
        site = self.site
        fields = (self.freq, self.pi, self.ps, site.itu, f"{site.region}, {site.name}", f"{self.kw:g}",
                  f"{site.lat:.4f}", f"{site.lon:.4f}", str(self.uid))
        return ";".join(fields)

    def list_line(self) -> str:
        site = self.site
        fields = (f"{float(self.freq) * 1000:.0f}", self.pi, "", self.ps.replace(" ", "_"), "", site.region, site.name,
                  site.itu, f"{site.lat:.4f}".rstrip("0").rstrip("."), f"{site.lon:.4f}".rstrip("0").rstrip("."),
                  f"{self.kw:g}", "", "", str(self.uid))
        return "|".join(fields) + "|"


class ChannelPlan:
    """Gives each site channels that do not disturb its own and its neighbours' stations."""

    def __init__(self) -> None:
        self._used: dict[Site, set[int]] = {site: set() for site in SITES}
        self._neighbours = {
            site: [other for other in SITES
                   if other != site and distance(site.lat, site.lon, other.lat, other.lon) < SAME_CHANNEL_KM]
            for site in SITES
        }

    def is_free(self, site: Site, channel: int) -> bool:
        if any(abs(channel - used) < SAME_SITE_GAP for used in self._used[site]):
            return False
        return all(channel not in self._used[other] for other in self._neighbours[site])

    def take(self, site: Site, rng: random.Random, wanted: int | None = None) -> str:
        if wanted is None or not self.is_free(site, wanted):
            wanted = rng.choice([channel for channel in CHANNELS if self.is_free(site, channel)])
        self._used[site].add(wanted)
        return f"{wanted / 10:.1f}"


def local_name(itu: str, rng: random.Random) -> str:
    word = rng.choice(LOCAL_WORDS.get(itu, LOCAL_WORDS[""]).split())
    shape = rng.choice(("R {}", "R.{}", "{} FM", "{}", "{}"))
    return shape.format(word)[:8].strip()


def local_pi(itu: str, rng: random.Random, taken: set[str]) -> str:
    while True:
        pi = rng.choice(COUNTRY_DIGITS[itu]) + rng.choice("0456789ABC") + f"{rng.randrange(0x100):02X}"
        if pi not in taken:
            taken.add(pi)
            return pi


def site_programmes(site: Site, rng: random.Random, taken: set[str]) -> list[tuple[str, str, float]]:
    """(PS, PI, kW) of a site: the networks with full or somewhat less power, then local stations with little;
    in no order, so that the first channels do not always go to the same network."""
    programmes = [(ps, pi, site.kw * rng.choice((1, 1, 1, 0.5, 0.4)))
                  for ps, pi in networks_of(site.itu, site.region)]
    if site.name == "Köln":
        programmes.append(("KÖLN", "D49F", 1.0))
    while len(programmes) < STATIONS_A_SITE:
        kw = min(rng.choice((0.1, 0.3, 0.5, 1, 1, 2, 3, 5, 10)), site.kw)
        programmes.append((local_name(site.itu, rng), local_pi(site.itu, rng, taken), kw))
    rng.shuffle(programmes)
    return programmes


def uses_lowest_channel(site: Site) -> bool:
    """South and east of the continent the lowest channel is crowded: the first one that an opening reaches."""
    return (site.lat < 43.5 or site.lon > 20) and all(site.name != name for _, name in SINGLE)


def planned_channel(pi: str, site: Site) -> int | None:
    return CHAINS.get((pi, site.itu)) or SINGLE.get((pi, site.name))


def build_stations() -> list[Station]:
    rng = random.Random(SEED)
    plan = ChannelPlan()
    taken = {pi for site in SITES for _, pi in networks_of(site.itu, site.region)}
    stations = []
    uid = 1000
    for site in SITES:
        lowest_left = uses_lowest_channel(site)
        programmes = site_programmes(site, rng, taken)
        programmes.sort(key=lambda programme: planned_channel(programme[1], site) is None)  # planned ones choose first
        for ps, pi, kw in programmes:
            wanted = planned_channel(pi, site)
            if wanted is None and lowest_left:
                wanted, lowest_left = 875, False
            uid += rng.randrange(1, 60)
            stations.append(Station(plan.take(site, rng, wanted), pi, ps, site, round(kw, 1), uid))
    return sorted(stations, key=lambda s: (float(s.freq), s.site.itu, s.site.name))


def main() -> None:
    stations = build_stations()
    text = "".join(station.line() + "\n" for station in stations)
    OUTPUT.parent.mkdir(parents=True, exist_ok=True)
    OUTPUT.write_bytes(text.encode("cp1252"))
    lines = ["Quillon stations 1"] + [station.list_line() for station in stations if station.kw >= DEMO_KW]
    DEMO_LIST.write_bytes("".join(line + "\r\n" for line in lines).encode())


if __name__ == "__main__":
    main()
