#pragma once

#include "core/logbook.h"
#include "platform/codepage.h"

#include <QByteArray>

#include <vector>

namespace quillon {

/// The file of the log: one line of the current layout for each entry that is not deleted.
[[nodiscard]] QByteArray logbookBytes(const Logbook &log, const CodePage &codePage);

/// The same file for a log that is saved after every change: only blocks of entries that have changed since
/// the last call are encoded again.
class LogbookLines
{
public:
    /// The log must outlive this.
    LogbookLines(const Logbook &log, const CodePage &codePage);

    /// Encodes every block that has changed, so that bytes() need not.
    void prepare();

    /// What logbookBytes gives for the log as it is now.
    [[nodiscard]] QByteArray bytes();

private:
    struct Block
    {
        quint64 revision = 0;
        QByteArray lines;
    };

    const Logbook &m_log;
    CodePage m_codePage;
    std::vector<Block> m_blocks;
};

} // namespace quillon
