#include "export/webrows.h"

#include "export/cells.h"
#include "net/textencoding.h"

#include <algorithm>
#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The elements by which a page reaches out whatever its policy: a refresh leads away, and a browser connects
// ahead to where a link, a frame or a form that is sent points, even if it then loads nothing from there.
constexpr std::array<QByteArrayView, 4> reachingOut {"<meta", "<link", "<iframe", "<form"};

bool reachesOut(QByteArrayView markup)
{
    return std::ranges::any_of(reachingOut, [markup](QByteArrayView element) {
        return markup.size() >= element.size()
            && qstrnicmp(markup.data(), element.size(), element.data(), element.size()) == 0;
    });
}

// The encoded bytes are looked at, because a character beyond the code page can become one of these letters.
void appendCell(QByteArray &page, const QString &text, const CodePage &codePage)
{
    const qsizetype from = page.size();
    codePage.appendEncoded(page, text);
    if (page.indexOf('<', from) < 0) {
        return;
    }
    const QByteArray cell = page.sliced(from);
    page.truncate(from);
    qsizetype done = 0;
    for (qsizetype at = cell.indexOf('<'); at >= 0; at = cell.indexOf('<', at + 1)) {
        if (reachesOut(QByteArrayView(cell).sliced(at))) {
            page += QByteArrayView(cell).sliced(done, at - done);
            page += "&lt;";
            done = at + 1;
        }
    }
    page += QByteArrayView(cell).sliced(done);
}

} // namespace

void ModeCounts::count(QStringView prop)
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

void appendTableRow(QByteArray &page, const QStringList &cells, const CodePage &codePage)
{
    page += "<tr><td>";
    bool first = true;
    for (const QString &cell : cells) {
        if (!first) {
            page += "</td><td>";
        }
        first = false;
        appendCell(page, cell, codePage);
    }
    page += "</td></tr>\r\n";
}

QStringList receptionCells(
    const ExportRows &rows, int row, DateTime moment, const MonthNames &months, const CodePage &codePage)
{
    const auto cell = [&](GridColumn column) { return blankCell(rows.text(row, column)); };
    return {
        formatted(moment, logDatePattern, months),
        cell(GridColumn::PiCode),
        cell(GridColumn::Freq),
        cell(GridColumn::RdsName),
        cell(GridColumn::Country),
        blankCell(W3CEncode(rows.text(row, GridColumn::Transmitter), codePage)),
        cell(GridColumn::Dist),
        cell(GridColumn::Power),
        blankCell(rows.text(row, GridColumn::Notes).replace("\r\n"_L1, "<br>"_L1)),
        cell(GridColumn::Prop),
    };
}

QStringList monthCells(DateTime month, const ModeCounts &counts, bool hasMap, const MonthNames &months)
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
