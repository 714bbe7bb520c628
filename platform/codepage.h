#pragma once

#include <QByteArray>
#include <QString>

#include <array>

namespace quillon {

/// An 8-bit code page: all 256 byte values map to a character and back.
class CodePage
{
public:
    /// Windows code page `number`; an unknown number stands for 1252.
    explicit CodePage(int number = 1252);

    /// QUILLON_CODEPAGE, else the page that Windows uses for the language of LC_ALL, LC_CTYPE or LANG.
    [[nodiscard]] static CodePage fromEnvironment();

    [[nodiscard]] int number() const { return m_number; }

    /// The text of the bytes.
    [[nodiscard]] QString decode(QByteArrayView bytes) const;

    /// The bytes of the text. A character outside the page becomes its base letter where it has one ("ł" is
    /// "l"), otherwise "?".
    [[nodiscard]] QByteArray encode(QStringView text) const;

    /// encode, written to `out`, which has room for text.size() bytes. Returns the end of what was written.
    char *encodeTo(char *out, QStringView text) const;

    /// encode, added to the end of `bytes`.
    void appendEncoded(QByteArray &bytes, QStringView text) const;

    /// The byte of one character, as encode gives it.
    [[nodiscard]] uchar byteOf(QChar character) const;

private:
    [[nodiscard]] int exactByte(char16_t character) const;

    struct Pair
    {
        char16_t character;
        uchar byte;
    };

    int m_number;
    std::array<char16_t, 256> m_characters {};
    std::array<Pair, 128> m_sorted {};
};

} // namespace quillon
