#include "stats/collection.h"
#include "stats/collectionrules.h"
#include "txdb/derivedcells.h"

#include <algorithm>

namespace quillon {

namespace {

class Finding
{
public:
    Finding(const Logbook &log, bool inMiles, SiteLegs &legs, const Novelty &novelty)
        : m_log(log)
        , m_inMiles(inMiles)
        , m_legs(legs)
        , m_novelty(novelty)
    {
    }

    // Measures the run, unless it is too short to be one.
    void end(std::vector<qint32> run)
    {
        if (run.size() < leastOfOpening) {
            return;
        }
        Opening opening;
        for (const qint32 number : run) {
            measure(opening, number);
        }
        opening.countries.removeDuplicates();
        std::ranges::sort(opening.countries);
        opening.entries = std::move(run);
        m_found.push_back(std::move(opening));
    }

    [[nodiscard]] std::vector<Opening> take() { return std::move(m_found); }

private:
    void measure(Opening &opening, qint32 number)
    {
        const LogEntry &entry = m_log.entry(number);
        if (const auto leg = m_legs.of(entry)) {
            opening.muf = std::max(opening.muf, mufOf(entry, leg->kilometres).value_or(0));
        }
        const double kilometres = kilometresOf(entry, m_inMiles).value_or(0);
        if (kilometres > opening.kilometres) {
            opening.kilometres = kilometres;
            opening.farthest = number;
        }
        if (hasCountry(entry)) {
            opening.countries += entry.country;
        }
        const NoveltyMarks marks = m_novelty.marks(number);
        for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
            opening.news[mark] += marks.test(mark) ? 1 : 0;
        }
    }

    const Logbook &m_log;
    bool m_inMiles;
    SiteLegs &m_legs;
    const Novelty &m_novelty;
    std::vector<Opening> m_found;
};

} // namespace

std::vector<Opening> openings(
    const Logbook &log, std::span<const qint32> entries, bool inMiles, SiteLegs &legs, const Novelty &novelty)
{
    Finding finding(log, inMiles, legs, novelty);
    std::vector<qint32> run;
    for (const qint32 number : entries) {
        const LogEntry &entry = log.entry(number);
        if (mapModeOf(entry.prop) != esMode) {
            continue;
        }
        if (!run.empty() && entry.dateTime.seconds - log.entry(run.back()).dateTime.seconds >= openingGap) {
            finding.end(std::exchange(run, {}));
        }
        run.push_back(number);
    }
    finding.end(std::move(run));
    return finding.take();
}

} // namespace quillon
