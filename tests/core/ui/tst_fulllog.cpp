#include "live/ui/receiverdock.h"
#include "loggingwindow.h"
#include "support/told.h"

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestFullLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLogThatCannotGrowIsToldAtStart();
    void theEntryThatTheLogCannotGrowBehindIsSaved();
    void whatTheReceiverHearsIsNotLoggedAnyMore();
};

void TestFullLog::theLogThatCannotGrowIsToldAtStart()
{
    const QByteArray file = numberedLog(32498);
    MainWindow window;
    window.start(file);
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(u"Run-time error: Overflow\nReading "_s
                 + window.directory.file(u"RDSLog.log"_s) + u", line 32498: The log is full"_s),
        qPrintable(texts.first()));
    QCOMPARE(window.grid().rows(), 32499);
    QVERIFY(window.isRowVisible(32498));
    QCOMPARE(window.form().log().count(), 32498);
    QCOMPARE(window.logbook(), file);
}

void TestFullLog::theEntryThatTheLogCannotGrowBehindIsSaved()
{
    const QByteArray file = numberedLog(32497);
    MainWindow window;
    window.start(file);
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.text("status"), u""_s);
    const QByteArray line = addStation(window);
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(u"Run-time error: Overflow\nThe log is full: with entry 32498"_s),
        qPrintable(texts.first()));
    QVERIFY(window.logbook() == file + line);
    QCOMPARE(window.grid().rows(), 32499);
    QCOMPARE(window.grid().text(32498, GridColumn::PiCode), u"F201"_s);
    QVERIFY(!window.enabled("Command1"));
    QCOMPARE(window.copies(), QStringList());
}

void TestFullLog::whatTheReceiverHearsIsNotLoggedAnyMore()
{
    MainWindow window;
    window.start(numberedLog(32498));
    (void)window.answers.takeTexts();
    Told &source = listenTold(window.find<ReceiverDock>("receiverDock")->receiver());
    // Some places are left behind the last entry that the log could grow with.
    quint16 piCode = 0xE201;
    const auto fits = [&] {
        const qint32 before = window.form().log().count();
        ++piCode;
        source.hear(98'500'000, piCode, u"NAME%1"_s.arg(piCode, 0, 16));
        window.key(Qt::Key_F6);
        return window.form().log().count() > before;
    };
    constexpr int morePlaces = 20;
    for (int place = 0; fits(); ++place) {
        QVERIFY(place < morePlaces);
    }
    const QStringList texts = window.answers.takeTexts();
    QVERIFY2(texts.last().contains(u"The log is full: it holds"_s), qPrintable(texts.last()));
    QVERIFY2(!window.text("status").contains(QString::number(piCode, 16)), qPrintable(window.text("status")));
}

QTEST_MAIN(TestFullLog)
#include "tst_fulllog.moc"
