#include "support/savedialog.h"
#include "user.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>

namespace quillon::soak {

using namespace Qt::StringLiterals;

void User::exportTransmitters()
{
    trigger(u"menuExportGoogleTX"_s);
    finish();
}

void User::exportLog()
{
    trigger(u"menuExportGoogleLog"_s);
    finish();
}

void User::exportPages()
{
    trigger(u"menuExportWebPage"_s);
    finish();
}

void User::exportText()
{
    // It re-calculates the distances.
    m_teller.changing({Field::Dist});
    m_answers->type(u"01/01/2015"_s);
    m_answers->type(u"31/12/2015"_s);
    trigger(u"menuExportEmail"_s);
    finish();
}

// Answers the question for a file, and the one whether it may be replaced.
void User::chooseFile(const QString &path)
{
    test::saveAs(*m_answers, path);
    if (QFile::exists(path)) {
        m_answers->press(QMessageBox::Yes);
    }
}

void User::exportShown()
{
    const QStringList ends {u"csv"_s, u"geojson"_s, u"kml"_s, u"txt"_s, u"html"_s};
    chooseFile(m_root + u"/out/shown."_s + ends.at(m_random.bounded(ends.size())));
    trigger(u"menuExportShown"_s);
    finish();
}

void User::setUp()
{
    const QPointer<QWidget> window = open(u"menuSetup"_s, u"Form2"_s);
    find<QLineEdit>(*window, u"Text1"_s)->setText(u"DL%1"_s.arg(m_next++));
    click(*window, u"Command1"_s);
    finish();
    if (window) {
        window->close();
    }
}

void User::writeScratchPad()
{
    click(u"Command12"_s);
    auto *window = find<QWidget>(u"ScratchPad"_s);
    auto *text = find<QPlainTextEdit>(*window, u"Text1"_s);
    text->selectAll();
    text->insertPlainText(u"note %1"_s.arg(m_next++));
    click(*window, u"OKButton"_s);
    finish();
    window->close();
}

void User::backUp()
{
    QWidget *window = open(u"menuFileBackups"_s, u"fileBackups"_s);
    chooseFile(m_root + u"/out/copy.zip"_s);
    click(*window, u"backupNow"_s);
    finish();
    window->close();
}

void User::pictureStatistics()
{
    QWidget *window = open(u"menuStats"_s, u"logStats"_s);
    click(*window, u"Command3"_s);
    m_answers->type(m_root + u"/out/statistics.bmp"_s);
    m_answers->press(QMessageBox::Ok);
    click(*window, u"Command2"_s);
    finish();
    window->close();
}

// The window asks for the name of a file, and whether one that is there may be replaced.
void User::saveOfCollection(const QString &button, const QString &file)
{
    QWidget *window = open(u"menuStatsCollection"_s, u"collection"_s);
    const QString path = m_root + u"/out/"_s + file;
    m_answers->type(path);
    if (QFile::exists(path)) {
        m_answers->press(QMessageBox::Yes);
    }
    click(*window, button);
    finish();
    window->close();
}

void User::saveCollection()
{
    saveOfCollection(u"saveCsv"_s, u"collection.csv"_s);
}

void User::pictureCollection()
{
    saveOfCollection(u"savePicture"_s, u"collection.png"_s);
}

void User::pictureMap()
{
    // The dock comes, and goes again.
    trigger(u"menuViewMap"_s);
    m_answers->doing([](QWidget *size) {
        find<QSpinBox>(*size, u"pictureWidth"_s)->setValue(200);
        find<QSpinBox>(*size, u"pictureHeight"_s)->setValue(100);
        size->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save)->click();
    });
    chooseFile(m_root + (m_next++ % 2 == 0 ? u"/out/map.png"_s : u"/out/map.svg"_s));
    click(u"mapSave"_s);
    finish();
    trigger(u"menuViewMap"_s);
}

void User::search()
{
    for (const QString &button :
        {u"Command4"_s, u"Command6"_s, u"Command7"_s, u"Command8"_s, u"Command13"_s}) {
        click(button);
    }
    finish();
}

void User::look()
{
    (void)choose();
    for (const QString &action :
        {u"menuStats"_s, u"menuStatsCollection"_s, u"menuToolsConverter"_s, u"menuAbout"_s}) {
        trigger(action);
    }
    QCoreApplication::processEvents();
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window != m_window && window->isVisible()) {
            window->close();
        }
    }
    finish();
}

} // namespace quillon::soak
