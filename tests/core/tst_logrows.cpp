#include "core/genericorder.h"
#include "core/logrows.h"
#include "platform/runtimeerror.h"
#include "support/changedlog.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

using Rows = std::vector<qint32>;

LogEntry entryAt(const QString &piCode, int hour)
{
    LogEntry entry;
    entry.piCode = piCode;
    entry.dateTime = *fromCivil({2010, 6, 12, hour, 0, 0});
    return entry;
}

MonthNames months()
{
    return MonthNames::of(QLocale::c());
}

Rows copyOf(std::span<const qint32> rows)
{
    return {rows.begin(), rows.end()};
}

QStringList piCodes(const LogRows &rows)
{
    QStringList codes;
    for (const qint32 entry : rows.shown()) {
        codes += rows.text(entry, GridColumn::PiCode);
    }
    return codes;
}

// Shows the rows as a window does: it knows only what it is told.
class Watcher : public LogRowsWatcher
{
public:
    // Whose texts it shows; without rows it shows none.
    explicit Watcher(const LogRows *rows = nullptr)
        : m_rows(rows)
    {
    }
    void rowsChanging(std::span<const qint32> before, std::span<const qint32> after) override
    {
        good = good && copyOf(before) == shown && !changing;
        changing = true;
        m_before = std::exchange(shown, copyOf(after));
    }
    void rowsChanged() override
    {
        good = good && changing;
        changing = false;
        // Rows that come or go leave the others as they are; all else is shown anew.
        const auto common = std::ranges::mismatch(m_before, shown).in1 - m_before.begin();
        const auto difference = static_cast<std::ptrdiff_t>(shown.size()) - std::ssize(m_before);
        const auto behind = common + std::max<std::ptrdiff_t>(-difference, 0);
        const auto behindNow = common + std::max<std::ptrdiff_t>(difference, 0);
        if (!std::equal(m_before.begin() + behind, m_before.end(), shown.begin() + behindNow, shown.end())) {
            m_texts.clear();
        } else if (difference < 0) {
            m_texts.erase(m_texts.begin() + common, m_texts.begin() + behind);
        } else {
            m_texts.insert(m_texts.begin() + common, static_cast<std::size_t>(difference), QString());
        }
        m_texts.resize(shown.size());
        for (std::size_t row = 0; row < shown.size(); ++row) {
            if (m_texts[row].isNull()) {
                m_texts[row] = textOf(shown[row]);
            }
        }
    }
    void cellsChanged(int firstRow, int lastRow) override
    {
        good = good && !changing && firstRow >= 0 && firstRow <= lastRow && lastRow < int(shown.size());
        cells.emplace_back(firstRow, lastRow);
        for (int row = firstRow; row <= lastRow; ++row) {
            m_texts[static_cast<std::size_t>(row)] = textOf(shown[static_cast<std::size_t>(row)]);
        }
    }
    // Whether every row still reads as it was last told.
    [[nodiscard]] bool isCurrent() const
    {
        return std::ranges::equal(shown, m_texts, {}, [this](qint32 entry) { return textOf(entry); });
    }

    Rows shown;
    std::vector<std::pair<int, int>> cells;
    bool changing = false;
    bool good = true;

private:
    [[nodiscard]] QString textOf(qint32 entry) const
    {
        QString text(u' ');
        for (int column = 0; m_rows && column < gridColumnCount; ++column) {
            text += m_rows->text(entry, static_cast<GridColumn>(column)) + u'|';
        }
        return text;
    }

    const LogRows *m_rows;
    Rows m_before;
    std::vector<QString> m_texts;
};

// The rows once more, as plainly as they can be told: every order is a full sort, nothing is remembered but
// what was typed.
class PlainRows
{
public:
    explicit PlainRows(const Logbook &log)
        : m_log(log)
    {
    }

    [[nodiscard]] Rows inTime() const
    {
        Rows rows(static_cast<std::size_t>(m_log.count()));
        std::iota(rows.begin(), rows.end(), 0);
        std::ranges::stable_sort(rows, [this](qint32 left, qint32 right) {
            return m_log.entry(left).dateTime < m_log.entry(right).dateTime;
        });
        return rows;
    }

