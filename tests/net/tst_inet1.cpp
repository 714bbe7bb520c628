#include "fmlist-standin/standin.h"
#include "fmlist/search.h"
#include "fmlist/upload.h"
#include "net/inet1.h"
#include "platform/runtimeerror.h"

#include <QLoggingCategory>
#include <QScopeGuard>
#include <QTcpServer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

using namespace quillon;
using namespace Qt::StringLiterals;
using standin::Fault;

namespace {

const QByteArray line = "87.6;D3C1;RADIO 1;D;Berlin, Berlin;10;52.5;13.4;4711\n";
const QByteArray otherLine = "87.6;D3C2;\xD6 3;AUT;Tirol, Patscherkofel;50;47.2;11.46;4712\n";

QString errorText(const std::function<void()> &work)
{
    try {
        work();
    } catch (const RuntimeError &error) {
        return error.text().replace(u"Run-time error: "_s, QString());
    } catch (const RequestAborted &) {
        return u"aborted"_s;
    }
    return u"no error"_s;
}

QStringList &traced()
{
    static QStringList texts;
    return texts;
}

void keepTrace(QtMsgType, const QMessageLogContext &context, const QString &text)
{
    if (QLatin1StringView(context.category) == "quillon.inet1"_L1) {
        traced() += text;
    }
}

} // namespace

class TestInet1 : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<standin::StandIn> m_service;
    std::unique_ptr<Inet1> m_inet;

    [[nodiscard]] QByteArray search(const SearchRequest &request = {u"87.6"_s, u"D3C1"_s, {}}) const
    {
        return searchUrl(m_service->url(), request, CodePage(1252)).value_or("");
    }

    [[nodiscard]] QString opened(const QByteArray &url) const
    {
        QString text;
        const QString error = errorText([&] { text = m_inet->openUrl(url); });
        return error == u"no error" ? text : error;
    }

    void answerRaw(const QByteArray &raw) const { m_service->behave({.fault = Fault::Raw, .raw = raw}); }

