#include "core/ui/form1.h"
#include "import/ui/importrdsspy.h"
#include "support/dialogs.h"
#include "support/testfiles.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <memory>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

constexpr int kills = 30;
constexpr int oldEntries = 1'000;
constexpr int receptions = 200;
constexpr int patience = 60'000; // milliseconds

constexpr char began = 'b';
constexpr char imported = 'i';
constexpr char ended = 'e';

// Goes straight into the pipe, so that a kill does not take it along.
void report(char what)
{
    if (::write(STDOUT_FILENO, &what, 1) != 1) {
        qFatal("nobody listens");
    }
}

Form1Options optionsOf(const QString &directory)
{
    return {directory, QStringLiteral(QUILLON_SUPPLIED), Regional::fromEnvironment()};
}

// The other process: imports all receptions of the day through the real windows, and reports each.
int importAll(const QString &directory)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    Form1 form(optionsOf(directory));
    form.Form_Load();
    form.show();
    DialogAnswers answers;
    answers.type(u"12/06/2010"_s);
    form.findChild<QAction *>(u"menuImportRDSSpyLog"_s)->trigger();
    auto *window = form.findChild<importRDSSpy *>(u"importRDSSpy"_s);
    QObject::connect(window, &importRDSSpy::progress, &form, [] { report(imported); });
    answers.press(QMessageBox::Ok);
    report(began);
    window->findChild<QPushButton *>(u"Command3"_s)->click();
    report(ended);
    return 0;
}

QString two(int number)
{
    return u"%1"_s.arg(number, 2, 10, QChar(u'0'));
}

QByteArray oldLog()
{
    QByteArray log;
    for (int i = 0; i < oldEntries; ++i) {
        log += logLine("D3C3",
            "11/06/2010 "_ba + two(i / 60 % 24).toLatin1() + ':' + two(i % 60).toLatin1() + ":00", "100.5",
            "OLD " + QByteArray::number(i));
    }
    return log;
}

// What the file holds after so many receptions.
QByteArrayList logsAfter()
{
    QByteArrayList logs {oldLog()};
    for (int i = 0; i < receptions; ++i) {
        const QByteArray time = (two(i / 60) + u':' + two(i % 60) + u":00"_s).toLatin1();
        logs += logs.last() + "E201|12/06/2010 " + time + "||87.5||TBD||RADIO " + QByteArray::number(i)
            + "|||||\r\n";
    }
    return logs;
}

// A directory with a log, and a folder with a day of receptions.
struct Home
{
    explicit Home(const QByteArray &log)
    {
        for (int i = 0; i < receptions; ++i) {
            spy.write(u"2010-06-12 %1-%2-00 E201 RADIO %3.txt"_s.arg(two(i / 60), two(i % 60)).arg(i), {});
        }
        directory.write(u"RDSLog.log"_s, log);
        directory.write(u"tx.lst"_s, "Brocken|D|51.799|10.618|1|\r\n");
        directory.write(
            u"LOGBOOK.INI"_s, "RDSSPY_LOGS="_ba + spy.path().toLocal8Bit() + "\r\nTIME_OFFSET=0\r\n");
    }

    TestDirectory directory;
    TestDirectory spy;
};

// The other process, and what it has reported.
class Importer
{
public:
    explicit Importer(const TestDirectory &directory)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationFilePath(), {u"--import"_s, directory.path()});
    }
    Importer(const Importer &) = delete;
    Importer &operator=(const Importer &) = delete;
    ~Importer() { kill(); }

    // False when it ended, or fell silent, before it reported that so often.
    [[nodiscard]] bool waitFor(char what, qsizetype times = 1)
    {
        while (m_reports.count(what) < times) {
            if (!m_process.waitForReadyRead(patience)) {
                return false;
            }
            m_reports += m_process.readAllStandardOutput();
        }
        return true;
    }
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(patience);
        m_reports += m_process.readAllStandardOutput();
    }
    [[nodiscard]] qsizetype reported() const { return m_reports.count(imported); }

private:
    QProcess m_process;
    QByteArray m_reports;
};

} // namespace

class TestKilledImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aKilledImportLeavesTheOldLogAndTheFirstReceptions();
};

void TestKilledImport::aKilledImportLeavesTheOldLogAndTheFirstReceptions()
{
    const QByteArrayList logs = logsAfter();
    QElapsedTimer whole;
    {
        const Home home(logs.first());
        Importer importer(home.directory);
        QVERIFY(importer.waitFor(began));
        whole.start();
        QVERIFY(importer.waitFor(ended));
        QCOMPARE(importer.reported(), receptions);
        QCOMPARE(home.directory.read(u"RDSLog.log"_s), logs.last());
    }
    const auto receptionUs = static_cast<quint32>(whole.nsecsElapsed() / 1'000 / receptions);
    QRandomGenerator random(19480512);
    int halfWay = 0;
    for (int i = 0; i < kills; ++i) {
        const Home home(logs.first());
        Importer importer(home.directory);
        // At any reception, and at any moment of what is done for one.
        QVERIFY(importer.waitFor(imported, random.bounded(1, receptions / 2)));
        QThread::usleep(random.bounded(2 * receptionUs));
        importer.kill();

        const qsizetype onDisk = logs.indexOf(home.directory.read(u"RDSLog.log"_s));
        QVERIFY(onDisk >= importer.reported());
        // At most the one reception that was being added is more than was reported.
        QVERIFY(onDisk <= importer.reported() + 1);
        halfWay += onDisk > 0 && onDisk < receptions ? 1 : 0;

        // The next start reads all of it, has nothing to tell and tidies up.
        DialogAnswers answers;
        Form1 form(optionsOf(home.directory.path()));
        form.Form_Load();
        QCOMPARE(answers.takeTexts(), QStringList());
        QCOMPARE(form.log().count(), oldEntries + onDisk);
        QCOMPARE(form.transmitters().count(), 1);
        QCOMPARE(form.config().settings().rdsSpyDirectory, home.spy.path());
        QCOMPARE(home.directory.names(), (QStringList {u"LOGBOOK.INI"_s, u"RDSLog.log"_s, u"tx.lst"_s}));
        QCOMPARE(home.directory.read(u"RDSLog.log"_s), logs.at(onDisk));
    }
    // The kills did meet imports.
    QVERIFY2(halfWay > kills / 2, qPrintable(QString::number(halfWay)));
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == u"--import") {
        return importAll(arguments.at(2));
    }
    TestKilledImport test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_killedimport.moc"
