#include "platform/runtimeerror.h"
#include "stats/charttable.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

const QString title = u"2010 / All / Es"_s;

const QStringList months {u"Jan"_s, u"Feb"_s, u"Mar"_s, u"Apr"_s, u"May"_s, u"Jun"_s, u"Jul"_s, u"Aug"_s,
    u"Sep"_s, u"Oct"_s, u"Nov"_s, u"Dec"_s};

const QStringList days {u" 1"_s, u" 2"_s, u" 3"_s, u" 4"_s, u" 5"_s, u" 6"_s, u" 7"_s, u" 8"_s, u" 9"_s,
    u" 10"_s, u" 11"_s, u" 12"_s, u" 13"_s, u" 14"_s, u" 15"_s, u" 16"_s, u" 17"_s, u" 18"_s, u" 19"_s,
    u" 20"_s, u" 21"_s, u" 22"_s, u" 23"_s, u" 24"_s, u" 25"_s, u" 26"_s, u" 27"_s, u" 28"_s, u" 29"_s,
    u" 30"_s, u" 31"_s};

const QStringList twoHours {u"00 & 01 hrs"_s, u"02 & 03 hrs"_s, u"04 & 05 hrs"_s, u"06 & 07 hrs"_s,
    u"08 & 09 hrs"_s, u"10 & 11 hrs"_s, u"12 & 13 hrs"_s, u"14 & 15 hrs"_s, u"16 & 17 hrs"_s,
    u"18 & 19 hrs"_s, u"20 & 21 hrs"_s, u"22 & 23 hrs"_s};

// Every bucket differs from every other.
template<typename Counts>
Counts numbered(int first)
{
    Counts counts {};
    for (std::size_t i = 1; i < counts.size(); ++i) {
        counts[i] = static_cast<qint16>(first + static_cast<int>(i));
    }
    return counts;
}

template<typename HourCounts>
HourCounts numberedHours()
{
    HourCounts hours {};
    for (std::size_t hour = 0; hour < hours.size(); ++hour) {
        hours[hour] = numbered<typename HourCounts::value_type>(100 * static_cast<int>(hour));
    }
    return hours;
}

QStringList row(const ChartTable &table, int number)
{
    QStringList cells;
    for (int column = 1; column <= table.columns(); ++column) {
        cells.append(table.cell(number, column));
    }
    return cells;
}

} // namespace

class TestChartTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTitleIsTheSelection()
    {
        QCOMPARE(selectionText({}), u"All / All / All"_s);
        QCOMPARE(selectionText({u"2010"_s, u"June"_s, u"Es"_s, true}), u"2010 / June / Es"_s);
    }

    void monthsAreTwelveBarsUnderTheTitle()
    {
        const ChartTable table = monthTable(numbered<MonthCounts>(0), title);
        QCOMPARE(table.rows(), 13);
        QCOMPARE(table.columns(), 2);
        QCOMPARE(row(table, 1), QStringList({u"Period"_s, title}));
        QCOMPARE(row(table, 2), QStringList({u"Jan"_s, u"1"_s}));
        QCOMPARE(row(table, 13), QStringList({u"Dec"_s, u"12"_s}));
        QCOMPARE(table.categories(), months);
        QCOMPARE(table.title(), title);
    }

    void daysAlwaysReachThe31st()
    {
        DayCounts counts = numbered<DayCounts>(10);
        counts[31] = 0;
        const ChartTable table = dayTable(counts, title);
        QCOMPARE(table.rows(), 32);
        QCOMPARE(table.columns(), 2);
        QCOMPARE(row(table, 1), QStringList({u"Period"_s, title}));
        QCOMPARE(row(table, 2), QStringList({u" 1"_s, u"11"_s}));
        QCOMPARE(row(table, 31), QStringList({u" 30"_s, u"40"_s}));
        QCOMPARE(row(table, 32), QStringList({u" 31"_s, u"0"_s}));
        QCOMPARE(table.categories(), days);
    }

    void twoHoursAreSummedByMonth()
    {
        const ChartTable table = monthHoursTable(numberedHours<MonthHourCounts>(), title);
        QCOMPARE(table.rows(), 13);
        QCOMPARE(table.columns(), 13);
        QCOMPARE(row(table, 1), QStringList(u"Period"_s) + twoHours);
        QCOMPARE(table.categories(), months);
        for (int month = 0; month < 12; ++month) {
            for (int pair = 0; pair < 12; ++pair) {
                QCOMPARE(table.count(month, pair), 100 * (4 * pair + 1) + 2 * (month + 1));
            }
        }
    }

    void twoHoursAreSummedByDay()
    {
        const ChartTable table = dayHoursTable(numberedHours<DayHourCounts>(), title);
        QCOMPARE(table.rows(), 32);
        QCOMPARE(table.columns(), 13);
        QCOMPARE(row(table, 1), QStringList(u"Period"_s) + twoHours);
        QCOMPARE(table.categories(), days);
        QCOMPARE(table.cell(32, 13), QString::number(2200 + 31 + 2300 + 31));
        QCOMPARE(table.count(0, 0), 1 + 101);
    }

    void aSumOfTwoFullCountersIsShown()
    {
        MonthHourCounts counts {};
        counts[4][7] = 32767;
        counts[5][7] = 32767;
        QCOMPARE(monthHoursTable(counts, title).count(6, 2), 65534);
    }

    void theOldDayChartHas24Series()
    {
        const ChartTable table = dayHoursTable24(numberedHours<DayHourCounts>(), title);
        QCOMPARE(table.columns(), 25);
        QCOMPARE(table.series().first(), u"00hr"_s);
        QCOMPARE(table.series()[9], u"09hr"_s);
        QCOMPARE(table.series().last(), u"23hr"_s);
        QCOMPARE(table.categories(), days);
        QCOMPARE(table.count(30, 23), 2331);
    }

    void theTestChartIsFixed()
    {
        const ChartTable table = testTable();
        QCOMPARE(row(table, 1), QStringList({u"Period"_s, u"Test 1"_s, u"Test 2"_s}));
        QCOMPARE(row(table, 2), QStringList({u"Jan"_s, u"1"_s, u"12"_s}));
        QCOMPARE(row(table, 13), QStringList({u"Dec"_s, u"12"_s, u"1"_s}));
        QCOMPARE(table.largest(), 12);
    }

    void anEmptyTableHasItsCorner()
    {
        const ChartTable table;
        QVERIFY(table.isEmpty());
        QCOMPARE(row(table, 1), QStringList(u"Period"_s));
        QCOMPARE(table.largest(), 0);
        QVERIFY(!testTable().isEmpty());
    }

    void cellsOutsideAreRefused_data()
    {
        QTest::addColumn<int>("rowNumber");
        QTest::addColumn<int>("column");
        QTest::newRow("row 0") << 0 << 1;
        QTest::newRow("column 0") << 1 << 0;
        QTest::newRow("below") << 14 << 1;
        QTest::newRow("right") << 1 << 4;
        QTest::newRow("both") << 14 << 4;
    }

    void cellsOutsideAreRefused()
    {
        QFETCH(int, rowNumber);
        QFETCH(int, column);
        const ChartTable table = testTable();
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)table.cell(rowNumber, column));
    }

    void theAxisIsOfWholeNumbersWithRoomAbove_data()
    {
        QTest::addColumn<int>("largest");
        QTest::addColumn<int>("maximum");
        QTest::addColumn<int>("step");
        QTest::newRow("nothing") << 0 << 1 << 1;
        QTest::newRow("one") << 1 << 2 << 1;
        QTest::newRow("nine") << 9 << 10 << 1;
        QTest::newRow("ten") << 10 << 12 << 2;
        QTest::newRow("45") << 45 << 50 << 5;
        QTest::newRow("100") << 100 << 120 << 20;
        QTest::newRow("a full counter") << 32767 << 35000 << 5000;
        QTest::newRow("a thousand million") << 1000000000 << 1200000000 << 200000000;
    }

    void theAxisIsOfWholeNumbersWithRoomAbove()
    {
        QFETCH(int, largest);
        QFETCH(int, maximum);
        QFETCH(int, step);
        QCOMPARE(axisScale(largest), (AxisScale {maximum, step}));
    }

    void everyBarStaysBelowTheTopOfTheAxis()
    {
        for (int largest = 1; largest <= 70000; ++largest) {
            const AxisScale scale = axisScale(largest);
            QVERIFY(scale.maximum > largest);
            QVERIFY(scale.maximum <= 2 * largest);
            QCOMPARE(scale.maximum % scale.step, 0);
            QVERIFY(scale.maximum / scale.step <= 10);
        }
    }
};

QTEST_GUILESS_MAIN(TestChartTable)
#include "tst_charttable.moc"
