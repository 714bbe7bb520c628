#include "core/logfields.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

LogEntry filledEntry()
{
    return {u"D3C3"_s, *fromCivil({2010, 6, 12, 18, 22, 5}), u"Es"_s, u"87.6"_s, u"Brocken"_s, u"D"_s,
        u"a\r\nb\r\n\r\nc"_s, u"MDR_JUMP"_s, u"100"_s, u"812.4"_s, u"x=y#fml=none#"_s, u"4711"_s};
}

} // namespace

class TestLogFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void derivedColumnsStandBehindAndShowNoField()
    {
        QStringList captions;
        for (int column = gridColumnCount; column < allColumnCount; ++column) {
            const auto place = static_cast<GridColumn>(column);
            QVERIFY(logColumn(place).column == place);
            QVERIFY(!logColumn(place).field);
            QCOMPARE(cellText(LogEntry(), place), QString());
            captions += logColumn(place).caption.toString();
        }
        QCOMPARE(captions, QStringList({u"Azimuth"_s, u"Locator"_s, u"MUF"_s, u"New"_s}));
    }

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
        QCOMPARE(std::size_t(gridColumnCount), wanted.size());
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            const LogColumn &column = logColumn(static_cast<GridColumn>(i));
            QCOMPARE(column.column, static_cast<GridColumn>(i));
            QCOMPARE(column.caption.toString(), QString::fromLatin1(wanted[i].caption));
            QCOMPARE(column.twips, wanted[i].twips);
            QCOMPARE(column.centred, wanted[i].centred);
            QVERIFY(!column.usual.isEmpty());
        }
    }

    void theFieldsStandInTheOrderOfTheFile()
    {
        QStringList captions;
        int number = 0;
        for (const LogColumn &row : logFields()) {
            captions += row.caption.toString();
            QCOMPARE(row.field, std::optional(static_cast<LogField>(number)));
            QCOMPARE(&logField(*row.field), &row);
            QCOMPARE(&logColumn(row.column), &row);
            ++number;
        }
        QCOMPARE(number, logFieldCount);
        QCOMPARE(captions,
            (QStringList {u"PI Code"_s, u"Date/Time"_s, u"Prop"_s, u"Freq"_s, u"Transmitter"_s, u"Country"_s,
                u"Notes"_s, u"RDS Name"_s, u"Power"_s, u"Dist"_s, u"FMList"_s, u"UID"_s}));
    }

    void theOlderLayoutHasTheFirstTen()
    {
        int number = 0;
        for (const LogColumn &row : logFields()) {
            QCOMPARE(row.inOlderLayout, number < 10);
            ++number;
        }
    }

    void everyFieldIsReadAndSetAlone()
    {
        const LogEntry filled = filledEntry();
        LogEntry copy;
        for (const LogColumn &row : logFields()) {
            const LogEntry before = copy;
            const FieldValue value = fieldValue(filled, *row.field);
            QVERIFY(fieldValue(copy, *row.field) != value);
            setFieldValue(copy, *row.field, value);
            for (const LogColumn &other : logFields()) {
                QCOMPARE(fieldValue(copy, *other.field) == fieldValue(before, *other.field),
                    other.field != row.field);
            }
        }
        QCOMPARE(copy, filled);
    }

    void theFieldsAreThoseOfTheEntry()
    {
        const LogEntry entry = filledEntry();
        QCOMPARE(std::get<QString>(fieldValue(entry, LogField::PiCode)), u"D3C3"_s);
        QCOMPARE(std::get<DateTime>(fieldValue(entry, LogField::DateTime)), entry.dateTime);
        QCOMPARE(std::get<QString>(fieldValue(entry, LogField::Notes)), u"a\r\nb\r\n\r\nc"_s);
        QCOMPARE(std::get<QString>(fieldValue(entry, LogField::FMList)), u"x=y#fml=none#"_s);
        QCOMPARE(std::get<QString>(fieldValue(entry, LogField::Uid)), u"4711"_s);
    }

    void aValueOfTheOtherKindIsRefused()
    {
        LogEntry entry = filledEntry();
        QVERIFY_THROWS_EXCEPTION(
            std::bad_variant_access, setFieldValue(entry, LogField::DateTime, u"12/06/2010"_s));
        QVERIFY_THROWS_EXCEPTION(std::bad_variant_access, setFieldValue(entry, LogField::Freq, DateTime {1}));
        QCOMPARE(entry, filledEntry());
    }

    void everyCellShowsItsField()
    {
        const LogEntry entry = filledEntry();
        QStringList cells;
        for (int column = 0; column < gridColumnCount; ++column) {
            cells += cellText(entry, static_cast<GridColumn>(column));
        }
        QCOMPARE(cells,
            (QStringList {u"12/06/2010 18:22:05"_s, u"D3C3"_s, u"87.6"_s, u"MDR_JUMP"_s, u"D"_s, u"Brocken"_s,
                u"812.4"_s, u"100"_s, u"a b  c"_s, u"Es"_s, u"None"_s, u"4711"_s}));
        QCOMPARE(entry.notes, u"a\r\nb\r\n\r\nc"_s);
    }

    void aLoneLineFeedInNotesStays()
    {
        LogEntry entry;
        entry.notes = u"a\nb\rc"_s;
        QCOMPARE(cellText(entry, GridColumn::Notes), u"a\nb\rc"_s);
    }
};

QTEST_GUILESS_MAIN(TestLogFields)
#include "tst_logfields.moc"
