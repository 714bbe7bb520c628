#include "export/textlog.h"

#include "export/cells.h"
#include "export/exportrows.h"
#include "geo/distance.h"
#include "platform/files.h"

#include <array>
#include <chrono>
#include <cmath>
#include <optional>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString orUnknown(const QString &text, QLatin1StringView unknown)
{
    return text.isEmpty() ? QString(unknown) : text;
}

QString distanceText(const QString &dist, bool inMiles)
{
    const auto number = numeric(dist);
    const float value = number ? static_cast<float>(*number) : 0.0F;
    // What a single cannot hold is written as it stands, as what is no number.
    if (!number || !std::isfinite(value)) {
        return dist;
    }
    const double kilometres = inMiles ? value * kilometresPerMile : static_cast<double>(value);
    return plainText(rounded(kilometres, 0)) + u" Km"_s;
}

QString receptionLine(const ExportRows &rows, int row, DateTime moment, bool inMiles)
{
    const QString freq = rows.text(row, GridColumn::Freq);
    const QString rdsName = orUnknown(rows.text(row, GridColumn::RdsName), "????????"_L1);
    const QString piCode = orUnknown(rows.text(row, GridColumn::PiCode), "????"_L1);
    const QString transmitter = orUnknown(rows.text(row, GridColumn::Transmitter), "???"_L1);
    const QString country = orUnknown(rows.text(row, GridColumn::Country), "???"_L1);
    // The hours and minutes of "dd/mm/yyyy hh:nn:ss".
    const std::array<char, 19> general = generalCharacters(moment);
    return QLatin1StringView(general.data() + 11, 5) + u"z "_s
        + leftAligned(freq.contains(u'.') ? freq : freq + u".0"_s, 5) + u' ' + leftAligned(country, 3) + u' '
        + leftAligned(rdsName, 8) + u' ' + leftAligned(piCode, 4) + u' ' + transmitter + u' '
        + distanceText(rows.text(row, GridColumn::Dist), inMiles);
}

} // namespace

QByteArray textLog(const LogRows &logRows, const TextLogRange &range, const Regional &regional, int *listed)
{
    const MonthNames months = exportMonths(regional);
    ExportRows rows(logRows, regional);
    QByteArray out;
    const auto addLine = [&](const QString &line) {
        regional.codePage.appendEncoded(out, line);
        out += "\r\n";
    };
    if (!range.mapLink.isEmpty()) {
        addLine(range.mapLink + u"\r\n"_s);
    }
    addLine(u"Time  Freq   ITU PS       PI   TX           Distance"_s);
    addLine(u"----------------------------------------------------"_s);

    int count = 0;
    QString day;
    std::optional<std::chrono::days> dayNumber;
    QString previousDay;
    QString previousProp;
    for (int row = rows.count(); row >= 1; --row) {
        const DateTime moment = rows.at(row);
        if (moment < range.from || moment > range.to) {
            continue;
        }
        const auto number = std::chrono::floor<std::chrono::days>(std::chrono::seconds(moment.seconds));
        if (dayNumber != number) {
            dayNumber = number;
            day = formatted(moment, u"dd-mmm-yyyy", months);
        }
        const QString prop = rows.text(row, GridColumn::Prop);
        if (day != previousDay || prop != previousProp) {
            previousDay = day;
            previousProp = prop;
            addLine(u"\r\n"_s + day + u' ' + prop + u"\r\n"_s);
        }
        addLine(receptionLine(rows, row, moment, range.inMiles));
        ++count;
    }
    addLine(u"\r\n*Quillon Export:\r\n "_s + formatted(range.from, logDatePattern, months) + u" to \r\n "_s
        + formatted(range.to, logDatePattern, months) + u"\r\n "_s + QString::number(count) + u" Entries"_s);
    if (listed) {
        *listed = count;
    }
    return out;
}

TextLogFile writeTextLog(const QString &applicationDir, const LogRows &rows, const TextLogRange &range,
    const Regional &regional, FileCalls &calls)
{
    TextLogFile file {resolveFile(applicationDir, u"quillon.txt"_s), 0};
    writeFile(file.path, textLog(rows, range, regional, &file.count), calls);
    return file;
}

} // namespace quillon
