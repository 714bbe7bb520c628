#include "support/mainwindow.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray oneEntry =
    "D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E|oneCRLFtwo|RNE_1|10|812.4|fml=none#|4711|\r\n";
const QByteArray oneTransmitter = "Bilbao|E|43.2630|-2.9350|812.4|\r\n";

// The controls whose state the form decides, in the order of the table of states.
const QStringList &controls()
{
    static const QStringList names {u"Text1"_s, u"Text2"_s, u"Text3"_s, u"Text5"_s, u"Text6"_s, u"Text7"_s,
        u"Text8"_s, u"Text9"_s, u"Text10"_s, u"Combo1"_s, u"Combo2"_s, u"Combo3"_s, u"uid"_s, u"Command1"_s,
        u"Command2"_s, u"Command3"_s, u"Command4"_s, u"Command6"_s, u"Command7"_s, u"Command8"_s,
        u"Command9"_s, u"Command13"_s, u"Command14"_s, u"Command15"_s};
    return names;
}

const QStringList &lockedInBrowseState()
{
    static const QStringList names {u"Text2"_s, u"Text3"_s, u"Text6"_s, u"Text7"_s, u"Text10"_s, u"Combo1"_s,
        u"Combo2"_s, u"Command1"_s, u"Command3"_s, u"Command9"_s, u"Command15"_s};
    return names;
}

QStringList disabled(MainWindow &window)
{
    QStringList names;
    for (const QString &name : controls()) {
        if (!window.enabled(name)) {
            names += name;
        }
    }
    return names;
}

void typeEntry(MainWindow &window)
{
    window.fill({u"Text9"_s, u"88.2"_s, u"Text1"_s, u"f201"_s, u"Text8"_s, u"FIP"_s, u"Combo2"_s, u"Tropo"_s,
        u"Text3"_s, u"weak\nbut clear"_s, u"uid"_s, u"99"_s, u"Combo3"_s, u"F"_s, u"Text5"_s, u"Paris"_s,
        u"Text6"_s, u"10kw"_s, u"Text7"_s, u"48.85"_s, u"Text10"_s, u"2.29"_s});
}

} // namespace

class TestEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStatesOfTheForm_data();
    void theStatesOfTheForm();
    void theFormTurnsYellowAndBack_data();
    void theFormTurnsYellowAndBack();
    void yellowIsReadable();
    void newKeepsFreqCountryAndProp();
    void newTogglesToCancelAndBack();
    void cancelAfterARowWasChosenStillReads();
    void addWritesTheEntryAndTheTransmitter();
    void addShowsTheLastRow();
    void addChecksInOrder_data();
    void addChecksInOrder();
    void addWithoutAPositionKeepsNoTransmitter();
    void addTrimsTheTransmitterOnlyInItsList();
    void addWithAWrongDateIsARunTimeError();
    void updateRewritesTheRowInPlace();
    void updateShowsTheDateAsTyped();
    void updateKeepsNotesThatNobodyTouched();
    void updateMovesATransmitter();
    void updateWithoutASelectedEntryIsARunTimeError();
    void cloneThenAddDiffersInDateAndUid();
    void deleteShowsDeleteUntilTheRefill();
    void aDeletedRowCanBeChosenAndBroughtBack();
    void deletingOneOfTwoAlikeDeletesTheLowerIndex();
    void anEntryLoadedThroughARefillUpdatesItsOwnRow();
    void anEntryLoadedThroughARefillIsDeletedInItsOwnRow();
    void aDeletedRowGoesFromTheFileButStaysInTheGrid();
    void enterInAFieldAddsANewEntry_data();
    void enterInAFieldAddsANewEntry();
    void enterDoesNothingToAnExistingEntry();
    void enterInTheNotesIsALineBreak();
    void controlSAddsOrUpdates();
    void controlNBeginsANewEntry();
    void theFirstEntryMakesTheFile();
    void everyCharacterOfTheCodePageIsKept();
};

