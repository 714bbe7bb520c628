#include "export/showncsv.h"

#include "core/fetchahead.h"
#include "platform/numbers.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

bool needsApostrophe(const QString &text)
{
    return !text.isEmpty() && u"=+-@'"_s.contains(text.front()) && !numeric(text);
}

bool needsQuotes(const QByteArray &cell)
{
    return cell.contains(',') || cell.contains('"') || cell.contains('\r') || cell.contains('\n');
}

void appendCell(QByteArray &bytes, const QString &text)
{
    QByteArray cell = text.toUtf8();
    if (needsApostrophe(text)) {
        cell.prepend('\'');
    }
    bytes += needsQuotes(cell) ? '"' + cell.replace('"', "\"\"") + '"' : cell;
}

} // namespace

QByteArray shownCsv(const ShownLog &shown)
{
    QByteArray bytes;
    const auto addRow = [&](auto &&textOf) {
        const qsizetype begin = bytes.size();
        for (const GridColumn column : shown.columns) {
            if (column != shown.columns.front()) {
                bytes += ',';
            }
            appendCell(bytes, textOf(column));
        }
        // A row of one empty cell would be an empty line, which readers skip.
        bytes += bytes.size() == begin ? "\"\"\r\n" : "\r\n";
    };
    addRow([](GridColumn column) { return logColumn(column).caption.toString(); });
    for (const qint32 entry : shown.entries) {
        fetchAllAhead(shown.rows.log(), entry);
        addRow([&](GridColumn column) { return dataText(shown.rows, entry, column); });
    }
    return bytes;
}

} // namespace quillon
