#include "platform/files.h"

#include "platform/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestFile = qint64(1) << 30;

template<typename View, typename Character>
QList<View> linesOf(View text, Character carriageReturn, Character lineFeed)
{
    QList<View> lines;
    while (!text.isEmpty()) {
        const qsizetype end = text.indexOf(lineFeed);
        View line = end < 0 ? text : text.first(end);
        if (end >= 0 && line.endsWith(carriageReturn)) {
            line.chop(1);
        }
        lines.append(line);
        text = end < 0 ? View() : text.sliced(end + 1);
    }
    return lines;
}

bool comesBeforeWithoutCase(const QString &one, const QString &other)
{
    return one.compare(other, Qt::CaseInsensitive) < 0;
}

} // namespace

QString filePath(const QString &directory, const QString &name)
{
    return directory + u'/' + name;
}

std::optional<QString> findFile(const QString &directory, const QString &name)
{
    const QString exact = filePath(directory, name);
    if (QFileInfo(exact).isFile()) {
        return exact;
    }
    const QStringList all = QDir(directory).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString &other : all) {
        if (other.compare(name, Qt::CaseInsensitive) == 0) {
            return filePath(directory, other);
        }
    }
    return std::nullopt;
}

QString resolveFile(const QString &directory, const QString &name)
{
    return findFile(directory, name).value_or(filePath(directory, name));
}

FileIndex::FileIndex(const QString &directory)
    : m_directory(directory)
    , m_names(QDir(directory).entryList(QDir::Files | QDir::Hidden, QDir::Name))
{
    std::ranges::stable_sort(m_names, comesBeforeWithoutCase);
}

QString FileIndex::resolve(const QString &name) const
{
    const auto [first, last] =
        std::equal_range(m_names.cbegin(), m_names.cend(), name, comesBeforeWithoutCase);
    const bool onlyInOtherCase = first != last && std::find(first, last, name) == last;
    return filePath(m_directory, onlyInOtherCase ? *first : name);
}

QByteArray readFile(const QString &path)
{
    return readFile(QFile::encodeName(path), path);
}

QByteArray readFile(const QByteArray &path, const QString &shown)
{
    const QString doing = u"Reading "_s + shown;
    QFile file;
    const int opened = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    struct stat status
    {
    };
    if (opened < 0 || !file.open(opened, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)
        || ::fstat(opened, &status) != 0) {
        throw systemError(errno ? errno : EIO, doing);
    }
    if (S_ISDIR(status.st_mode)) {
        throw systemError(EISDIR, doing);
    }
    if (file.size() > largestFile) {
        throw RuntimeError(ErrorName::Overflow, doing + u": the file is larger than 1 GiB"_s);
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        throw systemError(errno ? errno : EIO, doing);
    }
    return bytes;
}

bool fileHolds(const QString &path, QByteArrayView bytes)
{
    try {
        return readFile(path) == bytes;
    } catch (const RuntimeError &) {
        return false;
    }
}

void copyFile(const QString &from, const QString &to, FileCalls &calls)
{
    writeFile(to, readFile(from), calls);
}

QString backupFile(const QString &path, const QString &directory, DateTime now, FileCalls &calls)
{
    QString copy;
    do {
        copy = filePath(directory, formatted(now, u"yyyymmdd hhnnss.bak", MonthNames()));
        ++now.seconds;
    } while (QFileInfo::exists(copy));
    copyFile(path, copy, calls);
    return copy;
}

std::optional<FileState> fileState(const QString &path)
{
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    constexpr qint64 second = 1'000'000'000;
    return FileState {status.st_dev, status.st_ino, status.st_size,
        status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec,
        status.st_ctim.tv_sec * second + status.st_ctim.tv_nsec};
}

QList<QByteArrayView> splitLines(QByteArrayView text)
{
    return linesOf(text, '\r', '\n');
}

QList<QStringView> splitLines(QStringView text)
{
    return linesOf(text, QChar(u'\r'), QChar(u'\n'));
}

} // namespace quillon
