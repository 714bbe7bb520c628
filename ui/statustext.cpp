#include "ui/statustext.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace quillon {

using namespace Qt::StringLiterals;

StatusText::StatusText(QWidget *parent)
    : QLabel(parent)
{
    // What stands here comes from outside: a "<b>" is three characters.
    setTextFormat(Qt::PlainText);
}

QString StatusText::shownText() const
{
    const QString whole = text().trimmed();
    const qsizetype end = whole.indexOf(u'\n');
    const QString line = end < 0 ? whole : whole.first(end).trimmed() + u" \u2026"_s;
    return fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width());
}

QSize StatusText::sizeHint() const
{
    return {1, fontMetrics().height()};
}

bool StatusText::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && shownText() != text()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void StatusText::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignVCenter | Qt::AlignLeft, palette(), isEnabled(),
        shownText(), foregroundRole());
}

} // namespace quillon
