#include "txdb/distances.h"

#include "geo/distance.h"
#include "geo/leg.h"
#include "platform/numbers.h"

namespace quillon {

namespace {

constexpr QStringView notSet = u"0";

double degrees(const QString &text, bool decimalComma)
{
    return numeric(NormalizeDecimal(text, decimalComma)).value_or(-1);
}

struct Home
{
    double latitude;
    double longitude;
};

double kilometres(const Home &home, const Transmitter &transmitter, bool decimalComma)
{
    float bearing = 0;
    return static_cast<double>(DoDistance(home.latitude, home.longitude,
        degrees(transmitter.latitude, decimalComma), degrees(transmitter.longitude, decimalComma), bearing));
}

} // namespace

bool homeIsSet(const Settings &settings)
{
    return settings.homeLatitude != notSet && settings.homeLongitude != notSet;
}

SiteChanges measuredTransmitters(const TransmitterList &list, const Settings &settings, bool decimalComma)
{
    const Home home {
        degrees(settings.homeLatitude, decimalComma), degrees(settings.homeLongitude, decimalComma)};
    const DistanceUnit unit = settings.inMiles() ? DistanceUnit::Miles : DistanceUnit::Kilometres;
    SiteChanges changes;
    int row = 0;
    for (const Transmitter &transmitter : list) {
        Transmitter measured = transmitter;
        measured.distance = distanceFigure(kilometres(home, transmitter, decimalComma), unit);
        if (measured.distance != transmitter.distance) {
            changes.push_back({row, transmitter, measured});
        }
        ++row;
    }
    return changes;
}

LogChange givenDistances(const TransmitterList &list, const Logbook &log)
{
    // A site is in the list once, so the one that is found is the first that matches.
    LogChange change;
    qint32 number = 0;
    for (const LogEntry &entry : log) {
        const auto found = list.find(entry.transmitter, entry.country);
        if (found && !list.row(*found).distance.isEmpty()) {
            change.setField(number, entry, LogField::Dist, list.row(*found).distance);
        }
        ++number;
    }
    return change;
}

} // namespace quillon
