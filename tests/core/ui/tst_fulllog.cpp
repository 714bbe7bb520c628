#include "loggingwindow.h"

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestFullLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLogThatCannotGrowIsToldAtStart();
    void theEntryThatTheLogCannotGrowBehindIsSaved();
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

QTEST_MAIN(TestFullLog)
#include "tst_fulllog.moc"
