#include "support/combos.h"
#include "support/mainwindow.h"

#include <QAbstractItemView>
#include <QComboBox>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray sites = "Bilbao|E|43.2630|-2.9350|812.4|\r\n"
                         "Brocken|D|51.7994|10.6155|310|\r\n"
                         "Madrid|E|40.4|-3.7||\r\n"
                         "Bilbao|e|1|2||\r\n"
                         "Zaragoza|E|41.6||700|\r\n";

QStringList choices(MainWindow &window)
{
    return itemsOf(*window.find<QComboBox>("Combo1"));
}

} // namespace

class TestTransmitters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavingTheCountryListsItsTransmitters();
    void choosingACountryListsItsTransmitters();
    void loadingAnEntryListsItsTransmitters();
    void choosingATransmitterFillsItsFields();
    void choosingByKeysFillsItsFields();
    void theListBelongsToTheCountryTypedNow();
    void namesAreComparedExactly();
    void aNewTransmitterIsOfferedAtOnce();
    void theFileIsWrittenInListOrder();
    void aFileThatNothingChangesKeepsItsBytes();
    void doubledLinesKeepTheFirstPlaceAndDistance();
    void moreThanTheListHoldsIsIgnoredSilently();
};

void TestTransmitters::leavingTheCountryListsItsTransmitters()
{
    MainWindow window;
    window.start({}, sites, "D\r\nE\r\n");
    window.click("Command2");
    QCOMPARE(choices(window), QStringList());
    window.type("Combo3", u"E"_s);
    QCOMPARE(choices(window), QStringList());
    window.key(Qt::Key_Tab);
    QCOMPARE(choices(window), (QStringList {u"Bilbao"_s, u"Madrid"_s, u"Zaragoza"_s}));
    QCOMPARE(window.find<QComboBox>("Combo1")->currentIndex(), -1);
    QVERIFY(window.find<QComboBox>("Combo1")->isVisible());
    QCOMPARE(window.text("Text5"), u""_s);
    window.type("Combo3", u"F"_s);
    window.key(Qt::Key_Tab);
    QCOMPARE(choices(window), QStringList());
}

void TestTransmitters::choosingACountryListsItsTransmitters()
{
    MainWindow window;
    window.start({}, sites, "D\r\nE\r\n");
    window.click("Command2");
    window.find<QWidget>("Combo3")->setFocus();
    window.key(Qt::Key_Down);
    QCOMPARE(choices(window), QStringList {u"Brocken"_s});
    window.key(Qt::Key_Down);
    QCOMPARE(choices(window).size(), 3);
}

void TestTransmitters::loadingAnEntryListsItsTransmitters()
{
    MainWindow window;
    window.start(logLine("AAA1", "12/06/2010 10:00:00", "87.6", "ONE", "E", "Madrid")
            + logLine("AAA2", "12/06/2010 11:00:00", "87.6", "TWO", "D", "Unknown"),
        sites);
    window.clickRow(1);
    QCOMPARE(choices(window), (QStringList {u"Bilbao"_s, u"Madrid"_s, u"Zaragoza"_s}));
    QCOMPARE(window.text("Text7") + u'/' + window.text("Text10"), u"40.4/-3.7"_s);
    window.clickRow(2);
    QCOMPARE(choices(window), QStringList {u"Brocken"_s});
    QCOMPARE(window.text("Text5") + u'/' + window.text("Text7"), u"Unknown/"_s);
}

void TestTransmitters::choosingATransmitterFillsItsFields()
{
    MainWindow window;
    window.start({}, sites);
    window.click("Command2");
    window.fill({u"Text6"_s, u"5"_s, u"Combo3"_s, u"E"_s});
    window.key(Qt::Key_Tab);
    auto *combo = window.find<QComboBox>("Combo1");
    combo->showPopup();
    QTest::keyClick(combo->view(), Qt::Key_End);
    QTest::keyClick(combo->view(), Qt::Key_Return);
    QCOMPARE(window.text("Text5") + u'/' + window.text("Text7") + u'/' + window.text("Text10"),
        u"Zaragoza/41.6/"_s);
    QCOMPARE(window.text("Text6"), u"5"_s);
}

void TestTransmitters::choosingByKeysFillsItsFields()
{
    MainWindow window;
    window.start({}, sites);
    window.click("Command2");
    window.type("Combo3", u"E"_s);
    window.key(Qt::Key_Tab);
    window.find<QWidget>("Combo1")->setFocus();
    window.key(Qt::Key_Down);
    QCOMPARE(window.text("Text5") + u'/' + window.text("Text7"), u"Bilbao/43.2630"_s);
    window.key(Qt::Key_Down);
    QCOMPARE(window.text("Text5") + u'/' + window.text("Text7"), u"Madrid/40.4"_s);
}

