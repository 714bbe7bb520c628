#include "startedprogram.h"

#include "platform/files.h"
#include "ui/looks.h"

#include <QDir>
#include <QFile>
#include <QPalette>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray defaultConfiguration = "LOG_BOOK_CALLSIGN=NOCALL\r\n";
QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList suppliedNames()
{
    return QDir(QStringLiteral(QUILLON_SUPPLIED)).entryList(QDir::Files, QDir::Name);
}

QStringList namesIn(const QString &directory)
{
    return QDir(directory).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

} // namespace

class TestProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDirectoryIsChosen_data();
    void theDirectoryIsChosen();
    void thePortableProgramKeepsItsFilesBesideIt();
    void aNewDirectoryGetsTheSuppliedFiles();
    void thePagesOfANewDirectoryNameTheCodePage();
    void anExistingDirectoryGetsTheConfigurationAlone();
    void aFileInPlaceOfTheDirectoryIsRefused();
    void versionAndHelpNeedNoDisplay_data();
    void versionAndHelpNeedNoDisplay();
    void whatItDoesNotKnowIsRefused_data();
    void whatItDoesNotKnowIsRefused();
    void theToolkitsOptionsAreTaken();
    void withoutADisplayTheProgramSaysSo();
    void aStartThatIsEndedLeavesTheLogbookAsItWas();
    void theWindowEndsTheProgramWithSuccess();
    void whatHasTheFocusHasARing();
};

void TestProgram::theDirectoryIsChosen_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("the option") << u"given"_s << u""_s << u"given"_s;
    QTest::newRow("the option before the variable") << u"given"_s << u"set"_s << u"given"_s;
    QTest::newRow("the variable") << u""_s << u"set"_s << u"set"_s;
    QTest::newRow("neither") << u""_s << u""_s << u"data/quillon"_s;
    QTest::newRow("a slash at the end") << u"given/"_s << u""_s << u"given"_s;
    QTest::newRow("folders that do not exist") << u"a/b/c"_s << u""_s << u"a/b/c"_s;
}

void TestProgram::theDirectoryIsChosen()
{
    QFETCH(QString, option);
    QFETCH(QString, variable);
    QFETCH(QString, chosen);
    Program program;
    if (!variable.isEmpty()) {
        program.set(u"QUILLON_DIR"_s, program.home.file(variable));
    }
    // Relative to where the program is started.
    QVERIFY(program.start(option.isEmpty() ? QStringList() : QStringList {u"--directory"_s, option}));
    const QString ini = program.home.file(chosen + u"/LOGBOOK.INI"_s);
    QTRY_COMPARE_WITH_TIMEOUT(bytesOf(ini), defaultConfiguration, patience);
    for (const QString &other : {u"given"_s, u"set"_s, u"data/quillon"_s}) {
        QCOMPARE(QFile::exists(program.home.file(other)), other == chosen);
    }
    QCOMPARE(program.process.state(), QProcess::Running);
}

void TestProgram::thePortableProgramKeepsItsFilesBesideIt()
{
    Program program;
    const QString copy = program.home.file(u"stick/quillon"_s);
    program.home.write(u"stick/Logbook.ini"_s, "LOGBOOK_FILENAME=mine.log\r\n");
    program.home.write(u"stick/mine.log"_s, "not a logbook\r\n");
    program.home.write(u"stick/.mine.log.new"_s, "not");
    QVERIFY(QFile::copy(QStringLiteral(QUILLON_PROGRAM), copy));
    QVERIFY(program.start({}, copy));
    // The program has nothing to write here; what a killed writing left beside the logbook goes when it is
    // read.
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(program.home.file(u"stick/.mine.log.new"_s)), patience);
    QCOMPARE(program.process.state(), QProcess::Running);
    QVERIFY(!QFile::exists(program.home.file(u"data"_s)));
    QCOMPARE(namesIn(program.home.file(u"stick"_s)),
        (QStringList {u"Logbook.ini"_s, u"mine.log"_s, u"quillon"_s}));
    QCOMPARE(bytesOf(program.home.file(u"stick/mine.log"_s)), "not a logbook\r\n"_ba);
}

