#include "platform/numbers.h"
#include "stats/novelty.h"
#include "stats/randomlog.h"

#include <QTest>

#include <algorithm>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

LogEntry entryOf(const QString &pi, const QString &site, const QString &country, const QString &prop,
    const QString &dist, const CivilTime &time)
{
    LogEntry entry;
    entry.piCode = pi;
    entry.transmitter = site;
    entry.country = country;
    entry.prop = prop;
    entry.dist = dist;
    entry.dateTime = *fromCivil(time);
    return entry;
}

/// The marks of an entry once more, by looking at each other entry.
NoveltyMarks plainMarks(const Logbook &log, qint32 number)
{
    const LogEntry &one = log.entry(number);
    const auto distance = [](const LogEntry &entry) { return numeric(entry.dist).value_or(0); };
    const bool hasCountry = !one.country.isEmpty() && one.country != u"TBD";
    std::array<bool, noveltyMarkCount> holds {!one.piCode.isEmpty(), !one.transmitter.isEmpty(), hasCountry,
        hasCountry && !one.prop.isEmpty(), !one.prop.isEmpty() && distance(one) > 0,
        !one.piCode.isEmpty() || !one.rdsName.isEmpty()};
    for (qint32 i = 0; i < log.count() && !isDeleted(one); ++i) {
        const LogEntry &other = log.entry(i);
        const bool before = other.dateTime < one.dateTime || (other.dateTime == one.dateTime && i < number);
        if (!before || isDeleted(other)) {
            continue;
        }
        const bool sameSite = other.transmitter == one.transmitter && other.country == one.country;
        const bool sameLabel =
            other.piCode == one.piCode && (!one.piCode.isEmpty() || other.rdsName == one.rdsName);
        const std::array<bool, noveltyMarkCount> spoils {other.piCode == one.piCode, sameSite,
            other.country == one.country, other.country == one.country && other.prop == one.prop,
            other.prop == one.prop && distance(other) >= distance(one),
            sameSite && sameLabel && civil(other.dateTime).year == civil(one.dateTime).year};
        for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
            holds[mark] = holds[mark] && !spoils[mark];
        }
    }
    NoveltyMarks marks;
    for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
        marks.set(mark, holds[mark] && !isDeleted(one));
    }
    return marks;
}

QString textOf(const Novelty &novelty, const Logbook &log)
{
    QString text;
    for (qint32 i = 0; i < log.count(); ++i) {
        text += u"%1: %2\n"_s.arg(i).arg(shortText(novelty.marks(i)));
    }
    return text;
}

QString plainText(const Logbook &log)
{
    QString text;
    for (qint32 i = 0; i < log.count(); ++i) {
        text += u"%1: %2\n"_s.arg(i).arg(shortText(plainMarks(log, i)));
    }
    return text;
}

/// A change of one to four of the log's entries, or of its end.
LogChange randomChange(const Logbook &log, RandomEntries &random)
{
    LogChange change;
    const int kind = random.below(4);
    if (kind == 0 || log.count() < 4) {
        for (int i = random.below(3); i >= 0; --i) {
            change.added.push_back(random.next());
        }
    } else if (kind == 1) {
        for (qint32 i = log.count() - 1 - random.below(2); i < log.count(); ++i) {
            change.removed.push_back(log.entry(i));
        }
    } else {
        const qint32 number = random.below(log.count());
        change = LogChange::between(number, log.entry(number), random.next());
    }
    return change;
}

std::vector<qint32> concerned(const LogChange &change, qint32 before, qint32 after)
{
    std::vector<qint32> entries;
    for (const FieldChange &field : change.fields) {
        entries.push_back(field.entry);
    }
    for (qint32 i = std::min(before, after); i < std::max(before, after); ++i) {
        entries.push_back(i);
    }
    return entries;
}

} // namespace

