#include "fmlistwindow.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::standin;
using namespace quillon::test;

/// What the user does while the automatic search waits for an answer, and what ends it early.
class TestAutoSearchMeanwhile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window = std::make_unique<FmlistWindow>(); }
    void cleanup() { m_window.reset(); }

    void sortingWhileARequestRuns();
    void addingWhileARequestRuns();
    void choosingAnotherRowWhileARequestRuns_data();
    void choosingAnotherRowWhileARequestRuns();
    void beginningANewEntryWhileARequestRuns_data();
    void beginningANewEntryWhileARequestRuns();
    void deletingTheEntryWhileItsRequestRuns();
    void anEntryChangedBeforeItsTurnIsLookedAtAgain_data();
    void anEntryChangedBeforeItsTurnIsLookedAtAgain();
    void updatingTheEntryWhileItsRequestRuns();
    void aHalfTypedDateDoesNotStopIt();
    void closingInTheMiddleKeepsWhatWasFound();
    void anUnwritableUpdateLogKeepsWhatWasFound();

private:
    std::unique_ptr<FmlistWindow> m_window;
};

void TestAutoSearchMeanwhile::sortingWhileARequestRuns()
{
    m_window->open(unknown + several);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        m_window->clickHeading(static_cast<int>(GridColumn::Freq));
        QCOMPARE(m_window->piCodes(), QStringList({u"F201"_s, u"AAAA"_s}));
    });
    m_window->searchAutomatically();
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter);
    QCOMPARE(m_window->grid().text(1, GridColumn::FMList), u"Multi"_s);
    QCOMPARE(m_window->grid().text(2, GridColumn::FMList), u"None"_s);
    QCOMPARE(m_window->asked().size(), 2);
}

void TestAutoSearchMeanwhile::addingWhileARequestRuns()
{
    m_window->open(unknown + several);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        m_window->click("Command2");
        m_window->fill({u"Text9"_s, u"101.1"_s, u"Text1"_s, u"BBBB"_s, u"Combo3"_s, u"D"_s, u"Text2"_s,
            u"01/06/2010 08:00:00"_s});
        m_window->click("Command1");
    });
    m_window->searchAutomatically();
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 0 entries"_s});
    QCOMPARE(
        m_window->logbook(), unknownAfter + severalAfter + "BBBB|01/06/2010 08:00:00|Es|101.1||D|||||||\r\n");
    QCOMPARE(m_window->piCodes(), QStringList({u"BBBB"_s, u"AAAA"_s, u"F201"_s}));
    QCOMPARE(m_window->grid().text(2, GridColumn::FMList), u"None"_s);
}

void TestAutoSearchMeanwhile::choosingAnotherRowWhileARequestRuns_data()
{
    QTest::addColumn<QByteArray>("log");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("no match") << unknown + several << unknownAfter + severalAfter;
    QTest::newRow("exact match") << exact + identified << exactAfter + identified;
}

void TestAutoSearchMeanwhile::choosingAnotherRowWhileARequestRuns()
{
    QFETCH(QByteArray, log);
    m_window->open(log);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] { m_window->clickRow(2); });
    m_window->searchAutomatically("menuFMLSearchPI");
    QTEST(m_window->logbook(), "after");
}

void TestAutoSearchMeanwhile::beginningANewEntryWhileARequestRuns_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("log");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("New, no match") << u"Command2"_s << unknown << unknownAfter;
    QTest::newRow("Clone, several") << u"Command9"_s << several << severalAfter;
    QTest::newRow("Clone, exact match") << u"Command9"_s << exact << exactAfter;
}

void TestAutoSearchMeanwhile::beginningANewEntryWhileARequestRuns()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, log);
    m_window->open(log);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this, button] { m_window->click(button); });
    m_window->searchAutomatically("menuFMLSearchPI");
    QCOMPARE(m_window->boxesAfterTheQuestions().size(), 1);
    QTEST(m_window->logbook(), "after");
    QCOMPARE(m_window->grid().rows(), 2);
}

