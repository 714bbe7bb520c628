#include "export/textlog.h"

#include "export/cells.h"
#include "export/griddates.h"
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

QString receptionLine(const CellSource &grid, int row, DateTime moment, bool inMiles)
{
    const QString freq = grid.text(row, GridColumn::Freq);
    const QString rdsName = orUnknown(grid.text(row, GridColumn::RdsName), "????????"_L1);
    const QString piCode = orUnknown(grid.text(row, GridColumn::PiCode), "????"_L1);
    const QString transmitter = orUnknown(grid.text(row, GridColumn::Transmitter), "???"_L1);
    const QString country = orUnknown(grid.text(row, GridColumn::Country), "???"_L1);
    // The hours and minutes of "dd/mm/yyyy hh:nn:ss".
    const std::array<char, 19> general = generalCharacters(moment);
    return QLatin1StringView(general.data() + 11, 5) + u"z "_s
        + leftAligned(freq.contains(u'.') ? freq : freq + u".0"_s, 5) + u' ' + leftAligned(country, 3) + u' '
        + leftAligned(rdsName, 8) + u' ' + leftAligned(piCode, 4) + u' ' + transmitter + u' '
        + distanceText(grid.text(row, GridColumn::Dist), inMiles);
}

} // namespace

QByteArray textLog(const CellSource &grid, const TextLogRange &range, const Regional &regional)
{
    const MonthNames months = exportMonths(regional);
    GridDates dates(grid, regional);
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
    for (int row = grid.rows() - 1; row >= 1; --row) {
        const DateTime moment = dates.at(row);
        if (moment < range.from || moment > range.to) {
            continue;
        }
        const auto number = std::chrono::floor<std::chrono::days>(std::chrono::seconds(moment.seconds));
        if (dayNumber != number) {
            dayNumber = number;
            day = formatted(moment, u"dd-mmm-yyyy", months);
        }
        const QString prop = grid.text(row, GridColumn::Prop);
        if (day != previousDay || prop != previousProp) {
            previousDay = day;
            previousProp = prop;
            addLine(u"\r\n"_s + day + u' ' + prop + u"\r\n"_s);
        }
        addLine(receptionLine(grid, row, moment, range.inMiles));
        ++count;
    }
    addLine(u"\r\n*Quillon Export:\r\n "_s + formatted(range.from, logDatePattern, months) + u" to \r\n "_s
        + formatted(range.to, logDatePattern, months) + u"\r\n "_s + QString::number(count) + u" Entries"_s);
    return out;
}

QString writeTextLog(const QString &applicationDir, const CellSource &grid, const TextLogRange &range,
    const Regional &regional, FileCalls &calls)
{
    QString path = resolveFile(applicationDir, u"quillon.txt"_s);
    writeFile(path, textLog(grid, range, regional), calls);
    return path;
}

} // namespace quillon
