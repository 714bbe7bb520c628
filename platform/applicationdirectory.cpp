#include "platform/applicationdirectory.h"

#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace quillon {

using namespace Qt::StringLiterals;

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

void prepareApplicationDirectory(const QString &directory, const QString &supplied)
{
    if (QFileInfo::exists(directory)) {
        if (!QFileInfo(directory).isDir()) {
            throw RuntimeError(ErrorName::PathNotFound, directory + u" is not a directory"_s);
        }
        return;
    }
    if (!QDir().mkpath(directory)) {
        throw RuntimeError(ErrorName::PathNotFound, u"Creating the directory "_s + directory);
    }
    const QStringList names = QDir(supplied).entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        copyFile(filePath(supplied, name), filePath(directory, name));
    }
}

} // namespace quillon
