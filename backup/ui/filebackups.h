#pragma once

#include "backup/backups.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <vector>

namespace quillon {

namespace Ui {
class fileBackups;
}

/// Backups: lists the copies of the log that are there, and says which of them is wanted back.
class fileBackups : public QDialog
{
    Q_OBJECT

public:
    /// `backups` must outlive the window; `receptionsNow` counts those of the log.
    fileBackups(const Backups &backups, std::function<qint32()> receptionsNow, QWidget *parent = nullptr);
    ~fileBackups() override;

    /// Lists the backups that are there now, and compares them with the log.
    void refresh();

Q_SIGNALS:
    void restoreWanted(const quillon::Backup &backup);
    void backUpToWanted();
    void folderWanted(const QString &folder);

private:
    void restoreChosen();
    void showChoice();

    const Backups &m_backups;
    std::function<qint32()> m_receptionsNow;
    std::vector<Backup> m_listed;
    std::unique_ptr<Ui::fileBackups> ui;
};

} // namespace quillon
