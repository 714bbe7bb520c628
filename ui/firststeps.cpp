#include "ui/firststeps.h"

#include "ui/looks.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// A button that looks like a link; Enter and the space bar press it.
class Link : public QPushButton
{
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            click();
            return;
        }
        QPushButton::keyPressEvent(event);
    }

    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        QFont underlined = font();
        underlined.setUnderline(true);
        painter.setFont(underlined);
        painter.setPen(palette().color(QPalette::Link));
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, text());
        if (hasFocus()) {
            painter.setPen(focusColour(palette()));
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
        }
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        constexpr int rim = 2;
        return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(rim, 2 * rim);
    }
};

} // namespace

FirstSteps::FirstSteps(QWidget *parent)
    : QFrame(parent)
    , m_rows(new QVBoxLayout(this))
{
    setObjectName(u"firstSteps"_s);
    setAccessibleName(u"The first steps"_s);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    auto *heading = new QLabel(u"No receptions yet. Three things to do:"_s, this);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    m_rows->setSpacing(2);
    m_rows->addWidget(heading);
    connect(&addLink(u"firstSetup"_s, u"Say where you are"_s, u"in the setup: distances go by it (Ctrl+,)"_s),
        &QPushButton::clicked, this, &FirstSteps::setupWanted);
    connect(&addLink(u"firstQuickAdd"_s, u"Log a station"_s,
                u"from its frequency, PI code and name (F5), or type all of it (Ctrl+N)"_s),
        &QPushButton::clicked, this, &FirstSteps::quickAddWanted);
    connect(&addLink(u"firstImport"_s, u"Import"_s, u"what other programs have logged"_s),
        &QPushButton::clicked, this, &FirstSteps::importWanted);
}

QPushButton &FirstSteps::addLink(const QString &name, const QString &text, const QString &rest)
{
    auto *link = new Link(text, this);
    link->setObjectName(name);
    link->setAccessibleName(text + u' ' + rest);
    link->setAutoDefault(false);
    link->setCursor(Qt::PointingHandCursor);
    link->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *row = new QHBoxLayout;
    row->setSpacing(4);
    row->addWidget(link);
    row->addWidget(new QLabel(rest, this), 1);
    m_rows->addLayout(row);
    return *link;
}

void FirstSteps::offer(QAction &action)
{
    auto *tick = new QCheckBox(action.text().remove(u'&'), this);
    tick->setObjectName(u"first"_s + action.objectName());
    tick->setToolTip(action.toolTip());
    tick->setChecked(action.isChecked());
    connect(tick, &QCheckBox::toggled, &action, &QAction::setChecked);
    connect(&action, &QAction::toggled, tick, &QCheckBox::setChecked);
    m_rows->addWidget(tick);
}

} // namespace quillon
