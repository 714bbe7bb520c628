#include "documenthome.h"
#include "txdb/distances.h"

#include <QSignalSpy>
#include <QTest>

using namespace quillon;
using namespace quillon::test;

namespace {

const Transmitter brocken {u"Brocken"_s, u"D"_s, u"51.8"_s, u"10.6"_s, u"812.4"_s};
const QByteArray brockenLine = "Brocken|D|51.8|10.6|812.4|\r\n";

LogEntry reception(int number, const QString &rdsName = u"MDR_JUMP"_s)
{
    LogEntry entry;
    entry.piCode = QString::number(0xD000 + number, 16).toUpper();
    entry.dateTime = {*fromCivil({2010, 6, 12, 18, 0, 0})};
    entry.dateTime.seconds += number;
    entry.prop = u"Es"_s;
    entry.freq = u"90.3"_s;
    entry.transmitter = u"Brocken"_s;
    entry.country = u"D"_s;
    entry.rdsName = rdsName;
    entry.uid = u"4711"_s;
    return entry;
}

// A home with two receptions in its files, read by the document.
struct StartedHome : DocumentHome
{
    StartedHome()
    {
        directory.write(u"RDSLog.log"_s, start());
        directory.write(u"tx.lst"_s, "Bilbao|Spain|43.2630|-2.9350|900|\r\n");
        document->loadLogbook();
        document->loadSites();
        static_cast<void>(calls.takeWritten());
    }

    static QByteArray start()
    {
        return logLine("D3C3", "12/06/2010 18:22:05", "87.6", "MDR_JUMP")
            + logLine("E201", "13/06/2010 00:00:00", "90.3", "RNE_CLAS", "Spain", "Bilbao");
    }
};

} // namespace

class TestLogDocument : public QObject
{
    Q_OBJECT

    // Undoes and redoes the last step twice, comparing both files with those before and after it.
    static void comesBack(DocumentHome &home, const QByteArray &log, const QByteArray &sites)
    {
        const QByteArray logAfter = home.logFile();
        const QByteArray sitesAfter = home.sitesFile();
        for (int i = 0; i < 2; ++i) {
            home.document->undo();
            QCOMPARE(home.logFile(), log);
            QCOMPARE(home.logBytes(), log);
            QCOMPARE(home.sitesFile(), sites);
            QCOMPARE(home.siteBytes(), sites);
            home.document->redo();
            QCOMPARE(home.logFile(), logAfter);
            QCOMPARE(home.logBytes(), logAfter);
            QCOMPARE(home.sitesFile(), sitesAfter);
            QCOMPARE(home.siteBytes(), sitesAfter);
        }
        home.document->undo();
    }

private Q_SLOTS:
    void theStartClearsAwayWhatKilledWritesLeft()
    {
        StartedHome home;
        const QStringList before = home.directory.names();
        for (const QString &name : {u".RDSLog.log.new"_s, u".tx.lst.new"_s, u".20261122 234911.bak.new"_s}) {
            home.directory.write(name, "half");
        }
        home.open();
        home.document->loadLogbook();
        home.document->loadSites();
        QCOMPARE(home.directory.names(), before);
    }

    void theNameOfAChangeIsWhatAPersonSays_data()
    {
        QTest::addColumn<QString>("freq");
        QTest::addColumn<QString>("rdsName");
        QTest::addColumn<QString>("piCode");
        QTest::addColumn<QString>("name");
        QTest::newRow("station") << u"90.3"_s << u"RNE_CLAS"_s << u"E201"_s << u"Update 90.3 RNE_CLAS"_s;
        QTest::newRow("no name") << u"90.3"_s << u""_s << u"E201"_s << u"Update 90.3 E201"_s;
        QTest::newRow("nothing") << u""_s << u""_s << u""_s << u"Update"_s;
        QTest::newRow("no freq") << u""_s << u"RNE"_s << u""_s << u"Update RNE"_s;
        QTest::newRow("blanks") << u"90.3"_s << u"  R  1 "_s << u""_s << u"Update 90.3 R 1"_s;
    }

