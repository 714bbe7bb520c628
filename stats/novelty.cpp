#include "stats/novelty.h"

#include "core/fetchahead.h"
#include "stats/collectionrules.h"

#include <algorithm>
#include <numeric>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int none = -1;

// Up to so many entries are moved one by one; more, and all are counted again.
constexpr std::size_t fewEntries = 64;

constexpr std::array<QStringView, noveltyMarkCount> shortMarks {
    u"PI", u"Site", u"ITU", u"Mode", u"Far", u"Year"};
constexpr std::array knownMarks {
    NoveltyMark::Pi, NoveltyMark::Site, NoveltyMark::Country, NoveltyMark::CountryInMode};

constexpr std::size_t at(NoveltyMark mark)
{
    return static_cast<std::size_t>(mark);
}

// What has that number; made where there is none.
template<typename Thing>
Thing &atNumber(std::vector<Thing> &things, int number)
{
    const auto place = static_cast<std::size_t>(number);
    if (place >= things.size()) {
        things.resize(place + 1);
    }
    return things[place];
}

quint64 pairOf(int first, int second)
{
    return quint64(static_cast<quint32>(first)) << 32 | static_cast<quint32>(second);
}

QString wordsOf(NoveltyMark mark, const LogEntry &entry)
{
    switch (mark) {
    case NoveltyMark::Pi:
        return u"First of this PI code"_s;
    case NoveltyMark::Site:
        return u"First of this site"_s;
    case NoveltyMark::Country:
        return u"First of this country"_s;
    case NoveltyMark::CountryInMode:
        return u"First of this country by "_s + entry.prop;
    case NoveltyMark::Farthest:
        return u"Farthest so far by "_s + entry.prop;
    case NoveltyMark::StationInYear:
        break;
    }
    return u"First of this station in %1"_s.arg(civil(entry.dateTime).year);
}

} // namespace

QString shortText(NoveltyMarks marks)
{
    QString text;
    for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
        if (marks.test(mark)) {
            text += text.isEmpty() ? shortMarks[mark].toString() : u' ' + shortMarks[mark];
        }
    }
    return text;
}

QStringList wordsOf(NoveltyMarks marks, const LogEntry &entry)
{
    QStringList words;
    for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
        if (marks.test(mark)) {
            words += wordsOf(static_cast<NoveltyMark>(mark), entry);
        }
    }
    return words;
}

QString badgeText(NoveltyMarks marks, const LogEntry &entry)
{
    const auto has = [marks](NoveltyMark mark) { return marks.test(at(mark)); };
    QStringList parts;
    const auto tell = [&parts](bool holds, const QString &text) {
        if (holds) {
            parts += text;
        }
    };
    const bool isNewStation = has(NoveltyMark::Site) || has(NoveltyMark::Pi);
    tell(has(NoveltyMark::Country), u"country"_s);
    tell(has(NoveltyMark::CountryInMode) && !has(NoveltyMark::Country), u"country by "_s + entry.prop);
    tell(has(NoveltyMark::Farthest), u"farthest by "_s + entry.prop);
    tell(has(NoveltyMark::Site), u"site"_s);
    tell(has(NoveltyMark::Pi), u"PI code"_s);
    tell(
        has(NoveltyMark::StationInYear) && !isNewStation, u"station in %1"_s.arg(civil(entry.dateTime).year));
    return parts.isEmpty() ? QString() : u"New: "_s + parts.join(", "_L1);
}

QString newThingsText(const NewThings &things)
{
    QStringList parts;
    const auto tell = [&](int count, const QString &one, const QString &many) {
        if (count > 0) {
            parts += QString::number(count) + (count == 1 ? one : many);
        }
    };
    tell(things.piCodes, u" new PI code"_s, u" new PI codes"_s);
    tell(things.sites, u" new site"_s, u" new sites"_s);
    tell(things.countries, u" new country"_s, u" new countries"_s);
    tell(things.countriesInMode, u" country new in its mode"_s, u" countries new in their mode"_s);
    return parts.join(", "_L1);
}

