#include "rds-signal/channel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillon::rdssignal {

Channel::Channel(const ChannelSettings &settings)
    : m_settings(settings)
    , m_random(settings.seed)
{
    m_phase = std::uniform_real_distribution<double>(0, 2 * std::numbers::pi)(m_random);
}

double Channel::amplitude(double second) const
{
    const double turn = 2 * std::numbers::pi * second / m_settings.period;
    const double wave = 0.7 * std::sin(turn + m_phase) + 0.3 * std::sin(2.7 * turn + 2 * m_phase);
    return 1 - m_settings.fading * (1 + wave) / 2;
}

double Channel::noise()
{
    return m_settings.noise > 0 ? m_settings.noise * m_normal(m_random) : 0;
}

RdsGroup Channel::received(const RdsGroup &group, double second)
{
    const double left = amplitude(second);
    // At a tenth of the amplitude every second bit is a guess.
    const double share = std::clamp(m_settings.errors + std::max(0.0, 0.4 - left) * 1.6, 0.0, 0.5);
    GroupBits bits = encoded(group);
    std::bernoulli_distribution turned(share);
    for (bool &bit : bits) {
        bit = bit != turned(m_random);
    }
    return decoded(bits);
}

} // namespace quillon::rdssignal
