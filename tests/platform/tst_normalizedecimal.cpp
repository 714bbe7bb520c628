#include "platform/numbers.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestNormalizeDecimal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void normalizes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("withPoint");
        QTest::addColumn<QString>("withComma");
        QTest::newRow("empty") << u""_s << u"-1"_s << u"-1"_s;
        QTest::newRow("comma") << u"52,5"_s << u"52.5"_s << u"52,5"_s;
        QTest::newRow("point") << u"52.5"_s << u"52.5"_s << u"52,5"_s;
        QTest::newRow("letters") << u"abc"_s << u"-1"_s << u"-1"_s;
        QTest::newRow("both") << u"1,234.5"_s << u"-1"_s << u"-1"_s;
        QTest::newRow("blanks and zeros stay") << u" 052.50 "_s << u" 052.50 "_s << u" 052,50 "_s;
        QTest::newRow("blank") << u" "_s << u"-1"_s << u"-1"_s;
        QTest::newRow("negative") << u"-0,25"_s << u"-0.25"_s << u"-0,25"_s;
    }

    void normalizes()
    {
        QFETCH(QString, text);
        QTEST(NormalizeDecimal(text, false), "withPoint");
        QTEST(NormalizeDecimal(text, true), "withComma");
    }

    void decimalCommaLocale()
    {
        QVERIFY(!DecimalCommaLocale(NumberFormat {u'.'}));
        QVERIFY(DecimalCommaLocale(NumberFormat {u','}));
        QVERIFY(!DecimalCommaLocale(NumberFormat {u'\u066b'}));
    }
};

QTEST_GUILESS_MAIN(TestNormalizeDecimal)
#include "tst_normalizedecimal.moc"