    [[nodiscard]] QString text(qint32 entry, GridColumn column) const
    {
        const auto found = typed.find({entry, column});
        return found == typed.end() ? cellText(m_log.entry(entry), column) : found->second;
    }

    [[nodiscard]] Rows sorted(Rows rows, LogRows::Sorting by) const
    {
        std::ranges::stable_sort(rows, [&](qint32 left, qint32 right) {
            const qint32 first = by.descending ? right : left;
            const qint32 second = by.descending ? left : right;
            if (by.column == GridColumn::DateTime) {
                return toDateTime(text(first, by.column), months(), {})
                    < toDateTime(text(second, by.column), months(), {});
            }
            return genericOrder(text(first, by.column), text(second, by.column)) < 0;
        });
        return rows;
    }

    [[nodiscard]] Rows filtered(Rows rows) const
    {
        std::erase_if(rows, [this](qint32 entry) { return filter && !filter(m_log.entry(entry), entry); });
        return rows;
    }

    void refill()
    {
        typed.clear();
        sorting.reset();
        all = inTime();
        order = all;
    }

    void sortBy(std::optional<LogRows::Sorting> by)
    {
        base = order;
        sorting = by;
        order = by ? sorted(order, *by) : all;
    }

    void restore()
    {
        all = inTime();
        if (!sorting) {
            order = all;
            return;
        }
        // What was there before the sorting, and then what is new.
        Rows rows = base;
        std::erase_if(rows, [this](qint32 entry) { return entry >= m_log.count(); });
        for (auto entry = static_cast<qint32>(rows.size()); entry < m_log.count(); ++entry) {
            rows.push_back(entry);
        }
        order = sorted(rows, *sorting);
    }

    void forget(qint32 entry)
    {
        std::erase_if(typed, [entry](const auto &cell) { return cell.first.first == entry; });
    }

    std::map<std::pair<qint32, GridColumn>, QString> typed;
    Rows all;
    Rows base;
    Rows order;
    std::optional<LogRows::Sorting> sorting;
    LogRows::Filter filter;

private:
    const Logbook &m_log;
};

// Commands at random over a log and its rows, as a document and its window give them.
class Commands
{
public:
    Commands(quint32 seed, int entries)
        : m_random(seed)
    {
        for (int i = 0; i < entries; ++i) {
            m_log.AddEntry(randomEntry());
        }
        m_rows.setWatcher(&m_watcher);
        m_rows.refill();
        m_plain.refill();
    }

    void step()
    {
        switch (m_random.bounded(12)) {
        case 0:
        case 1:
            add(1);
            break;
        case 2:
            add(m_random.bounded(80));
            break;
        case 3:
        case 4:
        case 5:
            update(1);
            break;
        case 6:
            update(m_random.bounded(80));
            break;
        case 7:
        case 8:
            undo();
            break;
        case 9:
            sort();
            break;
        case 10:
            filter();
            break;
        default:
            type();
        }
    }