void TestEntry::theStatesOfTheForm_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("off");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QString>("newCaption");
    const QStringList newEntry {u"Command3"_s, u"Command9"_s, u"Command15"_s};
    const QStringList editing {u"Command1"_s};
    const QStringList browse = lockedInBrowseState();
    QTest::newRow("start") << QStringList() << browse << -1 << u"New"_s;
    QTest::newRow("New") << QStringList {u"Command2"_s} << newEntry << -1 << u"Cancel"_s;
    QTest::newRow("New, Cancel") << QStringList {u"Command2"_s, u"Command2"_s} << browse << -1 << u"New"_s;
    QTest::newRow("a row") << QStringList {u"row"_s} << editing << 0 << u"New"_s;
    QTest::newRow("a row, New") << QStringList {u"row"_s, u"Command2"_s} << newEntry << -1 << u"Cancel"_s;
    QTest::newRow("a row, New, Cancel")
        << QStringList {u"row"_s, u"Command2"_s, u"Command2"_s} << browse << -1 << u"New"_s;
    QTest::newRow("New, a row") << QStringList {u"Command2"_s, u"row"_s} << editing << 0 << u"Cancel"_s;
    QTest::newRow("New, a row, Cancel")
        << QStringList {u"Command2"_s, u"row"_s, u"Command2"_s} << browse << 0 << u"New"_s;
    QTest::newRow("a row, Update") << QStringList {u"row"_s, u"Command3"_s} << browse << 0 << u"New"_s;
    QTest::newRow("a row, Clone") << QStringList {u"row"_s, u"Command9"_s} << newEntry << -1 << u"New"_s;
    QTest::newRow("a row, Clone, Add")
        << QStringList {u"row"_s, u"Command9"_s, u"Command1"_s} << browse << -1 << u"New"_s;
    QTest::newRow("a row, Delete") << QStringList {u"row"_s, u"Command15"_s} << browse << 0 << u"New"_s;
}

void TestEntry::theStatesOfTheForm()
{
    QFETCH(QStringList, steps);
    QFETCH(QStringList, off);
    QFETCH(int, selected);
    QFETCH(QString, newCaption);
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    for (const QString &step : steps) {
        if (step == u"row") {
            window.clickRow(1);
        } else {
            window.click(step);
        }
    }
    QCOMPARE(disabled(window), off);
    QCOMPARE(window.form().selected(), selected);
    QCOMPARE(window.caption("Command2"), newCaption);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestEntry::theFormTurnsYellowAndBack_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<bool>("yellow");
    QTest::newRow("New") << QStringList {u"Command2"_s} << false;
    QTest::newRow("a row") << QStringList {u"row"_s} << true;
    QTest::newRow("New leaves it") << QStringList {u"row"_s, u"Command2"_s} << true;
    QTest::newRow("Cancel leaves it") << QStringList {u"row"_s, u"Command2"_s, u"Command2"_s} << true;
    QTest::newRow("Clone leaves it") << QStringList {u"row"_s, u"Command9"_s} << true;
    QTest::newRow("Update leaves it") << QStringList {u"row"_s, u"Command3"_s} << true;
    QTest::newRow("Add ends it") << QStringList {u"row"_s, u"Command9"_s, u"Command1"_s} << false;
    QTest::newRow("Delete ends it") << QStringList {u"row"_s, u"Command15"_s} << false;
}

void TestEntry::theFormTurnsYellowAndBack()
{
    QFETCH(QStringList, steps);
    QFETCH(bool, yellow);
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    const QColor normal = window.find<QWidget>("Text1")->palette().color(QPalette::Base);
    for (const QString &step : steps) {
        if (step == u"row") {
            window.clickRow(1);
        } else {
            window.click(step);
        }
    }
    QCOMPARE(window.yellow().size(), yellow ? 12 : 0);
    QCOMPARE(window.find<QWidget>("uid")->palette().color(QPalette::Base), normal);
    if (!yellow) {
        QCOMPARE(window.find<QWidget>("Text1")->palette().color(QPalette::Base), normal);
    }
}

