#pragma once

#include "core/filterterm.h"
#include "platform/datetime.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace quillon {

/// What the text of the filter's box says, or why it cannot be read.
struct FilterReading
{
    std::vector<FilterTerm> terms;
    QString problem; ///< one sentence of bounded length that names the term; empty when all could be read
};

/// Reads words, "quoted words" and terms such as pi:D3, itu==E, freq>100 or date:2025-06, each with a "-"
/// before it when it excludes. Terms that are just being begun ("-", an opening quote) say nothing yet; a
/// quote that is not closed reaches to the end. Dates are read as parseDateTime does, and as a year or a year
/// with its month.
[[nodiscard]] FilterReading readFilter(QStringView text, const MonthNames &months);

/// The term that asks for all of a field: itu==E, site=="Bad Marienberg". What no term can say (a double
/// quote) it asks for as far as it can.
[[nodiscard]] QString filterTerm(LogField field, const QString &value);

/// The year, month, day, minute or second that a text means; nothing when it means none.
[[nodiscard]] std::optional<MomentSpan> momentSpan(QStringView text, const MonthNames &months);

} // namespace quillon
