#include "stats/ui/calendarchart.h"
#include "stats/ui/collectionwindow.h"
#include "stats/ui/rosechart.h"
#include "support/mainwindow.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

QByteArray line(const char *pi, const char *time, const char *prop, const char *site, const char *country,
    const char *dist)
{
    return QByteArray(pi) + '|' + time + '|' + prop + "|95.3|" + site + '|' + country + "||NAME|1|" + dist
        + "|||\r\n";
}

QByteArray sampleLog()
{
    return line("E211", "12/07/2024 16:00:00", "Es", "Granada", "E", "1700")
        + line("E212", "12/07/2024 16:10:00", "Es", "Sevilla", "E", "1800")
        + line("E213", "12/07/2024 16:20:00", "Es", "Tallinn", "EST", "1900")
        + line("D3C3", "13/07/2025 10:00:00", "Tropo", "Brocken", "D", "650");
}

} // namespace

/// What is new, and the window of what it all adds up to, as a listener meets them.
class TestCollection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_main = std::make_unique<MainWindow>();
        m_main->directory.write(u"LOGBOOK.INI"_s,
            "LOG_BOOK_CALLSIGN=N\r\nHOME_DEC_LAT=52.1\r\nHOME_DEC_LON=-1.2\r\nAS_MILES=FALSE\r\n");
        m_main->start(sampleLog(), "Granada|E|37.2|-3.6||\r\nBrocken|D|51.8|10.6||\r\n");
    }
    void cleanup() { m_main.reset(); }

    void theColumnNewTellsWhatIsNew()
    {
        QVERIFY(m_main->grid().isColumnHidden(static_cast<int>(GridColumn::New)));
        QCOMPARE(m_main->grid().text(1, GridColumn::New), u"PI Site ITU Mode Far Year"_s);
        QCOMPARE(m_main->grid().text(2, GridColumn::New), u"PI Site Far Year"_s);
        const QModelIndex cell = m_main->grid().model()->index(1, static_cast<int>(GridColumn::New));
        QCOMPARE(cell.data(Qt::ToolTipRole).toString(),
            u"<qt>First of this PI code; First of this site; Farthest so far by Es; "
            "First of this station in 2024</qt>"_s);
    }

    // The log is counted after the window is there, or when somebody asks before.
    void whatChangesBeforeTheLogIsCountedIsCounted()
    {
        LogEntry entry = m_main->form().log().entry(2);
        entry.piCode = u"E999"_s;
        m_main->form().document().commit({u"Add"_s, LogChange::addition(entry), {}});
        QCOMPARE(m_main->grid().text(4, GridColumn::New), u"PI Year"_s);
        m_main->trigger("menuEditUndo");
        QCOMPARE(m_main->grid().text(1, GridColumn::New), u"PI Site ITU Mode Far Year"_s);
    }

    void anAddShowsTheBadgeAndAnUndoTakesTheMarksBack()
    {
        auto *badge = m_main->find<QLabel>("newBadge");
        QVERIFY(badge->isHidden());
        m_main->click("Command2");
        m_main->fill(
            {u"Text9"_s, u"87.6"_s, u"Text1"_s, u"F201"_s, u"Text8"_s, u"INTER"_s, u"Combo3"_s, u"F"_s});
        m_main->click("Command1");
        QVERIFY(badge->isVisible());
        QVERIFY2(badge->text().startsWith(u"New: country"_s), qPrintable(badge->text()));
        QVERIFY(m_main->grid().text(5, GridColumn::New).startsWith(u"PI ITU"_s));
        m_main->trigger("menuEditUndo");
        QVERIFY(badge->isHidden());
        QCOMPARE(m_main->grid().rows(), 5);
        QVERIFY(m_main->grid().text(3, GridColumn::New).startsWith(u"PI Site ITU"_s));
        m_main->trigger("menuEditRedo");
        QVERIFY(m_main->grid().text(5, GridColumn::New).startsWith(u"PI ITU"_s));
    }

    void anUndoLeavesNothingOfWhatIsGoneToPaint_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("records") << u"records"_s;
        QTest::newRow("openings") << u"openings"_s;
    }

    void anUndoLeavesNothingOfWhatIsGoneToPaint()
    {
        QFETCH(QString, name);
        LogEntry entry = m_main->form().log().entry(2);
        entry.piCode = u"E999"_s;
        entry.dist = u"2000"_s;
        m_main->form().document().commit({u"Add"_s, LogChange::addition(entry), {}});
        (void)opened();
        choose(name);
        QTableView &table = tableOf(name);
        const int rows = table.model()->rowCount();
        m_main->trigger("menuEditUndo");
        table.viewport()->repaint();
        activateAll(table);
        QTRY_VERIFY(table.model()->rowCount() > 0);
        QVERIFY(table.model()->rowCount() <= rows);
        QCOMPARE(m_main->answers.takeTexts(), QStringList());
    }

    void marksFollowEditsInThePast()
    {
        m_main->clickRow(1);
        m_main->type("Text1", u"E212"_s);
        m_main->click("Command3");
        QVERIFY(!m_main->grid().text(2, GridColumn::New).contains(u"PI"_s));
        m_main->trigger("menuEditUndo");
        QVERIFY(m_main->grid().text(2, GridColumn::New).contains(u"PI"_s));
    }

    void aCellOpensTheLogFilteredToIt()
    {
        CollectionWindow &window = opened();
        QTableView &table = tableOf(u"countries"_s);
        QCOMPARE(table.model()->rowCount(), 3);
        // Spain alone: not Estonia, whose letters begin likewise.
        activate(table, 1, 2);
        QCOMPARE(m_main->find<QLineEdit>("filterText")->text(), u"itu==E"_s);
        QCOMPARE(m_main->piCodes(), QStringList({u"E211"_s, u"E212"_s}));
        // The collection is that of the whole log all the same.
        QCOMPARE(table.model()->rowCount(), 3);
        QVERIFY(window.isVisible());
    }

    void shownOnlyFollowsTheFilter()
    {
        (void)opened();
        m_main->type("filterText", u"prop:es"_s);
        QTableView &table = tableOf(u"countries"_s);
        QCOMPARE(table.model()->rowCount(), 3);
        m_main->find<QCheckBox>("shownOnly")->click();
        QCOMPARE(table.model()->rowCount(), 2);
        m_main->type("filterText", u"prop:tropo"_s);
        QTRY_COMPARE(table.model()->rowCount(), 1);
        activate(table, 0, 0);
        QCOMPARE(m_main->find<QLineEdit>("filterText")->text(), u"prop:tropo itu==D"_s);
    }

    void itFollowsTheLog()
    {
        (void)opened();
        m_main->clickRow(4);
        m_main->click("Command15");
        QTRY_COMPARE(tableOf(u"countries"_s).model()->rowCount(), 2);
        m_main->trigger("menuEditUndo");
        QTRY_COMPARE(tableOf(u"countries"_s).model()->rowCount(), 3);
    }

    void eachTabHasItsFigures_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("rows");
        QTest::newRow("countries") << u"countries"_s << 3;
        QTest::newRow("stations") << u"stations"_s << 4;
        QTest::newRow("records") << u"records"_s << 8;
        QTest::newRow("calendar") << u"calendar"_s << 2;
        QTest::newRow("directions") << u"directions"_s << 36;
        QTest::newRow("openings") << u"openings"_s << 1;
    }

    void eachTabHasItsFigures()
    {
        QFETCH(QString, name);
        QFETCH(int, rows);
        (void)opened();
        choose(name);
        QCOMPARE(tableOf(name).model()->rowCount(), rows);
        // Saved as they are seen: the table, and the chart.
        const QString csv = u"collection-"_s + name + u".csv"_s;
        const QString png = u"collection-"_s + name + u".png"_s;
        m_main->answers.type(csv);
        m_main->click("saveCsv");
        QCOMPARE(m_main->directory.read(csv).count("\r\n"), rows + 1);
        m_main->answers.type(png);
        m_main->click("savePicture");
        QCOMPARE(QImage::fromData(m_main->directory.read(png)).width(), 1920);
    }

    void numbersAreSortedAsNumbersAndDaysAsDays()
    {
        (void)opened();
        choose(u"stations"_s);
        QTableView &table = tableOf(u"stations"_s);
        const auto column = [&table](int at) {
            QStringList texts;
            for (int row = 0; row < table.model()->rowCount(); ++row) {
                texts += table.model()->index(row, at).data().toString();
            }
            return texts;
        };
        table.sortByColumn(7, Qt::AscendingOrder);
        QCOMPARE(column(7), QStringList({u"650"_s, u"1700"_s, u"1800"_s, u"1900"_s}));
        table.sortByColumn(5, Qt::DescendingOrder);
        QCOMPARE(column(5).first(), u"13/07/2025"_s);
    }

    void anOpeningIsCopiedAsText()
    {
        (void)opened();
        QVERIFY(m_main->find<QWidget>("copyText")->isHidden());
        choose(u"openings"_s);
        m_main->click("copyText");
        QVERIFY(QGuiApplication::clipboard()->text().startsWith(
            u"Es opening 12/07/2024 16:00-16:20 UTC\n3 receptions: E, EST\nFarthest: 1900 km"_s));
    }

    void aDayAndADirectionOpenTheLogToo()
    {
        (void)opened();
        choose(u"calendar"_s);
        auto *calendar = m_main->find<CalendarChart>("calendarChart");
        const QPoint day = calendar->dayPlace(1, 193).center().toPoint();
        QTest::mouseClick(calendar, Qt::LeftButton, {}, day);
        QCOMPARE(m_main->piCodes(), QStringList {u"D3C3"_s});
        choose(u"directions"_s);
        auto *rose = m_main->find<RoseChart>("directionsChart");
        QTest::mouseClick(rose, Qt::LeftButton, {}, rose->placeOf(18));
        QCOMPARE(m_main->piCodes(), QStringList {u"E211"_s});
        QVERIFY(m_main->text("status").contains(u"from 180° to 189°"_s));
    }

    void escClosesIt()
    {
        const QPointer<CollectionWindow> window = &opened();
        QTest::keyClick(window, Qt::Key_Escape);
        QTRY_VERIFY(!window || !window->isVisible());
    }

private:
    CollectionWindow &opened()
    {
        m_main->trigger("menuStatsCollection");
        auto *window = m_main->find<CollectionWindow>("collection");
        if (!QTest::qWaitForWindowExposed(window)) {
            qFatal("the window is not shown");
        }
        return *window;
    }
    QTableView &tableOf(const QString &name) { return *m_main->find<QTableView>(QString(name + u"Table"_s)); }
    void choose(const QString &name)
    {
        m_main->find<QTabWidget>("tabs")->setCurrentWidget(m_main->find<QWidget>(name));
    }
    // Enter on each cell, of whatever the table shows just now.
    static void activateAll(QTableView &table)
    {
        for (int row = 0; row < table.model()->rowCount(); ++row) {
            for (int column = 0; column < table.model()->columnCount(); ++column) {
                Q_EMIT table.activated(table.model()->index(row, column));
            }
        }
    }
    static void activate(QTableView &table, int row, int column)
    {
        const QModelIndex cell = table.model()->index(row, column);
        table.setCurrentIndex(cell);
        const QPoint place = table.visualRect(cell).center();
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, place);
    }

    std::unique_ptr<MainWindow> m_main;
};

QTEST_MAIN(TestCollection)
#include "tst_collection.moc"
