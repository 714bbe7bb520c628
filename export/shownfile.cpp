#include "export/shownfile.h"

#include "export/showncsv.h"
#include "export/showngeojson.h"
#include "export/shownkml.h"
#include "export/shownpage.h"
#include "export/showntext.h"
#include "txdb/derivedcells.h"

#include <QFileInfo>

#include <algorithm>

namespace quillon {

std::optional<ShownKind> shownKindOf(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix();
    const auto found = std::ranges::find_if(shownFormats,
        [&](const ShownFormat &format) { return suffix.compare(format.suffix, Qt::CaseInsensitive) == 0; });
    return found == shownFormats.end() ? std::nullopt : std::optional(found->kind);
}

QByteArray shownBytes(const ShownLog &shown, ShownKind kind)
{
    switch (kind) {
    case ShownKind::GeoJson:
        return shownGeoJson(shown);
    case ShownKind::Kml:
        return shownKml(shown);
    case ShownKind::Text:
        return shownText(shown);
    case ShownKind::Page:
        return shownPage(shown);
    default:
        return shownCsv(shown);
    }
}

int leftOut(const ShownLog &shown, ShownKind kind)
{
    return kind != ShownKind::Kml ? 0
                                  : static_cast<int>(std::ranges::count_if(shown.entries, [&](qint32 entry) {
                                        return !placeOf(shown.rows.log().entry(entry), shown.sites);
                                    }));
}

} // namespace quillon
