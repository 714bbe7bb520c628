#include "core/logbook.h"
#include "platform/runtimeerror.h"
#include "support/changedlog.h"

#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

const DateTime noon = *fromCivil({2010, 6, 12, 12, 0, 0});

LogEntry entryOf(const QString &piCode, DateTime dateTime = noon, const QString &freq = u"87.6"_s,
    const QString &rdsName = u"NAME"_s)
{
    LogEntry entry;
    entry.piCode = piCode;
    entry.dateTime = dateTime;
    entry.freq = freq;
    entry.rdsName = rdsName;
    return entry;
}

void add(Logbook &log, int count)
{
    for (int i = 0; i < count; ++i) {
        log.AddEntry(entryOf(QString::number(i)));
    }
}

} // namespace

class TestLogbook : public QObject
{
    Q_OBJECT

    static ErrorName errorOfAdding(Logbook &log, QString &text)
    {
        try {
            log.AddEntry(entryOf(u"LAST"_s));
        } catch (const RuntimeError &error) {
            text = error.text();
            return error.name();
        }
        qFatal("nothing was thrown");
        return {};
    }

private Q_SLOTS:
    void isEmptyAtFirst()
    {
        const Logbook log;
        QCOMPARE(log.count(), 0);
        QCOMPARE(log.capacity(), qint16(500));
        QVERIFY(log.begin() == log.end());
        QVERIFY_THROWS_EXCEPTION(RuntimeError, static_cast<void>(log.entry(0)));
    }

    void keepsTheOrderOfAddition()
    {
        Logbook log;
        add(log, 3000);
        QCOMPARE(log.count(), 3000);
        int i = 0;
        for (const LogEntry &entry : log) {
            QCOMPARE(entry.piCode, QString::number(i));
            QCOMPARE(&log.entry(i), &entry);
            ++i;
        }
        QCOMPARE(i, 3000);
    }

    void storesEveryField()
    {
        const LogEntry entry {u"D3C3"_s, noon, u"Es"_s, u"87.6"_s, u"Brocken"_s, u"D"_s, u"a\r\nb"_s,
            u"NAME"_s, u"10"_s, u"812.4"_s, u"fml=sent#"_s, u"4711"_s};
        Logbook log;
        log.AddEntry(entry);
        QCOMPARE(log.entry(0), entry);
    }

