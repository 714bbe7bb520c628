#include "live/frequency.h"

#include "platform/numbers.h"

#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

qint64 logStep(qint64 hertz)
{
    return (hertz + 5'000) / 10'000;
}

QString megahertzText(qint64 hertz)
{
    const qint64 step = hertz > 0 ? logStep(hertz) : 0;
    if (step == 0) {
        return {};
    }
    QString text = u"%1.%2"_s.arg(step / 100).arg(step % 100, 2, 10, QChar(u'0'));
    if (text.endsWith(u'0')) {
        text.chop(1);
    }
    return text;
}

std::optional<qint64> hertzOf(QStringView megahertz)
{
    const auto number = numeric(megahertz);
    if (!number || *number < 0.1 || *number > 10'000) {
        return {};
    }
    return std::llround(*number * 1e6);
}

} // namespace quillon
