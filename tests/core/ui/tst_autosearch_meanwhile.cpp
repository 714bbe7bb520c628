#include "core/ui/editmany.h"
#include "fmlistwindow.h"
#include "live/ui/receiverdock.h"

#include <QAction>
#include <QDialog>
#include <QKeyEvent>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::standin;
using namespace quillon::test;

namespace {

/// A source that hears one station.
class OneStation : public ReceiverSource
{
protected:
    void attempt() override
    {
        listening();
        tell({Tuned {98'500'000}, PiHeard {0xE201, PiTrust::Told}, PsHeard {u"RNE 1   "_s}});
    }
    void hangUp() override { }
};

} // namespace

/// What the user does while the automatic search waits for an answer, and what ends it early.
class TestAutoSearchMeanwhile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window = std::make_unique<FmlistWindow>(); }
    void cleanup() { m_window.reset(); }

    void nothingElseChangesTheLog();
    void whatIsHeardMeanwhileIsLoggedAfterwards();
    void whatIsHeardMeanwhileIsLoggedWhenTheProgramEnds();
    void aKeyPressedMeanwhileIsNotKept();
    void stopEndsItAfterThePresentEntry();
    void stopEndsAnUpload();
    void afterwardsEverythingIsAsItWas();
    void closingInTheMiddleKeepsWhatWasFound();
    void anUnwritableUpdateLogKeepsWhatWasFound();

private:
    std::unique_ptr<FmlistWindow> m_window;
};

void TestAutoSearchMeanwhile::nothingElseChangesTheLog()
{
    m_window->open(unknown + several);
    // A step that can be undone and one that can be made again.
    for (const QString &notes : {u"one"_s, QString(), u"two"_s}) {
        m_window->clickRow(2);
        m_window->clickRow(1);
        m_window->type("Text3", notes);
        m_window->click("Command3");
    }
    m_window->trigger("menuEditUndo");
    for (const QString &name : {u"menuEditUndo"_s, u"menuEditRedo"_s}) {
        QVERIFY2(m_window->find<QAction>(name)->isEnabled(), qPrintable(name));
    }
    m_window->key(Qt::Key_F5);
    auto *quickAdd = m_window->find<QDialog>("Dialog1");
    m_window->trigger("menuEditMany");
    auto *editMany = m_window->find<EditMany>("editMany");
    m_window->answerSlowly();
    QStringList enabled;
    m_window->duringRequest(1, [&] {
        for (const QString &name : {u"Text9"_s, u"Text1"_s, u"Command2"_s, u"Command3"_s, u"Command10"_s,
                 u"Command14"_s, u"Command15"_s, u"Grid1"_s, u"List2"_s}) {
            enabled += m_window->enabled(name) ? name : QString();
        }
        for (const QString &name :
            {u"menuFileBackups"_s, u"menuEditMany"_s, u"menuImportStations"_s, u"menuImportFile"_s,
                u"menuImportRDSSpyLog"_s, u"menuImportRDSDXLogCnv"_s, u"menuExportEmail"_s,
                u"menuFMListUploadLogs"_s, u"menuFMListAutoSearch"_s, u"menuFMLSearchPI"_s, u"menuSetup"_s,
                u"menuToolsFind"_s, u"menuEditUndo"_s, u"menuEditRedo"_s}) {
            enabled += m_window->find<QAction>(name)->isEnabled() ? name : QString();
        }
        enabled += quickAdd->isEnabled() ? u"Dialog1"_s : QString();
        enabled += editMany->isEnabled() ? u"editMany"_s : QString();
        enabled.removeAll(QString());
        // An OK that was under way.
        LogChange change;
        change.setField(1, m_window->form().log().entry(1), LogField::Uid, u"9"_s);
        Q_EMIT editMany->editChosen(change, u"Edit 1 reception"_s);
        m_window->clickHeading(static_cast<int>(GridColumn::Freq));
        QVERIFY(m_window->find<QWidget>("autoStop")->isVisible());
    });
    m_window->searchAutomatically();
    QCOMPARE(enabled, QStringList());
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter);
    QCOMPARE(m_window->piCodes(), (QStringList {u"AAAA"_s, u"F201"_s}));
    QVERIFY(quickAdd->isEnabled());
    QVERIFY(editMany->isEnabled());
}

