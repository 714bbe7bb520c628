#include "rds-signal/modulator.h"

#include <array>
#include <cmath>
#include <numbers>

namespace quillon::rdssignal {

namespace {

using std::numbers::pi;

constexpr double toneLevel = 0.30;
constexpr double pilotLevel = 0.09;
constexpr double rdsLevel = 0.06;
constexpr double pilot = 19'000;
constexpr double deviation = 75'000;

/// Bits before and after now whose waves still reach here.
constexpr int reach = 3;
constexpr std::size_t symbolsInReach = 6;
static_assert(symbolsInReach == std::size_t {2} * reach);
constexpr int stepsOfBit = 512;
constexpr int steps = 2 * reach * stepsOfBit;

/// The impulse response of the shaping filter cos(pi f td / 4), 0 to 2 / td, at `t` in units of td.
double impulse(double t)
{
    const auto part = [](double angle) { return std::abs(angle) < 1e-9 ? 2.0 : std::sin(2 * angle) / angle; };
    const double a = pi / 4;
    const double b = 2 * pi * t;
    return (part(a - b) + part(a + b)) / 2;
}

/// The wave of one bit, from -reach to +reach bits: biphase, so one impulse up and one down.
const std::array<double, steps + 1> &wave()
{
    static const auto table = [] {
        std::array<double, steps + 1> values {};
        double peak = 0;
        for (int i = 0; i <= steps; ++i) {
            const double t = static_cast<double>(i) / stepsOfBit - reach;
            const double value = impulse(t + 0.25) - impulse(t - 0.25);
            values[static_cast<std::size_t>(i)] = value;
            peak = std::max(peak, std::abs(value));
        }
        for (double &value : values) {
            value /= peak;
        }
        return values;
    }();
    return table;
}

} // namespace

MpxMaker::MpxMaker(const SignalStation &station, double rate)
    : m_groups(station)
    , m_rate(rate)
    , m_symbols(symbolsInReach, 0.0)
{
}

void MpxMaker::nextBit()
{
    if (m_sent == bitsOfGroup) {
        m_bits = encoded(m_groups.next());
        m_sent = 0;
    }
    m_last = m_last != m_bits[m_sent++];
    m_symbols.pop_front();
    m_symbols.push_back(m_last ? 1.0 : -1.0);
}

double MpxMaker::rds() const
{
    double sum = 0;
    for (int i = 0; i < 2 * reach; ++i) {
        // The oldest symbol is the furthest back.
        const double at = m_inBit + (2 * reach - 1 - i);
        sum += m_symbols[static_cast<std::size_t>(i)] * wave()[static_cast<std::size_t>(at * stepsOfBit)];
    }
    return sum;
}

double MpxMaker::next()
{
    m_inBit += bitRate / m_rate;
    while (m_inBit >= 1) {
        m_inBit -= 1;
        nextBit();
    }
    const double t = static_cast<double>(m_sample++) / m_rate;
    const double carrier = std::sin(2 * pi * std::fmod(3 * pilot * t, 1.0));
    return toneLevel * std::sin(2 * pi * std::fmod(1'000 * t, 1.0))
        + pilotLevel * std::sin(2 * pi * std::fmod(pilot * t, 1.0)) + rdsLevel * rds() * carrier;
}

IqMaker::IqMaker(const SignalStation &station, double rate, const ChannelSettings &channel)
    : m_mpx(station, rate)
    , m_channel(channel)
    , m_rate(rate)
{
}

std::complex<float> IqMaker::next()
{
    m_phase = std::fmod(m_phase + 2 * pi * deviation * m_mpx.next() / m_rate, 2 * pi);
    const double left = 0.5 * m_channel.amplitude(static_cast<double>(m_sample++) / m_rate);
    return {static_cast<float>(left * std::cos(m_phase) + m_channel.noise()),
        static_cast<float>(left * std::sin(m_phase) + m_channel.noise())};
}

} // namespace quillon::rdssignal
