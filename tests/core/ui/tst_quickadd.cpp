#include "core/ui/dialog1.h"
#include "support/mainwindow.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// The Quick Add window that is open, and what it shows.
class QuickAdd
{
public:
    explicit QuickAdd(MainWindow &window)
        : m_dialog(window.find<Dialog1>("Dialog1"))
    {
        if (!QTest::qWaitFor([this] { return QApplication::activeWindow() == m_dialog; })) {
            qFatal("the window did not become active");
        }
    }

    [[nodiscard]] Dialog1 *dialog() const { return m_dialog; }
    [[nodiscard]] QLineEdit *field(const QString &name) const
    {
        return m_dialog->findChild<QLineEdit *>(name);
    }
    [[nodiscard]] QStringList texts() const
    {
        return {field(u"Text1"_s)->text(), field(u"Text2"_s)->text(), field(u"Text3"_s)->text()};
    }
    void type(const QString &freq, const QString &piCode, const QString &name) const
    {
        const QList<std::pair<QString, QString>> typed {
            {u"Text1"_s, freq}, {u"Text2"_s, piCode}, {u"Text3"_s, name}};
        for (const auto &[control, text] : typed) {
            QLineEdit *edit = field(control);
            edit->setFocus();
            edit->selectAll();
            QTest::keyClick(edit, Qt::Key_Delete);
            QTest::keyClicks(edit, text);
        }
    }
    void press(const QString &button) const
    {
        QTest::mouseClick(m_dialog->findChild<QPushButton *>(button), Qt::LeftButton);
    }
    [[nodiscard]] bool isOpen() const { return m_dialog && m_dialog->isVisible(); }

private:
    QPointer<Dialog1> m_dialog;
};

} // namespace

class TestQuickAdd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowOffersAFrequency();
    void theWindowIsNotWaitedFor();
    void theButtonAndF5OpenIt();
    void f5WorksFromWithinEveryField_data();
    void f5WorksFromWithinEveryField();
    void theMainFormFillsIt();
    void itIsOneWindow();
    void f5RaisesWhatIsTyped();
    void theFrequencyAndThenEachFieldIsChosenWhole();
    void aPiCodeOfTheFormIsSaidToBeIt();
    void whatIsOddIsToldAndLogged();
    void anEntryIsLogged();
    void anEntryOfANameAloneIsLogged();
    void theNameIsNotTrimmed();
    void whatTheFormHeldIsCleared();
    void theModeStaysAndTheCountryDoesNot();
    void itAddsAnEntryWhileAnotherIsEdited();
    void theChecksHaveTheirOwnSpelling_data();
    void theChecksHaveTheirOwnSpelling();
    void blanksAloneAreNoFrequency();
    void enterLogsTheStation();
    void twoQuickClicksLogOnce();
    void whatIsPendingHappensBetweenNewAndTheFields();
    void cancelAndEscapeLogNothing();
    void aFullDiskIsTold();
};

void TestQuickAdd::theWindowOffersAFrequency()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    const QuickAdd quick(window);
    QCOMPARE(quick.dialog()->windowTitle(), u"Quick Add"_s);
    QCOMPARE(quick.texts(), (QStringList {u"87.5"_s, u""_s, u""_s}));
}

void TestQuickAdd::theWindowIsNotWaitedFor()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    const QuickAdd quick(window);
    QVERIFY(quick.isOpen());
    QVERIFY(!quick.dialog()->isModal());
    window.click("Command2");
    QCOMPARE(window.caption("Command2"), u"Cancel"_s);
    QVERIFY(quick.isOpen());
}

void TestQuickAdd::theButtonAndF5OpenIt()
{
    MainWindow window;
    window.start();
    QCOMPARE(window.caption("Command14"), u"Quick Add (F5)"_s);
    QTest::keyClick(&window.form(), Qt::Key_F5);
    QVERIFY(QuickAdd(window).isOpen());
}

void TestQuickAdd::f5WorksFromWithinEveryField_data()
{
    QTest::addColumn<QString>("field");
    for (const char *field : {"Text9", "Text1", "Text8", "Text2", "Combo2", "Text3", "uid", "Combo3",
             "Combo1", "Text5", "Text6", "Text7", "Text10", "Grid1", "List1", "Command1"}) {
        QTest::newRow(field) << QString::fromLatin1(field);
    }
}

void TestQuickAdd::f5WorksFromWithinEveryField()
{
    QFETCH(QString, field);
    MainWindow window;
    window.start(logLine("D3C3", "12/06/2010 18:22:05", "87.6", "RNE_1"));
    window.click("Command2");
    window.find<QWidget>(field)->setFocus();
    window.key(Qt::Key_F5);
    QVERIFY(QuickAdd(window).isOpen());
}

