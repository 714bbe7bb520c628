// How the commands of the main window grow with the log: each is measured in processor time at four sizes,
// and the exponent of its growth told: 1 is in proportion to the log, 2 would be four times as long for a log
// of twice the size.

#include "export/shownfile.h"
#include "import/importsession.h"
#include "support.h"
#include "support/opened.h"
#include "supporthome.h"
#include "supportimport.h"
#include "supportreference.h"
#include "supportwindow.h"
#include "ui/looks.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QTemporaryDir>

#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <map>
#include <vector>

using namespace quillon;
using namespace quillon::bench;
using namespace Qt::StringLiterals;

namespace {

constexpr std::array sizes {1'000, 4'000, 16'000, fullLogSize - 20};
constexpr int repetitions = 7;
constexpr double highest = 1.1;

// The slope of the line through the logarithms of sizes and times. What takes less than the clock can tell is
// taken for that.
double exponentOf(const std::array<double, sizes.size()> &times)
{
    constexpr double shortest = 0.02;
    double x = 0;
    double y = 0;
    double xx = 0;
    double xy = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const double size = std::log(sizes[i]);
        const double time = std::log(std::max(times[i], shortest));
        x += size;
        y += time;
        xx += size * size;
        xy += size * time;
    }
    constexpr auto count = static_cast<double>(sizes.size());
    return (count * xy - x * y) / (count * xx - x * x);
}

// The times of each command at each size, in the order in which the commands were first measured.
class Growth
{
public:
    void note(const QString &command, std::size_t size, double milliseconds)
    {
        if (!m_times.contains(command)) {
            m_order += command;
        }
        m_times[command][size] = milliseconds;
    }
    /// Prints them; true when one grows faster than it may.
    [[nodiscard]] bool tell() const
    {
        std::printf("%-40s", "processor time in ms, entries");
        for (const int size : sizes) {
            std::printf(" %9d", size);
        }
        std::printf(" %9s\n", "exponent");
        bool missed = false;
        for (const QString &command : m_order) {
            const auto &times = m_times.at(command);
            std::printf("%-40s", qPrintable(command));
            for (const double time : times) {
                std::printf(" %9.2f", time);
            }
            const double exponent = exponentOf(times);
            std::printf(" %9.2f%s\n", exponent, exponent > highest ? "  MISSED" : "");
            missed = missed || exponent > highest;
        }
        return missed;
    }

private:
    QStringList m_order;
    std::map<QString, std::array<double, sizes.size()>> m_times;
};

// All commands, on a log of one size.
class Commands
{
public:
    Commands(Growth &growth, Answering &answering, std::size_t size)
        : m_growth(growth)
        , m_answering(answering)
        , m_size(size)
    {
        Logbook log = fullLog();
        LogChange cut;
        cut.removed.resize(static_cast<std::size_t>(log.count() - sizes[size]));
        log.apply(cut);
        writeHome(m_home.path(), log, {});
    }

    void measure()
    {
        run(
            u"start"_s, [] {}, [this] { const Window window(m_home.path()); });
        Window window(m_home.path());
        entries(window);
        searches(window);
        wholeLog(window);
        files(window.form().log());
    }

private:
    void run(const QString &name, const std::function<void()> &prepare, const std::function<void()> &work)
    {
        std::vector<double> times;
        for (int i = 0; i < repetitions; ++i) {
            prepare();
            times.push_back(measured(work).all);
        }
        m_growth.note(name, m_size, medianOf(times));
    }

    // A command, its undo and its redo, in turn.
    void change(const QString &name, const std::function<void()> &prepare, const std::function<void()> &work,
        Window &window)
    {
        std::array<std::vector<double>, 3> times;
        for (int i = 0; i < repetitions; ++i) {
            prepare();
            times[0].push_back(measured(work).all);
            times[1].push_back(measured([&window] { window.trigger(u"menuEditUndo"_s); }).all);
            times[2].push_back(measured([&window] { window.trigger(u"menuEditRedo"_s); }).all);
        }
        m_growth.note(name, m_size, medianOf(times[0]));
        m_growth.note(u"undo: "_s + name, m_size, medianOf(times[1]));
        m_growth.note(u"redo: "_s + name, m_size, medianOf(times[2]));
    }

    void entries(Window &window)
    {
        change(
            u"add"_s,
            [&window] {
                window.click(u"Command2"_s);
                window.write(u"Text9"_s, u"99.9"_s);
                window.write(u"Text1"_s, u"ABCD"_s);
                window.find<QComboBox>(u"Combo3"_s).setEditText(u"Germany"_s);
            },
            [&window] { window.click(u"Command1"_s); }, window);
        const int apart = sizes[m_size] / (3 * repetitions + 3);
        int row = 1;
        change(
            u"update"_s,
            [&] {
                window.chooseRow(row += apart);
                window.write(u"Text6"_s, u"5555"_s);
            },
            [&window] { window.click(u"Command3"_s); }, window);
        change(
            u"delete"_s, [&] { window.chooseRow(row += apart); }, [&window] { window.click(u"Command15"_s); },
            window);
        run(
            u"a row is chosen"_s, [] {}, [&] { window.chooseRow(row += apart); });
    }

