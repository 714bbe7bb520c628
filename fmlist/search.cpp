#include "fmlist/search.h"

#include "net/textencoding.h"
#include "net/webaddress.h"
#include "platform/runtimeerror.h"

#include <QList>

#include <array>
#include <cmath>
#include <limits>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype fieldCount = 9;

struct ServiceErrorText
{
    QStringView answer;
    QStringView status;
};

constexpr std::array serviceErrors {
    ServiceErrorText {u"Error 10001", u"FMList Search: Frequency Not provided"},
    ServiceErrorText {u"Error 10002", u"FMList Search: Frequency Not Numeric"},
    ServiceErrorText {u"Error 10003", u"FMList Search: Incorrect PI code length"},
    ServiceErrorText {u"Error 10004", u"FMList Search: Incorrect PI code values"},
    ServiceErrorText {u"Error 10005", u"FMList Search: No matches"},
    ServiceErrorText {u"Error 10006", u"FMList Search: PI and PS parameter missing"},
};

QString errorStatus(QStringView answer)
{
    for (const ServiceErrorText &error : serviceErrors) {
        if (answer.trimmed() == error.answer) {
            return error.status.toString();
        }
    }
    return {};
}

QString wanted(const QString &pi)
{
    return pi.trimmed().toUpper();
}

// A line of junk is as long as the answer: enough of it to know it again.
QString quoted(QStringView line)
{
    constexpr qsizetype shown = 200;
    const QStringView end = line.size() > shown ? u"...\"" : u"\"";
    return u'"' + line.left(shown) + end;
}

[[noreturn]] void refuseLine(ErrorName name, QStringView line, qsizetype lineNumber, const QString &reason)
{
    const QString place = u"Reading the answer of FMList, line "_s + QString::number(lineNumber);
    throw RuntimeError(name, place + u": "_s + reason + u": "_s + quoted(line));
}

double number(QStringView field, NumberFormat format)
{
    return numeric(NormalizeDecimal(field.toString(), DecimalCommaLocale(format))).value_or(-1);
}

QString decimalText(QStringView field, int places, NumberFormat format)
{
    return localText(rounded(number(field, format), places), format);
}

// The part between the first comma and the next.
QString transmitterName(QStringView location)
{
    const qsizetype comma = location.indexOf(u',');
    if (comma < 0) {
        return {};
    }
    const QStringView rest = location.sliced(comma + 1);
    const qsizetype next = rest.indexOf(u',');
    return (next < 0 ? rest : rest.first(next)).trimmed().toString();
}

SearchResult readLine(QStringView line, qsizetype lineNumber, NumberFormat format)
{
    const QList<QStringView> fields = line.split(u';');
    if (fields.size() < fieldCount) {
        refuseLine(ErrorName::SubscriptOutOfRange, line, lineNumber,
            u"the line has "_s + QString::number(fields.size()) + u" pieces instead of 9"_s);
    }
    const double frequency = number(fields[0], format);
    if (std::abs(frequency) > static_cast<double>(std::numeric_limits<float>::max())) {
        refuseLine(ErrorName::Overflow, line, lineNumber, u"the frequency is too large a number"_s);
    }
    const auto single = static_cast<float>(frequency);
    return {.frequency = localText(static_cast<float>(rounded(static_cast<double>(single), 1)), format),
        .pi = fields[1].toString(),
        .ps = fields[2].toString(),
        .country = fields[3].toString(),
        .transmitter = transmitterName(fields[4]),
        .power = decimalText(fields[5], 1, format),
        .latitude = decimalText(fields[6], 4, format),
        .longitude = decimalText(fields[7], 4, format),
        .uid = fields[8].toString()};
}

// The log, its searches and the service know one spelling of a number, whatever the locale.
QString storedNumber(QString text)
{
    return text.replace(u',', u'.');
}

} // namespace

std::optional<QByteArray> searchUrl(
    const QString &fmlistUrl, const SearchRequest &request, const CodePage &codePage)
{
    if (request.frequency.isEmpty() || (request.pi.isEmpty() && request.ps.isEmpty())) {
        return std::nullopt;
    }
    QString url = fmlistUrl + u"/rdslookup.php?freq="_s + request.frequency;
    const QString pi = wanted(request.pi);
    if (!pi.isEmpty()) {
        url += u"&pi="_s + pi;
    }
    if (!request.ps.isEmpty()) {
        url += u"&ps="_s + URLEncode(QString(request.ps).replace(u' ', u'_'), codePage);
    }
    return sendable(url, codePage);
}

SearchAnswer readSearchAnswer(const QString &answer, NumberFormat format)
{
    if (answer.startsWith(u"Error "_s)) {
        return {.results = {}, .matches = 0, .status = errorStatus(answer), .failure = {}};
    }
    const QString stripped = StripCharRefs(answer);
    QList<SearchResult> results;
    qsizetype begin = 0;
    for (qsizetype end = stripped.indexOf(u'\n'); end >= 0; end = stripped.indexOf(u'\n', begin)) {
        const QStringView line = QStringView(stripped).sliced(begin, end - begin);
        try {
            results += readLine(line, results.size() + 1, format);
        } catch (const RuntimeError &error) {
            return {.results = results, .matches = 0, .status = {}, .failure = error};
        }
        begin = end + 1;
    }
    const auto matches = static_cast<int>(results.size());
    return {.results = results,
        .matches = matches,
        .status = u"FMList Search: "_s + QString::number(matches) + u" matches"_s,
        .failure = {}};
}

QString resultRow(const SearchResult &result)
{
    return QStringList {result.frequency, result.pi, result.ps, result.country, result.transmitter,
        result.power, result.latitude, result.longitude, result.uid}
        .join(u'\t');
}

SearchResult chosenResult(const SearchResult &result)
{
    const QStringList fields = resultRow(result).remove(u"&#"_s).split(u'\t');
    return {.frequency = storedNumber(fields[0]),
        .pi = fields[1],
        .ps = fields[2],
        .country = fields[3],
        .transmitter = fields[4],
        .power = storedNumber(fields[5]),
        .latitude = storedNumber(fields[6]),
        .longitude = storedNumber(fields[7]),
        .uid = fields[8]};
}

qsizetype highlightedResult(const QList<SearchResult> &results, const QString &pi)
{
    const QString searched = wanted(pi);
    for (qsizetype place = 0; place < results.size(); ++place) {
        if (results[place].pi.section(u'\t', 0, 0) == searched) {
            return place;
        }
    }
    return results.size() - 1;
}

} // namespace quillon
