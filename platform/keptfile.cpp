#include "platform/keptfile.h"

#include "platform/runtimeerror.h"

namespace quillon {

KeptFile::KeptFile(FileCalls &calls)
    : m_calls(calls)
{
}

void KeptFile::readWhole(const QString &path, const FileState &state)
{
    m_known.insert(path, state);
}

void KeptFile::removeLeftover(const QString &path)
{
    quillon::removeLeftover(path, m_calls);
}

bool KeptFile::isKnown(const QString &path) const
{
    const std::optional<FileState> there = fileState(path);
    const auto known = m_known.constFind(path);
    return there && known != m_known.cend() && *known == *there;
}

std::optional<QString> KeptFile::save(const QString &path, const QString &directory, QByteArrayView bytes)
{
    const std::optional<FileState> there = fileState(path);
    std::optional<QString> copy;
    const auto known = m_known.constFind(path);
    if (there && (known == m_known.cend() || *known != *there)) {
        copy = backupFile(path, directory, localNow(), m_calls);
        // When the writing fails, the next try needs no second copy.
        m_known.insert(path, *there);
    }
    try {
        writeFile(path, bytes, m_calls);
    } catch (const RuntimeError &) {
        // The last step can fail when the new file already stands in its place.
        const std::optional<FileState> now = fileState(path);
        if (now && now != there && fileHolds(path, bytes)) {
            m_known.insert(path, *now);
        }
        throw;
    }
    if (const std::optional<FileState> written = fileState(path)) {
        m_known.insert(path, *written);
    }
    return copy;
}

} // namespace quillon
