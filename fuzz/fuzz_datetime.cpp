// A date-time text of any characters, and a pattern: what is read has one text, which is read as the same.

#include "require.h"

#include "platform/codepage.h"
#include "platform/datetime.h"

#include <QLocale>

#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

void check(const QString &text, const MonthNames &months)
{
    const auto read = parseDateTime(text, months);
    if (!read) {
        return;
    }
    require(parseDateTime(generalText(*read), months) == read);
    require(parseDateTime(formatted(*read, u"yyyy-mmm-dd hh:nn:ss", months), months) == read);
    require(parseDateTime(formatted(*read, u"d.m.yyyy hh:nn:ss", months), months) == read);
    require(fromCivil(civil(*read)) == read);
    require(parseDateTime(QString(u' ' + text + u' '), months) == read);
    require(parseDateTime(text.toLower(), months) == read);
    // No text without a digit and no text of a time alone is a date-time.
    require(text.contains(u'/') || text.contains(u'-') || text.contains(u'.'));
    Q_UNUSED(formatted(*read, text, months))
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const MonthNames german = MonthNames::of(QLocale(u"de_DE"_s));
    static const MonthNames english = MonthNames::of(QLocale(u"en_US"_s));
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    check(CodePage().decode(bytes), german);
    check(QString::fromUtf8(bytes), english);
    return 0;
}
