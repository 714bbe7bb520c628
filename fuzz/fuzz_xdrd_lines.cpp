#include "live/linesplitter.h"
#include "live/listening.h"
#include "live/rigctlsession.h"
#include "live/xdrdprotocol.h"

#include <cstddef>
#include <cstdint>

using namespace quillon;

// Lines as xdrd sends them, and the same as the answers of rigctld.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const KnownStations nothing;
    Listening listening(nothing);
    XdrdSession xdrd(QStringLiteral("secret"));
    RigctlSession rig;
    qint64 when = 1'750'000'000'000;
    LineSplitter lines;
    lines.feed(QByteArrayView(data, static_cast<qsizetype>(size)), [&](QByteArrayView line) {
        when += 88;
        for (const ReceiverEvent &event : xdrd.take(line).events) {
            listening.take(event, when);
        }
        if (rig.next().isEmpty()) {
            rig.begin();
        }
        for (const ReceiverEvent &event : rig.take(line)) {
            listening.take(event, when);
        }
    });
    return listening.hertz() < 0 ? 1 : 0;
}
