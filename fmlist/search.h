#pragma once

#include "platform/codepage.h"
#include "platform/numbers.h"
#include "platform/runtimeerror.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace quillon {

/// What a search of FMList asks for, as the entry form holds it.
struct SearchRequest
{
    QString frequency; ///< MHz, as typed
    QString pi;
    QString ps;
};

/// One transmitter that FMList knows. Numbers are texts, "-1" for what is no number.
struct SearchResult
{
    QString frequency; ///< MHz, one decimal
    QString pi;
    QString ps;
    QString country;
    QString transmitter;
    QString power; ///< kW, one decimal
    QString latitude; ///< decimal degrees, four decimals
    QString longitude; ///< decimal degrees, four decimals
    QString uid; ///< identifier in FMList

    bool operator==(const SearchResult &) const = default;
};

/// What came back from a search.
struct SearchAnswer
{
    QList<SearchResult> results;
    int matches = 0; ///< number of line feeds in the answer, 0 for an error answer
    QString status; ///< for the status line
    std::optional<RuntimeError> failure; ///< of the line at which the reading stopped, after `results`
};

/// The address of the search below `fmlistUrl`. Nothing when there is nothing to ask for: no frequency, or
/// neither PI nor PS. The PI goes out trimmed in upper case, the PS with "_" for blanks and URLEncode; of the
/// others only what no address can hold is escaped.
[[nodiscard]] std::optional<QByteArray> searchUrl(
    const QString &fmlistUrl, const SearchRequest &request, const CodePage &codePage);

/// Reads an answer: one of the errors "Error 10001" to "Error 10006", or lines that each end with LF, of at
/// least nine fields separated by ";" (frequency, PI, PS, country, location, kW, latitude, longitude,
/// identifier); character references of three digits are stripped. It stops with "Subscript out of range" at
/// a line with fewer fields and with "Overflow" at a frequency that no single holds, and tells the line's
/// number and text.
[[nodiscard]] SearchAnswer readSearchAnswer(const QString &answer, NumberFormat format);

/// The nine values separated by tabs, as a list shows them.
[[nodiscard]] QString resultRow(const SearchResult &result);

/// A result as it is taken over: without any "&#", its numbers with "." as decimal separator. A tab in a
/// value begins the next value, as it does in the row.
[[nodiscard]] SearchResult chosenResult(const SearchResult &result);

/// The index of the first result with exactly this PI (trimmed, in upper case); the last one when none has
/// it, -1 when there are no results.
[[nodiscard]] qsizetype highlightedResult(const QList<SearchResult> &results, const QString &pi);

} // namespace quillon
