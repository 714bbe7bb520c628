#include "platform/numbers.h"

#include "platform/runtimeerror.h"

#include <QLocale>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

qsizetype digitsAt(QStringView text, qsizetype at)
{
    qsizetype end = at;
    while (end < text.size() && isDigit(text[end])) {
        ++end;
    }
    return end - at;
}

// True for [sign] digits [separator digits] [e [sign] digits], with a digit on one side of the separator.
bool looksNumeric(QStringView text)
{
    qsizetype at = text.startsWith(u'-') || text.startsWith(u'+') ? 1 : 0;
    const qsizetype whole = digitsAt(text, at);
    at += whole;
    qsizetype fraction = 0;
    if (at < text.size() && (text[at] == u'.' || text[at] == u',')) {
        fraction = digitsAt(text, at + 1);
        at += 1 + fraction;
    }
    if (whole + fraction == 0) {
        return false;
    }
    if (at < text.size() && (text[at] == u'e' || text[at] == u'E')) {
        ++at;
        at += at < text.size() && (text[at] == u'-' || text[at] == u'+') ? 1 : 0;
        const qsizetype exponent = digitsAt(text, at);
        at += exponent;
        return exponent > 0 && at == text.size();
    }
    return at == text.size();
}

QString plain(double value, int significant)
{
    if (!std::isfinite(value)) {
        return u"0"_s;
    }
    // Through the significant digits first, so that no binary noise shows.
    std::array<char, 400> buffer {};
    const auto scientific = std::to_chars(
        buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific, significant - 1);
    double clean = 0;
    std::from_chars(buffer.data(), scientific.ptr, clean);
    const auto fixed =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), clean, std::chars_format::fixed);
    const QString text = QString::fromLatin1(buffer.data(), fixed.ptr - buffer.data());
    return text == u"-0" ? u"0"_s : text;
}

} // namespace

NumberFormat NumberFormat::fromEnvironment()
{
    for (const char *name : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
        const QString value = qEnvironmentVariable(name);
        if (!value.isEmpty()) {
            // The log knows no other sign than these two.
            return {QLocale(value).decimalPoint() == u"," ? u',' : u'.'};
        }
    }
    return {};
}

std::optional<double> numeric(QStringView text)
{
    const QStringView trimmed = text.trimmed();
    if (!looksNumeric(trimmed)) {
        return std::nullopt;
    }
    QByteArray ascii = trimmed.toLatin1();
    ascii.replace(',', '.');
    const char *begin = ascii.constData() + (ascii.startsWith('+') ? 1 : 0);
    double value = 0;
    const auto read = std::from_chars(begin, ascii.constData() + ascii.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
        return std::nullopt;
    }
    return value;
}

bool DecimalCommaLocale(NumberFormat format)
{
    return localText(3.6F, format).contains(u',');
}

QString NormalizeDecimal(const QString &text, bool decimalComma)
{
    QString normal = text;
    normal.replace(decimalComma ? u'.' : u',', decimalComma ? u',' : u'.');
    return numeric(normal) ? normal : u"-1"_s;
}

double rounded(double value, int places)
{
    const double scale = std::pow(10.0, places);
    const double scaled = std::nearbyint(value * scale);
    return std::isfinite(scaled) ? scaled / scale : value;
}

QString plainText(double value)
{
    return plain(value, std::numeric_limits<double>::digits10);
}

QString plainText(float value)
{
    return plain(static_cast<double>(value), 7);
}

QString localText(double value, NumberFormat format)
{
    return plainText(value).replace(u'.', format.decimal);
}

QString localText(float value, NumberFormat format)
{
    return plainText(value).replace(u'.', format.decimal);
}

qint16 toInt16(QStringView text, const QString &doing)
{
    const auto value = numeric(text);
    if (!value) {
        throw RuntimeError(ErrorName::TypeMismatch, doing + u": \""_s + text + u"\" is not a number"_s);
    }
    const double whole = std::nearbyint(*value);
    if (whole < std::numeric_limits<qint16>::min() || whole > std::numeric_limits<qint16>::max()) {
        throw RuntimeError(ErrorName::Overflow, doing + u": "_s + text + u" is too large a number"_s);
    }
    return static_cast<qint16>(whole);
}

} // namespace quillon
