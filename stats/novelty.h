#pragma once

#include "core/logbook.h"
#include "core/numbering.h"

#include <QString>
#include <QStringList>
#include <QVarLengthArray>

#include <array>
#include <bitset>
#include <span>
#include <utility>
#include <vector>

namespace quillon {

/// What can be new in a reception, by the rules of stats/collectionrules.h.
enum class NoveltyMark {
    Pi,
    Site,
    Country,
    CountryInMode,
    Farthest,
    StationInYear,
};
inline constexpr std::size_t noveltyMarkCount = 6;
using NoveltyMarks = std::bitset<noveltyMarkCount>;

/// The marks in short, in the order of NoveltyMark: "PI Site Year". Empty for none.
[[nodiscard]] QString shortText(NoveltyMarks marks);
/// What each of them says: "First of this PI code", "First of this station in 2025" ...
[[nodiscard]] QStringList wordsOf(NoveltyMarks marks, const LogEntry &entry);

/// The same in few words, what weighs most first, without what follows from it: "New: country, site".
[[nodiscard]] QString badgeText(NoveltyMarks marks, const LogEntry &entry);

/// How many there are more of than before.
struct NewThings
{
    int piCodes = 0;
    int sites = 0;
    int countries = 0;
    int countriesInMode = 0; ///< in a mode in which they are new, but were there in another

    bool operator==(const NewThings &) const = default;
};
/// "3 new sites, 1 new country"; empty where nothing is new.
[[nodiscard]] QString newThingsText(const NewThings &things);

/// What is new in each reception of a log. A change costs little more than the receptions it concerns.
class Novelty
{
public:
    /// Counts the whole log.
    void count(const Logbook &log);
    /// These entries were added, changed or taken away; their numbers may repeat.
    void update(const Logbook &log, std::span<const qint32> entries);

    /// What is new in the entry; nothing for a deleted one and for a number beyond the log.
    [[nodiscard]] NoveltyMarks marks(qint32 entry) const;

    /// Remembers which PI codes, sites, countries, and countries in a mode the log has.
    void remember() { m_remembered = known(); }
    /// What it has now and had not when that was remembered.
    [[nodiscard]] NewThings newSinceRemembered() const;

private:
    // A reception as it was counted.
    struct Counted
    {
        bool counts = false;
        DateTime moment;
        double distance = 0;
        std::array<int, noveltyMarkCount> groups {-1, -1, -1, -1, -1, -1}; ///< by NoveltyMark; -1 for none
    };
    // Those that compete for a mark, in the order of time; mostly one or two.
    using Group = QVarLengthArray<qint32, 2>;
    // Whether there are any, by mark and number.
    using Known = std::array<std::vector<bool>, 4>;
    using Pairs = Numbering<quint64>;

    [[nodiscard]] Known known() const;
    [[nodiscard]] Counted counted(const LogEntry &entry);
    [[nodiscard]] bool isBefore(qint32 left, qint32 right) const;
    [[nodiscard]] qsizetype placeIn(const Group &group, qint32 entry) const;
    [[nodiscard]] Group &groupOf(std::size_t mark, int number);
    [[nodiscard]] std::vector<double> &farthestOf(int number);
    void append(qint32 entry);
    void put(qint32 entry);
    void take(qint32 entry);
    void measureFrom(int number, qsizetype place, bool cameIn);

    std::vector<Counted> m_counted; ///< by entry
    std::array<std::vector<Group>, noveltyMarkCount> m_groups;
    std::vector<std::vector<double>> m_farthest; ///< up to each entry of the groups of NoveltyMark::Farthest
    Known m_remembered;
    // Numbers are never given back, so that what was known before can be compared with what is known now.
    TextNumbering m_piCodes;
    TextNumbering m_names; ///< of stations without a PI code
    TextNumbering m_siteNames;
    TextNumbering m_countries;
    TextNumbering m_modes;
    Pairs m_sites;
    Pairs m_countriesInMode;
    std::vector<int> m_countryOfPair; ///< by number of m_countriesInMode
    Numbering<std::pair<quint64, int>> m_stationsInYear; ///< by what it is called and its site, and the year
};

} // namespace quillon