    // What differs from the plain rows; empty when nothing does.
    [[nodiscard]] QString difference() const
    {
        if (copyOf(m_rows.all()) != m_plain.all) {
            return u"all"_s;
        }
        if (copyOf(m_rows.sorted()) != m_plain.order) {
            return u"sorted"_s;
        }
        if (copyOf(m_rows.shown()) != m_plain.filtered(m_plain.order)) {
            return u"shown"_s;
        }
        if (m_watcher.shown != copyOf(m_rows.shown()) || !m_watcher.good || m_watcher.changing) {
            return u"watcher"_s;
        }
        if (!m_watcher.isCurrent()) {
            return u"cells that were not told"_s;
        }
        for (std::size_t row = 0; row < m_rows.shown().size(); ++row) {
            const qint32 entry = m_rows.shown()[row];
            const auto column = static_cast<GridColumn>(row % gridColumnCount);
            if (m_rows.text(entry, column) != m_plain.text(entry, column)
                || (row % 16 == 0 && m_rows.rowOf(entry) != static_cast<int>(row))) {
                return u"row %1"_s.arg(row);
            }
        }
        return {};
    }

private:
    LogEntry randomEntry()
    {
        const auto text = [this](int most) { return QString::number(m_random.bounded(most)); };
        LogEntry entry;
        entry.dateTime = {qint64(86'400) * m_random.bounded(30)};
        entry.piCode = m_random.bounded(8) == 0 ? deletedPiCode.toString() : text(9);
        entry.freq = text(5);
        entry.rdsName = m_random.bounded(2) == 0 ? u"a"_s : u"B"_s;
        entry.dist = text(3);
        entry.notes = text(9);
        return entry;
    }

    void refill(std::span<const qint32> changed = {})
    {
        m_rows.refill(changed);
        m_plain.refill();
    }

    void add(int count)
    {
        LogChange change;
        Rows added(static_cast<std::size_t>(count));
        std::iota(added.begin(), added.end(), m_log.count());
        for (int i = 0; i < count; ++i) {
            change.added.push_back(randomEntry());
        }
        m_log.apply(change);
        m_done.push_back(change);
        refill(added);
    }

    // Changes entries where they are, as an update does.
    void update(int count)
    {
        if (m_log.count() == 0) {
            return;
        }
        LogChange change;
        Rows numbers;
        for (int i = 0; i < count; ++i) {
            const qint32 number = m_random.bounded(m_log.count());
            if (std::ranges::find(numbers, number) == numbers.end()) {
                numbers.push_back(number);
                const LogEntry after = randomEntry();
                const LogChange one = LogChange::between(number, m_log.entry(number), after);
                change.fields.insert(change.fields.end(), one.fields.begin(), one.fields.end());
            }
        }
        m_log.apply(change);
        m_done.push_back(change);
        m_rows.entriesChanged(numbers);
        for (const qint32 number : numbers) {
            m_plain.forget(number);
        }
        if (m_random.bounded(8) == 0) {
            refill();
        }
    }

    // Takes the last change back, and sometimes makes it again.
    void undo()
    {
        if (m_done.empty()) {
            return;
        }
        const LogChange change = m_done.back();
        m_done.pop_back();
        restore(change.inverse());
        if (m_random.bounded(3) == 0) {
            restore(change);
            m_done.push_back(change);
        }
    }

    void restore(const LogChange &change)
    {
        const qint32 before = m_log.count();
        m_log.apply(change);
        Rows numbers;
        for (const FieldChange &field : change.fields) {
            numbers.push_back(field.entry);
        }
        for (qint32 i = std::min(before, m_log.count()); i < std::max(before, m_log.count()); ++i) {
            numbers.push_back(i);
        }
        std::ranges::sort(numbers);
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
        m_rows.restore(numbers);
        for (const qint32 number : numbers) {
            m_plain.forget(number);
        }
        m_plain.restore();
    }

    void sort()
    {
        std::optional<LogRows::Sorting> by;
        if (m_random.bounded(5) != 0) {
            by = {static_cast<GridColumn>(m_random.bounded(gridColumnCount)), m_random.bounded(2) == 0};
        }
        m_rows.sortBy(by);
        m_plain.sortBy(by);
    }

    void filter()
    {
        const QString freq = QString::number(m_random.bounded(5));
        m_plain.filter = m_random.bounded(2) == 0
            ? LogRows::Filter()
            : LogRows::Filter([freq](const LogEntry &entry, qint32) { return entry.freq != freq; });
        m_rows.setFilter(m_plain.filter);
    }

    void type()
    {
        if (m_log.count() == 0) {
            return;
        }
        const qint32 number = m_random.bounded(m_log.count());
        const bool date = m_random.bounded(3) == 0;
        const GridColumn column = date ? GridColumn::DateTime : GridColumn::Freq;
        const QString text =
            date ? u"%1.2.1970"_s.arg(1 + m_random.bounded(28)) : QString::number(m_random.bounded(5));
        m_rows.setTyped(number, column, text);
        m_plain.typed[{number, column}] = text;
    }

    QRandomGenerator m_random;
    Logbook m_log;
    LogRows m_rows {m_log, months()};
    PlainRows m_plain {m_log};
    Watcher m_watcher {&m_rows};
    std::vector<LogChange> m_done;
};

} // namespace

class TestLogRows : public QObject
{
    Q_OBJECT

