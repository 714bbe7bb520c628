#include "backup/ui/filebackups.h"

#include "backup/restoring.h"

#include "ui_filebackups.h"

#include <QFileInfo>
#include <QHeaderView>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

fileBackups::fileBackups(const Backups &backups, std::function<qint32()> receptionsNow, QWidget *parent)
    : QDialog(parent)
    , m_backups(backups)
    , m_receptionsNow(std::move(receptionsNow))
    , ui(std::make_unique<Ui::fileBackups>())
{
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    ui->backupList->setHeadings({{u"Date (UTC)"_s, u"22/11/2026 05:00:00"_s, true},
        {u"Receptions"_s, u"32000"_s, true}, {u"Compared to Now"_s, u"32000 fewer"_s}});
    ui->backupList->horizontalHeader()->setSectionsClickable(false);
    ui->backupList->setEmptyText(u"No backups yet. The first one of a day is made before the log changes."_s);
    connect(ui->backupList->selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this] { showChoice(); });
    connect(ui->backupList, &ResultList::lineActivated, ui->backupRestore, &QPushButton::click);
    connect(ui->backupRestore, &QPushButton::clicked, this, [this] { restoreChosen(); });
    connect(ui->backupOpenFolder, &QPushButton::clicked, this,
        [this] { Q_EMIT folderWanted(m_backups.folder()); });
    connect(ui->backupNow, &QPushButton::clicked, this, [this] { Q_EMIT backUpToWanted(); });
    connect(ui->backupClose, &QPushButton::clicked, this, &QWidget::close);
    refresh();
}

fileBackups::~fileBackups() = default;

void fileBackups::refresh()
{
    const int line = ui->backupList->listIndex();
    const QString chosen = line < 0 ? QString() : m_listed[static_cast<std::size_t>(line)].path;
    m_listed = m_backups.list();
    const QString problem = m_backups.problem();
    ui->backupProblem->setText(problem.isEmpty() ? QString() : QString(u"No backup of today: "_s + problem));
    ui->backupProblem->setVisible(!problem.isEmpty());
    ui->backupFolder->setText(m_backups.folder());
    ui->backupOpenFolder->setEnabled(QFileInfo(m_backups.folder()).isDir());
    const qint32 now = m_receptionsNow();
    QStringList lines;
    for (const Backup &backup : m_listed) {
        const QString count = backup.receptions ? QString::number(*backup.receptions) : u"?"_s;
        lines += generalText(backup.made) + u'\t'
            + (!backup.problem.isEmpty() ? QString(u"\tcannot be read: "_s + backup.problem)
                    : m_backups.isOfPresent(backup)
                    ? QString(count + u'\t' + comparedToNow(backup.receptions, now))
                    : QString(count + u"\tof the logbook "_s + backup.logbook));
    }
    ui->backupList->setLines(lines);
    const auto same = std::ranges::find(m_listed, chosen, &Backup::path);
    if (!m_listed.empty()) {
        ui->backupList->setListIndex(same == m_listed.end() ? 0 : static_cast<int>(same - m_listed.begin()));
    }
    showChoice();
}

void fileBackups::showChoice()
{
    const int line = ui->backupList->listIndex();
    ui->backupRestore->setEnabled(line >= 0 && m_listed[static_cast<std::size_t>(line)].problem.isEmpty());
}

void fileBackups::restoreChosen()
{
    // The list is another one while it is being restored.
    const Backup chosen = m_listed.at(static_cast<std::size_t>(ui->backupList->listIndex()));
    Q_EMIT restoreWanted(chosen);
}

} // namespace quillon
