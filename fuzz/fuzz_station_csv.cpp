// A CSV of stations of any bytes, encoding, separator and columns: what is kept is a stations.lst, each
// record is kept or refused, and plain records come back as they were written.

#include "require.h"

#include "stations/csvrecords.h"
#include "stations/stationcsv.h"
#include "stations/stationlist.h"

#include <QBuffer>

#include <array>
#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

qint64 recordsOf(const QByteArray &text, const CsvLayout &layout)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    BlockSource source(buffer, u"list.csv"_s, {});
    CsvRecords records(source, layout.encoding, layout.separator);
    qint64 count = 0;
    qint64 line = 0;
    while (const auto record = records.next()) {
        require(record->line > line && !record->fields.isEmpty());
        require(record->fields.size() <= CsvRecords::mostFields);
        line = record->line;
        ++count;
    }
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 2) {
        return 0;
    }
    const std::array encodings {u"UTF-8"_s, u"UTF-16"_s, u"1252"_s, u"1250"_s};
    const std::array separators {u';', u',', u'\t', u'|'};
    CsvLayout layout {.encoding = encodings.at(data[0] % 4),
        .separator = separators.at(data[0] / 4 % 4),
        .hasHeading = data[0] >= 128,
        .columns = {}};
    for (std::size_t i = 0; i < stationColumnCount; ++i) {
        layout.columns.at(i) = static_cast<int>((i + data[1]) % 14) - 1;
    }
    const QByteArray text(reinterpret_cast<const char *>(data + 2), static_cast<qsizetype>(size - 2));
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    BlockSource source(buffer, u"list.csv"_s, {});
    StationCollector stations;
    readStationCsv(source, layout, stations);
    const QByteArray file = stations.file();
    const StationList list(file, u"stations.lst"_s);
    require(list.leftOut() == 0 && list.count() == file.count('\n') - 1);
    const qint64 records = recordsOf(text, layout);
    require(list.count() + stations.refusedCount() <= std::max<qint64>(records, 0));
    const QString guessed = guessedEncoding(text, CodePage(1252));
    require(guessed == "UTF-8"_L1 || guessed == "UTF-16"_L1 || guessed == "1252"_L1);
    (void)columnsOf(QString::fromUtf8(text).split(guessedSeparator(QString::fromUtf8(text))));
    return 0;
}
