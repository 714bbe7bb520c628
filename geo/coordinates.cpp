#include "geo/coordinates.h"

#include "platform/numbers.h"
#include "platform/runtimeerror.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString withPoint(QString text)
{
    return text.replace(u',', u'.');
}

bool holdsHemisphere(QStringView text)
{
    return text.contains(u'N') || text.contains(u'S') || text.contains(u'E') || text.contains(u'W');
}

// The number at the start of a text, 0 when there is none. Nothing for one that a double cannot hold.
std::optional<double> leadingNumber(QStringView text)
{
    const QByteArray ascii = text.trimmed().toLatin1();
    const char *begin = ascii.constData();
    const char *end = begin + ascii.size();
    const bool negative = ascii.startsWith('-');
    if (negative || ascii.startsWith('+')) {
        ++begin;
    }
    // from_chars also reads a second sign, "inf" and "nan".
    if (begin == end || !((*begin >= '0' && *begin <= '9') || *begin == '.')) {
        return 0.0;
    }
    double value = 0;
    if (std::from_chars(begin, end, value).ec == std::errc::result_out_of_range) {
        return std::nullopt;
    }
    return negative ? -value : value;
}

std::optional<float> toSingle(double value)
{
    if (!(std::abs(value) <= std::numeric_limits<float>::max())) {
        return std::nullopt;
    }
    return static_cast<float>(value);
}

std::optional<float> readDegreesAndMinutes(QStringView text, QChar negativeHemisphere)
{
    const qsizetype point = text.indexOf(u'.');
    if (point < 0 || point + 1 == text.size()) {
        return std::nullopt;
    }
    const auto degrees = numeric(text.first(point));
    const auto minutes = leadingNumber(text.sliced(point + 1).chopped(1));
    if (!degrees || !minutes) {
        return std::nullopt;
    }
    const double sum = *degrees + *minutes / 60;
    return toSingle(text.back() == negativeHemisphere ? -sum : sum);
}

QString placeholder(bool Lat, bool dotted)
{
    if (dotted) {
        return Lat ? u"00.00.00N"_s : u"000.00.00W"_s;
    }
    return Lat ? u"0000.00N"_s : u"00000.00W"_s;
}

QString hemisphere(bool Lat, bool positive)
{
    if (Lat) {
        return positive ? u"N"_s : u"S"_s;
    }
    return positive ? u"E"_s : u"W"_s;
}

qint32 toWhole32(double whole, const QString &doing)
{
    if (!(whole >= std::numeric_limits<qint32>::min() && whole <= std::numeric_limits<qint32>::max())) {
        throw RuntimeError(ErrorName::Overflow,
            doing + u": "_s + (std::isfinite(whole) ? plainText(whole) : u"the number"_s)
                + u" does not fit into 32 bits"_s);
    }
    return static_cast<qint32>(whole);
}

} // namespace

float convertLatORLontoDecimal(const QString &text)
{
    const QString s = withPoint(text);
    if (!holdsHemisphere(s)) {
        return -1;
    }
    const bool latitude = s.contains(u'S') || s.contains(u'N');
    return readDegreesAndMinutes(s, latitude ? u'S' : u'W').value_or(0);
}

double convertRXLatORLonToDecimal(const QString &fromINLatORLon, bool Lat)
{
    const QString s = withPoint(fromINLatORLon);
    const qsizetype minutesAt = s.indexOf(u'.') - 2;
    if (minutesAt < 0) {
        return holdsHemisphere(s) ? 0 : -1;
    }
    const QString dotted = s.first(minutesAt) + u'.' + s.mid(minutesAt, Lat ? 6 : 7);
    return static_cast<double>(convertLatORLontoDecimal(dotted));
}

QString convertDecimaltoLatORLon(double value, bool Lat, bool dotted)
{
    if (!std::isfinite(value)) {
        return placeholder(Lat, dotted);
    }
    QString t = plainText(rounded(std::abs(value), 7));
    if (!t.contains(u'.')) {
        t += ".0000"_L1;
    }
    const qsizetype point = t.indexOf(u'.');
    QString degrees = t.first(point);
    if (!Lat) {
        degrees = degrees.rightJustified(3, u'0');
    }
    if (dotted) {
        degrees += u'.';
    }
    const QString decimals = u"0."_s + QStringView(t).sliced(point + 1);
    const double fraction = numeric(decimals).value_or(0);
    // A thousandth of the minutes, as "0.0" mm hh: below 0.06, so the places of its digits are fixed.
    const QString m = plainText(rounded(fraction / 1000 * 60, 12)) + u"000000"_s;
    return degrees + QStringView(m).sliced(3, 2) + u'.' + QStringView(m).sliced(5, 2)
        + hemisphere(Lat, value >= 0);
}

void convertMinutestoLatORLon(float &minutes, QString &result, bool longitude)
{
    const bool positive = minutes >= 0;
    const float size = std::abs(minutes);
    const qint32 degrees =
        toWhole32(std::nearbyint(static_cast<double>(size)), u"Converting minutes of arc to degrees"_s) / 60;
    minutes = static_cast<float>(static_cast<double>(size) - static_cast<double>(degrees) * 60);

    const double shown = rounded(static_cast<double>(minutes), 2);
    const QString number = QString::number(std::abs(shown), 'f', 2).rightJustified(5, u'0');
    result = QString::number(degrees).rightJustified(longitude ? 3 : 2, u'0')
        + (shown < 0 ? u"-"_s : QString()) + number + hemisphere(!longitude, positive);
}

qint32 convertLatORLontoXY(const QString &text, float scale, float first, float second, bool Lat)
{
    QString s = withPoint(text);
    if (!holdsHemisphere(s)) {
        return -1;
    }
    s.insert(std::min<qsizetype>(s.size(), Lat ? 2 : 3), u'.');
    const float d = convertLatORLontoDecimal(s);
    const bool inRange = Lat ? second <= d && d <= first : first <= d && d <= second;
    if (!inRange) {
        return -1;
    }
    const double pixel = std::nearbyint(rounded(static_cast<double>((first - d) / scale), 5));
    if (!(std::abs(pixel) <= std::numeric_limits<qint32>::max())) {
        return -1;
    }
    return static_cast<qint32>(pixel);
}

double ddfMod(double a, double b)
{
    const QString doing = u"Taking the remainder of a division"_s;
    if (b == 0) {
        throw RuntimeError(ErrorName::DivisionByZero, doing);
    }
    const double q = a / b;
    if (!std::isfinite(q)) {
        throw RuntimeError(ErrorName::Overflow, doing + u": the quotient is too large"_s);
    }
    double r = q - std::nearbyint(q);
    if (r < 0) {
        r += 0.1;
    }
    return r * b;
}

double fMod(double a, double b)
{
    const QString doing = u"Taking the remainder of a division of whole numbers"_s;
    const qint64 dividend = toWhole32(std::floor(a), doing);
    const qint64 divisor = toWhole32(std::nearbyint(b), doing);
    if (divisor == 0) {
        throw RuntimeError(ErrorName::DivisionByZero, doing);
    }
    return static_cast<double>(dividend % divisor);
}

} // namespace quillon
