#include "support/mainwindow.h"
#include "support/wheel.h"

#include <QAbstractItemView>
#include <QComboBox>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

/// The mouse wheel and the lists of the entry form.
class TestWheel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWheelChangesNothingInAFormAtRest();
    void theWheelChangesOnlyTheFieldWithTheFocus();
    void theListOpensAtTheModeOfTheEntry();
};

namespace {

const QByteArray entry = "D3C3|12/06/2010 18:22:05|Tropo|87.6|Bilbao|E||RNE_1|10|812.4|||\r\n";
const QByteArray transmitters = "Bilbao|E|43.263|-2.935|1|\r\nMadrid|E|40.4|-3.7|1|\r\n";
const QByteArray countries = "D\r\nE\r\nF\r\n";

} // namespace

void TestWheel::theWheelChangesNothingInAFormAtRest()
{
    MainWindow window;
    window.start(entry, transmitters, countries);
    const QStringList fields = window.fields();
    window.find<QWidget>("Combo3")->setFocus();
    for (const char *name : {"Combo1", "Combo2", "Combo3"}) {
        turnWheel(*window.find<QComboBox>(name), -1);
        QCOMPARE(window.fields(), fields);
    }
}

void TestWheel::theWheelChangesOnlyTheFieldWithTheFocus()
{
    MainWindow window;
    window.start(entry, transmitters, countries);
    window.clickRow(1);
    const QStringList fields = window.fields();
    window.find<QWidget>("Text3")->setFocus();
    for (const char *name : {"Combo1", "Combo2", "Combo3"}) {
        turnWheel(*window.find<QComboBox>(name), -1);
        QCOMPARE(window.fields(), fields);
        QVERIFY(window.find<QWidget>("Text3")->hasFocus());
    }
    window.find<QWidget>("Combo2")->setFocus();
    turnWheel(*window.find<QComboBox>("Combo2"), -1);
    QCOMPARE(window.text("Combo2"), u"MS"_s);
}

void TestWheel::theListOpensAtTheModeOfTheEntry()
{
    MainWindow window;
    window.start(entry, transmitters, countries);
    window.clickRow(1);
    for (const auto &[name, text] : {std::pair {"Combo2", u"Tropo"_s}, {"Combo3", u"E"_s}}) {
        auto *combo = window.find<QComboBox>(name);
        combo->showPopup();
        QCOMPARE(combo->view()->currentIndex().data().toString(), text);
        combo->hidePopup();
    }
}

QTEST_MAIN(TestWheel)
#include "tst_wheel.moc"
