#include "live/grouplines.h"
#include "live/heardtable.h"
#include "live/linesplitter.h"
#include "live/listening.h"
#include "platform/strangerstext.h"

#include <cstddef>
#include <cstdint>

using namespace quillon;

// Groups as bytes: two of state and time, then four blocks. What is left is read as lines of a stream.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const KnownStations nothing;
    Listening listening(nothing);
    HeardTable table;
    qint64 when = 1'750'000'000'000;
    const auto hear = [&](const RdsGroup &group) {
        listening.take(GroupHeard {group}, when);
        if (listening.station()) {
            table.note(*listening.station());
            if (listening.station()->ps.size() > longestPs
                || listening.station()->text.size() > longestRadiotext) {
                __builtin_trap();
            }
        }
    };
    while (size >= 10) {
        RdsGroup group;
        for (unsigned i = 0; i < 4; ++i) {
            group.states[i] = static_cast<BlockState>((data[0] >> (2 * i)) & 3U);
            group.blocks[i] = static_cast<quint16>((data[2 + 2 * i] << 8) | data[3 + 2 * i]);
        }
        when += data[1] * 20;
        hear(group);
        const auto again = groupOf(groupText(group));
        if (!again || (group.states[3] != BlockState::Lost && again->blocks[3] != group.blocks[3])) {
            __builtin_trap();
        }
        if (data[1] == 255) {
            listening.take(Tuned {qint64 {data[2]} * 1'000'000}, when);
        }
        data += 10;
        size -= 10;
    }
    LineSplitter lines;
    lines.feed(QByteArrayView(data, static_cast<qsizetype>(size)), [&](QByteArrayView line) {
        if (const auto event = spyStreamEvent(line)) {
            listening.take(*event, when);
        }
        if (const auto recorded = spyLine(line)) {
            hear(recorded->group);
        }
    });
    return 0;
}
