#include "platform/numbers.h"
#include "platform/runtimeerror.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsCommaAndPoint_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<double>("value");
        QTest::newRow("point") << u"52.5"_s << true << 52.5;
        QTest::newRow("comma") << u"52,5"_s << true << 52.5;
        QTest::newRow("blanks") << u"  -3 "_s << true << -3.0;
        QTest::newRow("plus") << u"+0.25"_s << true << 0.25;
        QTest::newRow("no leading digit") << u".5"_s << true << 0.5;
        QTest::newRow("no trailing digit") << u"5."_s << true << 5.0;
        QTest::newRow("exponent") << u"1e-7"_s << true << 1e-7;
        QTest::newRow("exponent with comma") << u"1,5E+3"_s << true << 1500.0;
        QTest::newRow("empty") << u""_s << false << 0.0;
        QTest::newRow("blank") << u" "_s << false << 0.0;
        QTest::newRow("letters") << u"abc"_s << false << 0.0;
        QTest::newRow("two separators") << u"1.234,5"_s << false << 0.0;
        QTest::newRow("separator alone") << u"."_s << false << 0.0;
        QTest::newRow("sign alone") << u"-"_s << false << 0.0;
        QTest::newRow("NaN") << u"NaN"_s << false << 0.0;
        QTest::newRow("inf") << u"inf"_s << false << 0.0;
        QTest::newRow("too large") << u"1e999"_s << false << 0.0;
        QTest::newRow("Arabic digits") << u"\u0661\u0662"_s << false << 0.0;
        QTest::newRow("exponent without digits") << u"1e"_s << false << 0.0;
        QTest::newRow("hexadecimal") << u"0x10"_s << false << 0.0;
    }

    void readsCommaAndPoint()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(double, value);
        const auto read = numeric(text);
        QCOMPARE(read.has_value(), valid);
        if (valid) {
            QCOMPARE(*read, value);
        }
    }

    void roundsHalvesToEvenOnTheScaledValue()
    {
        QCOMPARE(rounded(0.25, 1), 0.2);
        QCOMPARE(rounded(0.75, 1), 0.8);
        QCOMPARE(rounded(2.5, 0), 2.0);
        QCOMPARE(rounded(3.5, 0), 4.0);
        QCOMPARE(rounded(-2.5, 0), -2.0);
        QCOMPARE(rounded(62.138818, 1), 62.1);
        QCOMPARE(rounded(1e300, 20), 1e300);
    }

    void writesPlainDecimals()
    {
        QCOMPARE(plainText(1234.5), u"1234.5"_s);
        QCOMPARE(plainText(812.0), u"812"_s);
        QCOMPARE(plainText(0.0), u"0"_s);
        QCOMPARE(plainText(-0.0), u"0"_s);
        QCOMPARE(plainText(0.1 + 0.2), u"0.3"_s);
        QCOMPARE(plainText(1e-7), u"0.0000001"_s);
        QCOMPARE(plainText(87.6F), u"87.6"_s);
        QCOMPARE(plainText(3.6F), u"3.6"_s);
        QCOMPARE(plainText(1e20), u"100000000000000000000"_s);
        QCOMPARE(localText(12.5, NumberFormat {u','}), u"12,5"_s);
        QCOMPARE(localText(3.6F, NumberFormat {u'.'}), u"3.6"_s);
    }

    void theFormatFollowsTheNumericLocale()
    {
        qputenv("LC_ALL", "");
        qputenv("LC_NUMERIC", "de_DE.UTF-8");
        QCOMPARE(NumberFormat::fromEnvironment().decimal, QChar(u','));
        qputenv("LC_NUMERIC", "en_GB.UTF-8");
        QCOMPARE(NumberFormat::fromEnvironment().decimal, QChar(u'.'));
        qputenv("LC_ALL", "fr_FR.UTF-8");
        QCOMPARE(NumberFormat::fromEnvironment().decimal, QChar(u','));
        // Neither a comma nor a point there.
        qputenv("LC_ALL", "ar_EG.UTF-8");
        QCOMPARE(NumberFormat::fromEnvironment().decimal, QChar(u'.'));
        qputenv("LC_ALL", "fa_IR.UTF-8");
        QCOMPARE(NumberFormat::fromEnvironment().decimal, QChar(u'.'));
        qputenv("LC_ALL", "");
        qputenv("LC_NUMERIC", "");
    }

    void wholeNumbersOf16Bits()
    {
        QCOMPARE(toInt16(u"-1", u"x"_s), qint16(-1));
        QCOMPARE(toInt16(u"2,5", u"x"_s), qint16(2));
        QCOMPARE(toInt16(u"32767", u"x"_s), qint16(32767));
        try {
            (void)toInt16(u"32768", u"The offset"_s);
            QFAIL("no error");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.text(), u"Run-time error: Overflow\nThe offset: 32768 is too large a number"_s);
        }
        try {
            (void)toInt16(u"two", u"The offset"_s);
            QFAIL("no error");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.text(), u"Run-time error: Type mismatch\nThe offset: \"two\" is not a number"_s);
        }
    }
};

QTEST_GUILESS_MAIN(TestNumbers)
#include "tst_numbers.moc"
