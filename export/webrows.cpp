#include "export/webrows.h"

#include "core/textencoding.h"
#include "export/cells.h"

namespace quillon {

using namespace Qt::StringLiterals;

void MonthCounts::count(QStringView prop)
{
    ++total;
    if (prop == u"MS") {
        ++ms;
    } else if (prop == u"Tropo") {
        ++tropo;
    } else if (prop == u"Es") {
        ++es;
    } else {
        ++other;
    }
}

QString MonthCounts::text() const
{
    return u"%1|%2|%3|%4|%5|"_s.arg(total).arg(tropo).arg(es).arg(ms).arg(other);
}

void appendTableRow(QByteArray &page, const QStringList &cells, const CodePage &codePage)
{
    page += "<tr><td>";
    bool first = true;
    for (const QString &cell : cells) {
        if (!first) {
            page += "</td><td>";
        }
        first = false;
        codePage.appendEncoded(page, cell);
    }
    page += "</td></tr>\r\n";
}

QStringList receptionCells(
    const CellSource &grid, int row, DateTime moment, const MonthNames &months, const CodePage &codePage)
{
    const auto cell = [&](GridColumn column) { return blankCell(grid.text(row, column)); };
    return {
        formatted(moment, logDatePattern, months),
        cell(GridColumn::PiCode),
        cell(GridColumn::Freq),
        cell(GridColumn::RdsName),
        cell(GridColumn::Country),
        blankCell(W3CEncode(grid.text(row, GridColumn::Transmitter), codePage)),
        cell(GridColumn::Dist),
        cell(GridColumn::Power),
        blankCell(grid.text(row, GridColumn::Notes).replace("\r\n"_L1, "<br>"_L1)),
        cell(GridColumn::Prop),
    };
}

QStringList monthCells(DateTime month, const MonthCounts &counts, bool hasMap, const MonthNames &months)
{
    const QString file = monthFileName(month, months);
    const QString map =
        hasMap ? u"<a href=\"quillon_mapview.htm?kml="_s + file + u".kml\">View Map</a>"_s : QString();
    return {
        blankCell(formatted(month, u"mmm-yyyy", months)),
        u"<a href=\""_s + file + u".htm\">View Log</a>"_s,
        blankCount(QString::number(counts.ms)),
        blankCount(QString::number(counts.es)),
        blankCount(QString::number(counts.tropo)),
        blankCount(QString::number(counts.other)),
        blankCell(QString::number(counts.total)),
        blankCell(map),
    };
}

QString monthFileName(DateTime month, const MonthNames &months)
{
    return u"quillon_log_"_s + formatted(month, u"yyyy-mmm", months);
}

} // namespace quillon