void TestAutoSearchMeanwhile::whatIsHeardMeanwhileIsLoggedAfterwards()
{
    m_window->open(unknown + several);
    m_window->answerSlowly();
    auto *dock = m_window->find<ReceiverDock>("receiverDock");
    m_window->duringRequest(1, [&] {
        dock->receiver().listenTo(std::make_unique<OneStation>());
        dock->logHeard();
        dock->logHeard();
        QCOMPARE(m_window->form().log().count(), 2);
        QCOMPARE(m_window->text("status"), u"To be logged when this work is over: 98.5 RNE_1"_s);
    });
    m_window->searchAutomatically();
    QTRY_COMPARE(m_window->form().log().count(), 3);
    QCOMPARE(m_window->form().log().entry(2).piCode, u"E201"_s);
    QVERIFY(m_window->logbook().startsWith(QByteArray(unknownAfter + severalAfter + "E201|")));
    // It is a step of its own.
    m_window->trigger("menuEditUndo");
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter);
}

void TestAutoSearchMeanwhile::whatIsHeardMeanwhileIsLoggedWhenTheProgramEnds()
{
    m_window->open(unknown + several);
    m_window->service.behave({.fault = Fault::Hang, .after = 1});
    m_window->duringRequest(2, [this] {
        auto *dock = m_window->find<ReceiverDock>("receiverDock");
        dock->receiver().listenTo(std::make_unique<OneStation>());
        dock->logHeard();
        m_window->form().close();
    });
    m_window->searchAutomatically();
    QVERIFY(m_window->logbook().contains("\r\nE201|"));
    m_window->stop();
}

void TestAutoSearchMeanwhile::aKeyPressedMeanwhileIsNotKept()
{
    m_window->open(exact + unknown);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        // It is still in the queue when the search ends.
        for (QWidget *target :
            {static_cast<QWidget *>(&m_window->form()), m_window->find<QWidget>("Text9")}) {
            QCoreApplication::postEvent(
                target, new QKeyEvent(QEvent::KeyPress, Qt::Key_Delete, Qt::ControlModifier));
            QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier));
        }
    });
    m_window->searchAutomatically("menuFMLSearchPI");
    QCoreApplication::processEvents();
    QCOMPARE(m_window->logbook(), exactAfter + unknownAfter);
    QVERIFY(!m_window->form().findChild<QDialog *>(u"Dialog1"_s));
}

void TestAutoSearchMeanwhile::stopEndsItAfterThePresentEntry()
{
    const QByteArray last = "BBBB|12/06/2010 14:00:00|Es|99.8||TBD|||||||\r\n";
    m_window->open(unknown + several + last);
    m_window->answerSlowly();
    m_window->duringRequest(2, [this] { m_window->click("autoStop"); });
    m_window->searchAutomatically();
    QCOMPARE(m_window->asked().size(), 2);
    QCOMPARE(m_window->logbook(), unknownAfter + severalAfter + last);
    QCOMPARE(m_window->boxesAfterTheQuestions(), QStringList {u"Updated 0 entries"_s});
    QVERIFY(!m_window->find<QWidget>("autoStop")->isVisible());
}

void TestAutoSearchMeanwhile::stopEndsAnUpload()
{
    const QByteArray other = QByteArray(identified).replace(" 13:", " 14:");
    m_window->open(identified + other, "OMID=7\r\n");
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        QVERIFY(!m_window->enabled("Grid1"));
        m_window->click("autoStop");
    });
    m_window->trigger("menuFMListUploadLogs");
    QCOMPARE(m_window->asked().size(), 1);
    QCOMPARE(m_window->logbook(), QByteArray(identified).replace("||501|", "|fml=sent#|501|") + other);
}

void TestAutoSearchMeanwhile::afterwardsEverythingIsAsItWas()
{
    m_window->open(unknown + several);
    m_window->grid().setFocus();
    m_window->searchAutomatically();
    for (const QString &name : {u"Text9"_s, u"Command2"_s, u"Command3"_s, u"Grid1"_s}) {
        QVERIFY2(m_window->enabled(name), qPrintable(name));
    }
    for (const QString &name : {u"menuImportRDSSpyLog"_s, u"menuSetup"_s, u"menuEditUndo"_s}) {
        QVERIFY2(m_window->find<QAction>(name)->isEnabled(), qPrintable(name));
    }
    QCOMPARE(m_window->form().focusWidget(), &m_window->grid());
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
