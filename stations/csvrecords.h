#pragma once

#include "platform/codepage.h"
#include "stations/blocksource.h"

#include <QStringDecoder>
#include <QStringList>

#include <optional>

namespace quillon {

/// The text of a file's bytes, block by block.
class TextDecoder
{
public:
    /// "UTF-8", "UTF-16", or the number of a code page such as "1252".
    explicit TextDecoder(const QString &encoding);

    /// The text of the next bytes; what is no character becomes U+FFFD.
    [[nodiscard]] QString decode(QByteArrayView bytes);

private:
    std::optional<CodePage> m_codePage;
    QStringDecoder m_decoder;
};

/// The encoding that the beginning of a file is most likely in: by its byte order mark, UTF-8 when it is
/// valid UTF-8, else the code page.
[[nodiscard]] QString guessedEncoding(QByteArrayView beginning, const CodePage &codePage);

/// The sign, of ";", ",", tab and "|", that stands oftenest in the first line outside quotes.
[[nodiscard]] QChar guessedSeparator(QStringView beginning);

/// A line of a CSV (RFC 4180, with any separator), or several where quotes hold line breaks.
struct CsvRecord
{
    qint64 line = 0; ///< where it begins, from 1
    QStringList fields;
    bool tooLong = false; ///< what does not fit is not in `fields`
};

/// The records of a CSV file of any size, one after the other. A record is at most 64 Ki characters and 256
/// fields long; what follows them is passed over up to the next line end.
class CsvRecords
{
public:
    static constexpr qsizetype longestRecord = 65'536;
    static constexpr qsizetype mostFields = 256;

    CsvRecords(BlockSource &source, const QString &encoding, QChar separator);

    /// The next record that is no empty line; nothing at the end. Throws what the source throws.
    [[nodiscard]] std::optional<CsvRecord> next();

private:
    [[nodiscard]] std::optional<QChar> take();
    void endField();

    BlockSource &m_source;
    TextDecoder m_decoder;
    QChar m_separator;
    QString m_block;
    qsizetype m_at = 0;
    bool m_ended = false;
    qint64 m_line = 1;

    CsvRecord m_record;
    QString m_field;
    qsizetype m_size = 0;
};

} // namespace quillon
