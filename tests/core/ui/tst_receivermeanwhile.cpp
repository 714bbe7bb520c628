#include "fmlistwindow.h"
#include "importingwindow.h"
#include "live/receiversettings.h"
#include "live/ui/receiverdock.h"
#include "support/told.h"

#include <QAction>
#include <QDialog>
#include <QMenu>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

/// A receiver that hears RNE 1 on 98.5 MHz.
Told &listen(MainWindow &window)
{
    Told &source = listenTold(window.find<ReceiverDock>("receiverDock")->receiver());
    source.hear(98'500'000, 0xE201, u"RNE 1   "_s);
    return source;
}

qint32 logged(MainWindow &window)
{
    return window.form().log().count();
}

const LogEntry &last(MainWindow &window)
{
    return window.form().log().entry(logged(window) - 1);
}

/// Logs by itself, at once.
void logAutomatically(MainWindow &window, int earliest = 0)
{
    ReceiverSettings settings;
    settings.autoLog = {true, earliest, 0, 60, {}};
    writeReceiverSettings(window.look.path(), settings);
}

/// What the dock does each second.
void aSecondLater(MainWindow &window)
{
    window.find<ReceiverDock>("receiverDock")->doWhatIsDue(nowMilliseconds());
}

/// Keys come to this window from now on.
void activate(QWidget *window)
{
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
}

} // namespace

/// The key of "Log It" works whatever else the program does.
class TestReceiverMeanwhile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void duringAnImport_data();
    void duringAnImport();
    void duringAnUpload();
    void whileItLogsByItself();
    void whatItLogsByItselfDuringAnImportIsLoggedOnce();
    void belowAModalBox();
    void itsOwnQuestionIsAskedOnce();
    void aResultOfTheServiceTunes();
};

void TestReceiverMeanwhile::duringAnImport_data()
{
    QTest::addColumn<bool>("mainWindow");
    QTest::newRow("in the window of the import") << false;
    QTest::newRow("in the main window, out of reach") << true;
}

void TestReceiverMeanwhile::duringAnImport()
{
    QFETCH(bool, mainWindow);
    ImportingWindow window;
    for (int second = 0; second < 3; ++second) {
        window.spy(u"2010-06-12 18-22-0%1 111%1 A.txt"_s.arg(second));
    }
    window.start(oldEntry);
    listen(window);
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    QWidget *const front = mainWindow ? static_cast<QWidget *>(&window.form()) : dialog;
    activate(front);
    connect(dialog, &importRDSSpy::progress, dialog, [&](int done) {
        if (done == 1) {
            QTest::keyClick(front, Qt::Key_F6);
            QCOMPARE(window.text("status"), u"To be logged when this work is over: 98.5 RNE_1"_s);
        }
    });
    ImportingWindow::press(dialog, u"Command3"_s);
    QTRY_COMPARE(logged(window), 5);
    QCOMPARE(last(window).piCode, u"E201"_s);
    // The import and this one are a step each.
    window.trigger("menuEditUndo");
    QCOMPARE(logged(window), 4);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), oldEntry);
}

void TestReceiverMeanwhile::duringAnUpload()
{
    FmlistWindow window;
    window.open(identified, "OMID=7\r\n");
    listen(window);
    window.answerSlowly();
    window.duringRequest(1, [&] {
        window.key(Qt::Key_F6);
        QCOMPARE(logged(window), 1);
        QCOMPARE(window.text("status"), u"To be logged when this work is over: 98.5 RNE_1"_s);
    });
    window.trigger("menuFMListUploadLogs");
    QTRY_COMPARE(logged(window), 2);
    const QByteArray sent = QByteArray(identified).replace("||501|", "|fml=sent#|501|");
    QVERIFY(window.logbook().startsWith(QByteArray(sent + "E201|")));
    QCOMPARE(window.asked().size(), 1);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), sent);
}