void TestAutoSearchMeanwhile::deletingTheEntryWhileItsRequestRuns()
{
    m_window->open(exact + unknown);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] { m_window->click("Command15"); });
    m_window->searchAutomatically("menuFMLSearchPI");
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 0 entries"_s});
    QCOMPARE(m_window->logbook(), unknownAfter);
    QCOMPARE(m_window->piCodes(), QStringList({u"delete"_s, u"AAAA"_s}));
    QVERIFY(m_window->directory.read(u"autoupdate.log"_s).isNull());
}

void TestAutoSearchMeanwhile::anEntryChangedBeforeItsTurnIsLookedAtAgain_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("deleted") << u"Text8"_s << u"FIP"_s << u"Command15"_s << ""_ba;
    QTest::newRow("identified") << u"uid"_s << u"501"_s << u"Command3"_s
                                << "F201|12/06/2010 12:00:00|Es|90.0||TBD||FIP||||501|\r\n"_ba;
    QTest::newRow("of another day") << u"Text2"_s << u"14/06/2010 12:00:00"_s << u"Command3"_s
                                    << "F201|14/06/2010 12:00:00|Es|90.0||TBD||FIP|||||\r\n"_ba;
}

void TestAutoSearchMeanwhile::anEntryChangedBeforeItsTurnIsLookedAtAgain()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(QString, button);
    QFETCH(QByteArray, after);
    m_window->open(unknown + several);
    m_window->answerSlowly();
    m_window->duringRequest(1, [&] {
        m_window->clickRow(2);
        m_window->find<QLineEdit>(field)->setText(value);
        m_window->click(button);
    });
    m_window->searchAutomatically();
    QCOMPARE(m_window->asked().size(), 1);
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 0 entries"_s});
    QCOMPARE(m_window->logbook(), unknownAfter + after);
}

void TestAutoSearchMeanwhile::updatingTheEntryWhileItsRequestRuns()
{
    m_window->open(unknown);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        QCOMPARE(m_window->text("Text8"), u"NAME"_s);
        m_window->type("Text3", u"heard well"_s);
        m_window->click("Command3");
    });
    m_window->searchAutomatically("menuFMLSearchPI");
    QCOMPARE(
        m_window->logbook(), "AAAA|12/06/2010 11:00:00|Es|99.9||TBD|heard well|NAME|||fml=none#||\r\n"_ba);
}

void TestAutoSearchMeanwhile::aHalfTypedDateDoesNotStopIt()
{
    m_window->open(exact + unknown);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] { m_window->type("Text2", u"12/"_s); });
    m_window->searchAutomatically("menuFMLSearchPI");
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 1 entries"_s});
    QCOMPARE(m_window->logbook(), exactAfter + unknownAfter);
}

void TestAutoSearchMeanwhile::closingInTheMiddleKeepsWhatWasFound()
{
    const QByteArray last = "BBBB|12/06/2010 14:00:00|Es|99.8||TBD|||||||\r\n";
    m_window->open(unknown + several + last);
    m_window->service.behave({.fault = Fault::Hang, .after = 2});
    m_window->duringRequest(3, [this] { m_window->form().close(); });
    m_window->searchAutomatically();
    QVERIFY(!m_window->form().isVisible());
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList());
    QCOMPARE(m_window->asked().size(), 3);
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter + last);
    m_window->stop();
}

void TestAutoSearchMeanwhile::anUnwritableUpdateLogKeepsWhatWasFound()
{
    // A folder stands where the update log should be.
    m_window->directory.write(u"autoupdate.log/file"_s, "x");
    const QByteArray later = QByteArray(exact).replace(" 10:", " 14:");
    m_window->open(unknown + later);
    m_window->searchAutomatically("menuFMLSearchPI");
    const QStringList texts = m_window->boxesAfterTheQuestions();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts[0].startsWith(u"Run-time error: "_s), qPrintable(texts[0]));
    QVERIFY2(texts[0].contains(u"autoupdate.log"_s), qPrintable(texts[0]));
    QCOMPARE(m_window->logbook(), unknownAfter + later);
    QVERIFY(!m_window->find<QWidget>("proclogs")->isVisible());
    QVERIFY(!m_window->find<QWidget>("progress")->isVisible());
}

QTEST_MAIN(TestAutoSearchMeanwhile)
#include "tst_autosearch_meanwhile.moc"
