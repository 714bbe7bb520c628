#pragma once

#include "core/config.h"
#include "core/logbook.h"
#include "platform/codepage.h"

#include <QByteArray>
#include <QString>

#include <exception>
#include <functional>
#include <optional>

namespace quillon {

/// The header lines of an upload; nothing ends the last one.
inline constexpr QByteArrayView uploadHeaders =
    "Content-Type: application/x-www-form-urlencoded\r\nUser-Agent: Quillon";

/// The most characters of an answer to an upload that are read.
inline constexpr qsizetype uploadAnswerLength = 1024;

/// The address that uploads go to.
[[nodiscard]] QByteArray uploadUrl(const QString &fmlistUrl, const CodePage &codePage);

/// True for an entry with a UID that is neither deleted nor sent yet.
[[nodiscard]] bool isEligible(const LogEntry &entry);

/// Number of entries that are eligible.
[[nodiscard]] int eligibleCount(const Logbook &log);

/// Why nothing can be uploaded: no identity of the sender, or no eligible entry. Nothing when it can.
[[nodiscard]] std::optional<QString> uploadRefusal(const Settings &settings, const Logbook &log);

/// The form that reports one entry. PI Code, UID and OMID go out unencoded; the mode only when it is exactly
/// "Es", "Tropo" or "MS".
[[nodiscard]] QByteArray uploadBody(
    const LogEntry &entry, const Settings &settings, const CodePage &codePage);

/// True when the service took the entry: its answer holds no "Error ".
[[nodiscard]] bool isAccepted(QStringView answer);

/// How an upload went.
struct Upload
{
    int accepted = 0;
    std::exception_ptr failure; ///< what ended it early; the log is to be saved before it is thrown again
};

/// Sends one form and returns the answer.
using Post = std::function<QString(const QByteArray &body)>;
/// The entry of that number was accepted.
using Accepted = std::function<void(qint32 entry)>;
/// Tells the answer to one entry, and how many of how many are done; false ends the upload.
using Answered = std::function<bool(const QString &answer, int done, int count)>;

/// Posts every eligible entry in log order and tells of each accepted one, which has to be marked as sent
/// then. What `post` throws ends the upload and is returned.
[[nodiscard]] Upload uploadLogs(const Logbook &log, const Settings &settings, const CodePage &codePage,
    const Post &post, const Accepted &accepted, const Answered &answered);

/// The FMList field of an entry that was sent.
[[nodiscard]] QString sentField(const QString &fmlist);

} // namespace quillon
