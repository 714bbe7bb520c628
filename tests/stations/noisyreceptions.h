#pragma once

#include "geo/leg.h"
#include "stations/candidates.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillon::test {

/// A reception made from a station of a list, and what spoilt it.
struct NoisyReception
{
    HeardSignal signal;
    ListedStation station;
    double kilometres = 0;
    bool byEs = false;
    int lostLetters = 0;
    bool moved = false; ///< pairs of letters came in another order
    bool regional = false; ///< another regional PI code than the list's
};

/// Receptions as they come about: a frequency at random, on it the signal that fading makes the strongest, by
/// Es or over the ground, and of its name and code what noise leaves. The same for the same seed.
class NoisyReceptions
{
public:
    NoisyReceptions(const StationList &list, quint32 seed)
        : m_list(list)
        , m_random(seed)
    {
    }

    NoisyReception next()
    {
        for (;;) {
            const int kilohertz = 87'500 + 100 * below(206);
            const GeoPosition home = homes.at(static_cast<std::size_t>(below(homes.size())));
            const bool byEs = below(2) == 0;
            const std::vector<ListedStation> stations =
                m_list.on(kilohertz, [](const StationFields &) { return true; });
            const ListedStation *strongest = nullptr;
            double best = weakestAudible;
            for (const ListedStation &station : stations) {
                const double level = levelOf(station, legBetween(home, station.place).kilometres, byEs);
                if (level > best) {
                    best = level;
                    strongest = &station;
                }
            }
            if (strongest) {
                return spoilt(*strongest, home, byEs);
            }
        }
    }

private:
    static constexpr double weakestAudible = -30;
    // London, Berlin, Rome, Athens, Stockholm.
    static constexpr std::array<GeoPosition, 5> homes {
        {{51.5, -0.1}, {52.5, 13.4}, {41.9, 12.5}, {38.0, 23.7}, {59.3, 18.1}}};

    int below(std::size_t bound) { return static_cast<int>(m_random.bounded(static_cast<quint32>(bound))); }
    bool oneIn(int n) { return below(static_cast<std::size_t>(n)) == 0; }

    // A normal deviate (Box and Muller).
    double fading(double decibels)
    {
        const double u = 1 - m_random.generateDouble();
        const double v = m_random.generateDouble();
        return decibels * std::sqrt(-2 * std::log(u)) * std::cos(2 * std::numbers::pi * v);
    }

    // Over the ground: 40 dB a decade, and 0.05 dB a km beyond 100 km. By Es: a window of distances that
    // moves with the cloud.
    double levelOf(const ListedStation &station, double kilometres, bool byEs)
    {
        const double power = 10 * std::log10(std::max(station.kilowatts, 0.01) * 1000);
        if (byEs) {
            const bool inReach = kilometres > 700 && kilometres < 2'350;
            return inReach ? power - 60 + fading(10) : -1000;
        }
        return power - 40 * std::log10(std::max(kilometres, 5.0) / 30)
            - 0.05 * std::max(kilometres - 100, 0.0) + fading(8);
    }

    NoisyReception spoilt(const ListedStation &station, const GeoPosition &home, bool byEs)
    {
        NoisyReception made;
        made.station = station;
        made.byEs = byEs;
        made.kilometres = legBetween(home, station.place).kilometres;
        made.signal.kilohertz = station.kilohertz;
        made.signal.home = home;
        // Now and then the hour misleads.
        made.signal.esLikely = oneIn(20) ? !byEs : byEs;
        made.signal.pi = station.pi;
        spoilCode(made);
        spoilName(made);
        return made;
    }

    void spoilCode(NoisyReception &made)
    {
        if (oneIn(10) && !made.station.names.isEmpty()) {
            made.signal.pi.reset();
            return;
        }
        if (made.signal.pi && (*made.signal.pi & 0x0F00U) >= 0x0400U && oneIn(4)) {
            const auto area = static_cast<quint16>((4 + below(12)) << 8U);
            made.regional = (*made.signal.pi & 0x0F00U) != area;
            made.signal.pi = static_cast<quint16>((*made.signal.pi & 0xF0FFU) | area);
        }
    }

    void spoilName(NoisyReception &made)
    {
        QString name = made.station.names.section(u' ', 0, 0).replace(u'_', u' ').leftJustified(8);
        if (oneIn(8)) {
            const qsizetype from = 2 * below(4);
            const qsizetype to = 2 * below(4);
            const QString pair = name.sliced(from, 2);
            made.moved = from != to && pair != name.sliced(to, 2);
            name.replace(from, 2, name.sliced(to, 2)).replace(to, 2, pair);
        }
        const bool none = made.signal.pi && oneIn(6);
        const int lost = none ? 100 : below(3) * 25;
        for (QChar &letter : name) {
            if (letter != u' ' && below(100) < lost) {
                letter = u' ';
                ++made.lostLetters;
            } else if (letter != u' ' && oneIn(40)) {
                letter = QChar(u'A' + below(26));
            }
        }
        made.signal.name = name;
    }

    const StationList &m_list;
    QRandomGenerator m_random;
};

} // namespace quillon::test
