#pragma once

#include "core/logfields.h"
#include "platform/datetime.h"

#include <QString>

#include <optional>
#include <span>

namespace quillon {

/// What a term asks of its field.
enum class FilterTest {
    Contains,
    Begins,
    Is,
    IsEmpty,
    IsNumber,
    Below, ///< as a number or a moment
    Above,
    InSpan, ///< a moment
};

/// The moments from `first` on and before `end`.
struct MomentSpan
{
    DateTime first;
    DateTime end;

    bool operator==(const MomentSpan &) const = default;
};

/// One term of the filter's text.
struct FilterTerm
{
    bool excludes = false;
    std::optional<LogField> field; ///< nothing: any of the twelve columns
    FilterTest test = FilterTest::Contains;
    QString text; ///< folded; for Contains, Begins and Is
    /// What to compare with. A word that is a number with a decimal sign has it too: it is also found as the
    /// frequency, in any writing.
    std::optional<double> number;
    MomentSpan span; ///< of Date/Time, for Below, Above and InSpan

    bool operator==(const FilterTerm &) const = default;
};

/// A key of the filter's text.
struct FilterKey
{
    QStringView key;
    LogField field;
    FilterTest withColon; ///< what ":" asks; "==" asks for all of a text
    bool hasOrder; ///< true when "<" and ">" are for it
};

/// All keys, in the order of the grid's columns.
[[nodiscard]] std::span<const FilterKey> filterKeys();

} // namespace quillon
