#include "export/kml.h"

#include "export/kmldocument.h"
#include "net/textencoding.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView transmitterColor = "ff0000ff"; // red

KmlDocument documentOf(const QString &folder, const CodePage &codePage)
{
    return {
        folder, [&codePage](QByteArray &bytes, QStringView text) { codePage.appendEncoded(bytes, text); }};
}

// About what a placemark and a list line take, so that a large document grows without being copied.
constexpr qsizetype placemarkSize = 320;
constexpr qsizetype listLineSize = 64;

} // namespace

QByteArray transmitterKml(const TransmitterList &transmitters, const CodePage &codePage)
{
    KmlDocument document = documentOf(u"Quillon - Export TX"_s, codePage);
    document.reserve((transmitters.count() + 1) * placemarkSize);
    for (const Transmitter &transmitter : transmitters) {
        document.beginPlacemark(transmitter.name, transmitter.country);
        document.endPlacemark(transmitterColor, transmitter.longitude, transmitter.latitude);
    }
    return document.finished();
}

QByteArray logbookKml(const Logbook &log, const TransmitterList &transmitters, const CodePage &codePage)
{
    const std::vector<Reception> receptions = findReceptions(log, transmitters);
    const ReceptionLines lines(log, codePage);
    KmlDocument document = documentOf(u"Quillon - Export LogBook"_s, codePage);
    document.reserve((transmitters.count() + 1) * placemarkSize + log.count() * listLineSize);
    auto next = receptions.begin();
    int row = 0;
    for (const Transmitter &transmitter : transmitters) {
        document.beginPlacemark(transmitter.name, transmitter.country);
        document.beginList();
        for (; next != receptions.end() && next->transmitter == row; ++next) {
            document.addToList(lines.of(next->entry));
        }
        document.endList();
        document.endPlacemark(heardColor, transmitter.longitude, transmitter.latitude);
        ++row;
    }
    return document.finished();
}

HeardKml::HeardKml(const Logbook &log, const TransmitterList &transmitters, const Regional &regional)
    : m_transmitters(transmitters)
    , m_codePage(regional.codePage)
    , m_monthNames(exportMonths(regional))
    , m_keys(m_monthNames)
    , m_receptions(findReceptions(log, transmitters))
    , m_lines(log, regional.codePage)
{
    for (const Reception &reception : m_receptions) {
        m_byMonth[m_keys.of(log.entry(reception.entry).dateTime)].push_back(reception);
    }
}

QByteArray HeardKml::full() const
{
    return document(u"Quillon Full"_s, m_receptions);
}

std::optional<QByteArray> HeardKml::month(DateTime month) const
{
    const auto found = m_byMonth.constFind(m_keys.of(month));
    if (found == m_byMonth.cend()) {
        return std::nullopt;
    }
    return document(u"Quillon "_s + formatted(month, u"yyyy-mmm", m_monthNames), found.value());
}

QByteArray HeardKml::document(const QString &folder, const std::vector<Reception> &receptions) const
{
    KmlDocument document = documentOf(folder, m_codePage);
    for (auto next = receptions.begin(); next != receptions.end();) {
        const int row = next->transmitter;
        const Transmitter &transmitter = m_transmitters.row(row);
        document.beginPlacemark(W3CEncode(transmitter.name, m_codePage), transmitter.country);
        document.beginList();
        for (; next != receptions.end() && next->transmitter == row; ++next) {
            document.addToList(m_lines.of(next->entry));
        }
        document.endList();
        document.endPlacemark(heardColor, transmitter.longitude, transmitter.latitude);
    }
    return document.finished();
}

} // namespace quillon
