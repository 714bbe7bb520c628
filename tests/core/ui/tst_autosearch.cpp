#include "fmlistwindow.h"

#include <QProgressBar>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::standin;
using namespace quillon::test;

namespace {

const QString dayPrompt =
    u"Logs from what day do you want Quillon to automatically find a match for from FMList?"_s;
const QString updateQuestion =
    u"If FMList returns an exact match do you want to automatically update your log book entry?"_s;

// Entries of one day for whom the service knows one station, none, three, and one with a UID.
const QByteArray exact = "D3C1|12/06/2010 10:00:00|Es|87.6||TBD|oneCRLFtwo|R1|5|7.5|old=1#||\r\n";
const QByteArray unknown = "AAAA|12/06/2010 11:00:00|Es|99.9||TBD||NAME|||||\r\n";
const QByteArray several = "F201|12/06/2010 12:00:00|Es|90.0||TBD||FIP|||||\r\n";
const QByteArray identified = "F201|12/06/2010 13:00:00|Es|90.0|Brest|F||FIP||||501|\r\n";

const QByteArray exactAfter =
    "D3C1|12/06/2010 10:00:00|Es|87.6|Berlin (Alex)|D|oneCRLFtwo|RADIO_1|100|7.5|old=1#|4711|\r\n";
const QByteArray unknownAfter = "AAAA|12/06/2010 11:00:00|Es|99.9||TBD||NAME|||fml=none#||\r\n";
const QByteArray severalAfter = "F201|12/06/2010 12:00:00|Es|90.0||TBD||FIP|||fml=multi#||\r\n";

QByteArray lookup(const QByteArray &query)
{
    return "GET /rdslookup.php?" + query + " HTTP/1.1";
}

} // namespace

class TestAutoSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window = std::make_unique<FmlistWindow>(); }
    void cleanup() { m_window.reset(); }

    void theTwoQuestions();
    void anEmptyDayEndsItSilently_data();
    void anEmptyDayEndsItSilently();
    void whatIsNoDateIsAnError();
    void noCancelsIt();
    void anEmptyLogEndsItSilently();
    void theDayBeforeAndTheDayBothBoundsOut();
    void modePiAndPsSendsTheName();
    void modePiLeavesTheNameOutAndTheFormKeepsIt();
    void noneAndMultiAreMarkedAndSavedAtTheEnd();
    void anExactMatchIsStoredAndRecorded();
    void theRecordsAreAppended();
    void whileItRunsTheLabelAndTheProgressAreShown();
    void failedRequestsCountAsNoMatch_data();
    void failedRequestsCountAsNoMatch();
    void anEntryWithoutAFrequencyIsMarkedWithoutAsking();
    void anEntryMarkedBeforeIsSearchedAgain();
    void sortingWhileARequestRuns();
    void addingWhileARequestRuns();
    void choosingAnotherRowWhileARequestRuns_data();
    void choosingAnotherRowWhileARequestRuns();
    void beginningANewEntryWhileARequestRuns_data();
    void beginningANewEntryWhileARequestRuns();
    void deletingTheEntryWhileItsRequestRuns();
    void updatingTheEntryWhileItsRequestRuns();
    void aHalfTypedDateDoesNotStopIt();
    void closingInTheMiddleKeepsWhatWasFound();
    void anUnwritableUpdateLogKeepsWhatWasFound();

private:
    // Runs it for the 12th of June 2010 and answers its boxes.
    void run(const char *action = "menuFMListAutoSearch")
    {
        m_window->answers.type(u"12/06/2010"_s);
        m_window->answers.press(QMessageBox::Yes);
        m_window->trigger(action);
    }
    // The texts of the boxes after the two questions.
    QStringList boxes() { return m_window->answers.takeTexts().mid(2); }

    std::unique_ptr<FmlistWindow> m_window;
};

void TestAutoSearch::theTwoQuestions()
{
    m_window->open(unknown);
    m_window->answers.accept();
    m_window->answers.press(QMessageBox::No);
    m_window->trigger("menuFMListAutoSearch");
    const QList<SeenDialog> &seen = m_window->answers.seen();
    QCOMPARE(seen.size(), 3);
    QCOMPARE(seen[0].text, dayPrompt);
    QCOMPARE(seen[0].title, u"Auto Lookup"_s);
    QCOMPARE(seen[0].input, QDate::currentDate().toString(u"dd/MM/yyyy"_s));
    QCOMPARE(seen[1].text, updateQuestion);
    QCOMPARE(seen[1].title, u"Auto Update Record"_s);
    QCOMPARE(seen[1].icon, QMessageBox::Information);
    QCOMPARE(seen[1].defaultButton, QMessageBox::No);
    QCOMPARE(seen[2].text, u"Auto update cancelled"_s);
}

