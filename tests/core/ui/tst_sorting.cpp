#include "support/mainwindow.h"

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

QByteArray threeMonths()
{
    return logLine("AAA1", "20/01/2010 10:00:00", "101.1", "BETA")
        + logLine("AAA2", "03/02/2010 10:00:00", "87.6", "alpha")
        + logLine("AAA3", "11/12/2009 10:00:00", "99.9", "Gamma");
}

} // namespace

class TestSorting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreSortedByDateNotByText();
    void rowsOfEqualDateStayInLogOrder();
    void aHeadingSortsByItsColumn_data();
    void aHeadingSortsByItsColumn();
    void aSecondClickTurnsTheOrderAndAThirdGoesBack();
    void theLoadedEntryStaysMarkedThroughSorting();
    void theLoadedEntryStaysInSightThroughSorting();
    void updateAfterSortingRewritesTheRightRow();
    void theModelKeepsTheRules();
    void aDateTypedWithALocalMonthIsSorted();
    void theFormAndTheMarkedRowStayTogetherAfterADuplicateWasChosen();
};

void TestSorting::rowsAreSortedByDateNotByText()
{
    MainWindow window;
    window.start(threeMonths());
    QCOMPARE(window.piCodes(), (QStringList {u"AAA3"_s, u"AAA1"_s, u"AAA2"_s}));
}

void TestSorting::rowsOfEqualDateStayInLogOrder()
{
    QByteArray log;
    QStringList expected;
    for (int i = 0; i < 40; ++i) {
        const QByteArray code = QByteArray::number(0xB000 + (i * 7) % 40, 16).toUpper();
        log += logLine(code, "12/06/2010 18:22:05", "87.6", "NAME");
        expected += QString::fromLatin1(code);
    }
    MainWindow window;
    window.start(log);
    QCOMPARE(window.piCodes(), expected);
}

void TestSorting::aHeadingSortsByItsColumn_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("codes");
    QTest::newRow("Date/Time, as dates, the last first")
        << 0 << QStringList {u"AAA2"_s, u"AAA1"_s, u"AAA3"_s};
    QTest::newRow("PI Code, as text") << 1 << QStringList {u"AAA1"_s, u"AAA2"_s, u"AAA3"_s};
    QTest::newRow("Freq, as numbers") << 2 << QStringList {u"AAA2"_s, u"AAA3"_s, u"AAA1"_s};
    QTest::newRow("RDS Name, whatever the case") << 3 << QStringList {u"AAA2"_s, u"AAA1"_s, u"AAA3"_s};
    QTest::newRow("all equal, order kept") << 4 << QStringList {u"AAA3"_s, u"AAA1"_s, u"AAA2"_s};
}

void TestSorting::aHeadingSortsByItsColumn()
{
    QFETCH(int, column);
    QFETCH(QStringList, codes);
    MainWindow window;
    window.start(threeMonths());
    window.clickHeading(column);
    QCOMPARE(window.piCodes(), codes);
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(window.grid().text(window.grid().row(), GridColumn::PiCode), u"AAA2"_s);
}

void TestSorting::aSecondClickTurnsTheOrderAndAThirdGoesBack()
{
    MainWindow window;
    window.start(threeMonths());
    const QHeaderView &header = *window.grid().horizontalHeader();
    QVERIFY(!header.isSortIndicatorShown());
    window.clickHeading(2);
    QCOMPARE(window.piCodes(), (QStringList {u"AAA2"_s, u"AAA3"_s, u"AAA1"_s}));
    QVERIFY(header.isSortIndicatorShown());
    QCOMPARE(header.sortIndicatorSection(), 2);
    QCOMPARE(header.sortIndicatorOrder(), Qt::AscendingOrder);
    window.clickHeading(2);
    QCOMPARE(window.piCodes(), (QStringList {u"AAA1"_s, u"AAA3"_s, u"AAA2"_s}));
    QCOMPARE(header.sortIndicatorOrder(), Qt::DescendingOrder);
    window.clickHeading(2);
    QCOMPARE(window.piCodes(), (QStringList {u"AAA3"_s, u"AAA1"_s, u"AAA2"_s}));
    QVERIFY(!header.isSortIndicatorShown());
    window.clickHeading(0);
    QCOMPARE(header.sortIndicatorOrder(), Qt::DescendingOrder);
    window.clickHeading(0);
    QCOMPARE(window.piCodes(), (QStringList {u"AAA3"_s, u"AAA1"_s, u"AAA2"_s}));
    QVERIFY(!header.isSortIndicatorShown());
}

