#include "stats/figuretable.h"

#include "platform/numbers.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString momentText(DateTime moment, FigureColumn::Kind kind)
{
    return kind == FigureColumn::Kind::Day ? dateText(moment) : generalText(moment);
}

QString isoText(DateTime moment, FigureColumn::Kind kind)
{
    const QStringView pattern = kind == FigureColumn::Kind::Day ? u"yyyy-mm-dd" : u"yyyy-mm-dd hh:nn:ss";
    return formatted(moment, pattern, MonthNames());
}

// A text from the air may begin like a formula; an apostrophe makes it text.
QString csvText(QString text)
{
    constexpr QStringView formulaSigns = u"=+-@\t\r";
    if (!text.isEmpty() && formulaSigns.contains(text.front())) {
        text.prepend(u'\'');
    }
    return u'"' + text.replace(u'"', "\"\""_L1) + u'"';
}

QString csvFigure(const FigureColumn &column, const Figure &figure)
{
    if (const auto *text = std::get_if<QString>(&figure)) {
        return csvText(*text);
    }
    if (const auto *moment = std::get_if<DateTime>(&figure)) {
        return isoText(*moment, column.kind);
    }
    return figureText(column, figure);
}

} // namespace

QString figureText(const FigureColumn &column, const Figure &figure)
{
    if (const auto *text = std::get_if<QString>(&figure)) {
        return *text;
    }
    if (const auto *number = std::get_if<double>(&figure)) {
        return plainText(rounded(*number, column.places));
    }
    const auto *moment = std::get_if<DateTime>(&figure);
    return moment ? momentText(*moment, column.kind) : QString();
}

QByteArray figureCsv(const FigureTable &table, const std::vector<int> &rows)
{
    QString text;
    const auto appendRow = [&](const auto &cell) {
        for (std::size_t column = 0; column < table.columns.size(); ++column) {
            text += (column > 0 ? u"," : u"") + cell(column);
        }
        text += "\r\n"_L1;
    };
    appendRow([&](std::size_t column) { return csvText(table.columns[column].caption); });
    for (const int row : rows) {
        appendRow([&](std::size_t column) {
            return csvFigure(table.columns[column], table.figure(row, static_cast<int>(column)));
        });
    }
    return "\xef\xbb\xbf" + text.toUtf8();
}

} // namespace quillon
