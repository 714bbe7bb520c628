#include "backup/backupfiles.h"
#include "backup/restoring.h"
#include "backup/ui/filebackups.h"
#include "core/manyentries.h"
#include "core/ui/editmany.h"
#include "core/ui/form1.h"
#include "platform/files.h"
#include "ui/busypointer.h"
#include "ui/desktop.h"
#include "ui/documentsfolder.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui/plaintip.h"
#include "ui/statustext.h"
#include "ui_form1.h"

#include <QFileDialog>
#include <QScopeGuard>
#include <QToolButton>

#include <algorithm>
#include <functional>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString restoreQuestion(const Backup &backup, const BackedUpLog &kept, qint32 now, bool typed)
{
    const qint32 count = kept.log.count();
    QString question = u"Bring back the log of %1 UTC?\n\nIt has %2, %3"_s.arg(
        generalText(backup.made), receptionCount(count), comparedToNow(count, now));
    question += count == now ? u" as now"_s : u" than now"_s;
    question += kept.sites ? u", and %1 sites."_s.arg(kept.sites->count()) : u"."_s;
    question += u" The present files go into a backup first, and Undo brings the present log back. "
                "Settings and country list stay as they are."_s;
    if (typed) {
        question += u"\n\nWhat is typed in the form is not stored and would be lost."_s;
    }
    return question;
}

} // namespace

void Form1::wireBackups()
{
    m_document.beforeWriting([this] { backUpToday(); });
    m_config.beforeWriting([this] { backUpToday(); });
    // Stays while there is none: the text of the status line is soon another one.
    m_noBackup = new QToolButton(this);
    m_noBackup->setObjectName(u"noBackup"_s);
    m_noBackup->setText(u"No backup of today"_s);
    m_noBackup->setAutoRaise(true);
    m_noBackup->setFocusPolicy(Qt::TabFocus);
    m_ui->statusbar->addPermanentWidget(m_noBackup);
    m_noBackup->hide();
    connect(m_noBackup, &QToolButton::clicked, this, &Form1::menuFileBackups_Click);
}

// To be called before a file is written that is backed up.
void Form1::backUpToday()
{
    const auto failure = m_backups.makeDaily(UtcNow());
    const QString problem = m_backups.problem();
    m_noBackup->setVisible(!problem.isEmpty());
    m_noBackup->setToolTip(problem.isEmpty() ? QString() : wrappedTip(problem));
    if (failure) {
        m_status->setText((problem.isEmpty() ? u"An outdated backup stays: "_s : u"No backup of today: "_s)
            + QString(*failure).replace(u'\n', u' '));
        m_copyTold = true;
    }
}

qint32 Form1::receptionsNow() const
{
    return static_cast<qint32>(std::ranges::count_if(log(), std::not_fn(isDeleted)));
}

// Backups.
void Form1::menuFileBackups_Click()
{
    if (openWindow<fileBackups>(*this)) {
        return;
    }
    auto *window = new fileBackups(
        m_backups, [this] { return receptionsNow(); }, this);
    connect(&m_document, &LogDocument::changed, window, &fileBackups::refresh);
    connect(window, &fileBackups::folderWanted, this, [](const QString &folder) { openFile(folder); });
    connect(window, &fileBackups::restoreWanted, this,
        [this, window](const Backup &backup) { guarded(window, [&] { restoreBackup(backup, *window); }); });
    connect(window, &fileBackups::backUpToWanted, this,
        [this, window] { guarded(window, [&] { backUpTo(*window); }); });
    window->show();
}

void Form1::restoreBackup(const Backup &backup, QWidget &window)
{
    if (m_importing) {
        showMessage(&window, u"The import has to end first"_s);
        return;
    }
    const BackedUpLog kept = readBackup(backup.path, logbookName(m_config), m_options.regional);
    if (!askYesNo(
            &window, restoreQuestion(backup, kept, receptionsNow(), m_form->hasChanges()), u"Restore"_s)) {
        return;
    }
    const BusyPointer busy;
    const QString name = u"Restore the Log of "_s + generalText(backup.made);
    Change change {name, logDifference(log(), kept.log),
        kept.sites ? siteDifference(transmitters(), *kept.sites) : SiteChanges()};
    if (change.isEmpty()) {
        tell(u"The log is already as it was on %1"_s.arg(generalText(backup.made)));
        return;
    }
    m_document.saveUnsaved();
    m_backups.make(UtcNow());
    // The numbers of receptions are others' from now on.
    m_form->clear();
    closeEntry();
    m_unstored.reset();
    for (auto *many : findChildren<EditMany *>(QString(), Qt::FindDirectChildrenOnly)) {
        many->close();
    }
    const auto told = qScopeGuard([&] { tell(u"Done: "_s + name); });
    m_document.commit(std::move(change));
}

// Back Up Now To.
void Form1::backUpTo(QWidget &window)
{
    const DateTime now = UtcNow();
    const QString offered = filePath(
        documentsFolder(), u"quillon "_s + formatted(now, u"yyyy-mm-dd hhnnss", MonthNames()) + u".zip"_s);
    QFileDialog dialog(&window, u"Back Up Now To"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(u"Archive (*.zip)"_s);
    dialog.setDefaultSuffix(u"zip"_s);
    dialog.setDirectory(QFileInfo(offered).path());
    dialog.selectFile(QFileInfo(offered).fileName());
    if (dialog.exec() == QDialog::Accepted) {
        const QString path = dialog.selectedFiles().value(0);
        m_document.saveUnsaved();
        m_backups.makeAs(path, now);
        tell(u"Backed up to "_s + path);
    }
}

} // namespace quillon
