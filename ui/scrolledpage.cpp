#include "ui/scrolledpage.h"

#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace quillon {

namespace {

// What a window manager and a panel take of a screen's height.
constexpr int frameHeight = 36;

} // namespace

ScrolledPage::ScrolledPage(QVBoxLayout &windowLayout)
    : QScrollArea(windowLayout.parentWidget())
{
    setObjectName(QStringLiteral("page"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // In its window before anything moves into it, so that the order of the Tab key stays.
    auto *content = new QWidget(this);
    setWidget(content);
    auto *rows = new QVBoxLayout(content);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(windowLayout.spacing());
    while (windowLayout.count() > 1) {
        // Only the first item of a widget hears that it wants another height: the old one goes before.
        std::unique_ptr<QLayoutItem> item(windowLayout.takeAt(0));
        QWidget *row = item->widget();
        item.reset();
        rows->addWidget(row);
    }
    windowLayout.insertWidget(0, this, 1);
}

QSize ScrolledPage::sizeHint() const
{
    const int width = isVisible() ? this->width() : widget()->sizeHint().width();
    return {widget()->sizeHint().width(), widget()->layout()->totalHeightForWidth(width)};
}

QSize ScrolledPage::minimumSizeHint() const
{
    constexpr int fewRows = 6;
    return {widget()->minimumSizeHint().width(), fewRows * fontMetrics().height()};
}

void ScrolledPage::fitWindow()
{
    QWidget &shown = *window();
    // What is in a group tells the page what it wants when the group is laid out: the innermost first.
    const QList<QWidget *> within = widget()->findChildren<QWidget *>();
    std::for_each(within.crbegin(), within.crend(), [](const QWidget *row) {
        if (row->layout()) {
            row->layout()->activate();
        }
    });
    updateGeometry();
    const QSize wanted = shown.layout()->totalSizeHint();
    const int room = shown.screen()->availableSize().height() - frameHeight;
    const QSize before = isVisible() ? shown.size() : QSize(wanted.width(), 0);
    shown.resize(before.width(), qMin(qMax(wanted.height(), before.height()), room));
}

// Only now its controls have their style.
void ScrolledPage::showEvent(QShowEvent *event)
{
    QScrollArea::showEvent(event);
    fitWindow();
}

} // namespace quillon
