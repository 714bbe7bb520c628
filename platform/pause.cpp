#include "platform/pause.h"

#include <chrono>
#include <thread>

namespace quillon {

namespace {

using Clock = std::chrono::system_clock;
using Seconds = std::chrono::duration<double>;

Seconds wholeSeconds()
{
    return std::chrono::floor<std::chrono::seconds>(Clock::now()).time_since_epoch();
}

} // namespace

void Pause(float seconds)
{
    constexpr Seconds oneSecond {1};
    constexpr std::chrono::milliseconds look {20};
    const Seconds wait {static_cast<double>(seconds)};
    const Seconds target = wholeSeconds() + wait;
    const auto start = std::chrono::steady_clock::now();
    while (wholeSeconds() < target && std::chrono::steady_clock::now() - start < wait + oneSecond) {
        std::this_thread::sleep_for(look);
    }
}

} // namespace quillon
