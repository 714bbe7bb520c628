#include "support/mainwindow.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

QByteArray someLog()
{
    return logLine("D3C3", "01/06/2010 10:00:00", "87.6", "ONE")
        + logLine("E201", "02/06/2010 10:00:00", "87.7", "TWO")
        + logLine(" D3C3 ", "03/06/2010 10:00:00", "87.8", "THREE")
        + logLine("f201", "04/06/2010 10:00:00", "87.9", "FOUR")
        + logLine("3D3C", "05/06/2010 10:00:00", "88.0", "FIVE")
        + logLine("A999", "06/06/2010 10:00:00", "88.1", "SIX");
}

} // namespace

class TestFind : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itAsksForAPiCode();
    void itStepsThroughTheRowsAndEnds();
    void theAnswerMayBeInLowerCase();
    void aLowerCaseCodeIsNeverFound();
    void onTheLastRowNothingIsFound();
    void anEmptyAnswerDoesNothing_data();
    void anEmptyAnswerDoesNothing();
    void anEmptyLogHasNothing();
    void aDeletedEntryIsNotFoundUnderItsCode();
    void theFoundRowIsScrolledIntoView();
    void theAnswerIsNotTrimmed();
    void theCodeIsTrimmed_data();
    void theCodeIsTrimmed();
};

void TestFind::itAsksForAPiCode()
{
    MainWindow window;
    window.start(someLog());
    window.answers.cancel();
    window.key(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(window.answers.seen().size(), 1);
    QCOMPARE(window.answers.seen().first().text, u"Enter PI to search for"_s);
    QCOMPARE(window.answers.seen().first().input, u""_s);
    QCOMPARE(window.answers.seen().first().title, u"Find"_s);
}

void TestFind::itStepsThroughTheRowsAndEnds()
{
    MainWindow window;
    window.start(someLog());
    window.clickRow(2);
    const QList<int> rows {3, 5};
    for (const int row : rows) {
        window.answers.type(u"3C"_s);
        window.trigger("menuToolsFind");
        QCOMPARE(window.grid().row(), row);
        QCOMPARE(window.form().selected(), row - 1);
        QCOMPARE(window.text("Text2"), window.grid().text(row, GridColumn::DateTime));
        QCOMPARE(window.yellow().size(), 12);
        QCOMPARE(window.answers.takeTexts(), QStringList {u"Enter PI to search for"_s});
    }
    window.answers.type(u"3C"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts(), (QStringList {u"Enter PI to search for"_s, u"3C Not Found"_s}));
    QCOMPARE(window.grid().row(), 5);
    QCOMPARE(window.form().selected(), 4);
    QVERIFY(window.grid().updatesEnabled());
}

void TestFind::theAnswerMayBeInLowerCase()
{
    MainWindow window;
    window.start(someLog());
    window.clickRow(1);
    window.answers.type(u"d3c3"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.grid().row(), 3);
    window.answers.type(u"d3c3"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts().last(), u"D3C3 Not Found"_s);
}

void TestFind::aLowerCaseCodeIsNeverFound()
{
    MainWindow window;
    window.start(someLog());
    window.clickRow(1);
    window.answers.type(u"f201"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts().last(), u"F201 Not Found"_s);
    QCOMPARE(window.grid().row(), 1);
}

void TestFind::onTheLastRowNothingIsFound()
{
    MainWindow window;
    window.start(someLog());
    QCOMPARE(window.grid().row(), 6);
    window.answers.type(u"D3C3"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts().last(), u"D3C3 Not Found"_s);
    window.answers.type(u"a999"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts().last(), u"A999 Not Found"_s);
    QCOMPARE(window.form().selected(), -1);
    QCOMPARE(window.yellow(), QStringList());
}

void TestFind::anEmptyAnswerDoesNothing_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("cancelled") << true;
    QTest::newRow("empty") << false;
}

void TestFind::anEmptyAnswerDoesNothing()
{
    QFETCH(bool, cancelled);
    MainWindow window;
    window.start(someLog());
    window.clickRow(1);
    if (cancelled) {
        window.answers.cancel();
    } else {
        window.answers.accept();
    }
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Enter PI to search for"_s});
    QCOMPARE(window.grid().row(), 1);
}

void TestFind::anEmptyLogHasNothing()
{
    MainWindow window;
    window.start();
    window.answers.type(u"d3c3"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts().last(), u"D3C3 Not Found"_s);
}

void TestFind::aDeletedEntryIsNotFoundUnderItsCode()
{
    MainWindow window;
    window.start(someLog());
    window.clickRow(3);
    window.click("Command15");
    window.clickRow(1);
    window.answers.type(u"D3C3"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts().last(), u"D3C3 Not Found"_s);
    window.answers.type(u"delete"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts().last(), u"DELETE Not Found"_s);
}

void TestFind::theFoundRowIsScrolledIntoView()
{
    QByteArray log = logLine("D3C3", "01/06/2010 10:00:00", "87.6", "ONE");
    for (int i = 0; i < 100; ++i) {
        log += logLine(i == 60 ? "BEEF" : "AAAA",
            "02/06/2010 " + QByteArray::number(10 + i / 60) + ':'
                + QByteArray::number(i % 60).rightJustified(2, '0') + ":00",
            QByteArray::number(88 + i), "TWO");
    }
    MainWindow window;
    window.start(log);
    // The table follows its current row by itself; here only Find is to scroll it.
    window.grid().setAutoScroll(false);
    window.grid().setFixedWidth(400);
    window.grid().setTopRow(1);
    window.clickRow(1);
    QCoreApplication::processEvents();
    QScrollBar *across = window.grid().horizontalScrollBar();
    across->setValue(across->maximum());
    QVERIFY(across->value() > 0);
    QVERIFY(!window.isRowVisible(62));
    window.answers.type(u"beef"_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.grid().row(), 62);
    QCOMPARE(window.grid().text(62, GridColumn::PiCode), u"BEEF"_s);
    QVERIFY(window.isRowVisible(62));
    QCOMPARE(across->value(), across->maximum());
    QCOMPARE(window.text("Text1"), u"BEEF"_s);
}

void TestFind::theAnswerIsNotTrimmed()
{
    MainWindow window;
    window.start(someLog());
    window.clickRow(1);
    window.answers.type(u"E201 "_s);
    window.trigger("menuToolsFind");
    QCOMPARE(window.answers.takeTexts().last(), u"E201  Not Found"_s);
}

void TestFind::theCodeIsTrimmed_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("row");
    QTest::newRow("no blank") << u"D3C3"_s << 3;
    QTest::newRow("a blank before") << u" D3C3"_s << 1;
    QTest::newRow("a blank behind") << u"D3C3 "_s << 1;
    QTest::newRow("a blank alone") << u" "_s << 1;
}

void TestFind::theCodeIsTrimmed()
{
    QFETCH(QString, answer);
    QFETCH(int, row);
    MainWindow window;
    window.start(someLog());
    QCOMPARE(window.grid().text(3, GridColumn::PiCode), u" D3C3 "_s);
    window.clickRow(1);
    window.answers.type(answer);
    window.trigger("menuToolsFind");
    QCOMPARE(window.grid().row(), row);
    QCOMPARE(window.answers.takeTexts().size(), row == 1 ? 2 : 1);
}

QTEST_MAIN(TestFind)
#include "tst_find.moc"
