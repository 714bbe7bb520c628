#include "core/logentry.h"

namespace quillon {

using namespace Qt::StringLiterals;

bool isDeleted(const LogEntry &entry)
{
    return entry.piCode == deletedPiCode;
}

QString fmlistDisplay(QStringView fmlist)
{
    return fmlistName(fmlist).toString();
}

QStringView fmlistName(QStringView fmlist)
{
    if (fmlist.isEmpty()) {
        return {};
    }
    if (fmlist.contains(u"fml=sent")) {
        return u"Sent";
    }
    if (fmlist.contains(u"fml=multi")) {
        return u"Multi";
    }
    if (fmlist.contains(u"fml=none")) {
        return u"None";
    }
    return {};
}

QString yesNo(QStringView text)
{
    return text == u"1" ? u"Yes"_s : u"No"_s;
}

} // namespace quillon
