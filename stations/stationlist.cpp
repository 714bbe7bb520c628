#include "stations/stationlist.h"

#include "platform/runtimeerror.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

QString countsText(const StationCounts &counts)
{
    const auto several = [](int count, const QString &one, const QString &many) -> QString {
        return QString::number(count) + u' ' + (count == 1 ? one : many);
    };
    return several(counts.stations, u"station"_s, u"stations"_s) + u" at "_s
        + several(counts.sites, u"site"_s, u"sites"_s) + u" in "_s
        + several(counts.countries, u"country"_s, u"countries"_s);
}

StationList::StationList(QByteArray file, const QString &fileName)
    : m_file(std::move(file))
{
    if (m_file.isEmpty()) {
        return;
    }
    if (lineAt(0) != stationListHeading) {
        throw RuntimeError(ErrorName::TypeMismatch,
            u"Reading %1, line 1: it does not begin with \"%2\""_s.arg(
                fileName, QString::fromLatin1(stationListHeading)));
    }
    qsizetype number = 1;
    for (qsizetype begin = m_file.indexOf('\n'); begin >= 0 && begin + 1 < m_file.size();
         begin = m_file.indexOf('\n', begin + 1)) {
        ++number;
        const auto fields = stationFields(lineAt(begin + 1));
        if (fields && count() < capacity) {
            m_lines.push_back({fields->kilohertz, begin + 1});
        } else if (m_leftOut++ == 0) {
            m_firstLeftOut = number;
        }
    }
    std::ranges::stable_sort(m_lines, {}, &Line::kilohertz);
}

QByteArrayView StationList::lineAt(qint64 begin) const
{
    const QByteArrayView rest = QByteArrayView(m_file).sliced(begin);
    const qsizetype end = rest.indexOf('\n');
    const QByteArrayView line = end < 0 ? rest : rest.first(end);
    return line.endsWith('\r') ? line.chopped(1) : line;
}

std::vector<ListedStation> StationList::on(
    int kilohertz, const std::function<bool(const StationFields &)> &wanted) const
{
    std::vector<ListedStation> stations;
    for (auto line = std::ranges::lower_bound(m_lines, kilohertz, {}, &Line::kilohertz);
         line != m_lines.end() && line->kilohertz == kilohertz; ++line) {
        const auto fields = stationFields(lineAt(line->begin));
        if (fields && wanted(*fields)) {
            stations.push_back(fields->station());
        }
    }
    return stations;
}

StationCounts StationList::counts() const
{
    QSet<std::pair<QByteArrayView, QByteArrayView>> sites;
    QSet<QByteArrayView> countries;
    for (const Line &line : m_lines) {
        if (const auto fields = stationFields(lineAt(line.begin))) {
            sites.insert({fields->site, fields->country});
            countries.insert(fields->country);
        }
    }
    return {static_cast<int>(count()), static_cast<int>(sites.size()), static_cast<int>(countries.size())};
}

} // namespace quillon
