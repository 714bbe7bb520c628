#include "support/mainwindow.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavingAFieldPutsItRight_data();
    void leavingAFieldPutsItRight();
    void datesThatAreTaken_data();
    void datesThatAreTaken();
    void wrongDatesAreReplacedByNow_data();
    void wrongDatesAreReplacedByNow();
    void aWrongDateIsToldOnce();
    void aButtonPressedByAKeyChecksTheField();
    void aWrongDateStopsTheButtonPressedByAKey();
    void aWrongDateStopsTheButtonOfEveryRoad_data();
    void aWrongDateStopsTheButtonOfEveryRoad();
    void aHeldButtonIsReleasedBeforeTheMessage();
    void anotherWindowLeavesTheFieldAlone();
    void combosKeepWhatIsTyped_data();
    void combosKeepWhatIsTyped();
    void choosingFromTheListFillsTheCombo();
};

void TestFields::leavingAFieldPutsItRight_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("left");
    const QString pi = u"Text1"_s;
    const QString name = u"Text8"_s;
    QTest::newRow("PI code with blanks") << pi << u"  d3c3 "_s << u"D3C3"_s;
    QTest::newRow("PI code of any text") << pi << u"ab cü"_s << u"AB CÜ"_s;
    QTest::newRow("empty PI code") << pi << u"   "_s << u""_s;
    QTest::newRow("name with a blank") << name << u"rne 1"_s << u"rne_1"_s;
    QTest::newRow("name of blanks") << name << u" ab  "_s << u"_ab__"_s;
    QTest::newRow("power") << u"Text6"_s << u"2.5k erp"_s << u"2.5K ERP"_s;
    QTest::newRow("frequency stays") << u"Text9"_s << u" 87.60 "_s << u" 87.60 "_s;
    QTest::newRow("transmitter stays") << u"Text5"_s << u" brocken x"_s << u" brocken x"_s;
    QTest::newRow("country stays") << u"Combo3"_s << u" d "_s << u" d "_s;
    QTest::newRow("mode stays") << u"Combo2"_s << u"tropo"_s << u"tropo"_s;
    QTest::newRow("latitude stays") << u"Text7"_s << u" 51,8"_s << u" 51,8"_s;
    QTest::newRow("identifier stays") << u"uid"_s << u" a b"_s << u" a b"_s;
}

void TestFields::leavingAFieldPutsItRight()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, left);
    MainWindow window;
    window.start({}, {}, "D\r\n");
    window.click("Command2");
    window.type(field, typed);
    QCOMPARE(window.text(field), typed);
    window.key(Qt::Key_Tab);
    QVERIFY(!window.find<QWidget>(field)->hasFocus());
    QCOMPARE(window.text(field), left);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestFields::datesThatAreTaken_data()
{
    QTest::addColumn<QString>("typed");
    for (const char *typed : {"12/06/2010 18:22:05", "12.6.2010 18:22", "2010-06-12", "12-Jun-10 6:22:05 PM",
             " 29/02/2012 00:00:00 "}) {
        QTest::newRow(typed) << QString::fromLatin1(typed);
    }
}

void TestFields::datesThatAreTaken()
{
    QFETCH(QString, typed);
    MainWindow window;
    window.start();
    window.click("Command2");
    window.type("Text2", typed);
    window.key(Qt::Key_Tab);
    QCOMPARE(window.text("Text2"), typed);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestFields::wrongDatesAreReplacedByNow_data()
{
    QTest::addColumn<QString>("typed");
    for (const char *typed : {"31/02/2010 10:00:00", "", "18:22", "06/13/2010", "12/06/2010 24:00:00",
             "yesterday", "29/02/2011"}) {
        QTest::addRow("\"%s\"", typed) << QString::fromLatin1(typed);
    }
}

void TestFields::wrongDatesAreReplacedByNow()
{
    QFETCH(QString, typed);
    MainWindow window;
    window.start();
    window.click("Command2");
    window.type("Text2", typed);
    window.key(Qt::Key_Tab);
    QTRY_COMPARE(window.answers.seen().size(), 1);
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Invalid Date"_s});
    QVERIFY(isNow(window.text("Text2")));
}

void TestFields::aWrongDateIsToldOnce()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    window.type("Text2", u"nonsense"_s);
    window.find<QWidget>("Text9")->setFocus(Qt::MouseFocusReason);
    window.key(Qt::Key_Tab);
    QTRY_COMPARE(window.answers.seen().size(), 1);
    QCOMPARE(window.answers.seen().first().title, u"Quillon"_s);
}

void TestFields::aButtonPressedByAKeyChecksTheField()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    window.fill({u"Text9"_s, u"88"_s, u"Combo3"_s, u"F"_s, u"Text8"_s, u"a b"_s});
    QVERIFY(window.find<QWidget>("Text8")->hasFocus());
    window.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(window.form().log().entry(0).rdsName, u"a_b"_s);
}

