#include "live/evening.h"
#include "live/frequency.h"
#include "live/receiversettings.h"
#include "live/ui/receiverdock.h"
#include "loggingwindow.h"
#include "support/told.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScreen>
#include <QTableView>
#include <QTcpServer>
#include <QTimer>

#include <algorithm>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

/// Double-clicks the cell below a heading, as a person does.
void doubleClick(QTableView &table, int row, const QString &heading)
{
    for (int column = 0; column < table.model()->columnCount(); ++column) {
        if (table.model()->headerData(column, Qt::Horizontal).toString() == heading) {
            const QModelIndex cell = table.model()->index(row, column);
            table.scrollTo(cell);
            const QPoint at = table.visualRect(cell).center();
            QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, at);
            return;
        }
    }
    qFatal("no heading %s", qPrintable(heading));
}

/// The line of the logbook that a station is to become.
QByteArray lineOf(const Evening::Heard &heard, qint64 first)
{
    const QString line =
        u"%1|%2||%3||TBD||%4|||||\r\n"_s.arg(piText(heard.station.pi), generalText(DateTime {first / 1000}),
            megahertzText(heard.station.hertz), QString(heard.station.ps).replace(u' ', u'_'));
    return line.toLatin1();
}

} // namespace

/// The receiver in the real window.
class TestReceiver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thirtyFiveOfFortyAreLoggedByTheKey();
    void aFrequencyTunesWhenTicked();
    void itConnectsAtStartWhenTicked();
    void withoutRoomItFloats();
};

void TestReceiver::thirtyFiveOfFortyAreLoggedByTheKey()
{
    MainWindow window;
    window.start(oneEntry);
    window.key(Qt::Key_F8);
    auto *dock = window.find<ReceiverDock>("receiverDock");
    Told &source = listenTold(dock->receiver());
    // The listener is typing something else meanwhile.
    window.key(Qt::Key_N, Qt::ControlModifier);
    window.type("Text3", u"opening to Spain"_s);

    Evening evening(1);
    QByteArray expected = oneEntry;
    QByteArray beforeTheLast;
    for (std::size_t i = 0; i < evening.heard().size(); ++i) {
        const Evening::Heard &heard = evening.heard()[i];
        bool wanted = i % 8 != 7;
        const auto first = evening.listenTo(i, [&](const ReceiverEvent &event, qint64 when) {
            source.sayAt(event, when);
            const auto &now = dock->receiver().listening().station();
            if (!wanted || !now || !now->certain || now->ps.isEmpty()) {
                return;
            }
            wanted = false;
            // The key is pressed when the dock shows the station without a doubt.
            QTRY_COMPARE(window.text("receiverPi"), piText(heard.station.pi));
            QTRY_COMPARE(window.text("receiverPs").trimmed(), heard.station.ps);
            QCOMPARE(window.text("receiverFreq"), megahertzText(heard.station.hertz));
            window.key(Qt::Key_F6);
        });
        QVERIFY2(!wanted || i % 8 == 7, qPrintable(heard.station.ps));
        if (i % 8 != 7) {
            QVERIFY(first.has_value());
            beforeTheLast = expected;
            expected += lineOf(heard, *first);
        }
    }
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.form().log().count(), 1 + 35);
    QCOMPARE(window.logbook(), expected);
    QCOMPARE(window.text("Text3"), u"opening to Spain"_s);
    const auto logged = [&] {
        return std::ranges::count_if(dock->receiver().heard().rows(), &HeardRow::logged);
    };
    QCOMPARE(logged(), 35);
    // Each is one step back. What is being typed goes only after a question.
    window.answers.press(QMessageBox::Yes);
    window.trigger("menuEditUndo");
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(window.form().log().count(), 35);
    QCOMPARE(window.logbook(), beforeTheLast);
    QCOMPARE(logged(), 34);
}

