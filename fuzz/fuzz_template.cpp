// Fills any bytes as a template. Whatever they are, each line of it gives one line of the page, and each line
// that asks for the rows gives them once.

#include "require.h"

#include "export/webtemplate.h"
#include "platform/files.h"

#include <array>
#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView text(data, static_cast<qsizetype>(size));
    const std::array placeholders {
        Placeholder {"$CALLSIGN"_ba, "DL1ABC $TOTAL"_ba},
        Placeholder {"$TOTAL"_ba, "7"_ba},
        Placeholder {"$MONTHYEAR"_ba, "M\xE4r-2010"_ba},
    };
    qsizetype rows = 0;
    const QByteArray page = fillTemplate(text, placeholders, [&](QByteArray &out) {
        out += "row\r\n";
        ++rows;
    });
    const qsizetype lines = splitLines(text).size();
    require(rows <= lines);
    require(page.count('\n') == lines + rows);
    require(page.isEmpty() || page.endsWith("\r\n"));
    require(rows > 0 || !page.contains("$RAWDATA"));
    return 0;
}
