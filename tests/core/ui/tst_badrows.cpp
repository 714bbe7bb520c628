#include "loggingwindow.h"

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

QByteArray threeEntries()
{
    return oneEntry + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER")
        + logLine("F202", "14/06/2010 10:00:00", "", "NOFREQ");
}

// The thirteen fields once the position of the transmitter is cleared.
QStringList withoutPosition(QStringList fields)
{
    return fields.replaceInStrings(u"Text7=43.2630"_s, u"Text7="_s)
        .replaceInStrings(u"Text10=-2.9350"_s, u"Text10="_s);
}

} // namespace

class TestBadRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choosingARowWhoseDateCannotBeReadIsARunTimeError_data();
    void choosingARowWhoseDateCannotBeReadIsARunTimeError();
    void sortingDatesThatCannotBeReadIsARunTimeError();
    void aRowWithoutAnEntryLeavesTheFormAndTheButtons_data();
    void aRowWithoutAnEntryLeavesTheFormAndTheButtons();
    void aRowWithoutAFrequencyClearsThePositionAlone();
};

void TestBadRows::choosingARowWhoseDateCannotBeReadIsARunTimeError_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("cell");
    QTest::newRow("no date") << 2 << u"soon"_s;
    QTest::newRow("an impossible date") << 2 << u"31/02/2010 10:00:00"_s;
    QTest::newRow("nothing") << 2 << u""_s;
    QTest::newRow("a row without a frequency") << 3 << u"soon"_s;
}

void TestBadRows::choosingARowWhoseDateCannotBeReadIsARunTimeError()
{
    QFETCH(int, row);
    QFETCH(QString, cell);
    MainWindow window;
    window.start(threeEntries(), oneTransmitter);
    window.clickRow(1);
    const QStringList fields = window.fields();
    const QStringList off = disabled(window);
    window.grid().setText(row, GridColumn::DateTime, cell);
    window.clickRow(row);
    QCOMPARE(window.answers.takeTexts(),
        QStringList {
            u"Run-time error: Type mismatch\nReading row %1 of the grid: \"%2\" is not a date and time"_s.arg(
                QString::number(row), cell)});
    QCOMPARE(window.fields(), withoutPosition(fields));
    QCOMPARE(disabled(window), off);
    QCOMPARE(window.form().selected(), 0);
    QVERIFY(window.grid().updatesEnabled());
    window.clickRow(1);
    QCOMPARE(window.fields(), fields);
}

void TestBadRows::sortingDatesThatCannotBeReadIsARunTimeError()
{
    MainWindow window;
    window.start(threeEntries(), oneTransmitter);
    window.clickRow(1);
    window.clickHeading(3);
    const QStringList codes = window.piCodes();
    QCOMPARE(codes, (QStringList {u"E201"_s, u"F202"_s, u"D3C3"_s}));
    window.grid().setText(2, GridColumn::DateTime, u"soon"_s);
    window.clickHeading(0);
    QCOMPARE(window.answers.takeTexts(),
        QStringList {
            u"Run-time error: Type mismatch\nSorting the grid by date: \"soon\" is not a date and time"_s});
    QCOMPARE(window.piCodes(), codes);
    QCOMPARE(window.grid().row(), 3);
    QCOMPARE(window.text("Text1"), u"D3C3"_s);
    QVERIFY(window.grid().updatesEnabled());
    window.click("Command15");
    QCOMPARE(window.grid().text(3, GridColumn::PiCode), u"delete"_s);
}

void TestBadRows::aRowWithoutAnEntryLeavesTheFormAndTheButtons_data()
{
    QTest::addColumn<QString>("before");
    QTest::newRow("nothing is loaded") << u""_s;
    QTest::newRow("an entry is loaded") << u"row"_s;
    QTest::newRow("a new entry is typed") << u"Command2"_s;
}

void TestBadRows::aRowWithoutAnEntryLeavesTheFormAndTheButtons()
{
    QFETCH(QString, before);
    MainWindow window;
    window.start(threeEntries(), oneTransmitter);
    if (before == u"row") {
        window.clickRow(1);
    } else if (before == u"Command2") {
        window.click(before);
        typeEntry(window);
    }
    const QStringList fields = window.fields();
    const QStringList off = disabled(window);
    const QStringList yellow = window.yellow();
    const QString caption = window.caption("Command2");
    window.grid().setText(2, GridColumn::Freq, u"99.9"_s);
    window.clickRow(2);
    QStringList left = withoutPosition(fields);
    left.replaceInStrings(u"Text7=48.85"_s, u"Text7="_s).replaceInStrings(u"Text10=2.29"_s, u"Text10="_s);
    QCOMPARE(window.fields(), left);
    QCOMPARE(disabled(window), off);
    QCOMPARE(window.yellow(), yellow);
    QCOMPARE(window.yellow().size(), before == u"row" ? 12 : 0);
    QCOMPARE(window.caption("Command2"), caption);
    QVERIFY(window.grid().updatesEnabled());
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestBadRows::aRowWithoutAFrequencyClearsThePositionAlone()
{
    MainWindow window;
    window.start(threeEntries(), oneTransmitter);
    window.clickRow(1);
    QCOMPARE(window.text("Text7"), u"43.2630"_s);
    QCOMPARE(window.text("Text10"), u"-2.9350"_s);
    const QStringList fields = window.fields();
    const QStringList off = disabled(window);
    window.clickRow(3);
    QCOMPARE(window.text("Text7"), u""_s);
    QCOMPARE(window.text("Text10"), u""_s);
    QCOMPARE(window.fields(), withoutPosition(fields));
    QCOMPARE(disabled(window), off);
    QCOMPARE(window.yellow().size(), 12);
    // The entry is still the first one, whatever row is marked: it is the one that goes, and is marked again.
    QCOMPARE(window.grid().row(), 3);
    window.answers.press(QMessageBox::Yes);
    window.click("Command15");
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(window.piCodes(), (QStringList {u"delete"_s, u"E201"_s, u"F202"_s}));
    QCOMPARE(window.grid().row(), 1);
}

QTEST_MAIN(TestBadRows)
#include "tst_badrows.moc"
