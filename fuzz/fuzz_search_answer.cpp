// Any bytes as the answer of a search: either every line of it becomes a row whose nine values can be taken
// into the form, or the line that cannot is told with its number.

#include "require.h"

#include "fmlist/search.h"
#include "platform/runtimeerror.h"

#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// "Reading the answer of FMList, line 12: ...": the number.
qsizetype lineOf(const QString &doing)
{
    const QString start = u"Reading the answer of FMList, line "_s;
    require(doing.startsWith(start));
    return doing.sliced(start.size()).section(u':', 0, 0).toLongLong();
}

void checkFailure(const SearchAnswer &read, qsizetype lines)
{
    const RuntimeError &error = *read.failure;
    require(error.name() == ErrorName::SubscriptOutOfRange || error.name() == ErrorName::Overflow);
    const qsizetype line = lineOf(error.doing());
    require(line == read.results.size() + 1 && line <= lines && error.doing().size() < 400);
    require(read.matches == 0 && read.status.isEmpty());
}

void checkError(const QString &answer, const SearchAnswer &read)
{
    require(read.results.isEmpty() && read.matches == 0);
    const QString code = answer.trimmed();
    const bool isKnown =
        code.size() == 11 && code.startsWith(u"Error 1000"_s) && code.back() >= u'1' && code.back() <= u'6';
    require(isKnown == read.status.startsWith(u"FMList Search: "_s));
    require(isKnown || read.status.isEmpty());
}

// A tab in the answer shifts the values of its row; every other row has nine.
void checkResult(const SearchResult &result, NumberFormat format)
{
    const QString row = resultRow(result);
    const QStringList fields = row.split(u'\t');
    require(fields.size() == 9 && !row.contains(u'\n'));
    const QChar other = format.decimal == u'.' ? u',' : u'.';
    for (const qsizetype field : {0, 5, 6, 7}) {
        require(numeric(fields[field]).has_value() && !fields[field].contains(other));
    }
    require(!fields[4].contains(u',') && fields[4].trimmed() == fields[4]);
    SearchResult expected = result;
    for (QString *text :
        {&expected.pi, &expected.ps, &expected.country, &expected.transmitter, &expected.uid}) {
        text->remove(u"&#"_s);
    }
    for (QString *text : {&expected.frequency, &expected.power, &expected.latitude, &expected.longitude}) {
        text->replace(u',', u'.');
    }
    require(chosenResult(result) == expected);
}

void checkHighlight(const QList<SearchResult> &results)
{
    require(highlightedResult(results, u"no such PI"_s) == results.size() - 1);
    for (qsizetype place = 0; place < results.size(); ++place) {
        const QString pi = results[place].pi.section(u'\t', 0, 0);
        const qsizetype highlighted = highlightedResult(results, pi);
        require(highlighted >= 0 && highlighted < results.size());
        if (pi == pi.trimmed().toUpper()) {
            require(highlighted <= place && results[highlighted].pi.section(u'\t', 0, 0) == pi);
        }
    }
}

void check(const QString &answer, NumberFormat format)
{
    const auto lines = static_cast<qsizetype>(answer.count(u'\n'));
    const SearchAnswer read = readSearchAnswer(answer, format);
    if (answer.startsWith(u"Error "_s)) {
        checkError(answer, read);
        return;
    }
    if (!answer.contains(u'\t')) {
        for (const SearchResult &result : read.results) {
            checkResult(result, format);
        }
    }
    checkHighlight(read.results);
    if (read.failure) {
        checkFailure(read, lines);
    } else {
        require(read.matches == lines && read.results.size() == lines);
        require(read.status == u"FMList Search: %1 matches"_s.arg(lines));
    }
}

} // namespace

// The first byte says how the locale writes numbers.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    const NumberFormat format {bytes.startsWith(',') ? u',' : u'.'};
    const QByteArrayView answer = bytes.sliced(qMin(qsizetype(1), bytes.size()));
    check(CodePage().decode(answer), format);
    check(QString::fromUtf8(answer), format);
    return 0;
}
