#pragma once

#include "geo/position.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

namespace quillon {

/// One transmitter of a station, as a list of stations knows it.
struct ListedStation
{
    int kilohertz = 0;
    std::optional<quint16> pi;
    std::optional<quint16> regionalPi; ///< that it sends at other times, or that its region has
    QString names; ///< programme service names, blanks between them, "_" for a blank inside one
    QString programme;
    QString region;
    QString site;
    QString country; ///< ITU letters, or as in the log
    GeoPosition place;
    double kilowatts = 0; ///< 0 when not known
    QString polarisation;
    bool inactive = false;
    QString id; ///< identifier in FMList, or empty

    bool operator==(const ListedStation &) const = default;
};

/// The frequencies that a list may hold, in kHz.
inline constexpr int lowestKilohertz = 64'000;
inline constexpr int highestKilohertz = 110'000;

/// The frequency of a text in MHz, to the nearest kHz: "98.5" and "98,50" are 98500. Nothing for what is no
/// number or lies outside the range.
[[nodiscard]] std::optional<int> kilohertzOf(QStringView megahertz);

/// The first line of `stations.lst`.
inline constexpr QByteArrayView stationListHeading = "Quillon stations 1";
/// The longest line of it, in bytes.
inline constexpr qsizetype longestStationLine = 4'096;

/// The line of `stations.lst` of a station, without a line end: its fields in the order of the structure,
/// latitude before longitude, each followed by "|", in UTF-8. The texts hold no "|" and no line break.
[[nodiscard]] QByteArray stationLine(const ListedStation &station);

/// What a line of `stations.lst` holds, as views of it.
struct StationFields
{
    int kilohertz = 0;
    std::optional<quint16> pi;
    std::optional<quint16> regionalPi;
    QByteArrayView names;
    QByteArrayView programme;
    QByteArrayView region;
    QByteArrayView site;
    QByteArrayView country;
    GeoPosition place;
    double kilowatts = 0;
    QByteArrayView polarisation;
    bool inactive = false;
    QByteArrayView id;

    /// The same as texts of their own.
    [[nodiscard]] ListedStation station() const;
};

/// The fields of a line; nothing for one that stationLine cannot have written.
[[nodiscard]] std::optional<StationFields> stationFields(QByteArrayView line);

} // namespace quillon