void TestProgram::aNewDirectoryGetsTheSuppliedFiles()
{
    Program program;
    QVERIFY(program.start({u"--directory"_s, u"new"_s}));
    const QString directory = program.home.file(u"new"_s);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(directory + u"/LOGBOOK.INI"_s), patience);
    QStringList expected = suppliedNames();
    QVERIFY(expected.contains(u"country.lst"_s));
    for (const QString &name : std::as_const(expected)) {
        QCOMPARE(
            bytesOf(filePath(directory, name)), bytesOf(filePath(QStringLiteral(QUILLON_SUPPLIED), name)));
    }
    expected += u"LOGBOOK.INI"_s;
    QStringList names = namesIn(directory);
    std::ranges::sort(expected);
    std::ranges::sort(names);
    QCOMPARE(names, expected);
}

void TestProgram::thePagesOfANewDirectoryNameTheCodePage()
{
    Program program;
    program.set(u"QUILLON_CODEPAGE"_s, u"1250"_s);
    QVERIFY(program.start({u"--directory"_s, u"new"_s}));
    const QString directory = program.home.file(u"new"_s);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(directory + u"/LOGBOOK.INI"_s), patience);
    for (const QString &name : {u"quillon_index.template"_s, u"quillon_log.template"_s}) {
        QVERIFY(bytesOf(filePath(directory, name)).contains("\n<meta charset=\"windows-1250\">\n"));
    }
    QVERIFY(bytesOf(filePath(directory, u"quillon_mapview.htm"_s))
                .contains("\n<meta name=\"kml-charset\" content=\"windows-1250\">\n"));
}

void TestProgram::anExistingDirectoryGetsTheConfigurationAlone()
{
    Program program;
    program.home.write(u"old/note"_s, "mine");
    QVERIFY(program.start({u"--directory"_s, u"old"_s}));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(program.home.file(u"old/LOGBOOK.INI"_s)), patience);
    QCOMPARE(namesIn(program.home.file(u"old"_s)), (QStringList {u"LOGBOOK.INI"_s, u"note"_s}));
}

void TestProgram::aFileInPlaceOfTheDirectoryIsRefused()
{
    Program program;
    OwnScreen display;
    QVERIFY2(display.start(), "this test needs Xvfb");
    display.give(program);
    program.home.write(u"taken"_s, "mine");
    QVERIFY(program.start({u"--directory"_s, u"taken"_s}));
    // The message waits for the user; nothing is written.
    QVERIFY2(typed(program, u"^Quillon$"_s, u"Return"_s), "this test needs xdotool");
    QVERIFY(program.ended());
    QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.process.exitCode(), 1);
    QCOMPARE(bytesOf(program.home.file(u"taken"_s)), "mine"_ba);
    QCOMPARE(program.home.names().contains(u"data"_s), false);
}

void TestProgram::versionAndHelpNeedNoDisplay_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QByteArray>("begins");
    QTest::addColumn<QByteArray>("holds");
    QTest::newRow("version") << u"--version"_s << "quillon "_ba
                             << "."_ba;
    QTest::newRow("help") << u"--help"_s << "Usage: "_ba
                          << "Logbook for long-distance reception of FM stations."_ba;
}

void TestProgram::versionAndHelpNeedNoDisplay()
{
    QFETCH(QString, option);
    QFETCH(QByteArray, begins);
    QFETCH(QByteArray, holds);
    Program program;
    program.set(u"QT_QPA_PLATFORM"_s, u"none such"_s);
    QVERIFY(program.start({option}));
    QVERIFY(program.ended());
    QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.process.exitCode(), 0);
    const QByteArray said = program.process.readAllStandardOutput();
    QVERIFY(said.startsWith(begins));
    QVERIFY(said.contains(holds));
    QCOMPARE(program.home.names(), QStringList());
}

void TestProgram::whatItDoesNotKnowIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<QString>("platform");
    for (const QString &platform : {u"offscreen"_s, u"none such"_s}) {
        const auto row = [&](const char *what, const QStringList &arguments, const QByteArray &said) {
            QTest::addRow("%s, %s", what, qPrintable(platform)) << arguments << said << platform;
        };
        row("an option", {u"--folder"_s, u"x"_s}, "quillon: Unknown option 'folder'.\n");
        row("a directory without its option", {u"dx"_s},
            "quillon: unexpected argument \"dx\". To keep all files in a directory, say --directory DIR.\n");
        row("an option without its value", {u"--directory"_s},
            "quillon: Missing value after '--directory'.\n");
    }
}

void TestProgram::whatItDoesNotKnowIsRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, said);
    QFETCH(QString, platform);
    Program program;
    program.set(u"QT_QPA_PLATFORM"_s, platform);
    QVERIFY(program.start(arguments));
    QVERIFY(program.ended());
    QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.process.exitCode(), 1);
    QCOMPARE(program.process.readAllStandardError(), said);
    QCOMPARE(program.home.names(), QStringList());
}

void TestProgram::theToolkitsOptionsAreTaken()
{
    Program program;
    program.set(u"QT_QPA_PLATFORM"_s, u"none such"_s);
    QVERIFY(program.start(
        {u"-platform"_s, u"offscreen"_s, u"-style"_s, u"fusion"_s, u"--directory"_s, u"given"_s}));
    QTRY_COMPARE_WITH_TIMEOUT(
        bytesOf(program.home.file(u"given/LOGBOOK.INI"_s)), defaultConfiguration, patience);
}

void TestProgram::withoutADisplayTheProgramSaysSo()
{
    Program program;
    program.set(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    program.set(u"DISPLAY"_s, {});
    QVERIFY(program.start());
    QVERIFY(program.ended());
    QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.process.exitCode(), 1);
    QCOMPARE(program.process.readAllStandardError(),
        "Quillon found no display to show its window on. Please start it from a desktop session, or set "
        "DISPLAY or WAYLAND_DISPLAY.\n"_ba);
}

void TestProgram::aStartThatIsEndedLeavesTheLogbookAsItWas()
{
    Program program;
    const QByteArray log = logLine("D3C3", "12/06/2010 18:22:05", "87.6", "RNE_1");
    program.home.write(u"old/RDSLog.log"_s, log);
    QVERIFY(program.start({u"--directory"_s, u"old"_s}));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(program.home.file(u"old/LOGBOOK.INI"_s)), patience);
    program.process.terminate();
    QVERIFY(program.ended());
    QCOMPARE(program.home.read(u"old/RDSLog.log"_s), log);
    QCOMPARE(namesIn(program.home.file(u"old"_s)), (QStringList {u"LOGBOOK.INI"_s, u"RDSLog.log"_s}));
}

// On a real display: the key of the menu's Exit closes the window.
void TestProgram::theWindowEndsTheProgramWithSuccess()
{
    OwnScreen display;
    QVERIFY2(display.start(), "this test needs Xvfb");
    {
        Program program;
        display.give(program);
        program.home.write(u"old/LOGBOOK.INI"_s, "LOG_BOOK_CALLSIGN=CLOSING\r\n");
        QVERIFY(program.start({u"--directory"_s, u"old"_s}));
        QVERIFY2(typed(program, u"^Quillon - CLOSING$"_s, u"ctrl+q"_s), "this test needs xdotool");
        QVERIFY(program.ended());
        QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.process.exitCode(), 0);
        QCOMPARE(namesIn(program.home.file(u"old"_s)), QStringList {u"LOGBOOK.INI"_s});
    }
}

void TestProgram::whatHasTheFocusHasARing()
{
    OwnScreen display;
    QVERIFY2(display.start(), "this test needs Xvfb");
    Program program;
    display.give(program);
    program.home.write(u"old/RDSLog.log"_s, logLine("D3C3", "12/06/2010 18:22:05", "87.6", "RNE_1"));
    QVERIFY(program.start({u"--directory"_s, u"old"_s}));
    QTRY_VERIFY2_WITH_TIMEOUT(
        hasWindow(program, u"^Quillon"_s, u"Tab"_s), "this test needs xdotool", patience);
    constexpr int someOfAFrame = 100;
    QTRY_VERIFY_WITH_TIMEOUT(
        display.pixelsOf(focusColour(QPalette(Qt::white)).rgb()) > someOfAFrame, patience);
}

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
