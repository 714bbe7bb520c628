#include "stations/station.h"

#include "core/picode.h"
#include "platform/numbers.h"

#include <array>
#include <charconv>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t fieldCount = 14;
using Pieces = std::array<QByteArrayView, fieldCount>;

std::optional<Pieces> piecesOf(QByteArrayView line)
{
    Pieces pieces;
    for (QByteArrayView &piece : pieces) {
        const qsizetype end = line.indexOf('|');
        if (end < 0) {
            return {};
        }
        piece = line.first(end);
        line = line.sliced(end + 1);
    }
    return line.isEmpty() ? std::optional(pieces) : std::nullopt;
}

template<class Number>
bool readAll(QByteArrayView text, Number &value, auto... format)
{
    const auto read = std::from_chars(text.begin(), text.end(), value, format...);
    return read.ec == std::errc() && read.ptr == text.end();
}

bool readPi(QByteArrayView text, std::optional<quint16> &pi)
{
    if (text.isEmpty()) {
        return true;
    }
    quint16 code = 0;
    if (text.size() != 4 || !readAll(text, code, 16)) {
        return false;
    }
    pi = code;
    return true;
}

bool readPlace(QByteArrayView latitude, QByteArrayView longitude, GeoPosition &place)
{
    return readAll(latitude, place.latitude) && readAll(longitude, place.longitude)
        && std::abs(place.latitude) <= 90 && std::abs(place.longitude) <= 180;
}

QString piField(std::optional<quint16> pi)
{
    return pi ? piText(*pi) : QString();
}

} // namespace

std::optional<int> kilohertzOf(QStringView megahertz)
{
    const auto number = numeric(megahertz);
    if (!number || *number * 1000 < lowestKilohertz || *number * 1000 > highestKilohertz) {
        return {};
    }
    return static_cast<int>(std::lround(*number * 1000));
}

QByteArray stationLine(const ListedStation &station)
{
    QString line;
    for (const QString &field : {QString::number(station.kilohertz), piField(station.pi),
             piField(station.regionalPi), station.names, station.programme, station.region, station.site,
             station.country, plainText(station.place.latitude), plainText(station.place.longitude),
             plainText(station.kilowatts), station.polarisation, station.inactive ? u"1"_s : QString(),
             station.id}) {
        line += field + u'|';
    }
    return line.toUtf8();
}

ListedStation StationFields::station() const
{
    return {.kilohertz = kilohertz,
        .pi = pi,
        .regionalPi = regionalPi,
        .names = QString::fromUtf8(names),
        .programme = QString::fromUtf8(programme),
        .region = QString::fromUtf8(region),
        .site = QString::fromUtf8(site),
        .country = QString::fromUtf8(country),
        .place = place,
        .kilowatts = kilowatts,
        .polarisation = QString::fromUtf8(polarisation),
        .inactive = inactive,
        .id = QString::fromUtf8(id)};
}

std::optional<StationFields> stationFields(QByteArrayView line)
{
    const auto pieces = piecesOf(line);
    if (!pieces) {
        return {};
    }
    const auto &[hertz, pi, regional, names, programme, region, site, country, latitude, longitude, power,
        polarisation, inactive, id] = *pieces;
    StationFields fields;
    const bool good = readAll(hertz, fields.kilohertz) && fields.kilohertz >= lowestKilohertz
        && fields.kilohertz <= highestKilohertz && readPi(pi, fields.pi)
        && readPi(regional, fields.regionalPi) && readPlace(latitude, longitude, fields.place)
        && readAll(power, fields.kilowatts) && std::isfinite(fields.kilowatts) && fields.kilowatts >= 0
        && (inactive.isEmpty() || inactive == "1");
    if (!good) {
        return {};
    }
    fields.names = names;
    fields.programme = programme;
    fields.region = region;
    fields.site = site;
    fields.country = country;
    fields.polarisation = polarisation;
    fields.inactive = !inactive.isEmpty();
    fields.id = id;
    return fields;
}

} // namespace quillon
