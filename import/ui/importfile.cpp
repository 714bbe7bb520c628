#include "import/ui/importfile.h"

#include "import/ui/importmodel.h"
#include "platform/files.h"
#include "ui/busypointer.h"
#include "ui/calmcombos.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/windowmemory.h"

#include "ui_importfile.h"

#include <QDragEnterEvent>
#include <QFileDialog>
#include <QMimeData>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QStringList pathsOf(const QMimeData &data)
{
    QStringList paths;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile()) {
            paths += url.toLocalFile();
        }
    }
    return paths;
}

} // namespace

importFile::importFile(const Logbook &log, const ImportSurroundings &surroundings, const QString &memoryFile,
    BringIn bringIn, QWidget *parent, FileCalls &calls)
    : QDialog(parent)
    , m_log(log)
    , m_memory(memoryFile)
    , m_session(
          log, surroundings, [this](const QStringList &heading) { return m_memory.heading(heading); },
          m_memory.minutes())
    , m_bringIn(std::move(bringIn))
    , m_calls(calls)
    , ui(std::make_unique<Ui::importFile>())
    , m_model(new ImportModel(m_session, log, this))
{
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    m_session.setZone(m_memory.zone());
    ui->importTable->setModel(m_model);
    ui->importTable->chooseWidths();
    ui->importTable->setEmptyText(
        u"Choose files, or drop them here: logs of FMList, web servers, TEF6686, XDR-GTK, URDS, logbooks of "
        "this program, any file with columns. What would come in is shown first."_s);
    offerFormats();
    wire();
    wireFormats();
    keepCombosCalm(*this);
    showSession();
}

importFile::~importFile() = default;

void importFile::wire()
{
    const auto on = [this](QPushButton *button, void (importFile::*handler)()) {
        connect(button, &QPushButton::clicked, this,
            [this, handler] { guarded(this, [this, handler] { (this->*handler)(); }); });
    };
    on(ui->importChoose, &importFile::chooseFiles);
    on(ui->importChooseFolder, &importFile::chooseFolder);
    on(ui->importColumnsButton, &importFile::askColumns);
    on(ui->importGo, &importFile::importGo_Click);
    on(ui->importSaveRefused, &importFile::saveRefused);
    connect(ui->importClose, &QPushButton::clicked, this, &QDialog::close);
    connect(ui->importAdd, &QPushButton::clicked, this, [this] { actOnChosen(ImportAction::Add); });
    connect(ui->importComplete, &QPushButton::clicked, this, [this] { actOnChosen(ImportAction::Complete); });
    connect(ui->importLeaveOut, &QPushButton::clicked, this, [this] { actOnChosen(ImportAction::LeaveOut); });
    connect(ui->importTable, &ImportTable::tickPressed, this, [this] { turnTicks(); });
    connect(m_model, &ImportModel::chosen, this, [this] { showCounts(); });
    connect(ui->importTable->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        [this] { offerActions(); });
}

