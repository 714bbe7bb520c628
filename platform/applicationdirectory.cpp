#include "platform/applicationdirectory.h"

#include "platform/files.h"
#include "platform/folder.h"
#include "platform/folderlock.h"
#include "platform/runtimeerror.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <optional>
#include <sys/types.h>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr mode_t usualMode = 0777;

// A shelter is closed to others; in it stands the directory that is filled, of files alone.
QString filledIn(const QString &shelter)
{
    return shelter + u"/new"_s;
}

void removeShelter(const QString &shelter, FileCalls &calls)
{
    const QString directory = filledIn(shelter);
    const QStringList files = QDir(directory).entryList(QDir::Files | QDir::Hidden);
    for (const QString &file : files) {
        calls.remove(QFile::encodeName(filePath(directory, file)));
    }
    calls.removeDirectory(QFile::encodeName(directory));
    calls.removeDirectory(QFile::encodeName(shelter));
}

// What a first start that was killed has left; the shelter of one that is still at work is locked.
void removeLeftShelters(const QString &above, FileCalls &calls)
{
    const QStringList names =
        QDir(above).entryList({u".quillon-??????"_s}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
    for (const QString &name : names) {
        const FolderLock lock(filePath(above, name));
        if (!lock.isTaken()) {
            removeShelter(filePath(above, name), calls);
        }
    }
}

// A directory that is filled before it gets its name; gone with all that is in it unless it was renamed.
class NewDirectory
{
public:
    NewDirectory(const QString &target, FileCalls &calls)
        : m_calls(calls)
        , m_doing(u"Creating the directory "_s + target)
        , m_target(QFile::encodeName(target))
    {
        const QString above = QFileInfo(target).path();
        makeFolders(above, calls, m_doing);
        QByteArray name = QFile::encodeName(above + u"/.quillon-XXXXXX"_s);
        check(calls.makeDirectoryOfNewName(name));
        m_shelter = QFile::decodeName(name);
        m_atWork.emplace(m_shelter);
        // What is filled gets the usual mode bits.
        if (calls.makeDirectory(QFile::encodeName(path()), usualMode) < 0) {
            const int code = errno;
            removeShelter(m_shelter, m_calls);
            throw systemError(code, m_doing);
        }
    }
    ~NewDirectory() { removeShelter(m_shelter, m_calls); }
    NewDirectory(const NewDirectory &) = delete;
    NewDirectory &operator=(const NewDirectory &) = delete;

    [[nodiscard]] QString path() const { return filledIn(m_shelter); }

    void commit() const
    {
        check(m_calls.rename(QFile::encodeName(path()), m_target));
        syncFolder(QFile::encodeName(QFileInfo(m_shelter).path()), m_calls, m_doing);
    }

private:
    void check(int result) const
    {
        if (result < 0) {
            throw systemError(errno, m_doing);
        }
    }

    FileCalls &m_calls;
    QString m_doing;
    QByteArray m_target;
    QString m_shelter;
    std::optional<FolderLock> m_atWork;
};

// A supplied file that says in which code page the exports write. A file that says nothing of it stays as it
// is.
QByteArray declaring(QByteArray file, const CodePage &codePage)
{
    const QByteArray name = "windows-" + QByteArray::number(codePage.number());
    for (const QByteArray &declaration :
        {"<meta charset=\""_ba, "<meta name=\"kml-charset\" content=\""_ba}) {
        const QByteArray supplied = declaration + "windows-1252\"";
        if (const qsizetype at = file.indexOf(supplied); at >= 0) {
            file.replace(at, supplied.size(), QByteArray(declaration + name + '"'));
        }
    }
    return file;
}

} // namespace

DirectoryChoice directoryChoiceOfProcess(const QString &option)
{
    return {option, qEnvironmentVariable("QUILLON_DIR"), QCoreApplication::applicationDirPath(),
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)};
}

QString applicationDirectory(const DirectoryChoice &choice)
{
    const auto absolute = [](const QString &path) {
        return QDir::cleanPath(QDir::current().absoluteFilePath(path));
    };
    if (!choice.option.isEmpty()) {
        return absolute(choice.option);
    }
    if (!choice.variable.isEmpty()) {
        return absolute(choice.variable);
    }
    if (findFile(choice.programDirectory, u"LOGBOOK.INI"_s)) {
        return absolute(choice.programDirectory);
    }
    return absolute(filePath(choice.dataHome, u"quillon"_s));
}

QString suppliedDirectory()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../share/quillon"_s);
}

void prepareApplicationDirectory(
    const QString &directory, const QString &supplied, const CodePage &codePage, FileCalls &calls)
{
    removeLeftShelters(QFileInfo(directory).path(), calls);
    if (QFileInfo::exists(directory)) {
        if (!QFileInfo(directory).isDir()) {
            throw RuntimeError(ErrorName::PathNotFound, directory + u" is not a directory"_s);
        }
        return;
    }
    const NewDirectory created(directory, calls);
    const QStringList names = QDir(supplied).entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        const QByteArray bytes = readFile(filePath(supplied, name));
        writeFile(filePath(created.path(), name), declaring(bytes, codePage), calls);
    }
    created.commit();
}

} // namespace quillon
