#include "import/rdsspy.h"

#include <QLocale>

#include <cstddef>
#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// Every line that a name gives can be imported, selected and deselected.
void check(const RdsSpyCandidate &candidate, const MonthNames &months)
{
    const RdsSpyReception reception = rdsSpyReception(candidate.line, u"87.5"_s, u"0"_s, months);
    const auto moment = parseDateTime(reception.dateTime, months);
    if (!moment || *moment != candidate.dateTime || isMarked(candidate.line)
        || unmarked(marked(candidate.line)) != candidate.line) {
        __builtin_trap();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const MonthNames months = MonthNames::of(QLocale::c());
    const QString name =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    try {
        check(rdsSpyCandidate(name, months), months);
    } catch (const RuntimeError &error) {
        if (!error.text().contains(name)) {
            __builtin_trap();
        }
    }
    const QStringList names = name.split(u'/');
    if (const auto day = dayOf(names.first(), months)) {
        const RdsSpyListing listing = rdsSpyListing(names, u"logs"_s, *day, months);
        if (listing.lines.size() > names.size() || allUnmarked(allMarked(listing.lines)) != listing.lines) {
            __builtin_trap();
        }
    }
    return 0;
}
