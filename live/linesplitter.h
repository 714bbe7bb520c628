#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <utility>

namespace quillon {

/// Cuts a stream of bytes into lines. A line that is longer than any sensible one is thrown away up to its
/// end, so a stream without an end costs no memory.
class LineSplitter
{
public:
    static constexpr qsizetype longestLine = 16'384;

    /// Calls `line(QByteArrayView)` for each line that the bytes complete, without LF or CR LF.
    template<typename Line>
    void feed(QByteArrayView bytes, Line line)
    {
        for (qsizetype end = bytes.indexOf('\n'); end >= 0; end = bytes.indexOf('\n')) {
            if (takeRest(bytes.first(end))) {
                const QByteArray whole = std::exchange(m_begun, {});
                line(withoutCr(whole));
            }
            m_tooLong = false;
            m_begun.clear();
            bytes = bytes.sliced(end + 1);
        }
        takeRest(bytes);
    }

    void clear()
    {
        m_begun.clear();
        m_tooLong = false;
    }

private:
    bool takeRest(QByteArrayView part)
    {
        if (m_tooLong || m_begun.size() + part.size() > longestLine) {
            m_tooLong = true;
            m_begun.clear();
            return false;
        }
        m_begun.append(part);
        return true;
    }
    [[nodiscard]] static QByteArrayView withoutCr(QByteArrayView line)
    {
        return line.endsWith('\r') ? line.chopped(1) : line;
    }

    QByteArray m_begun;
    bool m_tooLong = false;
};

} // namespace quillon
