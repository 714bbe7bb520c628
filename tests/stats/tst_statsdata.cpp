#include "core/logbook.h"
#include "platform/runtimeerror.h"
#include "stats/statsdata.h"

#include <QTest>

#include <limits>
#include <numeric>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

LogEntry reception(const CivilTime &time, const QString &prop, const QString &piCode = u"D3C3"_s)
{
    LogEntry entry;
    entry.piCode = piCode;
    entry.dateTime = *fromCivil(time);
    entry.prop = prop;
    entry.freq = u"87.60"_s;
    return entry;
}

std::vector<LogEntry> sampleLog()
{
    return {
        reception({2010, 6, 12, 18, 22, 5}, u"Es"_s),
        reception({2010, 6, 30, 23, 59, 59}, u"Tropo"_s),
        reception({2009, 6, 12, 0, 0, 0}, u"Es"_s),
        reception({2010, 12, 31, 0, 0, 0}, u"MS"_s),
        reception({2010, 1, 1, 7, 0, 0}, u"es"_s),
        reception({2010, 6, 12, 19, 0, 0}, u"Es"_s, u"delete"_s),
    };
}

template<typename Counts>
int total(const Counts &counts)
{
    return std::accumulate(counts.begin(), counts.end(), 0);
}

template<typename HourCounts>
int totalOfHours(const HourCounts &hours)
{
    int sum = 0;
    for (const auto &counts : hours) {
        sum += total(counts);
    }
    return sum;
}

StatsSelection selection(const QString &year, const QString &month, const QString &mode, bool hours = false)
{
    return {year, month, mode, hours};
}

QString errorOf(std::span<const LogEntry> entries, const StatsSelection &chosen)
{
    try {
        (void)countReceptions(entries, chosen);
    } catch (const RuntimeError &error) {
        return error.text();
    }
    return u"no error"_s;
}

} // namespace

