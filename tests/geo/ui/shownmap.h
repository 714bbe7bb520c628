#pragma once

#include "geo/ui/mapview.h"

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QTest>
#include <QWheelEvent>

#include <cmath>

namespace quillon::test {

using namespace Qt::StringLiterals;

inline const GeoPosition germany {51.34, 6.57};

inline QPalette lightColours()
{
    return {QColor(0xf0, 0xf0, 0xf0)};
}

inline QPalette darkColours()
{
    return {QColor(53, 53, 53), QColor(30, 30, 32)};
}

inline MapSite site(const QString &name, const QString &country, GeoPosition place, QStringView mode,
    qint32 count, qint32 last, bool today = false)
{
    MapSite result {name, country, place, {}};
    result.modes[mapModeOf(mode)] = {count, last, *fromCivil({2026, 6, 5, 17, 30, 0}), today};
    return result;
}

inline MapData around(GeoPosition home)
{
    MapData data;
    data.home = home;
    data.sites = {site(u"Sevilla"_s, u"Spain"_s, {37.4, -6.0}, u"Es", 20, 7),
        site(u"Brocken"_s, u"Germany"_s, {51.8, 10.62}, u"Tropo", 1, 3),
        site(u"<b>Roma</b>"_s, u"Italy"_s, {41.9, 12.5}, u"Es", 4, 9, true)};
    data.highestMuf[17] = 143.5;
    return data;
}

// A map on the screen.
class Shown
{
public:
    explicit Shown(const MapData &data, const QPalette &palette = lightColours())
    {
        m_view.setPalette(palette);
        m_view.resize(800, 600);
        m_view.setData(data);
        m_view.show();
        (void)QTest::qWaitForWindowExposed(&m_view);
    }

    MapView &operator*() { return m_view; }
    MapView *operator->() { return &m_view; }

    [[nodiscard]] QPoint pixelOf(const QString &name) const
    {
        for (const MapDot &dot : m_view.scene().dots()) {
            if (m_view.scene().data().sites[dot.site].name == name) {
                return m_view.viewport().toPixel(dot.point).toPoint();
            }
        }
        return {-1000, -1000};
    }
    [[nodiscard]] QPoint pixelAt(GeoPosition place) const
    {
        return m_view.viewport().toPixel(m_view.scene().pointOf(place)).toPoint();
    }
    [[nodiscard]] QColor colourAt(QPoint pixel)
    {
        const QImage image = m_view.grab().toImage();
        return image.pixelColor(pixel * image.devicePixelRatio());
    }
    void wheel(QPoint pixel, int angle)
    {
        QWheelEvent event(QPointF(pixel), QPointF(m_view.mapToGlobal(pixel)), {}, {0, angle}, Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&m_view, &event);
    }

private:
    MapView m_view;
};

inline bool near(const QColor &one, const QColor &other)
{
    const auto apart = [](int a, int b) { return std::abs(a - b) < 45; };
    return apart(one.red(), other.red()) && apart(one.green(), other.green())
        && apart(one.blue(), other.blue());
}

inline QStringList childNames(MapView &view)
{
    QStringList names;
    QAccessibleInterface *map = QAccessible::queryAccessibleInterface(&view);
    for (int i = 0; i < map->childCount(); ++i) {
        if (map->child(i)->role() == QAccessible::Button) {
            names.append(map->child(i)->text(QAccessible::Name));
        }
    }
    return names;
}

} // namespace quillon::test
