#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class QIODevice;

namespace quillon {

/// Is called with the bytes read so far, after each block; may throw to stop the reading.
using ReadProgress = std::function<void(qint64)>;

/// A file that is read block by block.
class BlockSource
{
public:
    /// `fileName` names it in messages.
    BlockSource(QIODevice &device, QString fileName, ReadProgress progress);

    /// The next bytes; none at the end. Throws "Device error".
    [[nodiscard]] QByteArray next();
    [[nodiscard]] const QString &fileName() const { return m_fileName; }

private:
    QIODevice &m_device;
    QString m_fileName;
    ReadProgress m_progress;
    qint64 m_read = 0;
};

} // namespace quillon
