#include "fmlistwindow.h"
#include "support/opened.h"
#include "ui/desktop.h"

#include <QAction>
#include <QApplication>
#include <QDate>
#include <QProcess>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray settings = "SEARCH_URL=http://127.0.0.1:9/search?q=\r\n";

} // namespace

class TestWebLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<FmlistWindow>();
        m_opened = std::make_unique<Opened>();
    }
    void cleanup()
    {
        m_opened.reset();
        m_window.reset();
    }

    void googleSearchesForTheStationInTheForm_data();
    void googleSearchesForTheStationInTheForm();
    void googleSearchesAtItsUsualAddress();
    void googleTellsWhatItDoes();
    void theMapOfToday();
    void aDesktopThatRefusesGoesUnnoticed();
    void theMapOfTodayForYou();
    void withoutAnOmidThereIsNoMapForYou();
    void helpOpensTheManual_data();
    void helpOpensTheManual();
    void withoutTheSuppliedManualHelpOpensTheOneOfTheApplicationDirectory();
    void helpOpensThePageOfTheSettings();
    void theUpdateLogIsOpened_data();
    void theUpdateLogIsOpened();
    void nothingIsOpenedWhileARequestRunsUnlessAsked();
    void theDesktopIsHandedTheAddress();

private:
    // What was opened since the last call.
    QStringList takeOpened() { return m_opened->takeEncoded(); }
    static QString today() { return QDate::currentDate().toString(u"yyyy-MM-dd"_s); }

    std::unique_ptr<FmlistWindow> m_window;
    std::unique_ptr<Opened> m_opened;
};

void TestWebLinks::googleSearchesForTheStationInTheForm_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("query");
    QTest::newRow("all four") << QStringList {u"Text1"_s, u"D3C1"_s, u"Text9"_s, u"87.6"_s, u"Text8"_s,
        u"RADIO_1"_s, u"Text5"_s, u"Berlin"_s}
                              << u"D3C1+87.6+RADIO+1+Berlin"_s;
    QTest::newRow("nothing") << QStringList {u"Text1"_s, {}, u"Text9"_s, {}, u"Text8"_s, {}, u"Text5"_s, {}}
                             << u"+++"_s;
    QTest::newRow("trimmed, blanks within") << QStringList {u"Text1"_s, u" d3c1 "_s, u"Text9"_s, u" 87.6 "_s,
        u"Text8"_s, u"A_"_s, u"Text5"_s, u"  Bad  Ems "_s}
                                            << u"D3C1+87.6+A++Bad++Ems"_s;
}

void TestWebLinks::googleSearchesForTheStationInTheForm()
{
    QFETCH(QStringList, fields);
    QFETCH(QString, query);
    m_window->open({}, settings);
    m_window->click("Command2");
    m_window->fill(fields);
    m_window->click("Command5");
    QCOMPARE(takeOpened(), QStringList {u"http://127.0.0.1:9/search?q="_s + query});
    QVERIFY(m_window->asked().isEmpty());
}

void TestWebLinks::googleSearchesAtItsUsualAddress()
{
    m_window->open(logLine("D3C1", "12/06/2010 18:22:05", "87.6", "RADIO_1", "D", "Berlin"));
    m_window->clickRow(1);
    m_window->click("Command5");
    QCOMPARE(takeOpened(), QStringList {u"https://www.google.com/search?q=D3C1+87.6+RADIO+1+Berlin"_s});
}

void TestWebLinks::googleTellsWhatItDoes()
{
    m_window->open();
    QCOMPARE(m_window->caption("Command5"), u"Google"_s);
    QVERIFY2(m_window->find<QWidget>("Command5")->toolTip().contains(u"callsign"_s),
        qPrintable(m_window->find<QWidget>("Command5")->toolTip()));
}

void TestWebLinks::aDesktopThatRefusesGoesUnnoticed()
{
    m_window->open(oneEntry);
    m_window->clickRow(1);
    // Off screen there is no desktop that could open anything.
    m_opened.reset();
    m_window->click("Command5");
    for (const char *command : {"menuFMLPropMap", "menuFMLAutoUpdateViewLog", "menuHelpOnlineHelp"}) {
        m_window->trigger(command);
    }
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
    QVERIFY(!QApplication::overrideCursor());
}

void TestWebLinks::theMapOfToday()
{
    m_window->open();
    m_window->trigger("menuFMLPropMap");
    QCOMPARE(takeOpened(),
        QStringList {m_window->service.url() + u"/fm_logmap.php?datum="_s + today() + u"&band=ALL"_s});
}

void TestWebLinks::theMapOfTodayForYou()
{
    m_window->open({}, "OMID=1234-b\r\n");
    m_window->trigger("menuFMLYouProp");
    QCOMPARE(takeOpened(),
        QStringList {m_window->service.url() + u"/fm_logmap.php?datum="_s + today()
            + u"&band=ALL&hours=0&omid=1234-b"_s});
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
}

