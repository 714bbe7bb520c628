#include "support/mainwindow.h"

#include <QScrollBar>
#include <QTextDocument>
#include <QTextDocumentFragment>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

QByteArray logOf(int entries)
{
    QByteArray log;
    for (int i = 0; i < entries; ++i) {
        log += logLine(QByteArray::number(0xA000 + i, 16).toUpper(),
            "12/06/2010 " + QByteArray::number(10 + i / 60) + ':'
                + QByteArray::number(i % 60).rightJustified(2, '0') + ":00",
            "87.6", "NAME");
    }
    return log;
}

} // namespace

class TestGrid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theHeaderHasTwelveCaptions();
    void theWidthsAreAtLeastTheirTwips();
    void theCellsAreAligned();
    void aTipReadsAsTheCell();
    void aRowShowsTheEntry();
    void theFMListColumnShowsWhatIsKnown_data();
    void theFMListColumnShowsWhatIsKnown();
    void anEmptyLogIsOnlyTheHeader();
    void anEmptyGridSaysWhatToDo();
    void theLastRowIsCurrentAndLoadsNothing_data();
    void theLastRowIsCurrentAndLoadsNothing();
    void aFullLogShowsItsLastRow();
    void theGridIsScrolledFromThreeEntriesOn_data();
    void theGridIsScrolledFromThreeEntriesOn();
    void aClickLoadsTheEntry();
    void aClickOnTheMarkedRowLoadsItToo();
    void theArrowKeysLoadEntries();
    void enterLoadsTheMarkedRow();
    void ofTwoAlikeTheLowerIndexIsLoaded();
    void aRowWithoutAFrequencyLoadsNothing();
    void loadingClearsThePositionOfAnUnknownTransmitter();
    void aRowIsMarkedAsAWhole();
};

void TestGrid::theHeaderHasTwelveCaptions()
{
    MainWindow window;
    window.start();
    QCOMPARE(window.row(0),
        u"Date/Time|PI Code|Freq|RDS Name|Country|Transmitter|Dist|Power|Notes|Prop|FMList|UID"_s);
}

void TestGrid::theWidthsAreAtLeastTheirTwips()
{
    MainWindow window;
    window.start();
    const QList<int> twips {1700, 600, 600, 1800, 1000, 1600, 600, 500, 1600, 600, 600, 800};
    for (int column = 0; column < twips.size(); ++column) {
        QVERIFY(window.grid().columnWidth(column) >= twips.at(column) * window.grid().logicalDpiX() / 1440);
    }
}

