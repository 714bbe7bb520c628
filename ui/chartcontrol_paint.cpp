#include "ui/chartcontrol.h"
#include "ui/chartcontrol_labels.h"
#include "ui/plaintip.h"

#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QEvent>
#include <QLegend>
#include <QLegendMarker>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QValueAxis>

#include <algorithm>
#include <array>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qreal titleEnlargement = 1.3;

// The largest of the sizes in which every number fits; the first where none does.
QFont fontOfNumbers(const QFont &font, const std::vector<NumberedBar> &bars, qreal slot)
{
    constexpr std::array<qreal, 4> reductions {0.85, 0.75, 0.65, 0.58};
    constexpr qreal leastPoints = 7.5;
    for (const qreal reduction : reductions) {
        const QFont smaller = scaledFont(font, reduction);
        if (smaller.pointSizeF() >= leastPoints
            && numberStyle(bars, slot, QFontMetricsF(smaller)) != NumberStyle::LevelOverPeaks) {
            return smaller;
        }
    }
    return scaledFont(font, reductions.front());
}

} // namespace

// The share of a category's width that its bars take.
qreal ChartControl::groupWidth() const
{
    constexpr qreal one = 0.7;
    constexpr qreal several = 0.88;
    return m_table.series().size() == 1 ? one : several;
}

QRectF ChartControl::barPlace(Bar bar) const
{
    const QRectF plot = chart()->plotArea();
    const qreal category = plot.width() / static_cast<qreal>(m_table.categories().size());
    const qreal width = category * groupWidth() / static_cast<qreal>(m_table.series().size());
    const qreal left = plot.left() + category * (bar.category + (1 - groupWidth()) / 2) + width * bar.series;
    const qreal height = plot.height() * m_table.count(bar.category, bar.series) / m_scale.maximum;
    return {left, plot.bottom() - height, width, height};
}

std::optional<ChartControl::Bar> ChartControl::barAt(QPointF place) const
{
    const QRectF plot = chart()->plotArea();
    if (m_table.isEmpty() || !plot.contains(place)) {
        return std::nullopt;
    }
    const auto categories = static_cast<int>(m_table.categories().size());
    const auto series = static_cast<int>(m_table.series().size());
    const qreal position = (place.x() - plot.left()) / plot.width() * categories;
    const int category = std::clamp(static_cast<int>(std::floor(position)), 0, categories - 1);
    const qreal inGroup = (position - category - (1 - groupWidth()) / 2) / groupWidth();
    return Bar {category, std::clamp(static_cast<int>(std::floor(inGroup * series)), 0, series - 1)};
}

QString ChartControl::barText(Bar bar) const
{
    const QString period = m_categoryWord + u": "_s + m_table.categories().at(bar.category).trimmed()
        + u" ("_s + m_table.title() + u")"_s;
    const QString hours =
        m_table.series().size() == 1 ? QString() : u"\nHours: "_s + m_table.series().at(bar.series);
    return period + hours + u"\nCount: "_s + QString::number(m_table.count(bar.category, bar.series));
}

void ChartControl::applyStyle()
{
    m_style = ChartStyle::of(palette());
    QChart &plot = *chart();
    plot.setBackgroundBrush(QBrush(palette().color(m_backdropRole), m_backdropStyle));
    setBackgroundBrush(m_style.ground);
    plot.setTitleBrush(m_style.text);
    plot.legend()->setLabelColor(m_style.text);
    const auto axes = plot.axes();
    for (QAbstractAxis *axis : axes) {
        // The periods are painted here: the axis would cut off those of a narrow chart.
        const bool painted = axis->orientation() == Qt::Horizontal;
        axis->setLabelsColor(painted ? QColor(Qt::transparent) : m_style.text);
        axis->setTitleBrush(m_style.quiet);
        axis->setLinePen(QPen(m_style.quiet));
        axis->setGridLinePen(QPen(m_style.grid, 1, m_gridPenStyle));
    }
    const auto allSeries = plot.series();
    for (QAbstractSeries *series : allSeries) {
        const auto sets = qobject_cast<QBarSeries *>(series)->barSets();
        for (int i = 0; i < sets.size(); ++i) {
            sets.at(i)->setColor(m_style.series(i, static_cast<int>(sets.size())));
        }
    }
    applyFonts();
    viewport()->update();
}