void TestEntry::yellowIsReadable()
{
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    window.clickRow(1);
    const QStringList yellow = window.yellow();
    QCOMPARE(yellow.size(), 12);
    for (const QString &name : yellow) {
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const QPalette palette = window.find<QWidget>(name)->palette();
            QCOMPARE(palette.color(group, QPalette::Base), QColor(255, 255, 0));
            QCOMPARE(palette.color(group, QPalette::Text), QColor(Qt::black));
        }
    }
}

void TestEntry::newKeepsFreqCountryAndProp()
{
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    window.clickRow(1);
    window.click("Command2");
    QStringList fields = window.fields();
    QVERIFY(isNow(window.text("Text2")));
    fields.removeAt(3);
    QCOMPARE(fields,
        (QStringList {u"Text9=87.6"_s, u"Text1="_s, u"Text8="_s, u"Combo2=Es"_s, u"Text3="_s, u"uid="_s,
            u"Combo3=E"_s, u"Text5="_s, u"Text6="_s, u"Text7="_s, u"Text10="_s}));
}

void TestEntry::newTogglesToCancelAndBack()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    typeEntry(window);
    window.click("Command2");
    QCOMPARE(window.caption("Command2"), u"New"_s);
    QCOMPARE(window.text("Text1"), u"F201"_s);
    QCOMPARE(window.form().log().count(), 0);
    window.click("Command2");
    QCOMPARE(window.caption("Command2"), u"Cancel"_s);
    QCOMPARE(window.text("Text1"), u""_s);
    QCOMPARE(window.text("Text9"), u"88.2"_s);
    QCOMPARE(window.directory.names(), QStringList {u"LOGBOOK.INI"_s});
}

void TestEntry::cancelAfterARowWasChosenStillReads()
{
    MainWindow window;
    window.start(oneEntry);
    window.click("Command2");
    window.clickRow(1);
    QCOMPARE(window.caption("Command2"), u"Cancel"_s);
    window.click("Command9");
    window.click("Command1");
    QCOMPARE(window.caption("Command2"), u"New"_s);
}

void TestEntry::addWritesTheEntryAndTheTransmitter()
{
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    window.click("Command2");
    typeEntry(window);
    window.type("Text2", u"1-Jul-10 9:05"_s);
    window.click("Command1");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.logbook(),
        oneEntry + "F201|01/07/2010 09:05:00|Tropo|88.2|Paris|F|weakCRLFbut clear|FIP|10KW|||99|\r\n");
    QCOMPARE(window.transmitterFile(), oneTransmitter + "Paris|F|48.85|2.29||\r\n");
    QCOMPARE(window.row(2), u"01/07/2010 09:05:00|F201|88.2|FIP|F|Paris||10KW|weak but clear|Tropo||99"_s);
    QCOMPARE(window.grid().row(), 2);
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(disabled(window), lockedInBrowseState());
    QCOMPARE(window.text("Text1"), u"F201"_s);
    QCOMPARE(window.copies(), QStringList());
}

void TestEntry::addShowsTheLastRow()
{
    QByteArray log;
    for (int i = 0; i < 90; ++i) {
        log += logLine("AAAA", "12/06/2010 10:" + QByteArray::number(i % 60).rightJustified(2, '0') + ":00",
            QByteArray::number(87.5 + i / 10.), "NAME");
    }
    MainWindow window;
    window.start(log);
    window.grid().setTopRow(1);
    window.click("Command2");
    typeEntry(window);
    window.type("Text2", u"01/01/1999"_s);
    window.click("Command1");
    QCOMPARE(window.grid().text(1, GridColumn::PiCode), u"F201"_s);
    QVERIFY(window.isRowVisible(91));
    QCOMPARE(window.grid().row(), 91);
    QVERIFY(window.logbook().endsWith("F201|01/01/1999 00:00:00|Tropo|88.2|Paris|F|weakCRLFbut clear|"
                                      "FIP|10KW|||99|\r\n"));
}

