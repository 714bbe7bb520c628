#pragma once

#include "stations/blocksource.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace quillon {

enum class JsonToken {
    ObjectBegin,
    ObjectEnd,
    ArrayBegin,
    ArrayEnd,
    Name, ///< of a member; its value is the next token
    String,
    Number,
    Word, ///< true, false or null
    End, ///< of the text
};

/// The tokens of a JSON text (RFC 8259), one after the other, of a file of any size. It holds a block of the
/// file, one text and the kinds of the open brackets, nothing more.
class JsonTokens
{
public:
    /// How deep brackets may nest, and how many bytes of a text are kept; what follows them is read and left
    /// out.
    static constexpr std::size_t deepest = 64;
    static constexpr qsizetype longestText = 1'024;

    explicit JsonTokens(BlockSource &source);

    /// The next token. Throws "Type mismatch" with line and column where the text is no JSON or nests too
    /// deep, and what the source throws.
    [[nodiscard]] JsonToken next();
    /// The text of the last Name, String, Number or Word.
    [[nodiscard]] QString text() const { return QString::fromUtf8(m_text); }
    /// Passes over the value whose first token was `first`.
    void skip(JsonToken first);

    /// The line, from 1, at which reading stands.
    [[nodiscard]] qint64 line() const { return m_line; }

private:
    enum class Expected { Value, ValueOrEnd, Name, NameOrEnd, CommaOrEnd, Nothing };

    [[nodiscard]] int peek();
    int take();
    void skipBlanks();
    [[nodiscard]] JsonToken open(JsonToken token, char closing);
    [[nodiscard]] JsonToken close();
    [[nodiscard]] JsonToken value();
    [[nodiscard]] JsonToken name();
    void readString();
    void readEscape();
    [[nodiscard]] char32_t readUnit();
    void readWord();
    void readNumber();
    void keep(QByteArrayView bytes);
    void keep(char32_t character);
    void valueDone();
    [[nodiscard]] qint64 bytesRead() const { return m_before + m_at; }
    [[noreturn]] void fail(const QString &reason) const;

    BlockSource &m_source;
    QByteArray m_block;
    qsizetype m_at = 0;
    qint64 m_before = 0;
    qint64 m_line = 1;
    qint64 m_lineBegin = 0;
    QByteArray m_text;
    std::vector<char> m_open; ///< the bracket that closes each open one
    Expected m_expected = Expected::Value;
};

} // namespace quillon
