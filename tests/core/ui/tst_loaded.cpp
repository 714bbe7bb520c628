#include "loggingwindow.h"

#include <QAbstractButton>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray first = logLine("E201", "12/06/2010 10:00:00", "90.3", "RNE_CLAS", "E", "Bilbao");
const QByteArray second = logLine("F201", "12/06/2010 11:00:00", "90.0", "FIP", "F", "Brest");

QToolButton *link(MainWindow &window)
{
    return window.find<QToolButton>("statusLink");
}

} // namespace

/// What the form holds, what is marked, and what is typed but not stored.
class TestLoaded : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsNotTheMarkedRowIsChangedAfterAQuestion_data();
    void whatIsNotTheMarkedRowIsChangedAfterAQuestion();
    void ofTwinsTheMarkedOneIsNotTheLoadedOne();
    void theMarkedRowIsChangedWithoutAQuestion();
    void whatWasTypedCanBeHadBack();
    void aNewReceptionCanBeHadBack();
    void whatNobodyTypedIsNotTold();
    void newAndClonePutTheCursorIntoTheFrequency();
    void enterInALoadedEntryUpdatesIt();
    void escapeCancelsANewEntry();
    void escapePutsTheLoadedValuesBack();
    void aWrongDateIsToldOverTheTextAsTyped();
    void shortcutsGoTheWayOfTheirButtons_data();
    void shortcutsGoTheWayOfTheirButtons();
    void aPositionIsNotSentToAFormAtRest();
    void theStatusLineSaysWhatWasDone();
    void oddValuesAreToldBesideTheFields();
    void anUnreadableLogbookIsToldInTheEmptyGrid();
};

void TestLoaded::whatIsNotTheMarkedRowIsChangedAfterAQuestion_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("verb");
    QTest::newRow("Update") << u"Command3"_s << u"Update"_s;
    QTest::newRow("Delete") << u"Command15"_s << u"Delete"_s;
}

// A row without a frequency is not loaded: the form keeps the reception before it.
void TestLoaded::whatIsNotTheMarkedRowIsChangedAfterAQuestion()
{
    QFETCH(QString, button);
    QFETCH(QString, verb);
    const QByteArray noFrequency = "AAAA|12/06/2010 12:00:00|Es|||D||NAME|||||\r\n";
    const QByteArray log = "E201|12/06/2010 10:00:00|Es|90.3|Bilbao|E|aCRLFb|RNE_CLAS|||||\r\n" + noFrequency;
    MainWindow window;
    window.start(log);
    window.clickRow(1);
    window.clickRow(2);
    QCOMPARE(window.text("Text1"), u"E201"_s);
    window.answers.press(QMessageBox::No);
    window.click(button);
    QCOMPARE(window.answers.takeTexts(),
        QStringList {
            u"The reception in the form is not the marked row. It is\n\n12/06/2010 10:00:00  90.3  E201  "
            "RNE_CLAS  a b\n\n"_s
            + verb + u" this reception?"_s});
    QCOMPARE(window.logbook(), log);
    QVERIFY(window.enabled(button));
    window.answers.press(QMessageBox::Yes);
    window.click(button);
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(window.logbook(), verb == u"Delete" ? noFrequency : log);
    QVERIFY(!window.enabled(button));
}

void TestLoaded::ofTwinsTheMarkedOneIsNotTheLoadedOne()
{
    const QByteArray one = "E201|12/06/2010 10:00:00|Es|90.3|Bilbao|E|first|RNE|||||\r\n";
    const QByteArray two = "E201|12/06/2010 10:00:00|Es|90.3|Madrid|E|second|RNE|||||\r\n";
    MainWindow window;
    window.start(one + two);
    window.clickRow(2);
    QCOMPARE(window.form().selected(), 0);
    window.answers.press(QMessageBox::No);
    window.click("Command15");
    QVERIFY(window.answers.takeTexts().value(0).contains(u"first"_s));
    QCOMPARE(window.logbook(), one + two);
    window.clickRow(1);
    window.click("Command15");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.logbook(), two);
}

void TestLoaded::theMarkedRowIsChangedWithoutAQuestion()
{
    MainWindow window;
    window.start(first + second);
    window.clickRow(1);
    window.clickHeading(static_cast<int>(GridColumn::Freq));
    window.click("Command15");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.logbook(), second);
}

