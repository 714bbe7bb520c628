#include "import/importcolumns.h"

#include <QHash>

#include <algorithm>
#include <set>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct UseNames
{
    ColumnUse use;
    QStringView key;
    QStringView caption;
};

constexpr std::array<UseNames, columnUses.size()> names {{
    {ColumnUse::Notes, u"notes", u"To Notes, with its name"},
    {ColumnUse::Nothing, u"nothing", u"Left out"},
    {ColumnUse::DateTime, u"datetime", u"Date and time"},
    {ColumnUse::Date, u"date", u"Date"},
    {ColumnUse::Time, u"time", u"Time"},
    {ColumnUse::Epoch, u"epoch", u"Seconds since 1970"},
    {ColumnUse::UtcOffset, u"offset", u"Ahead of UTC by"},
    {ColumnUse::Freq, u"freq", u"Frequency"},
    {ColumnUse::PiCode, u"pi", u"PI code"},
    {ColumnUse::Name, u"name", u"RDS name"},
    {ColumnUse::Country, u"country", u"Country"},
    {ColumnUse::Transmitter, u"site", u"Transmitter"},
    {ColumnUse::Power, u"kw", u"Power in kW"},
    {ColumnUse::PowerWatts, u"watts", u"Power in W"},
    {ColumnUse::Dist, u"dist", u"Distance in km"},
    {ColumnUse::Prop, u"prop", u"Propagation"},
    {ColumnUse::NotesText, u"text", u"Notes"},
    {ColumnUse::Details, u"details", u"To Notes, and a PI code in it"},
    {ColumnUse::FMList, u"fmlist", u"FMList"},
    {ColumnUse::Uid, u"uid", u"UID"},
}};

const UseNames &namesOf(ColumnUse use)
{
    return *std::ranges::find(names, use, &UseNames::use);
}

// Letters and digits alone, in lower case: "PI Code" and "pi_code" are one.
QString plainWord(QStringView heading)
{
    QString word;
    for (const QChar c : heading) {
        if (c.isLetterOrNumber()) {
            word += c.toLower();
        }
    }
    return word;
}

const QHash<QString, ColumnUse> &words()
{
    using enum ColumnUse;
    static const QHash<QString, ColumnUse> known {{u"datetime"_s, DateTime}, {u"timestamp"_s, DateTime},
        {u"datetimeutc"_s, DateTime}, {u"datetimelocal"_s, DateTime}, {u"date"_s, Date}, {u"day"_s, Date},
        {u"dateutc"_s, Date}, {u"time"_s, Time}, {u"utc"_s, Time}, {u"timeutc"_s, Time}, {u"gmt"_s, Time},
        {u"utctime"_s, Time}, {u"localtime"_s, Time}, {u"timelocal"_s, Time}, {u"epoch"_s, Epoch},
        {u"unixtime"_s, Epoch}, {u"utcoffset"_s, UtcOffset}, {u"offset"_s, UtcOffset},
        {u"timeoffset"_s, UtcOffset}, {u"freq"_s, Freq}, {u"frequency"_s, Freq}, {u"mhz"_s, Freq},
        {u"khz"_s, Freq}, {u"hz"_s, Freq}, {u"freqmhz"_s, Freq}, {u"frequencymhz"_s, Freq},
        {u"freqkhz"_s, Freq}, {u"frequencykhz"_s, Freq}, {u"qrg"_s, Freq}, {u"pi"_s, PiCode},
        {u"picode"_s, PiCode}, {u"rdspi"_s, PiCode}, {u"ps"_s, Name}, {u"rdsname"_s, Name},
        {u"rdsps"_s, Name}, {u"psname"_s, Name}, {u"program"_s, Name}, {u"programme"_s, Name},
        {u"station"_s, Name}, {u"name"_s, Name}, {u"itu"_s, Country}, {u"country"_s, Country},
        {u"countryitu"_s, Country}, {u"location"_s, Transmitter}, {u"transmitter"_s, Transmitter},
        {u"city"_s, Transmitter}, {u"site"_s, Transmitter}, {u"tx"_s, Transmitter}, {u"kw"_s, Power},
        {u"power"_s, Power}, {u"powerkw"_s, Power}, {u"erp"_s, Power}, {u"erpkw"_s, Power},
        {u"w"_s, PowerWatts}, {u"watts"_s, PowerWatts}, {u"watt"_s, PowerWatts}, {u"powerw"_s, PowerWatts},
        {u"erpw"_s, PowerWatts}, {u"erpwatts"_s, PowerWatts}, {u"erpwatt"_s, PowerWatts},
        {u"powerwatts"_s, PowerWatts}, {u"dist"_s, Dist}, {u"distkm"_s, Dist}, {u"distance"_s, Dist},
        {u"distancekm"_s, Dist}, {u"qrb"_s, Dist}, {u"qrbkm"_s, Dist}, {u"km"_s, Dist}, {u"propa"_s, Prop},
        {u"prop"_s, Prop}, {u"propagation"_s, Prop}, {u"notes"_s, NotesText}, {u"note"_s, NotesText},
        {u"comment"_s, NotesText}, {u"comments"_s, NotesText}, {u"details"_s, Details}, {u"fmlist"_s, FMList},
        {u"uid"_s, Uid}, {u"id"_s, Uid}, {u"fmlistid"_s, Uid}};
    return known;
}

