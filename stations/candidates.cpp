#include "stations/candidates.h"

#include "core/picode.h"
#include "platform/numbers.h"
#include "stations/nameagreement.h"

#include <algorithm>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct Weighed
{
    Candidate candidate;
    NameAgreement name;
    double weight = 0;
};

enum class Fit { None, Exact, Regional };

Fit fitOf(const HeardSignal &signal, std::optional<quint16> pi, std::optional<quint16> regionalPi)
{
    if (!signal.pi) {
        return Fit::Exact;
    }
    if (pi == signal.pi) {
        return Fit::Exact;
    }
    const bool variant = pi && areRegionalVariants(*pi, *signal.pi);
    return variant || regionalPi == signal.pi ? Fit::Regional : Fit::None;
}

bool agrees(const NameAgreement &name)
{
    constexpr double tolerated = 0.4;
    return name.known > 0 && name.disagreement() <= tolerated * name.known;
}

// A name alone is enough when three letters agree, or all of a shorter one.
bool fitsByName(const NameAgreement &name)
{
    constexpr int enough = 3;
    return agrees(name) && name.equal + name.moved >= std::min(enough, name.known);
}

bool isSameStation(const ListedStation &listed, const ListedStation &logged, bool hasPlace)
{
    if (!logged.id.isEmpty() && !listed.id.isEmpty()) {
        return logged.id == listed.id;
    }
    if (listed.pi != logged.pi && listed.regionalPi != logged.pi) {
        return false;
    }
    if (listed.site.compare(logged.site, Qt::CaseInsensitive) == 0) {
        return true;
    }
    constexpr double nearDegrees = 0.1;
    return hasPlace && std::abs(listed.place.latitude - logged.place.latitude) < nearDegrees
        && std::abs(listed.place.longitude - logged.place.longitude) < 2 * nearDegrees;
}

// The stations of both sources that fit, each once.
std::vector<Weighed> fitting(const HeardSignal &signal, const StationList &list, const HeardStations &heard)
{
    std::vector<Weighed> found;
    const auto consider = [&](ListedStation station, bool hasPlace, int times) {
        const NameAgreement name = nameAgreement(signal.name, station.names);
        if (!signal.pi && !fitsByName(name)) {
            return;
        }
        const bool regional = fitOf(signal, station.pi, station.regionalPi) == Fit::Regional;
        found.push_back({.candidate = {.station = std::move(station),
                             .hasPlace = hasPlace,
                             .leg = {},
                             .regional = regional,
                             .timesHeard = times,
                             .share = 0,
                             .why = {}},
            .name = name,
            .weight = 0});
    };
    for (ListedStation &station : list.on(signal.kilohertz, [&](const StationFields &fields) {
             return fitOf(signal, fields.pi, fields.regionalPi) != Fit::None;
         })) {
        consider(std::move(station), true, 0);
    }
    const std::size_t listed = found.size();
    for (const HeardStation &one : heard.on(signal.kilohertz)) {
        if (fitOf(signal, one.station.pi, {}) == Fit::None) {
            continue;
        }
        const auto end = found.begin() + static_cast<std::ptrdiff_t>(listed);
        const auto same = std::find_if(found.begin(), end, [&](const Weighed &weighed) {
            return isSameStation(weighed.candidate.station, one.station, one.hasPlace);
        });
        if (same != end) {
            same->candidate.timesHeard += one.times;
        } else {
            consider(one.station, one.hasPlace, one.times);
        }
    }
    return found;
}

double decibelWatts(const Candidate &candidate)
{
    constexpr double unknownKilowatts = 1;
    constexpr double leastKilowatts = 0.001;
    const double kilowatts = candidate.station.kilowatts > 0 ? candidate.station.kilowatts : unknownKilowatts;
    return 10 * std::log10(std::max(kilowatts, leastKilowatts) * 1000);
}

constexpr double decibelsToE = 6;

// How strong it is over the ground: less by the square of the distance, and by what every km beyond the
// horizon costs. 1 is 100 kW at 400 km.
double overGround(double power, double kilometres)
{
    constexpr double nearest = 5;
    constexpr double horizon = 60;
    constexpr double beyondHorizon = 0.08;
    constexpr double faint = -29;
    const double level = power - 20 * std::log10(std::max(kilometres, nearest))
        - beyondHorizon * std::max(kilometres - horizon, 0.0);
    return std::exp((level - faint) / decibelsToE);
}

// How strong it is by Es: the way costs little, but some distances are rare. 1 is 100 kW at the likeliest.
double byEsLayer(double power, double kilometres)
{
    constexpr double usualSpread = 450;
    constexpr double strong = 50;
    const double apart = (kilometres - likelyEsDistance) / usualSpread;
    return std::exp((power - strong) / decibelsToE - 0.7 * apart * apart);
}

