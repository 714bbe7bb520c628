#pragma once

#include "rds-signal/blockcode.h"

#include <random>

namespace quillon::rdssignal {

/// What happens to a signal on its way. The same seed gives the same fate.
struct ChannelSettings
{
    double noise = 0; ///< deviation of the noise in a full-scale signal, 0 to 1
    double fading = 0; ///< depth of the fading, 0 (none) to 1 (down to nothing)
    double period = 4; ///< seconds from one fade to the next, about
    double errors = 0; ///< share of the bits that are turned, 0 to 0.5
    quint32 seed = 1;
};

/// Fading as a slow wave of changing period, noise and wrong bits.
class Channel
{
public:
    explicit Channel(const ChannelSettings &settings);

    /// What is left of the amplitude at that second, 0 to 1.
    [[nodiscard]] double amplitude(double second) const;
    /// A sample of noise.
    [[nodiscard]] double noise();
    /// The group as a receiver gets it, with bits turned: more of them while the signal is faded.
    [[nodiscard]] RdsGroup received(const RdsGroup &group, double second);

private:
    ChannelSettings m_settings;
    std::mt19937 m_random;
    std::normal_distribution<double> m_normal;
    double m_phase = 0;
};

} // namespace quillon::rdssignal
