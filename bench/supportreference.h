#pragma once

#include <QByteArray>

#include <algorithm>
#include <vector>

namespace quillon::bench {

/// The work that the bars of the windows' commands are held to: 6,250 lines of a logbook cut at their "|"
/// into strings. It uses nothing of the program and takes about 10 ms of a quiet machine; measured between
/// the repetitions of a command it is slowed by whatever slows that. The result is how many pieces there are.
int referenceWork();

/// Milliseconds of processor time that one referenceWork takes now.
[[nodiscard]] double referenceTime();

/// The plain save: the bytes written beside the file, synced and renamed over it. False when that fails.
[[nodiscard]] bool savePlain(const QByteArray &path, const QByteArray &bytes);

/// Milliseconds of processor time that one savePlain takes now.
[[nodiscard]] double savePlainTime(const QByteArray &path, const QByteArray &bytes);

/// The middle one of some times.
[[nodiscard]] inline double medianOf(std::vector<double> times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::ranges::nth_element(times, middle);
    return *middle;
}

} // namespace quillon::bench
