#include "flooder.h"
#include "live/srcpsource.h"
#include "sourcehelp.h"
#include "websocket.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <ctime>
#include <malloc.h>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 longestTurnMs = 250;
constexpr qint64 mostBytes = 4'000'000;

/// The bytes that the program holds on the heap.
qint64 heapInUse()
{
    const auto heap = ::mallinfo2();
    return static_cast<qint64>(heap.uordblks) + static_cast<qint64>(heap.hblkhd);
}

/// The processor time of this thread: how busy the computer is with other things does not count.
qint64 threadMilliseconds()
{
    timespec now {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return qint64 {now.tv_sec} * 1'000 + now.tv_nsec / 1'000'000;
}

/// What a flood did to the program.
struct Cost
{
    qint64 longest = 0; ///< work without a turn of the event loop, in milliseconds
    qint64 bytes = 0; ///< more on the heap than before
};

/// Lets events happen until `done` says so, at most half a minute.
template<typename Done>
Cost costUntil(Done done)
{
    constexpr int tick = 5;
    Cost cost;
    const qint64 before = heapInUse();
    QEventLoop events;
    QElapsedTimer whole;
    whole.start();
    qint64 turn = threadMilliseconds();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &events, [&] {
        const qint64 now = threadMilliseconds();
        cost.longest = std::max(cost.longest, now - std::exchange(turn, now));
        cost.bytes = std::max(cost.bytes, heapInUse() - before);
        if (done() || whole.elapsed() > 30'000) {
            events.quit();
        }
    });
    timer.start(tick);
    events.exec();
    return cost;
}

QByteArray message(const QByteArray &pi, const QByteArray &ps)
{
    return frame(char(0x81),
        R"({"freq":"98.500","sig":35.11,"ps":")" + ps + R"(","pi":")" + pi + R"(","rt0":")"
            + QByteArray(120, 'x') + R"(","rt_flag":0})");
}

QByteArray repeated(const QByteArray &what, int times)
{
    return what.repeated(times);
}

} // namespace

/// What a source sends without measure costs neither memory nor a frozen window, and what comes afterwards is
/// heard.
class TestFloods : public QObject
{
    Q_OBJECT

