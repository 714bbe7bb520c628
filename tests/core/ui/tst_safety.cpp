#include "loggingwindow.h"

#include <QComboBox>
#include <QDir>
#include <QRegularExpression>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

void expectCopy(MainWindow &window, const QByteArray &bytes)
{
    QCOMPARE(window.copies().size(), 1);
    const QString name = window.copies().constFirst();
    QVERIFY2(QRegularExpression(u"^\\d{8} \\d{6}\\.bak$"_s).match(name).hasMatch(), qPrintable(name));
    QCOMPARE(window.directory.read(name), bytes);
    QCOMPARE(window.text("status"), u"The file that was there before is kept as "_s + name);
}

} // namespace

class TestSafety : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anUnknownLogbookIsToldAndKept_data();
    void anUnknownLogbookIsToldAndKept();
    void anEmptyLogbookIsAnEmptyLog();
    void aBrokenLineIsToldAndTheFileKept_data();
    void aBrokenLineIsToldAndTheFileKept();
    void aFileThatAnotherProgramChangedIsKept();
    void aFileThatAppearedMeanwhileIsKept();
    void aFileThatVanishedIsWrittenAgain();
    void aLogbookOfANewNameIsKeptBeforeItIsOverwritten();
    void aLogbookOfANameThatIsFreeIsMade();
    void aFailingAddKeepsTheOldFileAndTheNewEntry_data();
    void aFailingAddKeepsTheOldFileAndTheNewEntry();
    void aFailingUpdateIsWrittenByTheNextSave();
    void aFailingDeleteIsWrittenByTheNextSave();
    void leavingAsksAboutWhatIsNotOnTheDisk();
    void leavingWritesWhatCouldNotBeWritten();
    void noRoomForTheCopyMeansNothingIsOverwritten();
    void aBrokenTransmitterLineIsToldAndTheFileKept();
    void aDirectoryThatCannotBeWrittenIsToldAtStart();
    void aConfigurationThatCannotBeReadIsToldAtStart();
};

void TestSafety::anUnknownLogbookIsToldAndKept_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("another program's file") << "date;time;station\r\n1;2;3\r\n"_ba;
    QTest::newRow("12 pieces") << "D3C3|12/06/2010 18:22:05|Es|87.6||||||||\r\n"_ba;
    QTest::newRow("an empty first line") << "\r\n"_ba + logLine("D3C3", "12/06/2010 18:22:05", "87.6", "A");
    QTest::newRow("zeroes") << QByteArray(5000, '\0');
}

void TestSafety::anUnknownLogbookIsToldAndKept()
{
    QFETCH(QByteArray, file);
    MainWindow window;
    window.start(file);
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.text("status"),
        u"The logbook %1 was not loaded: its first line has an unknown layout"_s.arg(
            window.directory.file(u"RDSLog.log"_s)));
    QCOMPARE(window.grid().rows(), 1);
    QCOMPARE(window.logbook(), file);
    const QByteArray line = addStation(window);
    QCOMPARE(window.logbook(), line);
    expectCopy(window, file);
    const QByteArray second = addStation(window, u"F202"_s);
    QCOMPARE(window.logbook(), line + second);
    QCOMPARE(window.copies().size(), 1);
}

void TestSafety::anEmptyLogbookIsAnEmptyLog()
{
    MainWindow window;
    window.start(""_ba);
    QCOMPARE(window.text("status"), u""_s);
    const QByteArray line = addStation(window);
    QCOMPARE(window.logbook(), line);
    QCOMPARE(window.copies(), QStringList());
}

void TestSafety::aBrokenLineIsToldAndTheFileKept_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("offending");
    QTest::newRow("too few pieces") << "D3C3|12/06/2010 18:22:05|Es\r\n"_ba << u"Subscript out of range"_s
                                    << u"\"D3C3|12/06/2010 18:22:05|Es\""_s;
    QTest::newRow("an empty line") << "\r\n"_ba << u"Subscript out of range"_s << u"\"\""_s;
    QTest::newRow("an older line") << "D3C3|12/06/2010 18:22:05|Es|87.6|||||||\r\n"_ba
                                   << u"Subscript out of range"_s << u"11 pieces"_s;
    QTest::newRow("a date that is none") << logLine("D3C3", "31/02/2010 18:22:05", "87.6", "A")
                                         << u"Type mismatch"_s << u"31/02/2010 18:22:05"_s;
}