// Choose Files: one or several.
void importFile::chooseFiles()
{
    const QStringList paths = QFileDialog::getOpenFileNames(
        this, u"Receptions from a File"_s, QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
    if (!paths.isEmpty()) {
        show(paths);
    }
}

// Choose Folder.
void importFile::chooseFolder()
{
    const QString path = QFileDialog::getExistingDirectory(
        this, u"Receptions from a Folder"_s, QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
    if (!path.isEmpty()) {
        show(QStringList {path});
    }
}

void importFile::dragEnterEvent(QDragEnterEvent *event)
{
    if (!pathsOf(*event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void importFile::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    guarded(this, [&] { show(pathsOf(*event->mimeData())); });
}

void importFile::show(const QStringList &paths)
{
    const BusyPointer busy;
    auto sources = importSources(paths);
    m_done = false;
    m_session.setSources(std::move(sources));
    ui->importFileShown->clear();
    const auto files = m_session.sources();
    if (files.size() > 1) {
        ui->importFileShown->addItem(u"All %1 files"_s.arg(files.size()));
    }
    // A list of thousands helps nobody to find one.
    constexpr std::size_t mostListed = 500;
    for (const ImportSource &source : files.first(std::min(files.size(), mostListed))) {
        ui->importFileShown->addItem(source.name);
    }
    showSession();
    ui->importTable->setFocus();
}

void importFile::readAgain()
{
    const BusyPointer busy;
    m_session.read();
    showSession();
}

void importFile::logChanged()
{
    if (!m_done) {
        m_session.logChanged();
        m_model->actionsChanged();
        showCounts();
    }
}

// All that the session has.
void importFile::showSession()
{
    m_model->reset();
    const auto sources = m_session.sources();
    ui->importChosen->setText(sources.empty() ? u"Or drop files here."_s : m_session.name());
    ui->importTable->setColumnHidden(ImportModel::Line, sources.empty());
    showFormats();
    showCounts();
}

void importFile::showCounts()
{
    ImportTally tally;
    const LogChange change = m_session.change(tally);
    QString problem = m_session.obstacle();
    if (problem.isEmpty()) {
        const auto readings = m_session.readings();
        const auto bad = std::ranges::find_if(
            readings, [](const ImportReading &reading) { return !reading.refusal.isEmpty(); });
        if (bad != readings.end()) {
            const QString name = m_session.sources()[static_cast<std::size_t>(bad - readings.begin())].name;
            problem = name + u": "_s + bad->refusal;
            if (!bad->rows.empty()) {
                problem += u"; what comes before that is shown"_s;
            }
            const auto more = std::count_if(bad + 1, readings.end(),
                [](const ImportReading &reading) { return !reading.refusal.isEmpty(); });
            if (more > 0) {
                problem += u"; %1 more cannot be read"_s.arg(more);
            }
        }
    }
    if (!m_done) {
        ui->importProblem->tell(problem);
    }
    QStringList counts;
    if (!m_session.rows().empty()) {
        counts = {u"%1 to add"_s.arg(tally.added), u"%1 to complete"_s.arg(tally.completed),
            u"%1 already there"_s.arg(tally.alreadyThere), u"%1 refused"_s.arg(tally.refused)};
    }
    ui->importCounts->setText(counts.join(u", "_s));
    ui->pages->setCurrentWidget(m_done ? ui->reportPage : ui->rowsPage);
    ui->importGo->setEnabled(!m_done && !change.isEmpty() && m_session.obstacle().isEmpty());
    ui->importSaveRefused->setEnabled(m_session.hasRefused());
    offerActions();
}

void importFile::offerActions()
{
    const bool chosen = ui->importTable->selectionModel()->hasSelection();
    for (QPushButton *button : {ui->importAdd, ui->importComplete, ui->importLeaveOut}) {
        button->setEnabled(chosen);
    }
}

void importFile::actOnChosen(ImportAction action)
{
    m_model->setAction(ui->importTable->selectionModel()->selectedRows(), action);
}

// The space bar: what is ticked of the chosen rows is left out, or all of them are added.
void importFile::turnTicks()
{
    const QModelIndexList rows = ui->importTable->selectionModel()->selectedRows();
    const bool ticked = std::ranges::any_of(rows, [this](const QModelIndex &row) {
        return m_session.action(static_cast<std::size_t>(row.row())) != ImportAction::LeaveOut;
    });
    m_model->setAction(rows, ticked ? ImportAction::LeaveOut : ImportAction::Add);
}

// Import: brings in what is ticked, of the log as it is now.
void importFile::importGo_Click()
{
    ImportTally tally;
    const LogChange change = m_session.change(tally);
    const QString tooMany = roomRefusal(m_log, tally.added);
    if (!tooMany.isEmpty()) {
        showMessage(this, tooMany);
        return;
    }
    const qint32 before = m_log.count();
    QString failure;
    m_done = true;
    try {
        const BusyPointer busy;
        m_bringIn(change, u"Import of "_s + m_session.name());
    } catch (const RequestAborted &) {
        m_done = false;
        throw;
    } catch (const RuntimeError &error) {
        // A save that failed: the receptions are in the log, and the next save writes them.
        if (m_log.count() != before + tally.added) {
            m_done = false;
            throw;
        }
        failure = error.text()
            + u"\nThe receptions are in the log, but not on the disk: the next save writes them."_s;
    }
    const QString report = importReport(tally);
    ui->importReport->setText(failure.isEmpty() ? report : report + u"\n\n"_s + failure);
    showCounts();
    ui->importProblem->tell(QString());
    ui->importClose->setFocus();
    Q_EMIT summary(
        u"Import of %1: %2 added, %3 completed, %4 already there, %5 refused"_s.arg(m_session.name())
            .arg(tally.added)
            .arg(tally.completed)
            .arg(tally.alreadyThere)
            .arg(tally.refused));
    if (!failure.isEmpty()) {
        showMessage(this, failure);
    }
}

// Save Refused: the lines that did not come in.
void importFile::saveRefused()
{
    const QString path = QFileDialog::getSaveFileName(this, u"Save Refused Lines"_s,
        filePath(QStandardPaths::writableLocation(QStandardPaths::HomeLocation), u"refused.txt"_s));
    if (!path.isEmpty()) {
        writeFile(path, m_session.refused(), m_calls);
        Q_EMIT summary(u"The refused lines are in "_s + path);
    }
}

} // namespace quillon
