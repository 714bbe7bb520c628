#include "session.h"

#include "backup/ui/filebackups.h"
#include "support/savedialog.h"
#include "ui/form2.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

namespace quillon::soak {

using namespace Qt::StringLiterals;

void Session::exportTransmitters()
{
    trigger(u"menuExportGoogleTX"_s);
    finish();
}

void Session::exportLog()
{
    trigger(u"menuExportGoogleLog"_s);
    finish();
}

void Session::exportPages()
{
    trigger(u"menuExportWebPage"_s);
    finish();
}

void Session::exportText()
{
    m_answers->type(u"01/01/2015"_s);
    m_answers->type(u"31/12/2015"_s);
    trigger(u"menuExportEmail"_s);
    finish();
}

// Answers the question for a file, and the one whether it may be replaced.
void Session::chooseFile(const QString &path)
{
    test::saveAs(*m_answers, path);
    if (QFile::exists(path)) {
        m_answers->press(QMessageBox::Yes);
    }
}

void Session::exportShown()
{
    const QStringList ends {u"csv"_s, u"geojson"_s, u"kml"_s, u"txt"_s, u"html"_s};
    chooseFile(m_root + u"/out/shown."_s + ends.at(m_random.bounded(ends.size())));
    trigger(u"menuExportShown"_s);
    finish();
}

void Session::setUp()
{
    trigger(u"menuSetup"_s);
    const QPointer<Form2> window = find<Form2>(u"Form2"_s);
    window->findChild<QLineEdit *>(u"Text1"_s)->setText(u"DL%1"_s.arg(m_next++));
    window->findChild<QPushButton *>(u"Command1"_s)->click();
    finish();
    if (window) {
        window->close();
    }
}

void Session::backUp()
{
    trigger(u"menuFileBackups"_s);
    auto *window = find<fileBackups>(u"fileBackups"_s);
    chooseFile(m_root + u"/out/copy.zip"_s);
    window->findChild<QPushButton *>(u"backupNow"_s)->click();
    finish();
    window->close();
}

void Session::search()
{
    for (const QString &button :
        {u"Command4"_s, u"Command6"_s, u"Command7"_s, u"Command8"_s, u"Command13"_s}) {
        click(button);
    }
    finish();
}

void Session::look()
{
    (void)choose();
    for (const QString &action :
        {u"menuStats"_s, u"menuStatsCollection"_s, u"menuToolsConverter"_s, u"menuAbout"_s}) {
        trigger(action);
    }
    QCoreApplication::processEvents();
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window != m_form.get() && window->isVisible()) {
            window->close();
        }
    }
    finish();
}

} // namespace quillon::soak
