#include "export/webtemplate.h"

#include "platform/files.h"

namespace quillon {

using namespace Qt::StringLiterals;

QByteArray fillTemplate(
    QByteArrayView text, std::span<const Placeholder> placeholders, const RowWriter &writeRows)
{
    const QByteArray rows = "$RAWDATA"_ba;
    QByteArray page;
    for (const QByteArrayView templateLine : splitLines(text)) {
        QByteArray line = templateLine.toByteArray();
        for (const Placeholder &placeholder : placeholders) {
            line.replace(placeholder.name, placeholder.value);
        }
        if (line.contains(rows)) {
            writeRows(page);
            line.replace(rows, {});
        }
        page += line;
        page += "\r\n";
    }
    return page;
}

} // namespace quillon