    void searches(Window &window)
    {
        const std::array<std::array<QString, 3>, 4> fields {
            {{u"PI code"_s, u"Text1"_s, u"Command4"_s}, {u"name"_s, u"Text8"_s, u"Command6"_s},
                {u"frequency"_s, u"Text9"_s, u"Command7"_s}, {u"transmitter"_s, u"Text5"_s, u"Command8"_s}}};
        for (const auto &[name, field, button] : fields) {
            run(
                u"search by %1, empty"_s.arg(name), [&] { window.write(field, {}); },
                [&] { window.click(button); });
        }
        m_answering.text = u"GHI"_s;
        run(
            u"Find, of what is nowhere"_s, [] {}, [&window] { window.trigger(u"menuToolsFind"_s); });
        m_answering.text.clear();
        auto &box = window.find<QLineEdit>(u"filterText"_s);
        run(
            u"a filter"_s, [&box] { box.clear(); }, [&box] { box.setText(u"freq>88 -gone a"_s); });
        box.clear();
    }

    void wholeLog(Window &window)
    {
        for (const auto column : {GridColumn::DateTime, GridColumn::Freq, GridColumn::Transmitter}) {
            run(
                u"sort by "_s + logColumn(column).caption, [] {},
                [&] { Q_EMIT window.grid().headerClicked(static_cast<int>(column)); });
        }
        run(
            u"all chosen and Edit"_s,
            [&window] {
                delete window.form().findChild<QDialog *>(u"editMany"_s);
                window.grid().clearSelection();
            },
            [&window] {
                window.grid().selectAll();
                window.trigger(u"menuEditMany"_s);
            });
        delete window.form().findChild<QDialog *>(u"editMany"_s);
        run(
            u"re-calculate distances"_s, [] {}, [&window] { window.click(u"Command10"_s); });
        run(
            u"KML of the log"_s, [] {}, [&window] { window.trigger(u"menuExportGoogleLog"_s); });
        run(
            u"text of the log"_s, [] {}, [&window] { window.trigger(u"menuExportEmail"_s); });
        run(
            u"web pages"_s, [] {}, [&window] { window.trigger(u"menuExportWebPage"_s); });
        for (const QString &name : {u"menuStats"_s, u"menuStatsCollection"_s}) {
            run(
                name == u"menuStats" ? u"the statistics"_s : u"the collection"_s,
                [&window] {
                    qDeleteAll(window.form().findChildren<QDialog *>(QString(), Qt::FindDirectChildrenOnly));
                },
                [&] { window.trigger(name); });
        }
    }

    // What is shown as files, and a file of as many receptions as the log has.
    void files(const Logbook &log)
    {
        LogRows rows(log, MonthNames::of(QLocale::c()));
        rows.refill();
        const TransmitterList sites = fullTransmitterList();
        ShownLog shown {rows, sites, GeoPosition {51.5, -0.1}, u"BENCH"_s, UtcNow(),
            withoutDeleted(log, rows.shown()), {}};
        for (int column = 0; column < gridColumnCount; ++column) {
            shown.columns.push_back(static_cast<GridColumn>(column));
        }
        for (const ShownFormat &format : shownFormats) {
            run(
                u"shown as "_s + format.suffix, [] {}, [&] { (void)shownBytes(shown, format.kind); });
        }
        const QByteArray whole = webServerFile();
        const auto lines = std::min<qsizetype>(sizes[m_size], webServerLines);
        qsizetype end = 0;
        for (qsizetype line = 0; line < lines; ++line) {
            end = whole.indexOf('\n', end) + 1;
        }
        const QByteArray file = whole.first(end);
        const ImportSurroundings surroundings {{CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())},
            QTimeZone("Europe/Berlin"), false};
        run(
            u"a file of as many is brought in"_s, [] {},
            [&] {
                Logbook empty;
                ImportSession session(empty, surroundings, {}, usualImportMinutes);
                session.setSources(sourcesOf(u"log.csv"_s, file));
                ImportTally tally;
                empty.apply(session.change(tally));
            });
    }

    Growth &m_growth;
    Answering &m_answering;
    std::size_t m_size;
    QTemporaryDir m_home;
};

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    installLooks();
    Answering answering;
    // What is handed to the desktop is opened by nothing.
    const test::Opened opened;
    Growth growth;
    for (std::size_t size = 0; size < sizes.size(); ++size) {
        Commands(growth, answering, size).measure();
    }
    return growth.tell() ? 1 : 0;
}