class TestStatsData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void monthNamesAreExact_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        const QStringList months = monthChoices();
        for (int i = 1; i < months.size(); ++i) {
            QTest::newRow(qPrintable(months[i])) << months[i] << i;
        }
        for (const QString &text :
            {u"All"_s, u"january"_s, u"JUNE"_s, u"Jun"_s, u" June"_s, u"June "_s, u"Juni"_s, u"6"_s, u""_s}) {
            QTest::newRow(qPrintable(u'"' + text + u'"')) << text << 0;
        }
    }

    void monthNamesAreExact()
    {
        QFETCH(QString, text);
        QFETCH(int, number);
        QCOMPARE(convertMonthToNumber(text), number);
    }

    void theChoicesStandInTheirOrder()
    {
        const QStringList modes {
            u"All"_s, u"Es"_s, u"Tropo"_s, u"MS"_s, u"TEP"_s, u"Aur"_s, u"F2"_s, u"FAI"_s};
        const QStringList months {u"All"_s, u"January"_s, u"February"_s, u"March"_s, u"April"_s, u"May"_s,
            u"June"_s, u"July"_s, u"August"_s, u"September"_s, u"October"_s, u"November"_s, u"December"_s};
        QCOMPARE(modeChoices(), modes);
        QCOMPARE(monthChoices(), months);
    }

    void yearsStandInTheOrderOfTheirFirstEntry()
    {
        const std::vector<LogEntry> log {
            reception({2010, 6, 1, 0, 0, 0}, {}),
            reception({1998, 6, 1, 0, 0, 0}, {}, u"delete"_s),
            reception({2010, 7, 1, 0, 0, 0}, {}),
            reception({999, 7, 1, 0, 0, 0}, {}),
            reception({2004, 12, 31, 23, 59, 59}, {}),
            reception({1998, 1, 1, 0, 0, 0}, {}),
        };
        QCOMPARE(yearChoices(log), QStringList({u"All"_s, u"2010"_s, u"1998"_s, u"0999"_s, u"2004"_s}));
        QCOMPARE(yearChoices({}), QStringList(u"All"_s));
    }

    void atMost101YearsAreCollected()
    {
        std::vector<LogEntry> log;
        for (int year = 2200; year > 2050; --year) {
            log.push_back(reception({year, 1, 1, 0, 0, 0}, {}));
        }
        const QStringList years = yearChoices(log);
        QCOMPARE(years.size(), 102);
        QCOMPARE(years[1], u"2200"_s);
        QCOMPARE(years.last(), u"2100"_s);
    }

    void theFilter_data()
    {
        QTest::addColumn<QString>("year");
        QTest::addColumn<QString>("month");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<int>("counted");
        QTest::newRow("everything, deleted ones too") << u"All"_s << u"All"_s << u"All"_s << 6;
        QTest::newRow("a year") << u"2010"_s << u"All"_s << u"All"_s << 5;
        QTest::newRow("a year without entries") << u"2011"_s << u"All"_s << u"All"_s << 0;
        QTest::newRow("a year with a blank") << u"2010 "_s << u"All"_s << u"All"_s << 0;
        QTest::newRow("a year with a sign") << u"+201"_s << u"All"_s << u"All"_s << 0;
        QTest::newRow("not a year") << u"all"_s << u"All"_s << u"All"_s << 0;
        QTest::newRow("no year") << u""_s << u"All"_s << u"All"_s << 0;
        QTest::newRow("a mode, by exact text") << u"All"_s << u"All"_s << u"Es"_s << 3;
        QTest::newRow("a mode of free text") << u"All"_s << u"All"_s << u"es"_s << 1;
        QTest::newRow("a month of all years") << u"All"_s << u"June"_s << u"All"_s << 4;
        QTest::newRow("Es in June of all years") << u"All"_s << u"June"_s << u"Es"_s << 3;
        QTest::newRow("Es in June 2010") << u"2010"_s << u"June"_s << u"Es"_s << 2;
        QTest::newRow("a month in lower case") << u"All"_s << u"june"_s << u"All"_s << 0;
    }

    void theFilter()
    {
        QFETCH(QString, year);
        QFETCH(QString, month);
        QFETCH(QString, mode);
        QFETCH(int, counted);
        const std::vector<LogEntry> log = sampleLog();
        const bool byMonth = month == u"All";

        const StatsBuckets plain = countReceptions(log, selection(year, month, mode));
        const StatsBuckets hours = countReceptions(log, selection(year, month, mode, true));
        if (byMonth) {
            QCOMPARE(total(std::get<MonthCounts>(plain)), counted);
            QCOMPARE(totalOfHours(std::get<MonthHourCounts>(hours)), counted);
        } else {
            QCOMPARE(total(std::get<DayCounts>(plain)), counted);
            QCOMPARE(totalOfHours(std::get<DayHourCounts>(hours)), counted);
        }
    }

    void everythingIsCountedOnceByMonth()
    {
        const auto counts = std::get<MonthCounts>(countReceptions(sampleLog(), {}));
        QCOMPARE(counts, (MonthCounts {0, 1, 0, 0, 0, 0, 4, 0, 0, 0, 0, 0, 1}));
    }

    void oneMonthIsCountedByDay()
    {
        const auto counts =
            std::get<DayCounts>(countReceptions(sampleLog(), selection(u"2010"_s, u"June"_s, u"All"_s)));
        DayCounts expected {};
        expected[12] = 2;
        expected[30] = 1;
        QCOMPARE(counts, expected);
    }

    void timeDistributionCountsByMonthAndHour()
    {
        const auto counts = std::get<MonthHourCounts>(
            countReceptions(sampleLog(), selection(u"All"_s, u"All"_s, u"All"_s, true)));
        MonthHourCounts expected {};
        expected[18][6] = 1;
        expected[23][6] = 1;
        expected[0][6] = 1;
        expected[0][12] = 1;
        expected[7][1] = 1;
        expected[19][6] = 1;
        QCOMPARE(counts, expected);
    }

    void timeDistributionCountsByDayAndHour()
    {
        const auto counts = std::get<DayHourCounts>(
            countReceptions(sampleLog(), selection(u"All"_s, u"June"_s, u"Es"_s, true)));
        DayHourCounts expected {};
        expected[0][12] = 1;
        expected[18][12] = 1;
        expected[19][12] = 1;
        QCOMPARE(counts, expected);
    }

    void anEmptyLogGivesZeros()
    {
        QCOMPARE(std::get<MonthCounts>(countReceptions({}, {})), MonthCounts {});
        QCOMPARE(
            std::get<DayCounts>(countReceptions({}, selection(u"All"_s, u"May"_s, u"All"_s))), DayCounts {});
    }

    void aCounterHolds32767()
    {
        std::vector<LogEntry> log(32767, reception({2010, 6, 12, 18, 0, 0}, u"Es"_s));
        QCOMPARE(std::get<MonthCounts>(countReceptions(log, {}))[6], std::numeric_limits<qint16>::max());

        log.push_back(log.back());
        const QString overflow =
            u"Run-time error: Overflow\nCounting the receptions: at entry 32767 of the log "
            "(D3C3, 87.60 MHz) a counter passes 32767"_s;
        for (const bool hours : {false, true}) {
            QCOMPARE(errorOf(log, selection(u"All"_s, u"All"_s, u"All"_s, hours)), overflow);
            QCOMPARE(errorOf(log, selection(u"2010"_s, u"June"_s, u"Es"_s, hours)), overflow);
            QCOMPARE(errorOf(log, selection(u"2011"_s, u"All"_s, u"All"_s, hours)), u"no error"_s);
        }
        log.back().dateTime = *fromCivil({2010, 7, 12, 18, 0, 0});
        QCOMPARE(errorOf(log, {}), u"no error"_s);
    }

    void aDateThatCannotBeWrittenStopsTheCount_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::newRow("before the year 100") << fromCivil({100, 1, 1, 0, 0, 0})->seconds - 1;
        QTest::newRow("after the year 9999") << fromCivil({9999, 12, 31, 23, 59, 59})->seconds + 1;
        QTest::newRow("the least number") << std::numeric_limits<qint64>::min();
        QTest::newRow("the largest number") << std::numeric_limits<qint64>::max();
    }

    void aDateThatCannotBeWrittenStopsTheCount()
    {
        QFETCH(qint64, seconds);
        std::vector<LogEntry> log = sampleLog();
        log[1].dateTime.seconds = seconds;
        const QString mismatch = u"Run-time error: Type mismatch\nCounting the receptions: the date and time "
                                 u"of entry 1 of the log "
                                 "(D3C3, 87.60 MHz) is outside the years 100 to 9999"_s;
        QCOMPARE(errorOf(log, {}), mismatch);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)yearChoices(log));
    }

    void aLogbookIsCountedAsItStands()
    {
        Logbook logbook;
        for (const LogEntry &entry : sampleLog()) {
            logbook.AddEntry(entry);
        }
        const std::span<const LogEntry> entries(logbook.begin(), logbook.end());
        QCOMPARE(std::get<MonthCounts>(countReceptions(entries, {}))[6], qint16(4));
        QCOMPARE(yearChoices(entries), QStringList({u"All"_s, u"2010"_s, u"2009"_s}));
    }

    void otherModesOfTheLogFollowTheUsualOnes()
    {
        std::vector<LogEntry> entries;
        for (const QString &prop : {u"Es"_s, u"Sc"_s, u""_s, u"es"_s, u"Sc"_s, QString(longestMode + 1, u'x'),
                 QString(longestMode, u'y')}) {
            entries.emplace_back().prop = prop;
        }
        QCOMPARE(modeChoices(entries),
            modeChoices() + QStringList({u"Sc"_s, u"es"_s, QString(longestMode, u'y')}));
        for (int i = 0; i < 1000; ++i) {
            entries.emplace_back().prop = QString::number(i);
        }
        QCOMPARE(modeChoices(entries).size(), modeChoices().size() + mostModes);
    }
};

QTEST_GUILESS_MAIN(TestStatsData)
#include "tst_statsdata.moc"
