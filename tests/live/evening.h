#pragma once

#include "live/receiverevent.h"
#include "platform/datetime.h"
#include "rds-signal/channel.h"
#include "rds-signal/groupmaker.h"

#include <cstddef>
#include <optional>
#include <random>
#include <vector>

namespace quillon::test {

/// An opening to Spain: forty stations, half a minute each, as a weak receiver gives them. They fade, have
/// wrong PI codes among their groups, and after each retune groups of the station before come late.
class Evening
{
public:
    static constexpr int stations = 40;
    static constexpr qint64 lasts = 30'000;

    struct Heard
    {
        rdssignal::SignalStation station;
        qint64 from = 0; ///< milliseconds since 1970, UTC
    };

    /// The same seed gives the same evening.
    explicit Evening(quint32 seed)
        : m_channel({0, 0.85, 7, 0.003, seed})
        , m_random(seed)
    {
        using namespace Qt::StringLiterals;
        m_begin = fromCivil({2025, 6, 12, 16, 0, 0})->seconds * 1000;
        for (int i = 0; i < stations; ++i) {
            const QString ps = u"RNE %1"_s.arg(i, 2, 10, QChar(u'0'));
            // A network has the same code on several frequencies.
            const auto pi = static_cast<quint16>(0xE200 + i / 2);
            const qint64 hertz = 87'600'000 + i * 450'000;
            m_heard.push_back({{hertz, pi, i % 3 == 0 ? ps + u" A"_s : ps, u"Radio far away"_s, {}, 30, 0xE2},
                m_begin + i * lasts});
        }
    }

    [[nodiscard]] const std::vector<Heard> &heard() const { return m_heard; }

    /// Tells all that the receiver tells while it is tuned to one of them: `tell(event, when)`. Returns when
    /// the first group came from which the PI code could be read.
    template<typename Tell>
    std::optional<qint64> listenTo(std::size_t number, Tell tell)
    {
        using namespace rdssignal;
        const Heard &heard = m_heard[number];
        tell(ReceiverEvent(Tuned {heard.station.hertz}), heard.from);
        if (number > 0) {
            const SignalStation &before = m_heard[number - 1].station;
            for (int i = 0; i < 3; ++i) {
                tell(GroupHeard {nameGroup(before.pi, rdsBytes(before.ps, 8), i)}, heard.from + 20 * i);
            }
        }
        std::bernoulli_distribution wrongCode(0.02);
        std::uniform_int_distribution<unsigned> bit(0, 15);
        std::optional<qint64> first;
        GroupMaker maker(heard.station);
        while (maker.elapsed() < lasts - 500) {
            const qint64 when = heard.from + 400 + maker.elapsed();
            RdsGroup group = m_channel.received(maker.next(), static_cast<double>(when - m_begin) / 1000);
            const bool clean = group.states[0] == BlockState::Clean;
            if (clean && wrongCode(m_random)) {
                group.blocks[0] = static_cast<quint16>(group.blocks[0] ^ (1U << bit(m_random)));
            }
            if (!first && clean && group.blocks[0] == heard.station.pi) {
                first = when;
            }
            tell(GroupHeard {group}, when);
        }
        return first;
    }

private:
    qint64 m_begin = 0;
    std::vector<Heard> m_heard;
    rdssignal::Channel m_channel;
    std::mt19937 m_random;
};

} // namespace quillon::test
