#include "live/address.h"
#include "live/frequency.h"
#include "live/grouplines.h"
#include "live/jsonevents.h"
#include "live/knownstations.h"
#include "live/linesplitter.h"
#include "live/rigctlsession.h"
#include "live/srcp.h"
#include "live/xdrdprotocol.h"
#include "platform/strangerstext.h"
#include "txdb/countrynames.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

QString shown(const ReceiverEvent &event)
{
    struct Show
    {
        QString operator()(const Tuned &e) const { return u"tuned %1"_s.arg(e.hertz); }
        QString operator()(const GroupHeard &e) const
        {
            QString text = QString::fromLatin1(groupText(e.group)) + u' ';
            for (const BlockState state : e.group.states) {
                text += QString::number(int(state));
            }
            return u"group " + text;
        }
        QString operator()(const PiHeard &e) const
        {
            return u"pi %1 %2"_s.arg(piText(e.pi)).arg(int(e.trust));
        }
        QString operator()(const PiGone &) const { return u"no pi"_s; }
        QString operator()(const PsHeard &e) const { return u"ps [%1]"_s.arg(e.ps); }
        QString operator()(const RadiotextHeard &e) const { return u"text [%1]"_s.arg(e.text); }
        QString operator()(const EccHeard &e) const { return u"ecc %1"_s.arg(e.ecc, 0, 16); }
        QString operator()(const FrequenciesHeard &e) const
        {
            QStringList kilohertz;
            for (const int one : e.kilohertz) {
                kilohertz += QString::number(one);
            }
            return u"also "_s + kilohertz.join(u' ');
        }
        QString operator()(const ClockHeard &e) const { return u"clock "_s + generalText(e.utc); }
        QString operator()(const SignalHeard &e) const { return u"signal %1 %2"_s.arg(e.value).arg(e.unit); }
        QString operator()(const StationGuess &e) const
        {
            return u"guess %1 %2 %3 %4 %5 %6 %7"_s.arg(
                piText(e.pi), e.site, e.country, e.kilowatts, e.latitude, e.longitude, e.uid);
        }
    };
    return std::visit(Show(), event);
}

QString shown(const std::vector<ReceiverEvent> &events)
{
    QStringList lines;
    for (const ReceiverEvent &event : events) {
        lines += shown(event);
    }
    return lines.join(u"; "_s);
}

} // namespace

