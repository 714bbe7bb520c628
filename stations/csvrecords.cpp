#include "stations/csvrecords.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

bool isUtf16(const QString &encoding)
{
    return encoding == "UTF-16"_L1;
}

} // namespace

TextDecoder::TextDecoder(const QString &encoding)
    : m_decoder(isUtf16(encoding) ? QStringDecoder::Utf16 : QStringDecoder::Utf8)
{
    if (const int page = encoding.toInt(); page > 0) {
        m_codePage.emplace(page);
    }
}

QString TextDecoder::decode(QByteArrayView bytes)
{
    return m_codePage ? m_codePage->decode(bytes) : QString(m_decoder.decode(bytes));
}

QString guessedEncoding(QByteArrayView beginning, const CodePage &codePage)
{
    if (beginning.startsWith("\xFF\xFE") || beginning.startsWith("\xFE\xFF")) {
        return u"UTF-16"_s;
    }
    // A character may be cut at the end.
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(beginning);
    return text.contains(QChar::ReplacementCharacter) ? QString::number(codePage.number()) : u"UTF-8"_s;
}

QChar guessedSeparator(QStringView beginning)
{
    constexpr std::array separators {u';', u',', u'\t', u'|'};
    std::array<int, separators.size()> counts {};
    bool quoted = false;
    for (const QChar c : beginning) {
        if (c == u'"') {
            quoted = !quoted;
        } else if (!quoted && c == u'\n') {
            break;
        } else if (const auto *found = std::ranges::find(separators, c.unicode());
                   !quoted && found != separators.end()) {
            ++counts.at(static_cast<std::size_t>(found - separators.begin()));
        }
    }
    return separators.at(static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin()));
}

CsvRecords::CsvRecords(BlockSource &source, const QString &encoding, QChar separator)
    : m_source(source)
    , m_decoder(encoding)
    , m_separator(separator)
{
}

std::optional<QChar> CsvRecords::take()
{
    while (m_at == m_block.size()) {
        if (m_ended) {
            return {};
        }
        const QByteArray bytes = m_source.next();
        m_ended = bytes.isEmpty();
        m_block = m_decoder.decode(bytes);
        m_at = 0;
    }
    return m_block.at(m_at++);
}

void CsvRecords::endField()
{
    if (m_record.fields.size() < mostFields) {
        m_record.fields += std::exchange(m_field, {});
    } else {
        m_record.tooLong = true;
        m_field.clear();
    }
}

std::optional<CsvRecord> CsvRecords::next()
{
    m_record = {.line = m_line, .fields = {}, .tooLong = false};
    m_field.clear();
    m_size = 0;
    bool quoted = false; // between quotes
    bool doubled = false; // after a quote that may end them
    for (auto c = take(); c; c = take()) {
        if (*c == u'\n') {
            ++m_line;
        }
        if (++m_size > longestRecord) {
            // A quote that nothing closes must not swallow the rest of the file.
            m_record.tooLong = true;
            quoted = false;
        }
        if (quoted && *c != u'"') {
            m_field += *c;
        } else if (quoted) {
            quoted = false;
            doubled = true;
            continue;
        } else if (*c == u'"' && (doubled || m_field.isEmpty()) && !m_record.tooLong) {
            if (doubled) {
                m_field += u'"';
            }
            quoted = true;
        } else if (*c == m_separator && !m_record.tooLong) {
            endField();
        } else if (*c == u'\n') {
            if (m_field.endsWith(u'\r')) {
                m_field.chop(1);
            }
            if (m_record.fields.isEmpty() && m_field.trimmed().isEmpty() && !m_record.tooLong) {
                m_record.line = m_line;
                m_field.clear();
                m_size = 0;
                continue;
            }
            endField();
            return m_record;
        } else if (!m_record.tooLong) {
            m_field += *c;
        }
        doubled = false;
    }
    if (m_record.fields.isEmpty() && m_field.trimmed().isEmpty() && !m_record.tooLong) {
        return {};
    }
    endField();
    return m_record;
}

} // namespace quillon