void ChartControl::applyFonts()
{
    QFont title = scaledFont(font(), titleEnlargement);
    title.setBold(true);
    chart()->setTitleFont(title);
    chart()->legend()->setFont(m_legendFont);
    const auto axes = chart()->axes();
    for (QAbstractAxis *axis : axes) {
        axis->setLabelsFont(font());
        axis->setTitleFont(font());
    }
}

void ChartControl::changeEvent(QEvent *event)
{
    QChartView::changeEvent(event);
    switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::FontChange:
        applyStyle();
        break;
    default:
        break;
    }
}

void ChartControl::drawForeground(QPainter *painter, const QRectF & /*rect*/)
{
    paintOver(*painter);
    paintHovered(*painter);
}

void ChartControl::paintOver(QPainter &painter) const
{
    paintPeriods(painter);
    if (m_table.isEmpty()) {
        paintNote(painter, m_emptyText);
    } else if (m_table.largest() == 0) {
        paintNote(painter, u"No receptions in this selection."_s);
    } else {
        paintNumbers(painter);
    }
}

void ChartControl::paintNote(QPainter &painter, const QString &text) const
{
    constexpr qreal margin = 24;
    const QRectF place = m_table.isEmpty() ? chart()->rect() : chart()->plotArea();
    painter.setFont(scaledFont(font(), titleEnlargement));
    painter.setPen(m_style.quiet);
    painter.drawText(
        place.adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap, text);
}

void ChartControl::paintPeriods(QPainter &painter) const
{
    constexpr qreal belowAxis = 8;
    constexpr qreal gap = 3;
    // No font is smaller than nothing: a chart without room for its periods keeps them tiny.
    constexpr qreal leastReduction = 0.1;
    if (m_table.isEmpty()) {
        return;
    }
    const QRectF plot = chart()->plotArea();
    const qreal width = plot.width() / static_cast<qreal>(m_table.categories().size());
    qreal widest = 1;
    for (const QString &period : m_table.categories()) {
        widest = std::max(widest, QFontMetricsF(font()).horizontalAdvance(period.trimmed()));
    }
    painter.setFont(scaledFont(font(), std::clamp((width - gap) / widest, leastReduction, 1.0)));
    painter.setPen(m_style.text);
    QRectF place(plot.left(), plot.bottom() + belowAxis, width, QFontMetricsF(font()).height());
    for (const QString &period : m_table.categories()) {
        painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip, period.trimmed());
        place.translate(width, 0);
    }
}

void ChartControl::paintNumbers(QPainter &painter) const
{
    std::vector<NumberedBar> bars;
    const auto categories = static_cast<int>(m_table.categories().size());
    const auto series = static_cast<int>(m_table.series().size());
    for (int category = 0; category < categories; ++category) {
        for (int one = 0; one < series; ++one) {
            bars.push_back({barPlace({category, one}), m_table.count(category, one)});
        }
    }
    const QRectF plot = chart()->plotArea();
    const qreal slot = series == 1 ? plot.width() / categories : bars.front().bar.width();
    const QFont numberFont = fontOfNumbers(font(), bars, slot);
    const QFontMetricsF metrics(numberFont);
    painter.setFont(numberFont);
    painter.setPen(m_style.text);
    for (const PlacedNumber &number : placeNumbers(bars, numberStyle(bars, slot, metrics), plot, metrics)) {
        const QPointF baseline = number.upright ? number.place.bottomRight() : number.place.bottomLeft();
        painter.save();
        painter.translate(baseline);
        painter.rotate(number.upright ? -90 : 0);
        painter.drawText(QPointF(), number.text);
        painter.restore();
    }
}

void ChartControl::paintHovered(QPainter &painter) const
{
    if (m_hovered) {
        painter.setPen(QPen(m_style.text, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(barPlace(*m_hovered).adjusted(-1, -1, 1, 0));
    }
}

void ChartControl::setHovered(std::optional<Bar> bar)
{
    if (m_hovered != bar) {
        m_hovered = bar;
        viewport()->update();
    }
}

void ChartControl::mouseMoveEvent(QMouseEvent *event)
{
    QChartView::mouseMoveEvent(event);
    setHovered(barAt(mapToScene(event->position().toPoint())));
    if (m_hovered) {
        QToolTip::showText(event->globalPosition().toPoint(), plainTip(barText(*m_hovered)), viewport());
    } else {
        QToolTip::hideText();
    }
}

void ChartControl::leaveEvent(QEvent *event)
{
    setHovered(std::nullopt);
    QChartView::leaveEvent(event);
}

} // namespace quillon
