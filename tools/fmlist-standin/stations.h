#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <vector>

namespace quillon::standin {

/// One line of the station list: nine fields separated by ";" (frequency, PI, PS, country, "region, site",
/// kW, latitude, longitude, identifier), in Windows-1252.
struct Station
{
    double frequency = 0; ///< MHz
    QByteArray pi;
    QByteArray ps; ///< comparable, see `comparableName`
    QByteArray line; ///< without its line end
};

/// The stations of a list; lines that do not begin with a frequency and two more fields are left out.
[[nodiscard]] std::vector<Station> readStations(const QByteArray &list);

/// A PS in the form in which "_" and blank, upper and lower case are the same.
[[nodiscard]] QByteArray comparableName(const QByteArray &ps);

/// The lines of the stations on that frequency with that PI and PS; an empty one fits all.
[[nodiscard]] QByteArrayList matchingLines(
    const std::vector<Station> &stations, double frequency, const QByteArray &pi, const QByteArray &ps);

} // namespace quillon::standin
