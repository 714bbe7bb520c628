#include "stations/jsontokens.h"

#include "platform/runtimeerror.h"

#include <algorithm>
#include <string_view>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int atEnd = -1;

bool isNumberByte(int byte)
{
    return (byte >= '0' && byte <= '9') || byte == '-' || byte == '+' || byte == '.' || byte == 'e'
        || byte == 'E';
}

bool isLetter(int byte)
{
    return byte >= 'a' && byte <= 'z';
}

// -?(0|[1-9][0-9]*)(\.[0-9]+)?([eE][+-]?[0-9]+)?
bool isJsonNumber(std::string_view text)
{
    const auto digits = [&text] {
        const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
        text.remove_prefix(end);
        return end > 0;
    };
    const auto drop = [&text](std::string_view any) {
        const bool found = !text.empty() && any.find(text.front()) != std::string_view::npos;
        text.remove_prefix(found ? 1 : 0);
        return found;
    };
    drop("-");
    if (!drop("0") && !digits()) {
        return false;
    }
    if (drop(".") && !digits()) {
        return false;
    }
    if (drop("eE")) {
        drop("+-");
        if (!digits()) {
            return false;
        }
    }
    return text.empty();
}

} // namespace

JsonTokens::JsonTokens(BlockSource &source)
    : m_source(source)
    , m_block(source.next())
{
    constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";
    if (m_block.startsWith(byteOrderMark)) {
        m_at = byteOrderMark.size();
    }
}

int JsonTokens::peek()
{
    if (m_at == m_block.size()) {
        m_before += m_block.size();
        m_at = 0;
        m_block = m_source.next();
    }
    return m_at < m_block.size() ? static_cast<uchar>(m_block.at(m_at)) : atEnd;
}

int JsonTokens::take()
{
    const int byte = peek();
    if (byte != atEnd) {
        ++m_at;
    }
    if (byte == '\n') {
        ++m_line;
        m_lineBegin = bytesRead();
    }
    return byte;
}

void JsonTokens::skipBlanks()
{
    for (int byte = peek(); byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r'; byte = peek()) {
        take();
    }
}

JsonToken JsonTokens::next()
{
    skipBlanks();
    if (m_expected == Expected::CommaOrEnd) {
        if (peek() == m_open.back()) {
            return close();
        }
        if (take() != ',') {
            fail(u"a comma or the closing bracket is missing"_s);
        }
        m_expected = m_open.back() == '}' ? Expected::Name : Expected::Value;
        skipBlanks();
    }
    switch (m_expected) {
    case Expected::Nothing:
        if (peek() != atEnd) {
            fail(u"something follows the end"_s);
        }
        return JsonToken::End;
    case Expected::NameOrEnd:
    case Expected::ValueOrEnd:
        if (peek() == m_open.back()) {
            return close();
        }
        return m_expected == Expected::NameOrEnd ? name() : value();
    case Expected::Name:
        return name();
    default:
        return value();
    }
}

void JsonTokens::skip(JsonToken first)
{
    qsizetype depth = first == JsonToken::ObjectBegin || first == JsonToken::ArrayBegin ? 1 : 0;
    while (depth > 0) {
        switch (next()) {
        case JsonToken::ObjectBegin:
        case JsonToken::ArrayBegin:
            ++depth;
            break;
        case JsonToken::ObjectEnd:
        case JsonToken::ArrayEnd:
            --depth;
            break;
        default:
            break;
        }
    }
}

JsonToken JsonTokens::open(JsonToken token, char closing)
{
    take();
    if (m_open.size() == deepest) {
        fail(u"the brackets nest too deep"_s);
    }
    m_open.push_back(closing);
    m_expected = closing == '}' ? Expected::NameOrEnd : Expected::ValueOrEnd;
    return token;
}

JsonToken JsonTokens::close()
{
    take();
    const char closing = m_open.back();
    m_open.pop_back();
    valueDone();
    return closing == '}' ? JsonToken::ObjectEnd : JsonToken::ArrayEnd;
}

JsonToken JsonTokens::name()
{
    if (peek() != '"') {
        fail(u"a name in quotes is missing"_s);
    }
    readString();
    skipBlanks();
    if (take() != ':') {
        fail(u"a colon is missing"_s);
    }
    m_expected = Expected::Value;
    return JsonToken::Name;
}

