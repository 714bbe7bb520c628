#include "live/listening.h"
#include "live/reception.h"
#include "live/srcp.h"

#include <cstddef>
#include <cstdint>

using namespace quillon;

// Datagrams, with a line feed between.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const KnownStations nothing;
    Listening listening(nothing);
    qint64 when = 1'750'000'000'000;
    QByteArrayView rest(data, static_cast<qsizetype>(size));
    while (!rest.isEmpty()) {
        const qsizetype end = rest.indexOf('\n');
        for (const ReceiverEvent &event : srcpEvents(end < 0 ? rest : rest.first(end))) {
            listening.take(event, when += 100);
        }
        rest = end < 0 ? QByteArrayView() : rest.sliced(end + 1);
    }
    if (listening.station()) {
        const HeardReception reception = receptionOf(*listening.station(), true, true);
        const QString all = reception.entry.rdsName + reception.entry.notes;
        if (all.contains(u'|') || all.contains(u'\n') || reception.entry.rdsName.size() > 8) {
            __builtin_trap();
        }
    }
    return 0;
}
