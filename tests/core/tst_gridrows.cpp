#include "core/gridrows.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

LogEntry entryAt(const QString &piCode, int hour)
{
    LogEntry entry;
    entry.piCode = piCode;
    entry.dateTime = *fromCivil({2010, 6, 12, hour, 0, 0});
    return entry;
}

QStringList piCodes(const std::vector<GridRow> &rows)
{
    QStringList codes;
    for (const GridRow &row : rows) {
        codes += row.text(GridColumn::PiCode);
    }
    return codes;
}

} // namespace

class TestGridRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theColumnsAreCaptionedSizedAndAligned()
    {
        struct Wanted
        {
            const char *caption;
            int twips;
            bool centred;
        };
        constexpr std::array wanted {Wanted {"Date/Time", 1700, true}, Wanted {"PI Code", 600, true},
            Wanted {"Freq", 600, true}, Wanted {"RDS Name", 1800, true}, Wanted {"Country", 1000, true},
            Wanted {"Transmitter", 1600, false}, Wanted {"Dist", 600, false}, Wanted {"Power", 500, true},
            Wanted {"Notes", 1600, false}, Wanted {"Prop", 600, true}, Wanted {"FMList", 600, true},
            Wanted {"UID", 800, true}};
        const auto formats = gridColumnFormats();
        QCOMPARE(formats.size(), wanted.size());
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            QCOMPARE(formats[i].caption.toString(), QString::fromLatin1(wanted[i].caption));
            QCOMPARE(formats[i].twips, wanted[i].twips);
            QCOMPARE(formats[i].centred, wanted[i].centred);
        }
    }

    void anEmptyLogHasNoRows() { QVERIFY(gridRows(Logbook()).empty()); }

    void everyCellShowsItsField()
    {
        Logbook log;
        log.AddEntry(
            {u"D3C3"_s, *fromCivil({2010, 6, 12, 18, 22, 5}), u"Es"_s, u"87.6"_s, u"Brocken"_s, u"D"_s,
                u"a\r\nb\r\n\r\nc"_s, u"MDR_JUMP"_s, u"100"_s, u"812.4"_s, u"x=y#fml=none#"_s, u"4711"_s});
        const std::vector<GridRow> rows = gridRows(log);
        QCOMPARE(rows.size(), std::size_t(1));
        QCOMPARE(QStringList(rows[0].cells.begin(), rows[0].cells.end()),
            (QStringList {u"12/06/2010 18:22:05"_s, u"D3C3"_s, u"87.6"_s, u"MDR_JUMP"_s, u"D"_s, u"Brocken"_s,
                u"812.4"_s, u"100"_s, u"a b  c"_s, u"Es"_s, u"None"_s, u"4711"_s}));
        QCOMPARE(rows[0].entry, 0);
        QCOMPARE(log.entry(0).notes, u"a\r\nb\r\n\r\nc"_s);
    }

    void aLoneLineFeedInNotesStays()
    {
        Logbook log;
        LogEntry entry = entryAt(u"A"_s, 1);
        entry.notes = u"a\nb\rc"_s;
        log.AddEntry(entry);
        QCOMPARE(gridRows(log)[0].text(GridColumn::Notes), u"a\nb\rc"_s);
    }

    void rowsAreSortedByDateAndEqualOnesStayInLogOrder()
    {
        Logbook log;
        for (const auto &[code, hour] : {std::pair {u"A"_s, 5}, std::pair {u"B"_s, 3}, std::pair {u"C"_s, 5},
                 std::pair {u"D"_s, 1}, std::pair {u"E"_s, 3}, std::pair {u"F"_s, 5}}) {
            log.AddEntry(entryAt(code, hour));
        }
        log.changeEntry(3, [](LogEntry &entry) { entry.piCode = u"delete"_s; });
        const std::vector<GridRow> rows = gridRows(log);
        QCOMPARE(piCodes(rows), (QStringList {u"delete"_s, u"B"_s, u"E"_s, u"A"_s, u"C"_s, u"F"_s}));
        QCOMPARE(rows[0].entry, 3);
        QCOMPARE(rows[1].entry, 1);
        QCOMPARE(rows[5].entry, 5);
    }

    void datesAreSortedAsDatesNotAsText()
    {
        Logbook log;
        for (const CivilTime &day : {CivilTime {2010, 1, 31}, CivilTime {2009, 12, 1}, CivilTime {2010, 2, 1},
                 CivilTime {1969, 5, 5}}) {
            LogEntry entry;
            entry.dateTime = *fromCivil(day);
            log.AddEntry(entry);
        }
        QStringList dates;
        for (const GridRow &row : gridRows(log)) {
            dates += row.text(GridColumn::DateTime).left(10);
        }
        QCOMPARE(dates, (QStringList {u"05/05/1969"_s, u"01/12/2009"_s, u"31/01/2010"_s, u"01/02/2010"_s}));
    }

    void theGenericOrder_data()
    {
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::addColumn<int>("order");
        QTest::newRow("numbers by value") << u"9"_s << u"10"_s << -1;
        QTest::newRow("decimals") << u"87.60"_s << u"87.6"_s << 0;
        QTest::newRow("decimal comma") << u"87,7"_s << u"87.6"_s << 1;
        QTest::newRow("negative") << u"-5"_s << u"-4"_s << -1;
        QTest::newRow("number before text") << u"999"_s << u"A"_s << -1;
        QTest::newRow("number before empty") << u"999"_s << u""_s << -1;
        QTest::newRow("empty before text") << u""_s << u"A"_s << -1;
        QTest::newRow("text by letters") << u"Brocken"_s << u"Inselsberg"_s << -1;
        QTest::newRow("case does not count") << u"brocken"_s << u"BROCKEN"_s << 0;
        QTest::newRow("hexadecimal is text") << u"D3C3"_s << u"D318"_s << 1;
        QTest::newRow("exponent is a number") << u"1E3"_s << u"999"_s << 1;
        QTest::newRow("NaN is text") << u"NaN"_s << u"1"_s << 1;
    }

    void theGenericOrder()
    {
        QFETCH(QString, left);
        QFETCH(QString, right);
        QFETCH(int, order);
        const auto sign = [](std::weak_ordering value) {
            return std::is_lt(value) ? -1 : std::is_gt(value) ? 1 : 0;
        };
        QCOMPARE(sign(genericOrder(left, right)), order);
        QCOMPARE(sign(genericOrder(right, left)), -order);
        QCOMPARE(sign(genericOrder(left, left)), 0);
    }

    void theGenericSortIsStable()
    {
        const std::vector<QString> texts {u"b"_s, u"10"_s, u"A"_s, u"9.0"_s, u""_s, u"a"_s, u"9"_s, u"B"_s};
        QCOMPARE(genericSort(texts), (std::vector {3, 6, 1, 4, 2, 5, 0, 7}));
        QCOMPARE(genericSort({}), std::vector<int>());
    }
};

QTEST_GUILESS_MAIN(TestGridRows)
#include "tst_gridrows.moc"
