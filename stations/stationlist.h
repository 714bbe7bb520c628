#pragma once

#include "stations/station.h"

#include <QByteArray>

#include <functional>
#include <vector>

namespace quillon {

/// The name of the file in the application directory.
inline constexpr QStringView stationListName = u"stations.lst";

/// What a list of stations holds.
struct StationCounts
{
    int stations = 0;
    int sites = 0; ///< told apart by name and country
    int countries = 0;

    bool operator==(const StationCounts &) const = default;
};

/// "3077 stations at 181 sites in 53 countries".
[[nodiscard]] QString countsText(const StationCounts &counts);

/// The stations of a `stations.lst`: the bytes of the file, and where each frequency begins in them.
class StationList
{
public:
    /// The most stations that a list may hold; what follows them is not read.
    static constexpr qsizetype capacity = 1'000'000;

    StationList() = default;
    /// The lines of the file; those that hold no station are left out and counted. One with another heading
    /// throws "Type mismatch", naming `fileName`.
    StationList(QByteArray file, const QString &fileName);

    [[nodiscard]] qsizetype count() const { return static_cast<qsizetype>(m_lines.size()); }
    /// How many lines were left out, and the number of the first of them (from 1).
    [[nodiscard]] qsizetype leftOut() const { return m_leftOut; }
    [[nodiscard]] qsizetype firstLeftOut() const { return m_firstLeftOut; }

    /// Those on exactly this frequency that `wanted` takes, in the order of the file.
    [[nodiscard]] std::vector<ListedStation> on(
        int kilohertz, const std::function<bool(const StationFields &)> &wanted) const;

    [[nodiscard]] StationCounts counts() const;

private:
    struct Line
    {
        int kilohertz = 0;
        qint64 begin = 0;
    };

    [[nodiscard]] QByteArrayView lineAt(qint64 begin) const;

    QByteArray m_file;
    std::vector<Line> m_lines; ///< by frequency
    qsizetype m_leftOut = 0;
    qsizetype m_firstLeftOut = 0;
};

} // namespace quillon
