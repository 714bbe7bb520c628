#pragma once

#include "rds-signal/blockcode.h"
#include "rds-signal/stationlist.h"

#include <QByteArray>

namespace quillon::rdssignal {

/// The bytes of a text in the RDS character set, `length` of them, filled with blanks; "?" for a character
/// that the set does not have.
[[nodiscard]] QByteArray rdsBytes(QStringView text, qsizetype length);

/// Group 0A, segment 0 to 3 of the name, with this pair of alternative frequencies.
[[nodiscard]] RdsGroup nameGroup(quint16 pi, const QByteArray &ps, int segment, quint16 frequencies = 0xE0CD);
/// Group 0B: the same without frequencies.
[[nodiscard]] RdsGroup nameGroupB(quint16 pi, const QByteArray &ps, int segment);
/// Group 1A with the extended country code.
[[nodiscard]] RdsGroup countryGroup(quint16 pi, quint8 ecc);
/// Group 2A, segment 0 to 15 of the 64 bytes of the radiotext.
[[nodiscard]] RdsGroup textGroup(quint16 pi, const QByteArray &text, int segment, bool flag = false);
/// Group 2B, segment 0 to 15 of the 32 bytes of the radiotext.
[[nodiscard]] RdsGroup textGroupB(quint16 pi, const QByteArray &text, int segment, bool flag = false);
/// Group 4A with this minute, UTC.
[[nodiscard]] RdsGroup clockGroup(quint16 pi, DateTime moment);

/// The endless row of groups of one station: mostly name and radiotext, the country code now and then, the
/// clock at each full minute.
class GroupMaker
{
public:
    explicit GroupMaker(const SignalStation &station);

    [[nodiscard]] RdsGroup next();
    /// Milliseconds from the beginning to the end of the last group.
    [[nodiscard]] qint64 elapsed() const;

private:
    SignalStation m_station;
    QByteArray m_ps;
    QByteArray m_text;
    int m_segments = 0; ///< of the text
    qint64 m_groups = 0;
    qint64 m_minutes = 0;
    int m_ofName = 0;
    int m_ofText = 0;
};

} // namespace quillon::rdssignal
