#pragma once

#include "platform/filecalls.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>

#include <utility>
#include <vector>

namespace quillon::test {

/// A name in a folder.
using Place = std::pair<int, QByteArray>;

/// Something that was done to a disk. Files and folders have numbers, from 1.
struct DiskAct
{
    enum class Kind {
        Write, ///< `bytes` to the end of the file `what`
        Sync, ///< of the file `what`
        Name, ///< `place` is `what` from now on; nothing any more when that is 0
        Move, ///< `place` becomes what `from` is, and that becomes nothing
        SyncFolder, ///< of the folder `what`
        Confirm, ///< the user was told
    };
    Kind kind {};
    int what = 0;
    Place place = {};
    Place from = {};
    QByteArray bytes = {};
};

/// File calls that do their work and write down what they did.
class RecordedCalls : public FileCalls
{
public:
    /// What is left out of the record, as if those calls did nothing.
    enum class Omitted { Nothing, FileSyncs, FolderSyncs };
    /// What is below `root` now was there before, all of it synced. The root is folder 1.
    explicit RecordedCalls(const QString &root, Omitted omitted = Omitted::Nothing);

    /// Stands for a file system that knows no nameless files.
    void refuseNameless() { m_nameless = false; }
    /// Lets each write take at most this many bytes.
    void writeAtMost(qsizetype bytes) { m_most = bytes; }
    /// The user has been told that all until now is stored.
    void confirm() { m_acts.push_back({DiskAct::Kind::Confirm}); }

    [[nodiscard]] const std::vector<DiskAct> &acts() const { return m_acts; }
    /// The names that were there before, and the bytes of their files.
    [[nodiscard]] const QMap<Place, int> &namesBefore() const { return m_namesBefore; }
    [[nodiscard]] const QHash<int, QByteArray> &bytesBefore() const { return m_bytesBefore; }
    [[nodiscard]] bool isFolder(int number) const { return m_allFolders.contains(number); }

    int openNameless(const QByteArray &directory, mode_t mode) override;
    int openNew(const QByteArray &path, mode_t mode) override;
    int openToAppend(const QByteArray &path, mode_t mode) override;
    ssize_t write(int file, QByteArrayView bytes) override;
    int sync(int file) override;
    int giveName(int file, const QByteArray &path) override;
    int rename(const QByteArray &from, const QByteArray &to) override;
    int remove(const QByteArray &path) override;
    int makeDirectory(const QByteArray &path, mode_t mode) override;
    int makeDirectoryOfNewName(QByteArray &path) override;
    int removeDirectory(const QByteArray &path) override;
    int syncDirectory(const QByteArray &directory) override;

private:
    [[nodiscard]] int folder(const QByteArray &path);
    [[nodiscard]] Place place(const QByteArray &path);
    void named(const QByteArray &path, int what);
    int madeFolder(int result, const QByteArray &path);

    Omitted m_omitted;
    bool m_nameless = true;
    qsizetype m_most = 0;
    int m_count = 0;
    QHash<int, int> m_open; ///< the numbers of the open files, by their descriptors
    QHash<QByteArray, int> m_files; ///< the numbers of those that have a name, by their paths
    QHash<QByteArray, int> m_folders; ///< the same of folders
    QSet<int> m_allFolders;
    QMap<Place, int> m_namesBefore;
    QHash<int, QByteArray> m_bytesBefore;
    std::vector<DiskAct> m_acts;
};

} // namespace quillon::test