    void growsAtTheStatedCounts_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("capacity");
        QTest::newRow("before the first growth") << 497 << 500;
        QTest::newRow("first growth") << 498 << 2500;
        QTest::newRow("before the second growth") << 2497 << 2500;
        QTest::newRow("second growth") << 2498 << 4500;
        QTest::newRow("before the last growth") << 30'497 << 30'500;
        QTest::newRow("last growth") << 30'498 << 32'500;
        QTest::newRow("the last entry without an error") << 32'497 << 32'500;
    }

    void growsAtTheStatedCounts()
    {
        QFETCH(int, count);
        QFETCH(int, capacity);
        Logbook log;
        add(log, count);
        QCOMPARE(log.count(), count);
        QCOMPARE(int(log.capacity()), capacity);
    }

    void tellsHowManyMoreItTakes()
    {
        Logbook log;
        QCOMPARE(log.room(), 32'497);
        add(log, 600);
        QCOMPARE(log.room(), 31'897);
        add(log, 31'897);
        QCOMPARE(log.room(), 0);
        QString text;
        QCOMPARE(errorOfAdding(log, text), ErrorName::Overflow);
        QCOMPARE(log.room(), 0);
    }

    void overflowsAtItsLastSize()
    {
        Logbook log;
        add(log, 32'497);
        QString text;
        QCOMPARE(errorOfAdding(log, text), ErrorName::Overflow);
        QCOMPARE(text,
            u"Run-time error: Overflow\nThe log is full: with entry 32498 it has reached the size it can "
            u"grow "
            "to. Start a new logbook file in the setup"_s);
        QCOMPARE(log.count(), 32'498);
        QCOMPARE(log.entry(32'497).piCode, u"LAST"_s);
        QCOMPARE(log.entry(32'496).piCode, u"32496"_s);
        QCOMPARE(int(log.capacity()), 32'500);
    }

    void theSlotsBehindTheOverflowAreUsedAndThenItIsFull()
    {
        Logbook log;
        add(log, 32'497);
        QString text;
        for (int count = 32'498; count <= 32'501; ++count) {
            QCOMPARE(errorOfAdding(log, text), ErrorName::Overflow);
            QCOMPARE(log.count(), count);
            QVERIFY(text.contains(QString::number(count)));
        }
        QCOMPARE(errorOfAdding(log, text), ErrorName::SubscriptOutOfRange);
        QCOMPARE(text,
            u"Run-time error: Subscript out of range\nThe log is full: it holds 32501 entries and has room "
            u"for "
            "no more"_s);
        QCOMPARE(log.count(), 32'501);
        QCOMPARE(log.entry(32'500).piCode, u"LAST"_s);
    }

    void noEntryBeyondTheLog()
    {
        Logbook log;
        add(log, 2);
        for (const qint32 index : {-1, 2, 500, 40'000, std::numeric_limits<qint32>::max()}) {
            try {
                Q_UNUSED(log.entry(index))
                QFAIL("nothing was thrown");
            } catch (const RuntimeError &error) {
                QCOMPARE(error.name(), ErrorName::SubscriptOutOfRange);
                QCOMPARE(error.doing(), u"There is no entry number %1; there are 2 of them"_s.arg(index));
            }
        }
    }

    void eachEntryHasItsOwnDistance()
    {
        Logbook log;
        LogEntry entry = entryOf(u"A"_s);
        entry.dist = u"812.4"_s;
        log.AddEntry(entry);
        log.AddEntry(entryOf(u"B"_s));
        QCOMPARE(log.entry(0).dist, u"812.4"_s);
        QCOMPARE(log.entry(1).dist, QString());
    }

    void entriesAreChangedInPlace()
    {
        Logbook log;
        add(log, 2);
        changeEntry(log, 1, [](LogEntry &entry) { entry.piCode = deletedPiCode.toString(); });
        QVERIFY(isDeleted(log.entry(1)));
        QCOMPARE(log.count(), 2);
    }

    void findsTheFirstEntryByItsRule_data()
    {
        QTest::addColumn<QString>("piCode");
        QTest::addColumn<qint64>("second");
        QTest::addColumn<QString>("rdsName");
        QTest::addColumn<QString>("freq");
        QTest::addColumn<qint32>("found");
        QTest::newRow("PI and name") << u"D3C3"_s << qint64(0) << u"MDR"_s << u"87.6"_s << 1;
        QTest::newRow("PI alone") << u"D3C3"_s << qint64(0) << u"?"_s << u"87.6"_s << 1;
        QTest::newRow("name alone") << u"?"_s << qint64(0) << u"MDR"_s << u"87.6"_s << 1;
        QTest::newRow("name finds a lower one") << u"D3C3"_s << qint64(0) << u"FIRST"_s << u"87.6"_s << 0;
        QTest::newRow("neither") << u"?"_s << qint64(0) << u"?"_s << u"87.6"_s << -1;
        QTest::newRow("case of the PI") << u"d3c3"_s << qint64(0) << u"?"_s << u"87.6"_s << -1;
        QTest::newRow("case of the name") << u"?"_s << qint64(0) << u"mdr"_s << u"87.6"_s << -1;
        QTest::newRow("PI is no substring") << u"D3"_s << qint64(0) << u"?"_s << u"87.6"_s << -1;
        QTest::newRow("freq as text") << u"D3C3"_s << qint64(0) << u"MDR"_s << u"87.60"_s << 3;
        QTest::newRow("other freq") << u"D3C3"_s << qint64(0) << u"MDR"_s << u"87.7"_s << -1;
        QTest::newRow("a second later") << u"D3C3"_s << qint64(1) << u"MDR"_s << u"87.6"_s << -1;
        QTest::newRow("both empty") << u""_s << qint64(60) << u""_s << u""_s << 4;
    }

    void findsTheFirstEntryByItsRule()
    {
        QFETCH(QString, piCode);
        QFETCH(qint64, second);
        QFETCH(QString, rdsName);
        QFETCH(QString, freq);
        QFETCH(qint32, found);
        Logbook log;
        QCOMPARE(log.FindEntry(u"", DateTime {}, u"", u""), -1);
        log.AddEntry(entryOf(u"D200"_s, noon, u"87.6"_s, u"FIRST"_s));
        log.AddEntry(entryOf(u"D3C3"_s, noon, u"87.6"_s, u"MDR"_s));
        log.AddEntry(entryOf(u"D3C3"_s, noon, u"87.6"_s, u"MDR"_s));
        log.AddEntry(entryOf(u"D3C3"_s, noon, u"87.60"_s, u"MDR"_s));
        log.AddEntry(entryOf(u""_s, DateTime {noon.seconds + 60}, u""_s, u""_s));
        QCOMPARE(log.FindEntry(piCode, DateTime {noon.seconds + second}, rdsName, freq), found);
    }

    void doesNotFindInUnusedSlots()
    {
        Logbook log;
        QCOMPARE(log.FindEntry(u"", DateTime {}, u"", u""), -1);
        add(log, 1);
        QCOMPARE(log.FindEntry(u"", DateTime {}, u"", u""), -1);
    }
};

QTEST_GUILESS_MAIN(TestLogbook)
#include "tst_logbook.moc"
