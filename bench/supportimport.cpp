#include "supportimport.h"

#include <QFile>

namespace quillon::bench {

using namespace Qt::StringLiterals;

namespace {

QString number(int value, int width)
{
    return u"%1"_s.arg(value, width, 10, QChar(u'0'));
}

// All that such a file tells is its name.
void writeNothing(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

} // namespace

void writeSpyFolder(const QString &folder)
{
    for (int i = 0; i < spyFileCount; ++i) {
        writeNothing(folder + u"/2010-06-"_s + number(i % 28 + 1, 2) + u' ' + number(i % 24, 2) + u'-'
            + number(i % 60, 2) + u"-00 D3C3 RADIO "_s + number(i, 5) + u".txt"_s);
    }
}

void writeSpyReceptions(const QString &folder, int day, int count)
{
    for (int i = 0; i < count; ++i) {
        writeNothing(folder + u"/2010-06-"_s + number(day, 2) + u' ' + number(i / 3600, 2) + u'-'
            + number(i / 60 % 60, 2) + u'-' + number(i % 60, 2) + u" D3C3 RADIO "_s + QString::number(i)
            + u".txt"_s);
    }
}

QByteArray rdsdxLog()
{
    QByteArray bytes = "Freq   PI   PS       Time    ITU Station\r\n";
    for (int i = 0; i < rdsdxLineCount; ++i) {
        const QByteArray clock =
            (number(i % 24, 2) + number(i % 60, 2) + u' ' + number(i % 59, 2)).toLatin1();
        bytes += "87.6   D3C3 BAYERN3  " + clock + " D   D, Wendelstein|Es, strong\r\n";
    }
    return bytes;
}

QByteArray webServerFile()
{
    QByteArray bytes = "date;time;freq;pi;ps;name;city;itu;pol;erp;dist;az;id\r\n";
    for (int i = 0; i < static_cast<int>(webServerLines); ++i) {
        const QString day = u"2025-"_s + number(i / 3000 + 1, 2) + u'-' + number(i / 100 % 28 + 1, 2);
        const QString clock =
            number(i / 1200 % 24, 2) + u':' + number(i / 20 % 60, 2) + u':' + number(i % 60, 2);
        bytes += (day + u';' + clock + u";98.500;"_s + QString::number(0x1000 + i, 16) + u";RADIO "_s
            + number(i % 100, 2) + u";Radio One;M\u00FCnchen;D;h;100;412;135;"_s
            + QString::number(100'000 + i) + u"\r\n"_s)
                     .toUtf8();
    }
    return bytes;
}

QByteArray firstLines(const QByteArray &text, qsizetype count)
{
    qsizetype end = 0;
    for (qsizetype line = 0; line < count; ++line) {
        end = text.indexOf('\n', end) + 1;
    }
    return text.first(end);
}

} // namespace quillon::bench
