#include "txdb/siteleg.h"

#include "geo/converter.h"
#include "geo/coordinates.h"
#include "geo/leg.h"
#include "geo/maidenhead.h"
#include "platform/numbers.h"
#include "txdb/derivedcells.h"

#include <QHash>

#include <map>

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

std::optional<QString> measured(
    const Row &row, const std::optional<GeoPosition> &home, DistanceUnit unit, SiteChanges &changes)
{
    const auto place = positionFrom(row.site.latitude, row.site.longitude);
    if (!home || !place) {
        return std::nullopt;
    }
    Transmitter site = row.site;
    site.distance = distanceFigure(legBetween(*home, *place).kilometres, unit);
    if (site.distance != row.site.distance) {
        changes.push_back({row.number, row.site, site});
    }
    return site.distance;
}

// The distances of sites as they stand in the list, each measured once.
class SiteMeasure
{
public:
    SiteMeasure(const TransmitterList &list, const Settings &settings, SiteChanges &changes)
        : m_list(list)
        , m_changes(changes)
        , m_home(homePosition(settings))
        , m_unit(unitOf(settings))
    {
    }

    std::optional<QString> of(const LogEntry &entry)
    {
        const auto row = m_list.find(entry.transmitter, entry.country);
        if (!row) {
            return std::nullopt;
        }
        auto known = m_known.constFind(*row);
        if (known == m_known.cend()) {
            known = m_known.insert(*row, measured({*row, m_list.row(*row)}, m_home, m_unit, m_changes));
        }
        return *known;
    }

private:
    const TransmitterList &m_list;
    SiteChanges &m_changes;
    std::optional<GeoPosition> m_home;
    DistanceUnit m_unit;
    QHash<int, std::optional<QString>> m_known;
};

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
    const auto row = rowAfter(name, country, list, changes);
    return row ? measured(*row, homePosition(settings), unitOf(settings), changes) : std::nullopt;
}

void measureChange(LogChange &change, const Logbook &log, Measured which, const TransmitterList &list,
    const Settings &settings, SiteChanges &sites)
{
    SiteMeasure measure(list, settings, sites);
    const auto isWanted = [which](const LogEntry &entry) {
        return which == Measured::All || entry.dist.isEmpty();
    };
    for (LogEntry &entry : change.added) {
        if (const auto distance = isWanted(entry) ? measure.of(entry) : std::nullopt) {
            entry.dist = *distance;
        }
    }
    std::map<qint32, LogEntry> changed;
    for (const FieldChange &field : change.fields) {
        LogEntry &entry = changed.try_emplace(field.entry, log.entry(field.entry)).first->second;
        setFieldValue(entry, field.field, field.after);
    }
    for (const auto &[number, entry] : changed) {
        const bool isGiven = entry.dist != log.entry(number).dist;
        if (const auto distance = !isGiven && isWanted(entry) ? measure.of(entry) : std::nullopt) {
            change.setField(number, log.entry(number), LogField::Dist, *distance);
        }
    }
}

} // namespace quillon
