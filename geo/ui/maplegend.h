#pragma once

#include "stats/mapdata.h"

#include <QFrame>

#include <array>

class QCheckBox;

namespace quillon {

class MapScene;
struct MapStyle;

/// The legend of the map, `mapLegend`: a box for each mode that was received, with its colour and number of
/// receptions; unticked it takes the mode off the map.
class MapLegend : public QFrame
{
    Q_OBJECT

public:
    explicit MapLegend(QWidget *parent);

    /// Shows the modes of a scene, and takes the room that they need.
    void show(const MapScene &scene, const MapStyle &style);
    /// True when no mode was received.
    [[nodiscard]] bool isEmpty() const { return m_isEmpty; }

Q_SIGNALS:
    void modeToggled(std::size_t mode, bool shown);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QPixmap picture(const MapStyle &style, std::size_t mode) const;

    std::array<QCheckBox *, mapModeCount> m_boxes {};
    bool m_isEmpty = true;
    QColor m_ground;
    QColor m_edge;
};

} // namespace quillon