class TestNovelty : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachReceptionIsNewByWhatCameBeforeIt()
    {
        Logbook log;
        const CivilTime june {2024, 6, 1, 12, 0, 0};
        log.AddEntry(entryOf(u"E211"_s, u"Granada"_s, u"E"_s, u"Es"_s, u"1700"_s, june));
        log.AddEntry(entryOf(u"E211"_s, u"Granada"_s, u"E"_s, u"Es"_s, u"1700"_s, {2024, 6, 2}));
        log.AddEntry(entryOf(u"E211"_s, u"Granada"_s, u"E"_s, u"Tropo"_s, u"1700"_s, {2025, 6, 2}));
        log.AddEntry(entryOf(u"E212"_s, u"Málaga"_s, u"E"_s, u"Es"_s, u"1800.5"_s, {2025, 6, 3}));
        log.AddEntry(entryOf(u"E212"_s, u"Málaga"_s, u"TBD"_s, u""_s, u"-1"_s, {2025, 6, 3}));
        // The same second as the first one, but later in the log.
        log.AddEntry(entryOf(u"E211"_s, u"Granada"_s, u"E"_s, u"Es"_s, u"1700"_s, june));
        log.AddEntry(entryOf(deletedPiCode.toString(), u"Kiev"_s, u"UKR"_s, u"Es"_s, u"2300"_s, {1999}));
        Novelty novelty;
        novelty.count(log);
        QCOMPARE(textOf(novelty, log),
            u"0: PI Site ITU Mode Far Year\n1: \n2: Mode Far Year\n3: PI Site Far Year\n4: Site Year\n5: \n"
            "6: \n"_s);
        QCOMPARE(novelty.marks(7), NoveltyMarks());
        QCOMPARE(novelty.marks(-1), NoveltyMarks());
        QCOMPARE(wordsOf(novelty.marks(2), log.entry(2)),
            QStringList({u"First of this country by Tropo"_s, u"Farthest so far by Tropo"_s,
                u"First of this station in 2025"_s}));
        QCOMPARE(badgeText(novelty.marks(0), log.entry(0)), u"New: country, farthest by Es, site, PI code"_s);
        QCOMPARE(badgeText(novelty.marks(1), log.entry(1)), QString());
        QCOMPARE(badgeText(novelty.marks(2), log.entry(2)),
            u"New: country by Tropo, farthest by Tropo, station in 2025"_s);
    }

    void anOlderReceptionTakesTheMarksOfTheLaterOnes()
    {
        Logbook log;
        log.AddEntry(entryOf(u"E211"_s, u"Granada"_s, u"E"_s, u"Es"_s, u"1700"_s, {2024, 6, 1}));
        Novelty novelty;
        novelty.count(log);
        log.AddEntry(entryOf(u"E211"_s, u"Granada"_s, u"E"_s, u"Es"_s, u"1701"_s, {2024, 5, 1}));
        novelty.update(log, std::array {1});
        QCOMPARE(textOf(novelty, log), u"0: \n1: PI Site ITU Mode Far Year\n"_s);
    }

    void whatIsKeptUpToDateIsWhatIsCountedAfresh_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 8; ++seed) {
            QTest::addRow("seed %u", seed) << seed;
        }
    }

    void whatIsKeptUpToDateIsWhatIsCountedAfresh()
    {
        QFETCH(quint32, seed);
        RandomEntries random(seed);
        Logbook log;
        Novelty kept;
        kept.count(log);
        std::vector<LogChange> done;
        for (int step = 0; step < 300; ++step) {
            const bool undo = !done.empty() && random.below(3) == 0;
            const LogChange change = undo ? done.back().inverse() : randomChange(log, random);
            const qint32 before = log.count();
            log.apply(change);
            if (undo) {
                done.pop_back();
            } else {
                done.push_back(change);
            }
            kept.update(log, concerned(change, before, log.count()));
            QCOMPARE(textOf(kept, log), plainText(log));
        }
        Novelty fresh;
        fresh.count(log);
        QCOMPARE(textOf(fresh, log), plainText(log));
    }

    void manyChangesAtOnceAreTakenInToo()
    {
        RandomEntries random(7);
        Logbook log;
        Novelty novelty;
        novelty.count(log);
        std::vector<qint32> added;
        for (qint32 i = 0; i < 200; ++i) {
            log.AddEntry(random.next());
            added.push_back(i);
        }
        novelty.update(log, added);
        QCOMPARE(textOf(novelty, log), plainText(log));
    }

    void whatCameNewIsCounted()
    {
        Logbook log;
        Novelty novelty;
        log.AddEntry(entryOf(u"E211"_s, u"Granada"_s, u"E"_s, u"Es"_s, {}, {2024, 6, 1}));
        log.AddEntry(entryOf(u"E211"_s, u"Granada"_s, u"E"_s, u"Tropo"_s, {}, {2024, 6, 1}));
        novelty.count(log);
        novelty.remember();
        QCOMPARE(newThingsText(novelty.newSinceRemembered()), QString());
        // Older ones are as new to the log as later ones.
        log.AddEntry(entryOf(u"D3C3"_s, u"Brocken"_s, u"D"_s, u"Es"_s, {}, {1999, 6, 1}));
        log.AddEntry(entryOf(u"D3C3"_s, u"Brocken"_s, u"D"_s, u"MS"_s, {}, {2024, 6, 1}));
        log.AddEntry(entryOf(u"E211"_s, u"Málaga"_s, u"E"_s, u"MS"_s, {}, {2024, 6, 1}));
        novelty.update(log, std::array {2, 3, 4});
        QVERIFY((novelty.newSinceRemembered() == NewThings {1, 2, 1, 1}));
        QCOMPARE(newThingsText({1, 2, 1, 1}),
            u"1 new PI code, 2 new sites, 1 new country, 1 country new in its mode"_s);
        QCOMPARE(newThingsText({0, 3, 2, 0}), u"3 new sites, 2 new countries"_s);
        // The name of the known site is mended: that is one site more and no site less.
        log.apply(LogChange::between(
            0, log.entry(0), entryOf(u"E211"_s, u"Parapanda"_s, u"E"_s, u"Es"_s, {}, {2024, 6, 1})));
        novelty.update(log, std::array {0});
        QVERIFY((novelty.newSinceRemembered() == NewThings {1, 3, 1, 1}));
    }

    void anotherLogIsCountedFromItsBeginning()
    {
        RandomEntries random(5);
        Logbook first;
        Logbook second;
        for (int i = 0; i < 40; ++i) {
            first.AddEntry(random.next());
            second.AddEntry(random.next());
        }
        Novelty novelty;
        novelty.count(first);
        novelty.count(second);
        QCOMPARE(textOf(novelty, second), plainText(second));
        second.AddEntry(random.next());
        novelty.update(second, std::array {40});
        QCOMPARE(textOf(novelty, second), plainText(second));
    }
};

QTEST_GUILESS_MAIN(TestNovelty)
#include "tst_novelty.moc"
