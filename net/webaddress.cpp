#include "net/webaddress.h"

namespace quillon {

namespace {

bool isSendable(char byte)
{
    return byte > ' ' && byte < 0x7F && !QByteArrayView("\"#<>\\^`{|}").contains(byte);
}

} // namespace

QByteArray sendable(QStringView text, const CodePage &codePage)
{
    return sendable(codePage.encode(text));
}

QByteArray sendable(QByteArrayView bytes)
{
    QByteArray result;
    result.reserve(bytes.size());
    for (const char byte : bytes) {
        if (isSendable(byte)) {
            result += byte;
        } else {
            result += '%' + QByteArray(1, byte).toHex().toUpper();
        }
    }
    return result;
}

} // namespace quillon
