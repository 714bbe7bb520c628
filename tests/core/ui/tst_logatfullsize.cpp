#include "loggingwindow.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// Every fourth reception is from Málaga, and every second one is Es; the frequencies go up and round again.
QByteArray logOf(int entries)
{
    QByteArray log;
    for (int i = 0; i < entries; ++i) {
        const QByteArray time = QByteArray::number(i / 3600).rightJustified(2, '0') + ':'
            + QByteArray::number(i / 60 % 60).rightJustified(2, '0') + ':'
            + QByteArray::number(i % 60).rightJustified(2, '0');
        log += QByteArray::number(0x1000 + i, 16).toUpper() + "|12/06/2010 " + time + '|'
            + (i % 2 == 0 ? "Es" : "Tropo") + '|' + QByteArray::number(88 + i % 20) + ".0|"
            + (i % 4 == 0 ? "M\xE1laga|E" : "Brest|F") + "||NAME|10|" + QByteArray::number(1000 + i % 900)
            + "|||\r\n";
    }
    return log;
}

QString countOf(int some, int all)
{
    return u"%1 of %2"_s.arg(some).arg(all);
}

} // namespace

/// The work with a log of usual and of full size, through the window.
class TestLogAtFullSize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFilterFollowsEachKey_data() { sizes(); }
    void theFilterFollowsEachKey();
    void columnsSortAndHide_data() { sizes(); }
    void columnsSortAndHide();
    void allAreEditedAtOnce_data() { sizes(); }
    void allAreEditedAtOnce();
    void allThatAreShownAreDeletedAndComeBack_data() { sizes(); }
    void allThatAreShownAreDeletedAndComeBack();
    void theGridMenuFiltersByACell_data();
    void theGridMenuFiltersByACell();

private:
    static void sizes();
};

void TestLogAtFullSize::sizes()
{
    QTest::addColumn<int>("entries");
    QTest::newRow("100") << 100;
    // The largest log that can still grow by one.
    QTest::newRow("32,497") << 32497;
    QTest::newRow("32,498") << 32498;
}

void TestLogAtFullSize::theFilterFollowsEachKey()
{
    QFETCH(int, entries);
    MainWindow window;
    window.start(logOf(entries));
    const int spanish = (entries + 3) / 4;
    QCOMPARE(window.text("filterCount"), QString::number(entries));
    window.type("filterText", u"malaga"_s);
    QCOMPARE(window.grid().rows(), spanish + 1);
    QCOMPARE(window.text("filterCount"), countOf(spanish, entries));
    window.type("filterText", u"-itu:E prop:es"_s);
    const int even = (entries + 1) / 2;
    QCOMPARE(window.text("filterCount"), countOf(even - spanish, entries));
    window.find<QComboBox>("filterMode")->setCurrentText(u"Tropo"_s);
    QCOMPARE(window.text("filterCount"), countOf(0, entries));
    QCOMPARE(
        window.grid().emptyText(), u"No reception of the log is shown. Esc in the filter's box shows all."_s);
    QVERIFY(!window.find<QWidget>("firstSteps")->isVisible());
    QTest::keyClick(window.find<QLineEdit>("filterText"), Qt::Key_Escape);
    QCOMPARE(window.text("filterCount"), QString::number(entries));
    QCOMPARE(window.grid().rows(), entries + 1);
}

void TestLogAtFullSize::columnsSortAndHide()
{
    QFETCH(int, entries);
    constexpr int freq = static_cast<int>(GridColumn::Freq);
    MainWindow window;
    window.start(logOf(entries));
    const QHeaderView &header = *window.grid().horizontalHeader();
    QVERIFY(!header.isSortIndicatorShown());
    window.clickHeading(freq);
    QCOMPARE(window.grid().text(1, GridColumn::Freq), u"88.0"_s);
    QCOMPARE(window.grid().text(entries, GridColumn::Freq), u"107.0"_s);
    QVERIFY(header.isSortIndicatorShown());
    QCOMPARE(header.sortIndicatorOrder(), Qt::AscendingOrder);
    window.clickHeading(freq);
    QCOMPARE(window.grid().text(1, GridColumn::Freq), u"107.0"_s);
    QCOMPARE(header.sortIndicatorOrder(), Qt::DescendingOrder);
    window.clickHeading(freq);
    QCOMPARE(window.grid().text(1, GridColumn::PiCode), u"1000"_s);
    QVERIFY(!header.isSortIndicatorShown());
    // Date/Time begins with the latest.
    window.clickHeading(0);
    QCOMPARE(window.grid().text(entries, GridColumn::PiCode), u"1000"_s);
    QCOMPARE(header.sortIndicatorOrder(), Qt::DescendingOrder);
    window.find<QMenu>("menuViewColumns")->actions().value(freq)->trigger();
    QVERIFY(window.grid().isColumnHidden(freq));
    // Words are looked for in hidden columns, too.
    window.type("filterText", u"107.0"_s);
    QVERIFY(window.grid().rows() > 1);
    QCOMPARE(window.grid().text(1, GridColumn::Freq), u"107.0"_s);
}

