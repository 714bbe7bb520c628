#include "fmlistwindow.h"

#include <QApplication>
#include <QProgressBar>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::standin;
using namespace quillon::test;

namespace {

const QByteArray first = "D3C1|12/06/2010 18:22:05|Es|87.6|Berlin|D|||10|||4711|\r\n";
const QByteArray second = "F201|13/06/2010 06:05:09|TEP|90.0|Paris|F|||10||fml=multi#|502|\r\n";
const QByteArray third = "5201|14/06/2010 00:00:00|Tropo|95.0|Roma|I|||60||a=b#fml=none#c|601|\r\n";
const QByteArray unidentified = "AAAA|12/06/2010 10:00:00|Es|99.9||TBD||NAME|||||\r\n";
const QByteArray sentBefore = "E201|12/06/2010 11:00:00|Es|95.0|Madrid|E|||||fml=sent#|602|\r\n";

const QByteArray firstAfter = "D3C1|12/06/2010 18:22:05|Es|87.6|Berlin|D|||10||fml=sent#|4711|\r\n";
const QByteArray secondAfter = "F201|13/06/2010 06:05:09|TEP|90.0|Paris|F|||10||fml=sent#|502|\r\n";
const QByteArray thirdAfter = "5201|14/06/2010 00:00:00|Tropo|95.0|Roma|I|||60||a=b#fml=sent#|601|\r\n";

const QByteArray firstBody =
    "omid=1234&freq=87%2E6&pi=D3C1&uid=4711&dateTime=12%2D06%2D2010+18%3A22%3A05&propa=Es";
const QByteArray secondBody = "omid=1234&freq=90%2E0&pi=F201&uid=502&dateTime=13%2D06%2D2010+06%3A05%3A09";
const QByteArray thirdBody =
    "omid=1234&freq=95%2E0&pi=5201&uid=601&dateTime=14%2D06%2D2010+00%3A00%3A00&propa=Tropo";

const QByteArray omid = "OMID=1234\r\n";
const QString done = u"done."_s;
const QString noSender =
    u"To submit logs to FMList either supply your OMID or (e-mail address, home latitude and home longitude)"_s;
const QString nothingReady =
    u"You have no logs ready to be uploaded to FMList. To make logs ready you need to lookup the UID from FMList this can be done by selecting your log entry then clicking on search FMList. Once the search results are populated then double click on the correct transmitter and update your log record"_s;

} // namespace

class TestUpload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window = std::make_unique<FmlistWindow>(); }
    void cleanup() { m_window.reset(); }

    void withoutASenderNothingIsSent_data();
    void withoutASenderNothingIsSent();
    void withoutAnEligibleEntryNothingIsSent();
    void theRequestByteForByte();
    void everyEligibleEntryInLogOrderIsMarked();
    void theSenderByOmidOrByAddressAndPosition_data();
    void theSenderByOmidOrByAddressAndPosition();
    void onlyThreeModesAreReported_data();
    void onlyThreeModesAreReported();
    void aSecondRunSendsNothingTwice();
    void anErrorLeavesTheEntryEligible();
    void theAnswerIsShownAsItIsUpTo1024Characters();
    void anAnswerOfManyLinesLeavesTheWindowAsItIs();
    void whileItRunsThePointerIsBusyAndTheProgressShown();
    void whatWasAcceptedBeforeAFailureIsOnTheDisk_data();
    void whatWasAcceptedBeforeAFailureIsOnTheDisk();
    void aLogbookThatCannotBeWrittenKeepsTheMarks();
    void nothingElseIsDoneMeanwhile();
    void aDeletedEntryIsNeverSent();
    void aLogWhoseReadyEntryIsDeletedHasNothingToSend();
    void closingInTheMiddleSavesWhatWasAccepted();

private:
    void upload() { m_window->trigger("menuFMListUploadLogs"); }
    QByteArrayList bodies()
    {
        QByteArrayList all;
        for (const Request &request : m_window->service.requests()) {
            all += request.body;
        }
        return all;
    }

    std::unique_ptr<FmlistWindow> m_window;
};

