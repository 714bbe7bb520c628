#include "platform/applicationdirectory.h"

#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// A directory that is filled before it gets its name; gone with all that is in it unless it was renamed.
class NewDirectory
{
public:
    explicit NewDirectory(const QString &target)
        : m_doing(u"Creating the directory "_s + target)
        , m_target(QFile::encodeName(target))
    {
        const QString above = QFileInfo(target).path();
        std::error_code error;
        std::filesystem::create_directories(QFile::encodeName(above).toStdString(), error);
        if (error) {
            throw systemError(error.value(), m_doing);
        }
        QByteArray name = QFile::encodeName(above + u"/.quillon-XXXXXX"_s);
        check(::mkdtemp(name.data()) ? 0 : -1);
        m_shelter = QFile::decodeName(name);
        // The shelter is closed to others; what is filled gets the usual mode bits.
        if (::mkdir(QFile::encodeName(path()).constData(), 0777) != 0) {
            const int code = errno;
            QDir(m_shelter).removeRecursively();
            throw systemError(code, m_doing);
        }
    }
    ~NewDirectory() { QDir(m_shelter).removeRecursively(); }
    NewDirectory(const NewDirectory &) = delete;
    NewDirectory &operator=(const NewDirectory &) = delete;

    [[nodiscard]] QString path() const { return m_shelter + u"/new"_s; }

    void commit() const { check(::rename(QFile::encodeName(path()).constData(), m_target.constData())); }

private:
    void check(int result) const
    {
        if (result < 0) {
            throw systemError(errno, m_doing);
        }
    }

    QString m_doing;
    QByteArray m_target;
    QString m_shelter;
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
    if (QFileInfo::exists(directory)) {
        if (!QFileInfo(directory).isDir()) {
            throw RuntimeError(ErrorName::PathNotFound, directory + u" is not a directory"_s);
        }
        return;
    }
    const NewDirectory created(directory);
    const QStringList names = QDir(supplied).entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        const QByteArray bytes = readFile(filePath(supplied, name));
        writeFile(filePath(created.path(), name), declaring(bytes, codePage), calls);
    }
    created.commit();
}

} // namespace quillon
