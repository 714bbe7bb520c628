#pragma once

#include "rds-signal/blockcode.h"
#include "rds-signal/channel.h"
#include "rds-signal/groupmaker.h"

#include <complex>
#include <deque>
#include <vector>

namespace quillon::rdssignal {

/// The multiplex signal of a station: a tone of 1 kHz (0.30), the stereo pilot (0.09), and RDS on 57 kHz
/// (0.06), of a full deviation of 1.
class MpxMaker
{
public:
    /// `rate` in samples a second, at least 125,000.
    MpxMaker(const SignalStation &station, double rate);

    [[nodiscard]] double next();

private:
    void nextBit();
    [[nodiscard]] double rds() const;

    GroupMaker m_groups;
    double m_rate;
    std::deque<double> m_symbols; ///< signs of the bits around now, the oldest first
    GroupBits m_bits {};
    std::size_t m_sent = bitsOfGroup;
    bool m_last = false;
    double m_inBit = 0; ///< 0 to 1
    qint64 m_sample = 0;
};

/// The signal of a station in complex samples: frequency modulation with 75 kHz, faded and noisy.
class IqMaker
{
public:
    IqMaker(const SignalStation &station, double rate, const ChannelSettings &channel);

    [[nodiscard]] std::complex<float> next();

private:
    MpxMaker m_mpx;
    Channel m_channel;
    double m_rate;
    double m_phase = 0;
    qint64 m_sample = 0;
};

} // namespace quillon::rdssignal