void TestUpload::withoutASenderNothingIsSent_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::newRow("neither OMID nor e-mail") << "HOME_DEC_LAT=52.5\r\nHOME_DEC_LON=13.4\r\n"_ba;
    QTest::newRow("no latitude") << "EMAIL=me@home.org\r\nHOME_DEC_LAT=\r\nHOME_DEC_LON=13.4\r\n"_ba;
    QTest::newRow("no longitude") << "EMAIL=me@home.org\r\nHOME_DEC_LAT=52.5\r\nHOME_DEC_LON=\r\n"_ba;
}

void TestUpload::withoutASenderNothingIsSent()
{
    QFETCH(QByteArray, settings);
    m_window->open(first, settings);
    upload();
    QCOMPARE(m_window->answers.takeTexts(), QStringList({noSender, done}));
    QVERIFY(m_window->asked().isEmpty());
    QCOMPARE(m_window->logbook(), first);
}

void TestUpload::withoutAnEligibleEntryNothingIsSent()
{
    m_window->open(unidentified + sentBefore, omid);
    upload();
    QCOMPARE(m_window->answers.takeTexts(), QStringList({nothingReady, done}));
    QVERIFY(m_window->asked().isEmpty());
    QCOMPARE(m_window->logbook(), unidentified + sentBefore);
}

void TestUpload::theRequestByteForByte()
{
    m_window->open(first, omid);
    upload();
    QCOMPARE(m_window->asked(), QByteArrayList {"POST /logpost1.php HTTP/1.1"});
    const Request &request = m_window->service.requests().first();
    QVERIFY2(request.headers.contains(
                 "Content-Type: application/x-www-form-urlencoded\r\nUser-Agent: Quillon\r\n"),
        request.headers.constData());
    QCOMPARE(request.headers.count("Content-Type"), 1);
    QCOMPARE(request.headers.count("User-Agent"), 1);
    QCOMPARE(request.body, firstBody);
}

void TestUpload::everyEligibleEntryInLogOrderIsMarked()
{
    // The order of the log, which is not that of the grid.
    m_window->open(third + unidentified + second + sentBefore + first, omid);
    upload();
    QCOMPARE(m_window->answers.takeTexts(), QStringList {done});
    QCOMPARE(bodies(), QByteArrayList({thirdBody, secondBody, firstBody}));
    QCOMPARE(m_window->logbook(), thirdAfter + unidentified + secondAfter + sentBefore + firstAfter);
    QStringList shown;
    for (int row = 1; row < m_window->grid().rows(); ++row) {
        shown += m_window->grid().text(row, GridColumn::FMList);
    }
    QCOMPARE(shown, QStringList({QString(), u"Sent"_s, u"Sent"_s, u"Sent"_s, u"Sent"_s}));
    QCOMPARE(m_window->status(), u"OK log of transmitter 4711 stored"_s);
}

void TestUpload::theSenderByOmidOrByAddressAndPosition_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QByteArray>("sender");
    const QByteArray address = "EMAIL=m.e@home.org\r\nHOME_DEC_LAT=52.5\r\nHOME_DEC_LON=-1.25\r\n";
    QTest::newRow("by address") << address
                                << "email=m%2Ee%40home%2Eorg&latitude=52%2E5&longitude=%2D1%2E25"_ba;
    QTest::newRow("OMID before address") << QByteArray(address + omid) << "omid=1234"_ba;
    QTest::newRow("OMID alone") << "OMID=A 1-b\r\nHOME_DEC_LAT=\r\nHOME_DEC_LON=\r\n"_ba
                                << "omid=A 1-b"_ba;
}

void TestUpload::theSenderByOmidOrByAddressAndPosition()
{
    QFETCH(QByteArray, settings);
    QFETCH(QByteArray, sender);
    m_window->open(first, settings);
    upload();
    QCOMPARE(m_window->answers.takeTexts(), QStringList {done});
    QCOMPARE(bodies(), QByteArrayList {QByteArray(firstBody).replace("omid=1234", sender)});
}

