#include "fmlist/httpanswer.h"
#include "platform/runtimeerror.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype limit = 64;

// The body, or the error's text, of an answer that comes in pieces of `size` bytes.
QString read(const QByteArray &wire, qsizetype size)
{
    HttpAnswerReader reader(u"Reading"_s, limit);
    try {
        for (qsizetype at = 0; at < wire.size(); at += size) {
            reader.feed(QByteArrayView(wire).sliced(at, std::min(size, wire.size() - at)));
        }
        if (!reader.isComplete()) {
            reader.end();
        }
        return QString::number(reader.answer().status) + u' ' + QString::fromLatin1(reader.answer().body);
    } catch (const RuntimeError &error) {
        return error.text().replace(u"Run-time error: "_s, QString());
    }
}

const QString missing =
    u"Cannot reach the service\nReading: the connection ended before the answer was complete"_s;
const QString notHttp = u"The service answered with an error\nReading: the answer is not HTTP"_s;
const QString tooLarge = u"The service answered with an error\nReading: the answer is larger than 0 MiB"_s;

} // namespace

class TestHttpAnswer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anAnswerInPieces_data()
    {
        QTest::addColumn<QByteArray>("wire");
        QTest::addColumn<QString>("expected");
        QTest::newRow("length") << "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc"_ba << u"200 abc"_s;
        QTest::newRow("length, name in another case")
            << "HTTP/1.1 200 OK\r\ncontent-LENGTH:3\r\n\r\nabcd"_ba << u"200 abc"_s;
        QTest::newRow("empty") << "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"_ba << u"200 "_s;
        QTest::newRow("up to the end") << "HTTP/1.0 200\r\n\r\nabc\r\n\r\n"_ba << u"200 abc\r\n\r\n"_s;
        QTest::newRow("no content") << "HTTP/1.1 204 No Content\r\n\r\n"_ba << u"204 "_s;
        QTest::newRow("chunks")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\nA;x=y\r\n"
               "0123456789\r\n0\r\n\r\n"_ba
            << u"200 abc0123456789"_s;
        QTest::newRow("chunks and a trailer")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: Chunked\r\n\r\n1\r\na\r\n0\r\nX: y\r\n\r\n"_ba
            << u"200 a"_s;
        QTest::newRow("an interim answer first")
            << "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\na"_ba << u"200 a"_s;
        QTest::newRow("error status")
            << "HTTP/1.1 503 Service Unavailable\r\nContent-Length: 1\r\n\r\na"_ba << u"503 a"_s;

        QTest::newRow("nothing") << QByteArray() << missing;
        QTest::newRow("half a head") << "HTTP/1.1 200 OK\r\nContent-"_ba << missing;
        QTest::newRow("half a body") << "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nab"_ba << missing;
        QTest::newRow("half a chunk")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nab"_ba << missing;
        QTest::newRow("no last chunk")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\na\r\n"_ba << missing;

        QTest::newRow("another protocol") << "SSH-2.0-x\r\n\r\n"_ba << notHttp;
        QTest::newRow("status is no number") << "HTTP/1.1 2x0 OK\r\n\r\n"_ba << notHttp;
        QTest::newRow("a head without end")
            << "HTTP/1.1 200 OK\r\nX: "_ba + QByteArray(70'000, 'x') << notHttp;
        QTest::newRow("too large as told") << "HTTP/1.1 200 OK\r\nContent-Length: 65\r\n\r\n"_ba << tooLarge;
        QTest::newRow("too large as it comes")
            << "HTTP/1.1 200 OK\r\n\r\n"_ba + QByteArray(65, 'x') << tooLarge;
        QTest::newRow("just not too large")
            << "HTTP/1.1 200 OK\r\n\r\n"_ba + QByteArray(64, 'x') << u"200 "_s + QString(64, u'x');
        QTest::newRow("too large a chunk")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nFFFFFFFFFFFF\r\n"_ba << tooLarge;
        QTest::newRow("length is no number")
            << "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n"_ba
            << u"The service answered with an error\nReading: the answer tells \"-1\" as its length"_s;
        QTest::newRow("chunk length is no number")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nxyz\r\n"_ba
            << u"The service answered with an error\nReading: the answer tells \"xyz\" as the length of a chunk"_s;
        QTest::newRow("chunk longer than told")
            << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\nabc\r\n0\r\n\r\n"_ba
            << u"The service answered with an error\nReading: a chunk of the answer is longer than told"_s;
        QTest::newRow("packed")
            << "HTTP/1.1 200 OK\r\nContent-Encoding: GZIP\r\n\r\n"_ba
            << u"The service answered with an error\nReading: the answer is packed with gzip"_s;
    }

    void anAnswerInPieces()
    {
        QFETCH(QByteArray, wire);
        QFETCH(QString, expected);
        for (const qsizetype size : {1, 2, 7, 100'000}) {
            QCOMPARE(read(wire, size), expected);
        }
    }

    void headersAreFoundInAnyCase()
    {
        HttpAnswerReader reader(u"Reading"_s);
        reader.feed(
            "HTTP/1.1 302 Found\r\nLOCATION:  /there \r\nlocation: /here\r\nContent-Length: 0\r\n\r\n");
        QVERIFY(reader.isComplete());
        QCOMPARE(reader.answer().header("location"), "/there"_ba);
        QCOMPARE(reader.answer().header("content-type"), QByteArray());
        QCOMPARE(reader.answer().reason, "Found"_ba);
    }
};

QTEST_GUILESS_MAIN(TestHttpAnswer)
#include "tst_httpanswer.moc"