    void theNameOfAChangeIsWhatAPersonSays()
    {
        QFETCH(QString, freq);
        QFETCH(QString, rdsName);
        QFETCH(QString, piCode);
        QFETCH(QString, name);
        LogEntry entry;
        entry.freq = freq;
        entry.rdsName = rdsName;
        entry.piCode = piCode;
        QCOMPARE(changeName(u"Update"_s, entry), name);
    }

    void theFilesAreReadAndNotWritten()
    {
        StartedHome home;
        QCOMPARE(home.document->log().count(), 2);
        QCOMPARE(home.document->sites().count(), 1);
        QCOMPARE(home.logBytes(), StartedHome::start());
        QVERIFY(home.calls.takeWritten().isEmpty());
        QVERIFY(!home.document->isUnsaved());
        QCOMPARE(home.document->undoName(), QString());
        QCOMPARE(home.document->redoName(), QString());
        home.document->undo();
        home.document->redo();
        QVERIFY(home.calls.takeWritten().isEmpty());
    }

    void whatIsNotThereIsTold()
    {
        DocumentHome home;
        QCOMPARE(home.document->loadLogbook(), LogbookLoading::NoFile);
        QVERIFY(!home.document->loadSites());
        home.directory.write(u"tx.lst"_s, "Brest|F|48.4|-4.5||\r\n");
        QVERIFY(home.document->loadSites());
        home.directory.write(u"RDSLog.log"_s, "no logbook\r\n");
        home.open();
        QCOMPARE(home.document->loadLogbook(), LogbookLoading::NotLoaded);
    }

    void anAddComesBack()
    {
        StartedHome home;
        const QByteArray log = home.logFile();
        const QByteArray sites = home.sitesFile();
        home.document->commit(adding(*home.document, reception(1), brocken), LogDocument::Saving::WithSites);
        QCOMPARE(
            home.logFile(), log + "D001|12/06/2010 18:00:01|Es|90.3|Brocken|D||MDR_JUMP||||4711|\r\n"_ba);
        QCOMPARE(home.sitesFile(), sites + brockenLine);
        QCOMPARE(home.document->undoName(), u"Add 90.3 MDR_JUMP"_s);
        comesBack(home, log, sites);
        QCOMPARE(home.document->undoName(), QString());
        QCOMPARE(home.document->redoName(), u"Add 90.3 MDR_JUMP"_s);
        QCOMPARE(home.document->log().count(), 2);
        QVERIFY(!home.document->sites().find(u"Brocken", u"D"));
        QCOMPARE(home.document->sites().namesOfCountry(u"D"), QStringList());
    }

    void aSiteThatGetsOtherCoordinatesGetsItsOldOnesBack()
    {
        StartedHome home;
        const QByteArray log = home.logFile();
        const QByteArray sites = home.sitesFile();
        home.document->commit(
            adding(*home.document, reception(1), {u"Bilbao"_s, u"Spain"_s, u"1"_s, u"2"_s, u"3"_s}),
            LogDocument::Saving::WithSites);
        QCOMPARE(home.sitesFile(), "Bilbao|Spain|1|2|900|\r\n"_ba);
        comesBack(home, log, sites);
    }

    void anUpdateOfEveryFieldComesBack()
    {
        StartedHome home;
        const QByteArray log = home.logFile();
        const QByteArray sites = home.sitesFile();
        LogEntry after = reception(77, u"KÖLN"_s);
        after.notes = u"a\r\nb"_s;
        after.power = u"100"_s;
        after.dist = u"1"_s;
        after.fmlist = u"fml=multi#"_s;
        const LogEntry before = home.document->log().entry(1);
        home.document->commit({u"Update 90.3 RNE_CLAS"_s, LogChange::between(1, before, after), {}});
        QCOMPARE(home.logFile().count("|K\xd6LN|"), 1);
        comesBack(home, log, sites);
        QCOMPARE(home.document->log().entry(1), before);
    }

    void aDeletionComesBack()
    {
        StartedHome home;
        const QByteArray log = home.logFile();
        home.document->commit(updating(*home.document, 0, LogField::PiCode, deletedPiCode.toString()));
        QCOMPARE(home.logFile(), log.sliced(log.indexOf('\n') + 1));
        comesBack(home, log, home.sitesFile());
        QCOMPARE(home.document->log().entry(0).piCode, u"D3C3"_s);
    }

