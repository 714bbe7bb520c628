#include "fmlistwindow.h"

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>

#include <cerrno>
#include <utility>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray first = logLine("E201", "12/06/2010 10:00:00", "90.3", "RNE_CLAS", "E", "Bilbao");
const QByteArray second = logLine("F201", "12/06/2010 11:00:00", "90.0", "FIP", "F", "Brest");
const QByteArray bilbao = "Bilbao|E|43.263|-2.935||\r\n";

QStringList rows(MainWindow &window)
{
    QStringList all;
    for (int row = 1; row < window.grid().rows(); ++row) {
        all += window.row(row);
    }
    return all;
}

QString undoText(MainWindow &window)
{
    return window.find<QAction>("menuEditUndo")->text().remove(u'&');
}

QString redoText(MainWindow &window)
{
    return window.find<QAction>("menuEditRedo")->text().remove(u'&');
}

// Which of the two are disabled.
QStringList disabled(MainWindow &window)
{
    QStringList names;
    for (const QString &name : {u"menuEditUndo"_s, u"menuEditRedo"_s}) {
        if (!window.find<QAction>(name)->isEnabled()) {
            names += name;
        }
    }
    return names;
}

// A logbook of that many entries, a second apart.
QByteArray numberedLog(int entries)
{
    QByteArray log;
    for (int i = 0; i < entries; ++i) {
        log += logLine(QByteArray::number(0x1000 + i, 16).toUpper(),
            "12/06/2010 10:" + QByteArray::number(i / 60).rightJustified(2, '0') + ':'
                + QByteArray::number(i % 60).rightJustified(2, '0'),
            "87.6", "NAME");
    }
    return log;
}

} // namespace

/// Undo and redo through the window.
class TestUndo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCommandIsTakenBackAndMadeAgain_data();
    void everyCommandIsTakenBackAndMadeAgain();
    void nothingToUndoIsDisabled();
    void aTextBoxUndoesItsOwnTyping();
    void typedTextIsNotLostWithoutAQuestion();
    void theEntryIsMarkedAndInViewButNotLoaded();
    void anUndoneUpdateOfTheDateGoesBackToItsPlace();
    void anUploadIsNoStepAndItsMarksStay();
    void anAutomaticSearchIsOneStep();
    void aFailingSaveIsToldAndTheStepIsTaken();
    void anAmpersandInANameIsNoMnemonic();
    void anAddWhoseSiteIsKnownWritesTheLogbookAlone();
};

void TestUndo::everyCommandIsTakenBackAndMadeAgain_data()
{
    using Work = std::function<void(FmlistWindow &)>;
    QTest::addColumn<Work>("work");
    QTest::addColumn<QString>("name");
    QTest::newRow("Add") << Work([](FmlistWindow &window) {
        window.click("Command2");
        window.fill({u"Text9"_s, u"101.1"_s, u"Text1"_s, u"D3C3"_s, u"Text8"_s, u"MDR"_s, u"Combo3"_s, u"D"_s,
            u"Text5"_s, u"Brocken"_s, u"Text7"_s, u"51.8"_s, u"Text10"_s, u"10.6"_s, u"Text2"_s,
            u"12/06/2010 10:30:00"_s});
        window.click("Command1");
    }) << u"Add 101.1 MDR"_s;
    QTest::newRow("Quick Add") << Work([](FmlistWindow &window) {
        window.key(Qt::Key_F5);
        auto *dialog = window.find<QWidget>("Dialog1");
        dialog->findChild<QLineEdit *>(u"Text1"_s)->setText(u"99.9"_s);
        dialog->findChild<QLineEdit *>(u"Text2"_s)->setText(u"AAAA"_s);
        QTest::mouseClick(dialog->findChild<QAbstractButton *>(u"OKButton"_s), Qt::LeftButton);
    }) << u"Quick Add 99.9 AAAA"_s;
    QTest::newRow("Update") << Work([](FmlistWindow &window) {
        window.clickRow(1);
        window.fill({u"Text6"_s, u"25"_s, u"Text7"_s, u"43.3"_s});
        window.click("Command3");
    }) << u"Update 90.3 RNE_CLAS"_s;
    QTest::newRow("Delete") << Work([](FmlistWindow &window) {
        window.clickRow(1);
        window.click("Command15");
    }) << u"Delete 90.3 RNE_CLAS"_s;
    QTest::newRow("Clone and Add") << Work([](FmlistWindow &window) {
        window.clickRow(2);
        window.click("Command9");
        window.type("Text2", u"13/06/2010 10:00:00"_s);
        window.click("Command1");
    }) << u"Add 90.0 FIP"_s;
    QTest::newRow("a result taken over") << Work([](FmlistWindow &window) {
        window.clickRow(2);
        window.click("Command11");
        window.answers.press(QMessageBox::Yes);
        window.doubleClickResult(0);
    }) << u"Take over 90 FIP"_s;
    QTest::newRow("Re-Calculate Distances")
        << Work([](FmlistWindow &window) { window.click("Command10"); }) << u"Re-Calculate Distances"_s;
}