void TestAutoSearch::anEmptyDayEndsItSilently_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("cancelled") << true;
    QTest::newRow("emptied") << false;
}

void TestAutoSearch::anEmptyDayEndsItSilently()
{
    QFETCH(bool, cancelled);
    m_window->open(unknown);
    if (cancelled) {
        m_window->answers.cancel();
    } else {
        m_window->answers.type({});
    }
    m_window->trigger("menuFMListAutoSearch");
    QCOMPARE(m_window->answers.takeTexts(), QStringList {dayPrompt});
    QVERIFY(m_window->asked().isEmpty());
    QVERIFY(!m_window->find<QWidget>("proclogs")->isVisible());
    QCOMPARE(m_window->logbook(), unknown);
}

void TestAutoSearch::whatIsNoDateIsAnError()
{
    m_window->open(unknown);
    m_window->answers.type(u"yesterday"_s);
    m_window->trigger("menuFMListAutoSearch");
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 2);
    QVERIFY2(texts[1].startsWith(u"Run-time error: Type mismatch\n"_s), qPrintable(texts[1]));
    QVERIFY2(texts[1].contains(u"yesterday"_s), qPrintable(texts[1]));
    QVERIFY(m_window->asked().isEmpty());
    QVERIFY(!m_window->find<QWidget>("proclogs")->isVisible());
}

void TestAutoSearch::noCancelsIt()
{
    m_window->open(unknown);
    m_window->answers.type(u"12/06/2010"_s);
    m_window->answers.press(QMessageBox::No);
    m_window->trigger("menuFMLSearchPI");
    QCOMPARE(boxes(), QStringList {u"Auto update cancelled"_s});
    QVERIFY(m_window->asked().isEmpty());
    QCOMPARE(m_window->logbook(), unknown);
    QVERIFY(!m_window->find<QWidget>("proclogs")->isVisible());
}

void TestAutoSearch::anEmptyLogEndsItSilently()
{
    m_window->open(""_ba);
    run();
    QCOMPARE(boxes(), QStringList());
    QVERIFY(m_window->asked().isEmpty());
}

void TestAutoSearch::theDayBeforeAndTheDayBothBoundsOut()
{
    QByteArray log;
    for (const QByteArray &moment : {"10/06/2010 23:59:59"_ba, "11/06/2010 00:00:00"_ba,
             "11/06/2010 00:00:01"_ba, "11/06/2010 23:30:00"_ba, "12/06/2010 00:00:00"_ba,
             "12/06/2010 23:59:59"_ba, "13/06/2010 00:00:00"_ba, "13/06/2010 00:00:01"_ba}) {
        log += "AAAA|" + moment + "|Es|99.9||TBD|||||||\r\n";
    }
    m_window->open(log);
    run();
    QCOMPARE(m_window->asked(), QByteArrayList(4, lookup("freq=99.9&pi=AAAA")));
    QStringList marked;
    for (int row = 1; row < m_window->grid().rows(); ++row) {
        if (m_window->grid().text(row, GridColumn::FMList) == u"None") {
            marked += m_window->grid().text(row, GridColumn::DateTime);
        }
    }
    QCOMPARE(marked,
        QStringList({u"11/06/2010 00:00:01"_s, u"11/06/2010 23:30:00"_s, u"12/06/2010 00:00:00"_s,
            u"12/06/2010 23:59:59"_s}));
    QCOMPARE(boxes(), QStringList {u"Updated 0 entries"_s});
}

void TestAutoSearch::modePiAndPsSendsTheName()
{
    m_window->open(unknown + several + identified);
    run();
    QCOMPARE(m_window->asked(),
        QByteArrayList({lookup("freq=99.9&pi=AAAA&ps=NAME"), lookup("freq=90.0&pi=F201&ps=FIP")}));
}

