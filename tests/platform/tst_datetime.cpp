#include "platform/datetime.h"
#include "platform/runtimeerror.h"

#include <QLocale>
#include <QTest>

#include <chrono>
#include <ctime>
#include <random>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

MonthNames english()
{
    return MonthNames::of(QLocale(u"en_US"_s));
}

MonthNames german()
{
    return MonthNames::of(QLocale(u"de_DE"_s));
}

// Sets TZ for the life of the object.
class Zone
{
public:
    explicit Zone(const char *rule)
        : m_before(qgetenv("TZ"))
    {
        qputenv("TZ", rule);
        tzset();
    }
    Zone(const Zone &) = delete;
    Zone &operator=(const Zone &) = delete;
    ~Zone()
    {
        qputenv("TZ", m_before);
        tzset();
    }

private:
    QByteArray m_before;
};

qint64 clockSeconds()
{
    using namespace std::chrono;
    return floor<seconds>(system_clock::now()).time_since_epoch().count();
}

} // namespace

class TestDateTime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryForm_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("moment");
        const auto row = [](const char *name, const QString &text, const QString &moment) {
            QTest::newRow(name) << text << moment;
        };
        row("the form of the program", u"12/06/2010 18:22:05"_s, u"12/06/2010 18:22:05"_s);
        row("date alone", u"12/06/2010"_s, u"12/06/2010 00:00:00"_s);
        row("day first, never month first", u"05/07/2010"_s, u"05/07/2010 00:00:00"_s);
        row("dashes", u"12-06-2010 18:22"_s, u"12/06/2010 18:22:00"_s);
        row("points", u"12.06.2010 18:22"_s, u"12/06/2010 18:22:00"_s);
        row("one digit each", u"1/2/2010 3:04"_s, u"01/02/2010 03:04:00"_s);
        row("one digit everywhere", u"1/2/2010 3:4:5"_s, u"01/02/2010 03:04:05"_s);
        row("year first, dashes", u"2010-06-12 18:22:05"_s, u"12/06/2010 18:22:05"_s);
        row("year first, slashes", u"2010/6/2"_s, u"02/06/2010 00:00:00"_s);
        row("year first, points", u"2010.06.12 1:00"_s, u"12/06/2010 01:00:00"_s);
        row("month abbreviated", u"05-Jul-2010 21:34"_s, u"05/07/2010 21:34:00"_s);
        row("month in small letters", u"05-jul-2010"_s, u"05/07/2010 00:00:00"_s);
        row("month in capitals", u"05/JULY/2010"_s, u"05/07/2010 00:00:00"_s);
        row("month name, year first", u"2010-December-31"_s, u"31/12/2010 00:00:00"_s);
        row("month with full stop", u"05-Jul.-2010"_s, u"05/07/2010 00:00:00"_s);
        row("month between points", u"05.Jul.2010"_s, u"05/07/2010 00:00:00"_s);
        row("two digits, first of the century", u"1/1/00"_s, u"01/01/2000 00:00:00"_s);
        row("two digits, last of this century", u"31/12/29 23:59"_s, u"31/12/2029 23:59:00"_s);
        row("two digits, first of the last century", u"1/1/30"_s, u"01/01/1930 00:00:00"_s);
        row("two digits, last of the last century", u"31-12-99"_s, u"31/12/1999 00:00:00"_s);
        row("two digits are never a leading year", u"10-07-05"_s, u"10/07/2005 00:00:00"_s);
        row("leap day", u"29/02/2008"_s, u"29/02/2008 00:00:00"_s);
        row("leap day of a fourth century", u"29/02/2000"_s, u"29/02/2000 00:00:00"_s);
        row("midnight, 12-hour clock", u"1/2/2010 12:00 AM"_s, u"01/02/2010 00:00:00"_s);
        row("noon, 12-hour clock", u"1/2/2010 12:00 PM"_s, u"01/02/2010 12:00:00"_s);
        row("morning", u"1/2/2010 11:59:58 am"_s, u"01/02/2010 11:59:58"_s);
        row("evening, no blank", u"1/2/2010 9:05pm"_s, u"01/02/2010 21:05:00"_s);
        row("last second of a day", u"31/12/2010 23:59:59"_s, u"31/12/2010 23:59:59"_s);
        row("blanks around", u"  12/06/2010 18:22  "_s, u"12/06/2010 18:22:00"_s);
        row("several blanks between", u"12/06/2010   18:22"_s, u"12/06/2010 18:22:00"_s);
        row("first year", u"01/01/0100"_s, u"01/01/0100 00:00:00"_s);
        row("last year", u"9999-12-31 23:59:59"_s, u"31/12/9999 23:59:59"_s);
    }

    void readsEveryForm()
    {
        QFETCH(QString, text);
        QFETCH(QString, moment);
        const auto read = parseDateTime(text, english());
        QVERIFY(read.has_value());
        QCOMPARE(generalText(*read), moment);
        QCOMPARE(generalText(toDateTime(text, english(), u"Reading"_s)), moment);
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text : {"", " ", "abc", "18:22", "18:22:05", "12/06", "12/2010", "2010",
                 "06/2010 18:22", "06/13/2010", "2010-13-01", "2010-00-01", "00/01/2010", "32/01/2010",
                 "31/04/2010", "29/02/2010", "29/02/1900", "2010-02-30", "12/06/201", "12/06/20100",
                 "12/06/1", "012/06/2010", "12/006/2010", "12/06/0099", "0099-06-12", "12/06-2010",
                 "12-06/2010", "12.06/2010", "12 06 2010", "12 June 2010", "12062010", "20100612",
                 "Jul-05-2010", "July 5, 2010", "05-Jux-2010", "05--2010", "05-J-2010", "/06/2010", "12/06/",
                 "12/06/2010 ,18:22", "12/06/2010 18", "12/06/2010 18:", "12/06/2010 18:22:",
                 "12/06/2010 24:00", "12/06/2010 18:60", "12/06/2010 18:22:60", "12/06/2010 018:22",
                 "12/06/2010 18:022", "12/06/2010 18:22:005", "12/06/2010 13:00 PM", "12/06/2010 9:00 XM",
                 "12/06/2010 9:00 P", "12/06/2010 9:00 PM PM", "12/06/2010 PM", "12/06/201018:22",
                 "12/06/2010T18:22", "12/06/2010 18:22Z", "12/06/2010 18:22 +2", "12/06/2010 18.22",
                 "12/06/2010 18:22 x", "-12/06/2010", "12/-6/2010", "12//06/2010", "x12/06/2010"}) {
            QTest::newRow(text) << QString::fromLatin1(text);
        }
        QTest::newRow("digits of another script") << u"\u0661\u0662/06/2010"_s;
        QTest::newRow("zero character inside") << QString(u"12/06/2010"_s + QChar(u'\0') + u"18:22"_s);
        QTest::newRow("month name of another language") << u"12-Juin-2010"_s;
    }

    void refuses()
    {
        QFETCH(QString, text);
        QVERIFY(!parseDateTime(text, english()));
        try {
            Q_UNUSED(toDateTime(text, english(), u"The field Date"_s))
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::TypeMismatch);
            QCOMPARE(error.text(),
                u"Run-time error: Type mismatch\nThe field Date: \"%1\" is not a date and time"_s.arg(text));
        }
    }

    void readsEveryMonthName_data()
    {
        QTest::addColumn<bool>("isGerman");
        QTest::newRow("English") << false;
        QTest::newRow("German") << true;
    }

    void readsEveryMonthName()
    {
        QFETCH(bool, isGerman);
        const MonthNames names = isGerman ? german() : english();
        for (int month = 1; month <= 12; ++month) {
            const auto index = static_cast<std::size_t>(month - 1);
            const DateTime wanted = *fromCivil({2010, month, 5, 0, 0, 0});
            const QStringList words {names.abbreviated[index], names.full[index], names.full[index].toUpper(),
                english().abbreviated[index], english().full[index]};
            for (const QString &word : words) {
                const QString dayFirst = u"5-"_s + word + u"-2010"_s;
                const QString yearFirst = u"2010."_s + word + u".05"_s;
                QVERIFY2(parseDateTime(dayFirst, names) == wanted, qPrintable(dayFirst));
                QVERIFY2(parseDateTime(yearFirst, names) == wanted, qPrintable(yearFirst));
            }
        }
    }

    void readsLocalNamesOfTheLocaleOnly()
    {
        QCOMPARE(parseDateTime(u"5-Mär-2010", german()), fromCivil({2010, 3, 5, 0, 0, 0}));
        QCOMPARE(parseDateTime(u"5-dezember-2010", german()), fromCivil({2010, 12, 5, 0, 0, 0}));
        QVERIFY(!parseDateTime(u"5-Mär-2010", english()));
        QVERIFY(!parseDateTime(u"5-Dezember-2010", english()));
    }

    void doesNotTakeAnEmptyNameForAMonth()
    {
        QVERIFY(!parseDateTime(u"5--2010", MonthNames()));
        QCOMPARE(parseDateTime(u"5-Mar-2010", MonthNames()), fromCivil({2010, 3, 5, 0, 0, 0}));
    }

    void longJunkIsRefused()
    {
        for (const QString &piece :
            {u"9"_s, u"/"_s, u" "_s, u"Jul"_s, u"1/1/2010 "_s, u"12-"_s, u"\u0308"_s, u"a\u0308"_s}) {
            const QString junk = piece.repeated(10'000);
            QVERIFY(!parseDateTime(junk, german()));
            QVERIFY(!parseDateTime(QString(u"5-"_s + junk), german()));
            QVERIFY(!parseDateTime(QString(u"05/07/2010 "_s + junk + u'x'), german()));
        }
    }

    void everyMomentComesBackFromItsText()
    {
        std::mt19937_64 random(20100612); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same moments every time
        const qint64 first = fromCivil({100, 1, 1, 0, 0, 0})->seconds;
        const qint64 last = fromCivil({9999, 12, 31, 23, 59, 59})->seconds;
        std::uniform_int_distribution<qint64> any(first, last);
        for (int i = 0; i < 20'000; ++i) {
            const DateTime moment {any(random)};
            QCOMPARE(fromCivil(civil(moment)), std::optional(moment));
            QCOMPARE(parseDateTime(generalText(moment), MonthNames()), std::optional(moment));
            const QString isoText = formatted(moment, u"yyyy-mm-dd hh:nn:ss", MonthNames());
            QCOMPARE(parseDateTime(isoText, MonthNames()), std::optional(moment));
            const QString named = formatted(moment, u"dd.mmm.yyyy hh:nn:ss", german());
            QCOMPARE(parseDateTime(named, german()), std::optional(moment));
        }
    }

    void knowsTheCalendar()
    {
        QCOMPARE(fromCivil({1970, 1, 1, 0, 0, 0})->seconds, 0);
        QCOMPARE(fromCivil({1969, 12, 31, 23, 59, 59})->seconds, -1);
        QCOMPARE(fromCivil({2010, 6, 12, 18, 22, 5})->seconds, 1'276'366'925);
        for (const int year : {1904, 2000, 2008, 2400}) {
            QVERIFY(fromCivil({year, 2, 29, 0, 0, 0}).has_value());
        }
        for (const int year : {1900, 2001, 2010, 2100}) {
            QVERIFY(!fromCivil({year, 2, 29, 0, 0, 0}).has_value());
        }
        QVERIFY(!fromCivil({99, 12, 31, 0, 0, 0}));
        QVERIFY(!fromCivil({10000, 1, 1, 0, 0, 0}));
        QVERIFY(!fromCivil({2010, 0, 1, 0, 0, 0}));
        QVERIFY(!fromCivil({2010, 1, 0, 0, 0, 0}));
        QVERIFY(!fromCivil({2010, 1, 1, -1, 0, 0}));
        QVERIFY(!fromCivil({2010, 1, 1, 0, 60, 0}));
    }

    void writesPatterns_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::newRow("export") << u"dd-mmm-yyyy hh:nn"_s << u"05-Jul-0810 01:04"_s;
        QTest::newRow("backup") << u"yyyymmdd hhnnss.bak"_s << u"08100705 010409.bak"_s;
        QTest::newRow("month") << u"mmm-yyyy"_s << u"Jul-0810"_s;
        QTest::newRow("no zeros") << u"d/m/yyyy"_s << u"5/7/0810"_s;
        QTest::newRow("with zeros") << u"dd/mm/yyyy"_s << u"05/07/0810"_s;
        QTest::newRow("other characters") << u"[YYYY] é %1 h n s"_s << u"[YYYY] é %1 h n s"_s;
        QTest::newRow("empty") << u""_s << u""_s;
    }

    void writesPatterns()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        const DateTime moment = *fromCivil({810, 7, 5, 1, 4, 9});
        QCOMPARE(formatted(moment, pattern, english()), text);
        QCOMPARE(generalText(moment), u"05/07/0810 01:04:09"_s);
        QCOMPARE(dateText(moment), u"05/07/0810"_s);
    }

    void theClockIsUtcInEveryZone_data()
    {
        QTest::addColumn<QByteArray>("rule");
        QTest::addColumn<qint64>("hours");
        QTest::newRow("UTC") << "UTC0"_ba << qint64(0);
        QTest::newRow("east") << "AAA-5"_ba << qint64(5);
        QTest::newRow("west") << "AAA+7"_ba << qint64(-7);
        QTest::newRow("summer time all the year") << "AAA-1BBB-2,J1/0,J365/25"_ba << qint64(2);
    }

    void theClockIsUtcInEveryZone()
    {
        QFETCH(QByteArray, rule);
        QFETCH(qint64, hours);
        const Zone zone(rule.constData());
        const qint64 before = clockSeconds();
        const qint64 utc = UtcNow().seconds;
        const qint64 local = localNow().seconds;
        const qint64 after = clockSeconds();
        QVERIFY(before <= utc && utc <= after);
        QVERIFY(before <= local - hours * 3600 && local - hours * 3600 <= after);
    }
};

QTEST_GUILESS_MAIN(TestDateTime)
#include "tst_datetime.moc"
