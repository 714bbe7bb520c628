#include "support/mainwindow.h"

#include <QHeaderView>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// Not in the order of time, so that log order and grid order differ.
QByteArray someLog()
{
    return "3D30|14/06/2010 10:00:00|Tropo|87.60|Brocken|D|n|NDR_2|60||||\r\n"
           "D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E|two\twordsCRLFhere|RNE_1|10|812.4|fml=sent#|4711|\r\n"
           "d3c3|13/06/2010 09:00:00||87.6|bilbao|E||rne_1|||||\r\n"
           "|15/06/2010 11:00:00|Es|99.9||||RNE_1|||||\r\n";
}

const QString first = u"3D30\t14/06/2010 10:00:00\tTropo\t87.60\tBrocken\tD\tNDR_2\t60\t"_s;
const QString second = u"D3C3\t12/06/2010 18:22:05\tEs\t87.6\tBilbao\tE\tRNE_1\t10\t"_s;
const QString third = u"d3c3\t13/06/2010 09:00:00\t\t87.6\tbilbao\tE\trne_1\t\t"_s;
const QString fourth = u"\t15/06/2010 11:00:00\tEs\t99.9\t\t\tRNE_1\t\t"_s;

void doubleClickLine(MainWindow &window, int line)
{
    ResultList &list = window.list();
    const QPoint place = list.visualRect(list.model()->index(line, 1)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
}

} // namespace

class TestSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFiveButtonsHaveOneCaption();
    void aButtonListsWhatItsFieldMatches_data();
    void aButtonListsWhatItsFieldMatches();
    void aSearchWithoutResultSaysSo();
    void theTextIsUsedAsItStands();
    void aSearchReplacesTheResultsBefore();
    void aSearchShowsItsList();
    void deletedEntriesAreFound();
    void theButtonsWorkInEveryState();
    void theColumnsShowTheFieldsOfALine();
    void aDoubleClickShowsTheEntry();
    void enterOnAResultShowsTheEntry();
    void aDoubleClickScrollsTheRowToTheTop();
    void ofTwoOfOneMomentTheUpperIsShown();
    void aResultThatIsNoLongerThereChangesNothing();
    void aSortedListStillShowsTheRightEntry();
};

void TestSearch::theFiveButtonsHaveOneCaption()
{
    MainWindow window;
    window.start();
    for (const char *button : {"Command4", "Command6", "Command7", "Command8", "Command13"}) {
        QCOMPARE(window.caption(button), u"Search PI DB"_s);
        QVERIFY2(window.enabled(button), button);
    }
}

void TestSearch::aButtonListsWhatItsFieldMatches_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("lines");
    const QStringList all {first, second, third, fourth};
    QTest::newRow("PI contains") << u"Command4"_s << u"Text1"_s << u"D3"_s << QStringList {first, second};
    QTest::newRow("PI equal") << u"Command4"_s << u"Text1"_s << u"D3C3"_s << QStringList {second};
    QTest::newRow("PI unknown") << u"Command4"_s << u"Text1"_s << u"FFFF"_s << QStringList();
    QTest::newRow("PI empty") << u"Command4"_s << u"Text1"_s << u""_s << all;
    QTest::newRow("name contains") << u"Command6"_s << u"Text8"_s << u"RNE"_s << QStringList {second, fourth};
    QTest::newRow("name in its own case") << u"Command6"_s << u"Text8"_s << u"rne"_s << QStringList {third};
    QTest::newRow("name empty") << u"Command6"_s << u"Text8"_s << u""_s << all;
    QTest::newRow("frequency equal") << u"Command7"_s << u"Text9"_s << u"87.6"_s
                                     << QStringList {second, third};
    QTest::newRow("frequency otherwise written")
        << u"Command7"_s << u"Text9"_s << u"87.60"_s << QStringList {first};
    QTest::newRow("frequency in part") << u"Command7"_s << u"Text9"_s << u"87"_s << QStringList();
    QTest::newRow("frequency empty") << u"Command7"_s << u"Text9"_s << u""_s << QStringList();
    QTest::newRow("transmitter contains")
        << u"Command8"_s << u"Text5"_s << u"ilba"_s << QStringList {second, third};
    QTest::newRow("transmitter in its own case")
        << u"Command8"_s << u"Text5"_s << u"B"_s << QStringList {first, second};
    QTest::newRow("transmitter empty") << u"Command8"_s << u"Text5"_s << u""_s << all;
    QTest::newRow("country equal") << u"Command13"_s << u"Combo3"_s << u"E"_s << QStringList {second, third};
    QTest::newRow("country in its own case") << u"Command13"_s << u"Combo3"_s << u"e"_s << QStringList();
    QTest::newRow("country empty") << u"Command13"_s << u"Combo3"_s << u""_s << QStringList {fourth};
}