void TestSorting::theLoadedEntryStaysMarkedThroughSorting()
{
    MainWindow window;
    window.start(threeMonths());
    window.clickRow(2);
    QCOMPARE(window.text("Text1"), u"AAA1"_s);
    for (const int column : {2, 3, 1, 0, 2}) {
        window.clickHeading(column);
        QCOMPARE(window.grid().text(window.grid().row(), GridColumn::PiCode), u"AAA1"_s);
        QCOMPARE(window.text("Text1"), u"AAA1"_s);
        QCOMPARE(window.form().selected(), 0);
    }
}

void TestSorting::theLoadedEntryStaysInSightThroughSorting()
{
    constexpr int count = 300;
    QByteArray log;
    for (int i = 0; i < count; ++i) {
        log += logLine(QByteArray::number(0x1000 + i, 16).toUpper(),
            QByteArray("12/06/2010 18:%1:%2")
                .replace("%1", QByteArray::number(10 + i / 60))
                .replace("%2", QByteArray::number(100 + i % 60).last(2)),
            QByteArray::number(107.9 - i * 0.05, 'f', 2), "NAME");
    }
    MainWindow window;
    window.start(log);
    window.grid().showRow(3);
    window.clickRow(3);
    QCOMPARE(window.text("Text1"), u"1002"_s);
    for (const int place : {count - 2, 3, 3}) {
        window.clickHeading(static_cast<int>(GridColumn::Freq));
        QCOMPARE(window.grid().row(), place);
        QVERIFY(window.isRowVisible(place));
        QCOMPARE(window.form().selected(), 2);
    }
}

void TestSorting::updateAfterSortingRewritesTheRightRow()
{
    MainWindow window;
    window.start(threeMonths());
    window.clickRow(2);
    window.clickHeading(2);
    window.type("Text8", u"NEWNAME"_s);
    window.click("Command3");
    QCOMPARE(window.grid().text(3, GridColumn::RdsName), u"NEWNAME"_s);
    QCOMPARE(window.grid().text(1, GridColumn::RdsName), u"alpha"_s);
    QCOMPARE(window.grid().text(2, GridColumn::RdsName), u"Gamma"_s);
}

void TestSorting::theModelKeepsTheRules()
{
    MainWindow window;
    window.start(threeMonths());
    const QAbstractItemModelTester grid(
        window.grid().model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QAbstractItemModelTester list(
        window.list().model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    window.clickRow(1);
    window.type("Text8", u"OTHER"_s);
    window.click("Command3");
    window.clickHeading(2);
    window.clickRow(2);
    window.click("Command15");
    window.click("Command4");
    window.list().setLines({u"D3C3\t1\t2\t3\t4\t5\t6\t7\t"_s});
    window.list().setListIndex(0);
    window.list().horizontalHeader()->sectionClicked(3);
    window.click("Command7");
    window.form().populateGrid();
    QCOMPARE(window.grid().rows(), 4);
    QCOMPARE(window.list().count(), 1);
}

void TestSorting::aDateTypedWithALocalMonthIsSorted()
{
    TestDirectory directory;
    directory.write(u"RDSLog.log"_s, threeMonths());
    Regional regional = Regional::fromEnvironment();
    regional.months = MonthNames::of(QLocale(QLocale::German));
    DialogAnswers answers;
    Form1 form({directory.path(), {}, regional});
    form.Form_Load();
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    auto *grid = form.findChild<Grid *>(u"Grid1"_s);
    QTest::mouseClick(
        grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(0, 1)).center());
    form.findChild<QLineEdit *>(u"Text2"_s)->setText(u"1-Mai-2010 10:00"_s);
    QTest::mouseClick(form.findChild<QAbstractButton *>(u"Command3"_s), Qt::LeftButton);
    QCOMPARE(grid->text(1, GridColumn::DateTime), u"1-Mai-2010 10:00"_s);
    Q_EMIT grid->headerClicked(0);
    QCOMPARE(answers.takeTexts(), QStringList());
    QCOMPARE(grid->text(1, GridColumn::DateTime), u"1-Mai-2010 10:00"_s);
    QCOMPARE(grid->text(2, GridColumn::DateTime), u"03/02/2010 10:00:00"_s);
    QCOMPARE(grid->row(), 1);
}

void TestSorting::theFormAndTheMarkedRowStayTogetherAfterADuplicateWasChosen()
{
    MainWindow window;
    window.start(logLine("D3C3", "12/06/2010 18:22:05", "87.6", "ONE")
        + logLine("D3C3", "12/06/2010 18:22:05", "87.6", "TWO") + threeMonths());
    window.clickRow(5);
    QCOMPARE(window.form().selected(), 0);
    for (const int column : {2, 3, 0}) {
        window.clickHeading(column);
        QCOMPARE(window.grid().text(window.grid().row(), GridColumn::RdsName), u"TWO"_s);
        QCOMPARE(window.form().selected(), 0);
    }
}

QTEST_MAIN(TestSorting)
#include "tst_sorting.moc"
