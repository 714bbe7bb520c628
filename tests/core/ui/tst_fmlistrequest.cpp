#include "fmlistwindow.h"

#include <QApplication>
#include <QTcpServer>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::standin;
using namespace quillon::test;

/// The request of a search: how it fails, what happens while it runs, how it ends.
class TestFmlistRequest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window = std::make_unique<FmlistWindow>(); }
    void cleanup() { m_window.reset(); }

    void failures_data();
    void failures();
    void theLinesBeforeABrokenOneAreListed();
    void noServer();
    void aSearchAfterAFailureWorks();
    void aSecondRequestIsRefusedAndTheFirstGoesOn();
    void whatIsTypedWhileItRunsIsKept();
    void anotherRowChosenWhileItRunsGetsTheResult();
    void closingTheWindowEndsTheRequest();
    void closingTheWindowEndsTheProgramWithCodeZero();

private:
    // Searches for the only or last entry.
    void search()
    {
        m_window->clickRow(m_window->grid().rows() - 1);
        m_window->click("Command11");
    }

    std::unique_ptr<FmlistWindow> m_window;
};

void TestFmlistRequest::failures_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told");
    const auto row = [](const char *title, Fault fault, const QString &name, const QString &told) {
        QTest::newRow(title) << static_cast<int>(fault) << name << told;
    };
    const QString service = u"The service answered with an error"_s;
    const QString subscript = u"Subscript out of range"_s;
    row("dropped in the middle", Fault::Drop, u"Cannot reach the service"_s, u"/rdslookup.php"_s);
    row("500", Fault::Fail500, service, u"500"_s);
    row("503", Fault::Fail503, service, u"503"_s);
    row("eight fields", Fault::Eight, subscript, u"line 1"_s);
    row("a megabyte of junk", Fault::Junk, subscript, u"line 1"_s);
    row("more than 16 MiB", Fault::Huge, service, u"16 MiB"_s);
}

void TestFmlistRequest::failures()
{
    QFETCH(int, fault);
    QFETCH(QString, name);
    QFETCH(QString, told);
    m_window->open(oneEntry);
    search();
    const QStringList fields = m_window->fields();
    m_window->service.behave({.fault = static_cast<Fault>(fault)});
    m_window->click("Command11");
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(u"Run-time error: "_s + name + u'\n'), qPrintable(texts.first()));
    QVERIFY2(texts.first().contains(told), qPrintable(texts.first()));
    QVERIFY(texts.first().size() < 1000);
    QVERIFY(m_window->isAfterASearch());
    QCOMPARE(m_window->results().count(), 0);
    QCOMPARE(m_window->status(), QString());
    QCOMPARE(m_window->fields(), fields);
    QCOMPARE(m_window->logbook(), oneEntry);
}

void TestFmlistRequest::theLinesBeforeABrokenOneAreListed()
{
    m_window->open(oneEntry);
    search();
    m_window->answerWith("87.6;D3C1;ONE;D;Berlin, Berlin;10;52.5;13.4;1\n"
                         "87.6;D3C1;TWO;D;Berlin\n"
                         "87.6;D3C1;THREE;D;Berlin, Berlin;10;52.5;13.4;3\n");
    m_window->click("Command11");
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().contains(u", line 2: "_s), qPrintable(texts.first()));
    QCOMPARE(m_window->resultRows(), QStringList {u"87.6\tD3C1\tONE\tD\tBerlin\t10\t52.5\t13.4\t1"_s});
    QCOMPARE(m_window->status(), QString());
    QVERIFY(m_window->isAfterASearch());
}

void TestFmlistRequest::noServer()
{
    QString url;
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        url = u"http://127.0.0.1:%1"_s.arg(closed.serverPort());
    }
    m_window->openAt(url, oneEntry);
    search();
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(
        texts.first().startsWith(u"Run-time error: Cannot reach the service\n"_s), qPrintable(texts.first()));
    QVERIFY2(texts.first().contains(url), qPrintable(texts.first()));
    QVERIFY(m_window->isAfterASearch());
}

void TestFmlistRequest::aSearchAfterAFailureWorks()
{
    m_window->open(oneEntry);
    m_window->service.behave({.fault = Fault::Drop, .times = 1});
    search();
    QCOMPARE(m_window->answers.takeTexts().size(), 1);
    m_window->click("Command11");
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
    QCOMPARE(m_window->resultRows(), QStringList {berlin});
}

void TestFmlistRequest::aSecondRequestIsRefusedAndTheFirstGoesOn()
{
    m_window->open(twoEntries, "OMID=1\r\n");
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        // Choosing a row enables the button while the request runs.
        m_window->clickRow(2);
        m_window->click("Command11");
        m_window->trigger("menuFMListUploadLogs");
        m_window->trigger("menuFMListAutoSearch");
        QVERIFY(!m_window->find<QWidget>("proclogs")->isVisible());
    });
    m_window->clickRow(1);
    m_window->click("Command11");
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 3);
    for (const QString &text : texts) {
        QVERIFY2(text.startsWith(u"Run-time error: Still executing last request\n"_s), qPrintable(text));
    }
    QCOMPARE(m_window->service.requests().size(), 1);
    QCOMPARE(m_window->resultRows(), QStringList {berlin});
    QCOMPARE(m_window->status(), u"FMList Search: 1 matches"_s);
    QVERIFY(m_window->isAfterASearch());
}

void TestFmlistRequest::whatIsTypedWhileItRunsIsKept()
{
    m_window->open(oneEntry);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        m_window->fill(
            {u"Text8"_s, u"OTHER"_s, u"Text1"_s, u"E201"_s, u"Text9"_s, u"99.9"_s, u"Text3"_s, u"typed"_s});
    });
    search();
    QCOMPARE(m_window->text("Text3"), u"typed"_s);
    QCOMPARE(m_window->text("Text9"), u"99.9"_s);
    QCOMPARE(m_window->text("Text1"), u"E201"_s);
    QCOMPARE(m_window->text("Text8"), u"OTHER"_s);
    QCOMPARE(m_window->resultRows(), QStringList {berlin});
}

void TestFmlistRequest::anotherRowChosenWhileItRunsGetsTheResult()
{
    m_window->open(twoEntries);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] { m_window->clickRow(2); });
    m_window->clickRow(1);
    m_window->click("Command11");
    QCOMPARE(m_window->text("Text1"), u"F201"_s);
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->logbook(),
        oneEntry + "D3C1|12/06/2010 18:30:00|Es|87.6|Berlin (Alex)|D||RADIO_1|100|||4711|\r\n");
}

void TestFmlistRequest::closingTheWindowEndsTheRequest()
{
    m_window->open(oneEntry);
    m_window->service.behave({.fault = Fault::Hang});
    m_window->duringRequest(1, [this] { m_window->form().close(); });
    search();
    QVERIFY(!m_window->form().isVisible());
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
    QCOMPARE(m_window->logbook(), oneEntry);
    m_window->stop();
}

void TestFmlistRequest::closingTheWindowEndsTheProgramWithCodeZero()
{
    m_window->open(oneEntry);
    m_window->service.behave({.fault = Fault::Hang});
    m_window->duringRequest(1, [this] { m_window->form().close(); });
    bool isOver = false;
    QTimer::singleShot(0, this, [&] {
        search();
        isOver = true;
    });
    constexpr int patience = 20'000;
    QTimer::singleShot(patience, qApp, [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(isOver);
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
}

QTEST_MAIN(TestFmlistRequest)
#include "tst_fmlistrequest.moc"
