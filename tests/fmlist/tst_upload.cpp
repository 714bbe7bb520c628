#include "core/logbooklines.h"
#include "fmlist/upload.h"
#include "platform/runtimeerror.h"
#include "support/changedlog.h"

#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

LogEntry reception(const QString &uid, const QString &fmlist = {}, const QString &prop = u"Es"_s)
{
    LogEntry entry;
    entry.piCode = u"D3C1"_s;
    entry.dateTime = *fromCivil({.year = 2010, .month = 6, .day = 12, .hour = 18, .minute = 22, .second = 5});
    entry.prop = prop;
    entry.freq = u"87.6"_s;
    entry.fmlist = fmlist;
    entry.uid = uid;
    return entry;
}

Settings withOmid()
{
    Settings settings;
    settings.omid = u"12 3&"_s;
    return settings;
}

Settings withEmail()
{
    Settings settings;
    settings.email = u"me@home.org"_s;
    settings.homeLatitude = u"52.5"_s;
    settings.homeLongitude = u"-1,25"_s;
    return settings;
}

QByteArray body(const LogEntry &entry, const Settings &settings = withOmid())
{
    return uploadBody(entry, settings, CodePage(1252));
}

// Marks what was accepted.
Accepted marking(Logbook &log)
{
    return [&log](qint32 number) {
        changeEntry(log, number, [](LogEntry &entry) { entry.fmlist = sentField(entry.fmlist); });
    };
}

} // namespace

