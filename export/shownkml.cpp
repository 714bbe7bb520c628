#include "export/shownkml.h"

#include "export/kmldocument.h"
#include "export/markup.h"
#include "platform/numbers.h"
#include "txdb/derivedcells.h"

#include <QHash>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct SiteReceptions
{
    GeoPosition place;
    std::vector<qint32> entries;
};

std::vector<SiteReceptions> bySite(const ShownLog &shown)
{
    std::vector<SiteReceptions> sites;
    QHash<std::pair<QString, QString>, std::size_t> known;
    for (const qint32 number : shown.entries) {
        const LogEntry &entry = shown.rows.log().entry(number);
        const auto place = placeOf(entry, shown.sites);
        if (!place) {
            continue;
        }
        const auto found = known.constFind({entry.transmitter, entry.country});
        const std::size_t site = found == known.cend() ? sites.size() : *found;
        if (site == sites.size()) {
            known.insert({entry.transmitter, entry.country}, site);
            sites.push_back({*place, {}});
        }
        sites[site].entries.push_back(number);
    }
    return sites;
}

QByteArray listLine(const LogEntry &entry)
{
    QByteArray line = "<li>"_ba;
    bool first = true;
    for (const QString &text : {generalText(entry.dateTime), entry.piCode, entry.rdsName, entry.freq}) {
        line += first ? "["_ba : " ["_ba;
        appendMarkup(line, text);
        line += ']';
        first = false;
    }
    return line + "</li>\r\n";
}

} // namespace

QByteArray shownKml(const ShownLog &shown)
{
    constexpr int micro = 6;
    KmlDocument document(u"Quillon - Shown Receptions"_s, appendMarkup);
    for (const SiteReceptions &site : bySite(shown)) {
        const LogEntry &first = shown.rows.log().entry(site.entries.front());
        document.beginPlacemark(first.transmitter, first.country);
        document.beginList();
        for (const qint32 entry : site.entries) {
            document.addToList(listLine(shown.rows.log().entry(entry)));
        }
        document.endList();
        document.endPlacemark(heardColor, plainText(rounded(site.place.longitude, micro)),
            plainText(rounded(site.place.latitude, micro)));
    }
    return document.finished();
}

} // namespace quillon
