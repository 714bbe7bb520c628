#pragma once

#include "geo/position.h"

#include <QString>

namespace quillon {

/// True when the first six characters of the trimmed text, upper-cased, are letter, letter, digit, digit,
/// letter, letter.
[[nodiscard]] bool isLocator(const QString &text);

/// The centre of the subsquare of a Maidenhead locator, as texts in the compact notation: JN58TD is 4808.75N,
/// 01137.50E. Case, blanks around and what follows the sixth character do not count. For a text that is not a
/// locator `latitude` and `longitude` stay as they are.
void maidenheadToLatLon(const QString &locator, QString &latitude, QString &longitude);

/// The six-character Maidenhead locator of a position in decimal degrees, latitude -90 to 90, longitude -180
/// to 180. The longitude subsquare is always one of M to X: right in the eastern degree of the two-degree
/// square, twelve letters too far in the western one. Latitude 90 and longitude 180 give the field letter S.
/// Throws "Overflow" for values beyond 32 bits.
[[nodiscard]] QString convertDecimalLatLonToMaidenhead(double latitude, double longitude);

/// The six-character Maidenhead locator of the subsquare in which a place lies, to the east and north of its
/// lower edges: 50.02, 11.79 is JO50VA. The north pole and longitude 180 count to the last subsquare.
[[nodiscard]] QString locatorOf(const GeoPosition &place);

} // namespace quillon
