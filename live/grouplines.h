#pragma once

#include "live/receiverevent.h"

#include <QByteArrayView>

#include <optional>

namespace quillon {

/// The number that hexadecimal digits write, up to eight of them; nothing for any other text.
[[nodiscard]] std::optional<quint32> hexNumber(QByteArrayView digits);

/// The group that 16 hexadecimal digits write, with "----" for a block that was lost; blanks between the
/// blocks do no harm. Nothing for any other text.
[[nodiscard]] std::optional<RdsGroup> groupOf(QByteArrayView text);

/// Four blocks of hexadecimal digits, "----" for one that is lost, with `separator` between them.
[[nodiscard]] QByteArray groupText(const RdsGroup &group, QByteArrayView separator = {});

/// What a line of the RDS Spy group stream says: a group, or Tuned {} for a reset. Nothing for what else
/// there is, such as "G:".
[[nodiscard]] std::optional<ReceiverEvent> spyStreamEvent(QByteArrayView line);

/// A line of a recorded `.spy` file.
struct SpyLine
{
    RdsGroup group;
    std::optional<qint64> time; ///< milliseconds since 1970 as written, no time zone attached
};

/// Four blocks and " @yyyy/mm/dd hh:nn:ss.zz". Nothing for the first line, for the streams of RDS2 and for
/// what is no group.
[[nodiscard]] std::optional<SpyLine> spyLine(QByteArrayView line);

} // namespace quillon
