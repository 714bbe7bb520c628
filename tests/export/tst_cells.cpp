#include "export/cells.h"
#include "export/months.h"
#include "exportdata.h"

#include <QTest>

using namespace quillon;
using namespace quillon::test;

class TestCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyAnEmptyCellIsBlank()
    {
        QCOMPARE(blankCell(u""_s), u"&nbsp;"_s);
        QCOMPARE(blankCell(u" "_s), u" "_s);
        QCOMPARE(blankCell(u"0"_s), u"0"_s);
        QCOMPARE(blankCell(u"<b>"_s), u"<b>"_s);
    }

    void aCountIsBlankUnlessItComesAfterZeroAsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << u""_s << u"&nbsp;"_s;
        QTest::newRow("zero") << u"0"_s << u"&nbsp;"_s;
        QTest::newRow("negative") << u"-1"_s << u"&nbsp;"_s;
        QTest::newRow("blank before") << u" 5"_s << u"&nbsp;"_s;
        QTest::newRow("one") << u"1"_s << u"1"_s;
        QTest::newRow("ten") << u"10"_s << u"10"_s;
        QTest::newRow("two zeros") << u"00"_s << u"00"_s;
        QTest::newRow("text") << u"n/a"_s << u"n/a"_s;
    }

    void aCountIsBlankUnlessItComesAfterZeroAsText()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(blankCount(text), expected);
    }

    void paddingTrimsThenFillsOrCuts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("left");
        QTest::newRow("shorter") << u"89.0"_s << 5 << u"89.0 "_s;
        QTest::newRow("equal") << u"100.2"_s << 5 << u"100.2"_s;
        QTest::newRow("longer") << u"100.25"_s << 5 << u"100.2"_s;
        QTest::newRow("blanks around") << u"  ab "_s << 3 << u"ab "_s;
        QTest::newRow("blank inside") << u"a b"_s << 4 << u"a b "_s;
        QTest::newRow("empty") << u""_s << 2 << u"  "_s;
        QTest::newRow("only blanks") << u"    "_s << 2 << u"  "_s;
        QTest::newRow("a tab is no blank") << u"\ta"_s << 3 << u"\ta "_s;
    }

    void paddingTrimsThenFillsOrCuts()
    {
        QFETCH(QString, text);
        QFETCH(int, width);
        QFETCH(QString, left);
        QCOMPARE(leftAligned(text, width), left);
    }

    void monthNamesAreThoseOfTheLocale()
    {
        QCOMPARE(exportMonths(regionalOf(u"de_DE"_s)).abbreviated[2], u"Mär"_s);
        QCOMPARE(exportMonths(regionalOf(u"en_GB"_s)).abbreviated[6], u"Jul"_s);
        QCOMPARE(exportMonths(regionalOf(u"ru_RU"_s, 1251)).abbreviated[6], u"июль"_s);
        for (const QString &name : exportMonths(regionalOf(u"de_DE"_s)).abbreviated) {
            QVERIFY2(!name.contains(u'.'), qPrintable(name));
        }
    }

    void monthNamesThatThePageCannotWriteAreEnglish()
    {
        QCOMPARE(exportMonths(regionalOf(u"ja_JP"_s)).abbreviated[6], u"Jul"_s);
        QCOMPARE(exportMonths(regionalOf(u"ru_RU"_s, 1252)).abbreviated[6], u"Jul"_s);
        Regional slashed = english();
        slashed.months.abbreviated[0] = u"a/b"_s;
        QCOMPARE(exportMonths(slashed).abbreviated[0], u"Jan"_s);
        slashed.months.abbreviated[0] = u""_s;
        QCOMPARE(exportMonths(slashed).abbreviated[0], u"Jan"_s);
    }

    void monthsAreToldApartByYearAndName()
    {
        const MonthKeys keys(english().months);
        QCOMPARE(keys.of(at(u"01/07/2010"_s)), keys.of(at(u"31/07/2010 23:59:59"_s)));
        QVERIFY(keys.of(at(u"01/07/2010"_s)) != keys.of(at(u"01/07/2011"_s)));
        QVERIFY(keys.of(at(u"31/12/2010"_s)) != keys.of(at(u"01/01/2011"_s)));
        MonthNames twins = english().months;
        twins.abbreviated[5] = twins.abbreviated[6];
        QCOMPARE(MonthKeys(twins).of(at(u"01/06/2010"_s)), MonthKeys(twins).of(at(u"01/07/2010"_s)));
    }
};

QTEST_GUILESS_MAIN(TestCells)
#include "tst_cells.moc"
