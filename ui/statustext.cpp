#include "ui/statustext.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int linkGap = 6;

} // namespace

StatusText::StatusText(QWidget *parent)
    : QLabel(parent)
    , m_link(new QToolButton(this))
{
    m_link->setObjectName(u"statusLink"_s);
    m_link->setAutoRaise(true);
    m_link->setFocusPolicy(Qt::TabFocus);
    m_link->setAccessibleName(u"What can be done about it"_s);
    m_link->hide();
    connect(m_link, &QToolButton::clicked, this, [this] {
        // The work may set another text, with another link.
        const auto work = m_work;
        work();
    });
    // What stands here comes from outside: a "<b>" is three characters.
    setTextFormat(Qt::PlainText);
}

void StatusText::tell(const QString &text, const QString &link, std::function<void()> work)
{
    setText(text);
    m_linkedText = text;
    m_work = std::move(work);
    m_link->setText(link);
    m_link->setAccessibleName(link);
    placeLink();
    m_link->show();
}

QString StatusText::toldLine() const
{
    const QString whole = text().trimmed();
    const qsizetype end = whole.indexOf(u'\n');
    return end < 0 ? whole : whole.first(end).trimmed() + u" \u2026"_s;
}

QString StatusText::shownText() const
{
    const int link = m_link->isHidden() ? 0 : m_link->sizeHint().width() + linkGap;
    return fontMetrics().elidedText(toldLine(), Qt::ElideRight, contentsRect().width() - link);
}

// Behind the text, or at the end of the line when the text is longer.
void StatusText::placeLink()
{
    const QSize size(m_link->sizeHint().width(), height());
    const int behind = contentsRect().left() + fontMetrics().horizontalAdvance(toldLine()) + linkGap;
    m_link->setGeometry({{std::min(behind, contentsRect().right() - size.width()), 0}, size});
}

void StatusText::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    placeLink();
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
    if (!m_link->isHidden() && text() != m_linkedText) {
        m_link->hide();
    }
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignVCenter | Qt::AlignLeft, palette(), isEnabled(),
        shownText(), foregroundRole());
}

} // namespace quillon
