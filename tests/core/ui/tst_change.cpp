#include "loggingwindow.h"

#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestChange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
    void clonedNotesKeepTheirBytes_data();
    void clonedNotesKeepTheirBytes();
    void enterInTheNotesIsALineBreak();
    void everyCharacterOfTheCodePageIsKept();
};

void TestChange::updateRewritesTheRowInPlace()
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
    QCOMPARE(window.grid().selectionModel()->selectedIndexes().size(), allColumnCount);
    QCOMPARE(window.form().selected(), 0);
    window.form().populateGrid();
    QCOMPARE(window.row(2),
        u"20/06/2010 07:08:09|F201|88.2|FIP|F|Paris|812.4|10KW|weak but clear|Tropo|None|99"_s);
}

void TestChange::updateShowsTheDateAsTyped()
{
    MainWindow window;
    window.start(oneEntry + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
    window.clickRow(1);
    window.type("Text2", u"2010-06-14 7:08"_s);
    window.click("Command3");
    QCOMPARE(window.grid().text(1, GridColumn::DateTime), u"2010-06-14 7:08"_s);
    QVERIFY(window.logbook().startsWith("D3C3|14/06/2010 07:08:00|Es|"));
    window.clickHeading(0);
    QCOMPARE(window.piCodes(), (QStringList {u"D3C3"_s, u"E201"_s}));
    window.clickRow(2);
    window.clickRow(1);
    QCOMPARE(window.form().selected(), 0);
    QCOMPARE(window.text("Text2"), u"14/06/2010 07:08:00"_s);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestChange::updateKeepsNotesThatNobodyTouched()
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

void TestChange::updateMovesATransmitter()
{
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    window.clickRow(1);
    window.fill({u"Text7"_s, u"43.3"_s, u"Text10"_s, u"-3"_s});
    window.click("Command3");
    QCOMPARE(window.transmitterFile(), "Bilbao|E|43.3|-3|812.4|\r\n"_ba);
    QCOMPARE(window.logbook(), oneEntry);
}

void TestChange::updateWithoutASelectedEntryIsARunTimeError()
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

void TestChange::cloneThenAddDiffersInDateAndUid()
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

void TestChange::deleteShowsDeleteUntilTheRefill()
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
    for (const char *name : {"Text2", "Text3", "Command1", "Command3", "Command9", "Command15"}) {
        QVERIFY2(!window.enabled(name), name);
    }
    QCOMPARE(window.transmitterFile(), oneTransmitter);
}

void TestChange::aDeletedRowCanBeChosenAndBroughtBack()
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

void TestChange::deletingOneOfTwoAlikeDeletesTheLowerIndex()
{
    MainWindow window;
    const QByteArray first = logLine("D3C3", "12/06/2010 18:22:05", "87.6", "ONE", "D", "First");
    const QByteArray second = logLine("D3C3", "12/06/2010 18:22:05", "87.6", "TWO", "D", "Second");
    window.start(first + second);
    window.clickRow(2);
    QCOMPARE(window.text("Text5"), u"First"_s);
    window.answers.press(QMessageBox::Yes);
    window.click("Command15");
    QCOMPARE(window.logbook(), second);
    QCOMPARE(window.form().log().entry(0).piCode, u"delete"_s);
}

void TestChange::anEntryLoadedThroughARefillUpdatesItsOwnRow()
{
    MainWindow window;
    window.start(oneEntry + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
    window.clickRow(1);
    window.form().populateGrid();
    QCOMPARE(window.grid().row(), 2);
    QCOMPARE(window.text("Text1"), u"D3C3"_s);
    window.type("Text8", u"RNE_2"_s);
    window.answers.press(QMessageBox::Yes);
    window.click("Command3");
    QCOMPARE(window.grid().text(1, GridColumn::RdsName), u"RNE_2"_s);
    QCOMPARE(window.row(2), u"13/06/2010 10:00:00|E201|88.0|LATER|D|Brocken||10||Es||"_s);
    QCOMPARE(window.grid().row(), 1);
}

void TestChange::anEntryLoadedThroughARefillIsDeletedInItsOwnRow()
{
    MainWindow window;
    window.start(oneEntry + logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
    window.clickRow(1);
    window.form().populateGrid();
    QCOMPARE(window.grid().row(), 2);
    window.answers.press(QMessageBox::Yes);
    window.click("Command15");
    QCOMPARE(window.piCodes(), (QStringList {u"delete"_s, u"E201"_s}));
    QCOMPARE(window.grid().row(), 1);
    QCOMPARE(window.grid().selectionModel()->selectedRows().first().row(), 0);
    QCOMPARE(window.logbook(), logLine("E201", "13/06/2010 10:00:00", "88.0", "LATER"));
}

void TestChange::aDeletedRowGoesFromTheFileButStaysInTheGrid()
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

void TestChange::clonedNotesKeepTheirBytes_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QByteArray>("notes");
    QTest::newRow("untouched") << QString()
                               << "a\xA0"
                                  "b\rcCRLFd"_ba;
    QTest::newRow("edited") << u"x"_s
                            << "xa\xA0"
                               "bCRLFcCRLFd"_ba;
}

void TestChange::clonedNotesKeepTheirBytes()
{
    QFETCH(QString, typed);
    QFETCH(QByteArray, notes);
    MainWindow window;
    window.start("D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E|a\xA0"
                 "b\rcCRLFd|RNE_1|10||||\r\n");
    window.clickRow(1);
    window.click("Command9");
    auto *field = window.find<QPlainTextEdit>("Text3");
    field->setFocus();
    field->moveCursor(QTextCursor::Start);
    QTest::keyClicks(field, typed);
    window.click("Command1");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.form().log().count(), 2);
    const QByteArray last = window.logbook().chopped(2).split('\n').constLast();
    const QByteArray wanted = "|E|" + notes + "|RNE_1|";
    QVERIFY2(last.contains(wanted), last.constData());
    // Nothing of them is left in a new entry.
    window.click("Command2");
    window.fill({u"Text9"_s, u"88"_s, u"Text8"_s, u"FIP"_s, u"Combo3"_s, u"F"_s});
    window.click("Command1");
    QCOMPARE(window.form().log().entry(2).notes, QString());
}

void TestChange::enterInTheNotesIsALineBreak()
{
    MainWindow window;
    window.start(oneEntry);
    window.clickRow(1);
    window.type("Text3", u"a\n\nb\n"_s);
    window.click("Command3");
    QVERIFY(window.logbook().contains("|aCRLFCRLFbCRLF|"));
    QCOMPARE(window.form().log().entry(0).notes, u"a\r\n\r\nb\r\n"_s);
}

void TestChange::everyCharacterOfTheCodePageIsKept()
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

QTEST_MAIN(TestChange)
#include "tst_change.moc"
