#include "import/textencoding.h"

#include "platform/codepage.h"

#include <QStringConverter>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The number of the code page; 0 for what is none.
int pageOf(TextEncoding encoding)
{
    switch (encoding) {
    case TextEncoding::Windows1250:
        return 1250;
    case TextEncoding::Windows1251:
        return 1251;
    case TextEncoding::Windows1252:
        return 1252;
    case TextEncoding::Windows1253:
        return 1253;
    case TextEncoding::Windows1254:
        return 1254;
    case TextEncoding::Windows1255:
        return 1255;
    case TextEncoding::Windows1256:
        return 1256;
    case TextEncoding::Windows1257:
        return 1257;
    case TextEncoding::Windows1258:
        return 1258;
    default:
        return 0;
    }
}

struct Sequences
{
    qsizetype whole = 0;
    qsizetype broken = 0;
};

int lengthOfSequence(uchar first)
{
    constexpr uchar first2 = 0xC2;
    constexpr uchar first3 = 0xE0;
    constexpr uchar first4 = 0xF0;
    constexpr uchar behind4 = 0xF5;
    if (first < first2 || first >= behind4) {
        return 0;
    }
    return first < first3 ? 2 : first < first4 ? 3 : 4;
}

// The UTF-8 sequences of more than one byte.
Sequences sequencesOf(QByteArrayView bytes)
{
    Sequences found;
    for (qsizetype at = 0; at < bytes.size();) {
        const auto first = static_cast<uchar>(bytes[at]);
        if (first < 0x80) {
            ++at;
            continue;
        }
        const int length = lengthOfSequence(first);
        int there = 1;
        while (there < length && at + there < bytes.size()
            && (static_cast<uchar>(bytes[at + there]) & 0xC0) == 0x80) {
            ++there;
        }
        if (length > 0 && there == length) {
            ++found.whole;
        } else {
            ++found.broken;
        }
        at += there;
    }
    return found;
}

// UTF-16 without a mark: nearly all of what stands in a log is ASCII, so every second byte is zero.
bool hasZerosAt(QByteArrayView bytes, qsizetype first)
{
    const QByteArrayView head = bytes.first(std::min(bytes.size(), qsizetype(4096)));
    qsizetype zeros = 0;
    qsizetype others = 0;
    for (qsizetype at = 0; at < head.size(); ++at) {
        if (head[at] == '\0') {
            ++(at % 2 == first ? zeros : others);
        }
    }
    return others == 0 && zeros > 0 && zeros * 4 >= head.size();
}

} // namespace

QString encodingName(TextEncoding encoding)
{
    switch (encoding) {
    case TextEncoding::Utf8:
        return u"UTF-8"_s;
    case TextEncoding::Utf16Little:
        return u"UTF-16 LE"_s;
    case TextEncoding::Utf16Big:
        return u"UTF-16 BE"_s;
    default:
        return u"Windows-"_s + QString::number(pageOf(encoding));
    }
}

TextEncoding encodingOfPage(int number)
{
    const auto found = std::ranges::find(textEncodings, number, pageOf);
    return found == textEncodings.end() ? TextEncoding::Windows1252 : *found;
}

TextEncoding encodingOf(QByteArrayView bytes, TextEncoding page)
{
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        return TextEncoding::Utf8;
    }
    if (bytes.startsWith("\xFF\xFE")) {
        return TextEncoding::Utf16Little;
    }
    if (bytes.startsWith("\xFE\xFF")) {
        return TextEncoding::Utf16Big;
    }
    if (hasZerosAt(bytes, 1)) {
        return TextEncoding::Utf16Little;
    }
    if (hasZerosAt(bytes, 0)) {
        return TextEncoding::Utf16Big;
    }
    const Sequences sequences = sequencesOf(bytes);
    // A plain ASCII file is either; as UTF-8 it takes any letter that somebody adds to it.
    return sequences.broken == 0 || sequences.whole > sequences.broken ? TextEncoding::Utf8 : page;
}

QString decodedText(QByteArrayView bytes, TextEncoding encoding)
{
    if (const int page = pageOf(encoding)) {
        return CodePage(page).decode(bytes);
    }
    const auto kind = encoding == TextEncoding::Utf8 ? QStringConverter::Utf8
        : encoding == TextEncoding::Utf16Little      ? QStringConverter::Utf16LE
                                                     : QStringConverter::Utf16BE;
    QStringDecoder decoder(kind);
    QString text = decoder.decode(bytes);
    if (text.startsWith(QChar::ByteOrderMark)) {
        text.remove(0, 1);
    }
    return text;
}

} // namespace quillon
