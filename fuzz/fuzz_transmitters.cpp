// A transmitter list of any bytes: what is read is written, and what is written is read again as the same
// list.

#include "require.h"

#include "txdb/transmitters.h"

#include "platform/runtimeerror.h"
#include "txdb/countries.h"

#include <algorithm>
#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

bool read(TransmitterList &list, QByteArrayView file)
{
    try {
        return readTransmitters(list, file, CodePage(), u"tx.lst"_s);
    } catch (const RuntimeError &error) {
        require(error.doing().startsWith(u"Reading tx.lst, line "));
        return false;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView file(data, static_cast<qsizetype>(size));
    TransmitterList list;
    const bool whole = read(list, file);
    const QByteArray bytes = transmitterBytes(list, CodePage());
    TransmitterList again;
    require(read(again, bytes));
    require(std::ranges::equal(list, again));
    require(transmitterBytes(again, CodePage()) == bytes);
    require(!whole || bytes.size() <= file.size() + 2 || file.contains('\n'));
    for (int row = 0; row < list.count(); ++row) {
        require(list.find(list.row(row).name, list.row(row).country) == row);
    }
    for (const QString &country : readCountries(file, CodePage())) {
        require(!country.isEmpty() && !country.contains(u'\n'));
    }
    return 0;
}
