#include "fmlistwindow.h"

#include <QLabel>
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
    void whatTheLogHadNotIsTold();
    void theRecordsAreAppended();
    void whileItRunsTheLabelAndTheProgressAreShown();
    void failedRequestsCountAsNoMatch_data();
    void failedRequestsCountAsNoMatch();
    void anEntryWithoutAFrequencyIsMarkedWithoutAsking();
    void anEntryMarkedBeforeIsSearchedAgain();
    void withNothingToSearchTheLastRowIsLoaded();

private:
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
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Auto update cancelled"_s});
    QVERIFY(m_window->asked().isEmpty());
    QCOMPARE(m_window->logbook(), unknown);
    QVERIFY(!m_window->find<QWidget>("proclogs")->isVisible());
}

void TestAutoSearch::anEmptyLogEndsItSilently()
{
    m_window->open(""_ba);
    m_window->searchAutomatically();
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList());
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
    m_window->searchAutomatically();
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
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 0 entries"_s});
}

void TestAutoSearch::modePiAndPsSendsTheName()
{
    m_window->open(unknown + several + identified);
    m_window->searchAutomatically();
    QCOMPARE(m_window->asked(),
        QByteArrayList({lookup("freq=99.9&pi=AAAA&ps=NAME"), lookup("freq=90.0&pi=F201&ps=FIP")}));
}

void TestAutoSearch::modePiLeavesTheNameOutAndTheFormKeepsIt()
{
    m_window->open(unknown);
    m_window->answerSlowly();
    QString during;
    m_window->duringRequest(1, [&] { during = m_window->text("Text8"); });
    m_window->searchAutomatically("menuFMLSearchPI");
    QCOMPARE(m_window->asked(), QByteArrayList {lookup("freq=99.9&pi=AAAA")});
    QCOMPARE(during, u"NAME"_s);
    QCOMPARE(m_window->text("Text8"), u"NAME"_s);
    QCOMPARE(m_window->logbook(), unknownAfter);
}

void TestAutoSearch::noneAndMultiAreMarkedAndSavedAtTheEnd()
{
    m_window->open(unknown + several + identified);
    m_window->answerSlowly();
    QByteArray duringTheSecond;
    m_window->duringRequest(2, [&] { duringTheSecond = m_window->logbook(); });
    m_window->searchAutomatically();
    QCOMPARE(duringTheSecond, unknown + several + identified);
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter + identified);
    QCOMPARE(m_window->grid().text(1, GridColumn::FMList), u"None"_s);
    QCOMPARE(m_window->grid().text(2, GridColumn::FMList), u"Multi"_s);
    QCOMPARE(m_window->grid().text(3, GridColumn::FMList), QString());
    QVERIFY(m_window->directory.read(u"autoupdate.log"_s).isNull());
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 0 entries"_s});
}

void TestAutoSearch::anExactMatchIsStoredAndRecorded()
{
    m_window->open(exact + unknown);
    // The pause counts whole seconds of the wall clock.
    const qint64 start = QDateTime::currentSecsSinceEpoch();
    m_window->searchAutomatically("menuFMLSearchPI");
    QVERIFY(QDateTime::currentSecsSinceEpoch() - start >= 2);
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 1 entries"_s});
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

void TestAutoSearch::whatTheLogHadNotIsTold()
{
    m_window->open(exact + unknown);
    const auto *news = m_window->find<QLabel>("news");
    m_window->searchAutomatically("menuFMLSearchPI");
    QCOMPARE(m_window->text("news"), u"1 new site, 1 new country"_s);
    QVERIFY(news->isVisible());
    // All that it finds now is known.
    m_window->searchAutomatically("menuFMLSearchPI");
    QVERIFY(news->isHidden());
}

void TestAutoSearch::theRecordsAreAppended()
{
    m_window->directory.write(u"autoupdate.log"_s, "earlier\r\n");
    m_window->open(exact);
    m_window->searchAutomatically("menuFMLSearchPI");
    const QByteArrayList lines = m_window->directory.read(u"autoupdate.log"_s).split('\n');
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[0], "earlier\r"_ba);
    QVERIFY(lines[1].contains("\tBEFORE\t"));
    QVERIFY(lines[2].contains("\tAFTER\t"));
    // It has its UID now and is not searched again.
    m_window->service.forget();
    (void)m_window->answers.takeTexts();
    m_window->searchAutomatically("menuFMLSearchPI");
    QVERIFY(m_window->asked().isEmpty());
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 0 entries"_s});
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
            QVERIFY(
                progress->fontMetrics().horizontalAdvance(u"Searching 32498 of 32498"_s) < progress->width());
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
    m_window->searchAutomatically();
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 0 entries"_s});
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
    m_window->searchAutomatically();
    QCOMPARE(m_window->asked().size(), 2);
    QCOMPARE(m_window->logbook(),
        unknownAfter + "AAAA|12/06/2010 11:30:00|Es|||TBD||NAME|||fml=none#||\r\n" + severalAfter);
    QCOMPARE(m_window->grid().text(2, GridColumn::FMList), u"None"_s);
}

void TestAutoSearch::anEntryMarkedBeforeIsSearchedAgain()
{
    m_window->open(severalAfter);
    m_window->answerWith("Error 10005\n");
    m_window->searchAutomatically();
    QCOMPARE(m_window->asked().size(), 1);
    QCOMPARE(m_window->logbook(), QByteArray(severalAfter).replace("fml=multi#", "fml=none#"));
    QCOMPARE(m_window->grid().text(1, GridColumn::FMList), u"None"_s);
}

void TestAutoSearch::withNothingToSearchTheLastRowIsLoaded()
{
    const QByteArray later = QByteArray(unknown).replace("12/06", "20/06");
    m_window->open(identified + later);
    m_window->clickRow(1);
    m_window->searchAutomatically();
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 0 entries"_s});
    QCOMPARE(m_window->asked(), QByteArrayList());
    QCOMPARE(m_window->form().selected(), 1);
    QCOMPARE(m_window->grid().row(), 2);
    QCOMPARE(m_window->text("Text1"), u"AAAA"_s);
    QCOMPARE(m_window->logbook(), identified + later);
}

QTEST_MAIN(TestAutoSearch)
#include "tst_autosearch.moc"
