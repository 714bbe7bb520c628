#pragma once

#include "toldcalls.h"

#include <functional>

namespace quillon::soak {

/// The calls of a program that knows nothing of this, as it makes them to the C library. Those of FileCalls
/// are told as such; any other that changes a file is counted, so that a kill meets it, too.
class WatchedCalls : public ToldCalls
{
public:
    using ToldCalls::ToldCalls;

    int other(const std::function<int()> &call) { return at("other", call); }
};

/// From now on the calls of this thread go through `calls`, where they concern what is in one of these
/// folders. No waiting takes time any more: the clock of the wall goes forward instead.
void watchCalls(const QByteArrayList &folders, WatchedCalls &calls);

} // namespace quillon::soak