void TestSafety::aBrokenLineIsToldAndTheFileKept()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, name);
    QFETCH(QString, offending);
    const QByteArray before = numberedLog(999);
    const QByteArray file = before + line + numberedLog(5);
    MainWindow window;
    window.start(file, "Bilbao|E|43|-3||\r\n", "E\r\n");
    QCOMPARE(window.answers.seen().size(), 1);
    QCOMPARE(window.answers.seen().first().title, u"Quillon"_s);
    QCOMPARE(window.answers.seen().first().icon, QMessageBox::Critical);
    const QString text = window.answers.takeTexts().first();
    QVERIFY2(text.startsWith(u"Run-time error: "_s + name + u"\nReading "_s
                 + window.directory.file(u"RDSLog.log"_s) + u", line 1000: "_s),
        qPrintable(text));
    QVERIFY2(text.contains(offending), qPrintable(text));
    QCOMPARE(window.text("status"),
        u"The logbook %1 was not loaded whole: 999 entries were read"_s.arg(
            window.directory.file(u"RDSLog.log"_s)));
    QCOMPARE(window.grid().rows(), 1000);
    QCOMPARE(window.grid().text(999, GridColumn::PiCode), u"13E6"_s);
    // The start went on.
    QCOMPARE(window.form().transmitters().count(), 1);
    QCOMPARE(window.find<QComboBox>("Combo3")->count(), 1);
    QCOMPARE(window.logbook(), file);
    const QByteArray added = addStation(window);
    QCOMPARE(window.logbook(), before + added);
    expectCopy(window, file);
}

void TestSafety::aFileThatAnotherProgramChangedIsKept()
{
    MainWindow window;
    window.start(numberedLog(2));
    const QByteArray foreign = numberedLog(3);
    window.directory.write(u"RDSLog.log"_s, foreign);
    window.clickRow(1);
    window.type("Text8", u"X"_s);
    window.click("Command3");
    QCOMPARE(window.logbook(),
        numberedLog(2).replace(0, numberedLog(1).size(), numberedLog(1).replace("NAME", "X")));
    expectCopy(window, foreign);
}

void TestSafety::aFileThatAppearedMeanwhileIsKept()
{
    MainWindow window;
    window.start();
    window.directory.write(u"RDSLog.log"_s, numberedLog(3));
    const QByteArray line = addStation(window);
    QCOMPARE(window.logbook(), line);
    expectCopy(window, numberedLog(3));
}

void TestSafety::aFileThatVanishedIsWrittenAgain()
{
    MainWindow window;
    window.start(numberedLog(2));
    QVERIFY(QFile::remove(window.directory.file(u"RDSLog.log"_s)));
    const QByteArray line = addStation(window);
    QCOMPARE(window.logbook(), numberedLog(2) + line);
    QCOMPARE(window.copies(), QStringList());
}

void TestSafety::aLogbookOfANewNameIsKeptBeforeItIsOverwritten()
{
    MainWindow window;
    window.directory.write(u"other.log"_s, numberedLog(7));
    window.start(numberedLog(2));
    window.form().config().changeConfig(u"LOGBOOK_FILENAME="_s, u"other.log"_s);
    QCOMPARE(window.directory.read(u"other.log"_s), numberedLog(7));
    const QByteArray line = addStation(window);
    QCOMPARE(window.directory.read(u"other.log"_s), numberedLog(2) + line);
    QCOMPARE(window.logbook(), numberedLog(2));
    expectCopy(window, numberedLog(7));
    const QByteArray second = addStation(window, u"F202"_s);
    QCOMPARE(window.directory.read(u"other.log"_s), numberedLog(2) + line + second);
    QCOMPARE(window.copies().size(), 1);
}

void TestSafety::aLogbookOfANameThatIsFreeIsMade()
{
    MainWindow window;
    window.start(numberedLog(2));
    window.form().config().changeConfig(u"LOGBOOK_FILENAME="_s, u"new.log"_s);
    const QByteArray line = addStation(window);
    QCOMPARE(window.directory.read(u"new.log"_s), numberedLog(2) + line);
    QCOMPARE(window.logbook(), numberedLog(2));
    QCOMPARE(window.copies(), QStringList());
}

void TestSafety::aFailingAddKeepsTheOldFileAndTheNewEntry_data()
{
    QTest::addColumn<int>("open");
    QTest::addColumn<int>("write");
    QTest::addColumn<int>("sync");
    QTest::addColumn<int>("rename");
    QTest::addColumn<QString>("name");
    const QString full = u"Disk full"_s;
    const QString denied = u"Permission denied"_s;
    QTest::newRow("full disk") << 0 << ENOSPC << 0 << 0 << full;
    QTest::newRow("quota") << 0 << EDQUOT << 0 << 0 << full;
    QTest::newRow("full disk found by the sync") << 0 << 0 << ENOSPC << 0 << full;
    QTest::newRow("broken disk") << 0 << 0 << EIO << 0 << u"Device I/O error"_s;
    QTest::newRow("read-only directory") << EACCES << 0 << 0 << 0 << denied;
    QTest::newRow("read-only disk") << EROFS << 0 << 0 << 0 << denied;
    QTest::newRow("refused renaming") << 0 << 0 << 0 << EPERM << denied;
}