void TestEntry::addChecksInOrder_data()
{
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("message");
    const QString freq = u"Text9"_s;
    QTest::newRow("nothing") << QStringList() << u"Frequency Empty"_s;
    QTest::newRow("all but the frequency")
        << QStringList {u"Text1"_s, u"F201"_s, u"Combo3"_s, u"F"_s} << u"Frequency Empty"_s;
    QTest::newRow("frequency") << QStringList {freq, u"88.2"_s} << u"PI Code and RDS Name Empty"_s;
    QTest::newRow("frequency and country")
        << QStringList {freq, u"88.2"_s, u"Combo3"_s, u"F"_s} << u"PI Code and RDS Name Empty"_s;
    QTest::newRow("frequency and PI code")
        << QStringList {freq, u"88.2"_s, u"Text1"_s, u"F201"_s} << u"Country Empty"_s;
    QTest::newRow("frequency and name")
        << QStringList {freq, u"88.2"_s, u"Text8"_s, u"FIP"_s} << u"Country Empty"_s;
}

void TestEntry::addChecksInOrder()
{
    QFETCH(QStringList, typed);
    QFETCH(QString, message);
    MainWindow window;
    window.start();
    window.click("Command2");
    window.fill(typed);
    const QStringList before = window.fields();
    window.click("Command1");
    QCOMPARE(window.answers.seen().size(), 1);
    QCOMPARE(window.answers.seen().first().text, message);
    QCOMPARE(window.answers.seen().first().title, u"Quillon"_s);
    QCOMPARE(window.answers.seen().first().icon, QMessageBox::NoIcon);
    QCOMPARE(window.fields(), before);
    QCOMPARE(window.form().log().count(), 0);
    QCOMPARE(window.caption("Command2"), u"Cancel"_s);
    QVERIFY(window.enabled("Command1"));
    QCOMPARE(window.directory.names(), QStringList {u"LOGBOOK.INI"_s});
}

void TestEntry::addWithoutAPositionKeepsNoTransmitter()
{
    MainWindow window;
    window.start({}, oneTransmitter);
    window.click("Command2");
    window.fill({u"Text9"_s, u"88.2"_s, u"Text8"_s, u"FIP"_s, u"Combo3"_s, u"F"_s, u"Text5"_s, u"Paris"_s});
    window.click("Command1");
    QCOMPARE(window.transmitterFile(), oneTransmitter);
    QCOMPARE(window.form().log().count(), 1);
}

void TestEntry::addTrimsTheTransmitterOnlyInItsList()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    typeEntry(window);
    window.fill({u"Text5"_s, u" Paris "_s, u"Combo3"_s, u" F "_s, u"Text2"_s, u"01/07/2010 09:05:00"_s});
    window.click("Command1");
    QCOMPARE(window.transmitterFile(), "Paris|F|48.85|2.29||\r\n"_ba);
    QCOMPARE(window.logbook(),
        "F201|01/07/2010 09:05:00|Tropo|88.2| Paris | F |weakCRLFbut clear|FIP|10KW|||99|\r\n"_ba);
}

void TestEntry::addWithAWrongDateIsARunTimeError()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    typeEntry(window);
    window.find<QLineEdit>("Text2")->setText(u"sometime"_s);
    window.click("Command1");
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY(texts.first().startsWith(u"Run-time error: Type mismatch\n"_s));
    QVERIFY(texts.first().contains(u"sometime"_s));
    QCOMPARE(window.form().log().count(), 0);
    QVERIFY(window.enabled("Command1"));
    QCOMPARE(window.directory.names(), QStringList {u"LOGBOOK.INI"_s});
}