void TestAutoSearch::modePiLeavesTheNameOutAndTheFormKeepsIt()
{
    m_window->open(unknown);
    run("menuFMLSearchPI");
    QCOMPARE(m_window->asked(), QByteArrayList {lookup("freq=99.9&pi=AAAA")});
    QCOMPARE(m_window->text("Text8"), u"NAME"_s);
    QCOMPARE(m_window->logbook(), unknownAfter);
}

void TestAutoSearch::noneAndMultiAreMarkedAndSavedAtTheEnd()
{
    m_window->open(unknown + several + identified);
    m_window->answerSlowly();
    QByteArray duringTheSecond;
    m_window->duringRequest(2, [&] { duringTheSecond = m_window->logbook(); });
    run();
    QCOMPARE(duringTheSecond, unknown + several + identified);
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter + identified);
    QCOMPARE(m_window->grid().text(1, GridColumn::FMList), u"None"_s);
    QCOMPARE(m_window->grid().text(2, GridColumn::FMList), u"Multi"_s);
    QCOMPARE(m_window->grid().text(3, GridColumn::FMList), QString());
    QVERIFY(m_window->directory.read(u"autoupdate.log"_s).isNull());
    QCOMPARE(boxes(), QStringList {u"Updated 0 entries"_s});
}

void TestAutoSearch::anExactMatchIsStoredAndRecorded()
{
    m_window->open(exact + unknown);
    // The pause counts whole seconds of the wall clock.
    const qint64 start = QDateTime::currentSecsSinceEpoch();
    run("menuFMLSearchPI");
    QVERIFY(QDateTime::currentSecsSinceEpoch() - start >= 2);
    QCOMPARE(boxes(), QStringList {u"Updated 1 entries"_s});
    QCOMPARE(m_window->asked(), QByteArrayList({lookup("freq=87.6&pi=D3C1"), lookup("freq=99.9&pi=AAAA")}));
    QCOMPARE(m_window->logbook(), exactAfter + unknownAfter);
    QCOMPARE(m_window->transmitterFile(), "Berlin (Alex)|D|52.5208|13.4094||\r\n"_ba);
    const QByteArrayList lines = m_window->directory.read(u"autoupdate.log"_s).split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[2].isEmpty());
    const qsizetype time = QByteArray("dd/mm/yyyy hh:nn:ss").size();
    QCOMPARE(lines[0].mid(time),
        "\tBEFORE\t0:12/06/2010 10:00:00\t1:D3C1\t2:87.6\t3:R1\t4:TBD\t5:\t6:7.5\t7:5\t8:one two\t9:Es\t10:\t11:\t\r"_ba);
    QCOMPARE(lines[1].mid(time),
        "\tAFTER\t0:12/06/2010 10:00:00\t1:D3C1\t2:87.6\t3:RADIO_1\t4:D\t5:Berlin "
        "(Alex)\t6:7.5\t7:100\t8:oneCRLFtwo\t9:Es\t10:\t11:4711\t\r"_ba);
    const QRegularExpression moment(u"^\\d\\d/\\d\\d/\\d{4} \\d\\d:\\d\\d:\\d\\d$"_s);
    QVERIFY(moment.match(QString::fromLatin1(lines[0].left(time))).hasMatch());
}

void TestAutoSearch::theRecordsAreAppended()
{
    m_window->directory.write(u"autoupdate.log"_s, "earlier\r\n");
    m_window->open(exact);
    run("menuFMLSearchPI");
    const QByteArrayList lines = m_window->directory.read(u"autoupdate.log"_s).split('\n');
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[0], "earlier\r"_ba);
    QVERIFY(lines[1].contains("\tBEFORE\t"));
    QVERIFY(lines[2].contains("\tAFTER\t"));
    // It has its UID now and is not searched again.
    m_window->service.forget();
    (void)m_window->answers.takeTexts();
    run("menuFMLSearchPI");
    QVERIFY(m_window->asked().isEmpty());
    QCOMPARE(boxes(), QStringList {u"Updated 0 entries"_s});
}

