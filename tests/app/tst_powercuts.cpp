#include "core/ui/form1.h"
#include "platform/applicationdirectory.h"
#include "platform/files.h"
#include "soak/realprogram.h"
#include "support/dialogs.h"
#include "support/powercuts.h"
#include "support/testfiles.h"

#include <QDir>
#include <QTest>

#include <memory>
#include <optional>
#include <set>
#include <vector>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

constexpr int patience = 30'000; // milliseconds
constexpr qsizetype shortWrite = 200;
constexpr QStringView lost = u" is lost or torn";

const QByteArray oldLog = logLine("D3C3", "12/06/2010 18:22:05", "98.5", "RNE_1", "E", "Bilbao")
    + logLine("D382", "13/06/2010 06:00:00", "89.0", "WDR 2", "D", "Langenberg");
const QByteArray oldSites = "Bilbao|E|43.26|-2.93|812.4|\r\n";
const QByteArray oldSettings = "LOG_BOOK_CALLSIGN=DL1ABC\r\nHOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\n";

Regional regional()
{
    return {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
}

LogEntry heard(const QString &name)
{
    LogEntry entry;
    entry.piCode = u"F201"_s;
    entry.dateTime = *parseDateTime(u"14/06/2010 21:00:00", regional().months);
    entry.freq = u"105.5"_s;
    entry.country = u"F"_s;
    entry.rdsName = name;
    return entry;
}

/// What is done to a folder, with a confirmation after each thing.
class Work
{
public:
    explicit Work(RecordedCalls &calls, const TestDirectory &root)
        : m_calls(calls)
        , m_root(root)
    {
        note();
    }

    /// The bytes of the root's files at the beginning and at each confirmation.
    [[nodiscard]] const std::vector<DiskState> &confirmed() const { return m_confirmed; }

    void run(const QString &scenario)
    {
        if (scenario == u"log and sites") {
            changeLog(m_root.path());
        } else if (scenario == u"settings") {
            Config config(m_root.path(), regional().codePage, m_calls);
            config.readConfig();
            for (const QString &callsign : {u"EA1XYZ"_s, u"F5ABC"_s, u"a callsign that is long enough"_s}) {
                config.changeConfig(u"LOG_BOOK_CALLSIGN="_s, callsign);
                confirm();
            }
        } else if (scenario == u"first start") {
            const TestDirectory supplied;
            supplied.write(u"country.lst"_s, "D\r\nE\r\n");
            const QString directory = m_root.file(u"of/the user/quillon"_s);
            prepareApplicationDirectory(directory, supplied.path(), CodePage(), m_calls);
            Config(directory, regional().codePage, m_calls).createDefaultConfig();
            confirm();
            changeLog(directory);
        } else {
            for (int i = 0; i < 3; ++i) {
                appendToFile(m_root.file(u"autoupdate.log"_s), "a line of what was done\r\n", m_calls);
                confirm();
            }
        }
    }

private:
    void changeLog(const QString &directory)
    {
        Config config(directory, regional().codePage, m_calls);
        config.readConfig();
        LogDocument document(config, regional(), m_calls);
        document.loadLogbook();
        document.loadSites();
        const auto add = [&](const QString &name, const Transmitter &site) {
            Change change {name, LogChange::addition(heard(name)), {}};
            if (const auto addition = document.sites().addition(site)) {
                change.sites.push_back(*addition);
            }
            document.commit(std::move(change));
            confirm();
        };
        add(u"FIRST"_s, {u"Reims"_s, u"F"_s, u"49.1"_s, u"3.93"_s, {}});
        add(u"SECOND"_s, {});
        Change change {u"Update"_s, {}, {}};
        change.log.setField(0, document.log().entry(0), LogField::Notes, u"heard again"_s);
        document.commit(std::move(change));
        confirm();
        document.undo();
        confirm();
        add(u"THIRD"_s, {u"Paris"_s, u"F"_s, u"48.8"_s, u"2.3"_s, {}});
    }

    void confirm()
    {
        m_calls.confirm();
        note();
    }

    void note() { m_confirmed.push_back(stateBelow(m_root.path())); }

    RecordedCalls &m_calls;
    const TestDirectory &m_root;
    std::vector<DiskState> m_confirmed;
};

bool isLeftover(const QByteArray &path)
{
    const QByteArray name = path.sliced(path.lastIndexOf('/', path.size() - 2) + 1);
    return (name.startsWith('.') && name.endsWith(".new")) || path.startsWith("of/the user/.quillon-");
}

/// What is wrong with a state: after so many confirmations each file is as it was then or as the next thing
/// made it, and nothing else is there. Empty when nothing is.
QString problemOf(const DiskState &state, const std::vector<DiskState> &confirmed, int confirmations)
{
    const auto now = static_cast<std::size_t>(confirmations);
    const DiskState &then = confirmed.at(now);
    const DiskState &next = confirmed.at(std::min(now + 1, confirmed.size() - 1));
    for (const auto &[path, bytes] : then) {
        const QByteArray is = bytesOf(state, path);
        const bool appended = path == "autoupdate.log" && is.startsWith(bytes);
        if (!state.contains(path) || (is != bytes && is != bytesOf(next, path) && !appended)) {
            return QString::fromUtf8(path) + lost;
        }
    }
    for (const auto &[path, bytes] : state) {
        const bool appended = path == "autoupdate.log";
        const bool folder = path.endsWith('/');
        if (!then.contains(path) && !isLeftover(path) && !folder && !appended
            && bytesOf(next, path) != bytes) {
            return QString::fromUtf8(path) + u" is neither old nor new"_s;
        }
    }
    return {};
}

struct Tally
{
    int states = 0;
    int started = 0;
    int lost = 0; ///< states in which something that was confirmed is not there
    QString problem;
};

} // namespace

