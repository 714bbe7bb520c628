#include "net/httpclient.h"

#include <QTest>

#include <atomic>
#include <memory>
#include <netdb.h>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 20'000;

std::atomic<int> asked = 0;
std::atomic<bool> mayAnswer = false;
std::atomic<int> answered = 0;

} // namespace

// Stands before the one of the system: a name server that answers when it may, and knows no name.
extern "C" int getaddrinfo(const char *, const char *, const addrinfo *, addrinfo **)
{
    ++asked;
    for (int waited = 0; !mayAnswer && waited < patience; waited += 10) {
        QTest::qSleep(10);
    }
    ++answered;
    return EAI_NONAME;
}

class TestSlowNameServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanupTestCase()
    {
        mayAnswer = true;
        QTRY_COMPARE_WITH_TIMEOUT(answered.load(), asked.load(), patience);
    }

    void closingDoesNotWaitForIt()
    {
        auto client = std::make_unique<HttpClient>();
        client->start({.method = "GET", .url = "http://station.invalid/", .body = {}, .headerBlock = {}});
        QTRY_VERIFY_WITH_TIMEOUT(asked > 0, patience);
        QVERIFY(!client->isFinished());
        client.reset();
        QCOMPARE(answered.load(), 0);
    }
};

QTEST_GUILESS_MAIN(TestSlowNameServer)
#include "tst_slownameserver.moc"
