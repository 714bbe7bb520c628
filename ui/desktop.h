#pragma once

#include <QString>

namespace quillon {

/// Hands a URL or the path of a file to the desktop, which opens it with its default handler. Whether it did
/// is not checked.
void HyperJump(const QString &url);

/// Hands a file to the desktop, as HyperJump does.
void openFile(const QString &path);

// An interface that nothing in the program calls.

/// Opens the page of a callsign, as HyperJump does: the template with the callsign for every "$CALLSIGN", the
/// callsign without any "/P" and "/M".
void callsignLookup(const QString &urlTemplate, const QString &callsign);

} // namespace quillon
