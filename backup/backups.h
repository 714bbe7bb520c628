#pragma once

#include "core/config.h"
#include "platform/datetime.h"
#include "platform/filecalls.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace quillon {

/// `$XDG_STATE_HOME/quillon/backups`, or its usual place: under it each application directory has a folder.
[[nodiscard]] QString backupRoot();

/// A backup that is there.
struct Backup
{
    QString path;
    DateTime made; ///< UTC, by its name
    std::optional<qint32> receptions; ///< nothing when the archive does not say it
    QString logbook; ///< the name of its logbook; empty when the archive does not say it
    QString problem; ///< why it cannot be read; empty when it can
};

/// The days of which a backup is kept in any case.
inline constexpr int daysKept = 30;

/// Those of the moments whose backups go: older than the last 30 days (UTC) and not the last of their month.
[[nodiscard]] std::vector<DateTime> outdated(std::vector<DateTime> made, DateTime now);

/// The copies of the files of a log: logbook, tx.lst, country.lst, stations.lst and LOGBOOK.INI, each time as
/// one dated .zip.
class Backups
{
public:
    /// Without a root none is made by itself. `config` says where the files are, and must outlive the object.
    Backups(const QString &root, const Config &config, FileCalls &calls = FileCalls::real());

    /// The folder of this application directory: its name and a hash of its path. Empty without a root.
    [[nodiscard]] const QString &folder() const { return m_folder; }

    /// The backups that are there, the last one first.
    [[nodiscard]] std::vector<Backup> list() const;

    /// False for a backup of another logbook than the present one.
    [[nodiscard]] bool isOfPresent(const Backup &backup) const;

    /// Backs the files up as they are now, into the folder; the result is the path. Throws the run-time error
    /// of what failed; nothing is left behind then.
    QString make(DateTime now);
    /// The same, into a file of any other name and place, which is replaced whole.
    void makeAs(const QString &path, DateTime now);

    /// To be called before a file of the log is written: makes the first backup of the day, if there is none
    /// of this logbook and there is a logbook or a tx.lst, and removes what is outdated. The text of the
    /// run-time error of what failed; it is tried again by the first call after ten minutes.
    [[nodiscard]] std::optional<QString> makeDaily(DateTime now);
    /// Why there is no backup of the day for which makeDaily was last called: the run-time error of the last
    /// attempt. Empty when there is one, or none was needed yet.
    [[nodiscard]] QString problem() const;

private:
    [[nodiscard]] QString logbookOf(DateTime made) const;
    void removeOutdated(DateTime now);

    const Config &m_config;
    FileCalls &m_calls;
    QString m_folder;
    using Day = std::pair<qint64, QString>; ///< of a logbook
    struct Failure
    {
        Day day;
        DateTime at;
        QString text;
    };
    std::optional<Day> m_asked; ///< by the last makeDaily
    std::optional<Day> m_done;
    std::optional<Failure> m_failure;
};

} // namespace quillon
