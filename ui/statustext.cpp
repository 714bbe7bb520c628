#include "ui/statustext.h"

#include <QToolButton>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int linkGap = 6;

} // namespace

StatusText::StatusText(QWidget *parent)
    : ElidedLabel(parent)
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

int StatusText::roomBehind() const
{
    return m_link->isHidden() ? 0 : m_link->sizeHint().width() + linkGap;
}

// Behind the text, or at the end of the line when the text is longer.
void StatusText::placeLink()
{
    const QSize size(m_link->sizeHint().width(), height());
    const int behind = contentsRect().left() + fontMetrics().horizontalAdvance(firstLine()) + linkGap;
    m_link->setGeometry({{std::min(behind, contentsRect().right() - size.width()), 0}, size});
}

void StatusText::resizeEvent(QResizeEvent *event)
{
    ElidedLabel::resizeEvent(event);
    placeLink();
}

void StatusText::paintEvent(QPaintEvent *event)
{
    if (!m_link->isHidden() && text() != m_linkedText) {
        m_link->hide();
    }
    ElidedLabel::paintEvent(event);
}

} // namespace quillon
