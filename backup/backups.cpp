#include "backup/backups.h"

#include "backup/backupfiles.h"
#include "backup/ziparchive.h"
#include "platform/files.h"
#include "platform/folder.h"
#include "platform/runtimeerror.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <map>
#include <ranges>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView namePattern = u"yyyy-mm-dd hhnnss.zip";

QString nameOf(DateTime made)
{
    return formatted(made, namePattern, MonthNames());
}

// The moment that a backup's name tells; nothing for a file that is none of ours.
std::optional<DateTime> momentOf(const QString &name)
{
    if (name.size() != namePattern.size()) {
        return std::nullopt;
    }
    const auto number = [&](qsizetype at, qsizetype size) { return name.sliced(at, size).toInt(); };
    const auto moment =
        fromCivil({number(0, 4), number(5, 2), number(8, 2), number(11, 2), number(13, 2), number(15, 2)});
    return moment && nameOf(*moment) == name ? moment : std::nullopt;
}

qint64 dayOf(DateTime moment)
{
    return moment.seconds / secondsPerDay;
}

int monthOf(DateTime moment)
{
    const CivilTime parts = civil(moment);
    return parts.year * 12 + parts.month;
}

// The moments of the backups in a folder, the last one first.
std::vector<DateTime> momentsIn(const QString &folder)
{
    std::vector<DateTime> moments;
    if (!folder.isEmpty()) {
        const QStringList names = QDir(folder).entryList({u"*.zip"_s}, QDir::Files);
        for (const QString &name : names) {
            if (const auto moment = momentOf(name)) {
                moments.push_back(*moment);
            }
        }
    }
    std::ranges::sort(moments, std::ranges::greater());
    return moments;
}

// One folder for each application directory: its name for the eye, its path for certainty.
QString folderOf(const QString &root, const QString &applicationDir)
{
    if (root.isEmpty()) {
        return {};
    }
    constexpr qsizetype hashLength = 8;
    const QString canonical = QFileInfo(applicationDir).canonicalFilePath();
    const QString path = canonical.isEmpty() ? applicationDir : canonical;
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex();
    return filePath(root, QFileInfo(path).fileName() + u'-' + QString::fromLatin1(hash.first(hashLength)));
}

} // namespace

QString backupRoot()
{
    const QString stateHome = qEnvironmentVariable("XDG_STATE_HOME");
    return (stateHome.startsWith(u'/') ? stateHome : QString(QDir::homePath() + u"/.local/state"))
        + u"/quillon/backups"_s;
}

std::vector<DateTime> outdated(std::vector<DateTime> made, DateTime now)
{
    std::ranges::sort(made, std::ranges::greater());
    std::vector<DateTime> gone;
    std::optional<int> month;
    for (const DateTime moment : made) {
        const bool lastOfMonth = month != monthOf(moment);
        month = monthOf(moment);
        if (!lastOfMonth && dayOf(moment) <= dayOf(now) - daysKept) {
            gone.push_back(moment);
        }
    }
    return gone;
}

Backups::Backups(const QString &root, const Config &config, FileCalls &calls)
    : m_config(config)
    , m_calls(calls)
    , m_folder(folderOf(root, config.applicationDir()))
{
}

std::vector<Backup> Backups::list() const
{
    std::vector<Backup> backups;
    for (const DateTime moment : momentsIn(m_folder)) {
        const QString path = filePath(m_folder, nameOf(moment));
        const ZipContent content = readZip(path, ZipReading::CommentAlone);
        backups.push_back(
            {path, moment, receptionsTold(content.comment), logbookTold(content.comment), content.problem});
    }
    return backups;
}

bool Backups::isOfPresent(const Backup &backup) const
{
    return backup.logbook.isEmpty() || isSameLogbook(backup.logbook, logbookName(m_config));
}

QString Backups::make(DateTime now)
{
    if (m_folder.isEmpty()) {
        throw RuntimeError(ErrorName::PathNotFound, u"Backing up: there is no folder for backups"_s);
    }
    makeFolders(m_folder, m_calls, u"Making the folder of the backups "_s + m_folder);
    // What a backup that was killed has left.
    removeLeftovers(m_folder, QString(), m_calls);
    DateTime made = now;
    while (QFileInfo::exists(filePath(m_folder, nameOf(made)))) {
        ++made.seconds;
    }
    QString path = filePath(m_folder, nameOf(made));
    makeAs(path, now);
    m_done = {dayOf(now), logbookName(m_config)};
    return path;
}

void Backups::makeAs(const QString &path, DateTime now)
{
    writeFile(path, backupBytes(m_config, now), m_calls);
}

std::optional<QString> Backups::makeDaily(DateTime now)
{
    const Day today(dayOf(now), logbookName(m_config));
    // Not at each change: a disk that is full makes each attempt take its time.
    constexpr qint64 pause = 600;
    const bool isTooEarly = m_failure && m_failure->day == today && now.seconds >= m_failure->at.seconds
        && now.seconds < m_failure->at.seconds + pause;
    m_asked = today;
    if (m_folder.isEmpty() || m_done == today || isTooEarly) {
        return std::nullopt;
    }
    try {
        const auto isOfToday = [&](DateTime moment) {
            return dayOf(moment) == today.first && isSameLogbook(logbookOf(moment), today.second);
        };
        const bool isNeeded = hasLog(m_config) && std::ranges::none_of(momentsIn(m_folder), isOfToday);
        if (isNeeded) {
            make(now);
        }
        m_done = today;
        if (isNeeded) {
            removeOutdated(now);
        }
    } catch (const RuntimeError &error) {
        if (m_done != today) {
            m_failure = {today, now, error.text()};
        }
        return error.text();
    }
    return std::nullopt;
}

QString Backups::problem() const
{
    const bool isMissing = m_failure && m_failure->day == m_asked && m_done != m_asked;
    return isMissing ? m_failure->text : QString();
}

QString Backups::logbookOf(DateTime made) const
{
    return logbookTold(readZip(filePath(m_folder, nameOf(made)), ZipReading::CommentAlone).comment);
}

// The last one of a month is kept of each logbook.
void Backups::removeOutdated(DateTime now)
{
    std::map<QString, std::vector<DateTime>> made;
    for (const DateTime moment : momentsIn(m_folder)) {
        made[logbookOf(moment).toLower()].push_back(moment);
    }
    for (const auto &[logbook, moments] : made) {
        for (const DateTime moment : outdated(moments, now)) {
            const QString path = filePath(m_folder, nameOf(moment));
            if (m_calls.remove(QFile::encodeName(path)) < 0) {
                throw systemError(errno, u"Deleting "_s + path);
            }
        }
    }
}

} // namespace quillon
