#pragma once

#include "platform/datetime.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>
#include <vector>

namespace quillon::rdssignal {

/// A station whose signal is to be made.
struct SignalStation
{
    qint64 hertz = 0;
    quint16 pi = 0;
    QString ps; ///< at most eight characters count
    QString text; ///< at most 64 characters count
    std::optional<DateTime> clock; ///< UTC at the beginning
    double seconds = 10;
    quint8 ecc = 0; ///< 0: none is sent
};

/// A line `MHz;PI;PS;text;yyyy-mm-dd hh:nn;seconds;ECC`, of which the last five may be missing or empty.
/// Nothing for any other text.
[[nodiscard]] std::optional<SignalStation> readStation(QStringView line);

/// Stations, or what is wrong with their lines.
struct StationList
{
    std::vector<SignalStation> stations;
    QString wrong;
};
/// Reads a line for each station; empty ones and those that begin with "#" are left out.
[[nodiscard]] StationList readStations(const QStringList &lines);

} // namespace quillon::rdssignal
