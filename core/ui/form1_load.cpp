#include "core/ui/form1.h"

#include "live/ui/receiverdock.h"
#include "platform/numbers.h"
#include "stats/novelty.h"
#include "txdb/countries.h"
#include "ui/frmsplash.h"
#include "ui/guard.h"
#include "ui/statustext.h"
#include "ui/version.h"
#include "ui_form1.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>

namespace quillon {

using namespace Qt::StringLiterals;

void Form1::Form_Load()
{
    m_applicationDir->setText(m_config.applicationDir());
    const QPointer<frmSplash> splash = new frmSplash(this, frmSplash::Use::WhileLoading, {});
    splash->show();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    QWidget *const messageParent = splash;

    guarded(messageParent, [this] {
        if (!m_config.exists()) {
            m_config.createDefaultConfig();
        }
    });
    m_form->listModes();
    guarded(messageParent, [this] { m_config.readConfig(); });
    if (splash) {
        splash->setLink(m_config.settings().propagationUrl);
    }
    m_mapDir->setText(m_config.settings().mapDirectory);
    m_ui->Grid1->writeGridHeader();
    m_form->setState(EntryForm::State::AtRest);
    guarded(messageParent, [this] { loadLogbookFile(); });
    populateGrid();
    guarded(messageParent, [this] { loadTransmitterList(); });
    guarded(messageParent, [this] { loadCountryList(); });
    m_decimalComma = DecimalCommaLocale(m_options.regional.numbers);
    m_version->setText(versionLabel());
    restoreLook();
    refreshLists();
    showCounts();
    // Its dock is opened after the docks have come back as they were left, with the window.
    QTimer::singleShot(0, this, [this] {
        m_receiver->start();
        floatWithoutRoom(*m_receiver);
    });
    if (splash) {
        splash->close();
    }
    // Nobody waits for it now; the first Add would.
    constexpr int afterShowing = 200;
    QTimer::singleShot(afterShowing, this, [this] { (void)novelty(); });
}

void Form1::loadLogbookFile()
{
    const QString path = m_config.path(m_config.settings().logbookFileName);
    try {
        if (m_document.loadLogbook() == LogbookLoading::NotLoaded) {
            m_status->setText(
                u"The logbook %1 was not loaded: its first line has an unknown layout"_s.arg(path));
            tellUnreadable(path);
        }
    } catch (const RuntimeError &) {
        m_status->setText(u"The logbook %1 was not loaded whole: %2 entries were read"_s.arg(
            path, QString::number(log().count())));
        throw;
    }
}

// An empty grid says what the file holds that is not shown.
void Form1::tellUnreadable(const QString &path)
{
    m_unreadable = unreadableText(readFile(path), path, m_options.regional.codePage);
    tellEmpty();
}

void Form1::loadTransmitterList()
{
    if (m_document.loadSites()) {
        populateGrid();
    }
}

void Form1::loadCountryList()
{
    m_form->setCountries({});
    if (const auto path = findFile(m_config.applicationDir(), u"country.lst"_s)) {
        m_form->setCountries(readCountries(readFile(*path), m_options.regional.codePage));
    }
}

} // namespace quillon
