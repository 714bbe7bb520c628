#pragma once

#include "fmlist-standin/service.h"

#include <QByteArray>

#include <optional>

namespace quillon::standin {

/// The ways in which the service can fail.
enum class Fault {
    None,
    Drop, ///< the connection ends in the middle of the answer
    Fail500,
    Fail503,
    Junk, ///< 1 MB of noise as the body
    Huge, ///< a body of more than 16 MiB
    Hang, ///< no answer ever
    NoLf, ///< the last line without its LF
    Eight, ///< lines of eight fields
    Raw, ///< the bytes of `raw` instead of an answer
};

/// How the stand-in answers from now on.
struct Behaviour
{
    Fault fault = Fault::None;
    int delay = 0; ///< milliseconds before each answer
    int after = 0; ///< number of requests that are answered well before the fault begins
    int times = -1; ///< number of requests that the fault lasts for; -1 for all
    QByteArray raw = {};

    /// True when the next request is to meet the fault; counts it.
    [[nodiscard]] bool strikes();
};

/// The behaviour of a control query such as "mode=500&after=2", "mode=delay:300" or "mode=none"; nothing when
/// it is none.
[[nodiscard]] std::optional<Behaviour> behaviourOf(const QByteArray &query);

/// What goes on the wire instead of the good answer. Nothing at all for a hang.
[[nodiscard]] QByteArray spoiled(const Answer &good, const Behaviour &behaviour);

} // namespace quillon::standin
