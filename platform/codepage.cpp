#include "platform/codepage.h"

#include "platform/codepage_tables.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct LanguagePage
{
    QStringView language;
    int page;
};

constexpr std::array languagePages {LanguagePage {u"bs", 1250}, LanguagePage {u"cs", 1250},
    LanguagePage {u"hr", 1250}, LanguagePage {u"hu", 1250}, LanguagePage {u"pl", 1250},
    LanguagePage {u"ro", 1250}, LanguagePage {u"sk", 1250}, LanguagePage {u"sl", 1250},
    LanguagePage {u"sq", 1250}, LanguagePage {u"be", 1251}, LanguagePage {u"bg", 1251},
    LanguagePage {u"kk", 1251}, LanguagePage {u"ky", 1251}, LanguagePage {u"mk", 1251},
    LanguagePage {u"mn", 1251}, LanguagePage {u"ru", 1251}, LanguagePage {u"sr", 1251},
    LanguagePage {u"tt", 1251}, LanguagePage {u"uk", 1251}, LanguagePage {u"el", 1253},
    LanguagePage {u"az", 1254}, LanguagePage {u"tr", 1254}, LanguagePage {u"uz", 1254},
    LanguagePage {u"et", 1257}, LanguagePage {u"lt", 1257}, LanguagePage {u"lv", 1257}};

int pageOfLocale(const QString &locale)
{
    // Serbian in Latin letters is a Central European page, unlike Serbian.
    if (locale.startsWith(u"sr"_s) && locale.contains(u"latin"_s)) {
        return 1250;
    }
    const QString language = locale.section(u'_', 0, 0).section(u'.', 0, 0).section(u'@', 0, 0).toLower();
    const auto found = std::ranges::find(languagePages, QStringView(language), &LanguagePage::language);
    return found == languagePages.end() ? 1252 : found->page;
}

// Letters with a stroke or of another shape, which Unicode does not decompose.
char16_t plainLetter(char16_t c)
{
    constexpr std::u16string_view letters = u"łŁøØđĐħĦıŧŦæÆœŒßðÐþÞŋŊĸƒəƏ–—‘’“”„‚…•−";
    constexpr std::u16string_view plain = u"lLoOdDhHitTaAoOsdDtTnNkfeE--''\"\"\"'.*-";
    static_assert(letters.size() == plain.size());
    const auto at = letters.find(c);
    return at == std::u16string_view::npos ? u'\0' : plain[at];
}

} // namespace

CodePage::CodePage(int number)
    : m_number(codePageTable(number) ? number : 1252)
{
    const CodePageTable &table = *codePageTable(m_number);
    for (std::size_t byte = 0; byte < 256; ++byte) {
        m_characters[byte] = byte < 128 ? static_cast<char16_t>(byte) : table.upper[byte - 128];
    }
    for (std::size_t i = 0; i < 128; ++i) {
        m_sorted[i] = {table.upper[i], static_cast<uchar>(i + 128)};
    }
    std::ranges::sort(m_sorted, {}, &Pair::character);
}

CodePage CodePage::fromEnvironment()
{
    bool isNumber = false;
    const int wished = qEnvironmentVariable("QUILLON_CODEPAGE").toInt(&isNumber);
    if (isNumber && codePageTable(wished)) {
        return CodePage(wished);
    }
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const QString value = qEnvironmentVariable(name);
        if (!value.isEmpty()) {
            return CodePage(pageOfLocale(value));
        }
    }
    return CodePage(1252);
}

QString CodePage::decode(QByteArrayView bytes) const
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    for (const char byte : bytes) {
        *out++ = QChar(m_characters[static_cast<uchar>(byte)]);
    }
    return text;
}

QByteArray CodePage::encode(QStringView text) const
{
    QByteArray bytes;
    bytes.reserve(text.size());
    appendEncoded(bytes, text);
    return bytes;
}

void CodePage::appendEncoded(QByteArray &bytes, QStringView text) const
{
    const qsizetype start = bytes.size();
    bytes.resize(start + text.size());
    const char *end = encodeTo(bytes.data() + start, text);
    bytes.resize(end - bytes.constData());
}

char *CodePage::encodeTo(char *out, QStringView text) const
{
    const char *const begin = out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c < 0x80) {
            *out++ = static_cast<char>(c);
            continue;
        }
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
        } else if (const int byte = exactByte(c); byte < 0 && text[i].isMark()) {
            // A combining mark of a decomposed letter: compose it with the letter before, or leave it out.
            const QString letter = text.mid(i > 0 ? i - 1 : 0, i > 0 ? 2 : 1)
                                       .toString()
                                       .normalized(QString::NormalizationForm_C);
            const int composed = letter.size() == 1 ? exactByte(letter.at(0).unicode()) : -1;
            if (composed >= 0 && out != begin) {
                out[-1] = static_cast<char>(composed);
            }
            continue;
        }
        *out++ = static_cast<char>(byteOf(QChar(c)));
    }
    return out;
}

uchar CodePage::byteOf(QChar character) const
{
    const char16_t c = character.unicode();
    if (c < 0x80) {
        return static_cast<uchar>(c);
    }
    if (const int byte = exactByte(c); byte >= 0) {
        return static_cast<uchar>(byte);
    }
    if (character.isSurrogate()) {
        return '?';
    }
    const QString decomposed = QString(character).normalized(QString::NormalizationForm_KD);
    const char16_t base = decomposed.at(0).unicode();
    if (base != c) {
        return byteOf(QChar(base));
    }
    const char16_t plain = plainLetter(base);
    return plain ? static_cast<uchar>(plain) : uchar('?');
}

int CodePage::exactByte(char16_t character) const
{
    const auto found = std::ranges::lower_bound(m_sorted, character, {}, &Pair::character);
    return found != m_sorted.end() && found->character == character ? found->byte : -1;
}

} // namespace quillon
