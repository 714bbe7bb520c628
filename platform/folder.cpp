#include "platform/folder.h"

#include "platform/runtimeerror.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/stat.h>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct CloseFolder
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

bool isFile(DIR *folder, const dirent &entry)
{
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) {
        return entry.d_type == DT_REG;
    }
    struct stat status
    {
    };
    return ::fstatat(::dirfd(folder), entry.d_name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

QString decodedName(QByteArrayView name, const CodePage &codePage)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(name);
    return utf8.hasError() ? codePage.decode(name) : text.normalized(QString::NormalizationForm_C);
}

// Calls `visit` with the name of each file that is not hidden, as the disk has it.
void forEachFile(const QString &directory, const std::function<void(QByteArrayView)> &visit)
{
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir(QFile::encodeName(directory).constData()));
    if (!folder) {
        if (errno == ENOENT || errno == ENOTDIR) {
            return;
        }
        throw systemError(errno, u"Listing the folder "_s + directory);
    }
    for (errno = 0; const dirent *entry = ::readdir(folder.get()); errno = 0) {
        if (entry->d_name[0] != '.' && isFile(folder.get(), *entry)) {
            visit(QByteArrayView(entry->d_name));
        }
    }
    if (errno != 0) {
        throw systemError(errno, u"Listing the folder "_s + directory);
    }
}

} // namespace

QStringList fileNames(const QString &directory, const QString &ending, const CodePage &codePage)
{
    QStringList names;
    forEachFile(directory, [&](QByteArrayView bytes) {
        const QString name = decodedName(bytes, codePage);
        if (name.endsWith(ending, Qt::CaseInsensitive)) {
            names += name;
        }
    });
    std::ranges::sort(names);
    return names;
}

std::optional<QByteArray> listedFile(const QString &directory, const QString &name, const CodePage &codePage)
{
    const QByteArray exact = name.toUtf8();
    std::optional<QByteArray> found;
    forEachFile(directory, [&](QByteArrayView bytes) {
        if (decodedName(bytes, codePage) == name
            && (!found || bytes == exact || (*found != exact && bytes < *found))) {
            found = bytes.toByteArray();
        }
    });
    return found ? std::optional(QFile::encodeName(directory) + '/' + *found) : std::nullopt;
}

void syncFolder(const QByteArray &path, FileCalls &calls, const QString &doing)
{
    // Not every file system can sync a directory.
    if (calls.syncDirectory(path) < 0 && errno != EINVAL && errno != ENOTSUP) {
        throw systemError(errno, doing);
    }
}

void makeFolders(const QString &path, FileCalls &calls, const QString &doing)
{
    constexpr mode_t usualMode = 0777;
    if (QFileInfo(path).isDir()) {
        return;
    }
    const QString above = QFileInfo(path).path();
    if (above != path) {
        makeFolders(above, calls, doing);
    }
    // Another program may have been quicker.
    if (calls.makeDirectory(QFile::encodeName(path), usualMode) < 0 && errno != EEXIST) {
        throw systemError(errno, doing);
    }
    syncFolder(QFile::encodeName(above), calls, doing);
}

} // namespace quillon
