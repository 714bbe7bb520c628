#include "rds-signal/blockcode.h"

namespace quillon::rdssignal {

namespace {

constexpr unsigned generator = 0x5B9;
constexpr std::size_t bitsOfBlock = 26;
constexpr unsigned offsetOfVersionB = 0x350;
constexpr std::array<unsigned, 4> offsets {0x0FC, 0x198, 0x168, 0x1B4};
constexpr unsigned versionB = 0x0800;

} // namespace

quint16 checkword(quint16 block)
{
    unsigned rest = unsigned {block} << 10U;
    for (unsigned bit = 25; bit >= 10; --bit) {
        if ((rest & (1U << bit)) != 0) {
            rest ^= generator << (bit - 10);
        }
    }
    return static_cast<quint16>(rest & 0x3FFU);
}

GroupBits encoded(const RdsGroup &group)
{
    GroupBits bits {};
    for (std::size_t i = 0; i < 4; ++i) {
        const bool isB = i == 2 && (group.blocks[1] & versionB) != 0;
        const unsigned check = checkword(group.blocks[i]) ^ (isB ? offsetOfVersionB : offsets[i]);
        const unsigned word = (unsigned {group.blocks[i]} << 10U) | check;
        for (std::size_t bit = 0; bit < bitsOfBlock; ++bit) {
            bits[i * bitsOfBlock + bit] = (word & (1U << (bitsOfBlock - 1 - bit))) != 0;
        }
    }
    return bits;
}

RdsGroup decoded(const GroupBits &bits)
{
    RdsGroup group;
    for (std::size_t i = 0; i < 4; ++i) {
        unsigned word = 0;
        for (std::size_t bit = 0; bit < bitsOfBlock; ++bit) {
            word = (word << 1U) | (bits[i * bitsOfBlock + bit] ? 1U : 0U);
        }
        const auto block = static_cast<quint16>(word >> 10U);
        const unsigned offset = (word & 0x3FFU) ^ checkword(block);
        const bool fits = offset == offsets[i] || (i == 2 && offset == offsetOfVersionB);
        group.blocks[i] = fits ? block : quint16 {0};
        group.states[i] = fits ? BlockState::Clean : BlockState::Lost;
    }
    return group;
}

} // namespace quillon::rdssignal