void TestSafety::aFailingAddKeepsTheOldFileAndTheNewEntry()
{
    QFETCH(int, open);
    QFETCH(int, write);
    QFETCH(int, sync);
    QFETCH(int, rename);
    QFETCH(QString, name);
    MainWindow window;
    window.start(numberedLog(2), "Bilbao|E|43|-3||\r\n");
    const QStringList files = window.directory.names();
    window.calls.failOpen = open;
    window.calls.failWrite = write;
    window.calls.failSync = sync;
    window.calls.failRename = rename;
    const QByteArray line = addStation(window);
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(
                 u"Run-time error: "_s + name + u"\nWriting "_s + window.directory.file(u"RDSLog.log"_s)),
        qPrintable(texts.first()));
    QCOMPARE(window.logbook(), numberedLog(2));
    QCOMPARE(window.directory.names(), files);
    QCOMPARE(window.piCodes(), (QStringList {u"1000"_s, u"1001"_s, u"F201"_s}));
    QCOMPARE(window.caption("Command2"), u"New"_s);
    QVERIFY(window.grid().updatesEnabled());
    window.calls.failOpen = window.calls.failWrite = window.calls.failSync = window.calls.failRename = 0;
    const QByteArray second = addStation(window, u"F202"_s);
    QCOMPARE(window.logbook(), numberedLog(2) + line + second);
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.copies(), QStringList());
}

void TestSafety::aFailingUpdateIsWrittenByTheNextSave()
{
    MainWindow window;
    window.start(numberedLog(2), "Bilbao|E|43|-3||\r\n");
    window.calls.failWrite = ENOSPC;
    window.clickRow(1);
    window.fill({u"Text8"_s, u"CHANGED"_s, u"Text7"_s, u"51.8"_s, u"Text10"_s, u"10.6"_s});
    window.click("Command3");
    QVERIFY(window.answers.takeTexts().first().startsWith(u"Run-time error: Disk full\n"_s));
    QCOMPARE(window.logbook(), numberedLog(2));
    QCOMPARE(window.transmitterFile(), "Bilbao|E|43|-3||\r\n"_ba);
    QCOMPARE(window.grid().text(1, GridColumn::RdsName), u"CHANGED"_s);
    QVERIFY(!window.enabled("Command3"));
    window.calls.failWrite = 0;
    // The mode of the entry before stays.
    const QByteArray line = addStation(window).replace("||88.2", "|Es|88.2");
    QVERIFY(window.logbook().startsWith(numberedLog(1).replace("NAME", "CHANGED")));
    QVERIFY(window.logbook().endsWith(line));
    QCOMPARE(window.transmitterFile(), "Bilbao|E|43|-3||\r\nBrocken|D|51.8|10.6||\r\n"_ba);
}

void TestSafety::aFailingDeleteIsWrittenByTheNextSave()
{
    MainWindow window;
    window.start(numberedLog(2));
    window.calls.failOpen = EROFS;
    window.clickRow(2);
    window.click("Command15");
    QVERIFY(window.answers.takeTexts().first().startsWith(u"Run-time error: Permission denied\n"_s));
    QCOMPARE(window.logbook(), numberedLog(2));
    QCOMPARE(window.piCodes(), (QStringList {u"1000"_s, u"delete"_s}));
    QCOMPARE(window.yellow(), QStringList());
    window.calls.failOpen = 0;
    // The mode of the entry before stays.
    const QByteArray line = addStation(window).replace("||88.2", "|Es|88.2");
    QCOMPARE(window.logbook(), numberedLog(1) + line);
}

