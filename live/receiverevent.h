#pragma once

#include "live/rdsgroup.h"
#include "platform/datetime.h"

#include <QList>
#include <QString>

#include <variant>

namespace quillon {

/// The receiver is on this frequency now.
struct Tuned
{
    qint64 hertz = 0; ///< 0: it was tuned, the source does not say where to
    bool together = false; ///< what is told in the same moment is of this frequency, not late from before
};

/// A group was received.
struct GroupHeard
{
    RdsGroup group;
};

/// How far a PI code can be trusted that comes without its group.
enum class PiTrust {
    Doubtful, ///< the source itself doubts it
    Asked, ///< the receiver's answer to a question; an old one can linger
    Group, ///< decoded from one group
    Told, ///< the source is certain
};

/// A PI code as the source has decoded it.
struct PiHeard
{
    quint16 pi = 0;
    PiTrust trust = PiTrust::Told;
};

/// The source has no PI code now.
struct PiGone
{
};

/// A programme service name as the source has decoded it.
struct PsHeard
{
    QString ps;
};

/// A radiotext as the source has decoded it.
struct RadiotextHeard
{
    QString text;
};

/// An extended country code as the source has decoded it.
struct EccHeard
{
    quint8 ecc = 0;
};

/// Alternative frequencies as the source has decoded them.
struct FrequenciesHeard
{
    QList<int> kilohertz;
};

/// A clock time as the source has decoded it, in UTC.
struct ClockHeard
{
    DateTime utc;
};

/// The strength of the signal.
struct SignalHeard
{
    double value = 0;
    QStringView unit; ///< a literal: "dBf", "dBFS", or empty where the source names none
};

/// What the source takes the station for.
struct StationGuess
{
    quint16 pi = 0;
    QString site;
    QString country; ///< ITU letter code
    QString kilowatts;
    QString latitude; ///< decimal degrees, or empty
    QString longitude;
    QString uid; ///< identifier in FMList

    bool operator==(const StationGuess &) const = default;
};

/// One thing that a source of live data tells.
using ReceiverEvent = std::variant<Tuned, GroupHeard, PiHeard, PiGone, PsHeard, RadiotextHeard, EccHeard,
    FrequenciesHeard, ClockHeard, SignalHeard, StationGuess>;

} // namespace quillon
