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

void measureTransmitters(TransmitterList &list, const Settings &settings, bool decimalComma)
{
    const Home home {
        degrees(settings.homeLatitude, decimalComma), degrees(settings.homeLongitude, decimalComma)};
    const DistanceUnit unit = settings.inMiles() ? DistanceUnit::Miles : DistanceUnit::Kilometres;
    for (int index = 0; index < list.count(); ++index) {
        list.setDistance(index, distanceFigure(kilometres(home, list.row(index), decimalComma), unit));
    }
}

void giveDistances(const TransmitterList &list, Logbook &log)
{
    // A site is in the list once, so the one that is found is the first that matches.
    for (qint32 index = 0; index < log.count(); ++index) {
        const auto found = list.find(log.entry(index).transmitter, log.entry(index).country);
        if (found && !list.row(*found).distance.isEmpty()) {
            log.changeEntry(index, [&](LogEntry &entry) { entry.dist = list.row(*found).distance; });
        }
    }
}

} // namespace quillon
