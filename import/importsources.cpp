#include "import/gzip.h"
#include "import/importfile.h"
#include "import/importlimits.h"
#include "import/refusedlines.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString megabytes(qint64 bytes)
{
    return u"%1 MiB"_s.arg(bytes / 1024 / 1024);
}

// The files of a folder and of the folders in it, in the order of their paths.
QStringList filesOf(const QString &folder)
{
    QStringList files;
    QDirIterator entries(folder, QDir::Files, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        if (files.size() >= mostImportFiles) {
            throw RuntimeError(ErrorName::Overflow,
                u"%1 holds more than %2 files. Choose a folder in it, or some of the files"_s.arg(folder).arg(
                    mostImportFiles));
        }
        files += entries.next();
    }
    files.sort();
    return files;
}

// Reads what was chosen, as long as there is room.
class SourceReader
{
public:
    void add(const QString &path, const QString &name)
    {
        const QFileInfo info(path);
        if (!info.isFile()) {
            refuse(name, info.exists() ? u"It is no file"_s : u"There is no such file"_s);
            return;
        }
        if (info.size() > mostImportBytes) {
            refuse(name,
                u"It is larger than %1, the most that is read. Part it into smaller files"_s.arg(
                    megabytes(mostImportBytes)));
            return;
        }
        try {
            for (ImportSource &source : sourcesOf(name, readFile(path))) {
                m_bytes += source.bytes.size();
                m_sources.push_back(std::move(source));
            }
        } catch (const RuntimeError &error) {
            refuse(name, error.doing());
        }
        if (m_bytes > mostImportBytesInAll) {
            throw RuntimeError(ErrorName::Overflow,
                u"The files hold more than %1 together. Choose fewer at a time"_s.arg(
                    megabytes(mostImportBytesInAll)));
        }
    }

    [[nodiscard]] std::vector<ImportSource> sources() { return std::move(m_sources); }

private:
    void refuse(const QString &name, const QString &why)
    {
        ImportSource source;
        source.name = name;
        source.refusal = why;
        m_sources.push_back(std::move(source));
    }

    std::vector<ImportSource> m_sources;
    qint64 m_bytes = 0;
};

} // namespace

std::vector<ImportSource> sourcesOf(const QString &name, const QByteArray &bytes)
{
    try {
        const QByteArray content = isGzip(bytes) ? gunzipped(bytes, mostImportBytes) : bytes;
        if (isRefusedLines(content)) {
            return partsOfRefusedLines(content);
        }
        return {{name, content, false, 0, {}}};
    } catch (const RuntimeError &error) {
        return {{name, {}, false, 0, error.doing()}};
    }
}

std::vector<ImportSource> importSources(const QStringList &paths)
{
    SourceReader reader;
    for (const QString &path : paths) {
        if (!QFileInfo(path).isDir()) {
            // The folder's name is the day of some logs.
            const QFileInfo info(path);
            reader.add(path, info.dir().dirName() + u'/' + info.fileName());
            continue;
        }
        const qsizetype above = QDir(path).absolutePath().size() + 1;
        for (const QString &file : filesOf(QDir(path).absolutePath())) {
            reader.add(file, file.sliced(above));
        }
    }
    return reader.sources();
}

} // namespace quillon