JsonToken JsonTokens::value()
{
    const int byte = peek();
    if (byte == '{') {
        return open(JsonToken::ObjectBegin, '}');
    }
    if (byte == '[') {
        return open(JsonToken::ArrayBegin, ']');
    }
    JsonToken token = JsonToken::String;
    if (byte == '"') {
        readString();
    } else if (isNumberByte(byte)) {
        readNumber();
        token = JsonToken::Number;
    } else {
        readWord();
        token = JsonToken::Word;
    }
    valueDone();
    return token;
}

void JsonTokens::valueDone()
{
    m_expected = m_open.empty() ? Expected::Nothing : Expected::CommaOrEnd;
}

void JsonTokens::keep(QByteArrayView bytes)
{
    if (m_text.size() + bytes.size() <= longestText) {
        m_text += bytes;
    }
}

void JsonTokens::keep(char32_t character)
{
    keep(QString::fromUcs4(&character, 1).toUtf8());
}

void JsonTokens::readString()
{
    m_text.clear();
    take();
    for (int byte = take(); byte != '"'; byte = take()) {
        if (byte == atEnd) {
            fail(u"the text ends inside quotes"_s);
        }
        if (byte < ' ') {
            fail(u"a control character stands in quotes"_s);
        }
        if (byte == '\\') {
            readEscape();
        } else {
            const char character = static_cast<char>(byte);
            keep(QByteArrayView(&character, 1));
        }
    }
}

void JsonTokens::readEscape()
{
    constexpr std::string_view letters = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    const int letter = take();
    if (letter != 'u') {
        const std::size_t found =
            letter == atEnd ? std::string_view::npos : letters.find(static_cast<char>(letter));
        if (found == std::string_view::npos) {
            fail(u"an unknown letter follows a backslash"_s);
        }
        keep(QByteArrayView(&meanings[found], 1));
        return;
    }
    char32_t unit = readUnit();
    if (QChar::isHighSurrogate(unit) && peek() == '\\') {
        take();
        if (peek() != 'u') {
            keep(char32_t {QChar::ReplacementCharacter});
            readEscape();
            return;
        }
        take();
        const char32_t low = readUnit();
        unit = QChar::isLowSurrogate(low)
            ? QChar::surrogateToUcs4(static_cast<char16_t>(unit), static_cast<char16_t>(low))
            : char32_t {QChar::ReplacementCharacter};
    }
    keep(QChar::isSurrogate(unit) ? char32_t {QChar::ReplacementCharacter} : unit);
}

char32_t JsonTokens::readUnit()
{
    QByteArray digits;
    for (int i = 0; i < 4; ++i) {
        const int byte = take();
        digits += static_cast<char>(byte == atEnd ? ' ' : byte);
    }
    bool good = false;
    const char32_t unit = digits.toUInt(&good, 16);
    if (!good || digits.contains('+') || digits.contains(' ')) {
        fail(u"no four hexadecimal digits follow \\u"_s);
    }
    return unit;
}

void JsonTokens::readNumber()
{
    m_text.clear();
    constexpr qsizetype longestNumber = 64;
    while (isNumberByte(peek())) {
        if (m_text.size() == longestNumber) {
            fail(u"a number is too long"_s);
        }
        m_text += static_cast<char>(take());
    }
    if (!isJsonNumber({m_text.constData(), static_cast<std::size_t>(m_text.size())})) {
        fail(u"a number is none"_s);
    }
}

void JsonTokens::readWord()
{
    m_text.clear();
    constexpr qsizetype longestWord = 5;
    while (isLetter(peek()) && m_text.size() < longestWord) {
        m_text += static_cast<char>(take());
    }
    if (m_text != "true" && m_text != "false" && m_text != "null") {
        fail(u"a value is missing"_s);
    }
}

void JsonTokens::fail(const QString &reason) const
{
    throw RuntimeError(ErrorName::TypeMismatch,
        u"Reading %1, line %2, byte %3 of it: %4"_s.arg(m_source.fileName())
            .arg(m_line)
            .arg(bytesRead() - m_lineBegin + 1)
            .arg(reason));
}

} // namespace quillon
