#include "platform/keptfile.h"

namespace quillon {

KeptFile::KeptFile(FileCalls &calls)
    : m_calls(calls)
{
}

void KeptFile::readWhole(const QString &path, const FileState &state)
{
    m_known = Known {path, state};
}

std::optional<QString> KeptFile::save(const QString &path, const QString &directory, QByteArrayView bytes)
{
    const std::optional<FileState> there = fileState(path);
    std::optional<QString> copy;
    if (there && !(m_known && m_known->path == path && m_known->state == *there)) {
        copy = backupFile(path, directory, localNow(), m_calls);
    }
    writeFile(path, bytes, m_calls);
    if (const std::optional<FileState> written = fileState(path)) {
        m_known = Known {path, *written};
    }
    return copy;
}

} // namespace quillon
