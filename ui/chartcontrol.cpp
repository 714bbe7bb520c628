#include "ui/chartcontrol.h"

#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QBuffer>
#include <QChart>
#include <QClipboard>
#include <QGraphicsLayout>
#include <QGuiApplication>
#include <QLegend>
#include <QPainter>
#include <QValueAxis>

namespace quillon {

using namespace Qt::StringLiterals;

ChartControl::ChartControl(QWidget *parent)
    : QChartView(parent)
    , m_style(ChartStyle::of(palette()))
    , m_categoryWord(u"Period"_s)
    , m_countWord(u"Receptions"_s)
    , m_legendFont(font())
{
    setRenderHint(QPainter::Antialiasing);
    setMouseTracking(true);
    setFrameShape(QFrame::StyledPanel);
    chart()->setAnimationOptions(QChart::NoAnimation);
    constexpr int margin = 14;
    chart()->setBackgroundRoundness(0);
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->setMargins({margin, margin, margin, margin});
    chart()->legend()->setAlignment(Qt::AlignRight);
    chart()->legend()->hide();
    applyStyle();
}

void ChartControl::setTable(const ChartTable &table)
{
    m_table = table;
    m_scale = axisScale(table.largest(), m_mostSteps);
    setHovered(std::nullopt);
    chart()->removeAllSeries();
    const auto axes = chart()->axes();
    for (QAbstractAxis *axis : axes) {
        chart()->removeAxis(axis);
        axis->deleteLater();
    }
    // Titles, legends and axes take what they show for markup.
    chart()->setTitle(table.title().toHtmlEscaped());
    if (!table.isEmpty()) {
        addSeries();
    }
    chart()->legend()->setVisible(m_legend && !table.isEmpty());
    applyStyle();
    chart()->layout()->activate();
    describe();
}

void ChartControl::addSeries()
{
    const auto categories = m_table.categories().size();
    const auto count = m_table.series().size();
    auto series = std::make_unique<QBarSeries>();
    QList<QBarSet *> sets;
    for (int one = 0; one < count; ++one) {
        QList<qreal> values;
        for (int category = 0; category < categories; ++category) {
            values.append(m_table.count(category, one));
        }
        auto set = std::make_unique<QBarSet>(m_table.series().at(one).toHtmlEscaped());
        set->append(values);
        set->setPen(Qt::NoPen);
        sets.append(set.release());
    }
    series->append(sets);
    series->setBarWidth(groupWidth());
    QBarSeries *added = series.release();
    chart()->addSeries(added);
    addAxes(added);
}

void ChartControl::addAxes(QBarSeries *series)
{
    auto periods = std::make_unique<QBarCategoryAxis>();
    for (const QString &category : m_table.categories()) {
        periods->append(category.toHtmlEscaped());
    }
    periods->setGridLineVisible(false);

    auto counts = std::make_unique<QValueAxis>();
    counts->setRange(0, m_scale.maximum);
    counts->setTickCount(m_scale.maximum / m_scale.step + 1);
    counts->setLabelFormat(u"%d"_s);
    counts->setTitleText(m_countWord);

    QAbstractAxis *periodAxis = periods.release();
    QAbstractAxis *countAxis = counts.release();
    chart()->addAxis(periodAxis, Qt::AlignBottom);
    chart()->addAxis(countAxis, Qt::AlignLeft);
    series->attachAxis(periodAxis);
    series->attachAxis(countAxis);
}

void ChartControl::describe()
{
    QStringList parts;
    for (int category = 0; category < m_table.categories().size(); ++category) {
        int sum = 0;
        for (int series = 0; series < m_table.series().size(); ++series) {
            sum += m_table.count(category, series);
        }
        parts.append(m_table.categories().at(category).trimmed() + u": "_s + QString::number(sum));
    }
    setAccessibleDescription(
        m_table.isEmpty() ? m_emptyText : m_table.title() + u". "_s + parts.join(u", "_s));
}

void ChartControl::setLegend(bool visible, const QFont &font)
{
    m_legend = visible;
    m_legendFont = font;
    chart()->legend()->setVisible(visible && !m_table.isEmpty());
    applyFonts();
}

void ChartControl::setGridPenStyle(Qt::PenStyle style)
{
    m_gridPenStyle = style;
    applyStyle();
}

void ChartControl::setBackdrop(QPalette::ColorRole colour, Qt::BrushStyle style)
{
    m_backdropRole = colour;
    m_backdropStyle = style;
    applyStyle();
}

void ChartControl::setWords(const QString &category, const QString &count)
{
    m_categoryWord = category;
    m_countWord = count;
}

void ChartControl::setAutomaticLayout()
{
    chart()->setPlotArea({});
    chart()->legend()->attachToChart();
}

void ChartControl::setEmptyText(const QString &text)
{
    m_emptyText = text;
    describe();
    viewport()->update();
}

QImage ChartControl::picture() const
{
    constexpr QSize size(1920, 1080);
    constexpr qreal enlargement = 1.4;
    ChartControl copy;
    copy.setPalette(lightPalette());
    copy.setFont(scaledFont(font(), enlargement));
    copy.setLegend(m_legend, scaledFont(m_legendFont, enlargement));
    copy.setGridPenStyle(m_gridPenStyle);
    copy.setBackdrop(m_backdropRole, m_backdropStyle);
    copy.setEmptyText(m_emptyText);
    copy.setWords(m_categoryWord, m_countWord);
    copy.setTable(m_table);
    copy.chart()->resize(size);

    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(renderHints());
    const QRectF all(QPointF(), size);
    copy.scene()->render(&painter, all, all);
    copy.paintOver(painter);
    return image;
}

QImage ChartControl::copyPicture() const
{
    QImage image = picture();
    QGuiApplication::clipboard()->setImage(image);
    return image;
}

void saveBitmap(const QImage &image, const QString &path, FileCalls &calls)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly)
        || !image.convertToFormat(QImage::Format_RGB32).save(&buffer, "BMP")) {
        throw RuntimeError(
            ErrorName::InvalidProcedureCall, u"The picture cannot be made a bitmap for "_s + path);
    }
    writeFile(path, bytes, calls);
}

} // namespace quillon
