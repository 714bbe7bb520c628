#pragma once

#include "core/logbook.h"
#include "core/picode.h"

#include <QSet>
#include <QString>

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace quillon {

/// What is new about a station, as far as the log can tell.
struct NewMarks
{
    bool pi = false; ///< the log has no entry with this PI code
    bool frequency = false; ///< it has, but none on this frequency
    bool country = false; ///< perhaps a new country

    bool operator==(const NewMarks &) const = default;
};

/// The marks in words: "new PI, perhaps new country", or an empty text.
[[nodiscard]] QString marksText(const NewMarks &marks);

/// What the log knows of stations, for quick questions.
class KnownStations
{
public:
    KnownStations() = default;
    /// The entries of the log that are not deleted.
    explicit KnownStations(const Logbook &log);
    /// The log has changed: these entries came, went or are others now. What was only added is added; the
    /// rest takes a look at the whole log.
    void follow(const Logbook &log, std::span<const qint32> changed);

    /// A station that will stand in the log as soon as that can be written.
    void add(qint64 hertz, quint16 pi);

    [[nodiscard]] bool knows(quint16 pi) const { return m_codes[pi]; }
    /// `hertz` counts as the log writes it, to 10 kHz.
    [[nodiscard]] bool knows(qint64 hertz, quint16 pi) const { return m_pairs.contains(pair(hertz, pi)); }

    /// What is new about a station. Without a frequency (0) there is no mark for it. A country is perhaps new
    /// when the extended country code names one that the log does not have, or, without that code, when the
    /// log has no PI code of its first digit.
    [[nodiscard]] NewMarks marks(qint64 hertz, quint16 pi, std::optional<quint8> ecc) const;

private:
    [[nodiscard]] static quint64 pair(qint64 hertz, quint16 pi);
    void addFrom(const Logbook &log, qint32 first);
    void add(const LogEntry &entry);

    qint32 m_counted = 0; ///< so many entries of the log are known
    std::vector<bool> m_codes = std::vector<bool>(0x10000);
    QSet<quint64> m_pairs;
    QSet<QString> m_countries;
    std::array<bool, 16> m_digits {};
};

/// The ITU letter code of the country that a PI code's first digit and an extended country code stand for
/// (IEC 62106, annex D, European area); empty when it is not known.
[[nodiscard]] QString countryOf(quint16 pi, quint8 ecc);

} // namespace quillon
