#pragma once

#include "live/rdsgroup.h"

#include <array>

namespace quillon::rdssignal {

/// Bits in a group, and how many of them are sent in a second.
inline constexpr std::size_t bitsOfGroup = 104;
inline constexpr double bitRate = 1187.5;

/// A group as it is sent, first bit first.
using GroupBits = std::array<bool, bitsOfGroup>;

/// The ten check bits of a block (generator x^10+x^8+x^7+x^5+x^4+x^3+1, IEC 62106), without an offset.
[[nodiscard]] quint16 checkword(quint16 block);

/// The group with its check bits and offset words; version B has its own offset for block C.
[[nodiscard]] GroupBits encoded(const RdsGroup &group);

/// What a receiver in step makes of the bits: a block whose check bits do not fit is lost, nothing is mended.
[[nodiscard]] RdsGroup decoded(const GroupBits &bits);

} // namespace quillon::rdssignal
