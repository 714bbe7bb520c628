#include "live/jsonevents.h"

#include "geo/azimuthal.h"
#include "live/frequency.h"
#include "live/knownstations.h"
#include "live/rdsreader.h"
#include "platform/numbers.h"
#include "platform/strangerstext.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <numbers>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QJsonObject objectOf(QByteArrayView json)
{
    if (json.size() > longestJson) {
        return {};
    }
    return QJsonDocument::fromJson(QByteArray::fromRawData(json.data(), json.size())).object();
}

/// A text, or a number as a text.
QString textOf(const QJsonValue &value)
{
    if (value.isDouble()) {
        return QString::number(value.toDouble(), 'g', 15);
    }
    return strangersText(value.toString(), longestRadiotext);
}

/// Alternative frequencies in kHz: what lies in the FM band.
void takeFrequencies(const QJsonValue &value, std::vector<ReceiverEvent> &events)
{
    constexpr int lowest = 87'500;
    constexpr int highest = 108'000;
    FrequenciesHeard heard;
    const QJsonArray frequencies = value.toArray();
    for (const auto &one : frequencies) {
        const int kilohertz = one.toInt();
        if (kilohertz >= lowest && kilohertz <= highest) {
            addFrequency(heard.kilohertz, kilohertz);
        }
    }
    if (!heard.kilohertz.isEmpty()) {
        events.emplace_back(std::move(heard));
    }
}

void takeText(QStringView text, std::vector<ReceiverEvent> &events)
{
    if (!text.isEmpty()) {
        events.emplace_back(RadiotextHeard {strangersText(text, longestRadiotext)});
    }
}

std::optional<PiHeard> piOf(const QString &text)
{
    const auto pi = piCodeOf(QStringView(text).left(4));
    if (!pi) {
        return {};
    }
    const bool doubt = QStringView(text).mid(4).startsWith(u'?');
    return PiHeard {*pi, doubt ? PiTrust::Doubtful : PiTrust::Told};
}

std::optional<quint8> eccOf(const QJsonValue &value)
{
    if (value.isDouble()) {
        const double number = value.toDouble();
        return number >= 1 && number <= 0xFF ? std::optional(static_cast<quint8>(number)) : std::nullopt;
    }
    QString text = value.toString();
    text.remove(u"0x"_s, Qt::CaseInsensitive);
    bool ok = false;
    const uint ecc = text.size() <= 2 ? text.toUInt(&ok, 16) : 0;
    return ok && ecc > 0 ? std::optional(static_cast<quint8>(ecc)) : std::nullopt;
}

/// Where a distance in km and a direction in degrees lead.
void takePosition(const QJsonObject &info, const GeoPosition &home, StationGuess &guess)
{
    const auto kilometres = numeric(textOf(info["dist"_L1]));
    const auto degrees = numeric(textOf(info["azi"_L1]));
    if (!kilometres || !degrees || *kilometres < 0 || *kilometres > antipodeDistance
        || std::abs(*degrees) > 360) {
        return;
    }
    constexpr int decimals = 2; // both are told to whole numbers
    const double radians = *degrees * std::numbers::pi / 180;
    const GeoPosition place =
        AzimuthalEquidistant(home).place({*kilometres * std::sin(radians), *kilometres * std::cos(radians)});
    guess.latitude = QString::number(place.latitude, 'f', decimals);
    guess.longitude = QString::number(place.longitude, 'f', decimals);
}

std::optional<StationGuess> guessOf(
    const QJsonObject &info, quint16 pi, const std::optional<GeoPosition> &home)
{
    // It may lag a retune: it is of this station only when it says so.
    const auto ofPi = piCodeOf(info["pi"_L1].toString());
    const bool regional = info["reg"_L1].toBool();
    if (info["tx"_L1].toString().isEmpty() || (ofPi != pi && !regional)) {
        return {};
    }
    StationGuess guess;
    guess.pi = pi;
    guess.site = textOf(info["city"_L1]);
    guess.country = textOf(info["itu"_L1]);
    guess.kilowatts = textOf(info["erp"_L1]);
    guess.latitude = textOf(info["lat"_L1]);
    guess.longitude = textOf(info["lon"_L1]);
    if (home && !positionFrom(guess.latitude, guess.longitude)) {
        takePosition(info, *home, guess);
    }
    guess.uid = textOf(info["id"_L1]);
    return guess;
}

} // namespace

std::vector<ReceiverEvent> webserverEvents(QByteArrayView json, const std::optional<GeoPosition> &home)
{
    const QJsonObject object = objectOf(json);
    std::vector<ReceiverEvent> events;
    if (const auto hertz = hertzOf(textOf(object["freq"_L1]))) {
        events.emplace_back(Tuned {*hertz});
    }
    const auto pi = piOf(object["pi"_L1].toString());
    if (pi) {
        events.emplace_back(*pi);
    }
    if (const QJsonValue strength = object["sig"_L1]; strength.isDouble() || strength.isString()) {
        bool ok = true;
        const double value = strength.isDouble() ? strength.toDouble() : strength.toString().toDouble(&ok);
        if (ok && std::isfinite(value) && std::abs(value) <= 1000) {
            events.emplace_back(SignalHeard {value, u"dBf"});
        }
    }
    if (!pi) {
        return events;
    }
    if (const QString ps = object["ps"_L1].toString(); !ps.trimmed().isEmpty() && ps != "?"_L1) {
        events.emplace_back(PsHeard {strangersText(ps, longestPs)});
    }
    const bool second = object["rt_flag"_L1].toInt() != 0;
    takeText(object[second ? "rt1"_L1 : "rt0"_L1].toString(), events);
    if (const auto ecc = eccOf(object["ecc"_L1])) {
        events.emplace_back(EccHeard {*ecc});
    }
    takeFrequencies(object["af"_L1], events);
    if (auto guess = guessOf(object["txInfo"_L1].toObject(), pi->pi, home)) {
        events.emplace_back(*std::move(guess));
    }
    return events;
}

std::optional<GeoPosition> webserverHome(QByteArrayView json)
{
    const QJsonObject object = objectOf(json);
    return positionFrom(textOf(object["qthLatitude"_L1]), textOf(object["qthLongitude"_L1]));
}

std::vector<ReceiverEvent> redseaEvents(QByteArrayView json)
{
    const QJsonObject object = objectOf(json);
    std::vector<ReceiverEvent> events;
    const QString code = object["pi"_L1].toString();
    const auto pi = code.startsWith("0x"_L1) ? piCodeOf(QStringView(code).mid(2)) : std::nullopt;
    if (!pi || object["stream"_L1].toInt() != 0) {
        return events;
    }
    events.emplace_back(PiHeard {*pi, PiTrust::Group});
    if (const QString ps = object["ps"_L1].toString(); !ps.isEmpty()) {
        events.emplace_back(PsHeard {strangersText(ps, longestPs)});
    }
    takeText(object["radiotext"_L1].toString(), events);
    if (const auto ecc = eccOf(object["ecc"_L1])) {
        events.emplace_back(EccHeard {*ecc});
    }
    takeFrequencies(object["alt_frequencies_a"_L1], events);
    const QDateTime clock = QDateTime::fromString(object["clock_time"_L1].toString().left(40), Qt::ISODate);
    if (clock.isValid()) {
        events.emplace_back(ClockHeard {DateTime {clock.toSecsSinceEpoch()}});
    }
    return events;
}

} // namespace quillon
