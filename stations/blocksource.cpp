#include "stations/blocksource.h"

#include "platform/runtimeerror.h"

#include <QIODevice>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

BlockSource::BlockSource(QIODevice &device, QString fileName, ReadProgress progress)
    : m_device(device)
    , m_fileName(std::move(fileName))
    , m_progress(std::move(progress))
{
}

QByteArray BlockSource::next()
{
    constexpr qint64 blockSize = 65'536;
    QByteArray block(blockSize, Qt::Uninitialized);
    const qint64 read = m_device.read(block.data(), blockSize);
    if (read < 0) {
        throw RuntimeError(
            ErrorName::DeviceError, u"Reading %1: %2"_s.arg(m_fileName, m_device.errorString()));
    }
    block.truncate(read);
    m_read += read;
    if (m_progress) {
        m_progress(m_read);
    }
    return block;
}

} // namespace quillon
