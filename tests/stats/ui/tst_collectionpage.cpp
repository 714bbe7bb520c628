#include "stats/ui/calendarchart.h"
#include "stats/ui/collectionpage.h"
#include "stats/ui/collectionwindow.h"

#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

FigureTable oneColumn(int rows)
{
    FigureTable table;
    table.columns = {{u"Country"_s}};
    table.rows = rows;
    table.figure = [](int row, int) { return Figure(QString::number(row)); };
    return table;
}

} // namespace

/// The parts of the collection's window.
class TestCollectionPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theChoiceStandsBesideItsName()
    {
        CollectionPage page;
        page.prepare(u"countries"_s, u"Countries"_s);
        page.addGroups({u"Receptions"_s, u"Farthest"_s});
        page.resize(1200, 400);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        const auto *box = page.findChild<QComboBox *>(u"countriesShown"_s);
        const auto *label = page.findChild<QLabel *>();
        QCOMPARE(label->buddy(), box);
        QVERIFY(box->x() >= label->geometry().right());
        QVERIFY(box->x() - label->geometry().right() < page.width() / 10);
    }

    void whatTheUserMadeOfTheWidthsStays_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<bool>("stays");
        QTest::newRow("no row") << 0 << false;
        QTest::newRow("one row") << 1 << true;
        QTest::newRow("many rows") << 30 << true;
    }

    void whatTheUserMadeOfTheWidthsStays()
    {
        QFETCH(int, before);
        CollectionPage page;
        page.prepare(u"stations"_s, u"Stations"_s);
        auto *table = page.findChild<QTableView *>(u"stationsTable"_s);
        page.showTable(oneColumn(before));
        constexpr int wide = 431;
        table->setColumnWidth(0, wide);
        page.showTable(oneColumn(3));
        QTEST(table->columnWidth(0) == wide, "stays");
    }

    void theCalendarTakesTheWidthThatThereIs()
    {
        const Logbook log;
        const TransmitterList sites;
        const Config config(u"/nowhere"_s);
        const Novelty novelty;
        CollectionWindow window({log, sites, config, novelty, [] { return std::vector<qint32>(); }});
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.show();
        auto *tabs = window.findChild<QTabWidget *>(u"tabs"_s);
        tabs->setCurrentWidget(window.findChild<QWidget *>(u"calendar"_s));
        const auto *area = window.findChild<QScrollArea *>(u"calendarArea"_s);
        const auto *chart = window.findChild<CalendarChart *>();
        for (const int width : {900, 1200}) {
            window.resize(width, 700);
            QTRY_COMPARE(chart->width(), area->viewport()->width());
        }
    }
};

QTEST_MAIN(TestCollectionPage)
#include "tst_collectionpage.moc"
