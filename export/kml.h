#pragma once

#include "core/logbook.h"
#include "export/months.h"
#include "export/receptions.h"
#include "platform/regional.h"
#include "txdb/transmitters.h"

#include <QByteArray>
#include <QHash>

#include <optional>
#include <vector>

namespace quillon {

// KML 2.1 documents of transmitters: lines ended by CR LF, in the code page although they declare UTF-8.

/// Every transmitter of the list, without its receptions.
[[nodiscard]] QByteArray transmitterKml(const TransmitterList &transmitters, const CodePage &codePage);

/// Every transmitter of the list, heard or not, with its receptions.
[[nodiscard]] QByteArray logbookKml(
    const Logbook &log, const TransmitterList &transmitters, const CodePage &codePage);

/// Documents of the heard transmitters only, with their names encoded. The receptions are searched once, at
/// construction; the transmitters must outlive the object and stay as they are.
class HeardKml
{
public:
    HeardKml(const Logbook &log, const TransmitterList &transmitters, const Regional &regional);

    /// All heard transmitters with all their receptions.
    [[nodiscard]] QByteArray full() const;

    /// The transmitters heard in the calendar month of `month`, with their receptions in it; nothing when no
    /// entry of that month belongs to a transmitter.
    [[nodiscard]] std::optional<QByteArray> month(DateTime month) const;

private:
    [[nodiscard]] QByteArray document(const QString &folder, const std::vector<Reception> &receptions) const;

    const TransmitterList &m_transmitters;
    CodePage m_codePage;
    MonthNames m_monthNames;
    MonthKeys m_keys;
    std::vector<Reception> m_receptions;
    ReceptionLines m_lines;
    QHash<int, std::vector<Reception>> m_byMonth;
};

} // namespace quillon
