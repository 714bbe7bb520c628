#include "export/showngeojson.h"

#include "geo/way.h"
#include "platform/numbers.h"
#include "txdb/derivedcells.h"

#include <QHash>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// A site with a place, and how many of the receptions are of it.
struct HeardSite
{
    const LogEntry *first;
    GeoPosition place;
    int receptions;
};

QByteArray jsonText(const QString &text)
{
    QString escaped;
    for (const QChar c : text) {
        if (c == u'"' || c == u'\\') {
            escaped += u'\\';
            escaped += c;
        } else if (c < u' ') {
            escaped += u"\\u%1"_s.arg(static_cast<int>(c.unicode()), 4, 16, QChar(u'0'));
        } else {
            escaped += c;
        }
    }
    return '"' + escaped.toUtf8() + '"';
}

QByteArray jsonValue(const QString &text, bool isNumber)
{
    if (isNumber && text.isEmpty()) {
        return "null";
    }
    const auto number = isNumber ? numeric(text) : std::nullopt;
    return number ? plainText(*number).toUtf8() : jsonText(text);
}

QByteArray jsonPlace(const GeoPosition &place)
{
    constexpr int micro = 6;
    return '[' + plainText(rounded(place.longitude, micro)).toUtf8() + ','
        + plainText(rounded(place.latitude, micro)).toUtf8() + ']';
}

QByteArray jsonLine(const std::vector<GeoPosition> &line)
{
    QByteArray bytes;
    for (const GeoPosition &place : line) {
        bytes += (bytes.isEmpty() ? "["_ba : ","_ba) + jsonPlace(place);
    }
    return bytes + ']';
}

QByteArray wayGeometry(const GeoPosition &home, const GeoPosition &site)
{
    const auto lines = wayBetween(home, site);
    if (lines.size() == 1) {
        return R"({"type":"LineString","coordinates":)" + jsonLine(lines.front()) + '}';
    }
    QByteArray all;
    for (const auto &line : lines) {
        all += (all.isEmpty() ? ""_ba : ","_ba) + jsonLine(line);
    }
    return R"({"type":"MultiLineString","coordinates":[)" + all + "]}";
}

QByteArray feature(const QByteArray &geometry, const QByteArray &properties)
{
    return R"({"type":"Feature","geometry":)" + geometry + R"(,"properties":{)" + properties + "}}";
}

// The shown columns, then the fields that are not shown.
std::vector<GridColumn> allColumns(const std::vector<GridColumn> &shown)
{
    std::vector<GridColumn> columns = shown;
    for (int i = 0; i < gridColumnCount; ++i) {
        const auto column = static_cast<GridColumn>(i);
        if (std::ranges::find(shown, column) == shown.end()) {
            columns.push_back(column);
        }
    }
    return columns;
}

QByteArray receptionFeature(const LogRows &rows, qint32 entry, const std::vector<GridColumn> &columns,
    const std::optional<GeoPosition> &place)
{
    QByteArray properties;
    for (const GridColumn column : columns) {
        properties += (properties.isEmpty() ? ""_ba : ","_ba) + jsonText(logColumn(column).caption.toString())
            + ':' + jsonValue(dataText(rows, entry, column), isNumberColumn(column));
    }
    return feature(
        place ? R"({"type":"Point","coordinates":)" + jsonPlace(*place) + '}' : "null"_ba, properties);
}

QByteArray wayFeature(const GeoPosition &home, const HeardSite &site)
{
    return feature(wayGeometry(home, site.place),
        R"("Transmitter":)" + jsonText(site.first->transmitter) + R"(,"Country":)"
            + jsonText(site.first->country) + R"(,"Receptions":)" + QByteArray::number(site.receptions));
}

} // namespace

QByteArray shownGeoJson(const ShownLog &shown)
{
    const std::vector<GridColumn> columns = allColumns(shown.columns);
    std::vector<HeardSite> sites;
    QHash<std::pair<QString, QString>, std::size_t> places;
    QByteArray bytes = R"({"type":"FeatureCollection","features":[)";
    bool first = true;
    const auto add = [&](const QByteArray &one) {
        bytes += (first ? "\n"_ba : ",\n"_ba) + one;
        first = false;
    };
    for (const qint32 number : shown.entries) {
        const LogEntry &entry = shown.rows.log().entry(number);
        const auto place = placeOf(entry, shown.sites);
        add(receptionFeature(shown.rows, number, columns, place));
        if (place) {
            const auto known = places.constFind({entry.transmitter, entry.country});
            if (known == places.cend()) {
                places.insert({entry.transmitter, entry.country}, sites.size());
                sites.push_back({&entry, *place, 1});
            } else {
                ++sites[*known].receptions;
            }
        }
    }
    if (shown.home) {
        for (const HeardSite &site : sites) {
            add(wayFeature(*shown.home, site));
        }
    }
    return bytes + "\n]}\n";
}

} // namespace quillon