    void anImportOfManyIsOneStep()
    {
        StartedHome home;
        const QByteArray log = home.logFile();
        Change import {u"Import of 1000"_s, {}, {}};
        for (int i = 0; i < 1000; ++i) {
            import.log.added.push_back(reception(i));
        }
        QSignalSpy changed(home.document.get(), &LogDocument::changed);
        home.document->commit(import);
        QCOMPARE(home.logFile().count('\n'), 1002);
        QCOMPARE(changed.size(), 1);
        const auto told = changed.first().first().value<DocumentChange>();
        QCOMPARE(told.entries.size(), std::size_t(1000));
        QCOMPARE(told.entries.front(), 2);
        QCOMPARE(told.entries.back(), 1001);
        QVERIFY(told.added);
        QVERIFY(!told.sites);
        comesBack(home, log, home.sitesFile());
    }

    void theDistancesComeBack()
    {
        StartedHome home;
        const QByteArray log = home.logFile();
        const QByteArray sites = home.sitesFile();
        Change change {u"Re-Calculate Distances"_s, {}, {}};
        change.sites = measuredTransmitters(home.document->sites(), home.config.settings(), false);
        TransmitterList measured = home.document->sites();
        measured.apply(change.sites);
        change.log = givenDistances(measured, home.document->log());
        home.document->commit(change);
        QCOMPARE(home.document->log().entry(1).dist, home.document->sites().row(0).distance);
        QVERIFY(home.sitesFile() != sites);
        QVERIFY(home.logFile() != log);
        comesBack(home, log, sites);
    }

    void whatWasNotThereIsEmptyAfterTheUndo()
    {
        DocumentHome home;
        home.document->commit(adding(*home.document, reception(1), brocken), LogDocument::Saving::WithSites);
        comesBack(home, {}, {});
        QVERIFY(home.directory.names().contains(u"RDSLog.log"_s));
        home.open();
        QCOMPARE(home.document->loadLogbook(), LogbookLoading::Loaded);
    }

    void anUndoneAddLeavesNoDistance()
    {
        StartedHome home;
        LogEntry far = reception(1);
        far.dist = u"812.4"_s;
        home.document->commit(adding(*home.document, far));
        home.document->undo();
        home.document->commit(adding(*home.document, reception(2)));
        QCOMPARE(home.document->log().entry(2), reception(2));
        QCOMPARE(home.document->redoName(), QString());
    }

    void whatChangesNothingIsNoStepAndKeepsWhatWasUndone()
    {
        StartedHome home;
        home.document->commit(adding(*home.document, reception(1)));
        home.document->undo();
        static_cast<void>(home.calls.takeWritten());
        home.document->commit(updating(*home.document, 0, LogField::Freq, u"87.6"_s));
        // It is saved all the same, as an update is.
        QCOMPARE(home.calls.takeWritten(), QStringList(u"RDSLog.log"_s));
        QCOMPARE(home.document->undoName(), QString());
        QCOMPARE(home.document->redoName(), u"Add 90.3 MDR_JUMP"_s);
    }

    void aNewStepForgetsWhatWasUndone()
    {
        StartedHome home;
        home.document->commit(adding(*home.document, reception(1)));
        home.document->undo();
        QSignalSpy steps(home.document.get(), &LogDocument::stepsChanged);
        home.document->commit(updating(*home.document, 0, LogField::Freq, u"99"_s));
        QVERIFY(!steps.isEmpty());
        QCOMPARE(home.document->redoName(), QString());
        QCOMPARE(home.document->undoName(), u"Update 87.6 MDR_JUMP"_s);
    }

