#include "core/picode.h"

#include "platform/numbers.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

std::optional<quint16> piCodeOf(QStringView text)
{
    const auto isHexDigit = [](QChar c) {
        return isDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    };
    if (text.size() != 4 || !std::ranges::all_of(text, isHexDigit)) {
        return {};
    }
    return text.toUShort(nullptr, 16);
}

QString piText(quint16 pi)
{
    return u"%1"_s.arg(pi, 4, 16, QChar(u'0')).toUpper();
}

} // namespace quillon
