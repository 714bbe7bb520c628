#include "geo/ui/maplegend.h"

#include "geo/ui/mapdots.h"
#include "geo/ui/mapscene.h"
#include "geo/ui/mapstyle.h"

#include <QCheckBox>
#include <QPainter>
#include <QVBoxLayout>

namespace quillon {

using namespace Qt::StringLiterals;

MapLegend::MapLegend(QWidget *parent)
    : QFrame(parent)
{
    setObjectName(u"mapLegend"_s);
    setAccessibleName(u"Modes on the map"_s);
    setCursor(Qt::ArrowCursor);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(6, 4, 6, 4);
    rows->setSpacing(1);
    for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
        auto *box = new QCheckBox(this);
        box->setObjectName(u"mapMode"_s + mapModeName(mode));
        box->setToolTip(u"Shows receptions by "_s + mapModeName(mode) + u" on the map"_s);
        rows->addWidget(box);
        m_boxes[mode] = box;
        connect(
            box, &QCheckBox::clicked, this, [this, mode](bool shown) { Q_EMIT modeToggled(mode, shown); });
    }
}

void MapLegend::show(const MapScene &scene, const MapStyle &style)
{
    m_ground = style.halo;
    m_edge = style.border;
    m_isEmpty = true;
    for (std::size_t mode = 0; mode < mapModeCount; ++mode) {
        QCheckBox &box = *m_boxes[mode];
        const qint32 count = scene.receptions(mode);
        box.setText(mapModeName(mode) + u"  "_s + QString::number(count));
        box.setAccessibleName(
            mapModeName(mode) + u", "_s + (count == 1 ? u"1 reception"_s : u"%1 receptions"_s.arg(count)));
        box.setIcon(picture(style, mode));
        box.setChecked(scene.isModeShown(mode));
        box.setVisible(count > 0);
        m_isEmpty = m_isEmpty && count == 0;
    }
    layout()->activate();
    resize(sizeHint());
}

QPixmap MapLegend::picture(const MapStyle &style, std::size_t mode) const
{
    constexpr int side = 14;
    QPixmap pixmap(QSize(side, side) * devicePixelRatioF());
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    paintDot(painter, QPointF(side, side) / 2, 5, style.mode(mode), style, false);
    return pixmap;
}

void MapLegend::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(m_edge);
    painter.setBrush(m_ground);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

} // namespace quillon
