#include "ui/plaincells.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QWidget>
#include <QtMath>

#include <algorithm>

namespace quillon {

namespace {

// The cells of a large screen twice over; each is a good kilobyte.
constexpr int keptTexts = 2000;
// A longer text is rare, and would only fill what is kept.
constexpr qsizetype longest = 80;

bool isPlain(const QString &text)
{
    const auto isUnusual = [](QChar c) {
        return c < u' ' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator || c.isSurrogate()
            || c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
    };
    return text.size() <= longest && std::ranges::none_of(text, isUnusual);
}

QPalette::ColorGroup groupOf(QStyle::State state)
{
    if (!state.testFlag(QStyle::State_Enabled)) {
        return QPalette::Disabled;
    }
    return state.testFlag(QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
}

// Between left and right to the fraction of a pixel, as a text layout has it; up and down to the pixel.
QPointF placed(QSizeF size, QRect room, Qt::Alignment alignment)
{
    const qreal spare = room.width() - size.width();
    const qreal left = alignment.testFlag(Qt::AlignHCenter) ? spare / 2
        : alignment.testFlag(Qt::AlignRight)                ? spare
                                                            : 0;
    const QSize line(room.width(), qCeil(size.height()));
    return {room.x() + left,
        static_cast<qreal>(QStyle::alignedRect(Qt::LeftToRight, alignment, line, room).top())};
}

} // namespace

PlainCells::PlainCells(QObject *parent)
    : QStyledItemDelegate(parent)
    , m_shaped(keptTexts)
{
}

PlainCells::Shaped PlainCells::shaped(const QStyleOptionViewItem &option, const Key &key) const
{
    if (m_font != option.font) {
        m_shaped.clear();
        m_font = option.font;
    }
    if (const Shaped *kept = m_shaped.object(key)) {
        return *kept;
    }
    Shaped made;
    made.text.setTextFormat(Qt::PlainText);
    made.text.setPerformanceHint(QStaticText::AggressiveCaching);
    made.text.setText(option.fontMetrics.elidedText(key.text, option.textElideMode, key.width));
    made.text.prepare({}, option.font);
    made.size = made.text.size();
    m_shaped.insert(key, new Shaped(made));
    return made;
}

void PlainCells::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QString text = index.data(Qt::DisplayRole).toString();
    if (option.state.testFlag(QStyle::State_HasFocus) || !isPlain(text) || option.direction == Qt::RightToLeft
        || index.data(Qt::FontRole).isValid()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    if (selected || option.state.testFlag(QStyle::State_MouseOver)) {
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    }
    if (text.isEmpty()) {
        return;
    }
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
    const QRect room = option.rect.adjusted(margin, 0, -margin, 0);
    const Shaped drawn = shaped(option, {text, room.width()});
    const Qt::Alignment alignment(index.data(Qt::TextAlignmentRole).toInt());
    painter->setFont(option.font);
    painter->setPen(
        option.palette.color(groupOf(option.state), selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawStaticText(placed(drawn.size, room, alignment), drawn.text);
}

} // namespace quillon
