#include "stations/stationcsv.h"

#include "stations/csvrecords.h"

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t piColumn = 1;
constexpr std::size_t namesColumn = 2;

constexpr std::array<StationColumn, stationColumnCount> columns {{
    {u"Frequency (MHz)", true, &StationTexts::frequency, u"freq|frequency|mhz|freq mhz|frequency mhz|qrg"},
    {u"PI code", false, &StationTexts::pi, u"pi|pi code|picode|rds pi|pi-code"},
    {u"RDS name", false, &StationTexts::names, u"ps|rds|rds name|rds ps|ps name"},
    {u"Programme", false, &StationTexts::programme, u"program|programme|station|name|station name|prog"},
    {u"Site", true, &StationTexts::site, u"site|location|transmitter|city|tx|tx site|location name"},
    {u"Country", true, &StationTexts::country, u"itu|country|itu code|ctry"},
    {u"Latitude", true, &StationTexts::latitude, u"lat|latitude|lat dec"},
    {u"Longitude", true, &StationTexts::longitude, u"lon|long|lng|longitude|lon dec"},
    {u"Power (kW)", false, &StationTexts::kilowatts, u"kw|erp|power|erp kw|power kw|pmax"},
    {u"Polarisation", false, &StationTexts::polarisation, u"pol|polarisation|polarization"},
    {u"Regional PI", false, &StationTexts::regionalPi, u"pireg|pi reg|regional pi|pi regional"},
    {u"UID", false, &StationTexts::id, u"id|uid|fmlist id|station id"},
}};

QString plainHeading(QStringView heading)
{
    QString plain = heading.toString().toLower();
    for (QChar &c : plain) {
        if (!c.isLetterOrNumber() && c != u'-') {
            c = u' ';
        }
    }
    return plain.simplified();
}

QString cell(const QStringList &fields, int column)
{
    return column >= 0 && column < fields.size() ? fields.at(column) : QString();
}

} // namespace

const std::array<StationColumn, stationColumnCount> &stationColumns()
{
    return columns;
}

std::array<int, stationColumnCount> columnsOf(const QStringList &heading)
{
    std::array<int, stationColumnCount> found {};
    found.fill(-1);
    for (int i = 0; i < heading.size(); ++i) {
        const QString name = plainHeading(heading.at(i));
        for (std::size_t field = 0; field < stationColumnCount; ++field) {
            if (found.at(field) < 0 && columns.at(field).headings.split(u'|').contains(QStringView(name))) {
                found.at(field) = i;
                break;
            }
        }
    }
    return found;
}

QStringList missingColumns(const CsvLayout &layout)
{
    QStringList missing;
    for (std::size_t field = 0; field < stationColumnCount; ++field) {
        if (columns.at(field).needed && layout.columns.at(field) < 0) {
            missing += columns.at(field).caption.toString();
        }
    }
    if (layout.columns.at(piColumn) < 0 && layout.columns.at(namesColumn) < 0) {
        missing += u"%1 or %2"_s.arg(columns.at(piColumn).caption, columns.at(namesColumn).caption);
    }
    return missing;
}

void readStationCsv(BlockSource &source, const CsvLayout &layout, StationCollector &stations)
{
    CsvRecords records(source, layout.encoding, layout.separator);
    bool heading = layout.hasHeading;
    while (const auto record = records.next()) {
        if (std::exchange(heading, false)) {
            continue;
        }
        if (record->tooLong) {
            stations.refuse(record->line, u"it is too long"_s);
            continue;
        }
        StationTexts texts;
        for (std::size_t field = 0; field < stationColumnCount; ++field) {
            texts.*columns.at(field).text = cell(record->fields, layout.columns.at(field));
        }
        // In names of a list of stations a blank parts two names.
        texts.names = texts.names.trimmed().replace(u' ', u'_');
        texts.site = texts.site.trimmed();
        stations.add(texts, record->line);
    }
}

} // namespace quillon
