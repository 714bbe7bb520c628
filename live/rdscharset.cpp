#include "live/rdscharset.h"

#include <string_view>

namespace quillon {

namespace {

constexpr std::u16string_view upperHalf = u"áàéèíìóòúùÑÇŞβ¡Ĳ"
                                          u"âäêëîïôöûüñçşğıĳ"
                                          u"ªα©‰Ğěňőπ€£$←↑→↓"
                                          u"º¹²³±İńűµ¿÷°¼½¾§"
                                          u"ÁÀÉÈÍÌÓÒÚÙŘČŠŽÐĿ"
                                          u"ÂÄÊËÎÏÔÖÛÜřčšžđŀ"
                                          u"ÃÅÆŒŷÝÕØÞŊŔĆŚŹŦð"
                                          u"ãåæœŵýõøþŋŕćśźŧ ";
static_assert(upperHalf.size() == 128);

} // namespace

QChar rdsCharacter(quint8 byte)
{
    if (byte >= 0x80) {
        return upperHalf[byte - 0x80U];
    }
    switch (byte) {
    case 0x24:
        return u'¤';
    case 0x5E:
        return u'―';
    case 0x60:
        return u'‖';
    case 0x7E:
        return u'¯';
    case 0x7F:
        return u' ';
    default:
        return byte < 0x20 ? u' ' : QChar(static_cast<char16_t>(byte));
    }
}

QString rdsText(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        text[i] = rdsCharacter(static_cast<quint8>(bytes[i]));
    }
    return text;
}

} // namespace quillon
