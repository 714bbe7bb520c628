#pragma once

#include "stations/blocksource.h"
#include "stations/stationcollector.h"

#include <QStringList>
#include <QStringView>

#include <array>

namespace quillon {

/// A field of a station that a column can hold.
struct StationColumn
{
    QStringView caption; ///< "PI code"
    bool needed = false;
    QString StationTexts::*text;
    QStringView headings; ///< what the column is called in files, lower case, "|" between
};

inline constexpr std::size_t stationColumnCount = 12;
[[nodiscard]] const std::array<StationColumn, stationColumnCount> &stationColumns();

/// How a CSV is read.
struct CsvLayout
{
    QString encoding;
    QChar separator = u';';
    bool hasHeading = true; ///< the first record names the columns
    std::array<int, stationColumnCount> columns {}; ///< from 0; -1 where the file has none

    bool operator==(const CsvLayout &) const = default;
};

/// The columns by what the heading calls them; each column stands once.
[[nodiscard]] std::array<int, stationColumnCount> columnsOf(const QStringList &heading);

/// The captions of the needed columns that the layout lacks. A PI code and a name are needed by turns.
[[nodiscard]] QStringList missingColumns(const CsvLayout &layout);

/// Reads the records into `stations`; a record that cannot be kept is refused with its line. A site such as
/// "Region, Site" is its last part. Throws what the source throws.
void readStationCsv(BlockSource &source, const CsvLayout &layout, StationCollector &stations);

} // namespace quillon
