#include "core/logbook.h"
#include "core/logbooklines.h"
#include "import/rdsdx.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QLocale>

#include <cstddef>
#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

// A file name, a line feed, and the content of that file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Regional regional {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
    const QByteArrayView input(data, static_cast<qsizetype>(size));
    const qsizetype end = input.indexOf('\n');
    const QString name = regional.codePage.decode(end < 0 ? QByteArrayView() : input.first(end));
    const QByteArrayView file = input.sliced(end + 1);
    Logbook log;
    qint32 skipped = 0;
    try {
        const RdsdxImport import = readRdsdx(file, name, regional, [&](const QString &) { ++skipped; });
        LogChange change;
        change.added = import.entries;
        try {
            log.apply(change);
        } catch (const RuntimeError &error) {
            const auto last = static_cast<std::size_t>(log.count() - 1);
            throw atRdsdxLine(error, file, name, import.lines[last], regional);
        }
        const auto read = static_cast<qsizetype>(import.entries.size());
        if (import.entries.size() != import.lines.size() || read != log.count()) {
            __builtin_trap();
        }
        if (import.failure) {
            throw RuntimeError(*import.failure);
        }
        if (read + skipped != splitLines(file).size() - 1) {
            __builtin_trap();
        }
    } catch (const RuntimeError &error) {
        if (!error.text().contains(name)) {
            __builtin_trap();
        }
    }
    const QByteArray bytes = logbookBytes(log, regional.codePage);
    return bytes.size() < log.count() ? 1 : 0;
}
