#include "fmlist-standin/standin.h"
#include "net/inet1.h"
#include "platform/runtimeerror.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

QString path(const QString &name)
{
    return QStringLiteral(QUILLON_TEST_DATA) + u"/tls/"_s + name;
}

QByteArray fileBytes(const QString &name)
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QSslCertificate certificate()
{
    return QSslCertificate(fileBytes(u"loopback.pem"_s));
}

} // namespace

class TestInet1Tls : public QObject
{
    Q_OBJECT

private:
    QSslServer m_server;
    QByteArray m_answer;
    QByteArray m_request;
    Inet1 m_inet {CodePage(1252)};

    [[nodiscard]] QByteArray url() const
    {
        return "https://127.0.0.1:" + QByteArray::number(m_server.serverPort()) + "/x?ps=%5F%9";
    }

    [[nodiscard]] QString opened()
    {
        try {
            return m_inet.openUrl(url());
        } catch (const RuntimeError &error) {
            return error.text();
        }
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QSslSocket::supportsSsl());
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(certificate());
        configuration.setPrivateKey(QSslKey(fileBytes(u"loopback.key"_s), QSsl::Ec));
        m_server.setSslConfiguration(configuration);
        connect(&m_server, &QTcpServer::pendingConnectionAvailable, this, [this] {
            QTcpSocket *socket = m_server.nextPendingConnection();
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                m_request += socket->readAll();
                socket->write(m_answer);
                socket->disconnectFromHost();
            });
        });
        QVERIFY(m_server.listen(QHostAddress::LocalHost));
    }

    void init()
    {
        m_request.clear();
        m_answer = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nabcd\n";
        qputenv("SSL_CERT_FILE", QFile::encodeName(path(u"loopback.pem"_s)));
    }

    void anEncryptedAnswer()
    {
        QCOMPARE(opened(), u"abcd\n"_s);
        QVERIFY(m_request.startsWith("GET /x?ps=%5F%9 HTTP/1.1\r\n"));
    }

    void anEncryptedAnswerUpToTheEnd()
    {
        m_answer = "HTTP/1.1 200 OK\r\n\r\n" + QByteArray(100'000, 'x');
        QCOMPARE(opened(), QString(100'000, u'x'));
    }

    void anEncryptedAnswerThatStops()
    {
        m_answer.chop(2);
        QVERIFY(opened().endsWith(u": the connection ended before the answer was complete"_s));
    }

    void aCertificateThatNobodyTrusts()
    {
        qunsetenv("SSL_CERT_FILE");
        const QString error = opened();
        QVERIFY2(
            error.startsWith(u"Run-time error: Cannot reach the service\nOpening "_s), qPrintable(error));
        QVERIFY2(error.contains(u"certificate"_s), qPrintable(error));
        QCOMPARE(m_request, QByteArray());
    }

    void aRedirectWithoutEncryptionIsRefused()
    {
        m_answer = "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n";
        QVERIFY(opened().endsWith(
            u": the service leads to an address without encryption, http://127.0.0.1:1/"_s));
    }

    void noWayBackFromEncryptionOverSeveralRedirects()
    {
        standin::StandIn open {QByteArray()};
        QVERIFY(open.listen());
        open.behave({.fault = standin::Fault::Raw,
            .raw = "HTTP/1.1 302 Found\r\nLocation: " + url() + "\r\nContent-Length: 0\r\n\r\n"});
        const QString back = open.url() + u"/back"_s;
        m_answer = "HTTP/1.1 302 Found\r\nLocation: " + back.toLatin1() + "\r\nContent-Length: 0\r\n\r\n";
        QString error;
        try {
            (void)m_inet.openUrl(open.url().toLatin1() + "/start");
        } catch (const RuntimeError &refusal) {
            error = refusal.text();
        }
        QVERIFY2(error.endsWith(u": the service leads to an address without encryption, "_s + back),
            qPrintable(error));
        QVERIFY(m_request.startsWith("GET /x?ps=%5F%9 HTTP/1.1\r\n"));
        QCOMPARE(open.requests().size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestInet1Tls)
#include "tst_inet1_tls.moc"