void TestReceiverMeanwhile::whileItLogsByItself()
{
    MainWindow window;
    logAutomatically(window);
    window.start(oldEntry);
    Told &source = listen(window);
    aSecondLater(window);
    QCOMPARE(logged(window), 2);
    QCOMPARE(last(window).notes, u"auto"_s);
    // The key asks before it logs the same again.
    window.answers.press(QMessageBox::No);
    window.key(Qt::Key_F6);
    QCOMPARE(window.answers.takeTexts(),
        (QStringList {u"E201 on 98.5 MHz was logged within 60 minutes of this. Log it again?"_s}));
    QCOMPARE(logged(window), 2);
    // What the key has logged is not logged by itself.
    source.hear(99'000'000, 0xE202, u"RNE 2   "_s);
    window.key(Qt::Key_F6);
    QCOMPARE(logged(window), 3);
    QCOMPARE(last(window).notes, QString());
    aSecondLater(window);
    QCOMPARE(logged(window), 3);
    source.hear(99'500'000, 0xE203, u"RNE 3   "_s);
    aSecondLater(window);
    QCOMPARE(last(window).piCode, u"E203"_s);
    // One undo each.
    for (const qint32 left : {3, 2, 1}) {
        window.trigger("menuEditUndo");
        QCOMPARE(logged(window), left);
    }
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.logbook(), oldEntry);
}

void TestReceiverMeanwhile::whatItLogsByItselfDuringAnImportIsLoggedOnce()
{
    ImportingWindow window;
    logAutomatically(window);
    for (int second = 0; second < 3; ++second) {
        window.spy(u"2010-06-12 18-22-0%1 111%1 A.txt"_s.arg(second));
    }
    window.start(oldEntry);
    listen(window);
    auto *dialog = window.openSpy(u"12/06/2010"_s);
    activate(dialog);
    connect(dialog, &importRDSSpy::progress, dialog, [&] {
        aSecondLater(window);
        QTest::keyClick(dialog, Qt::Key_F6);
    });
    ImportingWindow::press(dialog, u"Command3"_s);
    QTRY_COMPARE(logged(window), 5);
    QCOMPARE(last(window).notes, u"auto"_s);
    aSecondLater(window);
    QCOMPARE(logged(window), 5);
}

void TestReceiverMeanwhile::belowAModalBox()
{
    MainWindow window;
    window.start(oldEntry);
    listen(window);
    window.answers.doing([&](QWidget *box) {
        QTest::keyClick(box, Qt::Key_F6);
        QCOMPARE(logged(window), 2);
        QTest::keyClick(box, Qt::Key_Escape);
    });
    // Quick Add without a frequency.
    window.key(Qt::Key_F5);
    QTest::keyClick(window.find<QDialog>("Dialog1"), Qt::Key_Return);
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(logged(window), 2);
    QCOMPARE(last(window).piCode, u"E201"_s);
}

void TestReceiverMeanwhile::itsOwnQuestionIsAskedOnce()
{
    MainWindow window;
    window.start(oldEntry);
    listen(window);
    window.key(Qt::Key_F6);
    QCOMPARE(logged(window), 2);
    window.answers.doing([&](QWidget *box) {
        QTest::keyClick(box, Qt::Key_F6);
        QTest::keyClick(box, Qt::Key_Escape);
    });
    window.key(Qt::Key_F6);
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(logged(window), 2);
}

void TestReceiverMeanwhile::aResultOfTheServiceTunes()
{
    FmlistWindow window;
    window.open(oneEntry);
    Told &source = listen(window);
    window.clickRow(1);
    window.click("Command11");
    QCOMPARE(window.resultRows(), QStringList {berlin});
    const QModelIndex frequency = window.results().model()->index(0, 0);
    QCOMPARE(window.results().model()->headerData(0, Qt::Horizontal).toString(), u"Freq"_s);
    const QPoint place = window.results().visualRect(frequency).center();
    const auto doubleClick = [&] {
        QTest::mouseClick(window.results().viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(window.results().viewport(), Qt::LeftButton, {}, place);
    };
    for (QAction *const action : window.find<QMenu>("receiverOptions")->actions()) {
        if (action->text().remove(u'&') == u"Tuning From the Log"_s) {
            action->trigger();
        }
    }
    doubleClick();
    QCOMPARE(source.tunedTo, QList<qint64> {87'600'000});
    QCOMPARE(window.answers.takeTexts(), QStringList());
    // As long as it is not ticked, it takes the result over.
    window.find<QMenu>("receiverOptions")->actions().at(1)->trigger();
    window.answers.press(QMessageBox::Yes);
    doubleClick();
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(source.tunedTo.size(), 1);
    QCOMPARE(window.text("uid"), u"4711"_s);
}

QTEST_MAIN(TestReceiverMeanwhile)
#include "tst_receivermeanwhile.moc"
