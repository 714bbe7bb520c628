#include "import/csv.h"
#include "import/importlimits.h"
#include "platform/runtimeerror.h"

#include <cstddef>
#include <cstdint>

using namespace quillon;

// A byte of choices and a text in UTF-8. The records are the whole text, one behind the other.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    constexpr char16_t separators[] {u';', u',', u'\t', u'|'};
    const QString text = QString::fromUtf8(QByteArrayView(data + 1, static_cast<qsizetype>(size) - 1));
    CsvReader reader(text, {separators[data[0] % 4], (data[0] & 4) != 0, (data[0] & 8) != 0});
    CsvRow row;
    qsizetype line = 0;
    const QChar *behind = text.constData();
    try {
        while (reader.next(row)) {
            if (row.line <= line || row.cells.empty() || row.text.data() < behind
                || static_cast<qsizetype>(row.cells.size()) > mostImportColumns) {
                __builtin_trap();
            }
            line = row.line;
            behind = row.text.data() + row.text.size();
        }
    } catch (const RuntimeError &) {
        return 0;
    }
    return 0;
}