void TestWebLinks::withoutAnOmidThereIsNoMapForYou()
{
    m_window->open();
    m_window->trigger("menuFMLYouProp");
    QCOMPARE(takeOpened(), QStringList());
    QCOMPARE(m_window->answers.takeTexts(), QStringList {u"No OMID Set"_s});
}

void TestWebLinks::helpOpensTheManual_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("menu") << false;
    QTest::newRow("F1") << true;
}

void TestWebLinks::helpOpensTheManual()
{
    QFETCH(bool, byKey);
    m_window->directory.write(u"Manual.HTML"_s, "<p>Help</p>");
    m_window->open();
    if (byKey) {
        m_window->key(Qt::Key_F1);
    } else {
        m_window->trigger("menuHelpOnlineHelp");
    }
    // Not the copy that an older version may have left there.
    const QString manual = QStringLiteral(QUILLON_SUPPLIED "/manual.html");
    QCOMPARE(takeOpened(), QStringList {u"file://"_s + manual});
    QVERIFY(QFile::exists(manual));
}

void TestWebLinks::withoutTheSuppliedManualHelpOpensTheOneOfTheApplicationDirectory()
{
    const TestDirectory directory;
    const TestDirectory supplied;
    directory.write(u"Manual.HTML"_s, "<p>Help</p>");
    Form1 form({directory.path(), supplied.path(), Regional::fromEnvironment()});
    form.findChild<QAction *>(u"menuHelpOnlineHelp"_s)->trigger();
    QCOMPARE(takeOpened(), QStringList {u"file://"_s + directory.file(u"Manual.HTML"_s)});
}

void TestWebLinks::helpOpensThePageOfTheSettings()
{
    m_window->open({}, "HELP_URL=http://127.0.0.1:9/help?a=b\r\n");
    m_window->trigger("menuHelpOnlineHelp");
    QCOMPARE(takeOpened(), QStringList {u"http://127.0.0.1:9/help?a=b"_s});
}

void TestWebLinks::theUpdateLogIsOpened_data()
{
    QTest::addColumn<bool>("exists");
    QTest::newRow("written") << true;
    QTest::newRow("not there yet") << false;
}

void TestWebLinks::theUpdateLogIsOpened()
{
    QFETCH(bool, exists);
    if (exists) {
        m_window->directory.write(u"autoupdate.log"_s, "x\r\n");
    }
    m_window->open();
    m_window->trigger("menuFMLAutoUpdateViewLog");
    QCOMPARE(takeOpened(), QStringList {u"file://"_s + m_window->directory.file(u"autoupdate.log"_s)});
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
}

void TestWebLinks::nothingIsOpenedWhileARequestRunsUnlessAsked()
{
    m_window->open(logLine("D3C1", "12/06/2010 18:22:05", "87.6", "", "D", "Berlin"), settings);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        QCOMPARE(takeOpened(), QStringList());
        m_window->click("Command5");
    });
    m_window->clickRow(1);
    m_window->click("Command11");
    QCOMPARE(takeOpened(), QStringList {u"http://127.0.0.1:9/search?q=D3C1+87.6++Berlin"_s});
    QCOMPARE(m_window->results().count(), 1);
}

// On a real display, with an opener that only writes down what it is given.
void TestWebLinks::theDesktopIsHandedTheAddress()
{
    const TestDirectory directory;
    directory.write(u"xdg-open"_s, "#!/bin/sh\nprintf '%s\\n' \"$1\" >> \"$QUILLON_OPENED\"\n");
    QVERIFY(QFile::setPermissions(
        directory.file(u"xdg-open"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"QUILLON_OPENED"_s, directory.file(u"opened"_s));
    environment.insert(u"PATH"_s, directory.path() + u':' + environment.value(u"PATH"_s));
    environment.remove(u"BROWSER"_s);
    const QString address = u"http://127.0.0.1:9/search?q=D3C1+87.6+RADIO+1+Berlin"_s;
    const QString file = directory.file(u"autoupdate.log"_s);
    QProcess child;
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(
        u"xvfb-run"_s, {u"-a"_s, QCoreApplication::applicationFilePath(), u"--open"_s, address, file});
    constexpr int patience = 60'000;
    QVERIFY(child.waitForFinished(patience));
    QVERIFY2(child.exitCode() == 0, child.readAll().constData());
    const QByteArray both = address.toLatin1() + "\nfile://" + file.toLatin1() + '\n';
    QTRY_COMPARE(directory.read(u"opened"_s).size(), both.size());
    const QByteArrayList opened = directory.read(u"opened"_s).split('\n');
    QVERIFY2(opened.contains(address.toLatin1()), opened.join('\n').constData());
    QVERIFY2(opened.contains("file://" + file.toLatin1()), opened.join('\n').constData());
}

// "--open ADDRESS..." asks the desktop and does nothing else.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--open") {
        for (const QString &address : arguments.mid(2)) {
            HyperJump(address);
        }
        return 0;
    }
    TestWebLinks test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_weblinks.moc"
