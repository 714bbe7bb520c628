#include "live/srcp.h"

#include "live/grouplines.h"
#include "live/rdscharset.h"
#include "live/rdsreader.h"
#include "platform/strangerstext.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace quillon {

namespace {

constexpr qsizetype longestDatagram = 2'048;
constexpr int mostPairs = 64;
constexpr qsizetype digitsOfPs = 2 * longestPs;

bool isKey(QByteArrayView key, const char *name)
{
    return key.compare(name, Qt::CaseInsensitive) == 0;
}

/// The bytes that pairs of digits write; nothing when one of them is no number.
std::optional<QByteArray> bytesOf(QByteArrayView digits)
{
    if (digits.isEmpty() || digits.size() % 2 != 0) {
        return {};
    }
    QByteArray bytes;
    for (qsizetype i = 0; i < digits.size(); i += 2) {
        QByteArrayView pair = digits.sliced(i, 2);
        pair = pair.startsWith(' ') ? pair.sliced(1) : pair;
        const auto byte = hexNumber(pair);
        if (!byte) {
            return {};
        }
        bytes.append(static_cast<char>(*byte));
    }
    return bytes;
}

QString textOfTuner(QByteArrayView value)
{
    return QString::fromUtf8(value).replace(u'_', u' ');
}

QString psOf(QByteArrayView value)
{
    if (value.size() == digitsOfPs) {
        if (const auto bytes = bytesOf(value)) {
            return rdsText(*bytes);
        }
    }
    return textOfTuner(value);
}

QString radiotextOf(QByteArrayView value, bool asText)
{
    const auto bytes = asText ? std::nullopt : bytesOf(value);
    if (!bytes) {
        return textOfTuner(value);
    }
    const qsizetype end = bytes->indexOf('\r');
    return rdsText(end < 0 ? QByteArrayView(*bytes) : QByteArrayView(*bytes).first(end));
}

/// Codes of alternative frequencies, two digits each.
FrequenciesHeard frequenciesOf(QByteArrayView value)
{
    FrequenciesHeard heard;
    for (const char byte : bytesOf(value).value_or(QByteArray())) {
        if (const auto kilohertz = alternativeKilohertz(static_cast<quint8>(byte))) {
            addFrequency(heard.kilohertz, *kilohertz);
        }
    }
    return heard;
}

std::optional<PiHeard> piOf(QByteArrayView value)
{
    constexpr qsizetype digits = 4;
    const auto pi = value.size() >= digits ? hexNumber(value.first(digits)) : std::nullopt;
    if (!pi) {
        return {};
    }
    const QByteArrayView rest = value.sliced(digits);
    if (!rest.isEmpty() && !rest.startsWith('?')) {
        return {};
    }
    return PiHeard {static_cast<quint16>(*pi), rest.isEmpty() ? PiTrust::Told : PiTrust::Doubtful};
}

class Reading
{
public:
    void take(QByteArrayView key, QByteArrayView value)
    {
        if (isKey(key, "from")) {
            m_asText = value.startsWith("TEF");
        } else if (isKey(key, "freq")) {
            takeFrequency(value);
        } else if (isKey(key, "pi")) {
            if (const auto pi = piOf(value)) {
                m_pi = *pi;
            }
        } else if (isKey(key, "ps")) {
            m_events.emplace_back(PsHeard {psOf(value).left(longestPs)});
        } else if (isKey(key, "rt1") || isKey(key, "rt2") || isKey(key, "rt")) {
            m_events.emplace_back(RadiotextHeard {radiotextOf(value, m_asText).left(longestRadiotext)});
        } else if (isKey(key, "ecc")) {
            if (const auto ecc = hexNumber(value); ecc && *ecc <= 0xFF) {
                m_events.emplace_back(EccHeard {static_cast<quint8>(*ecc)});
            }
        } else if (isKey(key, "af")) {
            if (auto heard = frequenciesOf(value); !heard.kilohertz.isEmpty()) {
                m_events.emplace_back(std::move(heard));
            }
        } else if (isKey(key, "rcvlevel")) {
            takeLevel(value);
        }
    }

    [[nodiscard]] std::vector<ReceiverEvent> events() &&
    {
        if (m_pi) {
            m_events.insert(m_events.begin(), *m_pi);
        }
        if (m_tuned) {
            m_events.insert(m_events.begin(), *m_tuned);
        }
        return std::move(m_events);
    }

private:
    void takeFrequency(QByteArrayView value)
    {
        constexpr qint64 highest = 10'000'000'000;
        bool ok = false;
        const qint64 hertz = value.toLongLong(&ok);
        if (ok && hertz > 0 && hertz <= highest) {
            m_tuned = Tuned {hertz, true};
        }
    }
    void takeLevel(QByteArrayView value)
    {
        bool ok = false;
        const double level = value.toDouble(&ok);
        if (ok && std::isfinite(level) && std::abs(level) <= 1000) {
            m_events.emplace_back(SignalHeard {level, {}});
        }
    }

    bool m_asText = false;
    std::optional<Tuned> m_tuned;
    std::optional<PiHeard> m_pi;
    std::vector<ReceiverEvent> m_events;
};

} // namespace

std::vector<ReceiverEvent> srcpEvents(QByteArrayView datagram)
{
    Reading reading;
    datagram = datagram.first(std::min(datagram.size(), longestDatagram));
    for (int pairs = 0; pairs < mostPairs && !datagram.isEmpty(); ++pairs) {
        const qsizetype end = datagram.indexOf(';');
        const QByteArrayView pair = end < 0 ? datagram : datagram.first(end);
        datagram = end < 0 ? QByteArrayView() : datagram.sliced(end + 1);
        const qsizetype equals = pair.indexOf('=');
        if (equals > 0) {
            QByteArrayView value = pair.sliced(equals + 1);
            // A blank at the beginning can be half a byte.
            while (value.endsWith('\n') || value.endsWith('\r') || value.endsWith('\0')) {
                value.chop(1);
            }
            reading.take(pair.first(equals).trimmed(), value);
        }
    }
    return std::move(reading).events();
}

QByteArray srcpAsk()
{
    return QByteArrayLiteral("freq=?");
}

QByteArray srcpTune(qint64 hertz)
{
    return "freq=" + QByteArray::number(hertz);
}

} // namespace quillon