void TestSearch::aButtonListsWhatItsFieldMatches()
{
    QFETCH(QString, button);
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QStringList, lines);
    MainWindow window;
    window.start(someLog(), {}, "D\r\nE\r\n");
    window.type(field, text);
    window.click(button);
    QCOMPARE(window.resultLines(), lines);
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.form().selected(), -1);
}

void TestSearch::aSearchWithoutResultSaysSo()
{
    MainWindow window;
    window.start(someLog(), {}, "D\r\nE\r\n");
    QVERIFY(window.list().emptyText().startsWith(u"Search PI DB lists "_s));
    window.type("Text1", u"FFFF"_s);
    window.click("Command4");
    QCOMPARE(window.list().emptyText(), u"No earlier reception with PI Code \"FFFF\"."_s);
    window.type("Text9", u"%1"_s);
    window.click("Command7");
    QCOMPARE(window.list().emptyText(), u"No earlier reception with Freq \"%1\"."_s);
}

void TestSearch::theTextIsUsedAsItStands()
{
    MainWindow window;
    window.start(someLog());
    window.type("Text5", u"Bilbao "_s);
    window.click("Command8");
    QCOMPARE(window.resultLines(), QStringList());
    // The PI code is put right when its field is left, which a click on the button does.
    window.type("Text1", u" d3c3 "_s);
    window.click("Command4");
    QCOMPARE(window.resultLines(), QStringList {second});
}

void TestSearch::aSearchReplacesTheResultsBefore()
{
    MainWindow window;
    window.start(someLog());
    window.click("Command4");
    QCOMPARE(window.list().count(), 4);
    window.type("Text9", u"99.9"_s);
    window.click("Command7");
    QCOMPARE(window.resultLines(), QStringList {fourth});
    QCOMPARE(window.list().listIndex(), -1);
}

void TestSearch::aSearchShowsItsList()
{
    MainWindow window;
    window.start(someLog());
    auto *other = window.find<ResultList>("List2");
    for (const char *button : {"Command4", "Command6", "Command7", "Command8", "Command13"}) {
        window.list().hide();
        other->show();
        window.click(button);
        QVERIFY2(window.list().isVisible(), button);
        QVERIFY2(!other->isVisible(), button);
    }
}

void TestSearch::deletedEntriesAreFound()
{
    MainWindow window;
    window.start(someLog());
    window.clickRow(1);
    QCOMPARE(window.text("Text1"), u"D3C3"_s);
    window.click("Command15");
    auto *field = window.find<QLineEdit>("Text1");
    field->setText(u"de"_s);
    window.click("Command4");
    QCOMPARE(window.resultLines(),
        QStringList {u"delete\t12/06/2010 18:22:05\tEs\t87.6\tBilbao\tE\tRNE_1\t10\t"_s});
}

void TestSearch::theButtonsWorkInEveryState()
{
    MainWindow window;
    window.start(someLog());
    window.click("Command2");
    window.click("Command4");
    QCOMPARE(window.list().count(), 4);
    window.clickRow(1);
    window.click("Command4");
    QCOMPARE(window.list().count(), 1);
    QVERIFY(window.enabled("Command3"));
}

