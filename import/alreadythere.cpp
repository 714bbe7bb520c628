#include "import/alreadythere.h"

#include "platform/numbers.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 secondsPerMinute = 60;

// In steps of 10 kHz; nothing for a text that is no frequency.
std::optional<qint64> frequencyOf(const LogEntry &entry)
{
    constexpr double mostMegahertz = 1e9;
    constexpr double stepsPerMegahertz = 100;
    const auto freq = numeric(entry.freq);
    return freq && std::abs(*freq) < mostMegahertz ? std::optional(std::llround(*freq * stepsPerMegahertz))
                                                   : std::nullopt;
}

// A PI code and a name never mean each other.
QString piKey(const LogEntry &entry)
{
    const QString code = entry.piCode.trimmed();
    return code.isEmpty() ? QString() : u'#' + code.toUpper();
}

QString nameKey(const LogEntry &entry)
{
    const QString name = QString(entry.rdsName).replace(u'_', u' ').trimmed();
    return name.isEmpty() ? QString() : u'$' + name.toCaseFolded();
}

} // namespace

std::size_t KnownReceptions::Hash::operator()(const Place &place) const
{
    return qHashMulti(0, place.freq, place.text, place.slice);
}

KnownReceptions::KnownReceptions(int minutes)
    : m_seconds(std::clamp(minutes, 0, mostImportMinutes) * secondsPerMinute)
{
}

qint64 KnownReceptions::sliceOf(qint64 seconds) const
{
    const qint64 length = std::max(m_seconds, qint64(1));
    return seconds >= 0 ? seconds / length : -((-seconds + length - 1) / length);
}

void KnownReceptions::add(const Logbook &log)
{
    m_slices.reserve(m_slices.size() + 2 * static_cast<std::size_t>(log.count()));
    qint64 number = 0;
    for (const LogEntry &entry : log) {
        if (!isDeleted(entry)) {
            add(entry, number);
        }
        ++number;
    }
}

void KnownReceptions::add(const LogEntry &entry, qint64 number)
{
    if (const auto freq = frequencyOf(entry)) {
        addText(*freq, piKey(entry), {entry.dateTime.seconds, number});
        addText(*freq, nameKey(entry), {entry.dateTime.seconds, number});
    }
}

void KnownReceptions::addText(qint64 freq, const QString &text, const At &at)
{
    if (text.isEmpty()) {
        return;
    }
    const auto [slice, isNew] = m_slices.try_emplace({freq, text, sliceOf(at.seconds)}, Slice {at, at});
    if (!isNew) {
        if (at.seconds < slice->second.first.seconds) {
            slice->second.first = at;
        }
        if (at.seconds > slice->second.last.seconds) {
            slice->second.last = at;
        }
    }
}

std::optional<qint64> KnownReceptions::find(const LogEntry &entry) const
{
    const auto freq = frequencyOf(entry);
    if (!freq) {
        return std::nullopt;
    }
    const auto byPi = findText(*freq, piKey(entry), entry.dateTime.seconds);
    return byPi ? byPi : findText(*freq, nameKey(entry), entry.dateTime.seconds);
}

// All of a slice are near enough to each other; of the ones beside it the outermost decides.
std::optional<qint64> KnownReceptions::findText(qint64 freq, const QString &text, qint64 seconds) const
{
    if (text.isEmpty()) {
        return std::nullopt;
    }
    std::optional<At> nearest;
    const auto consider = [&](const At &at) {
        const qint64 apart = std::abs(at.seconds - seconds);
        if (apart <= m_seconds && (!nearest || apart < std::abs(nearest->seconds - seconds))) {
            nearest = at;
        }
    };
    const qint64 middle = sliceOf(seconds);
    for (const qint64 slice : {middle, middle - 1, middle + 1}) {
        if (const auto found = m_slices.find({freq, text, slice}); found != m_slices.end()) {
            consider(found->second.first);
            consider(found->second.last);
        }
    }
    return nearest ? std::optional(nearest->number) : std::nullopt;
}

std::vector<LogField> completedFields(const LogEntry &entry, const LogEntry &reception)
{
    std::vector<LogField> fields;
    for (std::size_t i = 0; i < logFields().size(); ++i) {
        const auto text = logFields()[i].text;
        const auto field = static_cast<LogField>(i);
        // A country that is still to be found out says nothing.
        const bool isSaid = text && !(reception.*text).isEmpty()
            && !(field == LogField::Country && reception.country == "TBD"_L1);
        if (isSaid && (entry.*text).isEmpty()) {
            fields.push_back(field);
        }
    }
    return fields;
}

std::vector<ImportMatch> matchedRows(const Logbook &log, std::span<const ImportRow *const> rows, int minutes)
{
    KnownReceptions inLog(minutes);
    KnownReceptions above(minutes);
    inLog.add(log);
    std::vector<ImportMatch> matches(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ImportRow &row = *rows[i];
        if (row.isRefused()) {
            continue;
        }
        if (const auto entry = inLog.find(row.entry)) {
            matches[i].entry = static_cast<qint32>(*entry);
            matches[i].completes = completedFields(log.entry(matches[i].entry), row.entry);
        } else if (const auto number = above.find(row.entry)) {
            matches[i].above = static_cast<qsizetype>(*number);
        }
        above.add(row.entry, static_cast<qint64>(i));
    }
    return matches;
}

qsizetype countAlreadyThere(const Logbook &log, std::span<const LogEntry> receptions, int minutes)
{
    KnownReceptions known(minutes);
    known.add(log);
    qsizetype count = 0;
    for (const LogEntry &reception : receptions) {
        count += known.find(reception) ? 1 : 0;
        known.add(reception, 0);
    }
    return count;
}

} // namespace quillon