void TestQuickAdd::theMainFormFillsIt()
{
    MainWindow window;
    window.start();
    window.fill({u"Text9"_s, u"101.1"_s, u"Text1"_s, u"d3c3"_s});
    window.click("Command14");
    QCOMPARE(QuickAdd(window).texts(), (QStringList {u"101.1"_s, u"D3C3"_s, u""_s}));
}

void TestQuickAdd::itIsOneWindow()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    QuickAdd(window).type(u"99.9"_s, u"AAAA"_s, u"HALF"_s);
    window.fill({u"Text1"_s, u"BBBB"_s});
    window.click("Command14");
    QCOMPARE(window.form().findChildren<Dialog1 *>().size(), 1);
    QCOMPARE(QuickAdd(window).texts(), (QStringList {u"99.9"_s, u"AAAA"_s, u"HALF"_s}));
    QuickAdd(window).press(u"CancelButton"_s);
    window.click("Command14");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(QuickAdd(window).texts(), (QStringList {u"87.5"_s, u"BBBB"_s, u""_s}));
}

void TestQuickAdd::f5RaisesWhatIsTyped()
{
    MainWindow window;
    window.start();
    window.fill({u"Text9"_s, u"101.1"_s, u"Text1"_s, u"BBBB"_s});
    window.key(Qt::Key_F5);
    QuickAdd(window).type(u"99.9"_s, u""_s, u"HALF"_s);
    window.form().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window.form()));
    window.key(Qt::Key_F5);
    QCOMPARE(QuickAdd(window).texts(), (QStringList {u"99.9"_s, u""_s, u"HALF"_s}));
    QVERIFY(!QuickAdd(window).dialog()->findChild<QLabel *>(u"fromForm"_s)->isVisible());
}