void TestUpload::onlyThreeModesAreReported_data()
{
    QTest::addColumn<QByteArray>("prop");
    QTest::addColumn<QByteArray>("ending");
    for (const char *mode : {"Es", "Tropo", "MS"}) {
        QTest::newRow(mode) << QByteArray(mode) << QByteArray("&propa=") + mode;
    }
    for (const char *mode : {"", "TEP", "Aur", "F2", "FAI", "TBD", "es", "ES", " Es", "Ms"}) {
        QTest::newRow(mode) << QByteArray(mode) << QByteArray();
    }
}

void TestUpload::onlyThreeModesAreReported()
{
    QFETCH(QByteArray, prop);
    QFETCH(QByteArray, ending);
    m_window->open(QByteArray(first).replace("|Es|", QByteArray('|' + prop + '|')), omid);
    upload();
    QCOMPARE(bodies(), QByteArrayList {QByteArray(firstBody).replace("&propa=Es", ending)});
}

void TestUpload::aSecondRunSendsNothingTwice()
{
    m_window->open(first + second, omid);
    upload();
    QCOMPARE(m_window->asked().size(), 2);
    (void)m_window->answers.takeTexts();
    upload();
    QCOMPARE(m_window->answers.takeTexts(), QStringList({nothingReady, done}));
    QCOMPARE(m_window->asked().size(), 2);
}

void TestUpload::anErrorLeavesTheEntryEligible()
{
    m_window->open(first + second, omid);
    m_window->service.behave({.fault = Fault::Raw,
        .times = 1,
        .raw = wireBytes({.status = "500 Internal Server Error", .body = "Error 20002 come back"})});
    upload();
    QCOMPARE(m_window->answers.takeTexts(), QStringList {done});
    QCOMPARE(m_window->logbook(), first + secondAfter);
    QCOMPARE(m_window->grid().text(1, GridColumn::FMList), QString());
    m_window->answerWith("Sorry, Error 3");
    upload();
    QCOMPARE(m_window->answers.takeTexts(), QStringList {done});
    QCOMPARE(m_window->status(), u"Sorry, Error 3"_s);
    QCOMPARE(m_window->logbook(), first + secondAfter);
    m_window->service.behave({});
    upload();
    QCOMPARE(bodies(), QByteArrayList({firstBody, secondBody, firstBody, firstBody}));
    QCOMPARE(m_window->logbook(), firstAfter + secondAfter);
}

void TestUpload::theAnswerIsShownAsItIsUpTo1024Characters()
{
    m_window->open(first, omid);
    m_window->answerWith(" <b>\xE4</b>\r\n" + QByteArray(1500, 'x') + "Error ");
    upload();
    QCOMPARE(m_window->status(), QString(u" <b>\u00e4</b>\r\n"_s + QString(1500, u'x')).left(1024));
    QCOMPARE(m_window->logbook(), firstAfter);
}

void TestUpload::anAnswerOfManyLinesLeavesTheWindowAsItIs()
{
    m_window->open(first, omid);
    QWidget *label = m_window->find<QWidget>("status");
    const QSize window = m_window->form().size();
    const int height = label->parentWidget()->height();
    m_window->answerWith(QByteArray("accepted\n").repeated(100));
    upload();
    QCoreApplication::processEvents();
    QCOMPARE(m_window->form().size(), window);
    QCOMPARE(label->parentWidget()->height(), height);
}

void TestUpload::whileItRunsThePointerIsBusyAndTheProgressShown()
{
    m_window->open(first + second, omid);
    m_window->answerSlowly();
    auto *progress = m_window->find<QProgressBar>("progress");
    QString shown;
    m_window->duringRequest(2, [&] {
        QVERIFY(QApplication::overrideCursor());
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QVERIFY(progress->isVisible());
        shown = progress->text();
        QCOMPARE(m_window->status(), u"OK log of transmitter 4711 stored"_s);
        QCOMPARE(m_window->logbook(), first + second);
    });
    m_window->answers.doing([&](QWidget *box) {
        QVERIFY(!QApplication::overrideCursor());
        QVERIFY(!progress->isVisible());
        QTest::keyClick(box, Qt::Key_Escape);
    });
    upload();
    QCOMPARE(shown, u"Uploading 1 of 2"_s);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {done});
}

