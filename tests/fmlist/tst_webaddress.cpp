#include "fmlist/webaddress.h"
#include "platform/runtimeerror.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestWebAddress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parts_data()
    {
        QTest::addColumn<QByteArray>("url");
        QTest::addColumn<bool>("isSecure");
        QTest::addColumn<QString>("host");
        QTest::addColumn<int>("port");
        QTest::addColumn<QByteArray>("authority");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("http") << "http://fm.org/a?b=%5F%9%"_ba << false << u"fm.org"_s << 80 << "fm.org"_ba
                              << "/a?b=%5F%9%"_ba;
        QTest::newRow("https") << "HTTPS://FM.org:8443"_ba << true << u"fm.org"_s << 8443 << "FM.org:8443"_ba
                               << "/"_ba;
        QTest::newRow("default port of https")
            << "https://fm.org/"_ba << true << u"fm.org"_s << 443 << "fm.org"_ba
            << "/"_ba;
        QTest::newRow("query without a path")
            << "http://fm.org?x"_ba << false << u"fm.org"_s << 80 << "fm.org"_ba
            << "/?x"_ba;
        QTest::newRow("address of six")
            << "http://[::1]:8080/a/../b//c"_ba << false << u"::1"_s << 8080 << "[::1]:8080"_ba
            << "/a/../b//c"_ba;
    }

    void parts()
    {
        QFETCH(QByteArray, url);
        const WebAddress address = webAddress(url);
        QTEST(address.isSecure, "isSecure");
        QTEST(address.host, "host");
        QTEST(int(address.port), "port");
        QTEST(address.authority, "authority");
        QTEST(address.target, "target");
    }

    void whatIsNoAddress_data()
    {
        QTest::addColumn<QByteArray>("url");
        QTest::addColumn<QString>("reason");
        const QString character = u"it holds a character that no web address can hold"_s;
        const QString scheme = u"only http and https addresses can be opened"_s;
        const QString host = u"it names no host"_s;
        QTest::newRow("blank") << "http://fm.org/a b"_ba << character;
        QTest::newRow("angle bracket") << "http://fm.org/<"_ba << character;
        QTest::newRow("line end") << "http://fm.org/\r\nX: y"_ba << character;
        QTest::newRow("fragment") << "http://fm.org/#a"_ba << character;
        QTest::newRow("eight bits") << "http://fm.org/\xE9"_ba << character;
        QTest::newRow("ftp") << "ftp://fm.org/"_ba << scheme;
        QTest::newRow("file") << "file:///etc/passwd"_ba << scheme;
        QTest::newRow("nothing") << ""_ba << scheme;
        QTest::newRow("no scheme") << "fm.org/a"_ba << scheme;
        QTest::newRow("no host") << "http:///a"_ba << host;
        QTest::newRow("port is no number") << "http://fm.org:x/"_ba << host;
        QTest::newRow("user name") << "http://me@fm.org/"_ba << host;
    }

    void whatIsNoAddress()
    {
        QFETCH(QByteArray, url);
        QFETCH(QString, reason);
        try {
            (void)webAddress(url);
            QFAIL("no error");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::InvalidProcedureCall);
            QCOMPARE(error.doing(), u"Opening \""_s + QString::fromLatin1(url) + u"\": "_s + reason);
        }
    }

    void onlyWhatNoAddressCanHoldIsEscaped()
    {
        QByteArray all;
        QByteArray escaped;
        for (int code = 0; code < 256; ++code) {
            const auto byte = static_cast<char>(code);
            const bool stays = code > 32 && code < 127 && !QByteArray("\"#<>\\^`{|}").contains(byte);
            all += byte;
            escaped += stays ? QByteArray(1, byte) : '%' + QByteArray(1, byte).toHex().toUpper();
        }
        QCOMPARE(sendable(QByteArrayView(all)), escaped);
        QCOMPARE(sendable(u"\u20ac", CodePage(1252)), "%80"_ba);
    }

    void redirects_data()
    {
        QTest::addColumn<QByteArray>("location");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("whole") << "https://b.org/x%5F"_ba
                               << "https://b.org/x%5F"_ba;
        QTest::newRow("path") << "/x%5F?y#z"_ba
                              << "http://a.org:81/x%5F?y"_ba;
        QTest::newRow("host") << "//b.org/x"_ba
                              << "http://b.org/x"_ba;
        QTest::newRow("beside") << "x?y"_ba
                                << "http://a.org:81/p/x?y"_ba;
        QTest::newRow("up") << "../x"_ba
                            << "http://a.org:81/x"_ba;
        QTest::newRow("careless") << "/a b"_ba
                                  << "http://a.org:81/a%20b"_ba;
    }

    void redirects()
    {
        QFETCH(QByteArray, location);
        QTEST(redirected("http://a.org:81/p/q?r", location), "target");
    }

    void aRedirectToAnotherSchemeIsRefused()
    {
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)redirected("http://a.org/", "file:///etc/passwd"));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)redirected("http://a.org/", "javascript://alert"));
    }
};

QTEST_GUILESS_MAIN(TestWebAddress)
#include "tst_webaddress.moc"
