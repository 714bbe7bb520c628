#pragma once

#include "live/receiversource.h"

#include <QString>

#include <memory>

namespace quillon {

/// What kind of source a receiver is.
enum class SourceKind { Gqrx, Rigctld, Srcp, Xdrd, RdsSpy, Webserver, Redsea };

inline constexpr int sourceKinds = 7;

/// Where to find a source.
struct SourceSettings
{
    SourceKind kind = SourceKind::Gqrx;
    QString address; ///< host and port, an address, a file or a command, as it was typed
    QString password; ///< for those that take one
    bool atOnce = false; ///< a recorded file is not played in its own time
};

/// The name of a kind: "gqrx", "rigctld", "SRCP", "xdrd", "RDS Spy", "FM-DX-Webserver", "redsea".
[[nodiscard]] QString kindName(SourceKind kind);
/// The usual address of a kind: "127.0.0.1:7356", "ws://127.0.0.1:8080/text", ... An empty address means it;
/// redsea's is only an example.
[[nodiscard]] QString usualAddress(SourceKind kind);
/// True for a kind that may ask for a password.
[[nodiscard]] bool takesPassword(SourceKind kind);

/// A source made, not started, or why there is none.
struct MadeSource
{
    std::unique_ptr<ReceiverSource> source;
    QString wrong; ///< what is wrong with the address
};
[[nodiscard]] MadeSource makeSource(const SourceSettings &settings);

} // namespace quillon
