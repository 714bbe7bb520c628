#include "core/logfilter.h"

#include "core/foldedtext.h"
#include "geo/distance.h"
#include "platform/numbers.h"

#include <algorithm>
#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// Between the cells of a row; no folded text has it.
constexpr char16_t cellEnd = u'\n';

// A field as the grid shows it, but Date/Time and the line breaks of notes.
QStringView shownText(const LogEntry &entry, const LogColumn &column)
{
    const QString &text = entry.*column.text;
    return column.field == LogField::FMList ? fmlistName(text) : QStringView(text);
}

bool isInState(const LogEntry &entry, FMListState state)
{
    const QStringView tag = fmlistName(entry.fmlist);
    switch (state) {
    case FMListState::NoUid:
        return entry.uid.isEmpty();
    case FMListState::NotSent:
        return !entry.uid.isEmpty() && tag != u"Sent";
    case FMListState::Sent:
        return tag == u"Sent";
    case FMListState::None:
        return tag == u"None";
    case FMListState::Multi:
        return tag == u"Multi";
    }
    return false;
}

QStringView view(const std::u16string &text)
{
    return {text};
}

// yyyy-mm-dd hh:nn:ss
std::array<char16_t, 19> yearFirst(const std::array<char, 19> &general)
{
    constexpr std::array<std::size_t, 19> from {
        6, 7, 8, 9, 2, 3, 4, 2, 0, 1, 10, 11, 12, 13, 14, 15, 16, 17, 18};
    std::array<char16_t, 19> text {};
    std::ranges::transform(from, text.begin(),
        [&](std::size_t at) { return general[at] == '/' ? u'-' : static_cast<char16_t>(general[at]); });
    return text;
}

} // namespace

bool LogFilter::isEmpty() const
{
    return *this == LogFilter();
}

LogFilterMatcher::LogFilterMatcher(LogFilter filter, bool inMiles)
    : m_filter(std::move(filter))
    , m_inMiles(inMiles)
{
    for (const FilterTerm &term : m_filter.terms) {
        m_asked.push_back({term, QStringMatcher(term.text)});
    }
    // The whole row is folded only for entries whose fields are right.
    std::stable_partition(
        m_asked.begin(), m_asked.end(), [](const Asked &asked) { return asked.term.field.has_value(); });
    if (m_filter.year) {
        const auto first = fromCivil({*m_filter.year, 1, 1});
        const auto last = fromCivil({*m_filter.year, 12, 31});
        m_year = first && last ? MomentSpan {*first, {last->seconds + secondsPerDay}} : MomentSpan {};
    }
}

bool LogFilterMatcher::operator()(const LogEntry &entry)
{
    m_rowIsFolded = false;
    return hasChoices(entry) && std::ranges::all_of(m_asked, [&](const Asked &asked) {
        return holds(asked, entry) != asked.term.excludes;
    });
}

bool LogFilterMatcher::hasChoices(const LogEntry &entry) const
{
    return (!m_filter.mode || entry.prop == *m_filter.mode)
        && (!m_filter.country || entry.country == *m_filter.country)
        && (!m_filter.year || (entry.dateTime >= m_year.first && entry.dateTime < m_year.end))
        && (!m_filter.fmlist || isInState(entry, *m_filter.fmlist));
}

bool LogFilterMatcher::holds(const Asked &asked, const LogEntry &entry)
{
    const FilterTerm &term = asked.term;
    if (!term.field) {
        foldRow(entry);
        return asked.text.indexIn(view(m_row)) >= 0 || (term.number && numeric(entry.freq) == term.number);
    }
    const LogColumn &column = logField(*term.field);
    if (!column.text) {
        return asksMoment(term, entry.dateTime);
    }
    switch (term.test) {
    case FilterTest::IsEmpty:
        return shownText(entry, column).trimmed().isEmpty();
    case FilterTest::IsNumber:
    case FilterTest::Below:
    case FilterTest::Above: {
        const auto number = numberOf(*term.field, entry);
        return number
            && (term.test == FilterTest::Below       ? *number < *term.number
                    : term.test == FilterTest::Above ? *number > *term.number
                                                     : *number == *term.number);
    }
    default:
        m_cell.clear();
        appendFolded(m_cell, shownText(entry, column));
        return term.test == FilterTest::Begins ? view(m_cell).startsWith(term.text)
            : term.test == FilterTest::Is      ? view(m_cell) == term.text
                                               : asked.text.indexIn(view(m_cell)) >= 0;
    }
}

bool LogFilterMatcher::asksMoment(const FilterTerm &term, DateTime moment)
{
    switch (term.test) {
    case FilterTest::Below:
        return moment < term.span.first;
    case FilterTest::Above:
        return moment >= term.span.end;
    case FilterTest::InSpan:
        return moment >= term.span.first && moment < term.span.end;
    case FilterTest::Begins: {
        const std::array<char, 19> &general = m_moments.of(moment);
        const std::array<char16_t, 19> sortable = yearFirst(general);
        return QStringView(sortable).startsWith(term.text)
            || QLatin1StringView(general.begin(), general.end()).startsWith(term.text);
    }
    default:
        return false; // a moment is never empty
    }
}

std::optional<double> LogFilterMatcher::numberOf(LogField field, const LogEntry &entry) const
{
    const auto number = numeric(entry.*logField(field).text);
    return number && field == LogField::Dist && m_inMiles ? rounded(*number * kilometresPerMile, 1) : number;
}

void LogFilterMatcher::foldRow(const LogEntry &entry)
{
    if (m_rowIsFolded) {
        return;
    }
    m_rowIsFolded = true;
    const std::array<char, 19> &moment = m_moments.of(entry.dateTime);
    m_row.assign(moment.begin(), moment.end());
    for (const LogColumn &column : logFields()) {
        if (column.text) {
            m_row += cellEnd;
            appendFolded(m_row, shownText(entry, column));
        }
    }
}

} // namespace quillon
