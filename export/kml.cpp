#include "export/kml.h"

#include "net/textencoding.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// Red and orange, as alpha, blue, green, red.
constexpr QByteArrayView transmitterColor = "ff0000ff";
constexpr QByteArrayView heardColor = "ff00aaff";

// A document that grows line by line.
class Document
{
public:
    Document(const QString &folder, const CodePage &codePage)
        : m_codePage(codePage)
    {
        add("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
            "<kml xmlns=\"http://earth.google.com/kml/2.1\">\r\n"
            "<Folder>\r\n"
            "<name>");
        addText(folder);
        add("</name>\r\n");
    }

    void reserve(qsizetype size) { m_bytes.reserve(size); }

    void beginPlacemark(const QString &site, const QString &country)
    {
        add("<Placemark><name>");
        addText(site);
        add(" (");
        addText(country);
        add(")</name>\r\n");
    }

    void beginList() { add("<description><![CDATA[ <ol>\r\n"); }

    void addToList(QByteArrayView line) { add(line); }

    void endList() { add("</ol>]]> </description>\r\n"); }

    void endPlacemark(QByteArrayView color, const Transmitter &transmitter)
    {
        add("<Style><IconStyle><color>");
        add(color);
        add("</color></IconStyle></Style>\r\n"
            "<Point><extrude>1</extrude><altitudeMode>relativeToGround</altitudeMode>\r\n"
            "<coordinates>");
        addText(transmitter.longitude);
        add(",");
        addText(transmitter.latitude);
        add(",200</coordinates>\r\n"
            "</Point></Placemark>\r\n");
    }

    [[nodiscard]] QByteArray finished()
    {
        add("</Folder>\r\n"
            "</kml> \r\n");
        return std::move(m_bytes);
    }

private:
    void add(QByteArrayView bytes) { m_bytes.append(bytes); }
    void addText(const QString &text) { m_codePage.appendEncoded(m_bytes, text); }

    const CodePage &m_codePage;
    QByteArray m_bytes;
};

// About what a placemark and a list line take, so that a large document grows without being copied.
constexpr qsizetype placemarkSize = 320;
constexpr qsizetype listLineSize = 64;

} // namespace

QByteArray transmitterKml(const TransmitterList &transmitters, const CodePage &codePage)
{
    Document document(u"Quillon - Export TX"_s, codePage);
    document.reserve((transmitters.count() + 1) * placemarkSize);
    for (const Transmitter &transmitter : transmitters) {
        document.beginPlacemark(transmitter.name, transmitter.country);
        document.endPlacemark(transmitterColor, transmitter);
    }
    return document.finished();
}

QByteArray logbookKml(const Logbook &log, const TransmitterList &transmitters, const CodePage &codePage)
{
    const std::vector<Reception> receptions = findReceptions(log, transmitters);
    const ReceptionLines lines(log, codePage);
    Document document(u"Quillon - Export LogBook"_s, codePage);
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
        document.endPlacemark(heardColor, transmitter);
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
    Document document(folder, m_codePage);
    for (auto next = receptions.begin(); next != receptions.end();) {
        const int row = next->transmitter;
        const Transmitter &transmitter = m_transmitters.row(row);
        document.beginPlacemark(W3CEncode(transmitter.name, m_codePage), transmitter.country);
        document.beginList();
        for (; next != receptions.end() && next->transmitter == row; ++next) {
            document.addToList(m_lines.of(next->entry));
        }
        document.endList();
        document.endPlacemark(heardColor, transmitter);
    }
    return document.finished();
}

} // namespace quillon
