#include "rds-signal/stationlist.h"

#include "live/frequency.h"
#include "live/knownstations.h"
#include "platform/numbers.h"

#include <QLocale>

namespace quillon::rdssignal {

std::optional<SignalStation> readStation(QStringView line)
{
    const auto fields = line.split(u';');
    const auto field = [&](qsizetype i) { return i < fields.size() ? fields[i] : QStringView(); };
    const auto hertz = hertzOf(field(0));
    const auto pi = piCodeOf(field(1).trimmed());
    if (!hertz || !pi) {
        return {};
    }
    SignalStation station {*hertz, *pi, field(2).toString(), field(3).toString(), {}, 10, 0};
    if (const QStringView clock = field(4).trimmed(); !clock.isEmpty()) {
        station.clock = parseDateTime(clock, MonthNames::of(QLocale::c()));
        if (!station.clock) {
            return {};
        }
    }
    if (const QStringView text = field(5).trimmed(); !text.isEmpty()) {
        const auto seconds = numeric(text);
        if (!seconds || *seconds <= 0 || *seconds > 86'400) {
            return {};
        }
        station.seconds = *seconds;
    }
    if (const QStringView text = field(6).trimmed(); !text.isEmpty()) {
        bool ok = false;
        const uint ecc = text.toUInt(&ok, 16);
        if (!ok || ecc > 0xFF) {
            return {};
        }
        station.ecc = static_cast<quint8>(ecc);
    }
    return station;
}

StationList readStations(const QStringList &lines)
{
    using namespace Qt::StringLiterals;
    StationList list;
    for (const QString &line : lines) {
        const QStringView text = line.endsWith(u'\r') ? QStringView(line).chopped(1) : QStringView(line);
        if (text.isEmpty() || text.startsWith(u'#')) {
            continue;
        }
        const auto station = readStation(text);
        if (!station) {
            list.wrong = u"no station: %1 (wanted: MHz;PI;PS;text;yyyy-mm-dd hh:nn;seconds;ECC)"_s.arg(text);
            return list;
        }
        list.stations.push_back(*station);
    }
    list.wrong = list.stations.empty() ? u"no station given"_s : QString();
    return list;
}

} // namespace quillon::rdssignal