void TestGrid::theCellsAreAligned()
{
    MainWindow window;
    window.start(logOf(1));
    const QList<int> left {5, 6, 8};
    for (int column = 0; column < gridColumnCount; ++column) {
        const int expected =
            static_cast<int>((left.contains(column) ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter);
        QCOMPARE(window.grid().model()->index(0, column).data(Qt::TextAlignmentRole).toInt(), expected);
    }
}

void TestGrid::aTipReadsAsTheCell()
{
    MainWindow window;
    window.start(logLine("D3C3", "12/06/2010 18:22:05", "87.6", "A&B_<i>\"x"));
    const QString tip = window.grid()
                            .model()
                            ->index(0, static_cast<int>(GridColumn::RdsName))
                            .data(Qt::ToolTipRole)
                            .toString();
    QVERIFY(Qt::mightBeRichText(tip));
    QCOMPARE(QTextDocumentFragment::fromHtml(tip).toPlainText(), u"A&B_<i>\"x"_s);
}

void TestGrid::aRowShowsTheEntry()
{
    MainWindow window;
    window.start("D3C3|12/06/2010 "
                 "18:22:05|Es|87.6|Sch\xF6nberg|D|oneCRLFtwoCRLF|NDR_2|2.5|310.4|x=1#fml=sent#|4711|\r\n");
    QCOMPARE(
        window.row(1), u"12/06/2010 18:22:05|D3C3|87.6|NDR_2|D|Schönberg|310.4|2.5|one two |Es|Sent|4711"_s);
    QCOMPARE(window.grid().rows(), 2);
}

void TestGrid::theFMListColumnShowsWhatIsKnown_data()
{
    QTest::addColumn<QByteArray>("tags");
    QTest::addColumn<QString>("shown");
    QTest::newRow("nothing") << ""_ba << u""_s;
    QTest::newRow("sent") << "fml=sent#"_ba << u"Sent"_s;
    QTest::newRow("multi") << "fml=multi#"_ba << u"Multi"_s;
    QTest::newRow("none") << "fml=none#"_ba << u"None"_s;
    QTest::newRow("sent wins over multi") << "fml=multi#fml=sent#"_ba << u"Sent"_s;
    QTest::newRow("multi wins over none") << "fml=none#fml=multi#"_ba << u"Multi"_s;
    QTest::newRow("another case") << "FML=SENT#"_ba << u""_s;
    QTest::newRow("something else") << "fml=later#"_ba << u""_s;
}

void TestGrid::theFMListColumnShowsWhatIsKnown()
{
    QFETCH(QByteArray, tags);
    QFETCH(QString, shown);
    MainWindow window;
    window.start("D3C3|12/06/2010 18:22:05|Es|87.6|||||||" + tags + "||\r\n");
    QCOMPARE(window.grid().text(1, GridColumn::FMList), shown);
}

void TestGrid::anEmptyLogIsOnlyTheHeader()
{
    MainWindow window;
    window.start();
    QCOMPARE(window.grid().rows(), 1);
    QCOMPARE(window.grid().row(), 0);
    QVERIFY(!window.grid().currentIndex().isValid());
    QVERIFY(window.grid().selectionModel()->selectedRows().isEmpty());
    QCOMPARE(window.grid().verticalScrollBar()->value(), 0);
}

void TestGrid::anEmptyGridSaysWhatToDo()
{
    MainWindow window;
    window.start();
    QCOMPARE(window.grid().emptyText(),
        u"No receptions yet. Press F5 to log the first one quickly, or Ctrl+N to type all of it."_s);
    const QImage empty = window.grid().grab().toImage();
    window.grid().setEmptyText({});
    QVERIFY(window.grid().grab().toImage() != empty);
    const QImage list = window.list().grab().toImage();
    window.list().setEmptyText({});
    QVERIFY(window.list().grab().toImage() != list);
}

void TestGrid::theLastRowIsCurrentAndLoadsNothing_data()
{
    QTest::addColumn<int>("entries");
    for (const int entries : {1, 2, 3, 4, 60}) {
        QTest::addRow("%d", entries) << entries;
    }
}

void TestGrid::theLastRowIsCurrentAndLoadsNothing()
{
    QFETCH(int, entries);
    MainWindow window;
    window.start(logOf(entries));
    QCOMPARE(window.grid().row(), entries);
    QVERIFY(window.isRowVisible(entries));
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(window.text("Text1"), u""_s);
    QCOMPARE(window.yellow(), QStringList());
    QVERIFY(!window.enabled("Command3"));
}

void TestGrid::aFullLogShowsItsLastRow()
{
    MainWindow window;
    window.start(logOf(600));
    QVERIFY(window.isRowVisible(600));
    QVERIFY(!window.isRowVisible(1));
    window.form().resize(1024, 700);
    QCoreApplication::processEvents();
    QVERIFY(window.isRowVisible(600));
}

void TestGrid::theGridIsScrolledFromThreeEntriesOn_data()
{
    QTest::addColumn<int>("entries");
    QTest::addColumn<int>("top");
    for (const int entries : {1, 2, 3, 4, 60}) {
        QTest::addRow("%d", entries) << entries << (entries < 3 ? 1 : entries);
    }
}

void TestGrid::theGridIsScrolledFromThreeEntriesOn()
{
    QFETCH(int, entries);
    QFETCH(int, top);
    MainWindow window;
    window.start(logOf(entries));
    // One row high, the table following its current row no more by itself: only the filling scrolls it.
    window.grid().setAutoScroll(false);
    window.grid().setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int around = window.grid().height() - window.grid().viewport()->height();
    window.grid().setFixedHeight(around + window.grid().rowHeight(0));
    QTRY_COMPARE(window.grid().viewport()->height(), window.grid().rowHeight(0));
    window.grid().verticalScrollBar()->setValue(0);
    QCOMPARE(window.grid().topRow(), 1);
    window.form().populateGrid();
    QCOMPARE(window.grid().row(), entries);
    QCOMPARE(window.grid().topRow(), top);
}

void TestGrid::aClickLoadsTheEntry()
{
    MainWindow window;
    window.start("D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E|oneCRLFtwo|RNE_1|10|812.4|fml=none#|4711|\r\n"
            + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"),
        "Bilbao|D|1|2||\r\nBilbao|E|43.2630|-2.9350|812.4|\r\nMadrid|E|40|-3||\r\n");
    window.clickRow(1);
    QCOMPARE(window.fields(),
        (QStringList {u"Text9=87.6"_s, u"Text1=D3C3"_s, u"Text8=RNE_1"_s, u"Text2=12/06/2010 18:22:05"_s,
            u"Combo2=Es"_s, u"Text3=one\ntwo"_s, u"uid=4711"_s, u"Combo3=E"_s, u"Text5=Bilbao"_s,
            u"Text6=10"_s, u"Text7=43.2630"_s, u"Text10=-2.9350"_s}));
    QCOMPARE(window.form().selected(), 0);
    QCOMPARE(window.grid().row(), 1);
    QCOMPARE(window.yellow().size(), 12);
    QVERIFY(window.grid().updatesEnabled());
}

void TestGrid::aClickOnTheMarkedRowLoadsItToo()
{
    MainWindow window;
    window.start(logOf(2));
    QCOMPARE(window.grid().row(), 2);
    window.clickRow(2);
    QCOMPARE(window.text("Text1"), u"A001"_s);
    QCOMPARE(window.form().selected(), 1);
}

void TestGrid::theArrowKeysLoadEntries()
{
    MainWindow window;
    window.start(logOf(5));
    window.grid().setFocus();
    const QList<std::pair<Qt::Key, int>> steps {{Qt::Key_Up, 4}, {Qt::Key_Up, 3}, {Qt::Key_Down, 4},
        {Qt::Key_PageUp, 1}, {Qt::Key_PageDown, 5}, {Qt::Key_Up, 4}};
    for (const auto &[key, row] : steps) {
        window.key(key);
        QCOMPARE(window.grid().row(), row);
        QCOMPARE(window.form().selected(), row - 1);
        QCOMPARE(window.text("Text1"), u"A00%1"_s.arg(row - 1));
    }
    window.key(Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(window.text("Text1"), u"A000"_s);
    window.key(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(window.text("Text1"), u"A004"_s);
    window.key(Qt::Key_Left);
    window.key(Qt::Key_Right);
    QCOMPARE(window.form().selected(), 4);
    window.key(Qt::Key_Tab);
    QVERIFY(!window.grid().hasFocus());
}

void TestGrid::enterLoadsTheMarkedRow()
{
    MainWindow window;
    window.start(logOf(2));
    window.grid().setFocus();
    QCOMPARE(window.form().selected(), -1);
    window.key(Qt::Key_Return);
    QCOMPARE(window.form().selected(), 1);
}

void TestGrid::ofTwoAlikeTheLowerIndexIsLoaded()
{
    MainWindow window;
    window.start(logLine("D3C3", "12/06/2010 18:22:05", "87.6", "ONE", "D", "First")
        + logLine("D3C3", "12/06/2010 18:22:05", "87.6", "TWO", "D", "Second"));
    window.clickRow(2);
    QCOMPARE(window.form().selected(), 0);
    QCOMPARE(window.text("Text5"), u"First"_s);
    QCOMPARE(window.grid().row(), 2);
}

void TestGrid::aRowWithoutAFrequencyLoadsNothing()
{
    MainWindow window;
    window.start(logLine("D3C3", "12/06/2010 18:22:05", "", "ONE") + logOf(1));
    window.clickRow(2);
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(window.text("Text1"), u""_s);
    QVERIFY(!window.enabled("Command3"));
}

void TestGrid::loadingClearsThePositionOfAnUnknownTransmitter()
{
    MainWindow window;
    window.start(logLine("AAA1", "12/06/2010 10:00:00", "87.6", "ONE", "E", "Bilbao")
            + logLine("AAA2", "12/06/2010 11:00:00", "87.6", "TWO", "E", "Nowhere")
            + logLine("AAA3", "12/06/2010 12:00:00", "87.6", "THREE", "", "Bilbao"),
        "Bilbao|E|43|-3||\r\n");
    window.clickRow(1);
    QCOMPARE(window.text("Text7"), u"43"_s);
    window.clickRow(2);
    QCOMPARE(window.text("Text7") + window.text("Text10"), u""_s);
    QCOMPARE(window.text("Text5"), u"Nowhere"_s);
    window.clickRow(1);
    window.clickRow(3);
    QCOMPARE(window.text("Text7") + window.text("Text10"), u""_s);
}

void TestGrid::aRowIsMarkedAsAWhole()
{
    MainWindow window;
    window.start(logOf(4));
    QCOMPARE(window.grid().selectionModel()->selectedIndexes().size(), allColumnCount);
    window.clickRow(2);
    QCOMPARE(window.grid().selectionModel()->selectedIndexes().size(), allColumnCount);
    QCOMPARE(window.grid().selectionModel()->selectedRows().first().row(), 1);
    // Ctrl chooses a row more; the form holds the last one.
    QTest::mouseClick(window.grid().viewport(), Qt::LeftButton, Qt::ControlModifier,
        window.grid().visualRect(window.grid().model()->index(2, 1)).center());
    QCOMPARE(window.grid().selectionModel()->selectedRows().size(), 2);
    QCOMPARE(window.grid().row(), 3);
    QCOMPARE(window.form().selected(), 2);
}

QTEST_MAIN(TestGrid)
#include "tst_grid.moc"
