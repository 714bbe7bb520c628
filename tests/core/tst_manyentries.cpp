#include "core/manyentries.h"
#include "core/typedfields.h"
#include "platform/datetime.h"

#include <QTest>

#include <numeric>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

Logbook logOf(const QStringList &values, QString LogEntry::*field)
{
    Logbook log;
    qint64 second = 0;
    for (const QString &value : values) {
        LogEntry entry {u"D3C3"_s, {second++}, u"Es"_s, u"87.6"_s, u"Site"_s, u"D"_s, {}, u"NAME"_s, u"10"_s,
            u"100"_s, {}, {}};
        entry.*field = value;
        log.AddEntry(entry);
    }
    return log;
}

std::vector<qint32> allOf(const Logbook &log)
{
    std::vector<qint32> numbers(static_cast<std::size_t>(log.count()));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

// The log after the change.
Logbook changed(Logbook log, const LogChange &change)
{
    log.apply(change);
    return log;
}

QString effectOn(const QStringList &values, const NewValue &value)
{
    const Logbook log = logOf(values, logField(value.field).text);
    return effectOfMany(editMany(log, allOf(log), {&value, 1}), value);
}

} // namespace

/// What is done to many receptions at once.
class TestManyEntries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aValueIsKeptAsTheFormKeepsIt_data()
    {
        QTest::addColumn<int>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        const auto row = [](const char *name, LogField field, const QString &typed, const QString &kept) {
            QTest::newRow(name) << static_cast<int>(field) << typed << kept;
        };
        row("PI code", LogField::PiCode, u" d3c3 "_s, u"D3C3"_s);
        row("RDS name", LogField::RdsName, u"rne clas"_s, u"rne_clas"_s);
        row("power", LogField::Power, u"0.5k "_s, u"0.5K "_s);
        row("frequency", LogField::Freq, u"87,6"_s, u"87,6"_s);
        row("country on one line", LogField::Country, u"a\r\nb\nc"_s, u"a b c"_s);
        row("transmitter", LogField::Transmitter, u" Muxía "_s, u" Muxía "_s);
        row("notes of a file", LogField::Notes, u"a\r\nb"_s, u"a\r\nb"_s);
        row("notes of a text box", LogField::Notes, u"a\u2029b\u2028c\nd"_s, u"a\r\nb\r\nc\r\nd"_s);
    }

    void aValueIsKeptAsTheFormKeepsIt()
    {
        QFETCH(int, field);
        QFETCH(QString, typed);
        QFETCH(QString, kept);
        const auto which = static_cast<LogField>(field);
        QCOMPARE(typedField(which, typed), kept);
        const Logbook log = logOf({u"x"_s, u"y"_s}, logField(which).text);
        const NewValue value {which, typed};
        const Logbook after = changed(log, editMany(log, allOf(log), {&value, 1}));
        for (const LogEntry &entry : after) {
            QCOMPARE(entry.*logField(which).text, kept);
        }
    }

    void onlyTheChosenOnesChangeAndNothingElseOfThem()
    {
        const Logbook log = logOf({u"Es"_s, {}, u"Es"_s, u"Tropo"_s}, &LogEntry::prop);
        const std::vector<NewValue> values {{LogField::Prop, u"Tropo"_s}, {LogField::Country, u"E"_s}};
        const std::vector<qint32> chosen {3, 0};
        const LogChange change = editMany(log, chosen, values);
        QCOMPARE(change.fields.size(), std::size_t(3));
        const Logbook after = changed(log, change);
        for (qint32 number = 0; number < log.count(); ++number) {
            LogEntry wanted = log.entry(number);
            if (number == 0 || number == 3) {
                wanted.prop = u"Tropo"_s;
                wanted.country = u"E"_s;
            }
            QVERIFY(after.entry(number) == wanted);
        }
        const Logbook before = changed(after, change.inverse());
        QVERIFY(std::equal(before.begin(), before.end(), log.begin(), log.end()));
    }

    void whatIsSoAlreadyAndWhatIsGoneIsLeftOut()
    {
        const Logbook log = logOf({u"D3C3"_s, u"delete"_s, u"D3C4"_s}, &LogEntry::piCode);
        const NewValue value {LogField::PiCode, u"d3c3"_s};
        const std::vector<qint32> chosen {-1, 0, 1, 2, 3};
        const LogChange change = editMany(log, chosen, {&value, 1});
        QCOMPARE(change.fields.size(), std::size_t(1));
        QCOMPARE(change.fields.front().entry, 2);
        QVERIFY(editMany(log, std::vector<qint32> {0}, {&value, 1}).isEmpty());
        QVERIFY(editMany(log, {}, {&value, 1}).isEmpty());
        QVERIFY(editMany(log, allOf(log), {}).isEmpty());
    }

    void notesAreReplacedOrGetALineMore()
    {
        const Logbook log = logOf({{}, u"jingle"_s}, &LogEntry::notes);
        const NewValue replaced {LogField::Notes, u"strong"_s};
        QCOMPARE(changed(log, editMany(log, allOf(log), {&replaced, 1})).entry(1).notes, u"strong"_s);
        const NewValue appended {LogField::Notes, u"strong\nfading"_s, true};
        const Logbook after = changed(log, editMany(log, allOf(log), {&appended, 1}));
        QCOMPARE(after.entry(0).notes, u"strong\r\nfading"_s);
        QCOMPARE(after.entry(1).notes, u"jingle\r\nstrong\r\nfading"_s);
        const NewValue nothing {LogField::Notes, {}, true};
        QVERIFY(editMany(log, allOf(log), {&nothing, 1}).isEmpty());
        const NewValue cleared {LogField::Notes, {}};
        QCOMPARE(changed(log, editMany(log, allOf(log), {&cleared, 1})).entry(1).notes, QString());
    }

    void theEffectNamesWhatBecomesWhat_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<int>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("appended");
        QTest::addColumn<QString>("effect");
        const auto row = [](const char *name, const QStringList &before, const NewValue &value,
                             const QString &effect) {
            QTest::newRow(name) << before << static_cast<int>(value.field) << value.text << value.appended
                                << effect;
        };
        row("two values", QStringList(7) + QStringList(30, u"Es"_s), {LogField::Prop, u"Tropo"_s},
            u"Prop of 37 receptions: Es (30), empty (7) → Tropo"_s);
        row("one", {u"Es"_s, u"Tropo"_s}, {LogField::Prop, u"Tropo"_s},
            u"Prop of 1 reception: Es (1) → Tropo"_s);
        row("to nothing", {u"Es"_s}, {LogField::Prop, {}}, u"Prop of 1 reception: Es (1) → empty"_s);
        row("none", {u"Es"_s}, {LogField::Prop, u"Es"_s}, {});
        row("as it is kept", {u"X"_s}, {LogField::RdsName, u"rne clas"_s},
            u"RDS Name of 1 reception: X (1) → rne_clas"_s);
        row("as common as others", {u"b"_s, u"a"_s, u"c"_s, u"c"_s}, {LogField::Uid, u"1"_s},
            u"UID of 4 receptions: c (2), b (1), a (1) → 1"_s);
        row("many values", {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"6"_s}, {LogField::Freq, u"9"_s},
            u"Freq of 7 receptions: 6 (2), 1 (1), 2 (1), 3 (1), others (2) → 9"_s);
        row("a long one", {QString(33, u'x')}, {LogField::Transmitter, QString(32, u'y')},
            u"Transmitter of 1 reception: "_s + QString(31, u'x') + u"… (1) → "_s + QString(32, u'y'));
        row("lines", {u"a\r\nb\tc"_s}, {LogField::Notes, u"d\ne"_s},
            u"Notes of 1 reception: a b c (1) → d e"_s);
        row("appended", {u"a"_s, {}}, {LogField::Notes, u"strong"_s, true},
            u"Notes of 2 receptions: strong appended"_s);
    }

    void theEffectNamesWhatBecomesWhat()
    {
        QFETCH(QStringList, before);
        QFETCH(int, field);
        QFETCH(QString, text);
        QFETCH(bool, appended);
        QFETCH(QString, effect);
        QCOMPARE(effectOn(before, {static_cast<LogField>(field), text, appended}), effect);
    }

    void theEffectIsBoundedWhateverTheLogHolds()
    {
        QStringList before;
        for (int i = 0; i < 1000; ++i) {
            before += QString(1000, QChar(0x100 + i));
        }
        QVERIFY(effectOn(before, {LogField::Notes, QString(100000, u'x')}).size() < 300);
    }

    void deletionMarksEachOnce()
    {
        const Logbook log = logOf({u"D3C3"_s, u"delete"_s, u"D3C4"_s}, &LogEntry::piCode);
        const LogChange change = deleteMany(log, std::vector<qint32> {2, 1, 3});
        QCOMPARE(change.fields.size(), std::size_t(1));
        const Logbook after = changed(log, change);
        QVERIFY(!isDeleted(after.entry(0)));
        QVERIFY(isDeleted(after.entry(2)));
        QVERIFY(deleteMany(log, std::vector<qint32> {1}).isEmpty());
    }

    void countsAreWords()
    {
        QCOMPARE(receptionCount(0), u"0 receptions"_s);
        QCOMPARE(receptionCount(1), u"1 reception"_s);
        QCOMPARE(receptionCount(32498), u"32498 receptions"_s);
    }

    void rowsAreCopiedAsTheGridShowsThem()
    {
        Logbook log = logOf({u"two\r\nlines"_s, u"a\ttab\u2029and\x1f\nmore"_s}, &LogEntry::notes);
        LogRows rows(log, MonthNames());
        rows.refill();
        rows.setTyped(0, GridColumn::Freq, u"87,6\n"_s);
        const std::vector<GridColumn> columns {GridColumn::Notes, GridColumn::DateTime, GridColumn::Freq};
        QCOMPARE(tabSeparated(rows, std::vector<qint32> {1, 0}, columns),
            u"Notes\tDate/Time\tFreq\n"
            "a tab and  more\t01/01/1970 00:00:01\t87.6\n"
            "two lines\t01/01/1970 00:00:00\t87,6 \n"_s);
        QCOMPARE(tabSeparated(rows, {}, columns), u"Notes\tDate/Time\tFreq\n"_s);
        // What begins with a quotation mark is in quotation marks, so that a paste gives it back as it is.
        rows.setTyped(0, GridColumn::Freq, u"\"a\" b"_s);
        rows.setTyped(0, GridColumn::Notes, u"a \"b\""_s);
        QCOMPARE(tabSeparated(rows, std::vector<qint32> {0}, columns),
            u"Notes\tDate/Time\tFreq\na \"b\"\t01/01/1970 00:00:00\t\"\"\"a\"\" b\"\n"_s);
    }
};

QTEST_GUILESS_MAIN(TestManyEntries)
#include "tst_manyentries.moc"
