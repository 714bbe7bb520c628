#include "ui/ownroom.h"

#include <QEvent>
#include <QLayout>

#include <memory>

namespace quillon {

OwnRoom::OwnRoom(QWidget &content)
    : m_content(content)
{
    setSizePolicy(content.sizePolicy());
    // Where the content stands in a layout, that must hear first who takes its place.
    QWidget *window = content.parentWidget();
    if (window && window->layout()) {
        const std::unique_ptr<QLayoutItem> replaced(window->layout()->replaceWidget(&content, this));
    }
    const bool wasHidden = content.isHidden();
    content.setParent(this);
    content.setGeometry(rect());
    content.setVisible(!wasHidden);
}

void OwnRoom::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateGeometry();
    }
}

void OwnRoom::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_content.setGeometry(rect());
}

} // namespace quillon
