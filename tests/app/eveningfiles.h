#pragma once

#include "support/testfiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>

namespace quillon::test {

/// The path below a directory and the bytes of a file.
using Files = QMap<QString, QByteArray>;

/// Every file below the directory, hidden ones too; a folder is there with a "/" at its end and no bytes.
[[nodiscard]] inline Files filesBelow(const TestDirectory &directory)
{
    Files files;
    const QDir root(directory.path());
    QDirIterator walk(directory.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        walk.next();
        const QString name = root.relativeFilePath(walk.filePath());
        if (walk.fileInfo().isDir()) {
            files.insert(name + QLatin1Char('/'), {});
        } else {
            files.insert(name, directory.read(name));
        }
    }
    return files;
}

/// What an evening is to leave in a file of that name.
[[nodiscard]] inline QByteArray goldenOfTheEvening(const QString &name)
{
    QFile file(QStringLiteral(QUILLON_TEST_DATA "/evening/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no golden file " + name.toUtf8());
}

/// The name of the first file in which the two differ, or that only one of them has; empty when none.
[[nodiscard]] inline QString firstDifference(const Files &one, const Files &other)
{
    for (auto file = one.begin(); file != one.end(); ++file) {
        if (!other.contains(file.key()) || other.value(file.key()) != file.value()) {
            return file.key();
        }
    }
    for (auto file = other.begin(); file != other.end(); ++file) {
        if (!one.contains(file.key())) {
            return file.key();
        }
    }
    return {};
}

} // namespace quillon::test
