#include "backup/backups.h"
#include "platform/files.h"
#include "support/opened.h"
#include "tour/stops.h"

#include <QComboBox>
#include <QTabWidget>
#include <QTest>

#include <stdexcept>

namespace quillon::tour {

using namespace Qt::StringLiterals;

namespace {

// Closes a window with Esc.
void leave(QWidget &window)
{
    QTest::keyClick(&window, Qt::Key_Escape);
    QTest::qWait(0);
}

void showQuickAdd(Walk &walk)
{
    walk.key(Qt::Key_F5);
    QWidget &window = walk.window(u"Dialog1"_s);
    walk.type(u"Text1"_s, u"95.3"_s, &window);
    walk.type(u"Text2"_s, u"e4b3"_s, &window);
    walk.type(u"Text3"_s, u"GAZTEA"_s, &window);
    walk.picture(u"quick-add"_s, window);
    leave(window);
}

void showConverter(Walk &walk)
{
    walk.menu(u"menuToolsConverter"_s);
    QWidget &window = walk.window(u"Dialog"_s);
    walk.type(u"Text7"_s, u"jo31hi"_s, &window);
    walk.click(u"Command2"_s, &window);
    walk.picture(u"converter"_s, window);
    leave(window);
}

void showSetup(Walk &walk)
{
    walk.menu(u"menuSetup"_s);
    QWidget &window = walk.window(u"Form2"_s);
    walk.type(u"rdsdir"_s, u"C:\\RDSDX\\Loggings"_s, &window);
    walk.type(u"rdsspydir"_s, u"C:\\RDSSpy"_s, &window);
    walk.control(u"Text1"_s, &window).setFocus();
    walk.picture(u"setup"_s, window);
    leave(window);
}

void showScratchPad(Walk &walk)
{
    walk.click(u"Command12"_s);
    QWidget &window = walk.window(u"ScratchPad"_s);
    walk.picture(u"scratch-pad"_s, window);
    leave(window);
}

void showAbout(Walk &walk)
{
    walk.menu(u"menuAbout"_s);
    QWidget &window = walk.window(u"frmSplash"_s);
    walk.picture(u"about"_s, window);
    leave(window);
}

void showStatistics(Walk &walk)
{
    constexpr QSize size(900, 560);
    walk.menu(u"menuStats"_s);
    QWidget &window = walk.window(u"logStats"_s);
    walk.click(u"Command3"_s, &window);
    walk.picture(u"statistics"_s, window, size);
    walk.control<QComboBox>(u"Combo3"_s, &window).setCurrentText(u"Es"_s);
    auto &split = walk.control(u"Check1"_s, &window);
    QTest::mouseClick(&split, Qt::LeftButton, {}, {10, split.height() / 2});
    walk.click(u"Command3"_s, &window);
    walk.picture(u"statistics-hours"_s, window, size);
    leave(window);
}

void showShownExport(Walk &walk)
{
    walk.answers().doing([&walk](QWidget *box) {
        walk.picture(u"export-shown"_s, *box, QSize(720, 420));
        QTest::keyClick(box, Qt::Key_Escape);
    });
    walk.menu(u"menuExportShown"_s);
}

void showBackups(Walk &walk)
{
    walk.menu(u"menuFileBackups"_s);
    QWidget &window = walk.window(u"fileBackups"_s);
    walk.picture(u"backups"_s, window);
    leave(window);
}

// What the log adds up to, tab by tab.
void showCollection(Walk &walk)
{
    constexpr QSize size(980, 640);
    walk.menu(u"menuStatsCollection"_s);
    QWidget &window = walk.window(u"collection"_s);
    auto &tabs = walk.control<QTabWidget>(u"tabs"_s, &window);
    for (int tab = 0; tab < tabs.count(); ++tab) {
        tabs.setCurrentIndex(tab);
        walk.picture(u"collection-"_s + tabs.widget(tab)->objectName(), window, size);
    }
    leave(window);
}

// The pages are pictured in a browser, from the folder that the tour leaves.
void writeWebPages(Walk &walk)
{
    test::Opened opened;
    walk.menu(u"menuExportWebPage"_s);
    if (opened.take().size() != 1) {
        throw std::runtime_error("no page was opened");
    }
}

} // namespace

void makeBackups(const Config &config)
{
    constexpr int receptionsADay = 3;
    const QString path = config.path(config.settings().logbookFileName);
    const QByteArray log = readFile(path);
    Backups backups(backupRoot(), config);
    qsizetype end = log.size();
    for (int day = 30; day > 18; --day) {
        writeFile(path, log.first(end));
        backups.make(*fromCivil({2025, 6, day, 17, day, day / 2}));
        for (int line = 0; line < receptionsADay; ++line) {
            end = log.lastIndexOf('\n', end - 2) + 1;
        }
    }
    writeFile(path, log);
}

QList<Stop> windowStops()
{
    return {{u"Quick Add"_s, showQuickAdd}, {u"the converter"_s, showConverter}, {u"the setup"_s, showSetup},
        {u"the scratch pad"_s, showScratchPad}, {u"about"_s, showAbout},
        {u"the statistics"_s, showStatistics}, {u"the collection"_s, showCollection},
        {u"the export of what is shown"_s, showShownExport}, {u"the backups"_s, showBackups},
        {u"the web pages"_s, writeWebPages}};
}

} // namespace quillon::tour
