// A stations.lst of any bytes: what is read is written and read again as the same stations, and every search
// of it gives shares that add up to one, the exact codes first.

#include "require.h"

#include "platform/runtimeerror.h"
#include "stations/candidates.h"

#include <cmath>
#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

void search(const HeardSignal &signal, const StationList &list)
{
    const std::vector<Candidate> found = candidates(signal, list, {}, 1'000'000);
    double sum = 0;
    bool regional = false;
    for (const Candidate &one : found) {
        require(one.regional || !regional);
        regional = one.regional;
        require(one.share >= 0 && !one.why.isEmpty());
        sum += one.share;
    }
    require(found.empty() || std::abs(sum - 1) < 1e-6);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    try {
        const StationList raw(bytes, u"stations.lst"_s);
        (void)raw.count();
    } catch (const RuntimeError &error) {
        require(error.doing().startsWith(u"Reading stations.lst, line 1"));
    }
    const QByteArray file = stationListHeading.toByteArray() + '\n' + bytes;
    const StationList list(file, u"stations.lst"_s);
    const StationCounts counts = list.counts();
    require(counts.stations == list.count() && counts.sites <= counts.stations
        && counts.countries <= std::max(counts.sites, 1));
    for (const QByteArray &line : bytes.split('\n')) {
        const auto fields = stationFields(line);
        if (!fields) {
            continue;
        }
        const ListedStation station = fields->station();
        if (line == QString::fromUtf8(line).toUtf8()) {
            const QByteArray written = stationLine(station);
            const auto again = stationFields(written);
            require(again && again->names == fields->names && again->site == fields->site
                && again->pi == fields->pi && again->kilohertz == fields->kilohertz);
        }
        HeardSignal signal {.kilohertz = station.kilohertz,
            .pi = station.pi,
            .name = station.names,
            .esLikely = station.inactive,
            .home = GeoPosition {51.5, 0}};
        search(signal, list);
        signal.pi.reset();
        search(signal, list);
    }
    return 0;
}