    void undoAndRedoTellWhatTheyConcern()
    {
        StartedHome home;
        home.document->commit(adding(*home.document, reception(1), brocken), LogDocument::Saving::WithSites);
        home.document->commit(updating(*home.document, 0, LogField::Freq, u"99"_s));
        QList<DocumentChange> told;
        connect(home.document.get(), &LogDocument::changed, this,
            [&told](const DocumentChange &change) { told += change; });
        const auto is = [&told](const std::vector<qint32> &entries, bool added, bool sites) {
            const DocumentChange last = told.takeLast();
            return told.isEmpty() && last.kind == DocumentChange::Kind::Restored && last.entries == entries
                && last.added == added && last.sites == sites;
        };
        home.document->undo();
        QVERIFY(is({0}, false, false));
        home.document->undo();
        QVERIFY(is({2}, false, true));
        home.document->redo();
        QVERIFY(is({2}, true, true));
        home.document->redo();
        QVERIFY(is({0}, false, false));
    }

    void aGroupIsOneStep()
    {
        StartedHome home;
        const QByteArray log = home.logFile();
        const QByteArray sites = home.sitesFile();
        {
            const LogDocument::Group group(*home.document, u"Automatic search"_s);
            home.document->commit(
                adding(*home.document, reception(1), brocken), LogDocument::Saving::WithSites);
            {
                const LogDocument::Group inner(*home.document, u"not this"_s);
                home.document->commit(updating(*home.document, 2, LogField::Dist, u"5"_s));
            }
            home.document->commit(updating(*home.document, 0, LogField::Freq, u"99"_s));
            home.document->commit(updating(*home.document, 0, LogField::Freq, u"100"_s));
        }
        QCOMPARE(home.document->undoName(), u"Automatic search"_s);
        QSignalSpy changed(home.document.get(), &LogDocument::changed);
        home.document->undo();
        QCOMPARE(changed.size(), 1);
        QVERIFY(changed.first().first().value<DocumentChange>().entries == (std::vector<qint32> {0, 2}));
        home.document->redo();
        QCOMPARE(home.document->log().entry(2).dist, u"5"_s);
        QCOMPARE(home.document->log().entry(0).freq, u"100"_s);
        comesBack(home, log, sites);
        QCOMPARE(home.document->undoName(), QString());
    }

    void aGroupOfNothingIsNoStep()
    {
        StartedHome home;
        home.document->commit(adding(*home.document, reception(1)));
        home.document->undo();
        {
            const LogDocument::Group group(*home.document, u"Automatic search"_s);
        }
        QCOMPARE(home.document->undoName(), QString());
        QCOMPARE(home.document->redoName(), u"Add 90.3 MDR_JUMP"_s);
    }

    void whatWasSettledStaysOverUndoAndRedo()
    {
        StartedHome home;
        home.document->commit(adding(*home.document, reception(1)));
        home.document->commit(updating(*home.document, 2, LogField::FMList, u"fml=multi#"_s));
        home.document->commit(updating(*home.document, 2, LogField::Freq, u"99"_s));
        LogChange sent;
        sent.setField(2, home.document->log().entry(2), LogField::FMList, u"fml=sent#"_s);
        home.document->settle(sent);
        QVERIFY(home.document->isUnsaved());
        QCOMPARE(home.document->undoName(), u"Update 90.3 MDR_JUMP"_s);
        home.document->saveLog();
        QVERIFY(!home.document->isUnsaved());
        LogEntry expected = reception(1);
        expected.fmlist = u"fml=sent#"_s;
        // The update of the frequency, and the one of the mark, which now brings no other mark.
        home.document->undo();
        QCOMPARE(home.document->log().entry(2), expected);
        home.document->undo();
        QCOMPARE(home.document->log().entry(2), expected);
        home.document->undo();
        QCOMPARE(home.document->log().count(), 2);
        QCOMPARE(home.logFile(), StartedHome::start());
        home.document->redo();
        QCOMPARE(home.document->log().entry(2), expected);
        home.document->redo();
        QCOMPARE(home.document->log().entry(2), expected);
        home.document->redo();
        expected.freq = u"99"_s;
        QCOMPARE(home.document->log().entry(2), expected);
        QCOMPARE(home.logFile().count("|fml=sent#|"), 1);
    }

