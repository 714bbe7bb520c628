#pragma once

#include "live/rdsgroup.h"
#include "platform/datetime.h"

#include <QList>
#include <QString>

#include <array>
#include <bitset>
#include <optional>

namespace quillon {

/// Puts a programme service name together from its four segments.
///
/// A segment counts when the same two characters came twice without others between them, and the name is only
/// ever told whole: all four segments confirmed since the last change. So a name that changes while it is
/// received is never a mixture of two.
class PsReader
{
public:
    /// Segment 0 to 3 and its two characters. True when the name has changed.
    bool take(int segment, quint16 characters);
    /// The last whole name, eight characters; empty before there is one.
    [[nodiscard]] const QString &ps() const { return m_ps; }
    /// What stands so far: eight characters with "?" for each that is not confirmed; empty before any is.
    [[nodiscard]] QString soFar() const;

private:
    struct Segment
    {
        quint16 characters = 0;
        int times = 0;
        bool confirmed = false;
    };

    std::array<Segment, 4> m_segments;
    std::array<quint16, 4> m_name {};
    QString m_ps;
};

/// Puts a radiotext together from up to 16 segments.
///
/// The text is told when it is whole: up to its end mark or the last place there is, or, from stations that
/// send neither, when two rounds brought the same length and nothing is missing. A turned A/B flag begins a
/// new text, and so does a character other than the one that stood in its place.
class RadiotextReader
{
public:
    /// Segment 0 to 15 of `width` characters (4 in version A, 2 in B) from `characters`; those whose bit in
    /// `good` is not set are missing. True when the text has changed.
    bool take(int segment, int width, bool flag, std::array<quint8, 4> characters, unsigned good);
    /// The last whole text, without blanks at its end.
    [[nodiscard]] const QString &text() const { return m_text; }

private:
    void clear();
    [[nodiscard]] bool tell();

    std::array<quint8, 64> m_characters {};
    std::array<bool, 64> m_known {};
    std::optional<bool> m_flag;
    int m_lastSegment = -1;
    int m_end = 0; ///< one behind the last character seen
    int m_endOfRound = 0; ///< the same when the round before ended
    QString m_text;
};

/// The frequency in kHz that a code of the list of alternative frequencies stands for (IEC 62106, 87.6 to
/// 107.9 MHz); nothing for codes that stand for no frequency of the FM band.
[[nodiscard]] std::optional<int> alternativeKilohertz(int code);

/// Adds a frequency to an ascending list of at most 25, unless it is there. True when it was added.
bool addFrequency(QList<int> &frequencies, int kilohertz);

/// What the groups of one station say.
class RdsReader
{
public:
    /// What a group has changed.
    struct Changes
    {
        bool ps = false;
        bool text = false;
        bool ecc = false;
        bool frequencies = false;
        bool clock = false;
    };

    /// Reads a group: 0A and 0B (name, alternative frequencies), 1A (extended country code), 2A and 2B
    /// (radiotext), 4A (clock). Blocks that did not come through are left out.
    Changes take(const RdsGroup &group);

    [[nodiscard]] const PsReader &name() const { return m_ps; }
    [[nodiscard]] const QString &text() const { return m_text.text(); }
    /// The extended country code, once it came twice in a row.
    [[nodiscard]] std::optional<quint8> ecc() const { return m_ecc; }
    /// Alternative frequencies in kHz that came twice, ascending, at most 25.
    [[nodiscard]] const QList<int> &frequencies() const { return m_frequencies; }
    /// The time that the station told last, in UTC.
    [[nodiscard]] std::optional<DateTime> clock() const { return m_clock; }

private:
    void takeName(const RdsGroup &group, bool versionB, Changes &changes);
    void takeFrequencies(quint16 pair, Changes &changes);
    void takeEcc(quint16 block, Changes &changes);
    void takeText(const RdsGroup &group, bool versionB, Changes &changes);
    void takeClock(const RdsGroup &group, Changes &changes);

    PsReader m_ps;
    RadiotextReader m_text;
    std::optional<quint8> m_eccOnce;
    std::optional<quint8> m_ecc;
    std::bitset<256> m_frequencyOnce; ///< by their codes
    QList<int> m_frequencies;
    std::optional<DateTime> m_clock;
};

/// The moment in UTC that blocks B, C, D of a group 4A tell; nothing when it is none or the station sends
/// zeros because it has no clock.
[[nodiscard]] std::optional<DateTime> rdsClock(quint16 b, quint16 c, quint16 d);

} // namespace quillon
