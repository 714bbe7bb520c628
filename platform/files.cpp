#include "platform/files.h"

#include "platform/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

// Only a read of nothing is the end: a file that breaks off before is an error, never a shorter file.
QByteArray readToTheEnd(int file, qsizetype expected, const QString &doing)
{
    constexpr qsizetype room = 4096;
    QByteArray bytes(expected + room, Qt::Uninitialized);
    qsizetype size = 0;
    for (;;) {
        const ssize_t count =
            ::read(file, bytes.data() + size, static_cast<std::size_t>(bytes.size() - size));
        if (count == 0) {
            bytes.truncate(size);
            return bytes;
        }
        if (count < 0 && errno != EINTR) {
            throw systemError(errno, doing);
        }
        size += std::max(count, ssize_t(0));
        if (size > largestFile) {
            throw RuntimeError(ErrorName::Overflow, doing + u": the file is larger than 1 GiB"_s);
        }
        if (size == bytes.size()) {
            bytes.resize(2 * size);
        }
    }
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
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    struct stat status
    {
    };
    if (file < 0) {
        throw systemError(errno, doing);
    }
    const auto closing = qScopeGuard([file] { ::close(file); });
    if (::fstat(file, &status) != 0) {
        throw systemError(errno, doing);
    }
    if (S_ISDIR(status.st_mode)) {
        throw systemError(EISDIR, doing);
    }
    if (status.st_size > largestFile) {
        throw RuntimeError(ErrorName::Overflow, doing + u": the file is larger than 1 GiB"_s);
    }
    return readToTheEnd(file, status.st_size, doing);
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
