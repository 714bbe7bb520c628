#include "ui/elidedlabel.h"

#include "ui/plaintip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace quillon {

using namespace Qt::StringLiterals;

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    // What stands here comes from outside: a "<b>" is three characters.
    setTextFormat(Qt::PlainText);
}

QString ElidedLabel::firstLine() const
{
    const QString whole = text().trimmed();
    const qsizetype end = whole.indexOf(u'\n');
    return end < 0 ? whole : whole.first(end).trimmed() + u" \u2026"_s;
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(firstLine(), Qt::ElideRight, contentsRect().width() - roomBehind());
}

QSize ElidedLabel::sizeHint() const
{
    return {1, fontMetrics().height()};
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && shownText() != text()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainTip(text()), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignVCenter | Qt::AlignLeft, palette(), isEnabled(),
        shownText(), foregroundRole());
}

} // namespace quillon
