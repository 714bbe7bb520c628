#include "receptions.h"

#include <QDateTime>

namespace quillon::soak {

using namespace Qt::StringLiterals;

QString nameOf(int number)
{
    return u"R%1"_s.arg(number, 7, 10, QChar(u'0'));
}

QString dateOf(int number)
{
    const QDateTime first(QDate(2015, 1, 1), QTime(0, 0), Qt::UTC);
    return first.addSecs(qint64(number) * 61).toString(u"dd/MM/yyyy hh:mm:ss"_s);
}

quint16 piOf(int number)
{
    constexpr int first = 0x1000;
    constexpr int many = 0xE000;
    return static_cast<quint16>(first + number % many);
}

QByteArray codeOf(int number)
{
    return QByteArray::number(piOf(number), 16).toUpper();
}

} // namespace quillon::soak