void TestTransmitters::theListBelongsToTheCountryTypedNow()
{
    MainWindow window;
    window.start({}, sites);
    window.click("Command2");
    window.type("Combo3", u"e"_s);
    window.key(Qt::Key_Tab);
    QCOMPARE(choices(window), QStringList {u"Bilbao"_s});
    window.find<QWidget>("Combo1")->setFocus();
    window.key(Qt::Key_Down);
    QCOMPARE(window.text("Text7") + u'/' + window.text("Text10"), u"1/2"_s);
}

void TestTransmitters::namesAreComparedExactly()
{
    MainWindow window;
    window.start(logLine("AAA1", "12/06/2010 10:00:00", "87.6", "ONE", "E", "bilbao"), sites);
    window.clickRow(1);
    QCOMPARE(window.text("Text5") + u'/' + window.text("Text7"), u"bilbao/"_s);
}

void TestTransmitters::aNewTransmitterIsOfferedAtOnce()
{
    MainWindow window;
    window.start({}, sites);
    window.click("Command2");
    window.fill({u"Text9"_s, u"88"_s, u"Text8"_s, u"FIP"_s, u"Combo3"_s, u"D"_s, u"Text5"_s, u"Wendelstein"_s,
        u"Text7"_s, u"47.7"_s, u"Text10"_s, u"12.0"_s});
    window.click("Command1");
    window.click("Command2");
    window.type("Combo3", u"D"_s);
    window.key(Qt::Key_Tab);
    QCOMPARE(choices(window), (QStringList {u"Brocken"_s, u"Wendelstein"_s}));
}

void TestTransmitters::theFileIsWrittenInListOrder()
{
    MainWindow window;
    window.start(logLine("AAA1", "12/06/2010 10:00:00", "87.6", "ONE", "E", "Madrid"), sites);
    window.clickRow(1);
    window.fill({u"Text7"_s, u"40,5"_s, u"Text10"_s, u""_s});
    window.click("Command3");
    QCOMPARE(window.transmitterFile(), QByteArray(sites).replace("Madrid|E|40.4|-3.7||", "Madrid|E|40,5|||"));
    QCOMPARE(window.copies(), QStringList());
}

void TestTransmitters::aFileThatNothingChangesKeepsItsBytes()
{
    MainWindow window;
    window.start(logLine("AAA1", "12/06/2010 10:00:00", "87.6", "ONE", "E", "Madrid"), sites);
    window.clickRow(1);
    window.click("Command3");
    QCOMPARE(window.transmitterFile(), sites);
}

void TestTransmitters::doubledLinesKeepTheFirstPlaceAndDistance()
{
    MainWindow window;
    window.start(logLine("AAA1", "12/06/2010 10:00:00", "87.6", "ONE", "E", "Madrid"),
        "Madrid|E|1|2|3|\r\nParis|F|4|5|6|\r\nMadrid|E|7|8|9|\r\n");
    window.clickRow(1);
    QCOMPARE(window.text("Text7") + u'/' + window.text("Text10"), u"7/8"_s);
    window.click("Command3");
    QCOMPARE(window.transmitterFile(), "Madrid|E|7|8|3|\r\nParis|F|4|5|6|\r\n"_ba);
    // What the doubled line said is not in the new file: the old one is kept.
    QCOMPARE(window.copies().size(), 1);
    QCOMPARE(window.directory.read(window.copies().constFirst()),
        "Madrid|E|1|2|3|\r\nParis|F|4|5|6|\r\nMadrid|E|7|8|9|\r\n"_ba);
}

void TestTransmitters::moreThanTheListHoldsIsIgnoredSilently()
{
    QByteArray full;
    for (int i = 0; i < 5001; ++i) {
        full += "Site" + QByteArray::number(i) + "|D|50|10||\r\n";
    }
    MainWindow window;
    window.start({}, full);
    QCOMPARE(window.form().transmitters().count(), 5001);
    window.click("Command2");
    window.fill({u"Text9"_s, u"88"_s, u"Text8"_s, u"FIP"_s, u"Combo3"_s, u"D"_s, u"Text5"_s, u"One more"_s,
        u"Text7"_s, u"47.7"_s, u"Text10"_s, u"12.0"_s});
    window.click("Command1");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.transmitterFile(), full);
    QCOMPARE(window.form().log().entry(0).transmitter, u"One more"_s);
}

QTEST_MAIN(TestTransmitters)
#include "tst_transmitters.moc"