void TestFields::aWrongDateStopsTheButtonPressedByAKey()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    window.fill({u"Text9"_s, u"88"_s, u"Combo3"_s, u"F"_s, u"Text8"_s, u"FIP"_s, u"Text2"_s, u"soon"_s});
    window.key(Qt::Key_Return);
    QTRY_COMPARE(window.answers.seen().size(), 1);
    QCOMPARE(window.form().log().count(), 0);
    QVERIFY(isNow(window.text("Text2")));
    QVERIFY(window.enabled("Command1"));
    window.find<QWidget>("Text2")->setFocus();
    window.key(Qt::Key_Return);
    QCOMPARE(window.form().log().count(), 1);
}

void TestFields::aWrongDateStopsTheButtonOfEveryRoad_data()
{
    QTest::addColumn<bool>("mouse");
    QTest::newRow("a click") << true;
    QTest::newRow("its letter") << false;
}

void TestFields::aWrongDateStopsTheButtonOfEveryRoad()
{
    QFETCH(bool, mouse);
    MainWindow window;
    window.start();
    window.click("Command2");
    window.fill({u"Text9"_s, u"88"_s, u"Combo3"_s, u"F"_s, u"Text8"_s, u"FIP"_s, u"Text2"_s, u"soon"_s});
    auto *add = window.find<QAbstractButton>("Command1");
    if (mouse) {
        add->setFocus(Qt::MouseFocusReason);
        window.click("Command1");
    } else {
        add->animateClick();
    }
    QTRY_COMPARE(window.answers.seen().size(), 1);
    constexpr int pastTheAnimation = 250;
    QTest::qWait(pastTheAnimation);
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Invalid Date"_s});
    QCOMPARE(window.form().log().count(), 0);
    QVERIFY(isNow(window.text("Text2")));
    QVERIFY(!add->isDown());
    window.click("Command1");
    QCOMPARE(window.form().log().count(), 1);
}

void TestFields::aHeldButtonIsReleasedBeforeTheMessage()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    window.fill({u"Text9"_s, u"88"_s, u"Combo3"_s, u"F"_s, u"Text8"_s, u"FIP"_s, u"Text2"_s, u"soon"_s});
    auto *add = window.find<QAbstractButton>("Command1");
    bool down = true;
    window.answers.doing([&](QWidget *box) {
        down = add->isDown();
        box->close();
    });
    add->setFocus(Qt::MouseFocusReason);
    QTest::mousePress(add, Qt::LeftButton);
    QTRY_COMPARE(window.answers.seen().size(), 1);
    QTest::mouseRelease(add, Qt::LeftButton);
    QVERIFY(!down);
    QVERIFY(!add->isDown());
    QCOMPARE(window.form().log().count(), 0);
}

void TestFields::anotherWindowLeavesTheFieldAlone()
{
    MainWindow window;
    window.start();
    window.click("Command2");
    window.type("Text2", u"12/06/20"_s);
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    window.form().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window.form()));
    QCOMPARE(window.text("Text2"), u"12/06/20"_s);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestFields::combosKeepWhatIsTyped_data()
{
    QTest::addColumn<QString>("combo");
    QTest::addColumn<QString>("typed");
    QTest::newRow("a country in another case") << u"Combo3"_s << u"dnk"_s;
    QTest::newRow("the beginning of a country") << u"Combo3"_s << u"DN"_s;
    QTest::newRow("a country that is not listed") << u"Combo3"_s << u"Atlantis"_s;
    QTest::newRow("a mode in another case") << u"Combo2"_s << u"tropo"_s;
    QTest::newRow("the beginning of a mode") << u"Combo2"_s << u"T"_s;
    QTest::newRow("a mode that is not listed") << u"Combo2"_s << u"Meteor"_s;
}

void TestFields::combosKeepWhatIsTyped()
{
    QFETCH(QString, combo);
    QFETCH(QString, typed);
    MainWindow window;
    window.start({}, {}, "D\r\nDNK\r\nE\r\n");
    const int items = window.find<QComboBox>(combo)->count();
    window.click("Command2");
    window.fill({u"Text9"_s, u"88"_s, u"Text8"_s, u"FIP"_s, u"Combo3"_s, u"F"_s});
    window.type(combo, typed);
    window.key(Qt::Key_Return);
    QCOMPARE(window.text(combo), typed);
    const LogEntry &entry = window.form().log().entry(0);
    QCOMPARE(combo == u"Combo3" ? entry.country : entry.prop, typed);
    window.find<QWidget>("Text9")->setFocus();
    QCOMPARE(window.text(combo), typed);
    QCOMPARE(window.find<QComboBox>(combo)->count(), items);
}

void TestFields::choosingFromTheListFillsTheCombo()
{
    MainWindow window;
    window.start({}, {}, "D\r\nDNK\r\nE\r\n");
    window.click("Command2");
    window.find<QWidget>("Combo3")->setFocus();
    window.key(Qt::Key_Down);
    window.key(Qt::Key_Down);
    QCOMPARE(window.text("Combo3"), u"DNK"_s);
    window.find<QWidget>("Combo2")->setFocus();
    window.key(Qt::Key_Down);
    QCOMPARE(window.text("Combo2"), u"Es"_s);
}

QTEST_MAIN(TestFields)
#include "tst_fields.moc"