void TestSearch::theColumnsShowTheFieldsOfALine()
{
    MainWindow window;
    window.start(someLog());
    window.type("Text1", u"D3C3"_s);
    window.click("Command4");
    const QAbstractItemModel &model = *window.list().model();
    QStringList headings;
    QStringList cells;
    for (int column = 0; column < model.columnCount(); ++column) {
        headings += model.headerData(column, Qt::Horizontal).toString();
        cells += model.index(0, column).data().toString();
    }
    QCOMPARE(headings.join(u'|'), u"PI Code|Date/Time|Prop|Freq|Transmitter|Country|RDS Name|Power"_s);
    QCOMPARE(cells.join(u'|'), u"D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E|RNE_1|10"_s);
    QCOMPARE(window.list().text(0).count(u'\t'), 8);
}

void TestSearch::aDoubleClickShowsTheEntry()
{
    MainWindow window;
    window.start(someLog(), "Bilbao|E|43|-3||\r\n");
    window.type("Text9", u"87.6"_s);
    window.click("Command7");
    doubleClickLine(window, 0);
    QCOMPARE(window.form().selected(), 1);
    QCOMPARE(window.grid().row(), 1);
    QCOMPARE(window.text("Text1") + window.text("Text7"), u"D3C343"_s);
    QCOMPARE(window.yellow().size(), 12);
    QVERIFY(window.grid().updatesEnabled());
    doubleClickLine(window, 1);
    QCOMPARE(window.form().selected(), 2);
    QCOMPARE(window.grid().row(), 2);
}

void TestSearch::enterOnAResultShowsTheEntry()
{
    MainWindow window;
    window.start(someLog());
    window.type("Text9", u"87.6"_s);
    window.click("Command7");
    window.list().setFocus();
    window.key(Qt::Key_Down);
    window.key(Qt::Key_Down);
    QCOMPARE(window.list().listIndex(), 1);
    QCOMPARE(window.form().selected(), -1);
    window.key(Qt::Key_Return);
    QCOMPARE(window.form().selected(), 2);
    QCOMPARE(window.text("Text1"), u"d3c3"_s);
}

void TestSearch::aDoubleClickScrollsTheRowToTheTop()
{
    QByteArray log;
    for (int i = 0; i < 90; ++i) {
        log += logLine(QByteArray::number(0xA000 + i, 16).toUpper(),
            "12/06/2010 " + QByteArray::number(10 + i / 60) + ':' + QByteArray::number(i % 60) + ":00",
            "87.6", "NAME");
    }
    MainWindow window;
    window.start(log);
    window.type("Text1", u"A005"_s);
    window.click("Command4");
    doubleClickLine(window, 0);
    QCOMPARE(window.grid().row(), 6);
    QCOMPARE(window.grid().topRow(), 6);
    QCOMPARE(window.text("Text1"), u"A005"_s);
}

void TestSearch::ofTwoOfOneMomentTheUpperIsShown()
{
    MainWindow window;
    window.start(logLine("AAA1", "12/06/2010 18:22:05", "87.6", "ONE")
        + logLine("AAA2", "12/06/2010 18:22:05", "88.6", "TWO"));
    window.type("Text1", u"AAA2"_s);
    window.click("Command4");
    doubleClickLine(window, 0);
    QCOMPARE(window.text("Text1"), u"AAA1"_s);
    QCOMPARE(window.grid().row(), 1);
}

void TestSearch::aResultThatIsNoLongerThereChangesNothing()
{
    MainWindow window;
    window.start(someLog());
    window.type("Text1", u"D3C3"_s);
    window.click("Command4");
    window.clickRow(1);
    window.type("Text2", u"01/01/2011"_s);
    window.click("Command3");
    window.clickRow(3);
    const QStringList before = window.fields();
    doubleClickLine(window, 0);
    QCOMPARE(window.grid().row(), 3);
    QCOMPARE(window.fields(), before);
    QVERIFY(window.grid().updatesEnabled());
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestSearch::aSortedListStillShowsTheRightEntry()
{
    MainWindow window;
    window.start(someLog());
    window.click("Command4");
    QTest::mouseClick(window.list().horizontalHeader()->viewport(), Qt::LeftButton, {},
        {window.list().horizontalHeader()->sectionViewportPosition(3) + 15, 8});
    QCOMPARE(window.resultLines().at(3), fourth);
    doubleClickLine(window, 3);
    QCOMPARE(window.text("Text9"), u"99.9"_s);
}

QTEST_MAIN(TestSearch)
#include "tst_search.moc"
