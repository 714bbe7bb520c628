#pragma once

#include "live/receiverevent.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

namespace quillon {

/// The dialogue with a receiver that speaks the language of rigctld: gqrx, rigctld itself, and others.
///
/// One question at a time, since gqrx loses what arrives together: `next` gives the line to be sent, `take`
/// the answer to it. The session first asks who is there and what it can tell, then goes round: frequency,
/// strength, and where there is RDS, PI code, name and text, then the frequency once more; what was told
/// between two different frequencies is thrown away. A name counts when three askings brought the same: what
/// gqrx holds while it changes is half the old one, half the new. After a new frequency RDS is switched off
/// and on, since gqrx keeps the PI code of the station before.
class RigctlSession
{
public:
    /// The next line to send, LF included; empty when the round is over.
    [[nodiscard]] QByteArray next();
    /// Takes the answer to the line that was sent last.
    [[nodiscard]] std::vector<ReceiverEvent> take(QByteArrayView answer);
    /// Begins the next round.
    void begin();
    /// The receiver is tuned at the next opportunity.
    void tune(qint64 hertz) { m_tuneTo = hertz; }

    /// True once the receiver has said that it decodes RDS.
    [[nodiscard]] bool hasRds() const { return m_hasRds; }

private:
    enum class Step {
        Name,
        Can,
        Off,
        On,
        Frequency,
        Strength,
        Pi,
        Ps,
        Text,
        Again,
        Tune,
        Done,
    };

    void advance();
    void takeAbilities(QByteArrayView answer);
    void takeFrequency(QByteArrayView answer, std::vector<ReceiverEvent> &events);
    void takeStrength(QByteArrayView answer, std::vector<ReceiverEvent> &events) const;
    void takeRds(QByteArrayView answer);
    void takePs(const QString &ps);

    Step m_step = Step::Name;
    bool m_isGqrx = false;
    bool m_hasRds = false;
    bool m_hasPs = false;
    bool m_hasText = false;
    bool m_retuned = false;
    qint64 m_hertz = 0;
    std::optional<qint64> m_tuneTo;
    std::optional<qint64> m_tuneSent;
    QString m_ps; ///< the last answer
    quint16 m_piOfPs = 0;
    int m_sameAnswers = 0; ///< how often it came in a row
    std::vector<ReceiverEvent> m_held; ///< what was told since the frequency was asked
};

} // namespace quillon