class TestProtocols : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesOfGroups_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("group");
        QTest::newRow("whole") << QByteArray("D3C225480D202020") << u"D3C225480D202020 0000"_s;
        QTest::newRow("lost blocks") << QByteArray("D3C2----0D20----") << u"D3C2----0D20---- 0303"_s;
        QTest::newRow("blanks between") << QByteArray("D3C2 2548 0D20 2020") << u"D3C225480D202020 0000"_s;
        QTest::newRow("small letters") << QByteArray("d3c225480d202020") << u"D3C225480D202020 0000"_s;
        QTest::newRow("too short") << QByteArray("D3C225480D20202") << u""_s;
        QTest::newRow("too long") << QByteArray("D3C225480D2020200") << u""_s;
        QTest::newRow("no digit") << QByteArray("D3C225480D20202G") << u""_s;
        QTest::newRow("sign") << QByteArray("D3C2-5480D202020") << u""_s;
        QTest::newRow("empty") << QByteArray() << u""_s;
        QTest::newRow("header") << QByteArray("G:") << u""_s;
    }

    void linesOfGroups()
    {
        QFETCH(QByteArray, line);
        const auto group = groupOf(line);
        QTEST(group ? shown(GroupHeard {*group}).sliced(6) : QString(), "group");
    }

    void linesOfTheGroupStream()
    {
        QCOMPARE(shown(*spyStreamEvent("RESET-------")), u"tuned 0"_s);
        QCOMPARE(shown(*spyStreamEvent("RESET")), u"tuned 0"_s);
        QCOMPARE(shown(*spyStreamEvent("D3C225480D202020")), u"group D3C225480D202020 0000"_s);
        QVERIFY(!spyStreamEvent("G:"));
        QVERIFY(!spyStreamEvent(""));
    }

    void linesOfARecordedFile_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("isGroup");
        QTest::addColumn<qint64>("time");
        const qint64 time = fromCivil({2020, 2, 4, 17, 26, 47})->seconds * 1000 + 230;
        QTest::newRow("group") << QByteArray("D3C2 2548 0D20 2020 @2020/02/04 17:26:47.23") << true << time;
        QTest::newRow("lost") << QByteArray("---- ---- 0D20 2020 @2020/02/04 17:26:47.23") << true << time;
        QTest::newRow("no time") << QByteArray("D3C2 2548 0D20 2020") << true << qint64(-1);
        QTest::newRow("bad time") << QByteArray("D3C2 2548 0D20 2020 @2020/02/31 17:26:47.23") << true
                                  << qint64(-1);
        QTest::newRow("first line") << QByteArray("<recorder=\"x\" date=\"2020-02-04\">") << false
                                    << qint64(-1);
        QTest::newRow("RDS2") << QByteArray("#S1 D3C2 2548 0D20 2020 @2020/02/04 17:26:47.23") << false
                              << qint64(-1);
    }

    void linesOfARecordedFile()
    {
        QFETCH(QByteArray, line);
        const auto read = spyLine(line);
        QTEST(read.has_value(), "isGroup");
        QTEST(read ? read->time.value_or(-1) : -1, "time");
    }

    void theLoginOfXdrd()
    {
        // SHA-1 of "abc" is a published vector.
        QCOMPARE(xdrdLogin("ab", u"c"_s), QByteArray("a9993e364706816aba3e25717850c26c9cd0d89d\n"));
    }

    void linesOfXdrd_data()
    {
        QTest::addColumn<QByteArrayList>("lines");
        QTest::addColumn<QString>("told");
        using L = QByteArrayList;
        QTest::newRow("frequency") << L {"T98500"} << u"tuned 98500000"_s;
        QTest::newRow("no frequency") << L {"Tx", "T", "T-5", "T99999999999999"} << u""_s;
        QTest::newRow("signal") << L {"Ss35.11,12,3"} << u"signal 35.11 dBf"_s;
        QTest::newRow("signal alone") << L {"Sm7.5"} << u"signal 7.5 dBf"_s;
        QTest::newRow("no signal") << L {"S", "Ss", "Ssnan", "Ssinf,1"} << u""_s;
        QTest::newRow("PI") << L {"PD3C2"} << u"pi D3C2 0"_s;
        QTest::newRow("PI in doubt") << L {"PD3C2??"} << u"pi D3C2 0"_s;
        QTest::newRow("no PI") << L {"P", "PD3", "PXYZW"} << u""_s;
        QTest::newRow("group") << L {"RD3C225480D20202000"} << u"group D3C225480D202020 0000"_s;
        QTest::newRow("group with errors") << L {"RD3C225480D2020201B"} << u"group D3C225480D20---- 0123"_s;
        QTest::newRow("old group") << L {"PD3C2", "R25480D20202000"}
                                   << u"pi D3C2 0; group D3C225480D202020 0000"_s;
        QTest::newRow("old group with errors")
            << L {"PD3C2?", "R25480D20202039"} << u"pi D3C2 0; group D3C225480D20---- 1123"_s;
        QTest::newRow("old group without PI") << L {"R25480D20202000"} << u"group ----25480D202020 3000"_s;
        QTest::newRow("old group after a retune") << L {"PD3C2", "T99000",
            "R25480D20202000"} << u"pi D3C2 0; tuned 99000000; group ----25480D202020 3000"_s;
        QTest::newRow("what else there is") << L {"o2,0", "OK", "X", "U87500 = 12", "Z0", "", "a1"} << u""_s;
        QTest::newRow("half a group") << L {"RD3C2", "RD3C225480D2020200", "R"} << u""_s;
    }

    void linesOfXdrd()
    {
        QFETCH(QByteArrayList, lines);
        XdrdSession session(u"secret"_s);
        QCOMPARE(session.take("0123456789abcdef").send, xdrdLogin("0123456789abcdef", u"secret"_s));
        std::vector<ReceiverEvent> events;
        for (const QByteArray &line : lines) {
            const XdrdSession::Reply reply = session.take(line);
            QVERIFY(reply.send.isEmpty());
            QVERIFY(reply.refused.isEmpty());
            events.insert(events.end(), reply.events.begin(), reply.events.end());
        }
        QTEST(shown(events), "told");
    }

    void xdrdRefuses()
    {
        XdrdSession guest {QString()};
        (void)guest.take("0123456789abcdef");
        QCOMPARE(guest.take("a0").refused, u"it takes no guests without a password"_s);
        XdrdSession user(u"wrong"_s);
        (void)user.take("0123456789abcdef");
        QCOMPARE(user.take("a0").refused, u"it does not accept the password"_s);
    }

    void datagramsOfBothDialects_data()
    {
        QTest::addColumn<QByteArray>("datagram");
        QTest::addColumn<QString>("told");
        QTest::newRow("frequency") << QByteArray("from=XDR-GTK;freq=98500000") << u"tuned 98500000"_s;
        QTest::newRow("all at once") << QByteArray(
            "from=XDR-GTK;freq=98500000;RcvLevel=35;pi=D3C2;ps=4D4452204A554D50;rt1=48690D;pty="
            "A;ecc=E0") << u"tuned 98500000; pi D3C2 3; signal 35 ; ps [MDR JUMP]; text [Hi]; ecc e0"_s;
        QTest::newRow("padded with blanks")
            << QByteArray("from=XDR-GTK;ps=4D445220 120 1 D") << u"ps [MDR     ]"_s;
        QTest::newRow("frequency last") << QByteArray("ps=4D4452204A554D50;pi=D3C2;freq=98500000")
                                        << u"tuned 98500000; pi D3C2 3; ps [MDR JUMP]"_s;
        QTest::newRow("other frequencies") << QByteArray("from=XDR-GTK;pi=D3C2;af=106E10CDE0FA00 1")
                                           << u"pi D3C2 3; also 87600 89100 98500"_s;
        QTest::newRow("no other frequencies") << QByteArray("from=XDR-GTK;af=00000000;af=x;af=") << u""_s;
        QTest::newRow("TEF PI") << QByteArray("from=TEF_tuner_1;PI=D3C2") << u"pi D3C2 3"_s;
        QTest::newRow("TEF PI in doubt") << QByteArray("from=TEF_tuner_1;PI=D3C2?") << u"pi D3C2 0"_s;
        QTest::newRow("TEF name") << QByteArray("from=TEF_tuner_1;PS=MDR_JUMP") << u"ps [MDR JUMP]"_s;
        QTest::newRow("TEF text") << QByteArray("from=TEF_tuner_1;RT1=Now_Sade") << u"text [Now Sade]"_s;
        QTest::newRow("TEF text like digits") << QByteArray("from=TEF_tuner_1;RT1=ABBA") << u"text [ABBA]"_s;
        QTest::newRow("line end") << QByteArray("from=TEF_tuner_1;PI=D3C2\r\n") << u"pi D3C2 3"_s;
        QTest::newRow("nonsense") << QByteArray(
            "=;;;=5;pi=;pi=XXXX;pi=D3C2Z;freq=-1;freq=?;ecc=1FF;RcvLevel=nan")
                                  << u""_s;
        QTest::newRow("empty") << QByteArray() << u""_s;
        QTest::newRow("the last of 64 pairs")
            << QByteArray("x=1;").repeated(63) + "pi=D3C2" << u"pi D3C2 3"_s;
        QTest::newRow("behind 64 pairs") << QByteArray("x=1;").repeated(64) + "pi=D3C2" << u""_s;
        QTest::newRow("a long name") << QByteArray("ps=") + QByteArray(1'000'000, 'A') << u"ps [AAAAAAAA]"_s;
    }

    void datagramsOfBothDialects()
    {
        QFETCH(QByteArray, datagram);
        QTEST(shown(srcpEvents(datagram)), "told");
    }

    void messagesOfTheWebserver_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("told");
        QTest::newRow("recorded")
            << QByteArray(R"({"pi":"D3C2","freq":"98.500","sig":35.11,"sigRaw":"Ss35.11,12,3",
            "sigTop":"35.5","bw":0,"st":true,"rds":true,"ps":"MDR JUMP","tp":1,"ta":0,"ms":1,"pty":10,"ecc":null,
            "af":[98500],"rt0":"Hello","rt1":"","rt_flag":0,"ant":0,"txInfo":{"tx":"","pol":"","erp":"","city":"",
            "itu":"","dist":"","azi":"","id":"","reg":false,"pi":""},"country_name":"","country_iso":"UN","users":0})")
            << u"tuned 98500000; pi D3C2 3; signal 35.11 dBf; ps [MDR JUMP]; text [Hello]; also 98500"_s;
        QTest::newRow("other frequencies")
            << QByteArray(R"({"pi":"D3C2","af":[98500,89100,89100,"x",531,120000,null]})")
            << u"pi D3C2 3; also 89100 98500"_s;
        QTest::newRow("the ends of the band")
            << QByteArray(R"({"pi":"D3C2","af":[87499,87500,108000,108001]})")
            << u"pi D3C2 3; also 87500 108000"_s;
        QTest::newRow("nothing yet") << QByteArray(R"({"pi":"?","freq":"98.500","sig":3,"ps":""})")
                                     << u"tuned 98500000; signal 3 dBf"_s;
        QTest::newRow("in doubt") << QByteArray(R"({"pi":"D3C2??","freq":"98.500"})")
                                  << u"tuned 98500000; pi D3C2 0"_s;
        QTest::newRow("its guess") << QByteArray(
            R"({"pi":"D3C2","freq":"98.5","txInfo":{"tx":"MDR Jump","erp":60,
            "city":"Brocken","itu":"D","dist":"120","azi":"7","id":"4711","reg":false,"pi":"D3C2"}})")
                                   << u"tuned 98500000; pi D3C2 3; guess D3C2 Brocken D 60   4711"_s;
        QTest::newRow("a guess of before") << QByteArray(
            R"({"pi":"D3C2","freq":"98.5","txInfo":{"tx":"X","id":"1","reg":false,"pi":"F201"}})")
                                           << u"tuned 98500000; pi D3C2 3"_s;
        QTest::newRow("a regional guess") << QByteArray(
            R"({"pi":"D5C2","freq":"98.5","txInfo":{"tx":"X","city":"Y","id":"1","reg":true,"pi":"D3C2"}})")
                                          << u"tuned 98500000; pi D5C2 3; guess D5C2 Y     1"_s;
        QTest::newRow("second text") << QByteArray(
            R"({"pi":"D3C2","rt0":"old","rt1":"new","rt_flag":1,"ecc":"E0"})")
                                     << u"pi D3C2 3; text [new]; ecc e0"_s;
        QTest::newRow("wrong kinds") << QByteArray(R"({"pi":5,"freq":[],"sig":"x","ps":{},"txInfo":3})")
                                     << u""_s;
        QTest::newRow("no object") << QByteArray("[1,2]") << u""_s;
        QTest::newRow("no JSON") << QByteArray("T98500") << u""_s;
        QTest::newRow("deep") << QByteArray(60'000, '[') << u""_s;
        QTest::newRow("a megabyte of name")
            << "{\"pi\":\"D3C2\",\"ps\":\"" + QByteArray(1'000'000, 'A') + "\"}" << u""_s;
    }

    void messagesOfTheWebserver()
    {
        QFETCH(QByteArray, json);
        QTEST(shown(webserverEvents(json)), "told");
    }

    void aGuessGetsThePositionToWhichItsDistanceLeads_data()
    {
        QTest::addColumn<QByteArray>("info");
        QTest::addColumn<QString>("position");
        // 111.19 km to the north are a degree of latitude, nearly.
        QTest::newRow("north") << QByteArray(R"("dist":"111.2","azi":"0")") << u"51.00 10.00"_s;
        QTest::newRow("numbers") << QByteArray(R"("dist":715,"azi":90)") << u"49.57 19.91"_s;
        QTest::newRow("its own position")
            << QByteArray(R"("dist":"111.2","azi":"0","lat":"51.8","lon":"10.6")") << u"51.8 10.6"_s;
        QTest::newRow("no direction") << QByteArray(R"("dist":"111.2","azi":"")") << u" "_s;
        QTest::newRow("nowhere on earth") << QByteArray(R"("dist":"99999","azi":"0")") << u" "_s;
        QTest::newRow("no number") << QByteArray(R"("dist":"x","azi":[])") << u" "_s;
    }

    void aGuessGetsThePositionToWhichItsDistanceLeads()
    {
        QFETCH(QByteArray, info);
        const QByteArray json = R"({"pi":"D3C2","txInfo":{"tx":"X","pi":"D3C2",)" + info + "}}";
        const auto home = webserverHome(R"({"qthLatitude":"50.0","qthLongitude":"10.0","tunerName":"x"})");
        const std::vector<ReceiverEvent> events = webserverEvents(json, home);
        const auto &guess = std::get<StationGuess>(events.back());
        QTEST(QString(guess.latitude + u' ' + guess.longitude), "position");
    }

    void aReceiverThatDoesNotTellItsPlace()
    {
        for (const QByteArray &json : {"{}"_ba, R"({"qthLatitude":"","qthLongitude":""})"_ba,
                 R"({"qthLatitude":"91","qthLongitude":"0"})"_ba, "<html>"_ba}) {
            QVERIFY2(!webserverHome(json), json.constData());
        }
    }

    void linesOfRedsea_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("told");
        QTest::newRow("recorded") << QByteArray(
            R"({"pi":"0xD3C2","group":"0A","tp":true,"prog_type":"Pop music","di":{"stereo":false},"ta":false,"is_music":true,"ps":"MDR JUMP"})")
                                  << u"pi D3C2 2; ps [MDR JUMP]"_s;
        QTest::newRow("PI alone") << QByteArray(R"({"pi":"0xD3C2"})") << u"pi D3C2 2"_s;
        QTest::newRow("half a name") << QByteArray(R"({"pi":"0xD3C2","partial_ps":"MDR     "})")
                                     << u"pi D3C2 2"_s;
        QTest::newRow("text") << QByteArray(R"({"pi":"0xD3C2","group":"2A","radiotext":"Hello"})")
                              << u"pi D3C2 2; text [Hello]"_s;
        QTest::newRow("clock") << QByteArray(
            R"({"pi":"0xD3C2","group":"4A","clock_time":"2025-11-21T19:30:00+01:00"})")
                               << u"pi D3C2 2; clock 21/11/2025 18:30:00"_s;
        QTest::newRow("other frequencies")
            << QByteArray(R"({"pi":"0xD3C2","group":"0A","alt_frequencies_a":[98500,87600]})")
            << u"pi D3C2 2; also 87600 98500"_s;
        QTest::newRow("RDS2") << QByteArray(R"({"pi":"0xD3C2","stream":1})") << u""_s;
        QTest::newRow("no PI") << QByteArray(R"({"group":"0A","ps":"MDR JUMP"})") << u""_s;
        QTest::newRow("no JSON") << QByteArray("usage: redsea") << u""_s;
    }

    void linesOfRedsea()
    {
        QFETCH(QByteArray, json);
        QTEST(shown(redseaEvents(json)), "told");
    }

    void theDialogueWithGqrx()
    {
        RigctlSession session;
        struct Turn
        {
            const char *asked;
            const char *answer;
            QString told;
        };
        const QList<Turn> dialogue {
            {"_\n", "Gqrx 2.15.9", {}},
            {"p ?\n", "RDS_PI", {}},
            {"U RDS 0\n", "RPRT 0", {}},
            {"U RDS 1\n", "RPRT 0", {}},
            {"f\n", "98500000", u"tuned 98500000"_s},
            {"l STRENGTH\n", "-42.5", {}},
            {"p RDS_PI\n", "D3C2", {}},
            {"f\n", "98500000", u"signal -42.5 dBFS; pi D3C2 1"_s},
            {"", nullptr, {}},
            // A retune between two askings: the old PI is thrown away, and gqrx is made to forget it.
            {"f\n", "98500000", {}},
            {"l STRENGTH\n", "-40", {}},
            {"p RDS_PI\n", "D3C2", {}},
            {"f\n", "99000000", u"tuned 99000000"_s},
            {"U RDS 0\n", "RPRT 0", {}},
            {"U RDS 1\n", "RPRT 0", {}},
            {"", nullptr, {}},
            {"f\n", "99000000", {}},
            {"l STRENGTH\n", "-40", {}},
            {"p RDS_PI\n", "0000", {}},
            {"f\n", "99000000", u"signal -40 dBFS; no pi"_s},
        };
        for (const Turn &turn : dialogue) {
            QCOMPARE(session.next(), QByteArray(turn.asked));
            if (turn.answer != nullptr) {
                QCOMPARE(shown(session.take(turn.answer)), turn.told);
            } else {
                session.begin();
            }
        }
    }

    void aNewerGqrxTellsNameAndText()
    {
        RigctlSession session;
        const QList<QPair<QByteArray, QByteArray>> dialogue {{"_\n", "Gqrx 2.17.6"},
            {"p ?\n", "RDS_PI RDS_PS_NAME RDS_RADIOTEXT"}, {"U RDS 0\n", "RPRT 0"}, {"U RDS 1\n", "RPRT 0"},
            {"f\n", "98500000"}, {"l STRENGTH\n", "-42.5"}, {"p RDS_PI\n", "D3C2"},
            {"p RDS_PS_NAME\n", "MDR JUMP"}, {"p RDS_RADIOTEXT\n", "Hi"}, {"f\n", "98500000"}};
        QString told;
        for (const auto &[asked, answer] : dialogue) {
            QCOMPARE(session.next(), asked);
            told = shown(session.take(answer));
        }
        QCOMPARE(told, u"signal -42.5 dBFS; pi D3C2 1; text [Hi]"_s);
    }

    void aNameThatChangesIsNeverAMixture_data()
    {
        QTest::addColumn<QStringList>("answers"); // of each round: PI, frequency in MHz, name
        QTest::addColumn<QString>("names");
        using L = QStringList;
        const QString old = u"D3C2 98 OLD NAME"_s;
        const QString mixed = u"D3C2 98 OLD STAR"_s;
        const QString fresh = u"D3C2 98 NEW STAR"_s;
        QTest::newRow("twice") << L {old, old} << u""_s;
        QTest::newRow("three times") << L {old, old, old} << u"OLD NAME"_s;
        QTest::newRow("a change") << L {old, old, old, mixed, mixed, fresh, fresh, fresh}
                                  << u"OLD NAME, NEW STAR"_s;
        QTest::newRow("back and forth") << L {old, mixed, old, mixed, old, mixed} << u""_s;
        QTest::newRow("nothing yet") << L {u"D3C2 98 "_s, u"D3C2 98 "_s, u"D3C2 98 "_s} << u""_s;
        QTest::newRow("another station")
            << L {old, old, old, u"F201 98 OLD NAME"_s, u"F201 98 OLD NAME"_s} << u"OLD NAME"_s;
        QTest::newRow("a retune") << L {old, old, old, u"D3C2 99 OLD NAME"_s, u"D3C2 99 OLD NAME"_s,
            u"D3C2 99 OLD NAME"_s} << u"OLD NAME"_s;
    }

    void aNameThatChangesIsNeverAMixture()
    {
        QFETCH(QStringList, answers);
        RigctlSession session;
        QStringList names;
        for (const QString &answer : std::as_const(answers)) {
            for (QByteArray asked = session.next(); !asked.isEmpty(); asked = session.next()) {
                const std::vector<ReceiverEvent> events = session.take(asked == "_\n" ? "Gqrx 2.17.6"
                        : asked == "p ?\n"                                            ? "RDS_PI RDS_PS_NAME"
                        : asked == "f\n"             ? answer.sliced(5, 2).toLatin1() + "000000"
                        : asked == "p RDS_PI\n"      ? answer.first(4).toLatin1()
                        : asked == "p RDS_PS_NAME\n" ? answer.sliced(8).toLatin1()
                                                     : QByteArray("RPRT 0"));
                for (const ReceiverEvent &event : events) {
                    const auto *const name = std::get_if<PsHeard>(&event);
                    if (name != nullptr && (names.isEmpty() || names.last() != name->ps)) {
                        names += name->ps;
                    }
                }
            }
            session.begin();
        }
        QTEST(names.join(u", "_s), "names");
    }

    void theDialogueWithRigctld()
    {
        RigctlSession session;
        const QList<QPair<QByteArray, QByteArray>> dialogue {{"_\n", "RPRT -11"}, {"p ?\n", "ANN BACKLIGHT "},
            {"f\n", "98500000"}, {"l STRENGTH\n", "-29"}, {"f\n", "98500000"}};
        QString told;
        for (const auto &[asked, answer] : dialogue) {
            QCOMPARE(session.next(), asked);
            told = shown(session.take(answer));
        }
        QCOMPARE(told, u"signal -29 dB"_s);
        QVERIFY(!session.hasRds());
        session.tune(99'000'000);
        QCOMPARE(session.next(), QByteArray());
        session.begin();
        QCOMPARE(session.next(), QByteArray("F 99000000\n"));
        QCOMPARE(shown(session.take("RPRT 0")), QString());
        QCOMPARE(session.next(), QByteArray("f\n"));
        QCOMPARE(shown(session.take("99000000")), u"tuned 99000000"_s);
    }

    void linesAreCutAndEndlessOnesThrownAway()
    {
        LineSplitter splitter;
        QByteArrayList lines;
        const auto take = [&](QByteArrayView bytes) {
            splitter.feed(bytes, [&](QByteArrayView line) { lines += line.toByteArray(); });
        };
        take("one\r\ntw");
        take("o\n\n");
        for (int i = 0; i < 1000; ++i) {
            take(QByteArray(10'000, 'x'));
        }
        take("end\nthree\n");
        QCOMPARE(lines, (QByteArrayList {"one", "two", "", "three"}));
    }

    void textsOfStrangers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("clean");
        QTest::newRow("plain") << u"RADIO 21"_s << u"RADIO 21"_s;
        QTest::newRow("long") << u"RADIO 2100"_s << u"RADIO 21"_s;
        QTest::newRow("controls") << u"A\x1b[2J\x07"_s << u"A[2J"_s;
        QTest::newRow("lines and tabs") << u"A\nB\tC"_s << u"A B C"_s;
        QTest::newRow("turned writing") << u"A\u202EB\u200F"_s << u"AB"_s;
        QTest::newRow("half a character") << QString(QChar(0xD83D)) + u"A" << u"A"_s;
        QTest::newRow("beyond the first plane") << u"A😀"_s << u"A😀"_s;
        QTest::newRow("no room for both halves") << u"1234567😀"_s << u"1234567"_s;
    }

    void textsOfStrangers()
    {
        QFETCH(QString, text);
        QTEST(strangersText(text, 8), "clean");
    }

    void frequenciesAsTheLogWritesThem_data()
    {
        QTest::addColumn<qint64>("hertz");
        QTest::addColumn<QString>("text");
        QTest::newRow("one decimal") << qint64(98'500'000) << u"98.5"_s;
        QTest::newRow("two") << qint64(98'550'000) << u"98.55"_s;
        QTest::newRow("nought in between") << qint64(98'050'000) << u"98.05"_s;
        QTest::newRow("whole") << qint64(98'000'000) << u"98.0"_s;
        QTest::newRow("a little beside") << qint64(98'500'120) << u"98.5"_s;
        QTest::newRow("just below") << qint64(98'499'990) << u"98.5"_s;
        QTest::newRow("above 100") << qint64(107'900'000) << u"107.9"_s;
        QTest::newRow("unknown") << qint64(0) << u""_s;
    }

    void frequenciesAsTheLogWritesThem()
    {
        QFETCH(qint64, hertz);
        QTEST(megahertzText(hertz), "text");
    }

    void addresses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("read");
        QTest::newRow("nothing") << u""_s << u"127.0.0.1 7356"_s;
        QTest::newRow("both") << u"radio.lan:7000"_s << u"radio.lan 7000"_s;
        QTest::newRow("host") << u" radio.lan "_s << u"radio.lan 7356"_s;
        QTest::newRow("port") << u"7000"_s << u"127.0.0.1 7000"_s;
        QTest::newRow("colon and port") << u":7000"_s << u"127.0.0.1 7000"_s;
        QTest::newRow("v6") << u"[::1]:7000"_s << u"::1 7000"_s;
        QTest::newRow("v6 alone") << u"::1"_s << u"::1 7356"_s;
        QTest::newRow("port 0") << u"radio:0"_s << u"-"_s;
        QTest::newRow("port too high") << u"radio:65536"_s << u"-"_s;
        QTest::newRow("no port") << u"radio:x"_s << u"-"_s;
        QTest::newRow("blanks within") << u"ra dio:1"_s << u"-"_s;
        QTest::newRow("an open bracket") << u"[::1"_s << u"-"_s;
    }

    void addresses()
    {
        QFETCH(QString, text);
        const auto host = readHostPort(text, {u"127.0.0.1"_s, 7356});
        QTEST(host ? u"%1 %2"_s.arg(host->host).arg(host->port) : u"-"_s, "read");
    }

    void addressesOfWebReceivers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("url");
        QTest::newRow("host and port") << u"radio:8080"_s << u"ws://radio:8080/text"_s;
        QTest::newRow("page") << u"http://radio:8080/"_s << u"ws://radio:8080/text"_s;
        QTest::newRow("secure page below")
            << u"https://radio.example/there/"_s << u"wss://radio.example/there/text"_s;
        QTest::newRow("whole") << u"ws://radio:8080/text"_s << u"ws://radio:8080/text"_s;
        QTest::newRow("other scheme") << u"file:///etc/passwd"_s << u""_s;
        QTest::newRow("nothing") << u""_s << u""_s;
    }

    void addressesOfWebReceivers()
    {
        QFETCH(QString, text);
        QTEST(webserverUrl(text).value_or(QUrl()).toString(), "url");
    }

    void everyCountryCodeHasAName()
    {
        int known = 0;
        for (int ecc = 0; ecc <= 0xFF; ++ecc) {
            for (int digit = 0; digit <= 0xF; ++digit) {
                const QString itu = countryOf(quint16(digit << 12), quint8(ecc));
                QVERIFY2(itu.isEmpty() || !countryName(itu).isEmpty(), qPrintable(itu));
                known += itu.isEmpty() ? 0 : 1;
            }
        }
        QVERIFY(known > 60);
        QCOMPARE(countryOf(0xD3C2, 0xE0), u"D"_s);
        QCOMPARE(countryOf(0xE201, 0xE2), u"E"_s);
        QCOMPARE(countryOf(0xF201, 0xE1), u"F"_s);
    }
};

QTEST_GUILESS_MAIN(TestProtocols)
#include "tst_protocols.moc"
