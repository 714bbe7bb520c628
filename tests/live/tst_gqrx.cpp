#include "live/receiver.h"
#include "live/rigctlsource.h"
#include "program.h"
#include "rds-signal/modulator.h"
#include "support/testfiles.h"

#include <QDir>
#include <QFile>
#include <QTcpSocket>
#include <QTest>

#include <algorithm>
#include <optional>
#include <span>

using namespace quillon;
using namespace quillon::rdssignal;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int rate = 240'000;
constexpr int patience = 60'000;

/// Twelve seconds of one station, then of another, again and again.
void writeSignal(const QString &path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    for (const auto &[pi, ps] :
        {std::pair(quint16 {0xD3C2}, u"MDR JUMP"_s), std::pair(quint16 {0xE201}, u"RNE 1"_s)}) {
        IqMaker maker({98'500'000, pi, ps, {}, {}, 12, 0}, rate, {0.002, 0.2, 4, 0, 7});
        std::vector<std::complex<float>> samples(std::size_t {12} * rate);
        std::ranges::generate(samples, [&] { return maker.next(); });
        const auto bytes = std::as_bytes(std::span(samples));
        file.write(reinterpret_cast<const char *>(bytes.data()), static_cast<qint64>(bytes.size()));
    }
}

void writeFile(const QString &path, const QString &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
}

/// One question, one answer; empty when there is none.
QByteArray ask(quint16 port, const QByteArray &line)
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, port);
    if (!socket.waitForConnected(1'000)) {
        return {};
    }
    socket.write(line + '\n');
    while (!socket.canReadLine() && socket.waitForReadyRead(3'000)) { }
    return socket.readLine().trimmed();
}

} // namespace

// The real gqrx, off screen, on a signal of our own.
class TestGqrx : public QObject
{
    Q_OBJECT

    TestDirectory m_home;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    std::optional<Program> m_sound;
    std::optional<Program> m_gqrx;
    quint16 m_port = freePort();
    Receiver m_receiver;
    RigctlSource *m_source = nullptr;

    void startGqrx()
    {
        const QString configuration = m_home.path() + u"/gqrx.conf"_s;
        writeFile(configuration,
            uR"([General]
configversion=3
[input]
device="file=%1,freq=98500000,rate=240000,repeat=true,throttle=true"
frequency=98500000
sample_rate=240000
[remote_control]
enabled=true
port=%2
allowed_hosts=127.0.0.1, ::ffff:127.0.0.1
)"_s.arg(m_home.path() + u"/signal.iq"_s)
                .arg(m_port));
        m_gqrx.emplace(u"gqrx"_s, QStringList {u"-c"_s, configuration}, m_environment);
        QVERIFY2(m_gqrx->started(), "gqrx is not installed (package gqrx-sdr)");
        // One connection at a time: what the listener would do by hand is done before ours.
        QTRY_COMPARE_WITH_TIMEOUT(ask(m_port, "M WFM_ST"), QByteArray("RPRT 0"), patience);
        QCOMPARE(ask(m_port, "U DSP 1"), QByteArray("RPRT 0"));
    }

    [[nodiscard]] bool hears(quint16 pi) const
    {
        const auto &station = m_receiver.listening().station();
        return station && station->pi == pi && station->certain;
    }

private Q_SLOTS:
    void initTestCase()
    {
        writeSignal(m_home.path() + u"/signal.iq"_s);
        QVERIFY(QDir().mkdir(m_home.path() + u"/run"_s));
        QFile::setPermissions(
            m_home.path() + u"/run"_s, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        m_environment.insert(u"HOME"_s, m_home.path());
        m_environment.insert(u"XDG_CONFIG_HOME"_s, m_home.path() + u"/config"_s);
        m_environment.insert(u"XDG_RUNTIME_DIR"_s, m_home.path() + u"/run"_s);
        m_environment.insert(u"PULSE_SERVER"_s, u"unix:"_s + m_home.path() + u"/run/sound"_s);
        m_environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        m_sound.emplace(u"pulseaudio"_s,
            QStringList {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"-L"_s,
                u"module-null-sink"_s, u"-L"_s,
                u"module-native-protocol-unix auth-anonymous=1 socket="_s + m_home.path() + u"/run/sound"_s},
            m_environment);
        QVERIFY2(m_sound->started(), "pulseaudio is not installed");
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_home.path() + u"/run/sound"_s), patience);
        startGqrx();
    }

    void twoStationsOneAfterTheOther()
    {
        auto source = std::make_unique<RigctlSource>(HostPort {u"127.0.0.1"_s, m_port});
        m_source = source.get();
        m_receiver.listenTo(std::move(source));
        QTRY_VERIFY_WITH_TIMEOUT(hears(0xD3C2), patience);
        QCOMPARE(m_receiver.listening().signal()->unit, u"dBFS");
        QCOMPARE(m_receiver.listening().hertz(), qint64(98'500'000));
        QTRY_VERIFY_WITH_TIMEOUT(hears(0xE201), patience);
        // Only two stations are on the air, so nothing else may have been certain.
        for (const HeardRow &row : m_receiver.heard().rows()) {
            QVERIFY(row.station.pi == 0xD3C2 || row.station.pi == 0xE201);
        }
    }

    void aRetuneEndsTheStation()
    {
        QTRY_VERIFY_WITH_TIMEOUT(m_receiver.listening().station(), patience);
        m_receiver.tune(98'600'000);
        QTRY_COMPARE_WITH_TIMEOUT(m_receiver.listening().hertz(), qint64(98'600'000), patience);
        QVERIFY(!m_receiver.listening().station());
        m_receiver.tune(98'500'000);
        QTRY_COMPARE_WITH_TIMEOUT(m_receiver.listening().hertz(), qint64(98'500'000), patience);
        QTRY_VERIFY_WITH_TIMEOUT(hears(0xD3C2) || hears(0xE201), patience);
    }

    void lostAndFoundAgain()
    {
        // gqrx takes one connection at a time: the next try waits until the test has set its mode.
        m_source->setSecond(20'000);
        m_gqrx.reset();
        QTRY_COMPARE_WITH_TIMEOUT(m_receiver.state(), ReceiverState::Lost, patience);
        m_source->setSecond(1'000);
        startGqrx();
        QCOMPARE(m_receiver.state(), ReceiverState::Lost);
        const qint64 before = nowMilliseconds();
        QTRY_COMPARE_WITH_TIMEOUT(m_receiver.state(), ReceiverState::Listening, patience);
        QTRY_VERIFY_WITH_TIMEOUT(
            (hears(0xD3C2) || hears(0xE201)) && m_receiver.listening().station()->last > before, patience);
    }
};

QTEST_GUILESS_MAIN(TestGqrx)
#include "tst_gqrx.moc"