void TestLoaded::whatWasTypedCanBeHadBack()
{
    MainWindow window;
    window.start(first + second);
    window.clickRow(1);
    window.type("Text6", u"77"_s);
    window.type("Text3", u"weak\nfading"_s);
    window.clickRow(2);
    QCOMPARE(window.text("status"), u"Changes to 90.3 RNE_CLAS were not stored"_s);
    QVERIFY(link(window)->isVisible());
    QCOMPARE(link(window)->text(), u"Restore"_s);
    QTest::mouseClick(link(window), Qt::LeftButton);
    QCOMPARE(window.form().selected(), 0);
    QCOMPARE(window.grid().row(), 1);
    QCOMPARE(window.text("Text6"), u"77"_s);
    QCOMPARE(window.text("Text3"), u"weak\nfading"_s);
    QCOMPARE(window.yellow().size(), 12);
    window.click("Command3");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.logbook(),
        "E201|12/06/2010 10:00:00|Es|90.3|Bilbao|E|weakCRLFfading|RNE_CLAS|77||||\r\n" + second);
}

void TestLoaded::aNewReceptionCanBeHadBack()
{
    MainWindow window;
    window.start(first);
    window.click("Command2");
    window.fill({u"Text9"_s, u"88.2"_s, u"Text1"_s, u"F201"_s, u"Combo3"_s, u"F"_s, u"Text2"_s,
        u"01/07/2010 09:05:00"_s});
    window.clickRow(1);
    QCOMPARE(window.text("status"), u"Changes to 88.2 F201 were not stored"_s);
    QTest::mouseClick(link(window), Qt::LeftButton);
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(window.caption("Command2"), u"Cancel"_s);
    window.click("Command1");
    QCOMPARE(window.logbook(), first + "F201|01/07/2010 09:05:00||88.2||F|||||||\r\n");
}

void TestLoaded::whatNobodyTypedIsNotTold()
{
    MainWindow window;
    // The check of a field that is left changes its letters, which is no typing.
    window.start("e2f1|12/06/2010 10:00:00|Es|90.3|Bilbao|E||a b|||||\r\n" + second);
    window.clickRow(1);
    window.find<QWidget>("Text1")->setFocus();
    window.find<QWidget>("Text8")->setFocus();
    window.find<QWidget>("Text9")->setFocus();
    QCOMPARE(window.text("Text1"), u"E2F1"_s);
    window.clickRow(2);
    QCOMPARE(window.text("status"), QString());
    QVERIFY(!link(window)->isVisible());
}

void TestLoaded::newAndClonePutTheCursorIntoTheFrequency()
{
    MainWindow window;
    window.start(first);
    for (const QString &button : {u"Command2"_s, u"Command9"_s}) {
        window.clickRow(1);
        window.click(button);
        auto *frequency = window.find<QLineEdit>("Text9");
        QVERIFY2(frequency->hasFocus(), qPrintable(button));
        QCOMPARE(frequency->selectedText(), u"90.3"_s);
        window.key(Qt::Key_Escape);
    }
}

void TestLoaded::enterInALoadedEntryUpdatesIt()
{
    MainWindow window;
    window.start(first);
    window.clickRow(1);
    window.type("Text6", u"5"_s);
    window.key(Qt::Key_Return);
    QVERIFY(window.logbook().contains("|RNE_CLAS|5|"));
    QVERIFY(!window.enabled("Command3"));
}

void TestLoaded::escapeCancelsANewEntry()
{
    MainWindow window;
    window.start(first);
    window.click("Command2");
    window.type("Text1", u"F201"_s);
    window.key(Qt::Key_Escape);
    QCOMPARE(window.caption("Command2"), u"New"_s);
    QCOMPARE(disabled(window), lockedInBrowseState());
    // A clone has no "Cancel" to press.
    window.clickRow(1);
    window.click("Command9");
    window.key(Qt::Key_Escape);
    QCOMPARE(disabled(window), lockedInBrowseState());
    QCOMPARE(window.logbook(), first);
}

void TestLoaded::escapePutsTheLoadedValuesBack()
{
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    window.clickRow(1);
    const QStringList fields = window.fields();
    typeEntry(window);
    window.key(Qt::Key_Escape);
    QCOMPARE(window.fields(), fields);
    QVERIFY(window.enabled("Command3"));
    QCOMPARE(window.logbook(), oneEntry);
}

void TestLoaded::aWrongDateIsToldOverTheTextAsTyped()
{
    MainWindow window;
    window.start(first);
    window.clickRow(1);
    window.type("Text2", u"31/02/2010"_s);
    QString behindTheBox;
    window.answers.doing([&](QWidget *box) {
        behindTheBox = window.text("Text2");
        box->close();
    });
    window.find<QWidget>("Text6")->setFocus();
    QTRY_COMPARE(window.answers.seen().size(), 1);
    QTRY_VERIFY(isNow(window.text("Text2")));
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Invalid Date"_s});
    QCOMPARE(behindTheBox, u"31/02/2010"_s);
}