void TestReceiver::aFrequencyTunesWhenTicked()
{
    MainWindow window;
    window.start(oneEntry + "E201|13/06/2010 10:00:00|Es|90.30||E||RNE_CLAS|10||||\r\n");
    window.form().resize(1300, 760);
    window.key(Qt::Key_F8);
    auto *dock = window.find<ReceiverDock>("receiverDock");
    const Told &source = listenTold(dock->receiver());
    window.type("Text1", u"D3C3"_s);
    window.click("Command4");
    QCOMPARE(window.list().count(), 1);
    window.clickRow(2);
    QCOMPARE(window.form().selected(), 1);
    // As long as it is not ticked, a double-click is what it was.
    doubleClick(window.list(), 0, u"Freq"_s);
    QCOMPARE(window.form().selected(), 0);
    doubleClick(window.grid(), 1, u"Freq"_s);
    QCOMPARE(source.tunedTo, QList<qint64>());

    for (QAction *const action : window.find<QMenu>("receiverOptions")->actions()) {
        if (action->text().remove(u'&') == u"Tuning From the Log"_s) {
            action->trigger();
        }
    }
    doubleClick(window.grid(), 1, u"Freq"_s);
    QCOMPARE(source.tunedTo, QList<qint64> {90'300'000});
    QCOMPARE(window.form().selected(), 1);
    doubleClick(window.list(), 0, u"Freq"_s);
    QCOMPARE(source.tunedTo, (QList<qint64> {90'300'000, 87'600'000}));
    QCOMPARE(window.form().selected(), 1);
    // And from the menu of the row.
    const QPoint row = window.list().visualRect(window.list().model()->index(0, 0)).center();
    bool offered = false;
    QTimer::singleShot(0, &window.form(), [&] {
        auto *const menu = window.find<QMenu>("resultsMenu");
        for (QAction *const action : menu->actions()) {
            offered = offered || action->text() == "&Tune"_L1;
        }
        QTest::keyClick(menu, offered ? Qt::Key_T : Qt::Key_Escape);
    });
    QContextMenuEvent asked(QContextMenuEvent::Mouse, row, window.list().viewport()->mapToGlobal(row));
    QCoreApplication::sendEvent(window.list().viewport(), &asked);
    QVERIFY(offered);
    QCOMPARE(source.tunedTo, (QList<qint64> {90'300'000, 87'600'000, 87'600'000}));
    // Any other cell does what it did.
    doubleClick(window.list(), 0, u"PI Code"_s);
    QCOMPARE(source.tunedTo.size(), 3);
    QCOMPARE(window.form().selected(), 0);
}

void TestReceiver::itConnectsAtStartWhenTicked()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    MainWindow window;
    ReceiverSettings settings;
    settings.last = {SourceKind::Xdrd, u"127.0.0.1:%1"_s.arg(server.serverPort()), {}, false};
    writeReceiverSettings(window.look.path(), settings);
    window.start(oneEntry);
    QVERIFY(!window.find<ReceiverDock>("receiverDock")->isVisible());
    QCOMPARE(window.text("receiverState"), u"not connected"_s);
    settings.connectAtStart = true;
    writeReceiverSettings(window.look.path(), settings);
    // What was left closed is opened all the same.
    window.form().close();
    window.start(oneEntry);
    QTRY_COMPARE(window.text("receiverState"), u"listening"_s);
    QVERIFY(window.find<ReceiverDock>("receiverDock")->isVisible());
}

void TestReceiver::withoutRoomItFloats()
{
    MainWindow window;
    window.start(oneEntry);
    auto *dock = window.find<ReceiverDock>("receiverDock");
    window.key(Qt::Key_F8);
    QVERIFY(window.form().minimumSizeHint().width() > window.form().screen()->availableGeometry().width());
    QTRY_VERIFY(dock->isFloating());
    QCOMPARE(window.form().width(), window.form().minimumSizeHint().width());
    // Its keys are those of the log.
    window.answers.press(QMessageBox::Ok);
    QTest::keyClick(dock, Qt::Key_F6);
    QCOMPARE(window.answers.takeTexts().size(), 1);
}

QTEST_MAIN(TestReceiver)
#include "tst_receiver.moc"
