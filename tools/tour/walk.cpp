#include "tour/walk.h"

#include "net/inet1.h"
#include "tour/look.h"
#include "ui/grid.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>

#include <stdexcept>

namespace quillon::tour {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize mainSize(1180, 760);

} // namespace

Walk::Walk(QWidget &mainWindow, const QString &pictures, const QString &service, QString receiver)
    : m_mainWindow(mainWindow)
    , m_pictures(pictures)
    , m_service(service)
    , m_receiver(std::move(receiver))
{
    setShade(Shade::Light);
    m_mainWindow.resize(mainSize);
    QTest::qWait(0);
}

void Walk::fail(const QString &what)
{
    throw std::runtime_error(what.toStdString());
}

void Walk::click(const QString &name, QWidget *window) const
{
    auto &clicked = control(name, window);
    if (!clicked.isEnabled()) {
        fail(name + u" is disabled");
    }
    QTest::mouseClick(&clicked, Qt::LeftButton);
}

void Walk::type(const QString &name, const QString &text, QWidget *window) const
{
    auto &field = control(name, window);
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&field, text);
}

void Walk::key(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    m_mainWindow.activateWindow();
    if (!QTest::qWaitForWindowActive(&m_mainWindow)) {
        fail(u"the main window does not get the focus"_s);
    }
    QTest::keyClick(&m_mainWindow, key, modifiers);
}

void Walk::menu(const QString &action) const
{
    auto &chosen = control<QAction>(action);
    auto *bar = m_mainWindow.findChild<QMenuBar *>();
    for (QAction *entry : bar->actions()) {
        QMenu *opened = entry->menu();
        if (opened && opened->actions().contains(&chosen)) {
            QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(entry).center());
            QTest::mouseClick(opened, Qt::LeftButton, {}, opened->actionGeometry(&chosen).center());
            return;
        }
    }
    fail(action + u" stands in no menu");
}

QWidget &Walk::window(const QString &name) const
{
    QTest::qWait(0);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *each : windows) {
        if (each->objectName() == name && each->isVisible()) {
            return *each;
        }
    }
    fail(u"no window " + name + u" is open");
}

void Walk::clickRow(const QString &dateTime) const
{
    auto &grid = control<Grid>(u"Grid1"_s);
    for (int row = 1; row < grid.rows(); ++row) {
        if (grid.text(row, GridColumn::DateTime) == dateTime) {
            grid.setTopRow(qMax(1, row - 4));
            const QModelIndex cell = grid.model()->index(row - 1, 3);
            QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(cell).center());
            return;
        }
    }
    fail(u"the grid has no row of " + dateTime);
}

void Walk::delayService(int milliseconds) const
{
    const QString url = m_service + u"/control?mode=delay:%1"_s.arg(milliseconds);
    if (Inet1(CodePage()).openUrl(url.toLatin1()) != u"OK\n") {
        fail(u"the service cannot be delayed"_s);
    }
}

void Walk::when(const std::function<bool()> &holds, const std::function<void()> &work)
{
    auto *timer = new QTimer(&m_answers);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, holds, work] {
        if (holds()) {
            timer->stop();
            timer->deleteLater();
            work();
        }
    });
    timer->start(1);
}

void Walk::picture(const QString &name, QWidget &of, QSize size)
{
    if (!size.isEmpty()) {
        of.resize(size);
    }
    for (const Shade shade : {Shade::Light, Shade::Dark}) {
        setShade(shade);
        // What follows the palette, a chart for one, redraws when the event has reached it.
        QTest::qWait(20);
        const QString path = m_pictures + u'/' + name + (shade == Shade::Dark ? u"-dark.png"_s : u".png"_s);
        if (!of.grab().toImage().convertToFormat(QImage::Format_RGB888).save(path)) {
            fail(u"cannot write " + path);
        }
        m_written += path;
    }
    setShade(Shade::Light);
    QTest::qWait(0);
}

void Walk::picture(const QString &name)
{
    picture(name, m_mainWindow);
}

void Walk::pictureOfBox(const QString &name, Qt::Key answer)
{
    m_answers.doing([this, name, answer](QWidget *box) {
        picture(name, *box);
        QTest::keyClick(box, answer);
    });
}

} // namespace quillon::tour
