#include "geo/ui/mapscene.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

// How far a projected outline may stand beside the true one, km on the plane.
double toleranceOf(OutlineDetail detail)
{
    switch (detail) {
    case OutlineDetail::Fine:
        return 0.5;
    case OutlineDetail::Medium:
        return 3;
    default:
        return 8;
    }
}

double distanceOf(QPointF point)
{
    return std::hypot(point.x(), point.y());
}

} // namespace

MapScene::MapScene()
{
    m_shown.set();
}

void MapScene::setData(MapData data)
{
    const bool moved = data.home != m_data.home;
    m_data = std::move(data);
    if (moved) {
        m_outlines = {};
    }
    projectSites();
    m_receptions = {};
    for (const MapSite &site : m_data.sites) {
        for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
            m_receptions[mode] += site.modes[mode].count;
        }
    }
    gatherDots();
}

void MapScene::setModeShown(std::size_t mode, bool shown)
{
    m_shown.set(mode, shown);
    gatherDots();
}

void MapScene::projectSites()
{
    m_points.clear();
    if (!m_data.home) {
        return;
    }
    m_points.reserve(m_data.sites.size());
    for (const MapSite &site : m_data.sites) {
        m_points.push_back(pointOf(site.place));
    }
}

void MapScene::gatherDots()
{
    m_dots.clear();
    for (std::size_t site = 0; site < m_points.size(); ++site) {
        MapDot dot {site, none, m_points[site], 0, -1, {}, false};
        qint32 most = 0;
        for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
            const ModeReceptions &receptions = m_data.sites[site].modes[mode];
            if (!m_shown.test(mode) || receptions.count == 0) {
                continue;
            }
            if (receptions.count > most) {
                most = receptions.count;
                dot.mode = mode;
            }
            if (dot.count == 0 || receptions.last > dot.last) {
                dot.last = receptions.last;
                dot.lastEntry = receptions.lastEntry;
            }
            dot.count += receptions.count;
            dot.today = dot.today || receptions.today;
        }
        if (dot.count > 0) {
            m_dots.push_back(dot);
        }
    }
    std::ranges::stable_sort(m_dots, {}, [](const MapDot &dot) { return std::pair(dot.today, -dot.count); });
    findFarthest();
}

void MapScene::findFarthest()
{
    std::array<std::size_t, mapModeCount> best;
    best.fill(none);
    m_reach = 0;
    for (std::size_t i = 0; i < m_dots.size(); ++i) {
        const double distance = distanceOf(m_dots[i].point);
        m_reach = std::max(m_reach, distance);
        const auto &modes = m_data.sites[m_dots[i].site].modes;
        for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
            const bool counts = m_shown.test(mode) && modes[mode].count > 0;
            if (counts && (best[mode] == none || distance > distanceOf(m_dots[best[mode]].point))) {
                best[mode] = i;
            }
        }
    }
    m_farthest.clear();
    for (std::size_t mode = 0; mode < otherMode; ++mode) {
        if (best[mode] != none) {
            m_farthest.push_back({mode, best[mode]});
        }
    }
}

QString MapScene::legOf(std::size_t site) const
{
    const Leg leg = legBetween(*m_data.home, m_data.sites[site].place);
    return distanceText(leg.kilometres, m_data.unit) + u", "_s + azimuthText(leg.azimuth);
}

QStringList MapScene::linesOf(const MapDot &dot) const
{
    const MapSite &site = m_data.sites[dot.site];
    const QString number = dot.count == 1 ? u"1 reception"_s : u"%1 receptions"_s.arg(dot.count);
    return {shortened(site.name), shortened(site.country), legOf(dot.site), number,
        u"Last "_s + generalText(dot.last)};
}

QPointF MapScene::pointOf(const GeoPosition &place) const
{
    return AzimuthalEquidistant(*m_data.home).project(place);
}

const PlaneOutlines &MapScene::outlines(OutlineDetail detail) const
{
    auto &kept = m_outlines[static_cast<std::size_t>(detail)];
    if (!kept) {
        kept = projected(quillon::outlines(detail), AzimuthalEquidistant(*m_data.home), toleranceOf(detail));
    }
    return *kept;
}

QString shortened(const QString &name)
{
    constexpr qsizetype longest = 48;
    return name.size() > longest ? name.first(longest - 1) + u'…' : name;
}

} // namespace quillon