void TestUndo::everyCommandIsTakenBackAndMadeAgain()
{
    QFETCH(std::function<void(FmlistWindow &)>, work);
    QFETCH(QString, name);
    FmlistWindow window;
    window.directory.write(u"tx.lst"_s, bilbao);
    window.open(first + second, "HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n");
    const QStringList before = rows(window);
    work(window);
    const QStringList after = rows(window);
    const QByteArray log = window.logbook();
    const QByteArray sites = window.transmitterFile();
    QVERIFY(after != before);
    QCOMPARE(undoText(window), u"Undo "_s + name);
    (void)window.answers.takeTexts();
    for (int turn = 0; turn < 2; ++turn) {
        window.trigger("menuEditUndo");
        QCOMPARE(window.text("status"), u"Undone: "_s + name);
        QCOMPARE(rows(window), before);
        QCOMPARE(window.logbook(), first + second);
        QCOMPARE(window.transmitterFile(), bilbao);
        QCOMPARE(redoText(window), u"Redo "_s + name);
        QCOMPARE(disabled(window), QStringList {u"menuEditUndo"_s});
        window.trigger("menuEditRedo");
        QCOMPARE(window.text("status"), u"Redone: "_s + name);
        QCOMPARE(window.logbook(), log);
        QCOMPARE(window.transmitterFile(), sites);
        QCOMPARE(rows(window), after);
        QCOMPARE(disabled(window), QStringList {u"menuEditRedo"_s});
    }
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestUndo::nothingToUndoIsDisabled()
{
    MainWindow window;
    window.start(first);
    QCOMPARE(undoText(window), u"Undo"_s);
    QCOMPARE(redoText(window), u"Redo"_s);
    QCOMPARE(disabled(window), (QStringList {u"menuEditUndo"_s, u"menuEditRedo"_s}));
    QCOMPARE(window.find<QAction>("menuEditUndo")->shortcuts(), QList<QKeySequence> {u"Ctrl+Z"_s});
    QCOMPARE(window.find<QAction>("menuEditRedo")->shortcuts(),
        (QList<QKeySequence> {u"Ctrl+Shift+Z"_s, u"Ctrl+Y"_s}));
}

void TestUndo::aTextBoxUndoesItsOwnTyping()
{
    MainWindow window;
    window.start(first);
    window.clickRow(1);
    window.click("Command15");
    window.type("Text1", u"AB"_s);
    window.key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(window.text("Text1") != u"AB"_s);
    QCOMPARE(window.grid().text(1, GridColumn::PiCode), u"delete"_s);
    window.grid().setFocus();
    window.key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.grid().text(1, GridColumn::PiCode), u"E201"_s);
    window.key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(window.grid().text(1, GridColumn::PiCode), u"delete"_s);
    window.key(Qt::Key_Z, Qt::ControlModifier);
    window.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(window.grid().text(1, GridColumn::PiCode), u"delete"_s);
}

void TestUndo::typedTextIsNotLostWithoutAQuestion()
{
    MainWindow window;
    window.start(first + second);
    window.clickRow(1);
    window.click("Command15");
    window.clickRow(2);
    window.type("Text6", u"77"_s);
    window.answers.press(QMessageBox::No);
    window.trigger("menuEditUndo");
    QCOMPARE(window.answers.takeTexts(),
        QStringList {u"What is typed in the form is not stored and would be lost.\n\nGo on all the same?"_s});
    QCOMPARE(window.text("Text6"), u"77"_s);
    QCOMPARE(window.logbook(), second);
    QCOMPARE(window.form().selected(), 1);
    window.answers.press(QMessageBox::Yes);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), first + second);
    QCOMPARE(window.text("Text6"), QString());
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(window.yellow(), QStringList());
}

void TestUndo::theEntryIsMarkedAndInViewButNotLoaded()
{
    MainWindow window;
    window.start(numberedLog(300));
    window.grid().setTopRow(1);
    window.clickRow(3);
    window.click("Command15");
    window.grid().setRow(300);
    window.grid().setTopRow(300);
    QVERIFY(!window.isRowVisible(3));
    window.trigger("menuEditUndo");
    QCOMPARE(window.grid().row(), 3);
    QVERIFY(window.isRowVisible(3));
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(window.text("Text1"), QString());
}