    // Entries at these hours.
    static Logbook logOf(const std::vector<int> &hours)
    {
        Logbook log;
        for (std::size_t i = 0; i < hours.size(); ++i) {
            log.AddEntry(entryAt(QString(QChar(u'A' + char16_t(i))), hours[i]));
        }
        return log;
    }

private Q_SLOTS:
    void derivedColumnsShowAndSortWhatFollowsFromTheEntry()
    {
        Logbook log;
        for (const QString &code : {u"A"_s, u"BBBBBBBBBB"_s, u"CC"_s}) {
            log.AddEntry(entryAt(code, 1));
        }
        LogRows rows(log, months());
        rows.refill();
        QCOMPARE(rows.text(1, GridColumn::Azimuth), QString());
        rows.setDerived([](const LogEntry &entry, qint32, GridColumn column) {
            return column == GridColumn::Azimuth ? QString::number(entry.piCode.size()) : QString();
        });
        QCOMPARE(rows.text(1, GridColumn::Azimuth), u"10"_s);
        QCOMPARE(rows.text(1, GridColumn::Muf), QString());
        QCOMPARE(rows.text(1, GridColumn::PiCode), u"BBBBBBBBBB"_s);
        rows.sortBy(LogRows::Sorting {GridColumn::Azimuth, false});
        QCOMPARE(piCodes(rows), QStringList({u"A"_s, u"CC"_s, u"BBBBBBBBBB"_s}));
    }

    void anEmptyLogHasNoRows()
    {
        const Logbook log;
        LogRows rows(log, months());
        rows.refill();
        QVERIFY(rows.all().empty());
        QVERIFY(rows.sorted().empty());
        QVERIFY(rows.shown().empty());
        QCOMPARE(rows.rowOf(0), -1);
    }

    void rowsAreSortedByDateAndEqualOnesStayInLogOrder()
    {
        Logbook log = logOf({5, 3, 5, 1, 3, 5});
        changeEntry(log, 3, [](LogEntry &entry) { entry.piCode = u"delete"_s; });
        LogRows rows(log, months());
        rows.refill();
        QCOMPARE(piCodes(rows), (QStringList {u"delete"_s, u"B"_s, u"E"_s, u"A"_s, u"C"_s, u"F"_s}));
        QCOMPARE(copyOf(rows.shown()), (Rows {3, 1, 4, 0, 2, 5}));
        QCOMPARE(rows.rowOf(5), 5);
        QCOMPARE(rows.rowOf(3), 0);
    }

    // So many that a sort which keeps no order of equals shows it.
    void manyRowsOfOneDateStayInTheirOrder()
    {
        constexpr int count = 500;
        const Logbook log = logOf(std::vector<int>(count, 7));
        LogRows rows(log, months());
        rows.refill();
        Rows expected(count);
        std::iota(expected.begin(), expected.end(), 0);
        QCOMPARE(copyOf(rows.shown()), expected);
        for (const GridColumn column : {GridColumn::DateTime, GridColumn::Freq}) {
            for (const bool descending : {false, true}) {
                rows.sortBy(LogRows::Sorting {column, descending});
                QCOMPARE(copyOf(rows.shown()), expected);
            }
        }
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
        LogRows rows(log, months());
        rows.refill();
        QStringList dates;
        for (const qint32 entry : rows.shown()) {
            dates += rows.text(entry, GridColumn::DateTime).left(10);
        }
        QCOMPARE(dates, (QStringList {u"05/05/1969"_s, u"01/12/2009"_s, u"31/01/2010"_s, u"01/02/2010"_s}));
    }

