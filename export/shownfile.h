#pragma once

#include "export/shownlog.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <array>
#include <optional>

namespace quillon {

/// What a file of the shown receptions can be.
enum class ShownKind {
    Csv,
    GeoJson,
    Kml,
    Text,
    Page,
};

/// How the listener meets a kind.
struct ShownFormat
{
    ShownKind kind {};
    QStringView caption;
    QStringView suffix; ///< without the point
};

inline constexpr std::array<ShownFormat, 5> shownFormats {{
    {ShownKind::Csv, u"Comma-separated values", u"csv"},
    {ShownKind::GeoJson, u"GeoJSON for maps", u"geojson"},
    {ShownKind::Kml, u"KML for globes", u"kml"},
    {ShownKind::Text, u"Text table", u"txt"},
    {ShownKind::Page, u"HTML page", u"html"},
}};

/// The kind that the end of a file's name tells, whatever its case.
[[nodiscard]] std::optional<ShownKind> shownKindOf(const QString &path);

/// The bytes of a file of that kind.
[[nodiscard]] QByteArray shownBytes(const ShownLog &shown, ShownKind kind);

/// How many of the receptions a file of that kind leaves out, because their sites have no place.
[[nodiscard]] int leftOut(const ShownLog &shown, ShownKind kind);

} // namespace quillon