void TestUndo::anUndoneUpdateOfTheDateGoesBackToItsPlace()
{
    MainWindow window;
    window.start(first + second);
    const QStringList before = rows(window);
    window.clickRow(1);
    window.type("Text2", u"20/06/2010 10:00:00"_s);
    window.click("Command3");
    window.form().populateGrid();
    QCOMPARE(window.piCodes(), (QStringList {u"F201"_s, u"E201"_s}));
    window.trigger("menuEditUndo");
    QCOMPARE(rows(window), before);
    window.trigger("menuEditRedo");
    QCOMPARE(window.piCodes(), (QStringList {u"F201"_s, u"E201"_s}));
}

void TestUndo::anUploadIsNoStepAndItsMarksStay()
{
    FmlistWindow window;
    window.open({}, "OMID=7\r\n");
    window.click("Command2");
    window.fill({u"Text9"_s, u"101.1"_s, u"Text1"_s, u"D3C3"_s, u"Combo3"_s, u"D"_s, u"uid"_s, u"4711"_s,
        u"Text2"_s, u"12/06/2010 10:30:00"_s});
    window.click("Command1");
    window.trigger("menuFMListUploadLogs");
    const QByteArray sent = window.logbook();
    QVERIFY(sent.contains("|fml=sent#|4711|"));
    QCOMPARE(undoText(window), u"Undo Add 101.1 D3C3"_s);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), QByteArray(""));
    QCOMPARE(window.grid().rows(), 1);
    window.trigger("menuEditRedo");
    QCOMPARE(window.logbook(), sent);
    QCOMPARE(window.grid().text(1, GridColumn::FMList), u"Sent"_s);
}

void TestUndo::anAutomaticSearchIsOneStep()
{
    FmlistWindow window;
    window.open(exact + unknown + several);
    window.searchAutomatically("menuFMLSearchPI");
    QCOMPARE(window.logbook(), exactAfter + unknownAfter + severalAfter);
    QCOMPARE(undoText(window), u"Undo Auto Search of 12/06/2010"_s);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), exact + unknown + several);
    QCOMPARE(disabled(window), QStringList {u"menuEditUndo"_s});
    window.trigger("menuEditRedo");
    QCOMPARE(window.logbook(), exactAfter + unknownAfter + severalAfter);
}

void TestUndo::aFailingSaveIsToldAndTheStepIsTaken()
{
    MainWindow window;
    window.start(first + second);
    window.clickRow(1);
    window.click("Command15");
    window.calls.failWrite = ENOSPC;
    window.trigger("menuEditUndo");
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(window.grid().text(1, GridColumn::PiCode), u"E201"_s);
    QCOMPARE(window.logbook(), second);
    QCOMPARE(undoText(window), u"Undo"_s);
    QCOMPARE(redoText(window), u"Redo Delete 90.3 RNE_CLAS"_s);
    window.calls.failWrite = 0;
    window.trigger("menuEditRedo");
    QCOMPARE(window.logbook(), second);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), first + second);
}

void TestUndo::anAmpersandInANameIsNoMnemonic()
{
    MainWindow window;
    window.start(logLine("E201", "12/06/2010 10:00:00", "90.3", "A&B"));
    window.clickRow(1);
    window.click("Command15");
    QCOMPARE(window.find<QAction>("menuEditUndo")->text(), u"&Undo Delete 90.3 A&&B"_s);
    QCOMPARE(window.text("status"), u"Deleted 90.3 A&B"_s);
}

void TestUndo::anAddWhoseSiteIsKnownWritesTheLogbookAlone()
{
    MainWindow window;
    window.start(first, bilbao);
    QStringList written;
    window.calls.beforeRename = [&](const QByteArray &to) {
        written += QString::fromUtf8(to).section(u'/', -1);
    };
    const auto add = [&](const QString &latitude) {
        window.click("Command2");
        window.fill({u"Text9"_s, u"101.1"_s, u"Text1"_s, u"D3C3"_s, u"Combo3"_s, u"E"_s, u"Text5"_s,
            u"Bilbao"_s, u"Text7"_s, latitude, u"Text10"_s, u"-2.935"_s});
        window.click("Command1");
    };
    add(u"43.263"_s);
    QCOMPARE(std::exchange(written, {}), QStringList {u"RDSLog.log"_s});
    add(u"43.3"_s);
    QCOMPARE(written, (QStringList {u"RDSLog.log"_s, u"tx.lst"_s}));
}

QTEST_MAIN(TestUndo)
#include "tst_undo.moc"