void TestSafety::leavingAsksAboutWhatIsNotOnTheDisk()
{
    MainWindow window;
    window.start(numberedLog(2));
    window.calls.failWrite = ENOSPC;
    addStation(window);
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QVERIFY(!window.form().close());
    QVERIFY(window.form().isVisible());
    const SeenDialog question = window.answers.seen().constLast();
    QVERIFY2(question.text.startsWith(u"Quillon could not write "_s), qPrintable(question.text));
    QVERIFY2(question.text.contains(u"Disk full\nWriting "_s + window.directory.file(u"RDSLog.log"_s)),
        qPrintable(question.text));
    QVERIFY(question.text.endsWith(u"Leave all the same? What is not on the disk is lost."_s));
    QCOMPARE(question.defaultButton, QMessageBox::No);
    window.answers.press(QMessageBox::Yes);
    QVERIFY(window.form().close());
    QVERIFY(!window.form().isVisible());
    QCOMPARE(window.logbook(), numberedLog(2));
}

void TestSafety::leavingWritesWhatCouldNotBeWritten()
{
    MainWindow window;
    window.start(numberedLog(2), "Bilbao|E|43|-3||\r\n");
    window.calls.failWrite = ENOSPC;
    window.click("Command2");
    window.fill({u"Text9"_s, u"88.2"_s, u"Text1"_s, u"F201"_s, u"Combo3"_s, u"F"_s, u"Text2"_s,
        u"01/07/2010 09:05:00"_s, u"Text5"_s, u"Paris"_s, u"Text7"_s, u"48.8"_s, u"Text10"_s, u"2.3"_s});
    window.click("Command1");
    QCOMPARE(window.answers.takeTexts().size(), 1);
    window.calls.failWrite = 0;
    QVERIFY(window.form().close());
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.logbook(), numberedLog(2) + "F201|01/07/2010 09:05:00||88.2|Paris|F|||||||\r\n"_ba);
    QVERIFY2(window.transmitterFile().contains("Paris|F|"), window.transmitterFile().constData());
}

void TestSafety::noRoomForTheCopyMeansNothingIsOverwritten()
{
    MainWindow window;
    window.start("something else\r\n");
    const QStringList files = window.directory.names();
    window.calls.failWrite = ENOSPC;
    const QByteArray line = addStation(window);
    QVERIFY(window.answers.takeTexts().first().startsWith(u"Run-time error: Disk full\n"_s));
    QCOMPARE(window.logbook(), "something else\r\n"_ba);
    QCOMPARE(window.directory.names(), files);
    window.calls.failWrite = 0;
    const QByteArray second = addStation(window, u"F202"_s);
    QCOMPARE(window.logbook(), line + second);
    expectCopy(window, "something else\r\n");
}

void TestSafety::aBrokenTransmitterLineIsToldAndTheFileKept()
{
    const QByteArray file = "Bilbao|E|43|-3||\r\nBrocken|D|51\r\nParis|F|1|2||\r\n";
    MainWindow window;
    window.start(numberedLog(2), file, "E\r\nF\r\n");
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QCOMPARE(texts.first(),
        u"Run-time error: Subscript out of range\nReading %1, line 2: the line has 3 pieces instead of 6: "
        "\"Brocken|D|51\""_s.arg(window.directory.file(u"tx.lst"_s)));
    QCOMPARE(window.form().transmitters().count(), 1);
    QCOMPARE(window.grid().rows(), 3);
    QCOMPARE(window.find<QComboBox>("Combo3")->count(), 2);
    addStation(window);
    QCOMPARE(window.transmitterFile(), "Bilbao|E|43|-3||\r\n"_ba);
    expectCopy(window, file);
}

void TestSafety::aDirectoryThatCannotBeWrittenIsToldAtStart()
{
    MainWindow window;
    window.calls.failOpen = EROFS;
    window.start(numberedLog(3));
    const QStringList texts = window.answers.takeTexts();
    QVERIFY(!texts.isEmpty());
    QVERIFY(texts.first().startsWith(
        u"Run-time error: Permission denied\nWriting "_s + window.directory.file(u"LOGBOOK.INI"_s)));
    QCOMPARE(window.grid().rows(), 4);
    QVERIFY(window.form().isVisible());
    QCOMPARE(window.directory.names(), QStringList {u"RDSLog.log"_s});
}

void TestSafety::aConfigurationThatCannotBeReadIsToldAtStart()
{
    MainWindow window;
    QVERIFY(QDir(window.directory.path()).mkdir(u"LOGBOOK.INI"_s));
    window.start(numberedLog(3));
    const QStringList texts = window.answers.takeTexts();
    QVERIFY(!texts.isEmpty());
    QVERIFY(texts.first().startsWith(u"Run-time error: "_s));
    QVERIFY(texts.first().contains(window.directory.file(u"LOGBOOK.INI"_s)));
    QCOMPARE(window.grid().rows(), 4);
    QVERIFY(window.form().isVisible());
}

QTEST_MAIN(TestSafety)
#include "tst_safety.moc"
