#include "geo/maidenhead.h"

#include "geo/coordinates.h"
#include "platform/numbers.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace quillon {

namespace {

constexpr qsizetype locatorLength = 6;

QString significantPart(const QString &text)
{
    QString part = text.trimmed().left(locatorLength);
    for (QChar &c : part) {
        c = c >= u'a' && c <= u'z' ? c.toUpper() : c;
    }
    return part;
}

bool isLetter(QChar c)
{
    return c >= u'A' && c <= u'Z';
}

bool matchesPattern(QStringView loc)
{
    return loc.size() == locatorLength && isLetter(loc[0]) && isLetter(loc[1]) && isDigit(loc[2])
        && isDigit(loc[3]) && isLetter(loc[4]) && isLetter(loc[5]);
}

int value(QChar character, QChar zero)
{
    return character.unicode() - zero.unicode();
}

QChar character(QChar zero, double steps)
{
    return QChar(static_cast<char16_t>(zero.unicode() + static_cast<int>(std::trunc(steps))));
}

// 0 to 1, from the next whole number below.
double fraction(double degrees)
{
    return std::abs(std::floor(degrees) - degrees);
}

// A fraction just below 1 must not round up to the letter after X.
QChar subsquare(double steps)
{
    return character(u'A', std::min(steps, 23.0));
}

} // namespace

bool isLocator(const QString &text)
{
    return matchesPattern(significantPart(text));
}

void maidenheadToLatLon(const QString &locator, QString &latitude, QString &longitude)
{
    const QString loc = significantPart(locator);
    if (!matchesPattern(loc)) {
        return;
    }
    // The largest sum, that of ZZ99ZZ, is 31205.
    const auto east =
        static_cast<qint16>(value(loc[0], u'A') * 1200 + value(loc[2], u'0') * 120 + value(loc[4], u'A') * 5);
    const auto north = static_cast<qint16>(value(loc[1], u'A') * 600 + value(loc[3], u'0') * 60);
    float longitudeMinutes = static_cast<float>(east) + 2.5F - 10800;
    float latitudeMinutes =
        static_cast<float>(north) + static_cast<float>(value(loc[5], u'A')) * 2.5F + 1.25F - 5400;
    convertMinutestoLatORLon(longitudeMinutes, longitude, true);
    convertMinutestoLatORLon(latitudeMinutes, latitude, false);
}

QString convertDecimalLatLonToMaidenhead(double latitude, double longitude)
{
    const double a = fMod(longitude, 360) + 180;
    const double b = fMod(latitude, 360) + 90;
    QString locator;
    locator += character(u'A', a / 20);
    locator += character(u'A', b / 10);
    locator += character(u'0', fMod(a, 20) / 2);
    locator += character(u'0', fMod(b, 10));
    locator += subsquare((fraction(longitude) + 1) * 12);
    locator += subsquare(fraction(latitude) * 24);
    return locator;
}

QString locatorOf(const GeoPosition &place)
{
    // In steps of a subsquare: 5' of longitude, 2.5' of latitude.
    constexpr int lastEast = 18 * 240 - 1;
    constexpr int lastNorth = 18 * 240 - 1;
    const int east = std::clamp(static_cast<int>(std::floor((place.longitude + 180) * 12)), 0, lastEast);
    const int north = std::clamp(static_cast<int>(std::floor((place.latitude + 90) * 24)), 0, lastNorth);
    QString locator;
    for (const auto &[zero, steps, count] :
        {std::tuple(u'A', 240, 18), std::tuple(u'0', 24, 10), std::tuple(u'A', 1, 24)}) {
        locator += character(zero, east / steps % count);
        locator += character(zero, north / steps % count);
    }
    return locator;
}

} // namespace quillon
