#include "core/foldedtext.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillon {

namespace {

// Latin, Greek and Cyrillic: all letters of the code pages.
constexpr char16_t tableSize = 0x530;

// Letters that Unicode does not decompose, in lower case.
constexpr std::array<std::pair<char16_t, std::u16string_view>, 16> shapes {{
    {u'ł', u"l"},
    {u'ø', u"o"},
    {u'đ', u"d"},
    {u'ð', u"d"},
    {u'ħ', u"h"},
    {u'ı', u"i"},
    {u'ŧ', u"t"},
    {u'ŋ', u"n"},
    {u'ĸ', u"k"},
    {u'ƒ', u"f"},
    {u'ə', u"e"},
    {u'æ', u"ae"},
    {u'œ', u"oe"},
    {u'þ', u"th"},
    {u'ß', u"ss"},
    {u'ς', u"σ"},
}};

void appendBase(std::u16string &out, char16_t c)
{
    const auto shape = std::ranges::find(shapes, c, &std::pair<char16_t, std::u16string_view>::first);
    if (shape == shapes.end()) {
        out += c;
    } else {
        out += shape->second;
    }
}

// One character, or the two halves of one, with all that Unicode knows about it.
void appendAnalysed(std::u16string &out, QStringView character)
{
    const auto decomposed = [](const QString &text) {
        return text.normalized(QString::NormalizationForm_KD);
    };
    const QString parts = decomposed(decomposed(character.toString()).toCaseFolded());
    for (const QChar part : parts) {
        if (part.unicode() < u' ') {
            out += u' ';
        } else if (part.category() != QChar::Mark_NonSpacing) {
            appendBase(out, part.unicode());
        }
    }
}

std::array<std::u16string, tableSize> analysedLetters()
{
    std::array<std::u16string, tableSize> letters;
    for (char16_t c = 0; c < tableSize; ++c) {
        appendAnalysed(letters[c], QStringView(&c, 1));
    }
    return letters;
}

// Those of the letters that become one whatever follows; 0 for the others.
std::array<char16_t, tableSize> singleLetters(const std::array<std::u16string, tableSize> &letters)
{
    std::array<char16_t, tableSize> singles {};
    std::ranges::transform(letters, singles.begin(),
        [](const std::u16string &letter) { return letter.size() == 1 ? letter.front() : u'\0'; });
    singles[u'\r'] = 0;
    return singles;
}

// As far as each letter becomes one, which is nearly always all of the text. Returns how far that is.
qsizetype appendSingles(std::u16string &out, QStringView text, const std::array<char16_t, tableSize> &singles)
{
    const std::size_t before = out.size();
    out.resize(before + static_cast<std::size_t>(text.size()));
    std::size_t place = before;
    for (const QChar character : text) {
        const char16_t c = character.unicode();
        if (c >= tableSize || singles[c] == 0) {
            break;
        }
        out[place++] = singles[c];
    }
    out.resize(place);
    return static_cast<qsizetype>(place - before);
}

} // namespace

void appendFolded(std::u16string &out, QStringView text)
{
    static const std::array<std::u16string, tableSize> letters = analysedLetters();
    static const std::array<char16_t, tableSize> singles = singleLetters(letters);
    qsizetype i = appendSingles(out, text, singles);
    for (; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            continue; // as the line feed behind it
        }
        if (c < tableSize) {
            out += letters[c];
        } else {
            const bool isPair =
                text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
            appendAnalysed(out, text.mid(i, isPair ? 2 : 1));
            i += isPair ? 1 : 0;
        }
    }
}

QString folded(QStringView text)
{
    std::u16string out;
    appendFolded(out, text);
    // Not a conversion: that would take a byte order mark at the beginning away.
    return QStringView(out).toString();
}

} // namespace quillon
