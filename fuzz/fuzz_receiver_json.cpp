#include "live/jsonevents.h"
#include "live/linesplitter.h"
#include "live/listening.h"
#include "live/reception.h"

#include <cstddef>
#include <cstdint>

using namespace quillon;

// Lines of JSON: as messages of a web receiver, and as what redsea writes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const KnownStations nothing;
    Listening web(nothing);
    Listening redsea(nothing);
    qint64 when = 1'750'000'000'000;
    LineSplitter lines;
    lines.feed(QByteArrayView(data, static_cast<qsizetype>(size)), [&](QByteArrayView line) {
        when += 88;
        for (const ReceiverEvent &event : webserverEvents(line)) {
            web.take(event, when);
        }
        for (const ReceiverEvent &event : redseaEvents(line)) {
            redsea.take(event, when);
        }
    });
    for (const Listening *const listening : {&web, &redsea}) {
        if (listening->station()) {
            const HeardReception reception = receptionOf(*listening->station(), true, false);
            const QString all = reception.entry.rdsName + reception.entry.notes + reception.entry.transmitter
                + reception.entry.uid;
            if (all.contains(u'|') || all.contains(u'\n') || all.size() > 300) {
                __builtin_trap();
            }
        }
    }
    return 0;
}
