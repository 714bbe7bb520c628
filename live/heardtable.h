#pragma once

#include "core/logbook.h"
#include "live/station.h"

#include <QHash>

#include <cstddef>
#include <vector>

namespace quillon {

/// A row of the table of what was heard.
struct HeardRow
{
    Station station; ///< first and last of all its tunings, best signal and groups of all of them
    bool logged = false;
    qint64 tuning = 0; ///< first of the latest tuning
    qint64 groupsBefore = 0; ///< of the earlier tunings
    quint64 revision = 0; ///< grows over all rows: the larger, the later this one changed
};

/// Everything that was heard since the start, one row for a frequency and a PI code, in the order in which
/// they were first heard. What comes back after more than an hour begins a new row. Of rows in doubt only
/// those with two groups or askings stand here.
class HeardTable
{
public:
    /// The oldest quarter goes when there are more.
    static constexpr std::size_t mostRows = 2'000;
    /// So long a row goes on: an hour in milliseconds.
    static constexpr qint64 goesOnFor = 3'600'000;

    /// Notes what is heard now. Cheap when nothing has changed.
    void note(const Station &station);
    /// The station's frequency, which was not known before, is: its row has it from now on.
    void nameFrequency(const Station &station);
    /// Marks the row of the station as logged.
    void setLogged(const Station &station);
    /// Marks those rows as logged of which the log has an entry: of the same frequency (to 10 kHz) and PI
    /// code, between first and last. True when a mark has changed.
    bool findLogged(const Logbook &log);
    void clear();

    [[nodiscard]] const std::vector<HeardRow> &rows() const { return m_rows; }
    /// Grows whenever rows have gone, so that numbers of rows are no longer the same.
    [[nodiscard]] quint64 generation() const { return m_generation; }
    /// That of the row that changed last.
    [[nodiscard]] quint64 revision() const { return m_revision; }

private:
    [[nodiscard]] static quint64 key(qint64 hertz, quint16 pi);
    [[nodiscard]] static quint64 key(const Station &station);
    void makeRoom();
    void erase(std::size_t first, std::size_t count);

    std::vector<HeardRow> m_rows;
    QHash<quint64, std::size_t> m_places;
    quint64 m_generation = 0;
    quint64 m_revision = 0;
};

} // namespace quillon