void TestAutoSearch::whileItRunsTheLabelAndTheProgressAreShown()
{
    m_window->open(unknown + several);
    m_window->answerSlowly();
    auto *label = m_window->find<QWidget>("proclogs");
    auto *progress = m_window->find<QProgressBar>("progress");
    QStringList texts;
    for (const int request : {1, 2}) {
        m_window->duringRequest(request, [&] {
            QVERIFY(label->isVisible());
            QVERIFY(progress->isVisible());
            texts += progress->text();
        });
    }
    m_window->answers.type(u"12/06/2010"_s);
    m_window->answers.press(QMessageBox::Yes);
    m_window->answers.doing([&](QWidget *box) {
        texts += label->isVisible() ? u"still shown"_s : u"hidden"_s;
        QTest::keyClick(box, Qt::Key_Escape);
    });
    m_window->trigger("menuFMListAutoSearch");
    QCOMPARE(m_window->text("proclogs"), u"PROCESSING LOGS PLEASE WAIT..."_s);
    QCOMPARE(texts, QStringList({u"Searching 1 of 2"_s, u"Searching 2 of 2"_s, u"still shown"_s}));
    QVERIFY(!label->isVisible());
    QVERIFY(!progress->isVisible());
}

void TestAutoSearch::failedRequestsCountAsNoMatch_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("told");
    QTest::newRow("dropped") << static_cast<int>(Fault::Drop) << u"/rdslookup.php?freq=99.9"_s;
    QTest::newRow("503") << static_cast<int>(Fault::Fail503) << u"503"_s;
    QTest::newRow("junk") << static_cast<int>(Fault::Junk) << u"line 1"_s;
}

void TestAutoSearch::failedRequestsCountAsNoMatch()
{
    QFETCH(int, fault);
    QFETCH(QString, told);
    m_window->open(unknown + several);
    m_window->service.behave({.fault = static_cast<Fault>(fault), .delay = 100, .times = 1});
    run();
    QCOMPARE(boxes(), QStringList {u"Updated 0 entries"_s});
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter);
    QVERIFY2(m_window->status().startsWith(u"1 of the requests to FMList failed; the last: "_s),
        qPrintable(m_window->status()));
    QVERIFY2(m_window->status().contains(told), qPrintable(m_window->status()));
    QVERIFY(m_window->enabled("Command11"));
}

void TestAutoSearch::anEntryWithoutAFrequencyIsMarkedWithoutAsking()
{
    const QByteArray without = "AAAA|12/06/2010 11:30:00|Es|||TBD||NAME|||||\r\n";
    m_window->open(unknown + without + several);
    run();
    QCOMPARE(m_window->asked().size(), 2);
    QCOMPARE(m_window->logbook(),
        unknownAfter + "AAAA|12/06/2010 11:30:00|Es|||TBD||NAME|||fml=none#||\r\n" + severalAfter);
    QCOMPARE(m_window->grid().text(2, GridColumn::FMList), u"None"_s);
}

void TestAutoSearch::anEntryMarkedBeforeIsSearchedAgain()
{
    m_window->open(severalAfter);
    m_window->answerWith("Error 10005\n");
    run();
    QCOMPARE(m_window->asked().size(), 1);
    QCOMPARE(m_window->logbook(), QByteArray(severalAfter).replace("fml=multi#", "fml=none#"));
    QCOMPARE(m_window->grid().text(1, GridColumn::FMList), u"None"_s);
}

void TestAutoSearch::sortingWhileARequestRuns()
{
    m_window->open(unknown + several);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        m_window->clickHeading(static_cast<int>(GridColumn::Freq));
        QCOMPARE(m_window->piCodes(), QStringList({u"F201"_s, u"AAAA"_s}));
    });
    run();
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter);
    QCOMPARE(m_window->grid().text(1, GridColumn::FMList), u"Multi"_s);
    QCOMPARE(m_window->grid().text(2, GridColumn::FMList), u"None"_s);
    QCOMPARE(m_window->asked().size(), 2);
}

void TestAutoSearch::addingWhileARequestRuns()
{
    m_window->open(unknown + several);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        m_window->click("Command2");
        m_window->fill({u"Text9"_s, u"101.1"_s, u"Text1"_s, u"BBBB"_s, u"Combo3"_s, u"D"_s, u"Text2"_s,
            u"01/06/2010 08:00:00"_s});
        m_window->click("Command1");
    });
    run();
    QCOMPARE(boxes(), QStringList {u"Updated 0 entries"_s});
    QCOMPARE(
        m_window->logbook(), unknownAfter + severalAfter + "BBBB|01/06/2010 08:00:00|Es|101.1||D|||||||\r\n");
    QCOMPARE(m_window->piCodes(), QStringList({u"BBBB"_s, u"AAAA"_s, u"F201"_s}));
    QCOMPARE(m_window->grid().text(2, GridColumn::FMList), u"None"_s);
}