void TestLogAtFullSize::allAreEditedAtOnce()
{
    QFETCH(int, entries);
    const QByteArray log = logOf(entries);
    MainWindow window;
    window.start(log);
    window.grid().setFocus();
    window.key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(window.text("chosenCount"), u"%1 chosen"_s.arg(entries));
    window.key(Qt::Key_F2);
    auto *dialog = window.find<QDialog>("editMany");
    dialog->findChild<QCheckBox *>(u"tickProp"_s)->setChecked(true);
    dialog->findChild<QComboBox *>(u"valueProp"_s)->setEditText(u"Tropo"_s);
    const int even = (entries + 1) / 2;
    QCOMPARE(dialog->findChild<QLabel *>(u"effect"_s)->text(),
        u"Prop of %1 receptions: Es (%1) \u2192 Tropo"_s.arg(even));
    QTest::keyClick(dialog, Qt::Key_Return);
    QCOMPARE(window.logbook(), QByteArray(log).replace("|Es|", "|Tropo|"));
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), log);
}

void TestLogAtFullSize::allThatAreShownAreDeletedAndComeBack()
{
    QFETCH(int, entries);
    const QByteArray log = logOf(entries);
    MainWindow window;
    window.start(log);
    (void)window.answers.takeTexts();
    window.type("filterText", u"malaga"_s);
    window.grid().setFocus();
    window.key(Qt::Key_A, Qt::ControlModifier);
    const int spanish = (entries + 3) / 4;
    window.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text().count(u'\n'), spanish + 1);
    window.answers.press(QMessageBox::Yes);
    window.click("Command15");
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Delete %1 receptions?"_s.arg(spanish)});
    QCOMPARE(window.logbook().count("\r\n"), entries - spanish);
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), log);
}

void TestLogAtFullSize::theGridMenuFiltersByACell_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("filter");
    const auto row = [](const char *name, GridColumn column, const QString &filter) {
        QTest::newRow(name) << static_cast<int>(column) << filter;
    };
    row("Date/Time", GridColumn::DateTime, u"date:12/06/2010"_s);
    row("PI Code", GridColumn::PiCode, u"pi:D3C3"_s);
    row("Freq", GridColumn::Freq, u"freq:87.6"_s);
    row("RDS Name", GridColumn::RdsName, u"ps:RNE_1"_s);
    row("Country", GridColumn::Country, u"itu:E"_s);
    row("Transmitter", GridColumn::Transmitter, u"site:\"La Muela\""_s);
    row("Dist", GridColumn::Dist, u"km:812.4"_s);
    row("Power", GridColumn::Power, u"kw:10"_s);
    row("Notes", GridColumn::Notes, u"notes:\"one two\""_s);
    row("Prop", GridColumn::Prop, u"prop:Es"_s);
    row("FMList", GridColumn::FMList, u"fml:None"_s);
    row("UID", GridColumn::Uid, u"uid:4711"_s);
    row("Locator", GridColumn::Locator, {});
}

void TestLogAtFullSize::theGridMenuFiltersByACell()
{
    QFETCH(int, column);
    QFETCH(QString, filter);
    const QByteArray wanted = QByteArray(oneEntry).replace("Bilbao", "La Muela");
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "AS_MILES=FALSE\r\n");
    window.start(wanted + "F201|13/06/2010 11:00:00|Tropo|90.0|Brest|F||FIP|1|300||501|\r\n");
    window.grid().setColumnHidden(column, false);
    window.grid().scrollTo(window.grid().model()->index(0, column));
    const QPoint place = window.grid().visualRect(window.grid().model()->index(0, column)).center();
    bool isOffered = false;
    QTimer::singleShot(0, &window.form(), [&] {
        auto *menu = window.find<QMenu>("gridMenu");
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions) {
            if (action->text().remove(u'&') == "Filter by This Cell's Value"_L1) {
                isOffered = action->isEnabled();
                action->trigger();
            }
        }
        menu->close();
    });
    Q_EMIT window.grid().customContextMenuRequested(place);
    QCOMPARE(isOffered, !filter.isEmpty());
    QCOMPARE(window.text("filterText"), filter);
    if (isOffered) {
        QCOMPARE(window.piCodes(), QStringList {u"D3C3"_s});
    }
}

QTEST_MAIN(TestLogAtFullSize)
#include "tst_logatfullsize.moc"
