#include "net/charset.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// Names come from the network. A "/" would give iconv options, and an empty name the charset of the locale.
bool isName(QByteArrayView charset)
{
    constexpr qsizetype longest = 40;
    return !charset.isEmpty() && charset.size() <= longest && std::ranges::all_of(charset, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
            || QByteArrayView("-_.:+()").contains(c);
    });
}

// How many bytes are left out together where nothing can be decoded, lest all that follows be shifted.
std::size_t unitOf(const QByteArray &charset)
{
    if (charset.startsWith("UTF-16") || charset.contains("UCS-2")) {
        return 2;
    }
    return charset.startsWith("UTF-32") || charset.contains("UCS-4") ? 4 : 1;
}

// Decodes by iconv into the characters of a QString.
class Iconv
{
public:
    explicit Iconv(const QByteArray &charset)
        : m_handle(iconv_open(Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "UTF-16LE" : "UTF-16BE", charset.constData()))
        , m_unit(unitOf(charset))
    {
    }
    ~Iconv()
    {
        if (isOpen()) {
            iconv_close(m_handle);
        }
    }
    Q_DISABLE_COPY_MOVE(Iconv)

    [[nodiscard]] bool isOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

    [[nodiscard]] QString decode(QByteArrayView bytes)
    {
        QString text;
        // iconv takes the bytes as not constant, and leaves them as they are.
        auto *in = const_cast<char *>(bytes.data());
        auto left = static_cast<std::size_t>(bytes.size());
        while (left > 0) {
            // Stopped for want of room, the next step goes on; otherwise a byte cannot be decoded.
            if (step(&in, &left, text) || left == 0) {
                continue;
            }
            text += QChar(QChar::ReplacementCharacter);
            const std::size_t skipped = std::min(m_unit, left);
            in += skipped;
            left -= skipped;
        }
        // Some charsets hold a letter back until they know that no accent follows.
        (void)step(nullptr, nullptr, text);
        return text;
    }

private:
    // Adds what fits into a piece to the text. False when it stopped at what cannot be decoded.
    bool step(char **in, std::size_t *left, QString &text)
    {
        std::array<char16_t, 2048> piece {};
        auto *out = reinterpret_cast<char *>(piece.data());
        std::size_t room = sizeof piece;
        const bool isDone = iconv(m_handle, in, left, &out, &room) != static_cast<std::size_t>(-1);
        const int reason = isDone ? 0 : errno;
        text += QStringView(piece.data(), static_cast<qsizetype>((sizeof piece - room) / sizeof(char16_t)));
        return isDone || reason == E2BIG;
    }

    iconv_t m_handle;
    std::size_t m_unit;
};

} // namespace

std::optional<QString> decodedFrom(QByteArrayView charset, QByteArrayView bytes)
{
    if (!isName(charset)) {
        return std::nullopt;
    }
    Iconv decoder(charset.toByteArray().toUpper());
    if (!decoder.isOpen()) {
        return std::nullopt;
    }
    QString text = decoder.decode(bytes);
    if (text.startsWith(QChar(QChar::ByteOrderMark))) {
        text.remove(0, 1);
    }
    return text;
}

} // namespace quillon
