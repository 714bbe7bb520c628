"""The distance between two places as the logbook computes and writes it."""

import math
import struct

EARTH_RADIUS_KM = 12734 / 2
FLATTENING = 40398736 / 40678884


def distance(lat1: float, lon1: float, lat2: float, lon2: float) -> float:
    """Kilometres on the great circle between two points in decimal degrees, with geocentric latitudes."""
    if (lat1, lon1) == (lat2, lon2):
        return 0.0
    g1 = math.atan(FLATTENING * math.tan(math.radians(lat1)))
    g2 = math.atan(FLATTENING * math.tan(math.radians(lat2)))
    c = math.cos(math.radians(lon1 - lon2)) * math.cos(g1) * math.cos(g2) + math.sin(g2) * math.sin(g1)
    angle = abs(math.atan(math.sqrt(1 - c * c) / c))
    return EARTH_RADIUS_KM * (math.pi - angle if c < 0 else angle)


def distance_text(km: float) -> str:
    """A single-precision distance with one decimal, halves to even, without unit and trailing zeros."""
    single = struct.unpack("<f", struct.pack("<f", km))[0]
    return f"{round(single * 10) / 10:.1f}".removesuffix(".0")