void TestLoaded::shortcutsGoTheWayOfTheirButtons_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("F5") << Qt::Key_F5 << Qt::KeyboardModifiers();
    QTest::newRow("Ctrl+N") << Qt::Key_N << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("Ctrl+S") << Qt::Key_S << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("Ctrl+Shift+N") << Qt::Key_N
                                  << Qt::KeyboardModifiers(Qt::ControlModifier | Qt::ShiftModifier);
    for (const Qt::Key key : {Qt::Key_R, Qt::Key_L, Qt::Key_P, Qt::Key_Delete}) {
        QTest::addRow("Ctrl+%s", qPrintable(QKeySequence(key).toString()))
            << key << Qt::KeyboardModifiers(Qt::ControlModifier);
    }
}

// The check of the field with the wrong date comes first, and nothing else is done.
void TestLoaded::shortcutsGoTheWayOfTheirButtons()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    MainWindow window;
    window.start(first);
    window.clickRow(1);
    window.type("Text2", u"nonsense"_s);
    window.key(key, modifiers);
    QTRY_COMPARE(window.answers.seen().size(), 1);
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Invalid Date"_s});
    QVERIFY(!window.form().findChild<QDialog *>(u"Dialog1"_s));
    QCOMPARE(window.logbook(), first);
    QCOMPARE(window.form().selected(), 0);
    QVERIFY(window.enabled("Command3"));
}

void TestLoaded::aPositionIsNotSentToAFormAtRest()
{
    MainWindow window;
    window.start(first);
    window.trigger("menuToolsConverter");
    auto *converter = window.find<QDialog>("Dialog");
    auto *send = converter->findChild<QAbstractButton *>(u"Command4"_s);
    QTest::mouseClick(send, Qt::LeftButton);
    QCOMPARE(window.text("Text7"), QString());
    QCOMPARE(converter->findChild<QLabel *>(u"Text12Problem"_s)->text(),
        u"No reception is open in the log: choose one or press New first"_s);
    window.click("Command2");
    QTest::mouseClick(send, Qt::LeftButton);
    QVERIFY(!window.text("Text7").isEmpty());
    QCOMPARE(converter->findChild<QLabel *>(u"Text12Problem"_s)->text(), QString());
}

void TestLoaded::theStatusLineSaysWhatWasDone()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\n");
    window.start(first, "Bilbao|E|43.263|-2.935||\r\nMadrid|E|40.4|-3.7||\r\n");
    addStation(window);
    QCOMPARE(window.text("status"), u"Added 88.2 F201"_s);
    window.clickRow(1);
    window.click("Command3");
    QCOMPARE(window.text("status"), u"Updated 90.3 RNE_CLAS"_s);
    window.clickRow(1);
    window.click("Command15");
    QCOMPARE(window.text("status"), u"Deleted 90.3 RNE_CLAS"_s);
    window.click("Command10");
    QCOMPARE(window.text("status"), u"Distances re-calculated: 2 sites"_s);
}

void TestLoaded::oddValuesAreToldBesideTheFields()
{
    MainWindow window;
    window.start(first);
    window.clickRow(1);
    QCOMPARE(window.text("problem"), QString());
    window.type("Text9", u"870"_s);
    QVERIFY(window.text("problem").contains(u"108"_s));
    window.type("Text9", u"87.0"_s);
    window.type("Text5", u"a|b"_s);
    QVERIFY(window.text("problem").contains(u'|'));
    window.click("Command3");
    QVERIFY(window.logbook().contains("|a|b|E|"));
}

void TestLoaded::anUnreadableLogbookIsToldInTheEmptyGrid()
{
    MainWindow window;
    window.start(QByteArray(first).replace("Bilbao", "Bil|bao") + second);
    QCOMPARE(window.grid().rows(), 1);
    QCOMPARE(window.grid().emptyText(),
        window.directory.file(u"RDSLog.log"_s)
            + u" was not loaded.\nIts first line has 13 fields instead of 12 or 10:\n"
              "E201|12/06/2010 10:00:00|Es|90.3|Bil|bao|E||RNE_CLAS|10||||\n"
              "It has 2 lines. Before the first save it is kept as a copy, so nothing of it is lost."_s);
}

QTEST_MAIN(TestLoaded)
#include "tst_loaded.moc"
