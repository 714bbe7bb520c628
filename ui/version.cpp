#include "ui/version.h"

namespace quillon {

using namespace Qt::StringLiterals;

QString versionNumber()
{
    return QStringLiteral(QUILLON_VERSION);
}

QString versionText()
{
    return u"V"_s + versionNumber();
}

QString versionLabel()
{
    return u"Quillon "_s + versionText();
}

} // namespace quillon
