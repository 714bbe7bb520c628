#include "core/fieldchecks.h"
#include "core/ui/form1.h"
#include "import/alreadythere.h"
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
#include "ui/statustext.h"
#include "ui/widgetstate.h"
#include "ui_form1.h"

#include <QFileInfo>
#include <QProgressBar>
#include <QScopeGuard>

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

RuntimeError halfImported(const RuntimeError &error, qint32 count)
{
    return withCount(
        {error.name(),
            error.doing()
                + u"\nUndo takes out what is in the log: importing the mended file without that would double it."_s},
        count);
}

// How many receptions of an import the log had already, as they come in.
class AlreadyThere
{
public:
    explicit AlreadyThere(const Logbook &log)
        : m_known(usualImportMinutes)
    {
        m_known.add(log);
    }

    void added(const LogEntry &entry)
    {
        m_count += m_known.find(entry) ? 1 : 0;
        m_known.add(entry, 0);
    }
    [[nodiscard]] qsizetype count() const { return m_count; }

private:
    KnownReceptions m_known;
    qsizetype m_count = 0;
};

QString withAlreadyThere(const QString &text, qsizetype count)
{
    return count > 0 ? text + u", %1 already there"_s.arg(count) : text;
}

// The numbers of the entries from this one on.
std::vector<qint32> numbersFrom(qint32 first, const Logbook &log)
{
    std::vector<qint32> numbers;
    for (qint32 number = first; number < log.count(); ++number) {
        numbers.push_back(number);
    }
    return numbers;
}

// All of an import is in the log, but not on the disk.
class NotSaved : public RuntimeError
{
public:
    using RuntimeError::RuntimeError;
};

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
    const auto there = std::make_shared<std::optional<AlreadyThere>>();
    const auto before = std::make_shared<qint32>(log().count());
    auto *window = new importRDSSpy(
        m_config, m_options.regional,
        [this, there](const RdsSpyReception &reception) {
            QString refusal = addReception(reception);
            if (refusal.isEmpty() && *there) {
                (*there)->added(log().entry(log().count() - 1));
            }
            return refusal;
        },
        [this] { m_document.saveUnsaved(); }, this);
    // As long as an import runs: its progress, and one step for all of it.
    struct Running
    {
        ShownProgress bar;
        LogDocument::Group step;
    };
    const auto running = std::make_shared<std::unique_ptr<Running>>();
    connect(window, &importRDSSpy::importing, this, [this, running, there, before](bool runs) {
        m_importing = runs;
        if (runs) {
            there->emplace(log());
            *before = log().count();
            rememberKnown();
            // The form becomes the import's: what was loaded must not be changed through it.
            tellUnstored();
            closeEntry();
        }
        running->reset(runs
                ? new Running {{*m_progress, u"Importing %v of %m"_s}, {m_document, u"Import of RDS Spy"_s}}
                : nullptr);
        if (!runs) {
            QTimer::singleShot(0, this, [this] { logWaiting(); });
            tellNews();
        }
    });
    connect(window, &importRDSSpy::progress, this, [this](int done, int total) {
        // Drawn with the next events, not after each reception together with the grid.
        const RedrawOff redrawOff(*m_progress);
        m_progress->setRange(0, total);
        m_progress->setValue(done);
    });
    connect(window, &importRDSSpy::summary, this, [this, there, before](const QString &text) {
        const QString told = withAlreadyThere(text, *there ? (*there)->count() : 0);
        m_status->setText(told);
        if (m_rows.isFiltered()) {
            tellHidden(told, numbersFrom(*before, log()));
        }
    });
    window->start();
}

// Adds a reception through the entry form, as if it were typed. What Add refuses is for the import to tell.
QString Form1::addReception(const RdsSpyReception &reception)
{
    QString refusal = addRefusal(reception.freq, reception.piCode, reception.rdsName, reception.country);
    if (!refusal.isEmpty()) {
        return refusal;
    }
    m_form->setDateTime(reception.dateTime);
    m_form->setFrequency(reception.freq);
    m_form->setPiCode(reception.piCode);
    m_form->setRdsName(reception.rdsName);
    m_form->setCountry(reception.country);
    m_form->clearSiteAndNotes();
    const qint32 before = log().count();
    try {
        addEntry(u"Import"_s);
    } catch (const RuntimeError &error) {
        if (log().count() == before) {
            throw;
        }
        throw AddedNotSaved(error.name(), error.doing());
    }
    return {};
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
    {
        const BusyPointer busy;
        const QString logbook = m_config.path(m_config.settings().logbookFileName);
        if (QFileInfo::exists(logbook)) {
            backupFile(logbook, m_config.applicationDir(), localNow(), *m_options.fileCalls);
        }
        const qint32 before = log().count();
        rememberKnown();
        const auto told = qScopeGuard([this] { tellNews(); });
        try {
            imported = importRdsdxFile(readFile(*file, path), path);
        } catch (const NotSaved &error) {
            // Told here: the file is in the log, so that its window does not come back to offer it again.
            const NormalPointer normal;
            showRuntimeError(this, withCount(error, log().count() - before));
            return;
        } catch (const RuntimeError &error) {
            throw log().count() == before ? withCount(error, 0) : halfImported(error, log().count() - before);
        }
    }
    showMessage(this, u"Imported %1 logs"_s.arg(imported));
    if (askYesNo(this, u"Perform FMList Auto Search?"_s, title)) {
        // The import is done: what stops the search does not bring its window back.
        guarded(this, [this] { menuFMListAutoSearch_Click(); });
    }
}

// Brings the receptions of the file into the log as one step. What was read before a line that is none is in
// the log, too; it is saved with the next change.
qint32 Form1::importRdsdxFile(const QByteArray &file, const QString &path)
{
    RdsdxImport read =
        readRdsdx(file, path, m_options.regional, [this](const QString &text) { m_status->setText(text); });
    if (read.failure && read.entries.empty()) {
        throw RuntimeError(*read.failure);
    }
    const qint32 before = log().count();
    const qsizetype there = countAlreadyThere(log(), read.entries);
    Change change {u"Import of "_s + QFileInfo(path).fileName(), {}, {}};
    change.log.added = std::move(read.entries);
    try {
        m_document.commit(measured(std::move(change), Measured::Missing),
            read.failure ? LogDocument::Saving::Later : LogDocument::Saving::Changed);
    } catch (const RuntimeError &error) {
        const auto added = static_cast<std::size_t>(log().count() - before);
        if (added < read.lines.size() || error.name() == ErrorName::Overflow) {
            const qsizetype line = read.lines.at(added > 0 ? added - 1 : 0);
            throw atRdsdxLine(error, file, path, line, m_options.regional);
        }
        throw NotSaved(error.name(), error.doing());
    }
    const QString told = withAlreadyThere(u"Import of %1: %2 imported"_s.arg(QFileInfo(path).fileName(),
                                              QString::number(log().count() - before)),
        there);
    if (there > 0) {
        m_status->setText(told);
    }
    if (m_rows.isFiltered()) {
        tellHidden(told, numbersFrom(before, log()));
    }
    if (read.failure) {
        throw RuntimeError(*read.failure);
    }
    return log().count() - before;
}

} // namespace quillon
