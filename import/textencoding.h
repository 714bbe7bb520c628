#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>

namespace quillon {

/// How the bytes of a file stand for text.
enum class TextEncoding {
    Utf8,
    Utf16Little, ///< the low byte first
    Utf16Big,
    Windows1250,
    Windows1251,
    Windows1252,
    Windows1253,
    Windows1254,
    Windows1255,
    Windows1256,
    Windows1257,
    Windows1258,
};

/// All of them, in the order in which they are offered.
inline constexpr std::array<TextEncoding, 12> textEncodings {TextEncoding::Utf8, TextEncoding::Utf16Little,
    TextEncoding::Utf16Big, TextEncoding::Windows1250, TextEncoding::Windows1251, TextEncoding::Windows1252,
    TextEncoding::Windows1253, TextEncoding::Windows1254, TextEncoding::Windows1255,
    TextEncoding::Windows1256, TextEncoding::Windows1257, TextEncoding::Windows1258};

/// "UTF-8", "UTF-16 LE", "Windows-1252" ...
[[nodiscard]] QString encodingName(TextEncoding encoding);

/// The encoding of a Windows code page; Windows-1252 for a number that is none.
[[nodiscard]] TextEncoding encodingOfPage(int number);

/// The encoding that the bytes are in: by their byte order mark, as UTF-16 by the zeros of its ASCII letters,
/// as UTF-8 when more of its sequences of several bytes are whole than broken; otherwise `page`.
[[nodiscard]] TextEncoding encodingOf(QByteArrayView bytes, TextEncoding page);

/// The text, without a byte order mark. What the encoding does not know becomes U+FFFD.
[[nodiscard]] QString decodedText(QByteArrayView bytes, TextEncoding encoding);

} // namespace quillon
