#pragma once

#include "core/logbook.h"
#include "platform/codepage.h"

#include <QByteArray>

#include <functional>
#include <vector>

namespace quillon {

/// The file of the log: one line of the current layout for each entry that is not deleted.
[[nodiscard]] QByteArray logbookBytes(const Logbook &log, const CodePage &codePage);

/// The same file for a log that is saved after every change: the file is kept, and only blocks with an entry
/// that was named as changed are encoded again, in their place.
class LogbookLines
{
public:
    explicit LogbookLines(const CodePage &codePage);

    /// Has to be told of every entry that is no longer what it was at the last call of bytes().
    void changed(qint32 entry);
    /// Entries from this number on were added or taken away.
    void changedFrom(qint32 entry);

    /// Encodes what is not kept, so that bytes() need not.
    void prepare(const Logbook &log);

    /// What logbookBytes gives for the log.
    [[nodiscard]] QByteArray bytes(const Logbook &log);

private:
    struct Block
    {
        bool kept = false;
        qsizetype size = 0; // of its lines in the file
    };

    void keepBlocks(std::size_t count);
    void putTogether(const std::function<QByteArray(std::size_t)> &linesOfBlock);

    CodePage m_codePage;
    QByteArray m_file;
    std::vector<Block> m_blocks;
};

} // namespace quillon
