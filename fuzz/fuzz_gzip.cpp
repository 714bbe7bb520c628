#include "import/gzip.h"
#include "platform/runtimeerror.h"

#include <cstddef>
#include <cstdint>

using namespace quillon;

// A gzip file, of which no more is unpacked than is asked for.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr qint64 most = 100'000;
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    try {
        if (gunzipped(bytes, most).size() > most || !isGzip(bytes)) {
            __builtin_trap();
        }
    } catch (const RuntimeError &) {
        return 0;
    }
    return 0;
}
