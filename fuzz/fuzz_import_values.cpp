#include "import/importcolumns.h"
#include "import/importvalues.h"
#include "import/localtime.h"
#include "platform/numbers.h"

#include <QLocale>

#include <cstddef>
#include <cstdint>

using namespace quillon;

// One cell of a file, read as everything that it could be.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const MonthNames months = MonthNames::of(QLocale::c());
    static LocalTime local {QTimeZone("Europe/Berlin")};
    const QString text = QString::fromUtf8(QByteArrayView(data, static_cast<qsizetype>(size)));
    for (const bool comma : {false, true}) {
        const auto number = plainNumber(text, comma);
        const auto frequency = importedFrequency(text, comma);
        if ((number && !numeric(*number)) || (frequency && !numeric(*frequency))) {
            __builtin_trap();
        }
    }
    for (const DateOrder order : {DateOrder::DayFirst, DateOrder::MonthFirst}) {
        (void)importedDate(text, order, months);
        if (const auto moment = importedMoment(text, order, months)) {
            (void)local.utcOf(moment->moment);
        }
    }
    const auto time = importedTime(text);
    const auto pi = importedPi(text);
    const QString within = piWithin(text);
    (void)importedOffset(text);
    (void)guessedUse(text);
    return (time && (time->seconds < 0 || time->seconds >= secondsPerDay))
            || (pi && !pi->code.isEmpty() && pi->code.size() != 4)
            || (!within.isEmpty() && within.size() != 4)
        ? 1
        : 0;
}
