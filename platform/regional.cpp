#include "platform/regional.h"

#include <QLocale>

namespace quillon {

namespace {

QLocale timeLocale()
{
    for (const char *name : {"LC_ALL", "LC_TIME", "LANG"}) {
        const QString value = qEnvironmentVariable(name);
        if (!value.isEmpty()) {
            return QLocale(value);
        }
    }
    return QLocale::c();
}

} // namespace

Regional Regional::fromEnvironment()
{
    return {CodePage::fromEnvironment(), NumberFormat::fromEnvironment(), MonthNames::of(timeLocale())};
}

} // namespace quillon
