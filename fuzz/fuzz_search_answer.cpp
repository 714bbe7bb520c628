// Any bytes as the answer of a search: either every line of it becomes a row whose nine values can be taken
// into the form, or the line that cannot is told with its number.

#include "fmlist/search.h"
#include "platform/runtimeerror.h"

#include <cstdint>
#include <cstdlib>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

void require(bool good)
{
    if (!good) {
        std::abort();
    }
}

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
    require(line == read.rows.size() + 1 && line <= lines && error.doing().size() < 400);
    require(read.matches == 0 && read.status.isEmpty());
}

void checkError(const QString &answer, const SearchAnswer &read)
{
    require(read.rows.isEmpty() && read.matches == 0);
    const QString code = answer.trimmed();
    const bool isKnown =
        code.size() == 11 && code.startsWith(u"Error 1000"_s) && code.back() >= u'1' && code.back() <= u'6';
    require(isKnown == read.status.startsWith(u"FMList Search: "_s));
    require(isKnown || read.status.isEmpty());
}

// A tab in the answer shifts the values of its row; every other row has nine.
void checkRow(const QString &row, NumberFormat format)
{
    const QStringList fields = row.split(u'\t');
    require(fields.size() == 9 && !row.contains(u'\n'));
    const QChar other = format.decimal == u'.' ? u',' : u'.';
    for (const qsizetype field : {0, 5, 6, 7}) {
        require(numeric(fields[field]).has_value() && !fields[field].contains(other));
    }
    require(!fields[4].contains(u',') && fields[4].trimmed() == fields[4]);
    SearchResult expected {
        fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], fields[6], fields[7], fields[8]};
    require(resultRow(expected) == row);
    for (QString *text :
        {&expected.pi, &expected.ps, &expected.country, &expected.transmitter, &expected.uid}) {
        text->remove(u"&#"_s);
    }
    expected.latitude.replace(u',', u'.');
    expected.longitude.replace(u',', u'.');
    const SearchResult chosen = chosenResult(row);
    require(row.contains(u"&\t#"_s) || chosen == expected);
}

void checkHighlight(const QStringList &rows)
{
    require(highlightedRow(rows, u"no such PI"_s) == rows.size() - 1);
    for (qsizetype row = 0; row < rows.size(); ++row) {
        const QString pi = rows[row].section(u'\t', 1, 1);
        const qsizetype highlighted = highlightedRow(rows, pi);
        require(highlighted >= 0 && highlighted < rows.size());
        if (pi == pi.trimmed().toUpper()) {
            require(highlighted <= row && rows[highlighted].section(u'\t', 1, 1) == pi);
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
        for (const QString &row : read.rows) {
            checkRow(row, format);
        }
    }
    checkHighlight(read.rows);
    if (read.failure) {
        checkFailure(read, lines);
    } else {
        require(read.matches == lines && read.rows.size() == lines);
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
