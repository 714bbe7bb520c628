#include "bench/logfile.h"

#include "core/logbookfile.h"
#include "platform/runtimeerror.h"

#include <QLocale>
#include <QTemporaryDir>

#include <array>
#include <malloc.h>
#include <random>

namespace quillon::bench {

using namespace Qt::StringLiterals;

namespace {

struct Site
{
    const char *name;
    const char *country;
    const char *distance;
};

constexpr std::array sites {Site {"Brocken", "D", "212.4"}, Site {"M\xFChlacker", "D", "318.0"},
    Site {"Bilbao", "E", "1312.9"}, Site {"Torrente/Monte Vedat", "E", "1544.1"},
    Site {"Monte Cavo", "I", "1102.7"}, Site {"Sofia/Kopitoto", "BUL", "1377.5"},
    Site {"Athens/Ymittos", "GRC", "1801.2"}, Site {"Kaliningrad/Bolshakovo", "RUS", "788.8"},
    Site {"Lille/Bouvigny", "F", "420.3"}, Site {"Skellefte\xE5", "S", "1499.0"}};
constexpr std::array modes {"Es", "Es", "Es", "Tropo", "MS", "Es"};
constexpr int stationCount = 900;

QByteArray lineOf(int number, std::mt19937 &random, DateTime moment)
{
    // A few stations are heard again and again.
    const int station =
        static_cast<int>(random() % stationCount) * static_cast<int>(random() % stationCount) / stationCount;
    const Site &site = sites[static_cast<std::size_t>(station) % sites.size()];
    const QByteArray piCode = QByteArray::number(0x1201 + station * 61, 16).toUpper();
    const QByteArray freq = QByteArray::number(87.6 + station % 204 * 0.1, 'f', 1);
    const QByteArray name = "RADIO_"_ba + QByteArray::number(station % 100);
    const QByteArray notes = number % 5 == 0
        ? "RT heard, ID in the clearCRLFfaded after "_ba + QByteArray::number(number % 90) + " s"_ba
        : QByteArray();
    const bool sent = number % 3 == 0;
    const QByteArray uid = sent ? QByteArray::number(1'000'000 + station * 37) : QByteArray();
    const QByteArray line = piCode + '|' + generalText(moment).toLatin1() + '|'
        + modes[random() % modes.size()] + '|' + freq + '|' + site.name + '|' + site.country + '|' + notes
        + '|' + name + '|' + QByteArray::number(1 + station % 100) + '|' + site.distance + '|'
        + (sent ? "fml=sent#" : "") + '|' + uid + "|\r\n"_ba;
    return line;
}

QByteArray makeFile()
{
    std::mt19937 random(1948); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same log every time
    DateTime moment = *fromCivil({2005, 5, 1, 6, 0, 0});
    QByteArray file;
    for (int i = 0; i < fullLogEntries; ++i) {
        moment.seconds += static_cast<qint64>(random() % 38'000);
        file += lineOf(i, random, moment);
    }
    return file;
}

} // namespace

Regional regional()
{
    return {CodePage(1252), NumberFormat(), MonthNames::of(QLocale(u"en_GB"_s))};
}

const QByteArray &fullLogbookFile()
{
    static const QByteArray file = makeFile();
    return file;
}

void readFullLogbook(Logbook &log, QByteArrayView file)
{
    try {
        readLogbook(log, file, regional(), u"RDSLog.log"_s);
    } catch (const RuntimeError &error) {
        if (error.name() != ErrorName::Overflow) {
            throw;
        }
    }
}

Logbook fullLogbook()
{
    Logbook log;
    readFullLogbook(log, fullLogbookFile());
    return log;
}

const QString &directory()
{
    static const QTemporaryDir temporary;
    static const QString path = temporary.path();
    return path;
}

double usedMegabytes()
{
    const struct mallinfo2 info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / 1e6;
}

} // namespace quillon::bench
