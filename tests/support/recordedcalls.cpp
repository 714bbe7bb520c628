#include "support/recordedcalls.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <cerrno>

namespace quillon::test {

RecordedCalls::RecordedCalls(const QString &root, Omitted omitted)
    : m_omitted(omitted)
{
    (void)folder(QFile::encodeName(root));
    QDirIterator walk(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QByteArray path = QFile::encodeName(walk.next());
        if (walk.fileInfo().isDir()) {
            m_namesBefore.insert(place(path), folder(path));
        } else {
            QFile file(walk.filePath());
            if (!file.open(QIODevice::ReadOnly)) {
                qFatal("a file cannot be read");
            }
            m_files.insert(path, ++m_count);
            m_bytesBefore.insert(m_count, file.readAll());
            m_namesBefore.insert(place(path), m_count);
        }
    }
}

int RecordedCalls::folder(const QByteArray &path)
{
    int &number = m_folders[path];
    if (number == 0) {
        number = ++m_count;
        m_allFolders += number;
    }
    return number;
}

Place RecordedCalls::place(const QByteArray &path)
{
    const auto slash = path.lastIndexOf('/');
    return {folder(path.first(slash)), path.sliced(slash + 1)};
}

void RecordedCalls::named(const QByteArray &path, int what)
{
    m_acts.push_back({DiskAct::Kind::Name, what, place(path)});
}

int RecordedCalls::openNameless(const QByteArray &directory, mode_t mode)
{
    if (!m_nameless) {
        errno = EOPNOTSUPP;
        return -1;
    }
    const int file = FileCalls::openNameless(directory, mode);
    if (file >= 0) {
        m_open.insert(file, ++m_count);
    }
    return file;
}

int RecordedCalls::openNew(const QByteArray &path, mode_t mode)
{
    const int file = FileCalls::openNew(path, mode);
    if (file >= 0) {
        m_open.insert(file, ++m_count);
        m_files.insert(path, m_count);
        named(path, m_count);
    }
    return file;
}

int RecordedCalls::openToAppend(const QByteArray &path, mode_t mode)
{
    const int file = FileCalls::openToAppend(path, mode);
    if (file >= 0) {
        int &number = m_files[path];
        if (number == 0) {
            number = ++m_count;
            named(path, number);
        }
        m_open.insert(file, number);
    }
    return file;
}

ssize_t RecordedCalls::write(int file, QByteArrayView bytes)
{
    const QByteArrayView some = m_most > 0 && bytes.size() > m_most ? bytes.first(m_most) : bytes;
    const ssize_t written = FileCalls::write(file, some);
    if (written > 0) {
        m_acts.push_back(
            {DiskAct::Kind::Write, m_open.value(file), {}, {}, some.first(written).toByteArray()});
    }
    return written;
}

int RecordedCalls::sync(int file)
{
    const int result = FileCalls::sync(file);
    if (result == 0 && m_omitted != Omitted::FileSyncs) {
        m_acts.push_back({DiskAct::Kind::Sync, m_open.value(file)});
    }
    return result;
}

int RecordedCalls::giveName(int file, const QByteArray &path)
{
    const int result = FileCalls::giveName(file, path);
    if (result == 0) {
        m_files.insert(path, m_open.value(file));
        named(path, m_open.value(file));
    }
    return result;
}

int RecordedCalls::rename(const QByteArray &from, const QByteArray &to)
{
    const int result = FileCalls::rename(from, to);
    if (result != 0) {
        return result;
    }
    m_acts.push_back({DiskAct::Kind::Move, 0, place(to), place(from)});
    if (m_files.contains(from)) {
        m_files.insert(to, m_files.take(from));
    }
    if (m_folders.contains(from)) {
        m_folders.insert(to, m_folders.take(from));
    }
    return result;
}

int RecordedCalls::remove(const QByteArray &path)
{
    const int result = FileCalls::remove(path);
    if (result == 0) {
        m_files.remove(path);
        named(path, 0);
    }
    return result;
}

int RecordedCalls::madeFolder(int result, const QByteArray &path)
{
    if (result == 0) {
        named(path, folder(path));
    }
    return result;
}

int RecordedCalls::makeDirectory(const QByteArray &path, mode_t mode)
{
    return madeFolder(FileCalls::makeDirectory(path, mode), path);
}

int RecordedCalls::makeDirectoryOfNewName(QByteArray &path)
{
    const int result = FileCalls::makeDirectoryOfNewName(path);
    return madeFolder(result, path);
}

int RecordedCalls::removeDirectory(const QByteArray &path)
{
    const int result = FileCalls::removeDirectory(path);
    if (result == 0) {
        m_folders.remove(path);
        named(path, 0);
    }
    return result;
}

int RecordedCalls::syncDirectory(const QByteArray &directory)
{
    const int result = FileCalls::syncDirectory(directory);
    if (result == 0 && m_omitted != Omitted::FolderSyncs) {
        m_acts.push_back({DiskAct::Kind::SyncFolder, folder(directory)});
    }
    return result;
}

} // namespace quillon::test
