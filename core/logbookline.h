#pragma once

#include <QByteArrayView>
#include <QStringView>

#include <algorithm>

namespace quillon {

/// Into how many pieces "|" cuts a line of the two layouts of a logbook file.
inline constexpr qsizetype olderLogbookPieces = 11;
inline constexpr qsizetype currentLogbookPieces = 13;

/// Into how many pieces "|" cuts a line. `View` is QByteArrayView or QStringView, here and below.
template<typename View>
[[nodiscard]] qsizetype logbookPieces(View line)
{
    return std::ranges::count(line, typename View::value_type(u'|')) + 1;
}

/// A line of a logbook file.
template<typename View>
struct LogbookLine
{
    View text; ///< without its line end
    qsizetype length = 0; ///< with the line end
    bool endsInLineFeedOnly = false;
    qsizetype lineFeeds = 0; ///< in its length
};

/// What stands before the first line feed.
template<typename View>
[[nodiscard]] LogbookLine<View> logbookPhysicalLine(View rest)
{
    using Character = typename View::value_type;
    const qsizetype end = rest.indexOf(Character(u'\n'));
    if (end < 0) {
        return {rest, rest.size(), false, 0};
    }
    const bool carriageReturn = end > 0 && rest[end - 1] == Character(u'\r');
    return {rest.first(carriageReturn ? end - 1 : end), end + 1, !carriageReturn, 1};
}

/// One line of `pieces` pieces. A line feed inside a field is told from one that ends a line by this: the
/// line it would end is not whole, and together with what follows up to a CR LF it is.
template<typename View>
[[nodiscard]] LogbookLine<View> logbookLine(View rest, qsizetype pieces)
{
    const LogbookLine<View> first = logbookPhysicalLine(rest);
    if (!first.endsInLineFeedOnly) {
        return first;
    }
    LogbookLine<View> line = first;
    qsizetype found = logbookPieces(first.text);
    while (line.endsInLineFeedOnly && found < pieces && line.length < rest.size()) {
        const LogbookLine<View> next = logbookPhysicalLine(rest.sliced(line.length));
        found += logbookPieces(next.text) - 1;
        line = {rest.first(line.length + next.text.size()), line.length + next.length,
            next.endsInLineFeedOnly, line.lineFeeds + next.lineFeeds};
    }
    const bool endsInCrLf = line.length == line.text.size() + 2;
    return found == pieces && endsInCrLf ? line : first;
}

} // namespace quillon