    /// Sends a flood; true for a station heard after it.
    void survive(SourceKind kind, const QString &address, const std::function<bool(const Receiver &)> &done)
    {
        Receiver receiver;
        int changes = 0;
        connect(&receiver, &Receiver::changed, this, [&] { ++changes; });
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(receiver.connectTo({kind, address, {}, false}), QString());
        const Cost cost = costUntil([&] { return done(receiver); });
        QVERIFY(done(receiver));
        QVERIFY2(
            cost.longest < longestTurnMs, qPrintable(u"%1 ms without the event loop"_s.arg(cost.longest)));
        QVERIFY2(cost.bytes < mostBytes, qPrintable(u"%1 bytes"_s.arg(cost.bytes)));
        QVERIFY(changes <= clock.elapsed() / Receiver::gathered + 4);
        QVERIFY(receiver.heard().rows().size() <= 2);
    }
    static bool hearsFrance(const Receiver &receiver) { return hears(receiver, 0xF201, u"FRANCE  "_s); }

private Q_SLOTS:
    void lines_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("chunk");
        QTest::addColumn<int>("chunks");
        const QByteArray salt = "0123456789abcdef\n";
        const QByteArray endless(1'000'000, 'R');
        QTest::newRow("xdrd, groups")
            << int(SourceKind::Xdrd) << salt << groupLines(jump, 1'000, "R", "00\n") << 300;
        QTest::newRow("xdrd, a line without an end") << int(SourceKind::Xdrd) << salt << endless << 60;
        QTest::newRow("xdrd, empty lines")
            << int(SourceKind::Xdrd) << salt << QByteArray(100'000, '\n') << 20;
        QTest::newRow("xdrd, megabytes of name")
            << int(SourceKind::Xdrd) << salt << "PS" + QByteArray(1'000'000, 'x') + '\n'
            << 20;
        QTest::newRow("RDS Spy, groups") << int(SourceKind::RdsSpy) << QByteArray()
                                         << groupLines(jump, 1'000, "G:\r\n", "\r\n\r\n") << 200;
        QTest::newRow("RDS Spy, a line without an end")
            << int(SourceKind::RdsSpy) << QByteArray() << endless << 60;
        QTest::newRow("RDS Spy, resets")
            << int(SourceKind::RdsSpy) << QByteArray() << repeated("G:\r\nRESET\r\n\r\n", 1'000) << 100;
        QTest::newRow("RDS Spy, stations without number") << int(SourceKind::RdsSpy) << QByteArray() << [] {
            QByteArray lines;
            for (quint16 pi = 1; pi < 10'000; ++pi) {
                lines += groupText(rdssignal::nameGroup(pi, "XXXXXXXX", 0)) + "\r\n";
            }
            return lines;
        }() << 20;
    }

    void lines()
    {
        QFETCH(int, kind);
        QFETCH(QByteArray, first);
        QFETCH(QByteArray, chunk);
        QFETCH(int, chunks);
        const bool isXdrd = SourceKind(kind) == SourceKind::Xdrd;
        const QByteArray last = isXdrd ? QByteArray("\nT87500\n" + groupLines(france, 60, "R", "00\n"))
                                       : QByteArray("\r\n" + groupLines(france, 60, "G:\r\n", "\r\n\r\n"));
        const Flooder flooder({first, chunk, chunks, last});
        survive(SourceKind(kind), u"127.0.0.1:%1"_s.arg(flooder.port()), hearsFrance);
    }

    void answersOfGqrx_data()
    {
        QTest::addColumn<QByteArray>("chunk");
        QTest::newRow("answers to no question") << repeated("98500000\n", 10'000);
        QTest::newRow("an answer without an end") << QByteArray(500'000, 'x');
        QTest::newRow("megabytes of name") << "RDS_PI RDS_PS_NAME" + QByteArray(1'000'000, 'x') + '\n';
    }

    void answersOfGqrx()
    {
        QFETCH(QByteArray, chunk);
        const Flooder flooder({{}, chunk, 60, {}});
        survive(SourceKind::Gqrx, u"127.0.0.1:%1"_s.arg(flooder.port()),
            [&](const Receiver &) { return flooder.isSent(); });
    }

    void messagesOfAWebReceiver()
    {
        const Flooder flooder(
            {{}, repeated(message("D3C2", "MDR JUMP"), 100), 300, message("F201", "FRANCE  ")},
            webSocketWelcome);
        survive(SourceKind::Webserver, u"127.0.0.1:%1"_s.arg(flooder.port()), hearsFrance);
    }

    void messagesWithoutAnEnd_data()
    {
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("chunk");
        const QByteArray junk(60'000, 'A');
        QTest::newRow("one frame") << "\x81\x7F" + QByteArray::fromHex("0000010000000000") << junk;
        QTest::newRow("frame after frame") << frame(0x01, junk) << frame(0x00, junk);
    }

    void messagesWithoutAnEnd()
    {
        QFETCH(QByteArray, first);
        QFETCH(QByteArray, chunk);
        const Flooder flooder({first, chunk, 1'000, {}}, webSocketWelcome);
        survive(SourceKind::Webserver, u"127.0.0.1:%1"_s.arg(flooder.port()),
            [](const Receiver &receiver) { return receiver.state() == ReceiverState::Lost; });
    }

    void linesOfACommand_data()
    {
        QTest::addColumn<QString>("flood");
        QTest::newRow("groups")
            << uR"(yes '{"pi":"0xD3C2","group":"0A","ps":"MDR JUMP"}' | head -c 6000000)"_s;
        QTest::newRow("a line without an end") << uR"(head -c 60000000 /dev/zero | tr '\0' x)"_s;
        QTest::newRow("no JSON") << u"yes no | head -c 3000000"_s;
    }

    void linesOfACommand()
    {
        QFETCH(QString, flood);
        survive(SourceKind::Redsea,
            flood
                + uR"(; echo; yes '{"pi":"0xF201","group":"0A","ps":"FRANCE  "}' | head -n 200; exec sleep 60)"_s,
            hearsFrance);
    }

    // Whoever sends faster than can be read leaves something to be read for ever.
    void datagrams()
    {
        const quint16 port = freeDatagramPort();
        SrcpSource source(at(port));
        int told = 0;
        connect(&source, &ReceiverSource::told, this, [&] {
            ++told;
            QThread::usleep(50);
        });
        int mostInATurn = 0;
        QTimer turns;
        connect(&turns, &QTimer::timeout, this, [&, before = 0]() mutable {
            mostInATurn = std::max(mostInATurn, told - std::exchange(before, told));
        });
        turns.start(0);
        source.start();

        constexpr int seconds = 3;
        std::atomic_bool over = false;
        std::thread tuner([&] {
            const QByteArray datagram = "pi=D3C2";
            const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
            const sockaddr_in address = loopback(port);
            QElapsedTimer clock;
            clock.start();
            while (clock.elapsed() < seconds * 1'000) {
                for (int i = 0; i < 100; ++i) {
                    ::sendto(socket, datagram.data(), static_cast<std::size_t>(datagram.size()), 0,
                        reinterpret_cast<const sockaddr *>(&address), sizeof address);
                }
            }
            ::close(socket);
            over = true;
        });
        QTRY_VERIFY_WITH_TIMEOUT(over.load(), 20'000);
        tuner.join();
        QVERIFY2(mostInATurn > 0 && mostInATurn < 1'000, qPrintable(u"%1 in a turn"_s.arg(mostInATurn)));
    }
};

QTEST_GUILESS_MAIN(TestFloods)
#include "tst_floods.moc"
