#pragma once

#include "platform/filecalls.h"

#include <QtGlobal>

#include <cerrno>

namespace quillon::soak {

/// A disk on which so many bytes are left. What does not fit is written as far as it goes.
class SmallDisk : public FileCalls
{
public:
    /// More than anything takes.
    static constexpr qint64 plenty = 1LL << 40;

    void leave(qint64 bytes) { m_left = bytes; }
    void empty() { leave(plenty); }
    [[nodiscard]] qint64 left() const { return m_left; }

    ssize_t write(int file, QByteArrayView bytes) override
    {
        if (m_left <= 0) {
            errno = ENOSPC;
            return -1;
        }
        const ssize_t written = FileCalls::write(file, bytes.first(qMin<qint64>(m_left, bytes.size())));
        m_left -= qMax<ssize_t>(0, written);
        return written;
    }

private:
    qint64 m_left = plenty;
};

} // namespace quillon::soak
