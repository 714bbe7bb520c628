#include "supporthome.h"

#include "core/logbooklines.h"
#include "platform/files.h"
#include "support.h"

#include <QDir>

namespace quillon::bench {

using namespace Qt::StringLiterals;

qint32 entryOf(int day, int number)
{
    constexpr qint32 firstDay = 30'000;
    constexpr qint32 betweenDays = 100;
    return firstDay + day * betweenDays + number;
}

QString piOf(int day, int number)
{
    return QString::number(0xA000 + day * (dayEntries + 1) + number, 16).toUpper();
}

QByteArray eveningStations()
{
    QByteArray list;
    for (int day = 0; day < evenings; ++day) {
        for (int number = 0; number <= dayEntries; ++number) {
            if (number != dayMatches) {
                // Spain is the country of every tenth site of the list, from the first but one on.
                const int station = day * (dayEntries + 1) + number;
                list += "98.5;" + piOf(day, number).toLatin1() + ";EVENING;Spain;Region, Transmitter Site "
                    + QByteArray::number(10 * station + 1) + ";10;40.1000;-3.2000;"
                    + QByteArray::number(800'000 + station) + '\n';
            }
        }
    }
    return list;
}

void markAllSent(Logbook &log)
{
    LogChange sent;
    for (qint32 number = 0; number < log.count(); ++number) {
        sent.setField(number, log.entry(number), LogField::FMList, u"fml=sent#"_s);
    }
    log.apply(sent);
}

void makeEvening(Logbook &log, qint32 first, int day, std::initializer_list<int> numbers)
{
    const qint64 midnight = log.entry(first).dateTime.seconds / secondsPerDay * secondsPerDay;
    qint32 index = first;
    for (const int number : numbers) {
        const LogEntry &before = log.entry(index);
        LogEntry entry = before;
        entry.dateTime = {midnight + 3600 * qint64(12 + number)};
        entry.piCode = piOf(day, number);
        entry.freq = u"98.5"_s;
        entry.rdsName = u"EVENING"_s;
        entry.uid.clear();
        entry.fmlist.clear();
        log.apply(LogChange::between(index++, before, entry));
    }
}

Logbook eveningLog()
{
    static_assert(dayEntries == 4);
    Logbook log = fullLog();
    markAllSent(log);
    for (int day = 0; day < evenings; ++day) {
        makeEvening(log, entryOf(day, 0), day, {0, 1, 2, 3});
    }
    return log;
}

void writeHome(const QString &directory, const Logbook &log, const QString &serviceUrl)
{
    const QString spy = filePath(directory, u"spy"_s);
    const QString dx = filePath(directory, u"dx"_s);
    QDir().mkpath(spy);
    QDir().mkpath(dx);
    const QByteArray configuration =
        "LOG_BOOK_CALLSIGN=BENCH\r\nHOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\nOMID=77\r\n"
        "RDSSPY_LOGS="
        + spy.toLocal8Bit() + "\r\nRDSDX_LOG=" + dx.toLocal8Bit() + "\r\nFMLIST_URL=" + serviceUrl.toLatin1()
        + "\r\n";
    writeFile(filePath(directory, u"LOGBOOK.INI"_s), configuration);
    writeFile(filePath(directory, u"quillon_index.template"_s), "$GENERATED\r\n$RAWDATA\r\n");
    writeFile(filePath(directory, u"quillon_log.template"_s), "<table>\r\n$RAWDATA\r\n</table>\r\n");
    writeFile(filePath(directory, u"quillon_mapview.htm"_s), QByteArray(800'000, 'x'));
    writeFile(filePath(directory, u"country.lst"_s), "Germany\r\nSpain\r\nItaly\r\nTBD\r\n");
    writeFile(filePath(directory, u"RDSLog.log"_s), logbookBytes(log, CodePage(1252)));
    writeFile(filePath(directory, u"tx.lst"_s), transmitterBytes(fullTransmitterList(), CodePage(1252)));
}

} // namespace quillon::bench