private Q_SLOTS:
    void init()
    {
        m_service = std::make_unique<standin::StandIn>(line + otherLine);
        QVERIFY(m_service->listen());
        m_inet = std::make_unique<Inet1>(CodePage(1252));
    }

    void cleanup()
    {
        m_inet.reset();
        m_service.reset();
    }

    void theSearchOnTheWireByteForByte_data()
    {
        QTest::addColumn<QString>("freq");
        QTest::addColumn<QString>("pi");
        QTest::addColumn<QString>("ps");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("_ stays escaped")
            << u"87.6"_s << u"d3c1"_s << u"RADIO 1"_s << "/rdslookup.php?freq=87.6&pi=D3C1&ps=RADIO%5F1"_ba;
        QTest::newRow("escapes of letters that need none")
            << u"87.6"_s << u""_s << u"A.B-C~"_s << "/rdslookup.php?freq=87.6&ps=A%2EB%2DC%7E"_ba;
        QTest::newRow("escape of one digit")
            << u"87.6"_s << u""_s << u"A\tB"_s << "/rdslookup.php?freq=87.6&ps=A%9B"_ba;
        QTest::newRow("code page") << u"87.6"_s << u""_s << u"\u00d6"_s
                                   << "/rdslookup.php?freq=87.6&ps=%D6"_ba;
        QTest::newRow("odd frequency")
            << u"8 7<'%4\u00e9"_s << u"D3C1"_s << u""_s << "/rdslookup.php?freq=8%207%3C'%4%E9&pi=D3C1"_ba;
    }

    void theSearchOnTheWireByteForByte()
    {
        QFETCH(QString, freq);
        QFETCH(QString, pi);
        QFETCH(QString, ps);
        QFETCH(QByteArray, target);
        (void)m_inet->openUrl(search({freq, pi, ps}));
        QCOMPARE(m_service->requests().size(), 1);
        const standin::Request &request = m_service->requests().first();
        QCOMPARE(request.line, "GET " + target + " HTTP/1.1");
        QCOMPARE(request.headers,
            "Host: 127.0.0.1:" + QByteArray::number(m_service->port())
                + "\r\nConnection: close\r\nUser-Agent: Quillon\r\nAccept: */*\r\n");
        QCOMPARE(request.body, QByteArray());
    }

    void anAddressOnTheWireByteForByte_data()
    {
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("path with dots") << "/a/../b/./c%5F%9?x=../y&%"_ba;
        QTest::newRow("slashes") << "//a//b"_ba;
        QTest::newRow("marks") << "/!$&'()*+,;=:@-._~[]?a?b"_ba;
        QTest::newRow("root") << "/"_ba;
    }

    void anAddressOnTheWireByteForByte()
    {
        QFETCH(QByteArray, target);
        (void)opened(m_service->url().toLatin1() + target);
        QCOMPARE(m_service->requests().size(), 1);
        QCOMPARE(m_service->requests().first().line, "GET " + target + " HTTP/1.1");
    }

    void aBodyOnTheWireByteForByte()
    {
        QByteArray body(300'000, 'x');
        body.prepend(QByteArray("\0\xFF\r\n%\n", 6));
        (void)m_inet->post(
            uploadUrl(m_service->url(), CodePage(1252)), body, uploadHeaders.toByteArray(), 1024);
        QCOMPARE(m_service->requests().first().body, body);
        QVERIFY(!m_service->requests().first().headers.contains("Expect"));
    }

    void theUploadOnTheWireByteForByte()
    {
        const QByteArray body =
            "omid=1&freq=87%2E6&pi=D3C1&uid=4711&dateTime=12%2D06%2D2010+18%3A22%3A05&propa=Es";
        const QString answer = m_inet->post(uploadUrl(m_service->url(), CodePage(1252)), body,
            uploadHeaders.toByteArray(), uploadAnswerLength);
        QCOMPARE(answer, u"OK log of transmitter 4711 stored"_s);
        const standin::Request &request = m_service->requests().first();
        QCOMPARE(request.line, "POST /logpost1.php HTTP/1.1"_ba);
        QCOMPARE(request.headers,
            "Host: 127.0.0.1:" + QByteArray::number(m_service->port())
                + "\r\nConnection: close\r\nContent-Type: application/x-www-form-urlencoded\r\nUser-Agent: "
                  "Quillon"
                  "\r\nContent-Length: "
                + QByteArray::number(body.size()) + "\r\n");
        QCOMPARE(request.body, body);
    }

    void theAnswerAsText()
    {
        QCOMPARE(opened(search()), QString::fromLatin1(line));
        QCOMPARE(opened(search({u"87.6"_s, u"D3C2"_s, {}})), QString::fromLatin1(otherLine));
        answerRaw("HTTP/1.1 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\n\r\nK\xC3\xB6ln\n");
        QCOMPARE(opened(search()), u"K\u00f6ln\n"_s);
        answerRaw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n\x80"
                  "a\r\n1\r\nb\r\n0\r\n\r\n");
        QCOMPARE(opened(search()), u"\u20acab"_s);
    }

    void anAnswerInChunks()
    {
        answerRaw("HTTP/1.1 200 OK\r\n\r\n" + QByteArray(1024, 'a') + QByteArray(1000, 'b'));
        m_inet->execute(search(), "POST", "x", uploadHeaders.toByteArray());
        QVERIFY(m_inet->stillExecuting());
        QVERIFY(errorText([this] {
            (void)m_inet->getChunk(1024);
        }).startsWith(u"Still executing last request\n"_s));
        m_inet->wait();
        QVERIFY(!m_inet->stillExecuting());
        QCOMPARE(m_inet->getChunk(1024), QString(1024, u'a'));
        QCOMPARE(m_inet->getChunk(1024), QString(1000, u'b'));
        QCOMPARE(m_inet->getChunk(1024), QString());
    }

    void anAnswerWithoutAFinalLineFeed()
    {
        m_service->behave({.fault = Fault::NoLf});
        QCOMPARE(opened(search()), QString::fromLatin1(line.chopped(1)));
    }

    void answersOfEveryShape_data()
    {
        QTest::addColumn<QByteArray>("raw");
        QTest::addColumn<QString>("expected");
        const QString missing =
            u"Cannot reach the service\nOpening URL: the connection ended before the answer was complete"_s;
        const QString service = u"The service answered with an error\nOpening URL: "_s;
        QTest::newRow("length") << "HTTP/1.1 200 OK\r\ncontent-LENGTH:3\r\n\r\nabc"_ba << u"abc"_s;
        QTest::newRow("empty") << "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"_ba << u""_s;
        QTest::newRow("up to the end") << "HTTP/1.0 200\r\n\r\nabc\r\n\r\n"_ba << u"abc\r\n\r\n"_s;
        QTest::newRow("no content") << "HTTP/1.1 204 No Content\r\n\r\n"_ba << u""_s;
        QTest::newRow("chunks and a trailer") << "HTTP/1.1 200 OK\r\nTransfer-Encoding: "
                                                 "Chunked\r\n\r\n3;x=y\r\nabc\r\nA\r\n0123456789\r\n0\r\nX: "
                                                 "y\r\n\r\n"_ba
                                              << u"abc0123456789"_s;
        QTest::newRow("an interim answer first")
            << "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\na"_ba << u"a"_s;
        QTest::newRow("packed unasked")
            << "HTTP/1.1 200 OK\r\nContent-Encoding: deflate\r\n\r\n"_ba + qCompress("abc").mid(4)
            << u"abc"_s;
        QTest::newRow("status without words")
            << "HTTP/1.1 500\r\n\r\n"_ba << QString(service + u"the service answered 500"_s);
        QTest::newRow("the first status that is an error")
            << "HTTP/1.1 400 Bad Request\r\n\r\nnothing found"_ba
            << QString(service + u"the service answered 400 Bad Request"_s);
        QTest::newRow("the last status that is none") << "HTTP/1.1 399 Odd\r\n\r\nabc"_ba << u"abc"_s;
        QTest::newRow("half a head") << "HTTP/1.1 200 OK\r\nContent-"_ba << missing;
        QTest::newRow("half a body") << "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nab"_ba << missing;
        QTest::newRow("half a chunk")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nab"_ba << missing;
        QTest::newRow("no last chunk")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\na\r\n"_ba << missing;
        QTest::newRow("another protocol")
            << "SSH-2.0-x\r\n\r\n"_ba << QString(service + u"the answer is not HTTP"_s);
        QTest::newRow("status is no number")
            << "HTTP/1.1 2x0 OK\r\n\r\n"_ba << QString(service + u"the answer is not HTTP"_s);
        QTest::newRow("a head without end") << "HTTP/1.1 200 OK\r\nX: "_ba + QByteArray(700'000, 'x')
                                            << QString(service + u"the answer is not HTTP"_s);
        QTest::newRow("chunk length is no number")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nxyz\r\n"_ba
            << u"Cannot reach the service\nOpening URL: Illegal or missing hexadecimal sequence in "
               "chunked-encoding"_s;
        QTest::newRow("length is no number") << "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n"_ba
                                             << QString(service + u"the answer is not HTTP"_s);
        QTest::newRow("length above 16 MiB") << "HTTP/1.1 200 OK\r\nContent-Length: 16777217\r\n\r\n"_ba
                                             << QString(service + u"the answer is larger than 16 MiB"_s);
    }

    void answersOfEveryShape()
    {
        QFETCH(QByteArray, raw);
        QFETCH(QString, expected);
        answerRaw(raw);
        const QByteArray url = search();
        QCOMPARE(opened(url), expected.replace(u"URL"_s, QString::fromLatin1(url)));
    }

    void whatCannotBeUnpacked_data()
    {
        QTest::addColumn<QByteArray>("coding");
        QTest::newRow("a coding that nobody knows") << "zoo"_ba;
        QTest::newRow("not what it says") << "gzip"_ba;
    }

    void whatCannotBeUnpacked()
    {
        QFETCH(QByteArray, coding);
        answerRaw("HTTP/1.1 200 OK\r\nContent-Encoding: " + coding + "\r\n\r\nabcdefghijkl");
        const QByteArray url = search();
        const QString error = opened(url);
        const QString start =
            u"The service answered with an error\nOpening "_s + QString::fromLatin1(url) + u": "_s;
        QVERIFY2(error.startsWith(start) && error.contains(u"encoding"_s), qPrintable(error));
    }

    void failures_data()
    {
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<QString>("expected");
        QTest::newRow("dropped in the middle")
            << Fault::Drop
            << u"Cannot reach the service\nOpening URL: the connection ended before the answer was complete"_s;
        QTest::newRow("500")
            << Fault::Fail500
            << u"The service answered with an error\nOpening URL: the service answered 500 Internal "
               "Server Error"_s;
        QTest::newRow("503")
            << Fault::Fail503
            << u"The service answered with an error\nOpening URL: the service answered 503 Service "
               "Unavailable"_s;
        QTest::newRow("more than 16 MiB")
            << Fault::Huge
            << u"The service answered with an error\nOpening URL: the answer is larger than 16 MiB"_s;
    }

    void failures()
    {
        QFETCH(Fault, fault);
        QFETCH(QString, expected);
        m_service->behave({.fault = fault, .times = 1});
        const QByteArray url = search();
        QCOMPARE(opened(url), expected.replace(u"URL"_s, QString::fromLatin1(url)));
        QVERIFY(!m_inet->stillExecuting());
        QCOMPARE(opened(url), QString::fromLatin1(line));
    }

    void aProxyHearsNothingOfThisMachine_data()
    {
        QTest::addColumn<QByteArray>("host");
        QTest::newRow("127.0.0.1") << "127.0.0.1"_ba;
        QTest::newRow("127.0.0.1 in another form") << "127.1"_ba;
        QTest::newRow("localhost") << "LocalHost"_ba;
    }

    void aProxyHearsNothingOfThisMachine()
    {
        QFETCH(QByteArray, host);
        QTcpServer proxy;
        QVERIFY(proxy.listen(QHostAddress::LocalHost));
        const auto hidden = qScopeGuard([before = qgetenv("no_proxy")] {
            qunsetenv("http_proxy");
            qputenv("no_proxy", before);
        });
        qunsetenv("no_proxy");
        qputenv("http_proxy", "http://127.0.0.1:" + QByteArray::number(proxy.serverPort()));
        QCOMPARE(opened(QByteArray(search()).replace("127.0.0.1", host)), QString::fromLatin1(line));
        QVERIFY(!proxy.hasPendingConnections());
    }

    void moreThan16MiBWithoutSayingSo()
    {
        answerRaw("HTTP/1.1 200 OK\r\n\r\n" + QByteArray(17'825'792, 'x'));
        QVERIFY(opened(search()).endsWith(u": the answer is larger than 16 MiB"_s));
        answerRaw("HTTP/1.1 200 OK\r\n\r\n" + QByteArray(16'777'216, 'x'));
        QCOMPARE(opened(search()).size(), 16'777'216);
    }

    void aMegabyteOfJunkIsText()
    {
        m_service->behave({.fault = Fault::Junk});
        QCOMPARE(opened(search()).size(), 1'000'000);
        answerRaw(QByteArray(1'000'000, 'x'));
        QVERIFY(opened(search()).endsWith(u": the answer is not HTTP"_s));
    }

    void anErrorOfTheServiceIsItsAnswerWhateverTheStatus()
    {
        answerRaw("HTTP/1.1 400 Bad Request\r\nContent-Length: 12\r\n\r\nError 10003\n");
        QCOMPARE(opened(search()), u"Error 10003\n"_s);
    }

    void noServer()
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QByteArray url = "http://127.0.0.1:" + QByteArray::number(closed.serverPort()) + "/x";
        closed.close();
        QCOMPARE(opened(url),
            u"Cannot reach the service\nOpening "_s + QString::fromLatin1(url) + u": Connection refused"_s);
    }

    void httpsToAServerWithoutTls()
    {
        const QByteArray url = search().replace("http:", "https:");
        const QString error = opened(url);
        QVERIFY2(
            error.startsWith(u"Cannot reach the service\nOpening https://127.0.0.1:"_s), qPrintable(error));
        QVERIFY2(error.contains(u"SSL"_s) || error.contains(u"TLS"_s), qPrintable(error));
        QCOMPARE(m_service->requests().size(), 0);
    }

    void whatIsNoWebAddressIsNotOpened_data()
    {
        QTest::addColumn<QByteArray>("url");
        QTest::newRow("blank") << "http://127.0.0.1/a b"_ba;
        QTest::newRow("line end") << "http://127.0.0.1/a\r\nX: y"_ba;
        QTest::newRow("file") << "file:///etc/passwd"_ba;
        QTest::newRow("ftp") << "ftp://127.0.0.1/"_ba;
        QTest::newRow("angle bracket") << "http://127.0.0.1/<"_ba;
        QTest::newRow("fragment") << "http://127.0.0.1/#a"_ba;
        QTest::newRow("eight bits") << "http://127.0.0.1/\xE9"_ba;
        QTest::newRow("no scheme") << "127.0.0.1/a"_ba;
        QTest::newRow("no host") << "http://"_ba;
        QTest::newRow("port is no number") << "http://127.0.0.1:x/"_ba;
        QTest::newRow("user name") << "http://me@127.0.0.1/"_ba;
        QTest::newRow("empty") << ""_ba;
    }

    void whatIsNoWebAddressIsNotOpened()
    {
        QFETCH(QByteArray, url);
        QVERIFY(opened(url).startsWith(u"Invalid procedure call\nOpening \""_s));
        QVERIFY(!m_inet->stillExecuting());
    }

    void aRefusedAddressLeavesNothingToRead()
    {
        m_inet->execute(search(), "GET");
        QTRY_VERIFY(!m_inet->stillExecuting());
        QVERIFY(opened("http://127.0.0.1/a b").startsWith(u"Invalid procedure call\n"_s));
        QCOMPARE(m_inet->getChunk(100), QString());
    }

    void aSecondRequestIsRefusedAndTheFirstGoesOn()
    {
        m_service->behave({.delay = 200});
        QString second;
        bool isRunning = false;
        QTimer::singleShot(50, this, [&] {
            isRunning = m_inet->stillExecuting();
            second = opened("http://127.0.0.1/second");
        });
        QCOMPARE(opened(search()), QString::fromLatin1(line));
        QVERIFY(isRunning);
        QCOMPARE(second, u"Still executing last request\nOpening http://127.0.0.1/second"_s);
        QCOMPARE(m_service->requests().size(), 1);
    }

    void refusedUntilTheFirstHasItsAnswer()
    {
        QString second;
        QTimer::singleShot(0, this, [&] {
            QTest::qWait(200); // the first is answered meanwhile, but cannot return
            second = opened(search());
        });
        QCOMPARE(opened(search()), QString::fromLatin1(line));
        QVERIFY(second.startsWith(u"Still executing last request\n"_s));
        QCOMPARE(opened(search()), QString::fromLatin1(line));
    }

    void eventsRunWhileWaiting()
    {
        m_service->behave({.delay = 300});
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
        timer.start(20);
        (void)m_inet->openUrl(search());
        QVERIFY(ticks >= 5);
    }

    void abortedWhileTheServiceHangs()
    {
        m_service->behave({.fault = Fault::Hang, .times = 1});
        QTimer::singleShot(100, m_inet.get(), &Inet1::abort);
        QCOMPARE(opened(search()), u"aborted"_s);
        QVERIFY(!m_inet->stillExecuting());
        QCOMPARE(opened(search()), QString::fromLatin1(line));
    }

    void destroyedWhileTheServiceHangs()
    {
        m_service->behave({.fault = Fault::Hang});
        QTimer::singleShot(100, this, [this] { m_inet.reset(); });
        const auto url = search();
        Inet1 *inet = m_inet.get();
        QCOMPARE(errorText([inet, url] { (void)inet->openUrl(url); }), u"aborted"_s);
    }

    void theProgramEndsWhileTheServiceHangs()
    {
        m_service->behave({.fault = Fault::Hang});
        QString result;
        QTimer::singleShot(0, this, [&] { result = opened(search()); });
        QTimer::singleShot(100, this, [] { QCoreApplication::quit(); });
        QCoreApplication::exec();
        QCOMPARE(result, u"aborted"_s);
    }

    void redirectsAreFollowed()
    {
        const QByteArray target = "/rdslookup.php?freq=87.6&ps=RADIO%5F1";
        m_service->behave({.fault = Fault::Raw,
            .times = 1,
            .raw = "HTTP/1.1 302 Found\r\nLocation: " + target + "\r\nContent-Length: 0\r\n\r\n"});
        QCOMPARE(opened(search()), QString::fromLatin1(line));
        QCOMPARE(m_service->requests().last().target(), target);
    }

    void aRedirectedPostStaysOne_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QByteArray>("body");
        for (const QByteArray status : {"301", "302", "307", "308"}) {
            QTest::addRow("%s", status.constData()) << status << "POST"_ba
                                                    << "a=b"_ba;
        }
        QTest::newRow("303") << "303"_ba
                             << "GET"_ba
                             << ""_ba;
    }

    void aRedirectedPostStaysOne()
    {
        QFETCH(QByteArray, status);
        m_service->behave({.fault = Fault::Raw,
            .times = 1,
            .raw =
                "HTTP/1.1 " + status + " Moved\r\nLocation: /logpost1.php?x\r\nContent-Length: 0\r\n\r\n"});
        (void)m_inet->post(
            uploadUrl(m_service->url(), CodePage(1252)), "a=b", uploadHeaders.toByteArray(), 1024);
        QCOMPARE(m_service->requests().size(), 2);
        QTEST(m_service->requests().last().method(), "method");
        QTEST(m_service->requests().last().body, "body");
    }

    void redirectsWithoutEnd()
    {
        answerRaw("HTTP/1.1 302 Found\r\nLocation: /again\r\nContent-Length: 0\r\n\r\n");
        QVERIFY(opened(search()).endsWith(u": the service leads from address to address without end"_s));
        QCOMPARE(m_service->requests().size(), 11);
    }

    void aRedirectToAFileIsRefused()
    {
        answerRaw("HTTP/1.1 302 Found\r\nLocation: file:///etc/passwd\r\nContent-Length: 0\r\n\r\n");
        const QString error = opened(search());
        QVERIFY2(error.startsWith(u"The service answered with an error\nOpening http://127.0.0.1:"_s),
            qPrintable(error));
        QVERIFY2(error.endsWith(u": the service leads to what is no web address, file:///etc/passwd"_s),
            qPrintable(error));
    }

    void theStatesAreTraced()
    {
        QLoggingCategory::setFilterRules(u"quillon.inet1.debug=true"_s);
        const QtMessageHandler before = qInstallMessageHandler(keepTrace);
        traced().clear();
        (void)m_inet->openUrl(search());
        qInstallMessageHandler(before);
        QLoggingCategory::setFilterRules({});
        QCOMPARE(traced(),
            (QStringList {u" Looking up IP address of host computer"_s, u"IP address found"_s,
                u"Attempting to connect to Host"_s, u"Connected"_s, u"Making Request"_s, u"Request sent"_s,
                u"Chatting with Host..."_s, u"Response received"_s, u"ResponseCode 200 ResponseInfo \"OK\""_s,
                u"Disconnecting"_s, u"Disconnected"_s}));
    }

    void aThousandSearchesInARow()
    {
        for (int i = 0; i < 1000; ++i) {
            QCOMPARE(m_inet->openUrl(search()), QString::fromLatin1(line));
        }
        QCOMPARE(m_service->requests().size(), 1000);
    }
};

QTEST_GUILESS_MAIN(TestInet1)
#include "tst_inet1.moc"
