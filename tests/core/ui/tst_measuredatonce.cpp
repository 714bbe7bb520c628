#include "core/ui/importingwindow.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray home = "HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n";
const QByteArray places = "Madrid|E|40.4|-3.7||\r\nMunich|D|48.3|11.5||\r\n";
const QByteArray measuredPlaces = "Madrid|E|40.4|-3.7|1264.5|\r\nMunich|D|48.3|11.5||\r\n";
const QByteArray two = "E201|12/06/2010 10:00:00|Es|90.3|Madrid|E||RNE_1|10|7|||\r\n"
                       "D201|12/06/2010 11:00:00|Es|91.3|Lost|D||B5|10|8|||\r\n";

QStringList distances(MainWindow &window)
{
    QStringList all;
    for (const LogEntry &entry : window.form().log()) {
        all += entry.dist;
    }
    return all;
}

// The window that changes all receptions, about to give them a text in this field.
template<typename Value>
QDialog &editAll(MainWindow &window, const QString &field, const QString &text)
{
    window.grid().setFocus();
    window.key(Qt::Key_A, Qt::ControlModifier);
    window.key(Qt::Key_F2);
    auto *dialog = window.find<QDialog>("editMany");
    dialog->findChild<QCheckBox *>(u"tick"_s + field)->setChecked(true);
    auto *value = dialog->findChild<Value *>(u"value"_s + field);
    if constexpr (std::is_same_v<Value, QComboBox>) {
        value->setEditText(text);
    } else {
        value->setText(text);
    }
    return *dialog;
}

} // namespace

/// While distances are measured at once, what is added or changed by many is measured as what is typed.
class TestMeasuredAtOnce : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatRdsdxHeard_data();
    void whatRdsdxHeard();
    void whatAFileBrings();
    void whatIsEditedTogether();
    void withoutTheTickNothingIs();
};

void TestMeasuredAtOnce::whatRdsdxHeard_data()
{
    QTest::addColumn<bool>("atOnce");
    QTest::newRow("measured") << true;
    QTest::newRow("as ever") << false;
}

void TestMeasuredAtOnce::whatRdsdxHeard()
{
    QFETCH(bool, atOnce);
    ImportingWindow window(home);
    window.directory.write(u"dx/20100612.txt"_s,
        "  Freq PI   PS       Time    ITU Station|Remarks\r\n"
        "  98.5 E201 RNE1     1612 05 E   RNE,Madrid|\r\n"
        "  98.6 E202 RNE2     1613 05 E   RNE,Elsewhere|\r\n");
    window.start(two, places);
    if (atOnce) {
        window.trigger("menuViewDistances");
    }
    window.importDx();
    QCOMPARE(distances(window), (QStringList {u"7"_s, u"8"_s, atOnce ? u"1264.5"_s : QString(), QString()}));
    QCOMPARE(window.transmitterFile(), atOnce ? measuredPlaces : places);
    QCOMPARE(window.logbook().count("|1264.5|"), atOnce ? 1 : 0);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), two);
    QCOMPARE(window.transmitterFile(), places);
}

void TestMeasuredAtOnce::whatAFileBrings()
{
    ImportingWindow window(home);
    // A distance that the file tells is the file's.
    window.directory.write(u"in/a.csv"_s,
        "Date/Time,PI Code,Freq,Country,Transmitter,Dist\r\n"
        "2010-06-12 18:40:00,E203,90.0,E,Madrid,\r\n2010-06-12 18:41:00,E204,91.0,E,Madrid,1300\r\n");
    window.start(two, places);
    window.trigger("menuViewDistances");
    window.importFileAt(window.directory.file(u"in/a.csv"_s));
    QCOMPARE(distances(window), (QStringList {u"7"_s, u"8"_s, u"1264.5"_s, u"1300"_s}));
    QCOMPARE(window.transmitterFile(), measuredPlaces);
}

void TestMeasuredAtOnce::whatIsEditedTogether()
{
    ImportingWindow window(home);
    window.start(two, places);
    window.trigger("menuViewDistances");
    QDialog &dialog = editAll<QLineEdit>(window, u"Transmitter"_s, u"Madrid"_s);
    const auto effect = [&] { return dialog.findChild<QLabel *>(u"effect"_s)->text(); };
    QCOMPARE(effect(), u"Transmitter of 1 reception: Lost (1) → Madrid"_s);
    dialog.findChild<QCheckBox *>(u"tickCountry"_s)->setChecked(true);
    dialog.findChild<QComboBox *>(u"valueCountry"_s)->setEditText(u"E"_s);
    QVERIFY2(effect().endsWith(u"\nDist of 1 reception: measured from home"_s), qPrintable(effect()));
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(distances(window), (QStringList {u"7"_s, u"1264.5"_s}));
    QCOMPARE(window.grid().text(2, GridColumn::Dist), u"1264.5"_s);
    QCOMPARE(window.transmitterFile(), measuredPlaces);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), two);
    QCOMPARE(window.transmitterFile(), places);
    QVERIFY(!window.find<QAction>("menuEditUndo")->isEnabled());
}

void TestMeasuredAtOnce::withoutTheTickNothingIs()
{
    ImportingWindow window(home);
    window.start(two, places);
    QDialog &dialog = editAll<QLineEdit>(window, u"Uid"_s, u"5"_s);
    QVERIFY(!dialog.findChild<QLabel *>(u"effect"_s)->text().contains(u"Dist"_s));
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(distances(window), (QStringList {u"7"_s, u"8"_s}));
    QCOMPARE(window.transmitterFile(), places);
}

QTEST_MAIN(TestMeasuredAtOnce)
#include "tst_measuredatonce.moc"
