#pragma once

#include "geo/ui/mapclouds.h"
#include "geo/ui/mapdots.h"
#include "geo/ui/mappicture.h"
#include "geo/ui/mapscene.h"
#include "geo/ui/mapstyle.h"
#include "geo/ui/mapviewport.h"

#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <optional>
#include <vector>

class QLabel;

namespace quillon {

class MapLegend;

/// The map, `map`: the world around home in azimuthal equidistant projection, so that every distance and
/// every direction from home is true, with the sites that were received as dots. The wheel and + and - zoom
/// at the pointer, dragging moves, a double-click zooms in, two fingers pinch, the arrows move, Home returns.
/// Ctrl and an arrow go to the next dot in that direction, Enter chooses it, Ctrl+Enter filters by it.
class MapView : public QWidget
{
    Q_OBJECT

public:
    explicit MapView(QWidget *parent = nullptr);

    /// Shows this data in place of what stood there. What is seen stays, unless home is another or nothing
    /// was seen before.
    void setData(MapData newData);
    /// Shows the path to the chosen reception, or none; what is seen stays.
    void setPath(std::optional<MapPath> path);
    /// Shows the middles of the Es paths as a density in place of the dots.
    void setClouds(bool shown);
    void setModeShown(std::size_t mode, bool shown);

    [[nodiscard]] const MapScene &scene() const { return m_scene; }
    [[nodiscard]] const MapViewport &viewport() const { return m_viewport; }
    [[nodiscard]] bool clouds() const { return m_clouds; }
    /// The dots in sight, by number in the scene's.
    [[nodiscard]] const std::vector<std::size_t> &dotsInView() const;
    /// Grows whenever the dots are others.
    [[nodiscard]] int generation() const { return m_generation; }
    /// Does what a click on a dot of the scene does.
    void chooseDot(std::size_t dot);
    /// The dot under the pointer, or that the keys have come to.
    [[nodiscard]] std::optional<std::size_t> pointedDot() const { return m_pointed; }

    void zoomIn();
    void zoomOut();
    /// All that was received is in sight, home in the middle.
    void showAll();

    /// What is seen, for a picture of it.
    [[nodiscard]] MapPicture picture() const;
    /// Copies what is seen to the clipboard as a picture of that size.
    void copyPicture(QSize size) const;

    [[nodiscard]] QSize sizeHint() const override { return {640, 480}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {200, 160}; }

Q_SIGNALS:
    /// A dot was clicked: the latest of its receptions that are shown, by number in the log.
    void receptionChosen(qint32 entry);
    /// A dot was clicked with Ctrl.
    void siteChosen(const QString &name, const QString &country);
    /// The link to the setup was clicked.
    void setupWanted();

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    struct Drag
    {
        QPointF pressed;
        MapViewport viewport;
        bool moved = false;
    };

    void look(const MapViewport &viewport);
    void moveTo(const MapViewport &viewport);
    void moving();
    void settle();
    void zoom(double factor, QPointF pixel);
    void point(QPointF pixel);
    void goToDot(QPointF direction);
    void pick(std::size_t dot, Qt::KeyboardModifiers modifiers);
    void dotsChanged();
    void updateMessage();
    void arrange();
    void applyStyle();
    void showTip(QPoint pixel, std::size_t dot);
    void tellPointed();
    bool gesture(QEvent *event);
    void paintClouds(QPainter &painter);
    [[nodiscard]] MapViewport wholeViewport() const;
    [[nodiscard]] const QPixmap &ground();
    [[nodiscard]] QPointF zoomPoint() const;

    MapScene m_scene;
    MapViewport m_viewport;
    MapStyle m_style;
    DotPainter m_dots;
    bool m_clouds = false;
    bool m_untouched = true; ///< what is seen was not moved or zoomed
    bool m_moving = false; ///< coarser outlines will do
    QTimer m_settling;
    int m_generation = 0;
    std::optional<Drag> m_drag;
    std::optional<std::size_t> m_pointed;
    QPixmap m_ground;
    std::optional<MapViewport> m_groundOf;
    CloudPicture m_cloudPicture;
    std::optional<MapViewport> m_cloudsOf;
    mutable std::optional<std::vector<std::size_t>> m_inView;
    MapLegend *m_legend;
    QLabel *m_noHome;
};

} // namespace quillon
