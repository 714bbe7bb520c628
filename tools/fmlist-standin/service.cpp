#include "fmlist-standin/service.h"

#include "platform/datetime.h"
#include "platform/numbers.h"

#include <algorithm>

namespace quillon::standin {

namespace {

bool isHexadecimal(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isNumber(const QByteArray &text)
{
    return numeric(QString::fromLatin1(text)).has_value();
}

QByteArray lookup(const Request &request, const std::vector<Station> &stations)
{
    const Fields fields = formFields(request.query());
    const QByteArray freq = fieldValue(fields, "freq");
    const QByteArray pi = fieldValue(fields, "pi");
    const QByteArray ps = fieldValue(fields, "ps");
    if (freq.isEmpty()) {
        return "Error 10001\n";
    }
    const auto frequency = numeric(QString::fromLatin1(freq));
    if (!frequency) {
        return "Error 10002\n";
    }
    if (pi.isEmpty() && ps.isEmpty()) {
        return "Error 10006\n";
    }
    if (!pi.isEmpty() && pi.size() != 4) {
        return "Error 10003\n";
    }
    if (!std::ranges::all_of(pi, isHexadecimal)) {
        return "Error 10004\n";
    }
    const QByteArrayList lines = matchingLines(stations, *frequency, pi, ps);
    if (lines.isEmpty()) {
        return "Error 10005\n";
    }
    return lines.join('\n') + '\n';
}

bool isMoment(const QByteArray &text)
{
    constexpr qsizetype length = 19; // dd-mm-yyyy hh:nn:ss
    return text.size() == length && parseDateTime(QString::fromLatin1(text), {}).has_value();
}

// What is wrong with a log; empty when nothing is.
QByteArray complaint(const Request &request)
{
    if (request.method() != "POST") {
        return "not a POST";
    }
    if (request.header("Content-Type") != "application/x-www-form-urlencoded") {
        return "not a form";
    }
    const Fields fields = formFields(request.body);
    const auto value = [&fields](const QByteArray &name) { return fieldValue(fields, name); };
    if (value("omid").isEmpty()) {
        if (value("email").isEmpty()) {
            return "omid or email missing";
        }
        if (!isNumber(value("latitude")) || !isNumber(value("longitude"))) {
            return "position missing";
        }
    }
    if (!isNumber(value("freq"))) {
        return "freq missing";
    }
    const QByteArray pi = value("pi");
    if (pi.size() != 4 || !std::ranges::all_of(pi, isHexadecimal)) {
        return "pi missing";
    }
    if (value("uid").isEmpty()) {
        return "uid missing";
    }
    return isMoment(value("dateTime")) ? "" : "dateTime missing";
}

QByteArray takeLog(const Request &request)
{
    const QByteArray wrong = complaint(request);
    if (!wrong.isEmpty()) {
        return "Error 20001 " + wrong;
    }
    return "OK log of transmitter " + fieldValue(formFields(request.body), "uid") + " stored";
}

QByteArray mapPage(const Request &request)
{
    const Fields fields = formFields(request.query());
    const QByteArray day = QString::fromLatin1(fieldValue(fields, "datum")).toHtmlEscaped().toLatin1();
    return "<!DOCTYPE html><title>Propagation map</title><p>Logs of " + day + "</p>\n";
}

} // namespace

Answer serviceAnswer(const Request &request, const std::vector<Station> &stations)
{
    Answer answer;
    const QByteArray path = request.path();
    if (path == "/rdslookup.php") {
        answer.body = lookup(request, stations);
    } else if (path == "/logpost1.php") {
        answer.body = takeLog(request);
    } else if (path == "/fm_logmap.php") {
        answer.contentType = "text/html; charset=windows-1252";
        answer.body = mapPage(request);
    } else {
        answer.status = "404 Not Found";
        answer.body = "There is no " + path + '\n';
    }
    return answer;
}

QByteArray wireBytes(const Answer &answer)
{
    return "HTTP/1.1 " + answer.status + "\r\nContent-Type: " + answer.contentType + "\r\nContent-Length: "
        + QByteArray::number(answer.body.size()) + "\r\nConnection: close\r\n\r\n" + answer.body;
}

} // namespace quillon::standin