bool hasUse(std::span<const ImportColumn> columns, ColumnUse use)
{
    return std::ranges::find(columns, use, &ImportColumn::use) != columns.end();
}

} // namespace

QString columnUseCaption(ColumnUse use)
{
    return namesOf(use).caption.toString();
}

QString columnUseKey(ColumnUse use)
{
    return namesOf(use).key.toString();
}

std::optional<ColumnUse> columnUseOfKey(QStringView key)
{
    const auto found = std::ranges::find(names, key, &UseNames::key);
    return found == names.end() ? std::nullopt : std::optional(found->use);
}

ColumnUse guessedUse(QStringView heading)
{
    const QString word = plainWord(heading);
    return words().value(word, word.contains("offset"_L1) ? ColumnUse::UtcOffset : ColumnUse::Notes);
}

std::vector<ImportColumn> guessedColumns(std::span<const QString> heading)
{
    std::vector<ImportColumn> columns;
    // A PS is the name where there is one, and a "name" beside it the whole of it.
    const bool hasPs = std::ranges::any_of(heading, [](const QString &name) {
        const QString word = plainWord(name);
        return word == "ps"_L1 || word == "rdsps"_L1 || word == "psname"_L1 || word == "rdsname"_L1;
    });
    std::set<ColumnUse> taken;
    for (const QString &name : heading) {
        ColumnUse use = guessedUse(name);
        const QString word = plainWord(name);
        if (hasPs && (word == "name"_L1 || word == "station"_L1 || word.startsWith("program"_L1))) {
            use = ColumnUse::Notes;
        }
        if (use != ColumnUse::Details && use != ColumnUse::NotesText && !taken.insert(use).second) {
            use = ColumnUse::Notes;
        }
        columns.push_back({name, use});
    }
    return columns;
}

QString missingColumns(std::span<const ImportColumn> columns)
{
    const auto has = [&](ColumnUse use) { return hasUse(columns, use); };
    if (!has(ColumnUse::DateTime) && !has(ColumnUse::Date) && !has(ColumnUse::Epoch)) {
        return u"No column is the date"_s;
    }
    if (has(ColumnUse::Date) && !has(ColumnUse::Time)) {
        return u"No column is the time"_s;
    }
    if (!has(ColumnUse::Freq)) {
        return u"No column is the frequency"_s;
    }
    return has(ColumnUse::PiCode) || has(ColumnUse::Name) || has(ColumnUse::Details)
        ? QString()
        : u"No column is the PI code or the RDS name"_s;
}

} // namespace quillon
