#include "core/ui/form1.h"

#include "import/rdsdx.h"
#include "import/rdsspy.h"
#include "import/ui/importrdsspy.h"
#include "import/ui/rdsdxlist.h"
#include "platform/windowspath.h"
#include "ui/busypointer.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui_form1.h"

#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>

namespace quillon {

using namespace Qt::StringLiterals;

// RDS Spy Logs.
void Form1::menuImportRDSSpyLog_Click()
{
    if (auto *open = openWindow<importRDSSpy>(*this)) {
        open->start();
        return;
    }
    auto *window = new importRDSSpy(
        m_config, m_options.regional, [this](const RdsSpyReception &reception) { addReception(reception); },
        this);
    connect(window, &importRDSSpy::progress, this, [this](int done, int total) {
        m_progress->setFormat(u"Importing %v of %m"_s);
        m_progress->setRange(0, total);
        m_progress->setValue(done);
        m_progress->show();
    });
    connect(window, &QObject::destroyed, m_progress, &QWidget::hide);
    window->start();
}

// Adds a reception through the entry form, as if it were typed.
void Form1::addReception(const RdsSpyReception &reception)
{
    m_ui->Text2->setText(reception.dateTime);
    m_ui->Text9->setText(reception.freq);
    m_ui->Text1->setText(reception.piCode);
    m_ui->Text8->setText(reception.rdsName);
    m_ui->Combo3->setEditText(reception.country);
    for (QLineEdit *field : {m_ui->Text5, m_ui->Text6, m_ui->Text7, m_ui->Text10}) {
        field->clear();
    }
    Command1_Click();
}

// RDSDX Log.
void Form1::menuImportRDSDXLogCnv_Click()
{
    auto *window = openWindow<rdsdxlist>(*this);
    if (!window) {
        window = new rdsdxlist(
            m_options.regional.codePage, [this](const QString &file) { importRDSDXLogCnv(file); }, this);
    }
    window->start(resolveDirectory(m_config.settings().rdsdxDirectory, WindowsPlaces::ofProcess()));
}

void Form1::importRDSDXLogCnv(const QString &selectedFile)
{
    const QString title = u"Import RDSDX Log"_s;
    const QString path = filePath(
        resolveDirectory(m_config.settings().rdsdxDirectory, WindowsPlaces::ofProcess()), selectedFile);
    if (!QFileInfo::exists(path)) {
        showMessage(this, path + u" Not Found"_s);
        return;
    }
    if (!askYesNo(this, u"Import "_s + path + u'?', title)) {
        showMessage(this, u"Import cancelled"_s);
        return;
    }
    qint32 imported = 0;
    {
        const BusyPointer busy;
        const QString logbook = m_config.path(m_config.settings().logbookFileName);
        if (QFileInfo::exists(logbook)) {
            backupFile(logbook, m_config.applicationDir(), localNow(), *m_options.fileCalls);
        }
        imported = importRdsdx(m_log, readFile(path), path, m_options.regional,
            [this](const QString &text) { m_status->setText(text); });
        saveLogbook();
        populateGrid();
    }
    showMessage(this, u"Imported %1 logs"_s.arg(imported));
    if (askYesNo(this, u"Perform FMList Auto Search?"_s, title)) {
        // The import is done: what stops the search does not bring its window back.
        guarded(this, [this] { menuFMListAutoSearch_Click(); });
    }
}

} // namespace quillon
