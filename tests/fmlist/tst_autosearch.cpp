#include "fmlist/autosearch.h"
#include "platform/runtimeerror.h"

#include <QLocale>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

const MonthNames months = MonthNames::of(QLocale::c());

DateTime at(const QString &text)
{
    return toDateTime(text, months, u"test"_s);
}

} // namespace

class TestAutoSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowIsTwoDaysWithBothBoundsOut_data()
    {
        QTest::addColumn<QString>("time");
        QTest::addColumn<bool>("inside");
        QTest::newRow("23:30 on the day before") << u"11/06/2010 23:30:00"_s << true;
        QTest::newRow("start of the day before") << u"11/06/2010 00:00:00"_s << false;
        QTest::newRow("a second later") << u"11/06/2010 00:00:01"_s << true;
        QTest::newRow("noon of the day") << u"12/06/2010 12:00:00"_s << true;
        QTest::newRow("last second of the day") << u"12/06/2010 23:59:59"_s << true;
        QTest::newRow("start of the day after") << u"13/06/2010 00:00:00"_s << false;
        QTest::newRow("two days before") << u"10/06/2010 23:59:59"_s << false;
    }

    void theWindowIsTwoDaysWithBothBoundsOut()
    {
        QFETCH(QString, time);
        QTEST(dayWindow(u"12/06/2010"_s, months).contains(at(time)), "inside");
        QTEST(dayWindow(u"2010-06-12 18:22"_s, months).contains(at(time)), "inside");
    }

    void aDayThatIsNoneIsATypeMismatch()
    {
        try {
            (void)dayWindow(u"yesterday"_s, months);
            QFAIL("no error");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::TypeMismatch);
            QVERIFY(error.doing().contains(u"yesterday"_s));
        }
    }

    void onlyEntriesWithoutAUidAreSearched()
    {
        const DayWindow window = dayWindow(u"12/06/2010"_s, months);
        LogEntry entry;
        entry.dateTime = at(u"12/06/2010 10:00:00"_s);
        QVERIFY(isToBeSearched(entry, window));
        entry.uid = u"  "_s;
        entry.fmlist = u"fml=none#"_s;
        QVERIFY(isToBeSearched(entry, window));
        entry.uid = u"4711"_s;
        QVERIFY(!isToBeSearched(entry, window));
        entry.uid.clear();
        entry.piCode = u"delete"_s;
        QVERIFY(!isToBeSearched(entry, window));
        entry.piCode = u"D3C1"_s;
        QVERIFY(isToBeSearched(entry, window));
        entry.dateTime = at(u"14/06/2010 10:00:00"_s);
        QVERIFY(!isToBeSearched(entry, window));
    }

    void modePiLeavesTheNameOut()
    {
        QCOMPARE(searchedName(SearchMode::PiAndPs, u"RADIO 1"_s), u"RADIO 1"_s);
        QCOMPARE(searchedName(SearchMode::Pi, u"RADIO 1"_s), QString());
    }

    void theCountDecides()
    {
        QCOMPARE(findingOf(0), Finding::None);
        QCOMPARE(findingOf(1), Finding::Exact);
        QCOMPARE(findingOf(2), Finding::Multi);
        QCOMPARE(findingOf(3), Finding::Multi);
        QCOMPARE(findingText(Finding::None), u"None"_s);
        QCOMPARE(findingText(Finding::Multi), u"Multi"_s);
        QCOMPARE(findingText(Finding::Exact), QString());
        QCOMPARE(markedField(u""_s, Finding::None), u"fml=none#"_s);
        QCOMPARE(markedField(u"fml=none#"_s, Finding::Multi), u"fml=multi#"_s);
        QCOMPARE(markedField(u"a=1#rest"_s, Finding::Exact), u"a=1#rest"_s);
    }

    void theUpdateLogByteForByte()
    {
        QStringList columns;
        for (int c = 0; c < 12; ++c) {
            columns += QString(QChar(u'a' + c));
        }
        columns[6] = u"\u00e9"_s;
        columns[10] = QString();
        QCOMPARE(updateLogLine(at(u"5/7/2010 1:02:03"_s), u"BEFORE"_s, columns, CodePage(1252)),
            "05/07/2010 01:02:03\tBEFORE\t0:a\t1:b\t2:c\t3:d\t4:e\t5:f\t6:\xE9\t7:h\t8:i\t9:j\t10:\t11:l\t\r\n"_ba);
    }

    void aNoteOfTwoLinesStaysOneRecord()
    {
        QCOMPARE(
            updateLogLine(at(u"5/7/2010 1:02:03"_s), u"AFTER"_s, {u"a"_s, u"one\r\ntwo"_s}, CodePage(1252)),
            "05/07/2010 01:02:03\tAFTER\t0:a\t1:oneCRLFtwo\t\r\n"_ba);
    }

    void theLastWord()
    {
        QCOMPARE(updatedText(0), u"Updated 0 entries"_s);
        QCOMPARE(updatedText(1), u"Updated 1 entries"_s);
    }
};

QTEST_GUILESS_MAIN(TestAutoSearch)
#include "tst_autosearch.moc"