Novelty::Counted Novelty::counted(const LogEntry &entry)
{
    Counted result;
    result.moment = entry.dateTime;
    result.counts = isCounted(entry);
    if (!result.counts) {
        return result;
    }
    const bool byPi = !entry.piCode.isEmpty();
    const int label = byPi ? m_piCodes.of(entry.piCode) : m_names.of(entry.rdsName);
    const int country = m_countries.of(entry.country);
    const int site = m_sites.of(pairOf(m_siteNames.of(entry.transmitter), country));
    const auto set = [&](NoveltyMark mark, bool there, auto number) {
        if (there) {
            result.groups[at(mark)] = number();
        }
    };
    set(NoveltyMark::Pi, byPi, [&] { return label; });
    set(NoveltyMark::Site, !entry.transmitter.isEmpty(), [&] { return site; });
    set(NoveltyMark::Country, hasCountry(entry), [&] { return country; });
    const bool hasMode = !entry.prop.isEmpty();
    const int mode = m_modes.of(entry.prop);
    set(NoveltyMark::CountryInMode, hasMode && hasCountry(entry), [&] {
        const int pair = m_countriesInMode.of(pairOf(country, mode));
        m_countryOfPair.resize(static_cast<std::size_t>(m_countriesInMode.count()), country);
        return pair;
    });
    result.distance = positiveNumber(entry.dist).value_or(0);
    set(NoveltyMark::Farthest, hasMode && result.distance > 0, [&] { return mode; });
    set(NoveltyMark::StationInYear, hasStation(entry), [&] {
        const quint64 station = pairOf(label * 2 + (byPi ? 1 : 0), site);
        return m_stationsInYear.of({station, civil(entry.dateTime).year});
    });
    return result;
}

bool Novelty::isBefore(qint32 left, qint32 right) const
{
    const DateTime first = m_counted[static_cast<std::size_t>(left)].moment;
    const DateTime second = m_counted[static_cast<std::size_t>(right)].moment;
    return first != second ? first < second : left < right;
}

// Where the entry stands, or would stand.
qsizetype Novelty::placeIn(const Group &group, qint32 entry) const
{
    const auto before = [this](qint32 left, qint32 right) { return isBefore(left, right); };
    // Most receptions are the latest.
    if (!group.isEmpty() && isBefore(group.back(), entry)) {
        return group.size();
    }
    return std::ranges::lower_bound(group, entry, before) - group.begin();
}

Novelty::Group &Novelty::groupOf(std::size_t mark, int number)
{
    return atNumber(m_groups[mark], number);
}

std::vector<double> &Novelty::farthestOf(int number)
{
    return atNumber(m_farthest, number);
}

// The farthest up to each entry of the group, after something came in at `place` or went from there: as soon
// as it is what it was, so is all behind it.
void Novelty::measureFrom(int number, qsizetype place, bool cameIn)
{
    const Group &group = groupOf(at(NoveltyMark::Farthest), number);
    std::vector<double> &farthest = farthestOf(number);
    const auto first = static_cast<std::size_t>(place);
    double best = first > 0 ? farthest[first - 1] : 0;
    for (std::size_t i = first; i < farthest.size(); ++i) {
        const qint32 entry = group[static_cast<qsizetype>(i)];
        best = std::max(best, m_counted[static_cast<std::size_t>(entry)].distance);
        if (farthest[i] == best && !(cameIn && i == first)) {
            break;
        }
        farthest[i] = best;
    }
}

// Puts in an entry that is the latest of all so far.
void Novelty::append(qint32 entry)
{
    const Counted &one = m_counted[static_cast<std::size_t>(entry)];
    for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
        if (one.groups[mark] != none) {
            groupOf(mark, one.groups[mark]).append(entry);
        }
    }
    if (const int number = one.groups[at(NoveltyMark::Farthest)]; number != none) {
        std::vector<double> &farthest = farthestOf(number);
        farthest.push_back(farthest.empty() ? one.distance : std::max(farthest.back(), one.distance));
    }
}

void Novelty::put(qint32 entry)
{
    const Counted &one = m_counted[static_cast<std::size_t>(entry)];
    for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
        const int number = one.groups[mark];
        if (number == none) {
            continue;
        }
        Group &group = groupOf(mark, number);
        const qsizetype place = placeIn(group, entry);
        group.insert(group.begin() + place, entry);
        if (mark == at(NoveltyMark::Farthest)) {
            std::vector<double> &farthest = farthestOf(number);
            farthest.insert(farthest.begin() + place, 0);
            measureFrom(number, place, true);
        }
    }
}

