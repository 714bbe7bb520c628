#include "live/grouplines.h"

#include <QByteArray>

#include <charconv>

namespace quillon {

namespace {

constexpr QByteArrayView lost = "----";
constexpr qsizetype digitsOfBlock = 4;

/// Decimal digits from `begin` to the next character that is none.
std::optional<int> takeNumber(QByteArrayView &text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number);
    if (error != std::errc() || number < 0) {
        return {};
    }
    text = text.sliced(end - text.begin());
    return number;
}

std::optional<int> takeNumber(QByteArrayView &text, char before)
{
    if (!text.startsWith(before)) {
        return {};
    }
    text = text.sliced(1);
    return takeNumber(text);
}

std::optional<qint64> spyTime(QByteArrayView text)
{
    const auto year = takeNumber(text);
    const auto month = takeNumber(text, '/');
    const auto day = takeNumber(text, '/');
    const auto hour = takeNumber(text, ' ');
    const auto minute = takeNumber(text, ':');
    const auto second = takeNumber(text, ':');
    if (!year || !month || !day || !hour || !minute || !second || *year < 1970) {
        return {};
    }
    const auto moment = fromCivil({*year, *month, *day, *hour, *minute, *second});
    if (!moment) {
        return {};
    }
    const auto hundredths = takeNumber(text, '.');
    return moment->seconds * 1000 + (hundredths && *hundredths < 100 ? *hundredths * 10 : 0);
}

} // namespace

std::optional<quint32> hexNumber(QByteArrayView digits)
{
    if (digits.isEmpty() || digits.size() > 8) {
        return {};
    }
    quint32 number = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number, 16);
    return error == std::errc() && end == digits.end() ? std::optional(number) : std::nullopt;
}

std::optional<RdsGroup> groupOf(QByteArrayView text)
{
    RdsGroup group;
    for (std::size_t i = 0; i < group.blocks.size(); ++i) {
        while (text.startsWith(' ')) {
            text = text.sliced(1);
        }
        if (text.size() < digitsOfBlock) {
            return {};
        }
        const QByteArrayView word = text.first(digitsOfBlock);
        text = text.sliced(digitsOfBlock);
        if (word == lost) {
            group.states[i] = BlockState::Lost;
        } else if (const auto block = hexNumber(word)) {
            group.blocks[i] = static_cast<quint16>(*block);
        } else {
            return {};
        }
    }
    return text.trimmed().isEmpty() ? std::optional(group) : std::nullopt;
}

QByteArray groupText(const RdsGroup &group, QByteArrayView separator)
{
    QByteArray text;
    for (std::size_t i = 0; i < group.blocks.size(); ++i) {
        if (i > 0) {
            text.append(separator);
        }
        if (group.states[i] == BlockState::Lost) {
            text.append(lost);
        } else {
            text.append(QByteArray::number(group.blocks[i], 16).rightJustified(digitsOfBlock, '0').toUpper());
        }
    }
    return text;
}

std::optional<ReceiverEvent> spyStreamEvent(QByteArrayView line)
{
    line = line.trimmed();
    if (line.startsWith("RESET")) {
        return Tuned {};
    }
    if (const auto group = groupOf(line)) {
        return GroupHeard {*group};
    }
    return {};
}

std::optional<SpyLine> spyLine(QByteArrayView line)
{
    const qsizetype at = line.indexOf('@');
    const auto group = groupOf((at < 0 ? line : line.first(at)).trimmed());
    if (!group) {
        return {};
    }
    return SpyLine {*group, at < 0 ? std::nullopt : spyTime(line.sliced(at + 1).trimmed())};
}

} // namespace quillon
