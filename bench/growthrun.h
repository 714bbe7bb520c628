#pragma once

#include "growthtable.h"
#include "supportevening.h"
#include "supportservice.h"
#include "supportwindow.h"

#include <QDialog>
#include <QTemporaryDir>

#include <functional>
#include <optional>

namespace quillon::bench {

/// How many receptions are brought in, searched, sent: the same whatever the log has, so that what is
/// measured is how the log's size matters.
inline constexpr int growthReceptions = 10;

/// The commands on a log of one size: a home on the disk with the main window on it, and what measures one.
class GrowthRun
{
public:
    using Work = std::function<void()>;

    GrowthRun(GrowthTable &table, EveningAnswers &answers, Service &service, std::size_t size);

    /// Opens the main window on the home as it is now, the one before is closed; daily backups are made when
    /// there is a folder for them.
    void open(const QString &backupFolder = {});
    void close() { m_window.reset(); }
    [[nodiscard]] Window &window() { return *m_window; }
    [[nodiscard]] const Logbook &log() { return m_window->form().log(); }

    [[nodiscard]] QString home() const { return m_home.path(); }
    [[nodiscard]] int entries() const { return growthSizes.at(m_size); }
    [[nodiscard]] EveningAnswers &answers() { return m_answers; }

    /// Measures a command: the median of some repetitions, each after `prepare`.
    void measure(const QString &name, const Work &prepare, const Work &work, int repetitions = 7);
    void measure(const QString &name, const Work &work);
    /// A command that is a step, its undo and its redo, in turn; it is undone in the end.
    void measureStep(const QString &name, const Work &prepare, const Work &work, int repetitions = 7);

    /// Changes one reception, as if it were typed.
    void changeOne();
    /// A window that is open.
    [[nodiscard]] QDialog &dialog(const QString &name);
    void closeDialogs();
    /// Closes the windows that are open and opens that of a command.
    void openAnew(const QString &command);

private:
    [[nodiscard]] double time(const Work &work);

    GrowthTable &m_table;
    EveningAnswers &m_answers;
    Service &m_service;
    std::size_t m_size;
    QTemporaryDir m_home;
    std::optional<Window> m_window;
};

/// A control of a window by its name.
template<typename Control>
[[nodiscard]] Control &controlOf(const QWidget &window, const QString &name)
{
    auto *control = window.findChild<Control *>(name);
    require(control, qPrintable(name));
    return *control;
}

/// Presses a button of a window.
inline void press(const QWidget &window, const QString &button)
{
    controlOf<QAbstractButton>(window, button).click();
}

// All commands, by what they are about.

void measureEntries(GrowthRun &run);
void measureMany(GrowthRun &run);
void measureReceiver(GrowthRun &run);
void measureSearches(GrowthRun &run);
void measureGrid(GrowthRun &run);
void measureExports(GrowthRun &run);
void measureBackups(GrowthRun &run);
void measureImports(GrowthRun &run);
void measureFmlist(GrowthRun &run);
void measureStatistics(GrowthRun &run);
void measureMap(GrowthRun &run);
void measureWindows(GrowthRun &run);

} // namespace quillon::bench