void TestQuickAdd::theFrequencyAndThenEachFieldIsChosenWhole()
{
    MainWindow window;
    window.start();
    for (const bool filled : {false, true}) {
        if (filled) {
            window.fill({u"Text9"_s, u"101.1"_s, u"Text1"_s, u"D3C3"_s});
        }
        window.key(Qt::Key_F5);
        const QuickAdd quick(window);
        QLineEdit *freq = quick.field(u"Text1"_s);
        QVERIFY(freq->hasFocus());
        QCOMPARE(freq->selectedText(), filled ? u"101.1"_s : u"87.5"_s);
        quick.field(u"Text3"_s)->setText(u"NAME"_s);
        QTest::keyClick(freq, Qt::Key_Tab);
        QCOMPARE(quick.field(u"Text2"_s)->selectedText(), filled ? u"D3C3"_s : u""_s);
        QTest::keyClick(quick.field(u"Text2"_s), Qt::Key_Tab);
        QCOMPARE(quick.field(u"Text3"_s)->selectedText(), u"NAME"_s);
        QTest::keyClick(quick.field(u"Text3"_s), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(quick.field(u"Text2"_s)->selectedText(), filled ? u"D3C3"_s : u""_s);
        quick.press(u"CancelButton"_s);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void TestQuickAdd::aPiCodeOfTheFormIsSaidToBeIt()
{
    MainWindow window;
    window.start();
    window.key(Qt::Key_F5);
    {
        const QuickAdd quick(window);
        QVERIFY(!quick.dialog()->findChild<QLabel *>(u"fromForm"_s)->isVisible());
        QCOMPARE(quick.field(u"Text2"_s)->accessibleName(), u"PI code"_s);
        quick.press(u"CancelButton"_s);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    window.fill({u"Text1"_s, u"D3C3"_s});
    window.key(Qt::Key_F5);
    const QuickAdd quick(window);
    auto *fromForm = quick.dialog()->findChild<QLabel *>(u"fromForm"_s);
    QLineEdit *piCode = quick.field(u"Text2"_s);
    QVERIFY(fromForm->isVisible());
    QCOMPARE(fromForm->text(), u"from the form"_s);
    QCOMPARE(piCode->accessibleName(), u"PI code, from the form"_s);
    const QRect place = piCode->geometry();
    QTest::keyClicks(quick.field(u"Text1"_s), u"88.8"_s);
    QVERIFY(fromForm->isVisible());
    QTest::keyClick(piCode, Qt::Key_End);
    QTest::keyClick(piCode, Qt::Key_Backspace);
    QVERIFY(!fromForm->isVisible());
    QCOMPARE(piCode->accessibleName(), u"PI code"_s);
    QCoreApplication::processEvents();
    QCOMPARE(piCode->geometry(), place);
}

void TestQuickAdd::whatIsOddIsToldAndLogged()
{
    MainWindow window;
    window.start();
    window.key(Qt::Key_F5);
    const QuickAdd quick(window);
    const auto *problem = quick.dialog()->findChild<QLabel *>(u"problem"_s);
    QCOMPARE(problem->text(), QString());
    const QSize size = quick.dialog()->size();
    quick.type(u"1"_s, u""_s, u""_s);
    QCOMPARE(problem->text(), u"Frequency is outside 64 to 108 MHz"_s);
    quick.type(u"99.9"_s, u"D3C"_s, u""_s);
    QCOMPARE(problem->text(), u"PI code is not four hexadecimal digits"_s);
    quick.type(u"99.9"_s, u"D3C3"_s, u"RADIO|1"_s);
    QCOMPARE(problem->text(),
        u"\"|\" separates the fields of the file: what follows would become the next field"_s);
    QCoreApplication::processEvents();
    QCOMPARE(quick.dialog()->size(), size);
    QVERIFY(problem->height() >= problem->heightForWidth(problem->width()));
    quick.press(u"OKButton"_s);
    QVERIFY(window.logbook().contains("|TBD||RADIO|1|"));
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestQuickAdd::anEntryIsLogged()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(u" 87.5 "_s, u" d3c3 "_s, u""_s);
    quick.press(u"OKButton"_s);
    QVERIFY(!quick.isOpen());
    QCOMPARE(window.answers.takeTexts(), QStringList());
    const QByteArray now = window.text("Text2").toLatin1();
    QVERIFY(isNow(window.text("Text2")));
    QCOMPARE(window.logbook(), "D3C3|" + now + "||87.5||TBD|||||||\r\n");
    QCOMPARE(window.row(1), window.text("Text2") + u"|D3C3|87.5||TBD|||||||"_s);
    QCOMPARE(window.caption("Command2"), u"New"_s);
    QVERIFY(!window.enabled("Command1"));
    QVERIFY(!window.enabled("Text2"));
    QCOMPARE(window.yellow(), QStringList());
    QCOMPARE(window.directory.names(), (QStringList {u"LOGBOOK.INI"_s, u"RDSLog.log"_s, u"tx.lst"_s}));
    QCOMPARE(window.transmitterFile(), ""_ba);
}

void TestQuickAdd::anEntryOfANameAloneIsLogged()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(u"99.9"_s, u""_s, u"Ö3"_s);
    quick.press(u"OKButton"_s);
    QCOMPARE(window.logbook(),
        "|" + window.text("Text2").toLatin1()
            + "||99.9||TBD||\xD6"
              "3|||||\r\n");
}

void TestQuickAdd::theNameIsNotTrimmed()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(u"99.9"_s, u""_s, u" rne 1 "_s);
    quick.press(u"OKButton"_s);
    QVERIFY(window.logbook().contains("|TBD|| rne 1 |"));
}

void TestQuickAdd::whatTheFormHeldIsCleared()
{
    MainWindow window;
    window.start("D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E|notes|RNE_1|10|812.4|fml=none#|4711|\r\n",
        "Bilbao|E|43|-3||\r\n");
    window.clickRow(1);
    window.key(Qt::Key_F5);
    const QuickAdd quick(window);
    QCOMPARE(quick.texts(), (QStringList {u"87.6"_s, u"D3C3"_s, u""_s}));
    quick.press(u"OKButton"_s);
    QCOMPARE(window.form().log().count(), 2);
    const QByteArray now = window.text("Text2").toLatin1();
    const QByteArray line = "D3C3|" + now + "|Es|87.6||TBD|||||||\r\n";
    QVERIFY(window.logbook().endsWith(line));
    QCOMPARE(window.transmitterFile(), "Bilbao|E|43|-3||\r\n"_ba);
}

void TestQuickAdd::theModeStaysAndTheCountryDoesNot()
{
    MainWindow window;
    window.start({}, {}, "E\r\nTBD\r\n");
    window.click("Command2");
    window.fill({u"Combo2"_s, u"Tropo"_s, u"Combo3"_s, u"E"_s});
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(u"99.9"_s, u"aaaa"_s, u""_s);
    quick.press(u"OKButton"_s);
    QVERIFY(window.logbook().contains("|Tropo|99.9||TBD|"));
}

void TestQuickAdd::itAddsAnEntryWhileAnotherIsEdited()
{
    const QByteArray log = logLine("D3C3", "12/06/2010 18:22:05", "87.6", "RNE_1");
    MainWindow window;
    window.start(log);
    window.clickRow(1);
    window.type("Text8", u"CHANGED"_s);
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(u"99.9"_s, u"aaaa"_s, u"X"_s);
    quick.press(u"OKButton"_s);
    QVERIFY(window.logbook().startsWith(log));
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(window.piCodes(), (QStringList {u"D3C3"_s, u"AAAA"_s}));
}

void TestQuickAdd::theChecksHaveTheirOwnSpelling_data()
{
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("message");
    QTest::newRow("nothing") << QStringList {u""_s, u""_s, u""_s} << u"Frequency empty"_s;
    QTest::newRow("no frequency") << QStringList {u""_s, u"D3C3"_s, u"X"_s} << u"Frequency empty"_s;
    QTest::newRow("frequency only") << QStringList {u"87.5"_s, u""_s, u""_s} << u"PI and Name empty"_s;
}

void TestQuickAdd::theChecksHaveTheirOwnSpelling()
{
    QFETCH(QStringList, typed);
    QFETCH(QString, message);
    MainWindow window;
    window.start();
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(typed.at(0), typed.at(1), typed.at(2));
    quick.press(u"OKButton"_s);
    QCOMPARE(window.answers.takeTexts(), QStringList {message});
    QVERIFY(quick.isOpen());
    QCOMPARE(quick.texts(), typed);
    QCOMPARE(window.form().log().count(), 0);
    QCOMPARE(window.caption("Command2"), u"New"_s);
    QCOMPARE(window.directory.names(), QStringList {u"LOGBOOK.INI"_s});
}

void TestQuickAdd::blanksAloneAreNoFrequency()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(u"  "_s, u"D3C3"_s, u""_s);
    quick.press(u"OKButton"_s);
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Frequency Empty"_s});
    QVERIFY(!quick.isOpen());
    QCOMPARE(window.form().log().count(), 0);
    QCOMPARE(window.text("Text1"), u"D3C3"_s);
    QVERIFY(window.enabled("Command1"));
}

void TestQuickAdd::enterLogsTheStation()
{
    MainWindow window;
    window.start();
    window.key(Qt::Key_F5);
    const QuickAdd quick(window);
    QVERIFY(quick.field(u"Text1"_s)->hasFocus());
    QTest::keyClick(quick.field(u"Text1"_s), Qt::Key_Tab);
    QVERIFY(quick.field(u"Text2"_s)->hasFocus());
    QTest::keyClicks(quick.field(u"Text2"_s), u"f201"_s);
    QTest::keyClick(quick.field(u"Text2"_s), Qt::Key_Tab);
    QVERIFY(quick.field(u"Text3"_s)->hasFocus());
    QTest::keyClick(quick.field(u"Text3"_s), Qt::Key_Return);
    QVERIFY(!quick.isOpen());
    QCOMPARE(window.piCodes(), QStringList {u"F201"_s});
}

void TestQuickAdd::twoQuickClicksLogOnce()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(u"88.2"_s, u"F201"_s, u"FIP"_s);
    auto *ok = quick.dialog()->findChild<QPushButton *>(u"OKButton"_s);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const QPointF place = ok->rect().center();
        QCoreApplication::postEvent(ok,
            new QMouseEvent(type, place, ok->mapToGlobal(place), Qt::LeftButton,
                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier));
    }
    ok->click();
    QTRY_VERIFY(!quick.isOpen());
    QCOMPARE(window.form().log().count(), 1);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestQuickAdd::whatIsPendingHappensBetweenNewAndTheFields()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(u"88.2"_s, u"F201"_s, u"FIP"_s);
    QStringList seen;
    const auto note = [&] { seen += window.caption("Command2") + window.text("Text9"); };
    QMetaObject::invokeMethod(&window.form(), note, Qt::QueuedConnection);
    quick.dialog()->findChild<QPushButton *>(u"OKButton"_s)->click();
    QCOMPARE(seen, QStringList {u"Cancel"_s});
    QCOMPARE(window.piCodes(), QStringList {u"F201"_s});
}

void TestQuickAdd::cancelAndEscapeLogNothing()
{
    MainWindow window;
    window.start();
    for (const bool escape : {true, false}) {
        window.click("Command14");
        const QuickAdd quick(window);
        quick.type(u"99.9"_s, u"AAAA"_s, u"X"_s);
        if (escape) {
            QTest::keyClick(quick.field(u"Text3"_s), Qt::Key_Escape);
        } else {
            quick.press(u"CancelButton"_s);
        }
        QVERIFY(!quick.isOpen());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QCOMPARE(window.form().log().count(), 0);
    QCOMPARE(window.text("Text9"), u""_s);
}

void TestQuickAdd::aFullDiskIsTold()
{
    MainWindow window;
    window.start();
    window.calls.failWrite = ENOSPC;
    window.click("Command14");
    const QuickAdd quick(window);
    quick.type(u"99.9"_s, u"AAAA"_s, u"X"_s);
    quick.press(u"OKButton"_s);
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY(texts.first().startsWith(u"Run-time error: Disk full\n"_s));
    QCOMPARE(window.piCodes(), QStringList {u"AAAA"_s});
    QVERIFY(!quick.isOpen());
}

QTEST_MAIN(TestQuickAdd)
#include "tst_quickadd.moc"
