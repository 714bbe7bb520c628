#include "core/manyentries.h"

#include "core/typedfields.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <vector>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

bool canChange(const Logbook &log, qint32 number)
{
    return number >= 0 && number < log.count() && !isDeleted(log.entry(number));
}

QString newText(const QString &before, const QString &text, bool appended)
{
    if (!appended || before.isEmpty()) {
        return text;
    }
    return text.isEmpty() ? before : QString(before + "\r\n"_L1 + text);
}

bool breaksCell(QChar character)
{
    return character.category() == QChar::Other_Control || character == QChar::ParagraphSeparator
        || character == QChar::LineSeparator;
}

// A blank for each line break, tab and the like.
QString onOneLine(const QString &text)
{
    if (std::ranges::none_of(text, breaksCell)) {
        return text;
    }
    QString line = text;
    line.replace("\r\n"_L1, " "_L1);
    std::ranges::replace_if(line, breaksCell, QChar(u' '));
    return line;
}

// A value as an effect names it.
QString named(const QString &value)
{
    constexpr qsizetype most = 32;
    if (value.isEmpty()) {
        return u"empty"_s;
    }
    const QString line = onOneLine(value.left(most + 1));
    return line.size() > most ? QString(line.first(most - 1) + u'…') : line;
}

struct Counted
{
    QString value;
    qsizetype count = 0;
};

// The values that are replaced, the commonest first; of equally common ones the one met first.
std::vector<Counted> valuesBefore(const LogChange &change)
{
    std::vector<Counted> values;
    QHash<QString, std::size_t> places;
    for (const FieldChange &field : change.fields) {
        const QString &value = std::get<QString>(field.before);
        const auto place = places.constFind(value);
        if (place == places.cend()) {
            places.insert(value, values.size());
            values.push_back({value, 1});
        } else {
            ++values[*place].count;
        }
    }
    std::ranges::stable_sort(values, std::ranges::greater(), &Counted::count);
    return values;
}

} // namespace

LogChange editMany(const Logbook &log, std::span<const qint32> entries, std::span<const NewValue> values)
{
    LogChange change;
    for (const NewValue &value : values) {
        const QString text = typedField(value.field, value.text);
        for (const qint32 number : entries) {
            if (canChange(log, number)) {
                const LogEntry &entry = log.entry(number);
                const QString &before = entry.*logField(value.field).text;
                change.setField(number, entry, value.field, newText(before, text, value.appended));
            }
        }
    }
    return change;
}

QString effectOfMany(const LogChange &change, const NewValue &value)
{
    constexpr std::size_t most = 4;
    if (change.isEmpty()) {
        return {};
    }
    const QString text = named(typedField(value.field, value.text));
    const QString which = logField(value.field).caption + u" of "_s
        + receptionCount(static_cast<qsizetype>(change.fields.size())) + u": "_s;
    if (value.appended) {
        return which + text + u" appended"_s;
    }
    const std::vector<Counted> values = valuesBefore(change);
    QStringList told;
    qsizetype others = static_cast<qsizetype>(change.fields.size());
    for (const Counted &counted : std::span(values).first(std::min(values.size(), most))) {
        told += named(counted.value) + u" ("_s + QString::number(counted.count) + u')';
        others -= counted.count;
    }
    if (others > 0) {
        told += u"others ("_s + QString::number(others) + u')';
    }
    return which + told.join(u", "_s) + u" → "_s + text;
}

LogChange deleteMany(const Logbook &log, std::span<const qint32> entries)
{
    LogChange change;
    for (const qint32 number : entries) {
        if (canChange(log, number)) {
            change.setField(number, log.entry(number), LogField::PiCode, deletedPiCode.toString());
        }
    }
    return change;
}

QString receptionCount(qsizetype count)
{
    return QString::number(count) + (count == 1 ? u" reception"_s : u" receptions"_s);
}

QString tabSeparated(
    const LogRows &rows, std::span<const qint32> entries, std::span<const GridColumn> columns)
{
    constexpr qsizetype usual = 10; // characters of a cell
    QString text;
    text.reserve((std::ssize(entries) + 1) * std::ssize(columns) * usual);
    const auto addCell = [&](const QString &cell, bool last) {
        // Where it is pasted, a quotation mark at the beginning would begin a cell of several lines.
        const QString line = onOneLine(cell);
        text += line.startsWith(u'"') ? u'"' + QString(line).replace(u'"', u"\"\""_s) + u'"' : line;
        text += last ? u'\n' : u'\t';
    };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        addCell(logColumn(columns[i]).caption.toString(), i + 1 == columns.size());
    }
    for (const qint32 entry : entries) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            addCell(rows.text(entry, columns[i]), i + 1 == columns.size());
        }
    }
    return text;
}

} // namespace quillon