void TestAutoSearch::choosingAnotherRowWhileARequestRuns_data()
{
    QTest::addColumn<QByteArray>("log");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("no match") << unknown + several << unknownAfter + severalAfter;
    QTest::newRow("exact match") << exact + identified << exactAfter + identified;
}

void TestAutoSearch::choosingAnotherRowWhileARequestRuns()
{
    QFETCH(QByteArray, log);
    m_window->open(log);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] { m_window->clickRow(2); });
    run("menuFMLSearchPI");
    QTEST(m_window->logbook(), "after");
}

void TestAutoSearch::beginningANewEntryWhileARequestRuns_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("log");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("New, no match") << u"Command2"_s << unknown << unknownAfter;
    QTest::newRow("Clone, several") << u"Command9"_s << several << severalAfter;
    QTest::newRow("Clone, exact match") << u"Command9"_s << exact << exactAfter;
}

void TestAutoSearch::beginningANewEntryWhileARequestRuns()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, log);
    m_window->open(log);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this, button] { m_window->click(button); });
    run("menuFMLSearchPI");
    QCOMPARE(boxes().size(), 1);
    QTEST(m_window->logbook(), "after");
    QCOMPARE(m_window->grid().rows(), 2);
}

void TestAutoSearch::deletingTheEntryWhileItsRequestRuns()
{
    m_window->open(exact + unknown);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] { m_window->click("Command15"); });
    run("menuFMLSearchPI");
    QCOMPARE(boxes(), QStringList {u"Updated 0 entries"_s});
    QCOMPARE(m_window->logbook(), unknownAfter);
    QCOMPARE(m_window->piCodes(), QStringList({u"delete"_s, u"AAAA"_s}));
    QVERIFY(m_window->directory.read(u"autoupdate.log"_s).isNull());
}

void TestAutoSearch::updatingTheEntryWhileItsRequestRuns()
{
    m_window->open(unknown);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        QCOMPARE(m_window->text("Text8"), u"NAME"_s);
        m_window->type("Text3", u"heard well"_s);
        m_window->click("Command3");
    });
    run("menuFMLSearchPI");
    QCOMPARE(
        m_window->logbook(), "AAAA|12/06/2010 11:00:00|Es|99.9||TBD|heard well|NAME|||fml=none#||\r\n"_ba);
}

void TestAutoSearch::aHalfTypedDateDoesNotStopIt()
{
    m_window->open(exact + unknown);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] { m_window->type("Text2", u"12/"_s); });
    run("menuFMLSearchPI");
    QCOMPARE(boxes(), QStringList {u"Updated 1 entries"_s});
    QCOMPARE(m_window->logbook(), exactAfter + unknownAfter);
}

void TestAutoSearch::closingInTheMiddleKeepsWhatWasFound()
{
    const QByteArray last = "BBBB|12/06/2010 14:00:00|Es|99.8||TBD|||||||\r\n";
    m_window->open(unknown + several + last);
    m_window->service.behave({.fault = Fault::Hang, .after = 2});
    m_window->duringRequest(3, [this] { m_window->form().close(); });
    run();
    QVERIFY(!m_window->form().isVisible());
    QCOMPARE(boxes(), QStringList());
    QCOMPARE(m_window->asked().size(), 3);
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter + last);
    m_window->stop();
}

void TestAutoSearch::anUnwritableUpdateLogKeepsWhatWasFound()
{
    // A folder stands where the update log should be.
    m_window->directory.write(u"autoupdate.log/file"_s, "x");
    const QByteArray later = QByteArray(exact).replace(" 10:", " 14:");
    m_window->open(unknown + later);
    run("menuFMLSearchPI");
    const QStringList texts = boxes();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts[0].startsWith(u"Run-time error: "_s), qPrintable(texts[0]));
    QVERIFY2(texts[0].contains(u"autoupdate.log"_s), qPrintable(texts[0]));
    QCOMPARE(m_window->logbook(), unknownAfter + later);
    QVERIFY(!m_window->find<QWidget>("proclogs")->isVisible());
    QVERIFY(!m_window->find<QWidget>("progress")->isVisible());
}

QTEST_MAIN(TestAutoSearch)
#include "tst_autosearch.moc"
