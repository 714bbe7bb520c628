#include "loggingwindow.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
    void enterInAFieldAddsANewEntry_data();
    void enterInAFieldAddsANewEntry();
    void enterUpdatesAnExistingEntryAndAddsNone();
    void controlSAddsOrUpdates();
    void controlNBeginsANewEntry();
    void theFirstEntryMakesTheFile();
};

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

void TestEntry::enterUpdatesAnExistingEntryAndAddsNone()
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
    QCOMPARE(window.logbook(), QByteArray(oneEntry).replace("RNE_1", "OTHER"));
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

QTEST_MAIN(TestEntry)
#include "tst_entry.moc"