class TestUpload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBodyByteForByte()
    {
        QCOMPARE(body(reception(u"4711"_s)),
            "omid=12 3&&freq=87%2E6&pi=D3C1&uid=4711&dateTime=12%2D06%2D2010+18%3A22%3A05&propa=Es"_ba);
        QCOMPARE(body(reception(u"4711"_s), withEmail()),
            "email=me%40home%2Eorg&latitude=52%2E5&longitude=%2D1%2C25&freq=87%2E6&pi=D3C1&uid=4711"
            "&dateTime=12%2D06%2D2010+18%3A22%3A05&propa=Es"_ba);
    }

    void withAnOmidNothingElseIsNeededOrSent()
    {
        Settings both = withEmail();
        both.omid = u"99"_s;
        QVERIFY(body(reception(u"1"_s), both).startsWith("omid=99&freq="));
        QVERIFY(!body(reception(u"1"_s), both).contains("email"));
    }

    void piAndUidGoOutUnencoded()
    {
        LogEntry entry = reception(u"4\u00e97-1 a"_s);
        entry.piCode = u"D-C1"_s;
        QVERIFY(body(entry).contains("&pi=D-C1&uid=4\xE9"
                                     "7-1 a&dateTime="));
    }

    void onlyThreeModesAreReported_data()
    {
        QTest::addColumn<QString>("prop");
        QTest::addColumn<QByteArray>("end");
        QTest::newRow("Es") << u"Es"_s << "05&propa=Es"_ba;
        QTest::newRow("Tropo") << u"Tropo"_s << "05&propa=Tropo"_ba;
        QTest::newRow("MS") << u"MS"_s << "05&propa=MS"_ba;
        for (const QString &mode :
            {u"TEP"_s, u"Aur"_s, u"F2"_s, u"FAI"_s, u""_s, u"TBD"_s, u"es"_s, u"Es "_s}) {
            QTest::addRow("'%s'", qPrintable(mode)) << mode << "22%3A05"_ba;
        }
    }

    void onlyThreeModesAreReported()
    {
        QFETCH(QString, prop);
        QFETCH(QByteArray, end);
        QVERIFY(body(reception(u"4711"_s, {}, prop)).endsWith(end));
    }

    void theHeadersByteForByte()
    {
        QCOMPARE(uploadHeaders.toByteArray(),
            "Content-Type: application/x-www-form-urlencoded\r\nUser-Agent: Quillon"_ba);
        QCOMPARE(
            uploadUrl(u"https://www.fmlist.org"_s, CodePage(1252)), "https://www.fmlist.org/logpost1.php"_ba);
    }

    void eligibleIsWhatHasAUidAndIsNeitherSentNorDeleted()
    {
        LogEntry deleted = reception(u"4711"_s);
        deleted.piCode = u"delete"_s;
        QVERIFY(!isEligible(deleted));
        QVERIFY(isEligible(reception(u"4711"_s)));
        QVERIFY(isEligible(reception(u"4711"_s, u"fml=multi#"_s)));
        QVERIFY(!isEligible(reception(u""_s)));
        QVERIFY(!isEligible(reception(u"4711"_s, u"fml=sent#"_s)));
        QVERIFY(!isEligible(reception(u"4711"_s, u"a=1#fml=sent"_s)));
    }

    void refusedWithoutASender_data()
    {
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<QString>("longitude");
        QTest::newRow("nothing") << QString() << QString() << QString();
        QTest::newRow("no e-mail") << QString() << u"1"_s << u"2"_s;
        QTest::newRow("no latitude") << u"a@b"_s << QString() << u"2"_s;
        QTest::newRow("no longitude") << u"a@b"_s << u"1"_s << QString();
    }

    void refusedWithoutASender()
    {
        Settings settings;
        QFETCH(QString, email);
        QFETCH(QString, latitude);
        QFETCH(QString, longitude);
        settings.email = email;
        settings.homeLatitude = latitude;
        settings.homeLongitude = longitude;
        Logbook log;
        log.AddEntry(reception(u"4711"_s));
        QCOMPARE(uploadRefusal(settings, log).value_or(u"none"_s),
            u"To submit logs to FMList either supply your OMID or (e-mail address, home latitude and home "
            "longitude)"_s);
    }

    void refusedWithoutAnEligibleEntry()
    {
        Logbook log;
        log.AddEntry(reception(u""_s));
        log.AddEntry(reception(u"4711"_s, u"fml=sent#"_s));
        QCOMPARE(uploadRefusal(withOmid(), log).value_or(u"none"_s),
            u"You have no logs ready to be uploaded to FMList. To make logs ready you need to lookup the UID "
            u"from "
            "FMList this can be done by selecting your log entry then clicking on search FMList. Once the "
            "search "
            "results are populated then double click on the correct transmitter and update your log record"_s);
        LogEntry deleted = reception(u"4713"_s);
        deleted.piCode = u"delete"_s;
        log.AddEntry(deleted);
        QCOMPARE(eligibleCount(log), 0);
        QVERIFY(uploadRefusal(withOmid(), log));
        log.AddEntry(reception(u"4712"_s));
        QCOMPARE(eligibleCount(log), 1);
        QVERIFY(!uploadRefusal(withOmid(), log));
        QVERIFY(!uploadRefusal(withEmail(), log));
    }

    void acceptedIsWhatIsNoError()
    {
        QVERIFY(isAccepted(u"OK"));
        QVERIFY(isAccepted(u""));
        QVERIFY(isAccepted(u"Errors: none"));
        QVERIFY(!isAccepted(u"Error 10001"));
        QVERIFY(!isAccepted(u"<html>Error 1"));
    }

    void everyEligibleEntryIsPostedAndTheAcceptedAreMarked()
    {
        Logbook log;
        log.AddEntry(reception(u"1"_s, u"fml=multi#"_s));
        log.AddEntry(reception(u""_s));
        log.AddEntry(reception(u"2"_s));
        log.AddEntry(reception(u"3"_s, u"fml=sent#"_s));
        log.AddEntry(reception(u"4"_s, u"a=1#"_s));
        QByteArrayList bodies;
        QStringList told;
        const Upload upload = uploadLogs(
            log, withOmid(), CodePage(1252),
            [&bodies](const QByteArray &sent) {
                bodies += sent;
                return sent.contains("uid=2&") ? u"Error 7"_s : u"OK"_s;
            },
            marking(log),
            [&told](const QString &answer, int done, int count) {
                told += answer + u" %1/%2"_s.arg(done).arg(count);
                return true;
            });
        QCOMPARE(bodies,
            (QByteArrayList {body(reception(u"1"_s)), body(reception(u"2"_s)), body(reception(u"4"_s))}));
        QCOMPARE(told, (QStringList {u"OK 1/3"_s, u"Error 7 2/3"_s, u"OK 3/3"_s}));
        QCOMPARE(upload.accepted, 2);
        QVERIFY(!upload.failure);
        QCOMPARE(log.entry(0).fmlist, u"fml=sent#"_s);
        QCOMPARE(log.entry(2).fmlist, u""_s);
        QCOMPARE(log.entry(4).fmlist, u"a=1#fml=sent#"_s);
    }

    void theAcceptedAreToldBeforeTheirAnswerAndTheLogStays()
    {
        Logbook log;
        log.AddEntry(reception(u"1"_s));
        log.AddEntry(reception(u"2"_s));
        const QByteArray before = logbookBytes(log, CodePage());
        QStringList told;
        const Upload upload = uploadLogs(
            log, withOmid(), CodePage(1252),
            [](const QByteArray &sent) { return sent.contains("uid=1&") ? u"Error 7"_s : u"OK"_s; },
            [&told](qint32 entry) { told += u"accepted %1"_s.arg(entry); },
            [&told](const QString &answer, int, int) {
                told += answer;
                return true;
            });
        QCOMPARE(told, (QStringList {u"Error 7"_s, u"accepted 1"_s, u"OK"_s}));
        QCOMPARE(upload.accepted, 1);
        QCOMPARE(logbookBytes(log, CodePage()), before);
    }

    void noMoreIsSentWhenTheTellingSaysSo()
    {
        Logbook log;
        for (const QString &uid : {u"1"_s, u"2"_s, u"3"_s}) {
            log.AddEntry(reception(uid));
        }
        int posts = 0;
        const Upload upload = uploadLogs(
            log, withOmid(), CodePage(1252),
            [&posts](const QByteArray &) {
                ++posts;
                return u"OK"_s;
            },
            marking(log), [](const QString &, int done, int) { return done < 2; });
        QCOMPARE(posts, 2);
        QCOMPARE(upload.accepted, 2);
        QVERIFY(!upload.failure);
        QCOMPARE(log.entry(1).fmlist, u"fml=sent#"_s);
        QCOMPARE(log.entry(2).fmlist, u""_s);
    }

    void whatIsDeletedMeanwhileIsNotSent()
    {
        Logbook log;
        log.AddEntry(reception(u"1"_s));
        log.AddEntry(reception(u"2"_s));
        QByteArrayList bodies;
        const Upload upload = uploadLogs(
            log, withOmid(), CodePage(1252),
            [&](const QByteArray &sent) {
                bodies += sent;
                changeEntry(log, 1, [](LogEntry &entry) { entry.piCode = deletedPiCode.toString(); });
                return u"OK"_s;
            },
            marking(log), [](const QString &, int, int) { return true; });
        QCOMPARE(bodies, QByteArrayList {body(reception(u"1"_s))});
        QCOMPARE(upload.accepted, 1);
        QCOMPARE(log.entry(1).fmlist, u""_s);
    }

    void whatWasAcceptedBeforeAFailureStaysMarked()
    {
        Logbook log;
        for (const QString &uid : {u"1"_s, u"2"_s, u"3"_s}) {
            log.AddEntry(reception(uid));
        }
        int posts = 0;
        const Upload upload = uploadLogs(
            log, withOmid(), CodePage(1252),
            [&posts](const QByteArray &) {
                if (++posts == 2) {
                    throw RuntimeError(ErrorName::CannotReachService, u"gone"_s);
                }
                return u"OK"_s;
            },
            marking(log), [](const QString &, int, int) { return true; });
        QCOMPARE(posts, 2);
        QCOMPARE(upload.accepted, 1);
        QCOMPARE(log.entry(0).fmlist, u"fml=sent#"_s);
        QCOMPARE(log.entry(1).fmlist, u""_s);
        QVERIFY(upload.failure);
        try {
            std::rethrow_exception(upload.failure);
        } catch (const RuntimeError &error) {
            QCOMPARE(error.doing(), u"gone"_s);
        }
    }
};

QTEST_GUILESS_MAIN(TestUpload)
#include "tst_upload.moc"
