#include "net/webaddress.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestWebAddress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatNoAddressCanHoldIsEscaped()
    {
        QByteArray all;
        QByteArray escaped;
        for (int code = 0; code < 256; ++code) {
            const auto byte = static_cast<char>(code);
            const bool stays = code > 32 && code < 127 && !QByteArray("\"#<>\\^`{|}").contains(byte);
            all += byte;
            escaped += stays ? QByteArray(1, byte) : '%' + QByteArray(1, byte).toHex().toUpper();
        }
        QCOMPARE(sendable(QByteArrayView(all)), escaped);
        QCOMPARE(sendable(u"\u20ac", CodePage(1252)), "%80"_ba);
    }
};

QTEST_GUILESS_MAIN(TestWebAddress)
#include "tst_webaddress.moc"
