#include "support/numericlocale.h"

#include <QtGlobal>

#include <clocale>

namespace quillon::test {

NumericLocale::NumericLocale(const QByteArray &name)
    : m_all(qgetenv("LC_ALL"))
    , m_numeric(qgetenv("LC_NUMERIC"))
    , m_library(std::setlocale(LC_NUMERIC, nullptr))
{
    qputenv("LC_ALL", "");
    qputenv("LC_NUMERIC", name);
    QLocale::setDefault(QLocale(QString::fromLatin1(name)));
    std::setlocale(LC_NUMERIC, name.constData());
    if (QLatin1StringView(std::localeconv()->decimal_point) != QLocale().decimalPoint()) {
        qFatal("The locale %s is missing; tools/testlocale generates it", name.constData());
    }
}

NumericLocale::~NumericLocale()
{
    qputenv("LC_ALL", m_all);
    qputenv("LC_NUMERIC", m_numeric);
    QLocale::setDefault(m_default);
    std::setlocale(LC_NUMERIC, m_library.constData());
}

} // namespace quillon::test
