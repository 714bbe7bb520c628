#include "growthrun.h"

#include "supporthome.h"

namespace quillon::bench {

namespace {

// As many receptions on an evening, so that there are openings; the twenty years stay.
constexpr qint32 ofAnEvening = 44;

// All of it sent but for the last two, which nobody has searched yet; the service knows one of them.
Logbook logOf(qint32 entries)
{
    const Logbook full = fullLog();
    Logbook log;
    for (qint32 number = 0; number < entries; ++number) {
        constexpr qint64 begin = 14 * 3600;
        constexpr qint64 apart = 5 * 60;
        const qint32 within = number % ofAnEvening;
        const qint64 day = full.entry(number - within).dateTime.seconds / secondsPerDay;
        LogEntry entry = full.entry(number);
        entry.dateTime = {day * secondsPerDay + begin + within * apart};
        log.AddEntry(entry);
    }
    markAllSent(log);
    makeEvening(log, entries - 2, 0, {dayMatches - 1, dayMatches});
    return log;
}

// Whoever presses a button has done something else before: nothing of the log is in a cache then. A short log
// that stays in one from one repetition to the next would make a long one seem to grow faster than it does.
void useTheCaches()
{
    constexpr std::size_t moreThanAnyCache = std::size_t {64} << 20U;
    constexpr std::size_t line = 64;
    static std::vector<unsigned char> other(moreThanAnyCache);
    for (std::size_t i = 0; i < other.size(); i += line) {
        ++other[i];
    }
}

} // namespace

GrowthRun::GrowthRun(GrowthTable &table, EveningAnswers &answers, Service &service, std::size_t size)
    : m_table(table)
    , m_answers(answers)
    , m_service(service)
    , m_size(size)
{
    writeHome(m_home.path(), logOf(entries()), service.url());
}

void GrowthRun::open(const QString &backupFolder)
{
    m_window.reset();
    m_window.emplace(m_home.path(), backupFolder);
    Window::rest();
    require(log().count() == entries(), "the log is loaded");
}

double GrowthRun::time(const Work &work)
{
    settle();
    useTheCaches();
    return ownTime(m_service, work);
}

void GrowthRun::measure(const QString &name, const Work &prepare, const Work &work, int repetitions)
{
    // What the command before has put off is not this one's.
    Window::rest();
    std::vector<double> times;
    for (int i = 0; i < repetitions; ++i) {
        prepare();
        times.push_back(time(work));
    }
    m_table.note(name, m_size, medianOf(times));
}

void GrowthRun::measure(const QString &name, const Work &work)
{
    measure(
        name, [] {}, work);
}

void GrowthRun::measureStep(const QString &name, const Work &prepare, const Work &work, int repetitions)
{
    Window::rest();
    const auto &undo = m_window->find<QAction>(u"menuEditUndo"_s);
    const auto &redo = m_window->find<QAction>(u"menuEditRedo"_s);
    std::vector<double> done;
    std::vector<double> undone;
    std::vector<double> redone;
    for (int i = 0; i < repetitions; ++i) {
        prepare();
        done.push_back(time(work));
        require(undo.isEnabled() && !redo.isEnabled(), qPrintable(name));
        undone.push_back(time([this] { m_window->trigger(u"menuEditUndo"_s); }));
        redone.push_back(time([this] { m_window->trigger(u"menuEditRedo"_s); }));
        m_window->trigger(u"menuEditUndo"_s);
    }
    m_table.note(name, m_size, medianOf(done));
    m_table.note(u"undo: "_s + name, m_size, medianOf(undone));
    m_table.note(u"redo: "_s + name, m_size, medianOf(redone));
}

void GrowthRun::changeOne()
{
    const LogEntry &entry = log().entry(0);
    LogChange change;
    change.setField(0, entry, LogField::Power, entry.power == "5555"_L1 ? u"5556"_s : u"5555"_s);
    m_window->form().document().commit({u"Update"_s, change, {}});
}

QDialog &GrowthRun::dialog(const QString &name)
{
    auto *window = m_window->form().findChild<QDialog *>(name);
    require(window && window->isVisible(), qPrintable(name));
    return *window;
}

void GrowthRun::closeDialogs()
{
    qDeleteAll(m_window->form().findChildren<QDialog *>(QString(), Qt::FindDirectChildrenOnly));
    settle();
}

void GrowthRun::openAnew(const QString &command)
{
    closeDialogs();
    m_window->trigger(command);
}

} // namespace quillon::bench