void Novelty::take(qint32 entry)
{
    Counted &one = m_counted[static_cast<std::size_t>(entry)];
    for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
        const int number = one.groups[mark];
        if (number == none) {
            continue;
        }
        Group &group = groupOf(mark, number);
        const qsizetype place = placeIn(group, entry);
        group.erase(group.begin() + place);
        if (mark == at(NoveltyMark::Farthest)) {
            std::vector<double> &farthest = farthestOf(number);
            farthest.erase(farthest.begin() + place);
            measureFrom(number, place, false);
        }
    }
    one.groups.fill(none);
    one.counts = false;
}

void Novelty::count(const Logbook &log)
{
    for (std::vector<Group> &groups : m_groups) {
        groups.clear();
    }
    m_farthest.clear();
    m_counted.clear();
    m_counted.reserve(static_cast<std::size_t>(log.count()));
    qint32 number = 0;
    for (const LogEntry &entry : log) {
        fetchAhead(log, number++, &LogEntry::piCode, &LogEntry::prop, &LogEntry::transmitter,
            &LogEntry::country, &LogEntry::dist);
        m_counted.push_back(counted(entry));
    }
    std::vector<qint32> order(m_counted.size());
    std::iota(order.begin(), order.end(), 0);
    const auto before = [this](qint32 left, qint32 right) { return isBefore(left, right); };
    // Most logs are in the order of time already.
    if (!std::ranges::is_sorted(order, before)) {
        std::ranges::sort(order, before);
    }
    for (const qint32 entry : order) {
        append(entry);
    }
}

void Novelty::update(const Logbook &log, std::span<const qint32> entries)
{
    const auto size = static_cast<std::size_t>(log.count());
    if (entries.size() > fewEntries) {
        count(log);
        return;
    }
    for (const qint32 entry : entries) {
        if (static_cast<std::size_t>(entry) < m_counted.size()) {
            take(entry);
        }
    }
    m_counted.resize(size);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto place = static_cast<std::size_t>(entries[i]);
        const auto before = entries.first(i);
        if (place < size && std::ranges::find(before, entries[i]) == before.end()) {
            m_counted[place] = counted(log.entry(entries[i]));
            put(entries[i]);
        }
    }
}

NoveltyMarks Novelty::marks(qint32 entry) const
{
    NoveltyMarks marks;
    const auto place = static_cast<std::size_t>(entry);
    if (entry < 0 || place >= m_counted.size() || !m_counted[place].counts) {
        return marks;
    }
    const Counted &one = m_counted[place];
    for (std::size_t mark = 0; mark < noveltyMarkCount; ++mark) {
        if (one.groups[mark] == none) {
            continue;
        }
        const Group &group = m_groups[mark][static_cast<std::size_t>(one.groups[mark])];
        if (mark == at(NoveltyMark::Farthest)) {
            const auto standing = static_cast<std::size_t>(placeIn(group, entry));
            const std::vector<double> &farthest = m_farthest[static_cast<std::size_t>(one.groups[mark])];
            marks.set(mark, standing == 0 || one.distance > farthest[standing - 1]);
        } else {
            marks.set(mark, group.front() == entry);
        }
    }
    return marks;
}

Novelty::Known Novelty::known() const
{
    Known known;
    for (const NoveltyMark mark : knownMarks) {
        std::vector<bool> &there = known[at(mark)];
        there.reserve(m_groups[at(mark)].size());
        for (const Group &group : m_groups[at(mark)]) {
            there.push_back(!group.isEmpty());
        }
    }
    return known;
}

NewThings Novelty::newSinceRemembered() const
{
    const Known now = known();
    const auto isNew = [&](NoveltyMark mark, std::size_t number) {
        const std::vector<bool> &there = m_remembered[at(mark)];
        return now[at(mark)][number] && (number >= there.size() || !there[number]);
    };
    std::array<int, std::tuple_size_v<Known>> counts {};
    for (const NoveltyMark mark : knownMarks) {
        for (std::size_t number = 0; number < now[at(mark)].size(); ++number) {
            const bool inMode = mark == NoveltyMark::CountryInMode;
            const bool asCountry = inMode && isNew(mark, number)
                && isNew(NoveltyMark::Country, static_cast<std::size_t>(m_countryOfPair[number]));
            counts[at(mark)] += isNew(mark, number) && !asCountry ? 1 : 0;
        }
    }
    return {counts[0], counts[1], counts[2], counts[3]};
}

} // namespace quillon
