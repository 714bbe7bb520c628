#include "fmlistwindow.h"
#include "import/ui/importfile.h"
#include "importingwindow.h"
#include "live/receiver.h"
#include "live/ui/receiverdock.h"
#include "platform/runtimeerror.h"
#include "stats/ui/logstats.h"
#include "support/strangers.h"
#include "support/told.h"
#include "ui/filterbar.h"
#include "ui/messages.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTabBar>
#include <QTextEdit>
#include <QToolTip>
#include <QUrl>

#include <functional>
#include <memory>
#include <vector>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

// A reception of which every text is a stranger's.
QByteArray strangeEntry(const QByteArray &freq = "87.6")
{
    return "D3C1|12/06/2010 18:22:05|Es|" + freq
        + "|<img src=x>|<b>x</b>|<a href=x>y</a>CRLF<img src=x>|<b>x</b>|10|812.4|fml=none#|<img src=x>|\r\n";
}
const QByteArray strangeSite = "<img src=x>|<b>x</b>|43.2630|-2.9350|812.4|\r\n";
const QByteArray withSender = "OMID=1234\r\nHOME_DEC_LAT=52.5\r\nHOME_DEC_LON=13.4\r\n";

// Asks for the tip of a label as a resting pointer does, and paints it.
void askForTip(QWidget &widget)
{
    const QPoint middle = widget.rect().center();
    QHelpEvent event(QEvent::ToolTip, middle, widget.mapToGlobal(middle));
    QCoreApplication::sendEvent(&widget, &event);
    QCoreApplication::processEvents();
}

} // namespace

