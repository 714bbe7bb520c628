#include "stations/stationcollector.h"

#include "core/picode.h"
#include "platform/numbers.h"
#include "platform/strangerstext.h"
#include "stations/stationlist.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestText = 80;

QString clean(QStringView text)
{
    return strangersText(text, longestText).replace(u'|', u' ').simplified();
}

QString quoted(QStringView text)
{
    return u'"' + strangersText(text, longestText) + u'"';
}

// What cannot be kept as a station, in words.
struct Wrong
{
    QString reason;
};

// A code that is none: for instance "?", "-" or a number in decimal.
std::optional<quint16> codeOf(const QString &text, QStringView what)
{
    const QString code = text.trimmed();
    if (code.isEmpty()) {
        return {};
    }
    const auto pi = piCodeOf(code);
    if (!pi) {
        throw Wrong {u"%1 %2 is not four hexadecimal digits"_s.arg(what, quoted(code))};
    }
    return pi;
}

double powerOf(const QString &text)
{
    if (text.trimmed().isEmpty()) {
        return 0;
    }
    const auto power = numeric(text);
    constexpr double mostKilowatts = 10'000;
    if (!power || *power < 0 || *power > mostKilowatts) {
        throw Wrong {u"the power %1 is no number of kW"_s.arg(quoted(text))};
    }
    return rounded(*power, 6);
}

GeoPosition placeOf(const StationTexts &texts)
{
    const auto place = positionFrom(texts.latitude, texts.longitude);
    if (!place) {
        throw Wrong {
            u"%1, %2 is no place in decimal degrees"_s.arg(quoted(texts.latitude), quoted(texts.longitude))};
    }
    constexpr int places = 5; // about a metre
    return {rounded(place->latitude, places), rounded(place->longitude, places)};
}

int frequencyOf(const QString &text)
{
    const auto kilohertz = kilohertzOf(text);
    if (!kilohertz) {
        throw Wrong {u"%1 is no frequency from %2 to %3 MHz"_s.arg(quoted(text))
                         .arg(lowestKilohertz / 1000)
                         .arg(highestKilohertz / 1000)};
    }
    return *kilohertz;
}

// Which station it is: a JSON can be all one line.
QString whichText(const StationTexts &texts)
{
    QStringList words;
    for (const QString &word : {texts.frequency, texts.pi, texts.programme, texts.site, texts.country}) {
        if (const QString shown = clean(word); !shown.isEmpty()) {
            words += shown;
        }
    }
    return words.isEmpty() ? QString() : u" ("_s + words.join(u", "_s) + u')';
}

bool saysYes(const QString &text)
{
    const QString word = text.trimmed().toLower();
    return !word.isEmpty() && word != "0"_L1 && word != "false"_L1 && word != "no"_L1 && word != "n"_L1;
}

ListedStation stationOf(const StationTexts &texts)
{
    ListedStation station {.kilohertz = frequencyOf(texts.frequency),
        .pi = codeOf(texts.pi, u"the PI code"),
        .regionalPi = codeOf(texts.regionalPi, u"the regional PI code"),
        .names = clean(texts.names),
        .programme = clean(texts.programme),
        .region = clean(texts.region),
        .site = clean(texts.site),
        .country = clean(texts.country),
        .place = placeOf(texts),
        .kilowatts = powerOf(texts.kilowatts),
        .polarisation = clean(texts.polarisation),
        .inactive = saysYes(texts.inactive),
        .id = clean(texts.id)};
    if (station.site.isEmpty()) {
        throw Wrong {u"it has no site"_s};
    }
    if (!station.pi && station.names.isEmpty()) {
        throw Wrong {u"it has neither a PI code nor an RDS name"_s};
    }
    return station;
}

} // namespace

void StationCollector::add(const StationTexts &texts, qint64 line)
{
    if (isFull()) {
        refuse(line, u"the list is full"_s);
        return;
    }
    try {
        const ListedStation station = stationOf(texts);
        const QByteArray bytes = stationLine(station);
        m_lines.push_back({station.kilohertz, m_bytes.size(), bytes.size()});
        m_bytes += bytes;
    } catch (const Wrong &wrong) {
        refuse(line, wrong.reason + whichText(texts));
    }
}

void StationCollector::refuse(qint64 line, const QString &reason)
{
    ++m_refusedCount;
    if (m_refused.size() < mostRefused) {
        m_refused.push_back({line, reason});
    }
}

bool StationCollector::isFull() const
{
    return m_bytes.size() + longestStationLine > mostBytes
        || static_cast<qsizetype>(m_lines.size()) >= StationList::capacity;
}

QByteArray StationCollector::file() const
{
    const auto bytesOf = [this](const Line &line) {
        return QByteArrayView(m_bytes).sliced(line.begin, line.size);
    };
    std::vector<Line> sorted = m_lines;
    std::ranges::sort(sorted, [&](const Line &one, const Line &other) {
        return one.kilohertz != other.kilohertz ? one.kilohertz < other.kilohertz
                                                : bytesOf(one) < bytesOf(other);
    });
    QByteArray file = stationListHeading.toByteArray() + "\r\n";
    file.reserve(file.size() + m_bytes.size() + 2 * static_cast<qsizetype>(sorted.size()));
    QByteArrayView last;
    for (const Line &line : sorted) {
        const QByteArrayView bytes = bytesOf(line);
        if (bytes != last) {
            file += bytes;
            file += "\r\n";
        }
        last = bytes;
    }
    return file;
}

QString refusedText(const std::vector<RefusedLine> &refused, qint64 count, std::size_t most)
{
    QStringList lines;
    for (const RefusedLine &line : refused) {
        if (static_cast<std::size_t>(lines.size()) == most) {
            break;
        }
        lines += u"Line %1: %2"_s.arg(line.line).arg(line.reason);
    }
    if (count > lines.size()) {
        lines += u"… and %1 more"_s.arg(count - lines.size());
    }
    return lines.join(u'\n');
}

} // namespace quillon
