#pragma once

#include <QtGlobal>

#include <array>

namespace quillon {

/// How well a block of an RDS group came through.
enum class BlockState : quint8 {
    Clean,
    Corrected, ///< one or two bits were mended: still trusted for text that is confirmed
    Guessed, ///< more bits were mended: not trusted
    Lost,
};

/// One RDS group: blocks A to D, 16 bits each, and the state of each.
struct RdsGroup
{
    std::array<quint16, 4> blocks {};
    std::array<BlockState, 4> states {};

    bool operator==(const RdsGroup &) const = default;
};

} // namespace quillon
