#pragma once

#include "core/foldedtext.h"
#include "core/logfilter.h"
#include "platform/numbers.h"

#include <QLocale>

#include <array>

namespace quillon::test {

/// The filter once more, as plainly as it can be told: every cell is made, folded and looked at by itself.
class PlainFilter
{
public:
    PlainFilter(LogFilter filter, bool inMiles)
        : m_filter(std::move(filter))
        , m_inMiles(inMiles)
    {
    }

    [[nodiscard]] bool shows(const LogEntry &entry) const
    {
        const QString tag = cellText(entry, GridColumn::FMList);
        const bool state = !m_filter.fmlist
            || std::array {entry.uid.isEmpty(), !entry.uid.isEmpty() && tag != u"Sent", tag == u"Sent",
                tag == u"None", tag == u"Multi"}[static_cast<std::size_t>(*m_filter.fmlist)];
        bool good = state && m_filter.mode.value_or(entry.prop) == entry.prop
            && m_filter.country.value_or(entry.country) == entry.country
            && m_filter.year.value_or(civil(entry.dateTime).year) == civil(entry.dateTime).year;
        for (const FilterTerm &term : m_filter.terms) {
            good = good && (term.field ? fieldHolds(term, entry) : rowHolds(term, entry)) != term.excludes;
        }
        return good;
    }

private:
    [[nodiscard]] bool rowHolds(const FilterTerm &term, const LogEntry &entry) const
    {
        bool found = term.number && term.number == numeric(entry.freq);
        for (int column = 0; column < gridColumnCount; ++column) {
            found = found || folded(cellText(entry, static_cast<GridColumn>(column))).contains(term.text);
        }
        return found;
    }

    [[nodiscard]] bool fieldHolds(const FilterTerm &term, const LogEntry &entry) const
    {
        const QString cell = cellText(entry, logField(*term.field).column);
        const MonthNames months = MonthNames::of(QLocale::c());
        if (term.field == LogField::DateTime) {
            const QString sortable = formatted(entry.dateTime, u"yyyy-mm-dd hh:nn:ss", months);
            const auto order = [&](DateTime moment) { return entry.dateTime < moment; };
            return term.test == FilterTest::Below ? order(term.span.first)
                : term.test == FilterTest::Above  ? !order(term.span.end)
                : term.test == FilterTest::InSpan ? !order(term.span.first) && order(term.span.end)
                : term.test == FilterTest::Begins
                ? sortable.startsWith(term.text) || cell.startsWith(term.text)
                : cell.isEmpty();
        }
        if (term.test == FilterTest::IsEmpty) {
            return cell.trimmed().isEmpty();
        }
        if (term.number) {
            auto number = numeric(cell);
            if (number && m_inMiles && term.field == LogField::Dist) {
                number = rounded(*number * 1.6093, 1);
            }
            return number
                && ((*number < *term.number && term.test == FilterTest::Below)
                    || (*number > *term.number && term.test == FilterTest::Above)
                    || (*number == *term.number && term.test == FilterTest::IsNumber));
        }
        return term.test == FilterTest::Begins ? folded(cell).startsWith(term.text)
            : term.test == FilterTest::Is      ? folded(cell) == term.text
                                               : folded(cell).contains(term.text);
    }

    LogFilter m_filter;
    bool m_inMiles;
};

} // namespace quillon::test
