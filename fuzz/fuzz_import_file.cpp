#include "core/logfields.h"
#include "import/importfile.h"
#include "import/importlimits.h"
#include "import/refusedlines.h"

#include <QLocale>

#include <cstddef>
#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

// A byte of choices, a file name, a line feed, and the content of that file. What comes of it is what the log
// takes; what does not comes back as it stands.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const ImportSurroundings surroundings {
        {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())}, QTimeZone("Europe/Berlin"), false};
    if (size == 0) {
        return 0;
    }
    const QByteArrayView input(data + 1, static_cast<qsizetype>(size) - 1);
    const qsizetype end = input.indexOf('\n');
    const QString name = QString::fromUtf8(end < 0 ? QByteArrayView() : input.first(end));
    FormatChoice choice;
    if ((data[0] & 1) != 0) {
        choice.encoding = textEncodings[data[0] / 16 % textEncodings.size()];
    }
    if ((data[0] & 2) != 0) {
        choice.localTime = true;
    }
    if ((data[0] & 4) != 0) {
        choice.separator = importSeparators[data[0] / 16 % importSeparators.size()];
    }
    const std::vector<ImportSource> sources = sourcesOf(name, input.sliced(end + 1).toByteArray());
    std::vector<ImportReading> readings;
    for (const ImportSource &source : sources) {
        readings.push_back(readImportFile(source, choice, {}, surroundings, mostImportRows));
        for (const ImportRow &row : readings.back().rows) {
            if (row.isRefused()) {
                continue;
            }
            for (const LogColumn &field : logFields()) {
                if (field.text && (row.entry.*field.text).contains(u'|')) {
                    __builtin_trap();
                }
            }
            if (row.line < 1 || row.entry.piCode == deletedPiCode || row.entry.notes.contains(u"CRLF")) {
                __builtin_trap();
            }
        }
    }
    const QByteArray refused = refusedLines(sources, readings);
    return isRefusedLines(refused)
            && static_cast<qsizetype>(partsOfRefusedLines(refused).size()) <= refused.size()
        ? 0
        : 1;
}
