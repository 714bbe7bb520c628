#include "backup/backupfiles.h"

#include "backup/ziparchive.h"
#include "core/logbookfile.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView sitesName = u"tx.lst";
constexpr QStringView stationsName = u"stations.lst";
constexpr std::array<QStringView, 4> otherNames {sitesName, u"country.lst", stationsName, u"LOGBOOK.INI"};
constexpr QStringView receptionsKey = u"receptions=";
constexpr QStringView logbookKey = u"logbook=";

bool isNamed(const QString &name, QStringView other)
{
    return name.compare(other, Qt::CaseInsensitive) == 0;
}

QString logbookPath(const Config &config)
{
    return config.path(config.settings().logbookFileName);
}

// A list of stations can be got again, a log cannot: a large one must not keep the log from its backup.
bool isLargeList(const QFileInfo &file)
{
    return isNamed(file.fileName(), stationsName) && file.size() > largestStationList;
}

// The files that are there and backed up, the logbook first.
QStringList pathsOf(const Config &config)
{
    QStringList paths {logbookPath(config)};
    for (const QStringView name : otherNames) {
        const QString path = config.path(name.toString());
        if (!isNamed(QFileInfo(path).fileName(), QFileInfo(paths.front()).fileName())) {
            paths += path;
        }
    }
    paths.removeIf([](const QString &path) {
        const QFileInfo file(path);
        return !file.isFile() || isLargeList(file);
    });
    return paths;
}

qsizetype linesIn(QByteArrayView logbook)
{
    return std::ranges::count(logbook, '\n') + (logbook.isEmpty() || logbook.endsWith('\n') ? 0 : 1);
}

QString commentOf(const Config &config, QByteArrayView logbook)
{
    QString comment = u"Files of the Quillon log in %1\n"_s.arg(config.applicationDir());
    comment += logbookKey + logbookName(config) + u'\n';
    if (isLargeList(QFileInfo(config.path(stationsName.toString())))) {
        comment += u"Left out, as it is larger than %1 MiB: %2\n"_s.arg(
            QString::number(largestStationList >> 20), stationsName);
    }
    if (logbook.isEmpty() || logbookLayout(logbook) != LogbookLayout::Unknown) {
        comment += receptionsKey + QString::number(linesIn(logbook)) + u'\n';
    }
    return comment;
}

// What follows the key in a line of the comment.
std::optional<QString> told(const QString &comment, QStringView key)
{
    for (const QStringView line : splitLines(QStringView(comment))) {
        if (line.startsWith(key)) {
            return line.sliced(key.size()).toString();
        }
    }
    return std::nullopt;
}

// Throws when the archive holds no logbook, or another one.
const ZipMember &logbookIn(const std::vector<ZipMember> &members, const QString &name, const QString &path)
{
    const auto found = std::ranges::find_if(
        members, [&name](const ZipMember &member) { return isNamed(member.name, name); });
    if (found != members.end()) {
        return *found;
    }
    const auto other = std::ranges::find_if(members, [](const ZipMember &member) {
        return std::ranges::none_of(
            otherNames, [&](QStringView known) { return isNamed(member.name, known); });
    });
    throw RuntimeError(ErrorName::FileNotFound,
        u"Reading the backup %1: "_s.arg(path)
            + (other == members.end()
                    ? u"it holds no logbook"_s
                    : u"it holds the logbook %1, and the present one is %2"_s.arg(other->name, name)));
}

void readLog(Logbook &log, const ZipMember &member, const Regional &regional, const QString &path)
{
    const QString name = path + u": "_s + member.name;
    if (!member.bytes.isEmpty() && logbookLayout(member.bytes) == LogbookLayout::Unknown) {
        throw RuntimeError(
            ErrorName::TypeMismatch, u"Reading %1: its first line has an unknown layout"_s.arg(name));
    }
    try {
        readLogbook(log, member.bytes, regional, name);
    } catch (const RuntimeError &error) {
        // A log that is full to the last entry says so, and is read.
        if (error.name() != ErrorName::Overflow || log.count() != linesIn(member.bytes)) {
            throw;
        }
    }
}

} // namespace

QString logbookName(const Config &config)
{
    return QFileInfo(logbookPath(config)).fileName();
}

bool hasLog(const Config &config)
{
    return QFileInfo(logbookPath(config)).isFile() || QFileInfo(config.path(sitesName.toString())).isFile();
}

QByteArray backupBytes(const Config &config, DateTime now)
{
    const QStringList paths = pathsOf(config);
    qint64 size = 0;
    for (const QString &path : paths) {
        size += isNamed(QFileInfo(path).fileName(), stationsName) ? 0 : QFileInfo(path).size();
    }
    if (size > largestLog) {
        throw RuntimeError(ErrorName::Overflow,
            u"Backing up %1: the files of the log are larger than %2 MiB"_s.arg(
                config.applicationDir(), QString::number(largestLog >> 20)));
    }
    std::vector<ZipMember> members;
    QByteArray logbook;
    for (const QString &path : paths) {
        members.push_back({QFileInfo(path).fileName(), readFile(path)});
        if (path == logbookPath(config)) {
            logbook = members.back().bytes;
        }
    }
    return zipBytes(members, commentOf(config, logbook), now);
}

std::optional<qint32> receptionsTold(const QString &comment)
{
    const auto text = told(comment, receptionsKey);
    bool ok = false;
    const int number = text ? text->toInt(&ok) : 0;
    return ok && number >= 0 ? std::optional(number) : std::nullopt;
}

QString logbookTold(const QString &comment)
{
    return told(comment, logbookKey).value_or(QString());
}

bool isSameLogbook(const QString &one, const QString &other)
{
    return isNamed(one, other);
}

BackedUpLog readBackup(const QString &path, const QString &name, const Regional &regional)
{
    const ZipContent content = readZip(path, ZipReading::Whole);
    if (!content.problem.isEmpty()) {
        throw RuntimeError(ErrorName::DeviceError, u"Reading the backup %1: %2"_s.arg(path, content.problem));
    }
    BackedUpLog result;
    readLog(result.log, logbookIn(content.members, name, path), regional, path);
    for (const ZipMember &member : content.members) {
        if (isNamed(member.name, sitesName)) {
            readTransmitters(
                result.sites.emplace(), member.bytes, regional.codePage, path + u": "_s + member.name);
        }
    }
    return result;
}

} // namespace quillon
