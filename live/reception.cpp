#include "live/reception.h"

#include "live/frequency.h"
#include "platform/strangerstext.h"
#include "txdb/countrynames.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

/// "|" separates the fields of the log.
QString fieldText(QStringView text, qsizetype longest)
{
    return strangersText(text, longest).replace(u'|', u'/');
}

} // namespace

QString loggedPs(QStringView ps)
{
    QString text = fieldText(ps, longestPs);
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    return text.replace(u' ', u'_');
}

HeardReception receptionOf(const Station &station, bool withText, bool automatic)
{
    HeardReception reception;
    LogEntry &entry = reception.entry;
    entry.piCode = piText(station.pi);
    entry.dateTime = DateTime {station.first / 1000};
    entry.freq = megahertzText(station.hertz);
    entry.rdsName = loggedPs(station.ps);
    entry.country = u"TBD"_s;
    QStringList notes;
    if (automatic) {
        notes += u"auto"_s;
    }
    if (withText && !station.text.isEmpty()) {
        notes += fieldText(station.text, longestRadiotext).trimmed();
    }
    entry.notes = notes.join(u' ');
    if (station.guess && station.guess->pi == station.pi) {
        const StationGuess &guess = *station.guess;
        const auto text = [](const QString &field) { return fieldText(field, longestRadiotext).trimmed(); };
        const QString country = countryName(guess.country);
        entry.country = country.isEmpty() ? entry.country : country;
        entry.transmitter = text(guess.site);
        entry.power = text(guess.kilowatts);
        entry.uid = text(guess.uid);
        reception.latitude = text(guess.latitude);
        reception.longitude = text(guess.longitude);
    }
    return reception;
}

bool loggedWithin(const Logbook &log, qint64 hertz, quint16 pi, DateTime moment, int minutes)
{
    const QString code = piText(pi);
    return std::ranges::any_of(log, [&](const LogEntry &entry) {
        if (std::abs(entry.dateTime.seconds - moment.seconds) > qint64 {minutes} * 60
            || entry.piCode.compare(code, Qt::CaseInsensitive) != 0) {
            return false;
        }
        const auto logged = hertzOf(entry.freq);
        return logged && logStep(*logged) == logStep(hertz);
    });
}

} // namespace quillon
