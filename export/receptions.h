#pragma once

#include "core/logbook.h"
#include "platform/codepage.h"
#include "txdb/transmitters.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

#include <array>
#include <span>
#include <vector>

namespace quillon {

/// An entry of the log and the transmitter it belongs to, both by number.
struct Reception
{
    int transmitter;
    qint32 entry;

    bool operator==(const Reception &) const = default;
};

/// Every entry whose Transmitter and Country are exactly the name and country of a transmitter, in the order
/// of the transmitters and, for each, of the log. Deleted entries count.
[[nodiscard]] std::vector<Reception> findReceptions(const Logbook &log, const TransmitterList &transmitters);

/// What a KML document lists of each entry: "<li>[Date/Time] [PI Code] [RDS Name] [Freq]</li>" and CR LF, in
/// the code page. Made once in log order, which is how the log lies in memory.
class ReceptionLines
{
public:
    ReceptionLines(const Logbook &log, const CodePage &codePage);

    /// The line of the entry of that number, valid as long as the object.
    [[nodiscard]] QByteArrayView of(qint32 entry) const;

private:
    void appendLine(
        std::span<const char> moment, const std::array<QStringView, 3> &texts, const CodePage &codePage);

    QByteArray m_bytes;
    std::vector<qsizetype> m_starts;
};

} // namespace quillon
