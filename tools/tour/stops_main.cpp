#include "tour/stops.h"

#include <QTest>

namespace quillon::tour {

using namespace Qt::StringLiterals;

namespace {

const QString heardEntry = u"14/06/2025 16:41:23"_s;

void showStart(Walk &walk)
{
    walk.picture(u"start"_s);
}

// Until its outlines have come in full.
void waitForMap()
{
    constexpr int longer = 300;
    QTest::qWait(longer);
}

void showEntryAndSearch(Walk &walk)
{
    walk.clickRow(heardEntry);
    walk.click(u"Command4"_s);
    walk.menu(u"menuViewMap"_s);
    const QSize before = walk.mainWindow().size();
    walk.mainWindow().resize(QSize(1720, 900).expandedTo(before));
    waitForMap();
    walk.picture(u"main"_s);
    walk.picture(u"map"_s, walk.control(u"mapDock"_s));
    walk.click(u"mapClouds"_s);
    waitForMap();
    walk.picture(u"map-clouds"_s, walk.control(u"mapDock"_s));
    walk.click(u"mapClouds"_s);
    walk.menu(u"menuViewMap"_s);
    walk.mainWindow().resize(before);
}

void showNewEntry(Walk &walk)
{
    walk.key(Qt::Key_N, Qt::ControlModifier);
    walk.type(u"Text9"_s, u"95.3"_s);
    walk.type(u"Text1"_s, u"E4B3"_s);
    walk.type(u"Text8"_s, u"GAZTEA"_s);
    walk.type(u"Text2"_s, u"12/07/2025 16:45:01"_s);
    walk.type(u"Combo2"_s, u"Es"_s);
    walk.type(u"Combo3"_s, u"E"_s);
    walk.type(u"Text5"_s, u"Jaizkibel"_s);
    walk.type(u"Text3"_s, u"Came up for two minutes"_s);
    walk.click(u"Command7"_s);
    walk.picture(u"new-entry"_s);
    walk.click(u"Command2"_s);
}

void showMessageBox(Walk &walk)
{
    walk.key(Qt::Key_N, Qt::ControlModifier);
    walk.type(u"Text9"_s, {});
    QTest::keyClick(&walk.control(u"Text9"_s), Qt::Key_Delete);
    walk.pictureOfBox(u"message"_s, Qt::Key_Return);
    walk.click(u"Command1"_s);
    walk.click(u"Command2"_s);
}

void showFind(Walk &walk)
{
    walk.answers().doing([&walk](QWidget *box) {
        QTest::keyClicks(box->focusWidget(), u"e211"_s);
        walk.picture(u"find"_s, *box);
        QTest::keyClick(box, Qt::Key_Escape);
    });
    walk.menu(u"menuToolsFind"_s);
}

constexpr QSize smallScreen(1024, 700);
constexpr QSize largeScreen(1920, 1080);

void pictureOfBothSizes(Walk &walk, const QString &name)
{
    walk.picture(name, walk.mainWindow(), smallScreen);
    walk.picture(name + u"-large"_s, walk.mainWindow(), largeScreen);
}

void showFilter(Walk &walk)
{
    const QSize before = walk.mainWindow().size();
    walk.key(Qt::Key_K, Qt::ControlModifier);
    walk.type(u"filterText"_s, u"itu:E freq>95 -date:2023"_s);
    pictureOfBothSizes(walk, u"filter"_s);
    walk.control(u"Grid1"_s).setFocus();
    QTest::keyClick(&walk.control(u"Grid1"_s), Qt::Key_A, Qt::ControlModifier);
    walk.key(Qt::Key_F2);
    QWidget &window = walk.window(u"editMany"_s);
    walk.click(u"tickProp"_s, &window);
    walk.type(u"valueProp"_s, u"Tropo"_s, &window);
    walk.picture(u"edit-many"_s, window);
    QTest::keyClick(&window, Qt::Key_Escape);
    QTest::keyClick(&walk.control(u"filterText"_s), Qt::Key_Escape);
    walk.mainWindow().resize(before);
}

} // namespace

QList<Stop> mainStops()
{
    return {{u"the log as it opens"_s, showStart}, {u"a new entry"_s, showNewEntry},
        {u"a message"_s, showMessageBox}, {u"Find"_s, showFind},
        {u"a filter, and many receptions at once"_s, showFilter},
        {u"a reception, what was heard on its PI code before, and the map beside the log"_s,
            showEntryAndSearch}};
}

} // namespace quillon::tour
