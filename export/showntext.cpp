#include "export/showntext.h"

#include "core/fetchahead.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype widest = 60;

QString shownCell(const LogRows &rows, qint32 entry, GridColumn column)
{
    QString text = rows.text(entry, column);
    // What was typed and what the air brings may break the line.
    std::ranges::replace_if(
        text, [](QChar c) { return c.category() == QChar::Other_Control; }, QChar(u' '));
    return text;
}

std::vector<qsizetype> widths(const ShownLog &shown)
{
    std::vector<qsizetype> result;
    for (const GridColumn column : shown.columns) {
        qsizetype width = logColumn(column).caption.size();
        for (const qint32 entry : shown.entries) {
            width = std::max(width, std::min(widest, shown.rows.text(entry, column).size()));
        }
        result.push_back(width);
    }
    return result;
}

} // namespace

QByteArray shownText(const ShownLog &shown)
{
    const std::vector<qsizetype> width = widths(shown);
    QByteArray bytes;
    const auto addLine = [&](auto &&textOf) {
        QString line;
        for (std::size_t i = 0; i < shown.columns.size(); ++i) {
            const QString text = textOf(shown.columns[i], width[i]);
            line += isNumberColumn(shown.columns[i]) ? text.rightJustified(width[i])
                                                     : text.leftJustified(width[i]);
            line += "  "_L1;
        }
        while (line.endsWith(u' ')) {
            line.chop(1);
        }
        bytes += line.toUtf8() + "\r\n";
    };
    addLine([](GridColumn column, qsizetype) { return logColumn(column).caption.toString(); });
    addLine([](GridColumn, qsizetype columnWidth) { return QString(columnWidth, u'-'); });
    for (const qint32 entry : shown.entries) {
        fetchAllAhead(shown.rows.log(), entry);
        addLine([&](GridColumn column, qsizetype) { return shownCell(shown.rows, entry, column); });
    }
    return bytes;
}

} // namespace quillon
