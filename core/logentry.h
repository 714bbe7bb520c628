#pragma once

#include "platform/datetime.h"

#include <QString>

namespace quillon {

/// One reception of an FM station. The fields stand in the order of the logbook file.
struct LogEntry
{
    QString piCode; ///< four hexadecimal digits, upper case, or "delete"
    DateTime dateTime; ///< UTC when entered through the entry form
    QString prop; ///< propagation mode
    QString freq; ///< MHz, as typed
    QString transmitter; ///< site name
    QString country; ///< as in the country list, or "TBD"
    QString notes; ///< line breaks are CR LF
    QString rdsName; ///< programme service name (PS)
    QString power; ///< kW, as typed
    QString dist; ///< distance from home, as text
    QString fmlist; ///< "#"-terminated tags such as "fml=sent#"
    QString uid; ///< identifier in FMList

    bool operator==(const LogEntry &) const = default;
};

/// What the PI Code of a deleted entry reads.
inline constexpr QStringView deletedPiCode = u"delete";

/// True for an entry that is skipped when the logbook is written.
[[nodiscard]] bool isDeleted(const LogEntry &entry);

/// "Sent", "Multi", "None" or nothing: the first of the tags fml=sent, fml=multi, fml=none that the text
/// contains, in this order.
[[nodiscard]] QString fmlistDisplay(QStringView fmlist);
/// The same, as a view of a constant.
[[nodiscard]] QStringView fmlistName(QStringView fmlist);

// An interface that nothing in the program calls.

/// "Yes" when the text is exactly "1", otherwise "No".
[[nodiscard]] QString yesNo(QStringView text);

} // namespace quillon
