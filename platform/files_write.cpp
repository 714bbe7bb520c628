#include "platform/files.h"

#include "platform/folder.h"
#include "platform/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr mode_t permissionBits = 07777;
constexpr mode_t newFileMode = 0666;

// The file that a name leads to through symbolic links, which need not exist.
QString linkTarget(const QString &path)
{
    constexpr int longestChain = 40;
    QString target = path;
    for (int i = 0; i < longestChain; ++i) {
        const QFileInfo info(target);
        if (!info.isSymLink()) {
            return target;
        }
        target = info.symLinkTarget();
    }
    throw systemError(ELOOP, u"Writing "_s + path);
}

QByteArray leftoverName(const QString &target)
{
    const QFileInfo info(target);
    return QFile::encodeName(info.path() + u"/."_s + info.fileName() + u".new"_s);
}

void check(int result, const QString &doing)
{
    if (result < 0) {
        throw systemError(errno, doing);
    }
}

void writeAll(int file, QByteArrayView bytes, FileCalls &calls, const QString &doing)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = calls.write(file, bytes);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written == 0) {
            errno = ENOSPC;
        }
        check(written > 0 ? 0 : -1, doing);
        bytes = bytes.sliced(written);
    }
}

// A file on its way to the disk: gone again unless it was renamed to where it belongs.
class NewFile
{
public:
    NewFile(const QString &target, FileCalls &calls)
        : m_calls(calls)
        , m_doing(u"Writing "_s + target)
        , m_target(QFile::encodeName(target))
        , m_directory(QFile::encodeName(QFileInfo(target).path()))
        , m_name(leftoverName(target))
    {
        struct stat old
        {
        };
        const bool exists = ::stat(m_target.constData(), &old) == 0;
        if (exists && S_ISDIR(old.st_mode)) {
            throw systemError(EISDIR, m_doing);
        }
        if (exists) {
            // A rename would replace a file that its owner has locked.
            check(m_calls.mayWrite(m_target));
        }
        m_file = m_calls.openNameless(m_directory, newFileMode);
        if (m_file < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) {
            // Not every file system knows nameless files.
            m_calls.remove(m_name);
            m_file = m_calls.openNew(m_name, newFileMode);
            m_named = m_file >= 0;
        }
        if (m_file < 0) {
            throw errno == ENOENT ? RuntimeError(ErrorName::PathNotFound, m_doing)
                                  : systemError(errno, m_doing);
        }
        m_oldMode = exists ? std::optional(old.st_mode & permissionBits) : std::nullopt;
    }

    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    ~NewFile()
    {
        if (m_file >= 0) {
            m_calls.close(m_file);
        }
        if (m_named) {
            m_calls.remove(m_name);
        }
    }

    void write(QByteArrayView bytes)
    {
        if (m_oldMode) {
            check(m_calls.setMode(m_file, *m_oldMode));
        }
        writeAll(m_file, bytes, m_calls, m_doing);
    }

    void commit()
    {
        check(m_calls.sync(m_file));
        if (!m_named) {
            int named = m_calls.giveName(m_file, m_name);
            if (named < 0 && errno == EEXIST) {
                m_calls.remove(m_name);
                named = m_calls.giveName(m_file, m_name);
            }
            check(named);
            m_named = true;
        }
        const int file = m_file;
        m_file = -1;
        check(m_calls.close(file));
        check(m_calls.rename(m_name, m_target));
        m_named = false;
        syncFolder(m_directory, m_calls, m_doing);
    }

private:
    void check(int result) const { quillon::check(result, m_doing); }

    FileCalls &m_calls;
    QString m_doing;
    QByteArray m_target;
    QByteArray m_directory;
    QByteArray m_name;
    std::optional<mode_t> m_oldMode;
    int m_file = -1;
    bool m_named = false;
};

// What is on its way to files whose names are like this.
void removeHidden(const QString &directory, const QString &pattern, FileCalls &calls)
{
    const QStringList names =
        QDir(directory).entryList({u'.' + pattern + u".new"_s}, QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        calls.remove(QFile::encodeName(filePath(directory, name)));
    }
}

} // namespace

void writeFile(const QString &path, QByteArrayView bytes, FileCalls &calls)
{
    NewFile file(linkTarget(path), calls);
    file.write(bytes);
    file.commit();
}

void appendToFile(const QString &path, QByteArrayView bytes, FileCalls &calls)
{
    const QString doing = u"Writing "_s + path;
    const QByteArray name = QFile::encodeName(path);
    const bool isNew = !QFileInfo::exists(path);
    const int file = calls.openToAppend(name, newFileMode);
    check(file, doing);
    auto closing = qScopeGuard([&] { calls.close(file); });
    writeAll(file, bytes, calls, doing);
    check(calls.sync(file), doing);
    closing.dismiss();
    check(calls.close(file), doing);
    if (isNew) {
        syncFolder(QFile::encodeName(QFileInfo(path).path()), calls, doing);
    }
}

void removeLeftover(const QString &path, FileCalls &calls)
{
    calls.remove(leftoverName(linkTarget(path)));
}

void removeLeftovers(const QString &directory, const QString &prefix, FileCalls &calls)
{
    removeHidden(directory, prefix + u'*', calls);
}

void removeCopyLeftovers(const QString &directory, FileCalls &calls)
{
    const QString digit = u"[0-9]"_s;
    removeHidden(directory, digit.repeated(8) + u' ' + digit.repeated(6) + u".bak"_s, calls);
}

} // namespace quillon