    void anAddedEntryGetsItsRowAndNothingElseIsTold()
    {
        Logbook log = logOf({1, 2, 4, 4});
        LogRows rows(log, months());
        Watcher watcher;
        rows.setWatcher(&watcher);
        rows.refill();
        log.AddEntry(entryAt(u"X"_s, 2));
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 1, 2, 3}));
        rows.refill();
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 1, 4, 2, 3}));
        QCOMPARE(watcher.shown, copyOf(rows.shown()));
        QVERIFY(watcher.good);
    }

    void aChangedEntryKeepsItsRowUntilTheNextRefill()
    {
        Logbook log = logOf({1, 2, 3});
        LogRows rows(log, months());
        Watcher watcher;
        rows.setWatcher(&watcher);
        rows.refill();
        watcher.cells.clear();
        changeEntry(log, 0, [](LogEntry &entry) { entry.dateTime.seconds += qint64(9) * 3600; });
        rows.entriesChanged(Rows {0});
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 1, 2}));
        QVERIFY(watcher.cells == (std::vector<std::pair<int, int>> {{0, 0}}));
        QCOMPARE(rows.text(0, GridColumn::DateTime), u"12/06/2010 10:00:00"_s);
        rows.refill();
        QCOMPARE(copyOf(rows.shown()), (Rows {1, 2, 0}));
    }

    void changesOfManyAreToldAtOnce()
    {
        constexpr int count = 100;
        Logbook log = logOf(std::vector<int>(count, 7));
        LogRows rows(log, months());
        Watcher watcher;
        rows.setWatcher(&watcher);
        using Told = std::vector<std::pair<int, int>>;
        const Told all {{0, count - 1}};
        rows.refill();
        QCOMPARE(watcher.cells, all);
        watcher.cells.clear();
        rows.entriesChanged({});
        QCOMPARE(watcher.cells, all);
        watcher.cells.clear();
        rows.entriesChanged(copyOf(rows.shown()));
        QCOMPARE(watcher.cells, all);
        watcher.cells.clear();
        rows.entriesChanged(Rows {3, 5});
        QCOMPARE(watcher.cells, (Told {{3, 3}, {5, 5}}));
        QVERIFY(watcher.good);
    }

    void whatIsTypedShowsUntilTheNextRefill()
    {
        Logbook log = logOf({1, 2, 3});
        LogRows rows(log, months());
        Watcher watcher;
        rows.setWatcher(&watcher);
        rows.refill();
        watcher.cells.clear();
        rows.setTyped(1, GridColumn::Freq, u"89,50"_s);
        QVERIFY(watcher.cells == (std::vector<std::pair<int, int>> {{1, 1}}));
        QCOMPARE(rows.text(1, GridColumn::Freq), u"89,50"_s);
        QCOMPARE(rows.text(0, GridColumn::Freq), QString());
        QCOMPARE(log.entry(1).freq, QString());
        rows.entriesChanged(Rows {0});
        QCOMPARE(rows.text(1, GridColumn::Freq), u"89,50"_s);
        rows.entriesChanged(Rows {1});
        QCOMPARE(rows.text(1, GridColumn::Freq), QString());
        rows.setTyped(1, GridColumn::Freq, u"89,50"_s);
        rows.refill();
        QCOMPARE(rows.text(1, GridColumn::Freq), QString());
    }

    void aTypedDateIsReadOrToldToBeNone()
    {
        const Logbook log = logOf({1, 2});
        LogRows rows(log, months());
        rows.refill();
        rows.setTyped(0, GridColumn::DateTime, u"3-Jul-10 1:05 PM"_s);
        QVERIFY(rows.moment(0, u"Test"_s) == *fromCivil({2010, 7, 3, 13, 5, 0}));
        QVERIFY(rows.moment(1, u"Test"_s) == log.entry(1).dateTime);
        rows.setTyped(0, GridColumn::DateTime, u"soon"_s);
        try {
            static_cast<void>(rows.moment(0, u"Test"_s));
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::TypeMismatch);
            QCOMPARE(error.doing(), u"Test: \"soon\" is not a date and time"_s);
        }
    }

    void sortingByATypedDateThatIsNoneIsToldAndLeavesTheRows()
    {
        Logbook log = logOf({3, 2, 1});
        LogRows rows(log, months());
        rows.refill();
        rows.sortBy(LogRows::Sorting {GridColumn::PiCode, true});
        const Rows before = copyOf(rows.shown());
        QCOMPARE(before, (Rows {2, 1, 0}));
        rows.setTyped(1, GridColumn::DateTime, u"soon"_s);
        try {
            rows.sortBy(LogRows::Sorting {GridColumn::DateTime, false});
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.doing(), u"Sorting the grid by date: \"soon\" is not a date and time"_s);
        }
        QCOMPARE(copyOf(rows.shown()), before);
        QVERIFY(rows.sorting() == (LogRows::Sorting {GridColumn::PiCode, true}));
    }

    void whatIsTypedAfterTheSortingStopsNoRestoring()
    {
        Logbook log = logOf({3, 2, 1});
        LogRows rows(log, months());
        rows.refill();
        rows.sortBy(LogRows::Sorting {GridColumn::DateTime, false});
        rows.setTyped(1, GridColumn::DateTime, u"soon"_s);
        changeEntry(log, 2, [](LogEntry &entry) { entry.dateTime.seconds += qint64(9) * 3600; });
        rows.restore(Rows {2});
        QCOMPARE(copyOf(rows.shown()), (Rows {1, 0, 2}));
        QCOMPARE(rows.text(1, GridColumn::DateTime), u"soon"_s);
    }

    void everyColumnSorts_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<bool>("descending");
        for (int column = 0; column < gridColumnCount; ++column) {
            for (const bool descending : {false, true}) {
                QTest::addRow("%d %s", column, descending ? "descending" : "ascending")
                    << column << descending;
            }
        }
    }

    void everyColumnSorts()
    {
        QFETCH(int, column);
        QFETCH(bool, descending);
        Logbook log;
        const QStringList low {u"2"_s, u"fml=multi#"_s};
        const QStringList high {u"10"_s, u"fml=sent#"_s};
        for (const bool isHigh : {true, false, true, false}) {
            LogEntry entry;
            for (const LogColumn &row : logFields()) {
                if (row.text) {
                    entry.*row.text = (isHigh ? high : low).at(row.column == GridColumn::FMList ? 1 : 0);
                }
            }
            entry.dateTime = {isHigh ? 10 : 2};
            log.AddEntry(entry);
        }
        LogRows rows(log, months());
        rows.refill();
        rows.sortBy(LogRows::Sorting {GridColumn::Uid, true});
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 2, 1, 3}));
        rows.sortBy(LogRows::Sorting {static_cast<GridColumn>(column), descending});
        QCOMPARE(copyOf(rows.shown()), descending ? (Rows {0, 2, 1, 3}) : (Rows {1, 3, 0, 2}));
        QCOMPARE(copyOf(rows.all()), (Rows {1, 3, 0, 2}));
        rows.sortBy(std::nullopt);
        QCOMPARE(copyOf(rows.shown()), copyOf(rows.all()));
    }

    void aFilterHidesRowsAndIsAskedAgainWhenAnEntryChanges()
    {
        Logbook log = logOf({1, 2, 3});
        LogRows rows(log, months());
        rows.refill();
        rows.setFilter([](const LogEntry &entry, qint32) { return !isDeleted(entry); });
        QVERIFY(rows.isFiltered());
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 1, 2}));
        changeEntry(log, 1, [](LogEntry &entry) { entry.piCode = u"delete"_s; });
        rows.entriesChanged(Rows {1});
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 2}));
        QCOMPARE(copyOf(rows.all()), (Rows {0, 1, 2}));
        QCOMPARE(copyOf(rows.sorted()), (Rows {0, 1, 2}));
        QCOMPARE(rows.rowOf(1), -1);
        rows.setFilter({});
        QVERIFY(!rows.isFiltered());
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 1, 2}));
    }

    void aFilterIsGivenTheNumberOfTheEntry()
    {
        Logbook log = logOf({3, 1, 2});
        LogRows rows(log, months());
        rows.refill();
        rows.setFilter([](const LogEntry & /*entry*/, qint32 number) { return number != 1; });
        QCOMPARE(copyOf(rows.shown()), (Rows {2, 0}));
        log.AddEntry(entryAt(u"D"_s, 4));
        rows.refill();
        QCOMPARE(copyOf(rows.shown()), (Rows {2, 0, 3}));
    }

    void aFilterStaysOverARefillAndAsksWhatIsAdded()
    {
        Logbook log = logOf({1, 3});
        LogRows rows(log, months());
        rows.refill();
        rows.setFilter([](const LogEntry &entry, qint32) { return entry.piCode != u"B"; });
        log.AddEntry(entryAt(u"C"_s, 2));
        log.AddEntry(entryAt(u"B"_s, 2));
        rows.refill();
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 2}));
        QVERIFY(rows.isFiltered());
    }

    void restoringTakesRowsOfEntriesThatAreGoneAway()
    {
        Logbook log = logOf({1, 4});
        LogRows rows(log, months());
        Watcher watcher;
        rows.setWatcher(&watcher);
        const LogChange adding = LogChange::addition(entryAt(u"X"_s, 2));
        log.apply(adding);
        rows.refill();
        rows.setTyped(2, GridColumn::Freq, u"1"_s);
        log.apply(adding.inverse());
        rows.restore(Rows {2});
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 1}));
        QCOMPARE(copyOf(rows.all()), (Rows {0, 1}));
        log.apply(adding);
        rows.restore(Rows {2});
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 2, 1}));
        QCOMPARE(rows.text(2, GridColumn::Freq), QString());
        QCOMPARE(watcher.shown, copyOf(rows.shown()));
        QVERIFY(watcher.good);
    }

    void rowsThatStayedAreSortedAgainByTheNextRestoring()
    {
        Logbook log = logOf({1, 2, 3, 4});
        LogRows rows(log, months());
        rows.refill();
        rows.sortBy(LogRows::Sorting {GridColumn::PiCode, false});
        changeEntry(log, 0, [](LogEntry &entry) { entry.piCode = u"Z"_s; });
        rows.entriesChanged(Rows {0});
        QCOMPARE(copyOf(rows.shown()), (Rows {0, 1, 2, 3}));
        rows.restore(Rows {2});
        QCOMPARE(copyOf(rows.shown()), (Rows {1, 2, 3, 0}));
    }

    void oftenUndoneAndRedoneEqualCellsStandAsTheyDid()
    {
        Logbook log = logOf({1, 2, 3, 4});
        for (qint32 i = 0; i < 4; ++i) {
            changeEntry(log, i, [](LogEntry &entry) { entry.freq = u"89"_s; });
        }
        LogRows rows(log, months());
        rows.refill();
        rows.sortBy(LogRows::Sorting {GridColumn::Freq, false});
        const LogChange change = changeOf(log, 1, [](LogEntry &entry) { entry.freq = u"99"_s; });
        for (int i = 0; i < 3; ++i) {
            log.apply(change);
            rows.restore(Rows {1});
            QCOMPARE(copyOf(rows.shown()), (Rows {0, 2, 3, 1}));
            log.apply(change.inverse());
            rows.restore(Rows {1});
            QCOMPARE(copyOf(rows.shown()), (Rows {0, 1, 2, 3}));
        }
    }

    void randomCommandsEqualThePlainRows_data()
    {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<int>("entries");
        for (quint32 seed = 0; seed < 40; ++seed) {
            QTest::addRow("%u", seed) << seed << int(seed % 4 * 60);
        }
    }

    void randomCommandsEqualThePlainRows()
    {
        QFETCH(quint32, seed);
        QFETCH(int, entries);
        Commands commands(seed, entries);
        for (int step = 0; step < 150; ++step) {
            commands.step();
            const QString difference = commands.difference();
            QVERIFY2(difference.isEmpty(), qPrintable(u"step %1: %2"_s.arg(step).arg(difference)));
        }
    }
};

QTEST_GUILESS_MAIN(TestLogRows)
#include "tst_logrows.moc"
