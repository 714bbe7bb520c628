#include "fmlist-standin/behaviour.h"
#include "fmlist-standin/service.h"
#include "support/testfiles.h"

#include <QProcess>
#include <QTcpSocket>
#include <QTest>

using namespace quillon;
using namespace quillon::standin;
using namespace Qt::StringLiterals;

namespace {

const QByteArray one = "87.6;D3C1;RADIO 1;D;Berlin, Berlin;10;52.5;13.4;4711";
const QByteArray two = "87.60;D3C2;\xD6 3;AUT;Tirol, Patscherkofel;50;47.2;11.46;4712";
const QByteArray three = "87.6;D3C1;RADIO1;D;Hessen, Bad Ems;1;50;8;4713";

QByteArray lookup(const QByteArray &query)
{
    const Request request {"GET /rdslookup.php?" + query + " HTTP/1.1", {}, {}};
    return serviceAnswer(request, readStations(one + "\r\n" + two + "\n" + three + "\n;;\n")).body;
}

QByteArray post(const QByteArray &body, const QByteArray &type = "application/x-www-form-urlencoded")
{
    return serviceAnswer({"POST /logpost1.php HTTP/1.1", "Content-Type: " + type + "\r\n", body}, {}).body;
}

QByteArray exchange(quint16 port, const QByteArray &request)
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, port);
    socket.write(request);
    QByteArray answer;
    while (socket.waitForReadyRead(5000)) {
        answer += socket.readAll();
    }
    return answer;
}

} // namespace

class TestStandIn : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void looksUp_data()
    {
        QTest::addColumn<QByteArray>("query");
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("no frequency") << "pi=D3C1"_ba
                                      << "Error 10001\n"_ba;
        QTest::newRow("frequency is no number") << "freq=abc&pi=D3C1"_ba
                                                << "Error 10002\n"_ba;
        QTest::newRow("PI too short") << "freq=87.6&pi=D3C"_ba
                                      << "Error 10003\n"_ba;
        QTest::newRow("PI is not hexadecimal") << "freq=87.6&pi=D3CG"_ba
                                               << "Error 10004\n"_ba;
        QTest::newRow("no such station") << "freq=87.7&pi=D3C1"_ba
                                         << "Error 10005\n"_ba;
        QTest::newRow("neither PI nor PS") << "freq=87.6"_ba
                                           << "Error 10006\n"_ba;
        QTest::newRow("by PI") << "freq=87,60&pi=d3c1"_ba << one + "\n" + three + "\n";
        QTest::newRow("by PI and PS") << "freq=87.6&pi=D3C1&ps=radio%5F1"_ba << one + "\n";
        QTest::newRow("by PS with a blank") << "freq=87.6&ps=RADIO+1"_ba << one + "\n";
        QTest::newRow("by PS of the code page") << "freq=87.6&ps=%F6_3"_ba << two + "\n";
    }

    void looksUp()
    {
        QFETCH(QByteArray, query);
        QTEST(lookup(query), "answer");
    }

    void takesLogs_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("answer");
        const QByteArray rest = "&freq=87%2E6&pi=D3C1&uid=4711&dateTime=12%2D06%2D2010+18%3A22%3A05";
        const QByteArray stored = "OK log of transmitter 4711 stored";
        QTest::newRow("OMID") << "omid=1" + rest << stored;
        QTest::newRow("e-mail and position") << "email=a%40b&latitude=1%2C5&longitude=%2D2" + rest << stored;
        QTest::newRow("nobody") << rest.sliced(1) << "Error 20001 omid or email missing"_ba;
        QTest::newRow("no position") << "email=a%40b&latitude=1" + rest << "Error 20001 position missing"_ba;
        QTest::newRow("no time") << "omid=1&freq=1&pi=D3C1&uid=1"_ba
                                 << "Error 20001 dateTime missing"_ba;
        QTest::newRow("no UID") << "omid=1&freq=1&pi=D3C1"_ba
                                << "Error 20001 uid missing"_ba;
        QTest::newRow("no PI") << "omid=1&freq=1&pi=delete"_ba
                               << "Error 20001 pi missing"_ba;
        QTest::newRow("no frequency") << "omid=1"_ba
                                      << "Error 20001 freq missing"_ba;
    }

    void takesLogs()
    {
        QFETCH(QByteArray, body);
        QTEST(post(body), "answer");
    }

    void takesOnlyForms() { QCOMPARE(post("omid=1", "text/plain"), "Error 20001 not a form"_ba); }

    void modes()
    {
        QVERIFY(!behaviourOf("mode=nonsense"));
        QCOMPARE(behaviourOf("mode=delay:300")->delay, 300);
        auto behaviour = behaviourOf("mode=500&after=1&times=1").value_or(Behaviour {});
        QVERIFY(!behaviour.strikes());
        QVERIFY(behaviour.strikes());
        QVERIFY(!behaviour.strikes());
    }

    void servesAsAProgramAndIsControlledByItsOwnPage()
    {
        const test::TestDirectory directory;
        directory.write(u"stations.csv"_s, one + "\n");
        QProcess program;
        program.start(QStringLiteral(QUILLON_STANDIN), {u"--stations"_s, directory.file(u"stations.csv"_s)});
        QVERIFY(program.waitForReadyRead(10'000));
        const QByteArray url = program.readLine().trimmed();
        QVERIFY(url.startsWith("http://127.0.0.1:"));
        const quint16 port = url.split(':').last().toUShort();
        const QByteArray request = "GET /rdslookup.php?freq=87.6&pi=D3C1 HTTP/1.1\r\nHost: x\r\n\r\n";
        const QByteArray end = "\r\n\r\n" + one + "\n";
        QVERIFY(exchange(port, request).endsWith(end));
        QVERIFY(exchange(port, "GET /control?mode=503 HTTP/1.1\r\n\r\n").endsWith("\r\n\r\nOK\n"));
        QVERIFY(exchange(port, request).startsWith("HTTP/1.1 503 "));
        QVERIFY(exchange(port, "GET /control?mode=x HTTP/1.1\r\n\r\n").startsWith("HTTP/1.1 400 "));
        const QByteArray recorded = "\r\n\r\n" + request + "\r\n" + request + "\r\n";
        QVERIFY(exchange(port, "GET /control?requests HTTP/1.1\r\n\r\n").endsWith(recorded));
        program.kill();
        QVERIFY(program.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(TestStandIn)
#include "tst_standin.moc"
