#include "session.h"

#include "backup/backups.h"
#include "platform/pause.h"
#include "put.h"
#include "support/testfiles.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTcpServer>

namespace quillon {

// The automatic search spares the service two seconds after each reception: here nobody has to be spared.
void Pause(float /*seconds*/) { }

} // namespace quillon

namespace quillon::soak {

using namespace Qt::StringLiterals;

// Below those that the system gives away by itself, as it is taken again and again.
quint16 freePort()
{
    constexpr int lowest = 12'000;
    constexpr int highest = 32'000;
    QTcpServer server;
    while (!server.listen(QHostAddress::LocalHost,
        static_cast<quint16>(QRandomGenerator::global()->bounded(lowest, highest)))) { }
    return server.serverPort();
}

void layOut(const QString &root, int receptions, quint16 port)
{
    for (const QString &folder : {u"log"_s, u"look"_s, u"out"_s, u"spy"_s, u"dx"_s, u"in"_s, u"tmp"_s}) {
        QDir(root).mkpath(folder);
    }
    const QDir supplied(QStringLiteral(QUILLON_SUPPLIED));
    for (const QString &name : {u"country.lst"_s, u"quillon_index.template"_s, u"quillon_log.template"_s}) {
        QFile::copy(supplied.filePath(name), root + u"/log/"_s + name);
    }
    // Small ones, as they are copied and compared again and again.
    put(root + u"/log/quillon_mapview.htm"_s, "<title>Map</title>\n");
    put(root + u"/log/manual.html"_s, "<title>Manual</title>\n");
    QByteArray log;
    for (int i = 0; i < receptions; ++i) {
        log += test::logLine("E201", dateOf(i).toLatin1(), "87.6", nameOf(i).toLatin1(),
            i % 3 == 0 ? "E" : "F", i % 3 == 0 ? "Bilbao" : "Reims");
    }
    put(root + u"/log/RDSLog.log"_s, log);
    put(root + u"/log/tx.lst"_s, "Bilbao|E|43.26|-2.93||\r\nReims|F|49.1|3.93||\r\n");
    put(root + u"/log/LOGBOOK.INI"_s,
        "LOG_BOOK_CALLSIGN=DL1ABC\r\nOMID=1234\r\nHOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES="
        "FALSE\r\nTIME_OFFSET="
        "0\r\n"
        "RDSSPY_LOGS="
            + QFile::encodeName(root) + "/spy\r\nRDSDX_LOG=" + QFile::encodeName(root)
            + "/dx\r\nFMLIST_URL=http://127.0.0.1:" + QByteArray::number(port) + "\r\n");
}

Session::Session(const QString &root, FileCalls &calls, Teller &teller, int first, quint32 seed)
    : User(root, teller, first, seed)
    , m_calls(calls)
{
}

void Session::start()
{
    m_form = std::make_unique<Form1>(Form1Options {root() + u"/log"_s, QStringLiteral(QUILLON_SUPPLIED),
        Regional::fromEnvironment(), &m_calls, root() + u"/look"_s, backupsBelow(root())});
    m_form->Form_Load();
    m_form->show();
    workWith(*m_form);
}

} // namespace quillon::soak
