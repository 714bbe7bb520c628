#pragma once

#include "live/autolog.h"
#include "live/sources.h"
#include "platform/filecalls.h"

#include <QList>
#include <QString>

namespace quillon {

/// A source that is kept by a name.
struct KeptSource
{
    QString name;
    SourceSettings settings;
};

/// What the listener has set about receivers. It stands in the configuration folder, never beside the log.
struct ReceiverSettings
{
    SourceSettings last; ///< the one chosen now
    QList<KeptSource> kept;
    bool connectAtStart = false;
    bool textAsNotes = false;
    bool mayTune = false;
    bool sound = false;
    bool notification = false;
    AutoLogRules autoLog;
};

/// `$XDG_CONFIG_HOME/quillon`, or its usual place.
[[nodiscard]] QString receiverFolder();

/// Reads `receiver.ini` and `receiver.passwords` of the folder; what is missing or makes no sense keeps its
/// default.
[[nodiscard]] ReceiverSettings readReceiverSettings(const QString &folder);

/// Writes both, the passwords into a file that nobody else can read (mode 600). Throws the run-time error of
/// what failed.
void writeReceiverSettings(
    const QString &folder, const ReceiverSettings &settings, FileCalls &calls = FileCalls::real());

} // namespace quillon
