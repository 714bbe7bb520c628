#include "core/logbook.h"
#include "core/logbooklines.h"
#include "core/logchange.h"
#include "platform/runtimeerror.h"
#include "support/changedlog.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

LogEntry numbered(int number)
{
    return {QString::number(0x1000 + number, 16).toUpper(), {number}, u"Es"_s, u"87.6"_s,
        u"Site %1"_s.arg(number), u"D"_s, u"note %1"_s.arg(number), u"NAME"_s, u"10"_s, {}, {}, u"1"_s};
}

Logbook numberedLog(int count)
{
    Logbook log;
    for (int i = 0; i < count; ++i) {
        log.AddEntry(numbered(i));
    }
    return log;
}

std::vector<LogEntry> entriesOf(const Logbook &log)
{
    return {log.begin(), log.end()};
}

} // namespace

class TestLogChange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatDoesNotDifferIsNoChange()
    {
        QVERIFY(LogChange().isEmpty());
        QVERIFY(LogChange::between(3, numbered(3), numbered(3)).isEmpty());
        LogChange change;
        change.setField(3, numbered(3), LogField::Freq, u"87.6"_s);
        QVERIFY(change.isEmpty());
    }

    void eachFieldThatDiffersIsChanged_data()
    {
        QTest::addColumn<int>("field");
        for (const LogColumn &row : logFields()) {
            QTest::newRow(qPrintable(row.caption.toString())) << static_cast<int>(*row.field);
        }
    }

    void eachFieldThatDiffersIsChanged()
    {
        QFETCH(int, field);
        const auto changed = static_cast<LogField>(field);
        const LogEntry before = numbered(1);
        LogEntry after = before;
        const FieldValue value = logField(changed).text ? FieldValue(u"other"_s) : FieldValue(DateTime {77});
        setFieldValue(after, changed, value);
        const LogChange change = LogChange::between(1, before, after);
        QVERIFY(
            change.fields == (std::vector<FieldChange> {{1, changed, fieldValue(before, changed), value}}));
        Logbook log = numberedLog(3);
        log.apply(change);
        QCOMPARE(log.entry(1), after);
        log.apply(change.inverse());
        QVERIFY(entriesOf(log) == entriesOf(numberedLog(3)));
    }

    void theInverseOfTheInverseIsTheChange()
    {
        LogEntry other = numbered(8);
        other.dateTime = {5};
        LogChange change = LogChange::between(4, numbered(7), other);
        QVERIFY(change.fields.size() > 2);
        change.added = {numbered(1), numbered(2)};
        QVERIFY(change.inverse() != change);
        QVERIFY(change.inverse().inverse() == change);
        QCOMPARE(change.inverse().removed.size(), std::size_t(2));
        QVERIFY(change.inverse().added.empty());
    }

    void theLastEntriesAreTakenAway()
    {
        Logbook log = numberedLog(3);
        LogChange change;
        change.added = {numbered(3), numbered(4)};
        log.apply(change);
        QVERIFY(entriesOf(log) == entriesOf(numberedLog(5)));
        log.apply(change.inverse());
        QVERIFY(entriesOf(log) == entriesOf(numberedLog(3)));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, static_cast<void>(log.entry(3)));
        QCOMPARE(log.FindEntry(u"1003", {3}, u"NAME", u"87.6"), -1);
    }

    void anUndoneAddLeavesNoDistInItsSlot()
    {
        Logbook log;
        LogEntry far = numbered(0);
        far.dist = u"812.4"_s;
        const LogChange adding = LogChange::addition(far);
        log.apply(adding);
        log.apply(adding.inverse());
        log.AddEntry(numbered(1));
        QCOMPARE(log.entry(0), numbered(1));
        QCOMPARE(log.entry(0).dist, QString());
    }

    void aChangeOfNoEntryIsRefused()
    {
        Logbook log = numberedLog(2);
        for (const qint32 number : {-1, 2}) {
            LogChange change;
            change.setField(number, numbered(0), LogField::Freq, u"99"_s);
            QVERIFY_THROWS_EXCEPTION(RuntimeError, log.apply(change));
        }
        LogChange tooMany;
        tooMany.removed.resize(3);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, log.apply(tooMany));
        QCOMPARE(log.count(), 0);
    }

    void anAdditionThatFillsTheLogIsTakenBack()
    {
        Logbook log = numberedLog(32'497);
        const LogChange change = LogChange::addition(numbered(32'497));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, log.apply(change));
        QCOMPARE(log.count(), 32'498);
        log.apply(change.inverse());
        QCOMPARE(log.count(), 32'497);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, log.apply(change));
        QCOMPARE(log.entry(32'497), numbered(32'497));
    }

    /// Random changes made, taken back and made again, compared with the entries of each state.
    void aThousandChangesComeBack()
    {
        QRandomGenerator random(20100612);
        Logbook log = numberedLog(20);
        std::vector<LogChange> changes;
        std::vector<std::vector<LogEntry>> states {entriesOf(log)};
        for (int i = 0; i < 1000; ++i) {
            LogChange change;
            for (int field = random.bounded(4); field > 0; --field) {
                const qint32 number = random.bounded(log.count());
                const auto &row = logFields()[static_cast<std::size_t>(random.bounded(logFieldCount))];
                const bool twice = std::ranges::any_of(change.fields,
                    [&](const FieldChange &made) { return made.entry == number && made.field == row.field; });
                if (!twice) {
                    change.setField(number, log.entry(number), *row.field,
                        row.text ? FieldValue(QString::number(random.bounded(3)))
                                 : FieldValue(DateTime {random.bounded(3)}));
                }
            }
            for (int added = random.bounded(3); added > 0; --added) {
                change.added.push_back(numbered(i));
            }
            log.apply(change);
            changes.push_back(change);
            states.push_back(entriesOf(log));
        }
        for (std::size_t i = changes.size(); i > 0; --i) {
            log.apply(changes[i - 1].inverse());
            QVERIFY(entriesOf(log) == states[i - 1]);
        }
        QCOMPARE(logbookBytes(log, CodePage()), logbookBytes(numberedLog(20), CodePage()));
        for (const LogChange &change : changes) {
            log.apply(change);
        }
        QVERIFY(entriesOf(log) == states.back());
    }
};

QTEST_GUILESS_MAIN(TestLogChange)
#include "tst_logchange.moc"