class TestPowerCuts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatWasConfirmedIsThere_data();
    void whatWasConfirmedIsThere();
    void theProgramItselfStarts();
    void aSyncThatIsLeftOutIsFound_data();
    void aSyncThatIsLeftOutIsFound();

private:
    Tally tally(const QString &scenario, Metadata metadata, RecordedCalls::Omitted omitted,
        const std::function<void(RecordedCalls &)> &fileSystem, bool start);
    QString problemOfAStart(const DiskState &state);
};

/// What a start of the main window on a folder in this state finds wrong; empty when nothing is.
QString TestPowerCuts::problemOfAStart(const DiskState &state)
{
    const TestDirectory root(memoryDirectory.toString());
    putState(state, root);
    const bool first = state.contains("of/");
    const QString directory = first ? root.file(u"of/the user/quillon"_s) : root.path();
    prepareApplicationDirectory(directory, QStringLiteral(QUILLON_SUPPLIED), CodePage());
    DialogAnswers answers;
    Form1 form({directory, QStringLiteral(QUILLON_SUPPLIED), regional()});
    form.Form_Load();
    const QByteArray prefix = first ? "of/the user/quillon/"_ba : QByteArray();
    const auto lines = bytesOf(state, prefix + "RDSLog.log").count('\n');
    const auto sites = bytesOf(state, prefix + "tx.lst").count('\n');
    if (form.log().count() != lines || form.transmitters().count() != sites) {
        return u"%1 receptions and %2 sites were read of %3 and %4"_s.arg(form.log().count())
            .arg(form.transmitters().count())
            .arg(lines)
            .arg(sites);
    }
    constexpr auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QStringList hidden = QDir(directory).entryList({u".*"_s}, all);
    if (first) {
        // What was left of the making of the folder stands beside it.
        hidden += QDir(root.file(u"of/the user"_s)).entryList({u".*"_s}, all);
    }
    return (answers.takeTexts() + hidden).join(u'\n');
}

Tally TestPowerCuts::tally(const QString &scenario, Metadata metadata, RecordedCalls::Omitted omitted,
    const std::function<void(RecordedCalls &)> &fileSystem, bool start)
{
    const TestDirectory root(memoryDirectory.toString());
    if (scenario == u"first start") {
        QDir().mkpath(root.file(u"of"_s));
    } else {
        root.write(u"LOGBOOK.INI"_s, oldSettings);
        root.write(u"RDSLog.log"_s, oldLog);
        root.write(u"tx.lst"_s, oldSites);
    }
    RecordedCalls calls(root.path(), omitted);
    fileSystem(calls);
    Work work(calls, root);
    work.run(scenario);
    Tally all;
    std::set<DiskState> started;
    PowerCuts(calls).forEach(metadata, [&](const DiskState &state, int confirmations) {
        ++all.states;
        QString problem = problemOf(state, work.confirmed(), confirmations);
        // The bytes of what is removed at the start, or not read then, make no difference there: of those
        // that differ in nothing else the first is started, and a sample of the others.
        constexpr int sample = 100;
        DiskState kept = state;
        for (auto &[path, bytes] : kept) {
            bytes = isLeftover(path) || path == "autoupdate.log" ? QByteArray() : bytes;
        }
        if (problem.isEmpty() && start && (started.insert(kept).second || all.states % sample == 0)) {
            problem = problemOfAStart(state);
        }
        all.lost += problem.endsWith(lost) ? 1 : 0;
        all.problem = all.problem.isEmpty() ? problem : all.problem;
    });
    all.started = static_cast<int>(started.size());
    return all;
}