// While Es is likely, what is strong over the ground is so still, but not beyond all measure.
double strength(const Candidate &candidate, bool byEs)
{
    const double power = decibelWatts(candidate);
    constexpr double unknownDistance = 300;
    const double kilometres = candidate.leg ? candidate.leg->kilometres : unknownDistance;
    constexpr double mostOverGround = 2;
    const double ground = overGround(power, kilometres);
    return byEs ? std::min(ground, mostOverGround) + byEsLayer(power, kilometres) : ground;
}

// The weight of a candidate: a wrong letter is a factor of 3, as 6 to 7 dB of its signal are.
double weightOf(const Weighed &weighed, bool byEs)
{
    constexpr double letter = 1.1;
    constexpr double longestName = 8;
    constexpr double heardBefore = 1.3;
    constexpr double ofInactive = 0.1;
    const Candidate &candidate = weighed.candidate;
    // A list may not know the name: that speaks neither for it nor much against it.
    const double disagreement = candidate.station.names.isEmpty()
        ? std::min(2.0, weighed.name.known / 2.0)
        : std::min(weighed.name.disagreement(), longestName);
    return strength(candidate, byEs) * std::exp(-letter * disagreement)
        * (candidate.timesHeard > 0 ? heardBefore : 1) * (candidate.station.inactive ? ofInactive : 1);
}

QString whyText(const Weighed &weighed, const HeardSignal &signal)
{
    const Candidate &candidate = weighed.candidate;
    const bool agree = agrees(weighed.name) && !candidate.station.names.isEmpty();
    QString why;
    if (!signal.pi) {
        why = u"name"_s;
    } else if (candidate.regional) {
        why = agree ? u"name; PI, other region"_s : u"PI, other region"_s;
    } else {
        why = agree ? u"PI and name"_s : u"PI"_s;
    }
    if (signal.pi && !agree && weighed.name.known > 0 && !candidate.station.names.isEmpty()) {
        why += u", other name"_s;
    }
    constexpr double esReach = 800;
    if (signal.esLikely && candidate.leg
        && std::abs(candidate.leg->kilometres - likelyEsDistance) < esReach) {
        why += u", Es distance"_s;
    }
    if (candidate.timesHeard > 0) {
        why +=
            candidate.timesHeard == 1 ? u", heard once"_s : u", heard %1 times"_s.arg(candidate.timesHeard);
    }
    if (candidate.station.inactive) {
        why += u", said to be off"_s;
    }
    return why;
}

// A regional variant never outweighs the exact code.
void keepRegionalBehind(std::vector<Weighed> &found)
{
    double exact = 0;
    double regional = 0;
    for (const Weighed &weighed : found) {
        double &best = weighed.candidate.regional ? regional : exact;
        best = std::max(best, weighed.weight);
    }
    constexpr double usual = 0.05;
    constexpr double most = 0.5;
    const double factor = exact > 0 && regional > 0 ? std::min(usual, most * exact / regional) : 1;
    for (Weighed &weighed : found) {
        weighed.weight *= weighed.candidate.regional ? factor : 1;
    }
}

// Best first; what is beyond `most` and under a tenth of the best goes.
void rank(std::vector<Weighed> &found, std::size_t most)
{
    std::ranges::stable_sort(found, [](const Weighed &one, const Weighed &other) {
        return one.candidate.regional != other.candidate.regional ? other.candidate.regional
                                                                  : one.weight > other.weight;
    });
    double sum = 0;
    double best = 0;
    for (const Weighed &weighed : found) {
        sum += weighed.weight;
        best = std::max(best, weighed.weight);
    }
    for (Weighed &weighed : found) {
        weighed.candidate.share = sum > 0 ? weighed.weight / sum : 0;
    }
    std::size_t kept = 0;
    std::erase_if(found, [&](const Weighed &weighed) {
        constexpr double rival = 0.1;
        return ++kept > most && weighed.weight < rival * best;
    });
}

} // namespace

std::optional<HeardSignal> heardSignal(QStringView frequency, QStringView piCode, const QString &rdsName)
{
    const auto kilohertz = kilohertzOf(frequency);
    const auto pi = piCodeOf(piCode.trimmed());
    if (!kilohertz || (!pi && nameAgreement(rdsName, {}).known == 0)) {
        return {};
    }
    return HeardSignal {.kilohertz = *kilohertz, .pi = pi, .name = rdsName, .esLikely = false, .home = {}};
}

std::vector<Candidate> candidates(
    const HeardSignal &signal, const StationList &list, const HeardStations &heard, std::size_t most)
{
    std::vector<Weighed> found = fitting(signal, list, heard);
    for (Weighed &weighed : found) {
        if (signal.home && weighed.candidate.hasPlace) {
            weighed.candidate.leg = legBetween(*signal.home, weighed.candidate.station.place);
        }
    }
    for (Weighed &weighed : found) {
        weighed.weight = weightOf(weighed, signal.esLikely);
    }
    keepRegionalBehind(found);
    rank(found, most);
    std::vector<Candidate> result;
    result.reserve(found.size());
    for (Weighed &weighed : found) {
        weighed.candidate.why = whyText(weighed, signal);
        result.push_back(std::move(weighed.candidate));
    }
    return result;
}

} // namespace quillon