/// Texts of strangers are shown as they are written, wherever they come in and wherever they are shown.
class TestStrangers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void theWatchSeesWhatIsTakenForMarkup()
    {
        StrangersWatch watch;
        QLabel label(strangeImage);
        label.setObjectName(u"stranger"_s);
        watch.lookAtAll();
        QCOMPARE(watch.taken(), QStringList(u"QLabel stranger: <img src=x>"_s));
        QVERIFY(!watch.saw(u"stranger"_s));
        label.setTextFormat(Qt::PlainText);
        watch.lookAtAll();
        QVERIFY(watch.saw(u"stranger"_s));
        label.setToolTip(strangeLink);
        watch.lookAtAll();
        QCOMPARE(watch.taken().size(), 2);
    }

    void theWatchSeesWhatADocumentTookForMarkup_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("made");
        QTest::newRow("bold") << strangePs << u"bold x"_s;
        QTest::newRow("an image") << strangeImage << u"image x"_s;
        QTest::newRow("a link") << strangeLink << u"link x y"_s;
    }

    void theWatchSeesWhatADocumentTookForMarkup()
    {
        QFETCH(QString, text);
        QFETCH(QString, made);
        StrangersWatch watch;
        QTextEdit edit;
        edit.setObjectName(u"edit"_s);
        edit.setPlainText(text);
        QGraphicsScene scene;
        auto *label = scene.addText(text);
        QGraphicsView view(&scene);
        view.setObjectName(u"view"_s);
        watch.lookAtAll();
        QCOMPARE(watch.taken().join(u'\n'), QString());
        QVERIFY(watch.saw(u"edit"_s) && watch.saw(u"view"_s));
        edit.setHtml(u"name: "_s + text + u" heard"_s);
        label->setHtml(u"name: "_s + text + u" heard"_s);
        watch.lookAtAll();
        QCOMPARE(
            watch.taken(), (QStringList {u"QGraphicsView view: "_s + made, u"QTextEdit edit: "_s + made}));
    }

    void inTheLog()
    {
        StrangersWatch watch;
        MainWindow window;
        window.directory.write(u"LOGBOOK.INI"_s, withSender + "LOG_BOOK_CALLSIGN=<img src=x>\r\n");
        window.start(strangeEntry() + strangeEntry("90.1"), strangeSite, "<b>x</b>\r\n<img src=x>\r\n");
        window.clickRow(1);
        window.type("Text6", u"5"_s);
        window.click("Command3");
        QVERIFY(window.text("status").contains(strangePs));
        auto *status = window.find<QLabel>("status");
        status->setMaximumWidth(60);
        status->resize(60, status->height());
        askForTip(*status);
        QVERIFY(QToolTip::isVisible());
        window.type("Text9", u"<img src=x>"_s);
        window.type("Text5", u"<a href=x>y</a>|"_s);
        watch.lookAtAll();
        window.clickRow(2);
        window.click("Command15");
        window.trigger("menuEditUndo");
        window.find<FilterBar>("filterBar")->setText(u"rds:<b>x</b>"_s);
        for (const char *action : {"menuStats", "menuStatsCollection", "menuToolsConverter", "menuAbout",
                 "menuSetup", "menuEditMany", "menuFileBackups"}) {
            window.trigger(action);
            QCoreApplication::processEvents();
        }
        window.key(Qt::Key_F7);
        QCoreApplication::processEvents();
        watch.lookAtAll();
        QCOMPARE(watch.taken().join(u'\n'), QString());
        for (const QString &name : {u"status"_s, u"Grid1"_s, u"qtooltip_label"_s, u"filterProblem"_s}) {
            QVERIFY2(watch.saw(name), qPrintable(name + u" of "_s + watch.seen().join(u' ')));
        }
    }

    void inALogThatIsNotLoaded()
    {
        StrangersWatch watch;
        MainWindow window;
        window.start("<img src=x>|<b>x</b>|<a href=x>y</a>\r\n", "<img src=x>\r\n", "<b>x</b>\r\n");
        watch.lookAtAll();
        QCOMPARE(watch.taken().join(u'\n'), QString());
    }

    void inTheTitleOfAChart_data()
    {
        QTest::addColumn<QString>("text");
        for (const QString &text : strangeTexts()) {
            QTest::newRow(qPrintable(text)) << text;
        }
    }

    void inTheTitleOfAChart()
    {
        QFETCH(QString, text);
        StrangersWatch watch;
        MainWindow window;
        window.start("D3C1|12/06/2010 18:22:05|" + text.toLatin1() + "|87.6|Bilbao|E||RNE_1|10|812.4|||\r\n");
        window.trigger("menuStats");
        auto *stats = window.find<logStats>("logStats");
        stats->logChanged();
        auto *modes = stats->findChild<QComboBox *>(u"Combo3"_s);
        QVERIFY(modes->findText(text) > 0);
        modes->setCurrentIndex(modes->findText(text));
        stats->findChild<QPushButton *>(u"Command3"_s)->click();
        QCoreApplication::processEvents();
        watch.lookAtAll();
        QCOMPARE(watch.taken().join(u'\n'), QString());
        QVERIFY2(watch.saw(u"MSChart1"_s), qPrintable(watch.seen().join(u' ')));
    }

    void inAnswersOfTheService()
    {
        StrangersWatch watch;
        FmlistWindow window;
        window.open(strangeEntry(), withSender);
        window.clickRow(1);
        window.answerWith("87.6;D3C1;<b>x</b>;<b>x</b>;<img src=x>, <a href=x>y</a>;10;52.5;13.4;4711\n");
        window.click("Command11");
        QCOMPARE(window.results().count(), 1);
        watch.lookAtAll();
        window.doubleClickResult(0);
        window.answerWith("Error <img src=x>\n");
        window.clickRow(1);
        window.click("Command11");
        window.service.behave({.fault = standin::Fault::Raw,
            .raw = "HTTP/1.1 500 <a href=x>y</a>\r\nContent-Length: 0\r\n\r\n"});
        window.click("Command11");
        QVERIFY(window.answers.takeTexts().join(u' ').contains(strangeLink));
        window.answerWith("<img src=x> <b>x</b>");
        window.trigger("menuFMListUploadLogs");
        QVERIFY(window.status().contains(strangeImage));
        watch.lookAtAll();
        QCOMPARE(watch.taken().join(u'\n'), QString());
        QVERIFY(watch.saw(u"List2"_s));
        QVERIFY(watch.saw(u"status"_s));
    }

    void inAFileOfReceptions()
    {
        StrangersWatch watch;
        ImportingWindow window;
        window.start(strangeEntry());
        window.directory.write(u"in/<img src=x>.csv"_s,
            "Date/Time,PI Code,Freq,RDS Name,Country,Transmitter,Notes\r\n"
            "12/06/2010 18:22:05,D3C1,87.6,<b>x</b>,<b>x</b>,<img src=x>,<a href=x>y</a>\r\n"
            "<img src=x>,D3C1,<b>x</b>,<b>x</b>,D,<img src=x>,\r\n");
        window.trigger("menuImportFile");
        auto *import = window.find<importFile>("importFile");
        ImportingWindow::drop(*import, {window.directory.file(u"in/<img src=x>.csv"_s)});
        QTRY_VERIFY(import->findChild<QAbstractItemView *>(u"importTable"_s)->model()->rowCount() > 0);
        watch.lookAtAll();
        QCOMPARE(watch.taken().join(u'\n'), QString());
        QVERIFY2(watch.saw(u"importTable"_s), qPrintable(watch.seen().join(u' ')));
        QVERIFY(watch.saw(u"importChosen"_s));
    }

    void inNamesOfFilesAndFolders()
    {
        StrangersWatch watch;
        ImportingWindow window;
        const QByteArray home = window.directory.path().toLocal8Bit();
        window.directory.write(
            u"LOGBOOK.INI"_s, "RDSSPY_LOGS=" + home + "/<img src=x>\r\nRDSDX_LOG=" + home + "/<b>x<b>\r\n");
        window.directory.write(u"<img src=x>/2010-06-12 18-22-05 D3C3 <img src=x>.txt"_s, {});
        window.directory.write(u"<img src=x>/<a href=x> list <b>.txt"_s, {});
        window.directory.write(u"<b>x<b>/<img src=x>.txt"_s, "<img src=x>\r\n");
        window.start(strangeEntry());
        (void)window.openSpy(u"12/06/2010"_s);
        watch.lookAtAll();
        (void)window.openDx();
        watch.lookAtAll();
        window.trigger("menuSetup");
        watch.lookAtAll();
        QCOMPARE(watch.taken().join(u'\n'), QString());
        QVERIFY2(watch.saw(u"folder"_s), qPrintable(watch.seen().join(u' ')));
    }

    void inAListOfStations()
    {
        StrangersWatch watch;
        MainWindow window;
        window.start("D313|12/06/2010 18:22:05|Tropo|99.4|||note|<b>x</b>|||||\r\n");
        window.directory.write(u"<img src=x>.json"_s,
            "{\"locations\":{\"1\":{\"name\":\"<img src=x>\",\"itu\":\"D\",\"lat\":50.03,\"lon\":11.81,"
            "\"stations\":[{\"id\":77,\"freq\":\"99.4\",\"pi\":\"D313\",\"ps\":\"<b>x</b>\",\"erp\":100},"
            "{\"id\":\"<img src=x>\",\"freq\":\"<b>x</b>\",\"pi\":\"<a href=x>y</a>\"}]}}}");
        window.answers.doing([&](QWidget *box) {
            auto *dialog = qobject_cast<QFileDialog *>(box);
            QVERIFY(dialog);
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)
                ->setText(window.directory.file(u"<img src=x>.json"_s));
            dialog->findChild<QDialogButtonBox *>()->buttons().first()->click();
        });
        window.trigger("menuImportStations");
        constexpr int probably = 2;
        window.find<QTabBar>("resultTabs")->setCurrentIndex(probably);
        window.clickRow(1);
        QTRY_VERIFY(window.find<ResultList>("candidates")->count() > 0);
        watch.lookAtAll();
        QCOMPARE(watch.taken().join(u'\n'), QString());
        QVERIFY2(watch.saw(u"candidates"_s), qPrintable(watch.seen().join(u' ')));
    }

    void inWhatAReceiverHears()
    {
        StrangersWatch watch;
        MainWindow window;
        window.start(strangeEntry());
        window.key(Qt::Key_F8);
        auto *dock = window.find<ReceiverDock>("receiverDock");
        Told &source = listenTold(dock->receiver());
        source.sayAt(Tuned {99'400'000}, 1'000);
        source.sayAt(PiHeard {0xD313}, 1'000);
        source.sayAt(PsHeard {strangePs}, 1'000);
        source.sayAt(RadiotextHeard {strangeImage + u' ' + strangeLink}, 1'000);
        QTRY_COMPARE(window.text("receiverPs"), strangePs);
        QTRY_VERIFY(window.text("receiverRt").contains(strangeImage));
        watch.lookAtAll();
        window.click("receiverLog");
        watch.lookAtAll();
        source.end(strangeLink);
        QTRY_VERIFY(window.text("receiverState").contains(strangeLink));
        watch.lookAtAll();
        QCOMPARE(watch.taken().join(u'\n'), QString());
        for (const QString &name : {u"receiverRt"_s, u"receiverState"_s}) {
            QVERIFY2(watch.saw(name), qPrintable(name + u" of "_s + watch.seen().join(u' ')));
        }
    }

    void inMessages()
    {
        using Box = std::function<void(const QString &text)>;
        const std::vector<Box> boxes {[](const QString &text) { showMessage(nullptr, text); },
            [](const QString &text) { showMessageWith(nullptr, text, text); },
            [](const QString &text) { (void)showMessageOr(nullptr, text, u"Other"_s); },
            [](const QString &text) { (void)askYesNo(nullptr, text, text); },
            [](const QString &text) { (void)inputBox(nullptr, text, {}, text); },
            [](const QString &text) {
                showRuntimeError(nullptr, RuntimeError(ErrorName::TypeMismatch, text));
            }};
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            for (const QString &text : strangeTexts()) {
                const QByteArray which = "box " + QByteArray::number(i) + " with " + text.toLatin1();
                StrangersWatch watch;
                DialogAnswers answers;
                boxes[i](text);
                QVERIFY2(answers.seen().size() == 1, which.constData());
                QVERIFY2(!watch.seen().isEmpty(), which.constData());
                QCOMPARE(watch.taken().join(u'\n'), QString());
            }
        }
    }
};

QTEST_MAIN(TestStrangers)
#include "tst_strangers.moc"