void TestPowerCuts::whatWasConfirmedIsThere_data()
{
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<bool>("ordered");
    QTest::addColumn<bool>("nameless");
    QTest::addColumn<bool>("shortWrites");
    for (const char *scenario : {"log and sites", "settings", "first start", "what the search did"}) {
        for (const bool ordered : {true, false}) {
            for (const bool nameless : {true, false}) {
                for (const bool shortWrites : {false, true}) {
                    QTest::addRow("%s, %s%s%s", scenario, ordered ? "ordered" : "unordered",
                        nameless ? "" : ", named files", shortWrites ? ", short writes" : "")
                        << QString::fromLatin1(scenario) << ordered << nameless << shortWrites;
                }
            }
        }
    }
}

void TestPowerCuts::whatWasConfirmedIsThere()
{
    QFETCH(QString, scenario);
    QFETCH(bool, ordered);
    QFETCH(bool, nameless);
    QFETCH(bool, shortWrites);
    const Tally all = tally(
        scenario, ordered ? Metadata::Ordered : Metadata::Unordered, RecordedCalls::Omitted::Nothing,
        [&](RecordedCalls &calls) {
            if (!nameless) {
                calls.refuseNameless();
            }
            calls.writeAtMost(shortWrites ? shortWrite : 0);
        },
        !shortWrites);
    QCOMPARE(all.problem, QString());
    QVERIFY(all.states > 3);
    // In short writes the bytes alone are compared.
    QVERIFY(shortWrites ? all.started == 0 : all.started > 1);
    qInfo("%d states, %d of them started", all.states, all.started);
}

// The main window stands for the program above; this is the program as it is installed.
void TestPowerCuts::theProgramItselfStarts()
{
    const TestDirectory root(memoryDirectory.toString());
    root.write(u"LOGBOOK.INI"_s, oldSettings);
    root.write(u"RDSLog.log"_s, oldLog);
    root.write(u"tx.lst"_s, oldSites);
    RecordedCalls calls(root.path());
    Work work(calls, root);
    work.run(u"log and sites"_s);
    int states = 0;
    PowerCuts(calls).forEach(Metadata::Unordered, [&](const DiskState &state, int /*confirmations*/) {
        ++states;
        const TestDirectory home(memoryDirectory.toString());
        DiskState below;
        for (const auto &[path, bytes] : state) {
            below["log/" + path] = bytes;
        }
        putState(below, home);
        soak::RealProgram program(home.path(), home.file(u"log"_s));
        QVERIFY(program.answers());
        const QDir log(home.file(u"log"_s));
        const auto hidden = [&] { return log.entryList({u".*"_s}, QDir::Files | QDir::Hidden); };
        QTRY_COMPARE_WITH_TIMEOUT(hidden(), QStringList(), patience);
        QVERIFY(program.kill());
        QCOMPARE(home.read(u"log/RDSLog.log"_s), bytesOf(state, "RDSLog.log"));
    });
    QVERIFY(states > 10);
}

void TestPowerCuts::aSyncThatIsLeftOutIsFound_data()
{
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<bool>("ordered");
    QTest::addColumn<bool>("files");
    for (const char *scenario : {"log and sites", "settings", "first start", "what the search did"}) {
        for (const bool ordered : {true, false}) {
            for (const bool files : {true, false}) {
                QTest::addRow("%s, %s, syncs of %s", scenario, ordered ? "ordered" : "unordered",
                    files ? "files" : "folders")
                    << QString::fromLatin1(scenario) << ordered << files;
            }
        }
    }
}

void TestPowerCuts::aSyncThatIsLeftOutIsFound()
{
    QFETCH(QString, scenario);
    QFETCH(bool, ordered);
    QFETCH(bool, files);
    const Tally all = tally(
        scenario, ordered ? Metadata::Ordered : Metadata::Unordered,
        files ? RecordedCalls::Omitted::FileSyncs : RecordedCalls::Omitted::FolderSyncs,
        [](RecordedCalls &) {}, false);
    QVERIFY(all.lost > 0);
}

QTEST_MAIN(TestPowerCuts)
#include "tst_powercuts.moc"
