#pragma once

#include "core/logbook.h"
#include "import/importrow.h"

#include <QString>

#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace quillon {

/// Within so many minutes the same station is taken for the same reception, unless the listener sets another
/// number.
inline constexpr int usualImportMinutes = 10;
inline constexpr int mostImportMinutes = 24 * 60;

/// Receptions that are known, found by frequency (to 10 kHz), and PI code or name, near a moment.
class KnownReceptions
{
public:
    explicit KnownReceptions(int minutes);

    /// The entries of a log that are not deleted.
    void add(const Logbook &log);
    /// A reception with a number of the caller's.
    void add(const LogEntry &entry, qint64 number);
    /// The number of one that is the same: same frequency, and same PI code or same name, at most so many
    /// minutes before or after. Case and the kind of blanks of a name do not count.
    [[nodiscard]] std::optional<qint64> find(const LogEntry &entry) const;

private:
    struct Place
    {
        qint64 freq = 0;
        QString text;
        qint64 slice = 0; ///< of time, as long as receptions may be apart

        bool operator==(const Place &) const = default;
    };
    struct Hash
    {
        std::size_t operator()(const Place &place) const;
    };
    struct At
    {
        qint64 seconds = 0;
        qint64 number = 0;
    };
    struct Slice
    {
        At first;
        At last;
    };

    [[nodiscard]] qint64 sliceOf(qint64 seconds) const;
    [[nodiscard]] std::optional<qint64> findText(qint64 freq, const QString &text, qint64 seconds) const;
    void addText(qint64 freq, const QString &text, const At &at);

    qint64 m_seconds;
    std::unordered_map<Place, Slice, Hash> m_slices;
};

/// What a row of an import is beside the log.
struct ImportMatch
{
    qint32 entry = -1; ///< the entry that is the same reception, -1 for none
    qsizetype above = -1; ///< the row above that is the same reception, -1 for none
    std::vector<LogField> completes; ///< the fields of that entry which are empty and are not in the row

    [[nodiscard]] bool isThere() const { return entry >= 0 || above >= 0; }
};

/// What each row is; refused ones are nothing.
[[nodiscard]] std::vector<ImportMatch> matchedRows(
    const Logbook &log, std::span<const ImportRow *const> rows, int minutes);

/// The fields of an entry which are empty and which a reception has.
[[nodiscard]] std::vector<LogField> completedFields(const LogEntry &entry, const LogEntry &reception);

/// How many receptions that are not in the log before them were there already, in the log or among them.
[[nodiscard]] qsizetype countAlreadyThere(
    const Logbook &log, std::span<const LogEntry> receptions, int minutes = usualImportMinutes);

} // namespace quillon
