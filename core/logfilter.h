#pragma once

#include "core/filterterm.h"
#include "core/logbook.h"

#include <QString>
#include <QStringList>
#include <QStringMatcher>

#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// What is asked of a reception's UID and its tags for FMList.
enum class FMListState {
    NoUid,
    NotSent, ///< has a UID and no mark "sent"
    Sent,
    None,
    Multi,
};

/// What the rows of the log have to be to be shown; all rows for an empty one.
struct LogFilter
{
    std::vector<FilterTerm> terms; ///< all of them hold
    std::optional<QString> mode; ///< exactly this Prop
    std::optional<QString> country;
    std::optional<int> year;
    std::optional<FMListState> fmlist;

    [[nodiscard]] bool isEmpty() const;
    bool operator==(const LogFilter &) const = default;
};

/// Tells which entries a filter shows. Copies can be used beside each other; one is for one thread.
class LogFilterMatcher
{
public:
    /// `inMiles` says in what Dist is kept; the filter's km are kilometres, then to one decimal place.
    LogFilterMatcher(LogFilter filter, bool inMiles);

    [[nodiscard]] bool operator()(const LogEntry &entry);

private:
    struct Asked
    {
        FilterTerm term;
        QStringMatcher text; ///< of the term
    };

    [[nodiscard]] bool hasChoices(const LogEntry &entry) const;
    [[nodiscard]] bool holds(const Asked &asked, const LogEntry &entry);
    [[nodiscard]] bool asksMoment(const FilterTerm &term, DateTime moment);
    [[nodiscard]] std::optional<double> numberOf(LogField field, const LogEntry &entry) const;
    void foldRow(const LogEntry &entry);

    LogFilter m_filter;
    std::vector<Asked> m_asked; ///< the filter's terms, the quickest first
    bool m_inMiles;
    MomentSpan m_year;
    GeneralCharacters m_moments;
    // Kept from entry to entry, so that none of them allocates.
    std::u16string m_row;
    bool m_rowIsFolded = false;
    std::u16string m_cell;
};

/// What a filter of the log can choose from: what is in the log, entries that are deleted apart.
struct FilterLists
{
    QStringList modes; ///< those that the program knows in its order, then others by their letters
    QStringList countries; ///< by their letters
    std::vector<int> years; ///< the latest first

    bool operator==(const FilterLists &) const = default;
};

[[nodiscard]] FilterLists filterLists(const Logbook &log);

} // namespace quillon
