#include "live/rdsspysource.h"

#include "live/grouplines.h"

namespace quillon {

void RdsSpySource::lineCame(QByteArrayView line)
{
    if (const auto event = spyStreamEvent(line)) {
        tell({*event});
    }
}

} // namespace quillon
