#include "core/logfields.h"

#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<LogColumn, logFieldCount> fields {{
    {GridColumn::PiCode, LogField::PiCode, &LogEntry::piCode, u"PI Code", 600, true, u"D3C3", true},
    {GridColumn::DateTime, LogField::DateTime, nullptr, u"Date/Time", 1700, true, u"30/08/2008 20:08:00",
        true},
    {GridColumn::Prop, LogField::Prop, &LogEntry::prop, u"Prop", 600, true, u"Tropo", true},
    {GridColumn::Freq, LogField::Freq, &LogEntry::freq, u"Freq", 600, true, u"107.90", true},
    {GridColumn::Transmitter, LogField::Transmitter, &LogEntry::transmitter, u"Transmitter", 1600, false,
        u"Hohenpeissenberg", true},
    {GridColumn::Country, LogField::Country, &LogEntry::country, u"Country", 1000, true, u"D", true},
    {GridColumn::Notes, LogField::Notes, &LogEntry::notes, u"Notes", 1600, false, u"Notes", true},
    {GridColumn::RdsName, LogField::RdsName, &LogEntry::rdsName, u"RDS Name", 1800, true, u"RADIO_88", true},
    {GridColumn::Power, LogField::Power, &LogEntry::power, u"Power", 500, true, u"100", true},
    {GridColumn::Dist, LogField::Dist, &LogEntry::dist, u"Dist", 600, false, u"2345.6", true},
    {GridColumn::FMList, LogField::FMList, &LogEntry::fmlist, u"FMList", 600, true, u"None", false},
    {GridColumn::Uid, LogField::Uid, &LogEntry::uid, u"UID", 800, true, u"1234567", false},
}};

// In the order of the grid, behind the fields: a new one is a row more.
constexpr std::array<LogColumn, allColumnCount - gridColumnCount> derived {{
    {GridColumn::Azimuth, {}, nullptr, u"Azimuth", 600, true, u"359", false},
    {GridColumn::Locator, {}, nullptr, u"Locator", 800, true, u"JO50VA", false},
    {GridColumn::Muf, {}, nullptr, u"MUF", 600, true, u"136.9", false},
    {GridColumn::New, {}, nullptr, u"New", 1600, false, u"PI Site ITU Year", false},
}};

// The place in `fields` of each column.
constexpr auto places = [] {
    std::array<std::size_t, gridColumnCount> result {};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        result[static_cast<std::size_t>(fields[i].column)] = i;
    }
    return result;
}();

} // namespace

std::span<const LogColumn, logFieldCount> logFields()
{
    return fields;
}

const LogColumn &logField(LogField field)
{
    return fields[static_cast<std::size_t>(field)];
}

const LogColumn &logColumn(GridColumn column)
{
    const auto place = static_cast<std::size_t>(column);
    return place < places.size() ? fields[places[place]] : derived[place - places.size()];
}

FieldValue fieldValue(const LogEntry &entry, LogField field)
{
    const LogColumn &row = logField(field);
    return row.text ? FieldValue(entry.*row.text) : FieldValue(entry.dateTime);
}

void setFieldValue(LogEntry &entry, LogField field, const FieldValue &value)
{
    const LogColumn &row = logField(field);
    if (row.text) {
        entry.*row.text = std::get<QString>(value);
    } else {
        entry.dateTime = std::get<DateTime>(value);
    }
}

QString cellText(const LogEntry &entry, GridColumn column)
{
    switch (column) {
    case GridColumn::DateTime:
        return generalText(entry.dateTime);
    case GridColumn::FMList:
        return fmlistDisplay(entry.fmlist);
    case GridColumn::Notes:
        return entry.notes.contains("\r\n"_L1) ? QString(entry.notes).replace("\r\n"_L1, " "_L1)
                                               : entry.notes;
    default: {
        const auto text = logColumn(column).text;
        return text ? entry.*text : QString();
    }
    }
}

} // namespace quillon
