#include "fmlist-standin/stations.h"

#include "platform/codepage.h"
#include "platform/numbers.h"

#include <cmath>

namespace quillon::standin {

std::vector<Station> readStations(const QByteArray &list)
{
    std::vector<Station> stations;
    for (const QByteArray &listLine : list.split('\n')) {
        const QByteArray line = listLine.trimmed();
        const QByteArrayList fields = line.split(';');
        const auto frequency = numeric(QString::fromLatin1(fields.value(0)));
        if (frequency && fields.size() > 2) {
            stations.push_back({*frequency, fields[1].toUpper(), comparableName(fields[2]), line});
        }
    }
    return stations;
}

QByteArray comparableName(const QByteArray &ps)
{
    static const CodePage windows1252(1252);
    return windows1252.encode(windows1252.decode(ps).replace(u'_', u' ').trimmed().toUpper());
}

QByteArrayList matchingLines(
    const std::vector<Station> &stations, double frequency, const QByteArray &pi, const QByteArray &ps)
{
    constexpr double same = 0.001;
    const QByteArray name = comparableName(ps);
    QByteArrayList lines;
    for (const Station &station : stations) {
        if (std::abs(station.frequency - frequency) < same && (pi.isEmpty() || station.pi == pi.toUpper())
            && (name.isEmpty() || station.ps == name)) {
            lines += station.line;
        }
    }
    return lines;
}

} // namespace quillon::standin
