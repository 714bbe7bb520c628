#include "ui/frmsplash.h"

namespace quillon {

using namespace Qt::StringLiterals;

QString versionText()
{
    return u"V"_s + QStringLiteral(QUILLON_VERSION);
}

QString versionLabel()
{
    return u"Quillon "_s + versionText();
}

} // namespace quillon
