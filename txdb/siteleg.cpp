#include "txdb/siteleg.h"

#include "geo/converter.h"
#include "geo/coordinates.h"
#include "geo/leg.h"
#include "geo/maidenhead.h"
#include "platform/numbers.h"
#include "txdb/derivedcells.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

DistanceUnit unitOf(const Settings &settings)
{
    return settings.inMiles() ? DistanceUnit::Miles : DistanceUnit::Kilometres;
}

// A row of the list as it is when the changes are made.
struct Row
{
    int number;
    Transmitter site;
};

std::optional<Row> rowAfter(
    const QString &name, const QString &country, const TransmitterList &list, const SiteChanges &changes)
{
    for (const SiteChange &change : changes) {
        if (change.after && change.after->name == name && change.after->country == country) {
            return Row {change.row, *change.after};
        }
    }
    const auto found = list.find(name, country);
    return found ? std::optional(Row {*found, list.row(*found)}) : std::nullopt;
}

} // namespace

QString siteLegText(const QString &latitude, const QString &longitude, const Settings &settings)
{
    const auto site = positionFrom(latitude, longitude);
    if (!site) {
        return {};
    }
    const auto home = homePosition(settings);
    return home ? legText(*home, *site, unitOf(settings)) : locatorOf(*site) + u" (home is not set)"_s;
}

std::optional<LocatorMiddle> locatorMiddle(const QString &text)
{
    if (!locatorProblem(text).isEmpty()) {
        return std::nullopt;
    }
    QString latitude;
    QString longitude;
    maidenheadToLatLon(text, latitude, longitude);
    // No more digits than the reading has.
    const auto shortest = [](double degrees) { return plainText(static_cast<float>(degrees)); };
    return LocatorMiddle {shortest(convertRXLatORLonToDecimal(latitude, true)),
        shortest(convertRXLatORLonToDecimal(longitude, false))};
}

std::optional<QString> measuredDistance(const QString &name, const QString &country,
    const TransmitterList &list, const Settings &settings, SiteChanges &changes)
{
    const auto home = homePosition(settings);
    const auto row = rowAfter(name, country, list, changes);
    const auto place = row ? positionFrom(row->site.latitude, row->site.longitude) : std::nullopt;
    if (!home || !place) {
        return std::nullopt;
    }
    Transmitter measured = row->site;
    measured.distance = distanceFigure(legBetween(*home, *place).kilometres, unitOf(settings));
    if (measured.distance != row->site.distance) {
        changes.push_back({row->number, row->site, measured});
    }
    return measured.distance;
}

} // namespace quillon
