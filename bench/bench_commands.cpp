// The commands of the main window at full size: 32,498 entries and 5,001 transmitters. Each is measured in
// processor time of the whole process; its bar is a number of reference works, measured in between.

#include "core/logbooklines.h"
#include "platform/files.h"
#include "support.h"
#include "supportchanges.h"
#include "supportimport.h"
#include "supportprogram.h"
#include "supportreference.h"
#include "supporttable.h"
#include "supportwindow.h"
#include "ui/resultlist.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <vector>

using namespace quillon;
using namespace quillon::bench;
using namespace Qt::StringLiterals;

namespace {

constexpr int repetitions = 7;

double memoryMb()
{
    const QByteArrayList lines = readFile(u"/proc/self/status"_s).split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("VmRSS:")) {
            return line.sliced(6).trimmed().split(' ').first().toDouble() / 1024;
        }
    }
    return 0;
}

Runs repeated(const std::function<void()> &prepare, const std::function<void()> &work,
    const std::function<double()> &beside = referenceTime)
{
    Runs runs;
    for (int i = 0; i < repetitions; ++i) {
        prepare();
        runs.times.push_back(measured(work));
        runs.beside.push_back(beside());
    }
    return runs;
}

void writeConfiguration(const QString &directory)
{
    writeFile(filePath(directory, u"LOGBOOK.INI"_s),
        "LOG_BOOK_CALLSIGN=BENCH\r\nHOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n");
    writeFile(filePath(directory, u"quillon_index.template"_s), "$GENERATED\r\n$RAWDATA\r\n");
    writeFile(filePath(directory, u"quillon_log.template"_s), "<table>\r\n$RAWDATA\r\n</table>\r\n");
    writeFile(filePath(directory, u"quillon_mapview.htm"_s), QByteArray(800'000, 'x'));
    writeFile(filePath(directory, u"country.lst"_s), "Germany\r\nSpain\r\nItaly\r\nTBD\r\n");
}

// The full log less its last entries, so that some can be added before the log is full.
QByteArray logWithRoom(const QByteArray &full)
{
    qsizetype end = full.size();
    for (int lines = 0; lines < changeRepetitions + 3; ++lines) {
        end = full.lastIndexOf("\r\n", end - 1);
    }
    return full.first(end + 2);
}

void measureStart(Table &table, const QString &full, const QString &empty)
{
    Runs runs = repeated([] {}, [&full] { const Window window(full); });
    const Runs empties = repeated([] {}, [&empty] { const Window window(empty); });
    const auto part = [&empties](double Times::*which) {
        std::vector<double> all;
        std::ranges::transform(
            empties.times, std::back_inserter(all), [which](const Times &time) { return time.*which; });
        return medianOf(all);
    };
    for (Times &time : runs.times) {
        time = {time.all - part(&Times::all), time.kernel - part(&Times::kernel)};
    }
    table.row("start to a filled grid, more than with an empty log", runs, 12);
}

void measureEntries(Table &table, Window &window, const QString &directory)
{
    Changes changes(table, window, directory);
    changes.measure(
        u"add"_s, [&window] { window.typeReception(); }, u"Command1"_s);
    constexpr int apart = 400;
    int row = 100;
    changes.measure(
        u"update"_s, [&] { window.typeOver(row += apart); }, u"Command3"_s);
    changes.measure(
        u"delete"_s, [&] { window.chooseRow(row += apart); }, u"Command15"_s);
    table.row("a row is chosen", repeated([] {}, [&] { window.chooseRow(row += 500); }), 1);
}

void measureSearches(Table &table, Window &window, Answering &answering)
{
    struct Search
    {
        const char *name;
        QString button;
        QString field;
        QString text;
    };
    const std::vector<Search> searches {{"search by PI code, typical", u"Command4"_s, u"Text1"_s, u"D3C"_s},
        {"search by PI code, empty", u"Command4"_s, u"Text1"_s, {}},
        {"search by name, typical", u"Command6"_s, u"Text8"_s, u"RADIO 7"_s},
        {"search by name, empty", u"Command6"_s, u"Text8"_s, {}},
        {"search by frequency, typical", u"Command7"_s, u"Text9"_s, u"99.9"_s},
        {"search by frequency, empty", u"Command7"_s, u"Text9"_s, {}},
        {"search by transmitter, typical", u"Command8"_s, u"Text5"_s, u"Site 77"_s},
        {"search by transmitter, empty", u"Command8"_s, u"Text5"_s, {}}};
    for (const Search &search : searches) {
        table.row(search.name,
            repeated([&] { window.write(search.field, search.text); }, [&] { window.click(search.button); }),
            1);
    }
    for (const QString &country : {u"Germany"_s, QString()}) {
        table.row(country.isEmpty() ? "search by country, empty" : "search by country, typical",
            repeated([&] { window.find<QComboBox>(u"Combo3"_s).setEditText(country); },
                [&window] { window.click(u"Command13"_s); }),
            1);
    }
    for (const QString &text : {u"ABC"_s, u"GHI"_s}) {
        answering.text = text;
        table.row(text == u"GHI" ? "Find, of what is nowhere" : "Find",
            repeated([] {}, [&window] { window.trigger(u"menuToolsFind"_s); }), 1);
    }
    answering.text.clear();
}

// A key in the filter's box to the filtered grid; and all receptions chosen, to the dialog that says what
// would change of them.
void measureFilterAndMany(Table &table, Window &window)
{
    constexpr double keyBar = 2;
    constexpr double manyBar = 40;
    auto &box = window.find<QLineEdit>(u"filterText"_s);
    struct Key
    {
        const char *name;
        QString before;
        QString key;
    };
    for (const Key &typed : std::initializer_list<Key> {
             {"a key in the filter, the first one", {}, u"a"_s},
             {"a key in the filter, nothing fits", u"malag"_s, u"a"_s},
             {"a key in the filter, several terms", u"freq>88 -gone date:201"_s, u"5"_s},
         }) {
        table.row(typed.name,
            repeated([&] { box.setText(typed.before); },
                [&] {
                    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, typed.key);
                    QApplication::sendEvent(&box, &press);
                }),
            keyBar);
    }
    box.clear();
    const auto closeDialog = [&window] {
        if (auto *dialog = window.form().findChild<QDialog *>(u"editMany"_s)) {
            delete dialog;
        }
        window.grid().clearSelection();
    };
    table.row("all chosen and Edit, what would change told",
        repeated(closeDialog,
            [&window] {
                window.grid().selectAll();
                window.trigger(u"menuEditMany"_s);
                window.find<QCheckBox>(u"tickProp"_s).setChecked(true);
                window.find<QComboBox>(u"valueProp"_s).setEditText(u"Tropo"_s);
                if (!window.find<QLabel>(u"effect"_s).text().contains(u"Tropo"_s)) {
                    qFatal("the dialog does not say what would change");
                }
            }),
        manyBar);
    closeDialog();
}

// What the pages are held to: as many files with the same bytes. Making them is the kernel's work.
double timeOfTheSameFiles(const QString &directory, int copy)
{
    const QString pages = filePath(directory, u"html"_s);
    const QString beside = filePath(directory, u"copy %1"_s.arg(copy));
    QDir(directory).mkpath(beside);
    std::vector<std::pair<QString, QByteArray>> files;
    for (const QString &name : QDir(pages).entryList(QDir::Files)) {
        files.emplace_back(filePath(beside, name), readFile(filePath(pages, name)));
    }
    const Times times = measured([&files] {
        for (const auto &[path, bytes] : files) {
            writeFile(path, bytes);
        }
    });
    return times.all;
}

void measureWholeLog(Table &table, Window &window, const QString &directory)
{
    int exported = 0;
    table.row("re-calculate distances", repeated([] {}, [&window] { window.click(u"Command10"_s); }), 6);
    table.row("web pages of 20 years",
        // Every file is new, and no file has just been deleted: the file system would search for a place.
        repeated([&] { QDir(directory).rename(u"html"_s, u"html before %1"_s.arg(++exported)); },
            [&window] { window.trigger(u"menuExportWebPage"_s); },
            [&] { return timeOfTheSameFiles(directory, exported); }),
        6);
    int column = 0;
    table.row("sort by a heading", repeated([] {}, [&] { Q_EMIT window.grid().headerClicked(++column); }), 8);
}

// What the menu commands of the imports work on, and a window of its own for each run.
class Imports
{
public:
    explicit Imports(const QByteArray &log = {})
        : m_log(log)
    {
        writeConfiguration(m_home.path());
        const QByteArray folders = "RDSSPY_LOGS=" + QFile::encodeName(m_spy.path())
            + "\r\nRDSDX_LOG=" + QFile::encodeName(m_dx.path()) + "\r\n";
        appendToFile(m_home.filePath(u"LOGBOOK.INI"_s), folders);
        writeFile(m_dx.filePath(u"20100612.txt"_s), rdsdxLog());
        writeSpyFolder(m_spy.path());
    }

    /// A main window with the log as it was.
    Window &fresh()
    {
        m_window.reset();
        writeFile(m_home.filePath(u"RDSLog.log"_s), m_log);
        m_window.emplace(m_home.path());
        Window::rest();
        return *m_window;
    }
    [[nodiscard]] Window &window() { return *m_window; }

private:
    QByteArray m_log;
    QTemporaryDir m_home;
    QTemporaryDir m_spy;
    QTemporaryDir m_dx;
    std::optional<Window> m_window;
};

void measureRdsdx(Table &table, Answering &answering, const char *name, const QByteArray &log, double bar)
{
    Imports imports(log);
    answering.yes = u"Import "_s;
    int before = 0;
    table.row(name,
        repeated(
            [&] {
                before = imports.fresh().form().log().count();
                imports.window().trigger(u"menuImportRDSDXLogCnv"_s);
            },
            [&] { imports.window().click(u"OKButton"_s); }),
        bar);
    if (imports.window().form().log().count() != before + rdsdxLineCount) {
        qFatal("not all receptions were imported");
    }
    answering.yes.clear();
}

void measureSpyFolder(Table &table, Answering &answering)
{
    Imports imports;
    imports.fresh();
    answering.text = u"12/06/2010"_s;
    table.row("a folder of 20,000 RDS Spy files lists one day",
        repeated([] {}, [&] { imports.window().trigger(u"menuImportRDSSpyLog"_s); }), 6);
    answering.text.clear();
    auto &dialog = imports.window().find<QWidget>(u"importRDSSpy"_s);
    if (dialog.findChild<ResultList *>(u"List1"_s)->count() != spyFilesOfADay) {
        qFatal("not all receptions of the day are listed");
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const Program program(argc, argv);
    Answering answering;
    const QTemporaryDir full;
    const QTemporaryDir room;
    const QTemporaryDir empty;
    {
        const QByteArray log = logbookBytes(bench::fullLog(), CodePage(1252));
        const QByteArray sites = transmitterBytes(bench::fullTransmitterList(), CodePage(1252));
        writeFile(full.filePath(u"RDSLog.log"_s), log);
        writeFile(room.filePath(u"RDSLog.log"_s), logWithRoom(log));
        for (const QTemporaryDir *directory : {&full, &room, &empty}) {
            writeConfiguration(directory->path());
            writeFile(directory->filePath(u"tx.lst"_s), sites);
        }
    }
    Table table;
    table.head();
    {
        Window window(room.path());
        Window::rest();
        table.memory("memory of the process after the start", memoryMb(), 95);
        measureEntries(table, window, room.path());
        measureSearches(table, window, answering);
        measureFilterAndMany(table, window);
        measureWholeLog(table, window, room.path());
        table.memory("memory of the process after all of this", memoryMb(), 120);
    }
    measureStart(table, full.path(), empty.path());
    measureRdsdx(table, answering, "RDSDX log of 10,000 lines into an empty log", {}, 5);
    // What is there already is looked for, and what is new.
    measureRdsdx(table, answering, "RDSDX log of 10,000 lines into one of 20,000",
        firstLines(logbookBytes(bench::fullLog(), CodePage(1252)), 20'000), 9);
    measureSpyFolder(table, answering);
    return table.missed() ? 1 : 0;
}