void TestUpload::whatWasAcceptedBeforeAFailureIsOnTheDisk_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("name");
    QTest::newRow("dropped") << static_cast<int>(Fault::Drop) << u"Cannot reach the service"_s;
    QTest::newRow("503") << static_cast<int>(Fault::Fail503) << u"The service answered with an error"_s;
}

void TestUpload::whatWasAcceptedBeforeAFailureIsOnTheDisk()
{
    QFETCH(int, fault);
    QFETCH(QString, name);
    m_window->open(first + second + third, omid);
    m_window->service.behave({.fault = static_cast<Fault>(fault), .after = 1});
    m_window->answers.doing([this](QWidget *box) {
        // The error comes after the save.
        QCOMPARE(m_window->logbook(), firstAfter + second + third);
        QTest::keyClick(box, Qt::Key_Escape);
    });
    upload();
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts[0].startsWith(u"Run-time error: "_s + name + u'\n'), qPrintable(texts[0]));
    QCOMPARE(m_window->asked().size(), 2);
    QCOMPARE(m_window->grid().text(1, GridColumn::FMList), u"Sent"_s);
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(!m_window->find<QWidget>("progress")->isVisible());
    m_window->service.behave({});
    m_window->service.forget();
    upload();
    QCOMPARE(bodies(), QByteArrayList({secondBody, thirdBody}));
}

void TestUpload::aLogbookThatCannotBeWrittenKeepsTheMarks()
{
    m_window->open(first, omid);
    m_window->calls.failWrite = ENOSPC;
    upload();
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts[0].startsWith(u"Run-time error: Disk full\n"_s), qPrintable(texts[0]));
    QCOMPARE(m_window->logbook(), first);
    QCOMPARE(m_window->grid().text(1, GridColumn::FMList), u"Sent"_s);
    QVERIFY(!QApplication::overrideCursor());
    m_window->calls.failWrite = 0;
    m_window->form().saveLogbook();
    QCOMPARE(m_window->logbook(), firstAfter);
}

void TestUpload::nothingElseIsDoneMeanwhile()
{
    m_window->open(first, omid);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        m_window->clickRow(1);
        m_window->click("Command11");
        m_window->trigger("menuFMListUploadLogs");
        m_window->key(Qt::Key_F5);
    });
    upload();
    QCOMPARE(m_window->answers.takeTexts(), QStringList {done});
    QVERIFY(!m_window->form().findChild<QWidget *>(u"Dialog1"_s));
    QCOMPARE(bodies(), QByteArrayList {firstBody});
    QCOMPARE(m_window->logbook(), firstAfter);
}

void TestUpload::aDeletedEntryIsNeverSent()
{
    m_window->open(first + second, omid);
    m_window->clickRow(1);
    m_window->click("Command15");
    upload();
    QCOMPARE(bodies(), QByteArrayList {secondBody});
    QCOMPARE(m_window->logbook(), secondAfter);
}

void TestUpload::aLogWhoseReadyEntryIsDeletedHasNothingToSend()
{
    m_window->open(first + unidentified, omid);
    for (int row = 1; row < m_window->grid().rows(); ++row) {
        if (m_window->grid().text(row, GridColumn::PiCode) == u"D3C1") {
            m_window->clickRow(row);
        }
    }
    m_window->click("Command15");
    QCOMPARE(m_window->logbook(), unidentified);
    upload();
    QCOMPARE(m_window->answers.takeTexts(), QStringList({nothingReady, done}));
    QVERIFY(m_window->asked().isEmpty());
}

void TestUpload::closingInTheMiddleSavesWhatWasAccepted()
{
    m_window->open(first + second + third, omid);
    m_window->service.behave({.fault = Fault::Hang, .after = 1});
    m_window->duringRequest(2, [this] { m_window->form().close(); });
    upload();
    QVERIFY(!m_window->form().isVisible());
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
    QCOMPARE(m_window->logbook(), firstAfter + second + third);
    m_window->stop();
}

QTEST_MAIN(TestUpload)
#include "tst_upload.moc"