    void whatIsSettledInAGroupStaysToo()
    {
        StartedHome home;
        {
            const LogDocument::Group group(*home.document, u"Group"_s);
            home.document->commit(updating(*home.document, 0, LogField::FMList, u"fml=multi#"_s));
            LogChange sent;
            sent.setField(0, home.document->log().entry(0), LogField::FMList, u"fml=sent#"_s);
            home.document->settle(sent);
            home.document->commit(updating(*home.document, 0, LogField::Freq, u"99"_s));
        }
        home.document->undo();
        QCOMPARE(home.document->log().entry(0).fmlist, u"fml=sent#"_s);
        QCOMPARE(home.document->log().entry(0).freq, u"87.6"_s);
        home.document->redo();
        QCOMPARE(home.document->log().entry(0).fmlist, u"fml=sent#"_s);
        QCOMPARE(home.document->log().entry(0).freq, u"99"_s);
    }

    void whatIsSettledWhileStepsAreUndoneStaysInTheRedo()
    {
        StartedHome home;
        home.document->commit(updating(*home.document, 0, LogField::FMList, u"fml=multi#"_s));
        home.document->undo();
        LogChange sent;
        sent.setField(0, home.document->log().entry(0), LogField::FMList, u"fml=sent#"_s);
        home.document->settle(sent);
        QCOMPARE(home.document->redoName(), u"Update 87.6 MDR_JUMP"_s);
        home.document->redo();
        QCOMPARE(home.document->log().entry(0).fmlist, u"fml=sent#"_s);
    }

    void anAddOfAKnownSiteWritesTheLogbookAlone()
    {
        StartedHome home;
        home.document->commit(adding(*home.document, reception(1), brocken), LogDocument::Saving::WithSites);
        QCOMPARE(home.calls.takeWritten(), (QStringList {u"RDSLog.log"_s, u"tx.lst"_s}));
        home.document->commit(adding(*home.document, reception(2), brocken), LogDocument::Saving::WithSites);
        QCOMPARE(home.calls.takeWritten(), QStringList(u"RDSLog.log"_s));
        home.document->commit(adding(*home.document, reception(3)), LogDocument::Saving::WithSites);
        QCOMPARE(home.calls.takeWritten(), QStringList(u"RDSLog.log"_s));
        home.document->undo();
        QCOMPARE(home.calls.takeWritten(), QStringList(u"RDSLog.log"_s));
    }

    void anAddWritesATransmitterListThatIsMissing()
    {
        StartedHome home;
        QVERIFY(QFile::remove(home.directory.file(u"tx.lst"_s)));
        home.document->commit(adding(*home.document, reception(1)), LogDocument::Saving::WithSites);
        QCOMPARE(home.calls.takeWritten(), (QStringList {u"RDSLog.log"_s, u"tx.lst"_s}));
    }

    void eachKindOfSavingWritesItsFiles()
    {
        using Saving = LogDocument::Saving;
        StartedHome home;
        const auto written = [&home](const Change &change, Saving saving) {
            home.document->commit(change, saving);
            return home.calls.takeWritten();
        };
        const QStringList log {u"RDSLog.log"_s};
        const QStringList sites {u"tx.lst"_s};
        const auto update = [&](const QString &freq) {
            return updating(*home.document, 0, LogField::Freq, freq);
        };
        Change siteAlone {u"Site"_s, {}, {}};
        siteAlone.sites.push_back(*home.document->sites().addition(brocken));
        QCOMPARE(written(update(u"1"_s), Saving::Changed), log);
        QCOMPARE(written(update(u"2"_s), Saving::WithSites), log);
        QCOMPARE(written({}, Saving::Sites), sites);
        QCOMPARE(written({}, Saving::Changed), log);
        QCOMPARE(written(siteAlone, Saving::Changed), sites);
        QVERIFY(!home.document->isUnsaved());
        QCOMPARE(written(update(u"4"_s), Saving::Later), QStringList());
        QVERIFY(home.document->isUnsaved());
        home.document->saveUnsaved();
        QCOMPARE(home.calls.takeWritten(), log);
        QVERIFY(!home.document->isUnsaved());
        home.document->undo();
        QCOMPARE(home.calls.takeWritten(), log);
        home.document->undo();
        QCOMPARE(home.calls.takeWritten(), sites);
        QCOMPARE(written(siteAlone, Saving::Later), QStringList());
        QVERIFY(home.document->isUnsaved());
        QCOMPARE(home.document->unsavedFailure(), QString());
        QCOMPARE(home.calls.takeWritten(), sites);
        QCOMPARE(home.sitesFile(), home.siteBytes());
        QCOMPARE(home.logFile(), home.logBytes());
    }

