#pragma once

#include "core/logbook.h"
#include "import/alreadythere.h"
#include "import/importfile.h"
#include "import/importplan.h"

#include <QByteArray>
#include <QString>

#include <span>
#include <vector>

namespace quillon {

/// An import on its way: the files, how each is read, what is in them, what is in the log already and what is
/// to be done with each row. It changes nothing itself.
class ImportSession
{
public:
    /// `log` has to outlive it.
    ImportSession(const Logbook &log, ImportSurroundings surroundings, KnownHeadings known, int minutes);

    /// Reads files.
    void setSources(std::vector<ImportSource> sources);
    [[nodiscard]] std::span<const ImportSource> sources() const { return m_sources; }
    [[nodiscard]] std::span<const ImportReading> readings() const { return m_readings; }
    /// "log.csv", "12 files".
    [[nodiscard]] QString name() const;

    /// How the listener has a file read; it is read again by read().
    [[nodiscard]] FormatChoice &choice(std::size_t source) { return m_choices[source]; }
    /// The zone of the local times of all files.
    void setZone(const QTimeZone &zone);
    [[nodiscard]] const QTimeZone &zone() const { return m_surroundings.zone; }
    /// Reads everything as it is chosen now. Every row is to be done with as at first.
    void read();
    /// Compares with the log within another time. Every row is to be done with as at first.
    void setMinutes(int minutes);
    [[nodiscard]] int minutes() const { return m_minutes; }
    /// The log has changed: compares anew. What was chosen for a row stays where the row is what it was.
    void logChanged();

    [[nodiscard]] std::span<const ImportRow *const> rows() const { return m_rows; }
    [[nodiscard]] const ImportMatch &match(std::size_t row) const { return m_matches[row]; }
    [[nodiscard]] ImportAction action(std::size_t row) const { return m_actions[row]; }
    /// True when that can be done with the row.
    [[nodiscard]] bool isPossible(std::size_t row, ImportAction action) const;
    /// Does nothing where it is not possible.
    void setAction(std::size_t row, ImportAction action);

    /// What the log becomes, and how many of what.
    [[nodiscard]] LogChange change(ImportTally &tally) const;
    /// Why nothing can be imported yet; empty when it can.
    [[nodiscard]] QString obstacle() const;
    /// True when there is something to save of what was refused.
    [[nodiscard]] bool hasRefused() const;
    [[nodiscard]] QByteArray refused() const;

private:
    void compare();

    const Logbook &m_log;
    ImportSurroundings m_surroundings;
    KnownHeadings m_known;
    int m_minutes;
    std::vector<ImportSource> m_sources;
    std::vector<FormatChoice> m_choices;
    std::vector<ImportReading> m_readings;
    std::vector<const ImportRow *> m_rows;
    std::vector<ImportMatch> m_matches;
    std::vector<ImportAction> m_actions;
};

} // namespace quillon
