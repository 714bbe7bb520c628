#pragma once

#include <cstdlib>

namespace quillon {

/// What a fuzzer takes for granted: ends the run where it does not hold.
inline void require(bool good)
{
    if (!good) {
        std::abort();
    }
}

} // namespace quillon
