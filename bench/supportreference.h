#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace quillon::bench {

/// The work that the bars of the windows' commands are held to: 6,250 lines of a logbook cut at their "|"
/// into strings. It uses nothing of the program and takes about 10 ms; measured between the repetitions of a
/// command it is slowed by whatever slows that. The result is how many pieces there are.
int referenceWork();

/// Milliseconds of processor time that one referenceWork takes now, 10 at least: where nobody else uses the
/// memory it is twice as quick, and what a command does besides using memory is not.
[[nodiscard]] double referenceTime();

/// The plain save: the bytes written beside the file, synced and renamed over it. False when that fails.
[[nodiscard]] bool savePlain(const QByteArray &path, const QByteArray &bytes);

/// Milliseconds of processor time that one savePlain takes now.
[[nodiscard]] double savePlainTime(const QByteArray &path, const QByteArray &bytes);

inline constexpr double half = 0.5;
inline constexpr double quarter = 0.25;

/// The time below which that part of some times is.
[[nodiscard]] inline double quantileOf(std::vector<double> times, double part)
{
    const auto place = times.begin() + static_cast<std::ptrdiff_t>(static_cast<double>(times.size()) * part);
    std::ranges::nth_element(times, place);
    return *place;
}

/// The middle one of some times.
[[nodiscard]] inline double medianOf(std::vector<double> times)
{
    return quantileOf(std::move(times), half);
}

} // namespace quillon::bench
