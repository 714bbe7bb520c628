#pragma once

#include "core/logbook.h"
#include "stats/numbering.h"

#include <QString>
#include <QStringList>

#include <array>
#include <bitset>
#include <span>
#include <utility>
#include <vector>

namespace quillon {

/// What can be new in a reception, by the rules of stats/collectionrules.h.
enum class NewMark {
    Pi,
    Site,
    Country,
    CountryInMode,
    Farthest,
    StationInYear,
};
inline constexpr std::size_t newMarkCount = 6;
using NewMarks = std::bitset<newMarkCount>;

/// The marks in short, in the order of NewMark: "PI Site Year". Empty for none.
[[nodiscard]] QString shortText(NewMarks marks);
/// What each of them says: "First of this PI code", "First of this station in 2025" ...
[[nodiscard]] QStringList wordsOf(NewMarks marks, const LogEntry &entry);

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
    [[nodiscard]] NewMarks marks(qint32 entry) const;

    /// The PI codes, sites, countries, and countries in a mode that the log has.
    using Known = std::array<std::vector<bool>, 4>;
    [[nodiscard]] Known known() const;
    [[nodiscard]] NewThings newSince(const Known &before) const;

private:
    // A reception as it was counted.
    struct Counted
    {
        bool counts = false;
        DateTime moment;
        double distance = 0;
        std::array<int, newMarkCount> groups {-1, -1, -1, -1, -1, -1}; ///< by NewMark; -1 for none
    };
    // Those that compete for a mark, in the order of time.
    struct Group
    {
        std::vector<qint32> entries;
        std::vector<double> farthest; ///< up to each of them; for NewMark::Farthest alone
    };
    using Pairs = Numbering<std::pair<int, int>>;

    [[nodiscard]] Counted counted(const LogEntry &entry);
    [[nodiscard]] bool isBefore(qint32 left, qint32 right) const;
    [[nodiscard]] std::size_t placeIn(const Group &group, qint32 entry) const;
    [[nodiscard]] Group &groupOf(std::size_t mark, int number);
    void put(qint32 entry);
    void take(qint32 entry);
    void measureFrom(Group &group, std::size_t place, bool cameIn) const;

    std::vector<Counted> m_counted; ///< by entry
    std::array<std::vector<Group>, newMarkCount> m_groups;
    // Numbers are never given back, so that what was known before can be compared with what is known now.
    Numbering<QString> m_texts;
    Pairs m_sites;
    Pairs m_countriesInMode;
    std::vector<int> m_countryOfPair; ///< by number of m_countriesInMode
    Pairs m_stations;
    Pairs m_stationsInYear;
};

} // namespace quillon
