#include "export/shownpage.h"

#include "core/fetchahead.h"
#include "core/manyentries.h"
#include "export/markup.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// Names and notes come from the air and from the network: nothing is loaded, nothing runs.
constexpr QByteArrayView head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>)";

constexpr QByteArrayView style = R"(</title>
<style>
:root { color-scheme: light dark }
body { margin: 1rem; font-family: system-ui, sans-serif }
h1 { margin: 0; font-size: 1.4rem }
div { overflow-x: auto }
table { border-collapse: collapse; font-variant-numeric: tabular-nums }
th, td { padding: .2rem .6rem; border-bottom: 1px solid #8886; text-align: left; vertical-align: top }
th { position: sticky; top: 0; background: Canvas; white-space: nowrap }
.n { text-align: right }
@media print { th { position: static } tr { break-inside: avoid } }
</style>
</head>
<body>
)";

void appendCell(QByteArray &bytes, QByteArrayView tag, GridColumn column, const QString &text)
{
    bytes += '<';
    bytes += tag;
    bytes += isNumberColumn(column) ? R"( class="n">)" : ">";
    appendMarkup(bytes, text);
    bytes += "</"_ba + tag.first(2) + '>';
}

} // namespace

QByteArray shownPage(const ShownLog &shown)
{
    const QString made = receptionCount(static_cast<qsizetype>(shown.entries.size()))
        + u", written by Quillon on "_s + generalText(shown.now) + u" UTC"_s;
    const QString title =
        shown.callsign.isEmpty() ? u"Receptions"_s : QString(u"Receptions of "_s + shown.callsign);
    QByteArray bytes = head.toByteArray();
    appendMarkup(bytes, title);
    bytes += style;
    bytes += "<h1>";
    appendMarkup(bytes, title);
    bytes += "</h1>\n<p>";
    appendMarkup(bytes, made);
    bytes += "</p>\n<div>\n<table>\n<thead>\n<tr>";
    for (const GridColumn column : shown.columns) {
        appendCell(bytes, R"(th scope="col")", column, logColumn(column).caption.toString());
    }
    bytes += "</tr>\n</thead>\n<tbody>\n";
    for (const qint32 entry : shown.entries) {
        fetchAllAhead(shown.rows.log(), entry);
        bytes += "<tr>";
        for (const GridColumn column : shown.columns) {
            appendCell(bytes, "td", column, shown.rows.text(entry, column));
        }
        bytes += "</tr>\n";
    }
    return bytes + "</tbody>\n</table>\n</div>\n</body>\n</html>\n";
}

} // namespace quillon
