#pragma once

#include "geo/planeoutlines.h"
#include "stats/mapdata.h"

#include <array>
#include <bitset>
#include <optional>
#include <vector>

namespace quillon {

/// The chosen reception's site.
struct MapPath
{
    QString name;
    GeoPosition to;

    bool operator==(const MapPath &) const = default;
};

/// A site as it is drawn, counting the modes that are shown.
struct MapDot
{
    std::size_t site = 0; ///< number in the data
    std::size_t mode = 0; ///< the one with the most receptions
    QPointF point; ///< on the plane, km
    qint32 count = 0;
    qint32 lastEntry = -1;
    DateTime last;
    bool today = false;
};

/// The data of the map on the plane around home.
class MapScene
{
public:
    MapScene();

    void setData(MapData data);
    [[nodiscard]] const MapData &data() const { return m_data; }
    void setPath(std::optional<MapPath> path) { m_path = std::move(path); }
    [[nodiscard]] const std::optional<MapPath> &path() const { return m_path; }

    void setModeShown(std::size_t mode, bool shown);
    [[nodiscard]] bool isModeShown(std::size_t mode) const { return m_shown.test(mode); }
    /// Receptions of a mode that have a place, shown or not.
    [[nodiscard]] qint32 receptions(std::size_t mode) const { return m_receptions[mode]; }

    /// What is drawn, in the order of drawing: large dots below small ones, today's on top. Empty without a
    /// home.
    [[nodiscard]] const std::vector<MapDot> &dots() const { return m_dots; }
    /// Of each mode that is shown and has a name the dot that is farthest away, by number in dots(); in the
    /// order of modes.
    struct Farthest
    {
        std::size_t mode;
        std::size_t dot;
    };
    [[nodiscard]] const std::vector<Farthest> &farthest() const { return m_farthest; }
    /// Distance of the farthest dot on the plane, km.
    [[nodiscard]] double reach() const { return m_reach; }

    /// "2034.5 km, 208° SSW" of a site.
    [[nodiscard]] QString legOf(std::size_t site) const;
    /// Name, country, distance and azimuth, number of receptions, date of the last: each a line of the
    /// tooltip.
    [[nodiscard]] QStringList linesOf(const MapDot &dot) const;

    /// The point of a site of the data; home must be set.
    [[nodiscard]] QPointF pointOfSite(std::size_t site) const { return m_points[site]; }
    /// The point of a place; home must be set.
    [[nodiscard]] QPointF pointOf(const GeoPosition &place) const;
    /// The outlines around home, projected when first asked for; home must be set.
    [[nodiscard]] const PlaneOutlines &outlines(OutlineDetail detail) const;

private:
    void projectSites();
    void gatherDots();
    void findFarthest();

    MapData m_data;
    std::optional<MapPath> m_path;
    std::bitset<mapModeCount> m_shown;
    std::array<qint32, mapModeCount> m_receptions {};
    std::vector<QPointF> m_points;
    std::vector<MapDot> m_dots;
    std::vector<Farthest> m_farthest;
    double m_reach = 0;
    mutable std::array<std::optional<PlaneOutlines>, 3> m_outlines;
};

/// The longest part of a name from the log that the map shows.
[[nodiscard]] QString shortened(const QString &name);

} // namespace quillon
