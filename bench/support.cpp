#include "support.h"

#include "platform/runtimeerror.h"

#include <QRandomGenerator>

#include <array>

namespace quillon::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array countries {u"Germany", u"Spain", u"Italy", u"Poland", u"Norway", u"Portugal", u"Algeria",
    u"Ukraine", u"Greece", u"Iceland"};
constexpr std::array modes {u"Es", u"Es", u"Es", u"Tropo", u"Tropo", u"MS", u"Aur"};

template<std::size_t size>
QString one(const std::array<const char16_t *, size> &words, int number)
{
    return QString::fromUtf16(words[static_cast<std::size_t>(number) % size]);
}

Transmitter site(int number)
{
    QRandomGenerator random(static_cast<quint32>(number));
    Transmitter transmitter;
    transmitter.name = u"Transmitter Site %1"_s.arg(number);
    transmitter.country = one(countries, number);
    transmitter.latitude = QString::number(35 + random.generateDouble() * 30, 'f', 4);
    transmitter.longitude = QString::number(-20 + random.generateDouble() * 60, 'f', 4);
    transmitter.distance = QString::number(random.bounded(30000) / 10.0, 'f', 1);
    return transmitter;
}

LogEntry reception(int number, QRandomGenerator &random)
{
    constexpr qint64 start = 1104537600; // the year 2005
    constexpr qint64 twentyYears = 7305 * secondsPerDay;
    // An eighth of the numbers is beyond the list.
    const int of = random.bounded(fullListSize + fullListSize / 7);
    LogEntry entry;
    entry.piCode = u"%1"_s.arg(random.bounded(0x1000, 0x10000), 4, 16, QChar(u'0')).toUpper();
    entry.dateTime = {start + twentyYears * number / fullLogSize};
    entry.prop = one(modes, random.bounded(7));
    entry.freq = QString::number(87.5 + random.bounded(206) / 10.0, 'f', 1);
    entry.transmitter = u"Transmitter Site %1"_s.arg(of);
    entry.country = one(countries, of);
    entry.rdsName = u"RADIO %1"_s.arg(random.bounded(99));
    entry.power = QString::number(random.bounded(1, 200));
    entry.dist = QString::number(random.bounded(30000) / 10.0, 'f', 1);
    entry.fmlist = number % 3 == 0 ? u"fml=sent#"_s : QString();
    entry.uid = QString::number(random.bounded(9999999));
    if (number % 4 == 0) {
        entry.notes = u"Strong for some minutes, then gone"_s;
    }
    return entry;
}

} // namespace

Logbook fullLog()
{
    QRandomGenerator random(20260701);
    Logbook log;
    for (int number = 0; number < fullLogSize; ++number) {
        try {
            log.AddEntry(reception(number, random));
        } catch (const RuntimeError &) {
            break; // the last entry is in, and says that the log cannot grow
        }
    }
    return log;
}

TransmitterList fullTransmitterList()
{
    TransmitterList list;
    for (int number = 0; number < fullListSize; ++number) {
        list.add(site(number));
    }
    return list;
}

Settings homeSettings()
{
    Settings settings;
    settings.homeLatitude = u"51.5"_s;
    settings.homeLongitude = u"-0.1"_s;
    settings.asMiles = u"FALSE"_s;
    return settings;
}

} // namespace quillon::bench