void TestEntry::updateRewritesTheRowInPlace()
{
    const QByteArray later = logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER");
    MainWindow window;
    window.start(oneEntry + later, oneTransmitter);
    window.clickRow(1);
    typeEntry(window);
    window.type("Text2", u"20/06/2010 07:08:09"_s);
    window.click("Command3");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    // The row keeps its place, its distance and its state; the notes stand as they were typed.
    QCOMPARE(window.row(1),
        u"20/06/2010 07:08:09|F201|88.2|FIP|F|Paris|812.4|10KW|weak\r\nbut clear|Tropo|None|99"_s);
    QCOMPARE(window.logbook(),
        "F201|20/06/2010 07:08:09|Tropo|88.2|Paris|F|weakCRLFbut clear|FIP|10KW|812.4|fml=none#|99|\r\n"
            + later);
    QCOMPARE(window.transmitterFile(), oneTransmitter + "Paris|F|48.85|2.29||\r\n");
    QCOMPARE(window.grid().row(), 1);
    QCOMPARE(window.grid().selectionModel()->selectedIndexes().size(), gridColumnCount);
    QCOMPARE(window.form().selected(), 0);
    window.form().populateGrid();
    QCOMPARE(window.row(2),
        u"20/06/2010 07:08:09|F201|88.2|FIP|F|Paris|812.4|10KW|weak but clear|Tropo|None|99"_s);
}

