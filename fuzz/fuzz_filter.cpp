// Any text in the filter's box: what is read says the same when it is read again, a problem is short and
// comes without terms, and for one term "-" shows just the entries that the term hides.

#include "require.h"

#include "core/filterreader.h"
#include "core/foldedtext.h"
#include "core/logfilter.h"
#include "platform/codepage.h"

#include <QLocale>

#include <array>
#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

LogFilter filterOf(const FilterReading &reading)
{
    LogFilter filter;
    filter.terms = reading.terms;
    return filter;
}

std::array<LogEntry, 3> entriesWith(const QString &text)
{
    LogEntry full {u"D3C3"_s, *fromCivil({2025, 6, 12, 10, 30, 15}), u"Es"_s, u"87,60"_s, u"Málaga"_s, u"E"_s,
        u"a\r\nb"_s, u"RNE_1"_s, u"0.5"_s, u"1500.1"_s, u"fml=sent#"_s, u"4711"_s};
    LogEntry odd = full;
    for (const LogColumn &column : logFields()) {
        if (column.text) {
            odd.*column.text = text;
        }
    }
    return {LogEntry(), full, odd};
}

void check(const QString &text)
{
    static const MonthNames months = MonthNames::of(QLocale(u"de_DE"_s));
    const QString once = folded(text);
    require(folded(once) == once);
    const FilterReading reading = readFilter(text, months);
    require(reading.problem.isEmpty() || (reading.terms.empty() && reading.problem.size() < 200));
    require(readFilter(QString(u' ' + text), months).terms == reading.terms);
    const LogFilter filter = filterOf(reading);
    const FilterReading inverse = readFilter(QString(u'-' + text), months);
    const bool isOneTerm = reading.terms.size() == 1 && inverse.terms.size() == 1
        && !reading.terms[0].excludes && inverse.terms[0].excludes
        && inverse.terms[0].field == reading.terms[0].field && inverse.terms[0].text == reading.terms[0].text;
    for (const bool inMiles : {false, true}) {
        LogFilterMatcher shows(filter, inMiles);
        LogFilterMatcher hides(filterOf(inverse), inMiles);
        for (const LogEntry &entry : entriesWith(text)) {
            const bool shown = shows(entry);
            require(shown == shows(entry));
            require(!filter.isEmpty() || shown);
            require(!isOneTerm || hides(entry) != shown);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    check(CodePage().decode(bytes));
    check(QString::fromUtf8(bytes));
    return 0;
}
