#include "startedprogram.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quillon::test;

namespace {

// A title, a colour, a cleared screen, an enquiry, the signs beyond ASCII that begin the same, and markup.
const QByteArray hostile = "\x1b]0;x\x07\x1b[31m\x1b[2J\x05\x08\x7f\x9b"
                           "31m\x9d"
                           "0;y\x9c<b>x</b><img src=x>";

// Too few fields, none, a zero, and no end of a line.
QByteArray brokenLines()
{
    return hostile + "\r\n" + hostile + '|' + hostile + "|x\r\n" + '\0' + hostile + "|\r\n" + hostile;
}

// Closes what the program shows, boxes first, until it has ended.
bool closed(Program &program)
{
    QElapsedTimer timer;
    timer.start();
    while (program.process.state() == QProcess::Running && timer.elapsed() < patience) {
        if (!hasWindow(program, u"^Quillon - "_s, u"ctrl+q"_s)) {
            (void)hasWindow(program, u"^Quillon$"_s, u"Return"_s);
        }
        constexpr int pause = 300; // milliseconds
        (void)program.process.waitForFinished(pause);
    }
    return program.process.state() == QProcess::NotRunning;
}

} // namespace

/// Nothing of strangers comes to the terminal from which the program is started.
class TestTerminal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hostileFilesSayNothingThere_data();
    void hostileFilesSayNothingThere();
};

void TestTerminal::hostileFilesSayNothingThere_data()
{
    QTest::addColumn<QString>("broken");
    QTest::newRow("nothing is broken") << u""_s;
    for (const QString &name :
        {u"RDSLog.log"_s, u"tx.lst"_s, u"country.lst"_s, u"stations.lst"_s, u"LOGBOOK.INI"_s}) {
        QTest::addRow("broken lines in %s", qPrintable(name)) << name;
    }
}

void TestTerminal::hostileFilesSayNothingThere()
{
    QFETCH(QString, broken);
    OwnScreen screen;
    QVERIFY2(screen.start(), "this test needs Xvfb");
    Program program;
    screen.give(program);
    // Qt itself tells there of a desktop that has no such folder.
    const QString door = program.home.file(u"run"_s);
    QVERIFY(QDir().mkpath(door));
    QVERIFY(QFile::setPermissions(door, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    program.set(u"XDG_RUNTIME_DIR"_s, door);
    const auto write = [&](const QString &name, const QByteArray &bytes) {
        program.home.write(u"log/"_s + name, name == broken ? bytes + brokenLines() : bytes);
    };
    write(u"RDSLog.log"_s, logLine("D3C3", "12/06/2010 18:22:05", "98.5", hostile, hostile, hostile));
    write(u"tx.lst"_s, hostile + '|' + hostile + "|43.2630|-2.9350|812.4|\r\n");
    write(u"country.lst"_s, hostile + "\r\n");
    write(u"stations.lst"_s, {});
    write(u"LOGBOOK.INI"_s, "LOG_BOOK_CALLSIGN=" + hostile + "\r\nHOME_DEC_LAT=" + hostile + "\r\n");
    QVERIFY(program.start({u"--directory"_s, u"log"_s}));
    QVERIFY2(closed(program), "this test needs xdotool");
    QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.process.readAllStandardOutput(), QByteArray());
    QCOMPARE(program.process.readAllStandardError(), QByteArray());
}

QTEST_GUILESS_MAIN(TestTerminal)
#include "tst_terminal.moc"
