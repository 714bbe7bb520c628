// An evening at full size, 32,498 entries and 5,001 transmitters, in the real main window with a stand-in for
// the service: every command in processor time of the program alone, beside its bar. What waits for the
// network or for a second to pass takes no processor time by that.

#include "platform/files.h"
#include "support.h"
#include "support/opened.h"
#include "supportevening.h"
#include "supporthome.h"
#include "ui/resultlist.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QPushButton>
#include <QTemporaryDir>

using namespace quillon;
using namespace quillon::bench;
using namespace Qt::StringLiterals;

namespace {

// One evening after the other in one window.
class Evening
{
public:
    Evening(const QString &directory, Service &service)
        : m_directory(directory)
        , m_service(service)
        , m_window(directory)
    {
        m_answers.beStrict();
        require(m_window.form().log().count() == fullLogSize, "the log is full");
    }

    void searchAndUpload();
    void findAndSort();
    void exportFiles();
    void statistics();
    void windows();
    [[nodiscard]] bool missed() const { return m_table.missed(); }

private:
    using Work = std::function<void()>;

    [[nodiscard]] double time(const Work &work)
    {
        m_table.addReference();
        return ownTime(m_service, work);
    }
    [[nodiscard]] std::vector<double> repeated(
        const Work &work, const Work &prepare = [] {});
    void automaticSearch(int day, std::vector<double> &times);
    void searchByHand(int day, std::vector<double> &searches, std::vector<double> &updates);
    void upload(std::vector<double> &times);
    void exportKml(const char *name, const QString &action, const QString &file);
    void opening(const char *name, const Work &open, const QString &window, double bar = 0.5);
    [[nodiscard]] QDialog *child(const QString &name);
    void closeChild(const QString &name);