    void aFailingSaveKeepsTheChangeAndTheNextSaveWritesIt()
    {
        bool failed = true;
        for (int number = 1; failed; ++number) {
            StartedHome home;
            QSignalSpy changed(home.document.get(), &LogDocument::changed);
            home.calls.breakAt(number);
            const QString error = errorOf([&] {
                home.document->commit(
                    adding(*home.document, reception(1), brocken), LogDocument::Saving::WithSites);
            });
            failed = home.calls.failed();
            QCOMPARE(!error.isEmpty(), failed);
            QCOMPARE(home.document->isUnsaved(), failed);
            QCOMPARE(home.document->log().count(), 3);
            QCOMPARE(home.document->sites().count(), 2);
            QCOMPARE(changed.size(), 1);
            QCOMPARE(home.document->undoName(), u"Add 90.3 MDR_JUMP"_s);
            QVERIFY(home.logFile() == home.logBytes() || home.logFile() == StartedHome::start());
            home.calls.heal();
            home.document->commit(adding(*home.document, reception(2)), LogDocument::Saving::WithSites);
            QVERIFY(!home.document->isUnsaved());
            QCOMPARE(home.logFile(), home.logBytes());
            QCOMPARE(home.sitesFile(), home.siteBytes());
            QCOMPARE(home.directory.names(), (QStringList {u"LOGBOOK.INI"_s, u"RDSLog.log"_s, u"tx.lst"_s}));
        }
    }

    void aFailingSaveAtAnUndoOrRedoLeavesAllInAgreement_data()
    {
        QTest::addColumn<bool>("redo");
        QTest::newRow("undo") << false;
        QTest::newRow("redo") << true;
    }

    void aFailingSaveAtAnUndoOrRedoLeavesAllInAgreement()
    {
        QFETCH(bool, redo);
        bool failed = true;
        for (int number = 1; failed; ++number) {
            StartedHome home;
            const QByteArray sites = home.sitesFile();
            home.document->commit(
                adding(*home.document, reception(1), brocken), LogDocument::Saving::WithSites);
            const QByteArray after = home.logFile();
            const QByteArray sitesAfter = home.sitesFile();
            if (redo) {
                home.document->undo();
            }
            QSignalSpy changed(home.document.get(), &LogDocument::changed);
            home.calls.breakAt(number);
            const QString error = errorOf([&] { redo ? home.document->redo() : home.document->undo(); });
            failed = home.calls.failed();
            QCOMPARE(!error.isEmpty(), failed);
            QCOMPARE(home.document->isUnsaved(), failed);
            QCOMPARE(changed.size(), 1);
            QCOMPARE(home.document->log().count(), redo ? 3 : 2);
            QCOMPARE(home.logBytes(), redo ? after : StartedHome::start());
            QCOMPARE(home.siteBytes(), redo ? sitesAfter : sites);
            QCOMPARE(home.document->undoName(), redo ? u"Add 90.3 MDR_JUMP"_s : QString());
            QCOMPARE(home.document->redoName(), redo ? QString() : u"Add 90.3 MDR_JUMP"_s);
            QVERIFY(home.logFile() == after || home.logFile() == StartedHome::start());
            home.calls.heal();
            home.document->saveUnsaved();
            QVERIFY(!home.document->isUnsaved());
            QCOMPARE(home.logFile(), home.logBytes());
            QCOMPARE(home.sitesFile(), home.siteBytes());
            redo ? home.document->undo() : home.document->redo();
            QCOMPARE(home.logFile(), redo ? StartedHome::start() : after);
            QCOMPARE(home.sitesFile(), redo ? sites : sitesAfter);
        }
    }

