#include "txdb/transmitters.h"

#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <algorithm>
#include <iterator>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype fieldCount = 5;

} // namespace

const Transmitter &TransmitterList::row(int index) const
{
    return m_rows[checkedIndex(index, count(), u"transmitter")];
}

SiteChanges SiteChanges::inverse() const
{
    SiteChanges result;
    std::ranges::reverse_copy(*this, std::back_inserter(result));
    for (SiteChange &change : result) {
        std::swap(change.before, change.after);
    }
    return result;
}

bool TransmitterList::add(const Transmitter &transmitter)
{
    if (const auto change = addition(transmitter)) {
        apply(*change);
    }
    const auto row = find(transmitter.name, transmitter.country);
    return row && m_rows[static_cast<std::size_t>(*row)] == transmitter;
}

std::optional<SiteChange> TransmitterList::addition(const Transmitter &transmitter) const
{
    if (transmitter.name.isEmpty() || transmitter.country.isEmpty()
        || (transmitter.latitude.isEmpty() && transmitter.longitude.isEmpty())) {
        return std::nullopt;
    }
    if (const auto known = find(transmitter.name, transmitter.country)) {
        const Transmitter &before = m_rows[static_cast<std::size_t>(*known)];
        Transmitter after = before;
        after.latitude = transmitter.latitude;
        after.longitude = transmitter.longitude;
        return before == after ? std::nullopt : std::optional(SiteChange {*known, before, after});
    }
    return count() < capacity ? std::optional(SiteChange {count(), std::nullopt, transmitter}) : std::nullopt;
}

void TransmitterList::apply(const SiteChanges &changes)
{
    for (const SiteChange &change : changes) {
        apply(change);
    }
}

void TransmitterList::apply(const SiteChange &change)
{
    if (!change.before) {
        m_rows.push_back(*change.after);
        m_index.insert({m_rows.back().name, m_rows.back().country}, count() - 1);
        return;
    }
    Transmitter &row = m_rows[checkedIndex(change.row, count(), u"transmitter")];
    m_index.remove({row.name, row.country});
    if (!change.after) {
        m_rows.pop_back();
        return;
    }
    row = *change.after;
    m_index.insert({row.name, row.country}, change.row);
}

std::optional<int> TransmitterList::find(QStringView name, QStringView country) const
{
    const auto found = m_index.constFind({name, country});
    return found == m_index.cend() ? std::nullopt : std::optional(found.value());
}

QStringList TransmitterList::namesOfCountry(QStringView country) const
{
    QStringList names;
    for (const Transmitter &row : m_rows) {
        if (row.country == country) {
            names += row.name;
        }
    }
    return names;
}

bool readTransmitters(
    TransmitterList &list, QByteArrayView file, const CodePage &codePage, const QString &fileName)
{
    int number = 0;
    bool whole = true;
    const QList<QByteArrayView> lines = splitLines(file);
    for (const QByteArrayView line : lines) {
        ++number;
        const QStringList pieces = codePage.decode(line).split(u'|');
        if (pieces.size() < fieldCount) {
            throw RuntimeError(ErrorName::SubscriptOutOfRange,
                u"Reading %1, line %2: the line has %3 pieces instead of 6: \"%4\""_s.arg(fileName,
                    QString::number(number), QString::number(pieces.size()), codePage.decode(line)));
        }
        const Transmitter read {pieces[0], pieces[1], pieces[2], pieces[3], pieces[4]};
        const auto known = list.find(read.name, read.country);
        const bool replaces = known && list.row(*known) != read;
        const bool added = list.add(read);
        whole = whole && added && !replaces && pieces.size() == fieldCount + 1 && pieces.last().isEmpty();
    }
    return whole;
}

QByteArray transmitterBytes(const TransmitterList &list, const CodePage &codePage)
{
    QByteArray bytes;
    for (const Transmitter &row : list) {
        for (const QString &field : {row.name, row.country, row.latitude, row.longitude, row.distance}) {
            codePage.appendEncoded(bytes, field);
            bytes += '|';
        }
        bytes += "\r\n";
    }
    return bytes;
}

} // namespace quillon