void TestEntry::updateShowsTheDateAsTyped()
{
    MainWindow window;
    window.start(oneEntry + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
    window.clickRow(1);
    window.type("Text2", u"2010-06-14 7:08"_s);
    window.click("Command3");
    QCOMPARE(window.grid().text(1, GridColumn::DateTime), u"2010-06-14 7:08"_s);
    QVERIFY(window.logbook().startsWith("D3C3|14/06/2010 07:08:00|Es|"));
    window.clickHeading(0);
    QCOMPARE(window.piCodes(), (QStringList {u"E201"_s, u"D3C3"_s}));
    window.clickRow(1);
    window.clickRow(2);
    QCOMPARE(window.form().selected(), 0);
    QCOMPARE(window.text("Text2"), u"14/06/2010 07:08:00"_s);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestEntry::updateKeepsNotesThatNobodyTouched()
{
    const QByteArray entry = "D3C3|12/06/2010 18:22:05|Es|87.6|||a\xA0z\rb\x1F"
                             "CRLF"
                             "c|RNE_1||||";
    MainWindow window;
    window.start(entry + "|\r\n");
    window.clickRow(1);
    window.type("uid", u"5"_s);
    window.click("Command3");
    QCOMPARE(window.logbook(), entry + "5|\r\n");
}

void TestEntry::updateMovesATransmitter()
{
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    window.clickRow(1);
    window.fill({u"Text7"_s, u"43.3"_s, u"Text10"_s, u"-3"_s});
    window.click("Command3");
    QCOMPARE(window.transmitterFile(), "Bilbao|E|43.3|-3|812.4|\r\n"_ba);
    QCOMPARE(window.logbook(), oneEntry);
}

void TestEntry::updateWithoutASelectedEntryIsARunTimeError()
{
    MainWindow window;
    window.start(oneEntry);
    window.click("Command2");
    for (const char *button : {"Command3", "Command15"}) {
        window.find<QWidget>(button)->setEnabled(true);
        window.click(button);
        const QStringList texts = window.answers.takeTexts();
        QCOMPARE(texts.size(), 1);
        QVERIFY(texts.first().startsWith(u"Run-time error: Subscript out of range\n"_s));
    }
    QCOMPARE(window.logbook(), oneEntry);
    QCOMPARE(window.form().log().count(), 1);
}

void TestEntry::cloneThenAddDiffersInDateAndUid()
{
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    window.clickRow(1);
    window.click("Command9");
    QCOMPARE(window.text("uid"), u""_s);
    QVERIFY(isNow(window.text("Text2")));
    QCOMPARE(window.text("Text1") + window.text("Text7"), u"D3C343.2630"_s);
    const QByteArray now = window.text("Text2").toLatin1();
    window.click("Command1");
    QCOMPARE(window.logbook(), oneEntry + "D3C3|" + now + "|Es|87.6|Bilbao|E|oneCRLFtwo|RNE_1|10||||\r\n");
    QCOMPARE(window.transmitterFile(), oneTransmitter);
}

void TestEntry::deleteShowsDeleteUntilTheRefill()
{
    const QByteArray later = logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER");
    MainWindow window;
    window.start(oneEntry + later, oneTransmitter);
    window.clickRow(1);
    window.click("Command15");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.piCodes(), (QStringList {u"delete"_s, u"E201"_s}));
    QCOMPARE(window.grid().row(), 1);
    QCOMPARE(window.logbook(), later);
    QCOMPARE(disabled(window), lockedInBrowseState());
    QCOMPARE(window.transmitterFile(), oneTransmitter);
}

void TestEntry::aDeletedRowCanBeChosenAndBroughtBack()
{
    MainWindow window;
    window.start(oneEntry + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
    window.clickRow(1);
    window.click("Command15");
    window.clickRow(2);
    window.clickRow(1);
    QCOMPARE(window.text("Text1"), u"delete"_s);
    QCOMPARE(window.form().selected(), 0);
    window.type("Text1", u"D3C3"_s);
    window.click("Command3");
    QCOMPARE(window.piCodes(), (QStringList {u"D3C3"_s, u"E201"_s}));
    QCOMPARE(window.logbook(), oneEntry + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
}

void TestEntry::deletingOneOfTwoAlikeDeletesTheLowerIndex()
{
    MainWindow window;
    const QByteArray first = logLine("D3C3", "12/06/2010 18:22:05", "87.6", "ONE", "D", "First");
    const QByteArray second = logLine("D3C3", "12/06/2010 18:22:05", "87.6", "TWO", "D", "Second");
    window.start(first + second);
    window.clickRow(2);
    QCOMPARE(window.text("Text5"), u"First"_s);
    window.click("Command15");
    QCOMPARE(window.logbook(), second);
    QCOMPARE(window.form().log().entry(0).piCode, u"delete"_s);
}

void TestEntry::anEntryLoadedThroughARefillUpdatesItsOwnRow()
{
    MainWindow window;
    window.start(oneEntry + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
    window.clickRow(1);
    window.form().populateGrid();
    QCOMPARE(window.grid().row(), 2);
    QCOMPARE(window.text("Text1"), u"D3C3"_s);
    window.type("Text8", u"RNE_2"_s);
    window.click("Command3");
    QCOMPARE(window.grid().text(1, GridColumn::RdsName), u"RNE_2"_s);
    QCOMPARE(window.row(2), u"13/06/2010 10:00:00|E201|88.0|LATER|D|Brocken||10||Es||"_s);
    QCOMPARE(window.grid().row(), 1);
}

void TestEntry::anEntryLoadedThroughARefillIsDeletedInItsOwnRow()
{
    MainWindow window;
    window.start(oneEntry + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
    window.clickRow(1);
    window.form().populateGrid();
    window.click("Command15");
    QCOMPARE(window.piCodes(), (QStringList {u"delete"_s, u"E201"_s}));
    QCOMPARE(window.logbook(), logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
}

void TestEntry::aDeletedRowGoesFromTheFileButStaysInTheGrid()
{
    MainWindow window;
    window.start(oneEntry);
    window.clickRow(1);
    window.click("Command15");
    QCOMPARE(window.logbook(), ""_ba);
    window.form().populateGrid();
    QCOMPARE(window.piCodes(), QStringList {u"delete"_s});
    window.start();
    QCOMPARE(window.piCodes(), QStringList());
}

void TestEntry::enterInAFieldAddsANewEntry_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("key");
    for (const char *field : {"Text9", "Text1", "Text8", "Text2", "Combo2", "uid", "Combo3", "Text5", "Text6",
             "Text7", "Text10"}) {
        QTest::addRow("Return in %s", field) << QString::fromLatin1(field) << int(Qt::Key_Return);
    }
    QTest::newRow("Enter of the number pad") << u"Text9"_s << int(Qt::Key_Enter);
}

void TestEntry::enterInAFieldAddsANewEntry()
{
    QFETCH(QString, field);
    QFETCH(int, key);
    MainWindow window;
    window.start({}, {}, "F\r\n");
    window.click("Command2");
    typeEntry(window);
    window.type("Text2", u"01/07/2010 09:05:00"_s);
    window.type(field, window.text(field).toLower());
    window.key(static_cast<Qt::Key>(key));
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.form().log().count(), 1);
    // What leaving the field would have done to it is done.
    const LogEntry &entry = window.form().log().entry(0);
    QCOMPARE(entry.piCode + u' ' + entry.power, u"F201 10KW"_s);
    QCOMPARE(disabled(window), lockedInBrowseState());
}

void TestEntry::enterDoesNothingToAnExistingEntry()
{
    MainWindow window;
    window.start(oneEntry);
    window.type("Text1", u"FFFF"_s);
    window.key(Qt::Key_Return);
    QCOMPARE(window.form().log().count(), 1);
    window.clickRow(1);
    window.type("Text8", u"OTHER"_s);
    window.key(Qt::Key_Return);
    QCOMPARE(window.form().log().count(), 1);
    QCOMPARE(window.logbook(), oneEntry);
}

void TestEntry::enterInTheNotesIsALineBreak()
{
    MainWindow window;
    window.start(oneEntry);
    window.clickRow(1);
    window.type("Text3", u"a\n\nb\n"_s);
    window.click("Command3");
    QVERIFY(window.logbook().contains("|aCRLFCRLFbCRLF|"));
    QCOMPARE(window.form().log().entry(0).notes, u"a\r\n\r\nb\r\n"_s);
}

void TestEntry::controlSAddsOrUpdates()
{
    MainWindow window;
    window.start(oneEntry);
    window.type("Text9", u"99.9"_s);
    window.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(window.logbook(), oneEntry);
    window.clickRow(1);
    window.type("Text6", u"5x"_s);
    window.key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(window.logbook().contains("|RNE_1|5X|812.4|"));
    window.click("Command2");
    typeEntry(window);
    window.type("Text2", u"01/07/2010 09:05:00"_s);
    window.find<QWidget>("Text3")->setFocus();
    window.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(window.form().log().count(), 2);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestEntry::controlNBeginsANewEntry()
{
    MainWindow window;
    window.start(oneEntry);
    window.type("Text5", u"x"_s);
    window.key(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(window.caption("Command2"), u"Cancel"_s);
    QVERIFY(isNow(window.text("Text2")));
    QCOMPARE(window.text("Text5"), u""_s);
    window.key(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(window.caption("Command2"), u"New"_s);
}

void TestEntry::theFirstEntryMakesTheFile()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    typeEntry(window);
    window.type("Text2", u"01/07/2010 09:05:00"_s);
    window.click("Command1");
    QCOMPARE(window.directory.names(), (QStringList {u"LOGBOOK.INI"_s, u"RDSLog.log"_s, u"tx.lst"_s}));
    QCOMPARE(window.grid().rows(), 2);
    QCOMPARE(window.grid().topRow(), 1);
}

void TestEntry::everyCharacterOfTheCodePageIsKept()
{
    QByteArray name;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '|' && byte != '\n') {
            name += static_cast<char>(byte);
        }
    }
    const QByteArray entry = "D3C3|12/06/2010 18:22:05|Es|87.6|" + name + "|E|||||||\r\n";
    MainWindow window;
    window.start(entry);
    window.clickRow(1);
    window.click("Command3");
    QCOMPARE(window.logbook(), entry);
}

QTEST_MAIN(TestEntry)
#include "tst_entry.moc"
