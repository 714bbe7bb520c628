#include "startedprogram.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;
using namespace quillon::test;

namespace {

const QByteArray logbook = "D3C3|12/06/2010 18:22:05|Es|98.5|Bilbao|E||RNE_1|10|812.4|||\r\n";

// A program does nothing for so long as this lives.
class Halted
{
public:
    explicit Halted(const Program &program)
        : m_id(static_cast<pid_t>(program.process.processId()))
    {
        ::kill(m_id, SIGSTOP);
    }
    Halted(const Halted &) = delete;
    Halted &operator=(const Halted &) = delete;
    ~Halted() { ::kill(m_id, SIGCONT); }

private:
    pid_t m_id;
};

} // namespace

/// Two programs on one folder.
class TestTwoPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<TestDirectory>();
        m_home->write(u"log/RDSLog.log"_s, logbook);
        m_screen = std::make_unique<OwnScreen>();
        QVERIFY2(m_screen->start(), "this test needs Xvfb");
    }
    void cleanup()
    {
        m_screen.reset();
        m_home.reset();
    }

    void theSecondSaysSoAndBringsTheFirstToTheFront()
    {
        Program first;
        startOn(first, u"log"_s);
        QVERIFY(waitForWindow(first));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_home->file(u"log/LOGBOOK.INI"_s)), patience);
        const QStringList names = namesIn(u"log"_s);
        Program second;
        // By another name: it is the folder that counts.
        QVERIFY(QFile::link(m_home->file(u"log"_s), m_home->file(u"link"_s)));
        startOn(second, u"link"_s);
        QVERIFY2(typed(second, u"^Quillon$"_s, u"Return"_s), "this test needs xdotool");
        QVERIFY(second.ended());
        QCOMPARE(second.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.process.exitCode(), 0);
        QCOMPARE(first.process.state(), QProcess::Running);
        QCOMPARE(namesIn(u"log"_s), names);
        QCOMPARE(m_home->read(u"log/RDSLog.log"_s), logbook);
    }

    void aFirstThatIsMinimizedIsShown()
    {
        QVERIFY2(m_screen->manageWindows(), "this test needs openbox");
        Program first;
        startOn(first, u"log"_s);
        QVERIFY(waitForWindow(first, u"^Quillon - "_s));
        // The window manager may not have come to it yet.
        QVERIFY(QTest::qWaitFor(
            [&] {
                (void)minimized(first, u"^Quillon - "_s);
                return QTest::qWaitFor([&] { return !hasWindow(first, u"^Quillon - "_s); }, 2'000);
            },
            patience));
        Program second;
        startOn(second, u"log"_s);
        QVERIFY(typed(second, u"^Quillon$"_s, u"Return"_s));
        QVERIFY(second.ended());
        QVERIFY(waitForWindow(first, u"^Quillon - "_s));
    }

    void aFirstThatDoesNotAnswerIsTold()
    {
        Program first;
        startOn(first, u"log"_s);
        // Its title until then is that of the box which the second will show.
        QVERIFY(waitForWindow(first, u"^Quillon - "_s));
        const Halted halted(first);
        Program second;
        startOn(second, u"log"_s);
        QVERIFY(typed(second, u"^Quillon$"_s, u"Return"_s));
        QVERIFY(waitForWindow(second, u"^No Answer$"_s));
    }

    void theSecondCanBeClosedByKeys()
    {
        Program first;
        startOn(first, u"log"_s);
        QVERIFY(waitForWindow(first, u"^Quillon - "_s));
        // Were it asked to come to the front, it would be told that it does not answer.
        const Halted halted(first);
        Program second;
        startOn(second, u"log"_s);
        QVERIFY(typed(second, u"^Quillon$"_s, u"Tab Return"_s));
        QVERIFY(second.ended());
        QCOMPARE(second.process.exitCode(), 0);
    }

    void whatAKilledProgramLeavesIsHarmless()
    {
        {
            Program first;
            startOn(first, u"log"_s);
            QVERIFY(waitForWindow(first));
            first.process.kill();
            QVERIFY(first.process.waitForFinished(patience));
        }
        Program second;
        startOn(second, u"log"_s);
        QVERIFY(waitForWindow(second));
        QCOMPARE(second.process.state(), QProcess::Running);
        QCOMPARE(m_home->read(u"log/RDSLog.log"_s), logbook);
    }

    void anotherFolderIsAnotherMatter()
    {
        Program first;
        startOn(first, u"log"_s);
        QVERIFY(waitForWindow(first));
        Program second;
        startOn(second, u"other"_s);
        QVERIFY(waitForWindow(second));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_home->file(u"other/LOGBOOK.INI"_s)), patience);
    }

private:
    void startOn(Program &program, const QString &folder)
    {
        m_screen->give(program);
        QVERIFY(program.start({u"--directory"_s, m_home->file(folder)}));
    }
    // Whether the program comes to have a window of this title.
    static bool waitForWindow(const Program &program, const QString &title = u"."_s)
    {
        return QTest::qWaitFor([&] { return hasWindow(program, title); }, patience);
    }
    [[nodiscard]] QStringList namesIn(const QString &folder) const
    {
        return QDir(m_home->file(folder)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    std::unique_ptr<TestDirectory> m_home;
    std::unique_ptr<OwnScreen> m_screen;
};

QTEST_GUILESS_MAIN(TestTwoPrograms)
#include "tst_twoprograms.moc"
