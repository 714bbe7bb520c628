#include "core/logbook.h"
#include "core/logrows.h"
#include "support/paintings.h"
#include "ui/grid.h"

#include <QHeaderView>
#include <QRandomGenerator>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

#include <numeric>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

LogEntry entryAt(int hour, const QString &name)
{
    LogEntry entry;
    entry.piCode = u"D3C3"_s;
    entry.dateTime = *fromCivil({2010, 6, 12, hour, 0, 0});
    entry.rdsName = name;
    entry.freq = u"98.5"_s;
    return entry;
}

// What stands on the screen, and what would if all of it were painted anew.
bool isPaintedWhole(Grid &grid)
{
    QCoreApplication::processEvents();
    const QImage shown =
        grid.screen()->grabWindow(grid.winId()).toImage().convertToFormat(QImage::Format_RGB32);
    grid.viewport()->update();
    grid.horizontalHeader()->viewport()->update();
    QCoreApplication::processEvents();
    return !shown.isNull()
        && shown == grid.screen()->grabWindow(grid.winId()).toImage().convertToFormat(QImage::Format_RGB32);
}

// True when it is on the screen.
bool showFilled(Grid &grid, LogRows &rows)
{
    grid.setLogRows(rows);
    grid.writeGridHeader();
    grid.resize(700, 300);
    grid.refill();
    grid.show();
    return QTest::qWaitForWindowExposed(&grid);
}

} // namespace

/// Only what changes is painted, and it is all that changes.
class TestGrid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsThatComeAndGoLeaveNothingBehind()
    {
        QRandomGenerator random(42);
        Logbook log;
        for (int i = 0; i < 40; ++i) {
            log.AddEntry(entryAt(random.bounded(24), u"BEFORE %1"_s.arg(i)));
        }
        LogRows rows(log, MonthNames::of(QLocale::c()));
        Grid grid;
        QVERIFY(showFilled(grid, rows));
        for (int step = 0; step < 120; ++step) {
            const int where = random.bounded(3);
            grid.verticalScrollBar()->setValue(where == 0 ? 0
                    : where == 1                          ? grid.verticalScrollBar()->maximum()
                                                          : random.bounded(grid.rows()));
            QCoreApplication::processEvents();
            LogChange change;
            for (int more = random.bounded(3); more >= 0; --more) {
                change.added.push_back(entryAt(random.bounded(24), u"ADDED %1"_s.arg(step)));
            }
            std::vector<qint32> added(change.added.size());
            std::iota(added.begin(), added.end(), log.count());
            log.apply(change);
            grid.refill(added);
            if (random.bounded(2) == 0) {
                grid.setRow(grid.rowOfEntry(added.back()));
            }
            QVERIFY2(isPaintedWhole(grid), qPrintable(u"added, step %1"_s.arg(step)));
            // What the last row needs to be seen whole.
            const int page = grid.viewport()->height() / grid.rowHeight(0);
            QCOMPARE(grid.verticalScrollBar()->maximum(), grid.rows() - 1 - page);
            if (random.bounded(4) != 0) {
                log.apply(change.inverse());
                rows.restore(added);
                QVERIFY2(isPaintedWhole(grid), qPrintable(u"taken back, step %1"_s.arg(step)));
            }
        }
    }

    void theHeadingsAreNotPaintedForRows()
    {
        Logbook log;
        for (int i = 0; i < 40; ++i) {
            log.AddEntry(entryAt(i % 24, u"BEFORE %1"_s.arg(i)));
        }
        LogRows rows(log, MonthNames::of(QLocale::c()));
        Grid grid;
        QVERIFY(showFilled(grid, rows));
        QCoreApplication::processEvents();
        const Paintings headings(*grid.horizontalHeader()->viewport());
        const Paintings cells(*grid.viewport());
        grid.setRow(3);
        QCoreApplication::processEvents();
        grid.setRow(4);
        grid.setText(4, GridColumn::RdsName, u"ANOTHER"_s);
        LogChange change;
        change.added.push_back(entryAt(4, u"ADDED"_s));
        log.apply(change);
        grid.refill(std::vector<qint32> {40});
        grid.setRow(grid.rowOfEntry(40));
        QCoreApplication::processEvents();
        grid.selectAll();
        QCoreApplication::processEvents();
        QVERIFY(cells.count >= 3);
        QCOMPARE(headings.count, 0);
        grid.sortBy(LogRows::Sorting {GridColumn::RdsName, false});
        QCoreApplication::processEvents();
        QVERIFY(headings.count > 0);
    }

    void theFirstRowTakesTheEmptyTextAway()
    {
        Logbook log;
        LogRows rows(log, MonthNames::of(QLocale::c()));
        Grid grid;
        grid.setLogRows(rows);
        grid.setEmptyText(u"Nothing here"_s);
        grid.writeGridHeader();
        grid.resize(500, 300);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        LogChange change;
        change.added.push_back(entryAt(1, u"FIRST"_s));
        log.apply(change);
        const std::vector<qint32> added {0};
        grid.refill(added);
        QVERIFY(isPaintedWhole(grid));
        log.apply(change.inverse());
        rows.restore(added);
        QVERIFY(isPaintedWhole(grid));
    }

    void theScrollBarKnowsRowsAtOnce()
    {
        Logbook log;
        LogRows rows(log, MonthNames::of(QLocale::c()));
        Grid grid;
        grid.setLogRows(rows);
        grid.resize(500, 200);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QCOMPARE(grid.verticalScrollBar()->maximum(), 0);
        for (int i = 0; i < 60; ++i) {
            log.AddEntry(entryAt(3, QString::number(i)));
        }
        grid.refill();
        QVERIFY(grid.verticalScrollBar()->maximum() > 40);
    }
};

QTEST_MAIN(TestGrid)
#include "tst_grid.moc"
