// A logbook file of any bytes: what is read is written, and what is written is read again as the same
// entries.

#include "require.h"

#include "core/logbookfile.h"
#include "core/logbooklines.h"
#include "core/logrows.h"
#include "platform/runtimeerror.h"

#include <QLocale>

#include <algorithm>
#include <cstdint>
#include <iterator>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// True when every byte of the file was understood.
bool read(Logbook &log, QByteArrayView file)
{
    static const Regional regional {CodePage(), NumberFormat(), MonthNames::of(QLocale(u"de_DE"_s))};
    try {
        return readLogbook(log, file, regional, u"RDSLog.log"_s);
    } catch (const RuntimeError &error) {
        require(error.doing().startsWith(u"Reading RDSLog.log, line "));
        return false;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView file(data, static_cast<qsizetype>(size));
    Logbook log;
    const bool whole = read(log, file);
    const QByteArray bytes = logbookBytes(log, CodePage());

    // A deleted entry is not written, and neither is the layout of a log without an entry.
    std::vector<LogEntry> kept;
    std::ranges::copy_if(
        log, std::back_inserter(kept), [](const LogEntry &entry) { return !isDeleted(entry); });
    Logbook again;
    require(read(again, bytes) || kept.empty());
    require(std::ranges::equal(again, kept));
    require(logbookBytes(again, CodePage()) == bytes);
    require(!whole || kept.size() == static_cast<std::size_t>(log.count()));
    LogRows rows(log, MonthNames());
    rows.refill();
    require(rows.all().size() == static_cast<std::size_t>(log.count()));

    // Only the date may be spelled otherwise than before, and the older layout gains two fields.
    require(!whole || std::ranges::count(bytes, '|') >= std::ranges::count(file, '|'));
    return 0;
}