    QString m_directory;
    Service &m_service;
    EveningAnswers m_answers;
    Window m_window;
    EveningTable m_table;
};

std::vector<double> Evening::repeated(const Work &work, const Work &prepare)
{
    std::vector<double> times;
    for (int i = 0; i < evenings; ++i) {
        prepare();
        times.push_back(time(work));
    }
    return times;
}

void Evening::automaticSearch(int day, std::vector<double> &times)
{
    const Logbook &log = m_window.form().log();
    m_service.forget();
    m_answers.type({dateText(log.entry(entryOf(day, 0)).dateTime)});
    times.push_back(time([this] { m_window.trigger(u"menuFMListAutoSearch"_s); }) / dayEntries);
    require(m_service.requests() == dayEntries, "an automatic search asks for each entry of the day");
    for (int number = 0; number < dayMatches; ++number) {
        require(!log.entry(entryOf(day, number)).uid.isEmpty(), "an automatic search updates");
    }
}

// The entry that the automatic search did not find is another station after all.
void Evening::searchByHand(int day, std::vector<double> &searches, std::vector<double> &updates)
{
    const qint32 entry = entryOf(day, dayMatches);
    m_window.chooseRow(m_window.grid().rowOfEntry(entry));
    m_window.write(u"Text1"_s, piOf(day, dayEntries));
    searches.push_back(time([this] { m_window.click(u"Command11"_s); }));
    auto &results = m_window.find<ResultList>(u"List2"_s);
    require(results.count() == 1, "a search by hand finds the station");
    updates.push_back(time([&results] { Q_EMIT results.lineActivated(0); }));
    require(!m_window.form().log().entry(entry).uid.isEmpty(), "a double-click updates");
}

void Evening::upload(std::vector<double> &times)
{
    m_service.forget();
    times.push_back(time([this] { m_window.trigger(u"menuFMListUploadLogs"_s); }));
    require(m_service.requests() == dayEntries, "an upload sends what is new");
}

void Evening::searchAndUpload()
{
    std::vector<double> automatic;
    std::vector<double> searches;
    std::vector<double> updates;
    std::vector<double> uploads;
    for (int day = 0; day < evenings; ++day) {
        automaticSearch(day, automatic);
        searchByHand(day, searches, updates);
        upload(uploads);
    }
    m_table.row("automatic search, an entry of a day of 4", automatic, 4);
    m_table.row("Search FMList", searches, 0.5);
    m_table.row("double-click on a result, update included", updates, 2);
    m_table.row("upload of 4 entries", uploads, 5);
}

void Evening::findAndSort()
{
    const auto find = [this] { m_window.trigger(u"menuToolsFind"_s); };
    m_table.row("Find",
        repeated(find,
            [this] {
                m_window.chooseRow(1);
                m_answers.type({piOf(0, 0)});
            }),
        1.5);
    m_table.row("Find, of what is nowhere",
        repeated(find,
            [this] {
                m_window.chooseRow(1);
                m_answers.type({u"GHI"_s});
            }),
        1.5);
    for (int column = 0; column < gridColumnCount; ++column) {
        const QString name = u"sort by %1"_s.arg(m_window.grid().text(0, column));
        m_table.row(qPrintable(name),
            repeated([this, column] { Q_EMIT m_window.grid().headerClicked(column); },
                // From an order that is none of this column's.
                [this, column] { Q_EMIT m_window.grid().headerClicked(column == 1 ? 2 : 1); }),
            16);
    }
    Q_EMIT m_window.grid().headerClicked(0);
}

// Beside writing the same bytes, by the clock: both wait for the disk, and any other program's work on it
// makes either wait longer. The quickest quarter of both is without that.
void Evening::exportKml(const char *name, const QString &action, const QString &file)
{
    m_table.row(name, repeated([&] { m_window.trigger(action); }), 3);
    const QByteArray bytes = readFile(filePath(m_directory, file));
    require(bytes.count("<Placemark>") == fullListSize, name);
    std::vector<double> exports;
    std::vector<double> plain;
    constexpr int writings = 16;
    for (int i = 0; i < writings; ++i) {
        settle();
        exports.push_back(clockTime([&] { m_window.trigger(action); }));
        plain.push_back(clockTime([&] { writeFile(filePath(m_directory, u"same.kml"_s), bytes); }));
    }
    m_table.row("  by the clock, beside writing the same bytes", exports, plain, 5, quarter);
}

void Evening::exportFiles()
{
    exportKml("KML of the transmitters", u"menuExportGoogleTX"_s, u"tx.kml"_s);
    exportKml("KML of the log", u"menuExportGoogleLog"_s, u"quillon.kml"_s);
    const auto text = [this](const char *name, const QString &from) {
        m_table.row(name,
            repeated([this] { m_window.trigger(u"menuExportEmail"_s); },
                [&] {
                    m_answers.type({from, u"31/12/2099"_s});
                }),
            12);
    };
    text("text of the last month, distances included", u"01/12/2024"_s);
    text("text of the whole log, distances included", u"01/01/2000"_s);
}

void Evening::statistics()
{
    m_window.trigger(u"menuStats"_s);
    QDialog &stats = *child(u"logStats"_s);
    const auto press = [&stats](const QString &name) { stats.findChild<QPushButton *>(name)->click(); };
    const auto choose = [&stats](const QString &month, bool hours) {
        stats.findChild<QComboBox *>(u"Combo2"_s)->setCurrentText(month);
        stats.findChild<QCheckBox *>(u"Check1"_s)->setChecked(hours);
    };
    const auto measure = [&](const char *draw, const char *save, const QString &month, bool hours) {
        choose(month, hours);
        m_table.row(draw, repeated([&] { press(u"Command3"_s); }), 3);
        m_table.row(save, repeated([&] { press(u"Command2"_s); }), 4);
        require(QFileInfo::exists(filePath(m_directory, u"All-"_s + month + u"-All.bmp"_s)), save);
    };
    measure("statistics: draw the months", "statistics: save that picture", u"All"_s, false);
    measure("statistics: draw months and hours", "statistics: save that picture", u"All"_s, true);
    measure("statistics: draw the days of a month", "statistics: save that picture", u"June"_s, false);
    measure("statistics: draw days and hours", "statistics: save that picture", u"July"_s, true);
    closeChild(u"logStats"_s);
}

QDialog *Evening::child(const QString &name)
{
    auto *window = m_window.form().findChild<QDialog *>(name);
    require(window && window->isVisible(), qPrintable(name));
    return window;
}

void Evening::closeChild(const QString &name)
{
    child(name)->close();
    settle();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Evening::opening(const char *name, const Work &open, const QString &window, double bar)
{
    std::vector<double> times;
    for (int i = 0; i < evenings; ++i) {
        times.push_back(time(open));
        closeChild(window);
    }
    m_table.row(name, times, bar);
}

void Evening::windows()
{
    const auto command = [this](const QString &name) { return [this, name] { m_window.trigger(name); }; };
    const auto button = [this](const QString &name) { return [this, name] { m_window.click(name); }; };
    opening("open Quick Add", button(u"Command14"_s), u"Dialog1"_s);
    opening("open the scratch pad", button(u"Command12"_s), u"ScratchPad"_s);
    opening("open the converter", command(u"menuToolsConverter"_s), u"Dialog"_s);
    opening("open the statistics", command(u"menuStats"_s), u"logStats"_s);
    // It counts the log: 100 ms where the reference takes 12.
    opening("open the collection", command(u"menuStatsCollection"_s), u"collection"_s, 8);
    opening("open About", command(u"menuAbout"_s), u"frmSplash"_s);
    opening("open RDS Spy Logs", command(u"menuImportRDSSpyLog"_s), u"importRDSSpy"_s);
    opening("open RDSDX Log", command(u"menuImportRDSDXLogCnv"_s), u"rdsdxlist"_s);
    opening("open the setup", command(u"menuSetup"_s), u"Form2"_s);
    m_table.row("save the setup, the grid filled again",
        repeated([this] { child(u"Form2"_s)->findChild<QPushButton *>(u"Command1"_s)->click(); },
            [this] {
                QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                m_window.trigger(u"menuSetup"_s);
            }),
        3);
    require(m_window.grid().row() == fullLogSize, "the grid is filled again");
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("no_proxy", "*");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    // What is handed to the desktop is opened by nothing.
    const test::Opened opened;
    Service service(eveningStations());
    EveningTable::head("processor time of the program");
    const QTemporaryDir home;
    writeHome(home.path(), eveningLog(), service.url());
    Evening evening(home.path(), service);
    for (const auto part : {&Evening::searchAndUpload, &Evening::findAndSort, &Evening::exportFiles,
             &Evening::statistics, &Evening::windows}) {
        (evening.*part)();
    }
    return evening.missed() ? 1 : 0;
}
