#include "support/importsamples.h"

#include <algorithm>

namespace quillon::test {

using namespace Qt::StringLiterals;

QString fmlistLogbook()
{
    return u"FMList logbook of M. Müller\n"
           "Exported 22.11.2025\n"
           "\n"
           "Date;UTC;MHz;ITU;Program;Location;kW;QRB km;QTF;Propa;RDS;Details;Remarks;Antenna\n"
           "21.11.25;930;98,50;E;RNE Clásica;Peña Cabarga;10;1.234,5;215;Es;X;PI E213 noted;strong;5 el\n"
           "21.11.2025;5;87,6;I;RAI 1;Monte Cavo;1.000;1100;170;Tr;;;;\n"
           ";;;;;;;;;;;;;\n"
           "20.11.25;1200;;F;FIP;;;;;;;;;\n"
           "32.11.2025;1200;90,1;F;FIP;Paris;10;;;;;;;\n"_s;
}

QString webServerLog(bool utc)
{
    return u"\"FM-DX server of \"\"Tower\"\"\"\r\n\"Log of a day\"\r\nTower one\r\n\r\ndate;"_s
        + (utc ? u"time(utc)"_s : u"time"_s)
        + u";freq;pi;ps;name;city;itu;pol;erp;dist;az;id\r\n"
          "2025-07-21;18:30:05;98.500;D3C2;MDR JUMP;MDR JUMP Sachsen;Leipzig;D;h;100;120;45;4711\r\n"
          "2025-07-21;18:31:00;87.600;?;;;;;;;;;\r\n"
          "2025-07-21;18:32:00;87.600;E213?;RNE_CLAS;;;E;;;;;\r\n"_s;
}

QString tefLogbook(bool american, bool withOffset)
{
    const QString offset = withOffset ? u",UTC offset"_s : QString();
    const QString hours = withOffset ? u",+2"_s : QString();
    return u"Date,Time"_s + offset + u",Frequency,PI,Signal,Stereo,TA,TP,PTY,ECC,PS,Radiotext\r\n"_s
        + (american ? u"7/21/2025,6:30:00 PM"_s : u"21-07-2025,18:30:00"_s) + hours
        + u",98.50 MHz,D3C2,35.1 dB\u00B5V,\u2022,,\u2022,Pop,E0,MDR_JUMP,\"Non stop, the\" best\r\n"_s
        + (american ? u"12/31/2025,12:05:00 AM"_s : u"31-12-2025,00:05:00"_s) + hours
        + u",87.60 MHz,E213,12.0 dB\u00B5V,,,,,,RNE_CLAS,\r\n-,-"_s + hours
        + u",90.10 MHz,F201,9.0 dB\u00B5V,,,,,,,\r\n"_s;
}

QString xdrLog()
{
    return u"2025-11-21 18:30:00Z\tPI\tD3C2\t?\n"
           "2025-11-21 18:30:02Z\tPS\tMDR_J___\t?\n"
           "2025-11-21 18:30:04Z\tPI\tD3C2\n"
           "2025-11-21 18:30:05Z\tPS\tMDR_JUMP\n"
           "2025-11-21 18:30:06Z\tRT1\tNon_stop_music\n"
           "2025-11-21 18:30:07Z\tAF\t98.5\n"
           "2025-11-21 18:30:08Z\tAF\t99.1\n"
           "2025-11-21 18:30:09Z\tPTY\tPop\n"
           "2025-11-21 18:40:00Z\tPI\tE213\t?\n"
           "2025-11-21 18:40:01Z\tPS\tRNE_CLAS\t?\n"
           "2025-11-21 18:41:00Z\tPI\tnone\n"_s;
}

QByteArray urdsFile()
{
    return "10,\"m@example.org\"\r\n11,\"4711\",\"M. M\xC3\xBCller\"\r\n12,\"a comment, of mine\"\r\n13,1\r\n"
           "14,\"fixed\"\r\n15,1\r\n16,1\r\n17,\"dBf\"\r\n"
           "30,1763749800,\"freq\",98500000,12,20.1,35.1,60,51.34,12.37,3,120,1763749799,D3C2,9,\"MDR JUMP\","
           "4,0,1,1,\"Pop\",\"0A\",1\r\n"
           "31,1763749801,\"freq\",98600000,10.0\r\n";
}

QByteArray gzipped(const QByteArray &bytes)
{
    constexpr qsizetype mostStored = 65535;
    QByteArray file = QByteArray::fromHex("1f8b0800000000000003");
    const auto number = [&file](quint32 value, int size) {
        for (int i = 0; i < size; ++i) {
            file += static_cast<char>(value >> (8 * i) & 0xFF);
        }
    };
    for (qsizetype at = 0; at < bytes.size() || at == 0; at += mostStored) {
        const qsizetype length = std::min(bytes.size() - at, mostStored);
        file += at + length >= bytes.size() ? '\1' : '\0';
        number(static_cast<quint32>(length), 2);
        number(~static_cast<quint32>(length) & 0xFFFF, 2);
        file += bytes.mid(at, length);
    }
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
        }
    }
    number(~sum, 4);
    number(static_cast<quint32>(bytes.size()), 4);
    return file;
}

QString shownHeading()
{
    return u"Date/Time,PI Code,Freq,RDS Name,Country,Transmitter,Dist,Power,Notes,Prop,FMList,UID\r\n"_s;
}

} // namespace quillon::test
