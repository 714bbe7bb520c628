#include "core/ui/form1.h"

#include "import/rdsdx.h"
#include "import/rdsspy.h"
#include "import/ui/foldertext.h"
#include "import/ui/importrdsspy.h"
#include "import/ui/rdsdxlist.h"
#include "platform/folder.h"
#include "platform/windowspath.h"
#include "ui/busypointer.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui/widgetstate.h"
#include "ui_form1.h"

#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>

#include <memory>
#include <optional>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

RuntimeError withCount(const RuntimeError &error, qint32 count)
{
    return {error.name(),
        error.doing() + u"\nReceptions of the file that are in the log in memory: "_s
            + QString::number(count)};
}

} // namespace

// RDS Spy Logs.
void Form1::menuImportRDSSpyLog_Click()
{
    const QString missing = missingFolderText(
        resolveDirectory(m_config.settings().rdsSpyDirectory, WindowsPlaces::ofProcess()), u"RDS Spy"_s);
    if (!missing.isEmpty()) {
        m_status->setText(missing);
    }
    if (auto *open = openWindow<importRDSSpy>(*this)) {
        open->start();
        return;
    }
    auto *window = new importRDSSpy(
        m_config, m_options.regional, [this](const RdsSpyReception &reception) { addReception(reception); },
        [this] { saveUnsaved(); }, this);
    // The bar of an upload or an automatic search that runs stays theirs.
    const auto bar = std::make_shared<std::unique_ptr<ShownProgress>>();
    connect(window, &importRDSSpy::importing, this, [this, bar](bool runs) {
        if (!runs) {
            bar->reset();
        } else if (m_progress->isHidden()) {
            *bar = std::make_unique<ShownProgress>(*m_progress, u"Importing %v of %m"_s);
        }
    });
    connect(window, &importRDSSpy::progress, this, [this, bar](int done, int total) {
        if (*bar) {
            // Drawn with the next events, not after each reception together with the grid.
            const RedrawOff redrawOff(*m_progress);
            m_progress->setRange(0, total);
            m_progress->setValue(done);
        }
    });
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
    for (QLineEdit *field : {m_ui->Text5, m_ui->Text6, m_ui->Text7, m_ui->Text10, m_ui->uid}) {
        field->clear();
    }
    showNotes({});
    const qint32 before = m_log.count();
    try {
        Command1_Click();
    } catch (const RuntimeError &error) {
        if (m_log.count() == before) {
            throw;
        }
        throw AddedNotSaved(error.name(), error.doing());
    }
}

// RDSDX Log.
void Form1::menuImportRDSDXLogCnv_Click()
{
    const QString folder = resolveDirectory(m_config.settings().rdsdxDirectory, WindowsPlaces::ofProcess());
    const QString missing = missingFolderText(folder, u"RDSDX"_s);
    if (!missing.isEmpty()) {
        m_status->setText(missing);
    }
    auto *window = openWindow<rdsdxlist>(*this);
    if (!window) {
        window = new rdsdxlist(
            m_options.regional.codePage, [this](const QString &file) { importRDSDXLogCnv(file); }, this);
    }
    window->start(folder);
}

void Form1::importRDSDXLogCnv(const QString &selectedFile)
{
    const QString title = u"Import RDSDX Log"_s;
    const QString folder = resolveDirectory(m_config.settings().rdsdxDirectory, WindowsPlaces::ofProcess());
    const QString path = filePath(folder, selectedFile);
    const auto file = listedFile(folder, selectedFile, m_options.regional.codePage);
    if (!file) {
        showMessage(this, path + u" Not Found"_s);
        return;
    }
    if (!askYesNo(this, u"Import "_s + path + u'?', title)) {
        showMessage(this, u"Import cancelled"_s);
        return;
    }
    qint32 imported = 0;
    std::optional<RuntimeError> notSaved;
    {
        const BusyPointer busy;
        const QString logbook = m_config.path(m_config.settings().logbookFileName);
        if (QFileInfo::exists(logbook)) {
            backupFile(logbook, m_config.applicationDir(), localNow(), *m_options.fileCalls);
        }
        const qint32 before = m_log.count();
        try {
            imported = importRdsdx(m_log, readFile(*file, path), path, m_options.regional,
                [this](const QString &text) { m_status->setText(text); });
        } catch (const RuntimeError &error) {
            // What was read until then is in the log: it is shown, and the next save writes it.
            populateGrid();
            throw withCount(error, m_log.count() - before);
        }
        try {
            saveLogbook();
        } catch (const RuntimeError &error) {
            notSaved = withCount(error, m_log.count() - before);
        }
        populateGrid();
    }
    if (notSaved) {
        // Told here: the file is in the log, so that its window does not come back to offer it again.
        showRuntimeError(this, *notSaved);
        return;
    }
    showMessage(this, u"Imported %1 logs"_s.arg(imported));
    if (askYesNo(this, u"Perform FMList Auto Search?"_s, title)) {
        // The import is done: what stops the search does not bring its window back.
        guarded(this, [this] { menuFMListAutoSearch_Click(); });
    }
}

} // namespace quillon