    void bothFilesAreTriedWhenTheWindowCloses()
    {
        StartedHome home;
        home.document->commit(adding(*home.document, reception(1), brocken), LogDocument::Saving::Later);
        home.calls.breakAt(1);
        const QString failure = home.document->unsavedFailure();
        QVERIFY2(failure.contains(u"RDSLog.log"), qPrintable(failure));
        QVERIFY(!failure.contains(u"tx.lst"));
        QCOMPARE(home.calls.takeWritten(), QStringList(u"tx.lst"_s));
        QVERIFY(home.document->isUnsaved());
        QCOMPARE(home.document->unsavedFailure(), QString());
        QCOMPARE(home.calls.takeWritten(), QStringList(u"RDSLog.log"_s));
        QVERIFY(!home.document->isUnsaved());
    }

    void aFileThatThisRunDoesNotKnowIsKeptFirst()
    {
        DocumentHome home;
        const QByteArray foreign = "not a logbook\r\n";
        home.directory.write(u"RDSLog.log"_s, foreign);
        QCOMPARE(home.document->loadLogbook(), LogbookLoading::NotLoaded);
        QStringList kept;
        connect(home.document.get(), &LogDocument::copyKept, this,
            [&kept](const QString &path) { kept += path; });
        home.document->commit(adding(*home.document, reception(1)));
        QCOMPARE(kept.size(), 1);
        QFile copy(kept.first());
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), foreign);
        QCOMPARE(home.logFile(), home.logBytes());
        home.document->undo();
        home.document->redo();
        QCOMPARE(kept.size(), 1);
        // Another program has changed the file since.
        home.directory.write(u"RDSLog.log"_s, "changed behind the back\r\n");
        home.document->undo();
        QCOMPARE(kept.size(), 2);
    }

    void theEntryThatFillsTheLogIsUndoneAndRedone()
    {
        DocumentHome home;
        QByteArray file;
        for (int i = 0; i < 32'497; ++i) {
            file += logLine("D3C3", "12/06/2010 18:22:05", "87.6", "MDR_JUMP");
        }
        home.directory.write(u"RDSLog.log"_s, file);
        QCOMPARE(home.document->loadLogbook(), LogbookLoading::Loaded);
        Change import {u"Import of 3"_s, {}, {}};
        import.log.added = {reception(1), reception(2), reception(3)};
        import.sites.push_back(
            *home.document->sites().addition({u"Brest"_s, u"F"_s, u"48.4"_s, u"-4.5"_s, {}}));
        const auto is = [&home](const QString &error, int count) {
            return error.startsWith(u"Run-time error: Overflow\n"_s) && home.document->log().count() == count
                && home.logFile() == home.logBytes() && !home.document->isUnsaved();
        };
        QSignalSpy changed(home.document.get(), &LogDocument::changed);
        QVERIFY(is(errorOf([&] { home.document->commit(import); }), 32'498));
        QCOMPARE(changed.size(), 1);
        // The entry that is in the log has its site.
        QVERIFY(home.document->sites().find(u"Brest", u"F"));
        home.document->undo();
        QVERIFY(!home.document->sites().find(u"Brest", u"F"));
        QCOMPARE(home.logFile(), file);
        changed.clear();
        // It fills the log once more, which is told once more.
        QVERIFY(is(errorOf([&] { home.document->redo(); }), 32'498));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(home.document->log().entry(32'497), reception(1));
        QCOMPARE(home.document->undoName(), u"Import of 3"_s);
        home.document->undo();
        QCOMPARE(home.logFile(), file);
    }

    void whatCannotBeMadeChangesNothing()
    {
        StartedHome home;
        QSignalSpy changed(home.document.get(), &LogDocument::changed);
        Change change {u"Update"_s, {}, {}};
        change.log.setField(2, reception(1), LogField::Freq, u"99"_s);
        QVERIFY(errorOf([&] { home.document->commit(change); }).contains(u"Subscript out of range"));
        QVERIFY(changed.isEmpty());
        QVERIFY(home.calls.takeWritten().isEmpty());
        QCOMPARE(home.document->undoName(), QString());
        QCOMPARE(home.logBytes(), StartedHome::start());
    }
};

QTEST_GUILESS_MAIN(TestLogDocument)
#include "tst_logdocument.moc"
