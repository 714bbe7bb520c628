#include "core/config.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"
#include "support/faultycalls.h"
#include "support/testfiles.h"

#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

Settings settingsOf(const QString &text)
{
    Settings settings;
    setDefaults(settings);
    readSettings(text, settings);
    return settings;
}

// A configuration over a directory whose LOGBOOK.INI holds these bytes.
class Fixture
{
public:
    explicit Fixture(const QByteArray &ini, const QString &name = u"LOGBOOK.INI"_s)
        : m_name(name)
    {
        home.write(name, ini);
        config.readConfig();
    }

    [[nodiscard]] QByteArray ini() const { return home.read(m_name); }

    TestDirectory home;
    Config config {home.path()};

private:
    QString m_name;
};

} // namespace

class TestConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDefaults()
    {
        const Settings settings = settingsOf({});
        QCOMPARE(settings.callsign, u"NOCALL"_s);
        QCOMPARE(settings.scratchPad, QString());
        QCOMPARE(settings.homeLatitude, u"0"_s);
        QCOMPARE(settings.homeLongitude, u"0"_s);
        QCOMPARE(settings.rdsdxDirectory, u"C:\\RDSDX\\Loggings"_s);
        QCOMPARE(settings.rdsSpyDirectory, u"C:\\RDSSpy"_s);
        QCOMPARE(settings.omid, QString());
        QCOMPARE(settings.email, QString());
        QCOMPARE(settings.logbookFileName, u"RDSLog.log"_s);
        QCOMPARE(settings.asMiles, u"TRUE"_s);
        QVERIFY(settings.inMiles());
        QCOMPARE(settings.timeOffset, u"0"_s);
        QCOMPARE(settings.mapDirectory, u"C:\\Program Files\\Peak Systems\\UI-View32\\MAPS"_s);
        QCOMPARE(settings.lastRouteMap, u"<NONE>"_s);
        QVERIFY(!settings.titleCallsign);
        QCOMPARE(settings.fmlistUrl, u"https://www.fmlist.org"_s);
        QCOMPARE(settings.searchUrl, u"https://www.google.com/search?q="_s);
        QCOMPARE(settings.callsignUrl, u"https://www.qrz.com/detail/$CALLSIGN"_s);
        QCOMPARE(settings.helpUrl, QString());
        QCOMPARE(settings.propagationUrl, u"https://www.swpc.noaa.gov"_s);
    }

    void everyKeyIsRead_data()
    {
        QTest::addColumn<QString>("key");
        const auto row = [](const char *key) { QTest::newRow(key) << QString::fromLatin1(key); };
        for (const char *key :
            {"LOG_BOOK_CALLSIGN=", "SCRATCH_PAD=", "HOME_DEC_LAT=", "HOME_DEC_LON=", "RDSDX_LOG=",
                "RDSSPY_LOGS=", "OMID=", "EMAIL=", "LOGBOOK_FILENAME=", "AS_MILES=", "TIME_OFFSET="}) {
            row(key);
        }
    }

    void everyKeyIsRead()
    {
        QFETCH(QString, key);
        const Settings read = settingsOf(key + u"a b=c "_s);
        const QStringList values {read.callsign, read.scratchPad, read.homeLatitude, read.homeLongitude,
            read.rdsdxDirectory, read.rdsSpyDirectory, read.omid, read.email, read.logbookFileName,
            read.asMiles, read.timeOffset};
        const QStringList keys {u"LOG_BOOK_CALLSIGN="_s, u"SCRATCH_PAD="_s, u"HOME_DEC_LAT="_s,
            u"HOME_DEC_LON="_s, u"RDSDX_LOG="_s, u"RDSSPY_LOGS="_s, u"OMID="_s, u"EMAIL="_s,
            u"LOGBOOK_FILENAME="_s, u"AS_MILES="_s, u"TIME_OFFSET="_s};
        QCOMPARE(values.count(u"a b=c "_s), 1);
        QCOMPARE(values.indexOf(u"a b=c "_s), keys.indexOf(key));
    }

    void aKeyInsideALineCountsAndTheValueIsTheTail()
    {
        QCOMPARE(settingsOf(u"XHOME_DEC_LAT=12"_s).homeLatitude, u"=12"_s);
        QCOMPARE(settingsOf(u"HOME_DEC_LAT=12HOME_DEC_LAT="_s).homeLatitude, u"12HOME_DEC_LAT="_s);
        QCOMPARE(settingsOf(u"52HOME_DEC_LAT="_s).homeLatitude, u"T="_s);
    }

    void aKeyWithoutItsEqualSignOrInAnotherCaseIsNone()
    {
        const Settings settings = settingsOf(u"HOME_DEC_LAT 5\r\nhome_dec_lon=6\r\nAS_MILES =FALSE"_s);
        QCOMPARE(settings.homeLatitude, u"0"_s);
        QCOMPARE(settings.homeLongitude, u"0"_s);
        QCOMPARE(settings.asMiles, u"TRUE"_s);
    }

    void aLineMayHoldSeveralKeys()
    {
        const Settings settings = settingsOf(u"EMAIL=a OMID=1"_s);
        QCOMPARE(settings.email, u"a OMID=1"_s);
        QCOMPARE(settings.omid, u"=a OMID=1"_s);
    }

    void aValueMayBeEmpty()
    {
        const Settings settings = settingsOf(u"HOME_DEC_LAT=\r\nLOGBOOK_FILENAME=\r\n"_s);
        QCOMPARE(settings.homeLatitude, u""_s);
        QCOMPARE(settings.logbookFileName, u""_s);
    }

    void theLastOfSeveralLinesCounts() { QCOMPARE(settingsOf(u"OMID=1\r\nOMID=2\r\n"_s).omid, u"2"_s); }

    void aBarIsReadAsAComma() { QCOMPARE(settingsOf(u"LOG_BOOK_CALLSIGN=A|B||C"_s).callsign, u"A,B,,C"_s); }

    void lineBreaksComeBackInTheScratchPadOnly()
    {
        const Settings settings = settingsOf(u"SCRATCH_PAD=aCRLFbCRLF\r\nEMAIL=aCRLFb"_s);
        QCOMPARE(settings.scratchPad, u"a\r\nb\r\n"_s);
        QCOMPARE(settings.email, u"aCRLFb"_s);
    }

    void theTitleFollowsTheCallsignOfTheFile()
    {
        QVERIFY(!settingsOf(u"OMID=1"_s).titleCallsign);
        QCOMPARE(settingsOf(u"LOG_BOOK_CALLSIGN=DL1ABC"_s).titleCallsign, std::optional(u"DL1ABC"_s));
    }

    void milesAreExactlyTRUE_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("miles");
        QTest::newRow("TRUE") << u"TRUE"_s << true;
        QTest::newRow("FALSE") << u"FALSE"_s << false;
        QTest::newRow("small letters") << u"true"_s << false;
        QTest::newRow("blank behind") << u"TRUE "_s << false;
        QTest::newRow("empty") << u""_s << false;
    }

    void milesAreExactlyTRUE()
    {
        QFETCH(QString, value);
        QFETCH(bool, miles);
        QCOMPARE(settingsOf(u"AS_MILES="_s + value).inMiles(), miles);
    }

    void webAddressesAreReadAtTheStartOfALineOnly()
    {
        const Settings settings =
            settingsOf(u"FMLIST_URL=http://127.0.0.1:8080/\r\nSEARCH_URL=http://127.0.0.1/?a=1|2&q=\r\n"
                       "CALLSIGN_URL=http://127.0.0.1/$CALLSIGN\r\nHELP_URL=http://127.0.0.1/help\r\n"
                       "XPROPAGATION_URL=http://127.0.0.1/\r\n"_s);
        QCOMPARE(settings.fmlistUrl, u"http://127.0.0.1:8080"_s);
        QCOMPARE(settings.searchUrl, u"http://127.0.0.1/?a=1,2&q="_s);
        QCOMPARE(settings.callsignUrl, u"http://127.0.0.1/$CALLSIGN"_s);
        QCOMPARE(settings.helpUrl, u"http://127.0.0.1/help"_s);
        QCOMPARE(settings.propagationUrl, u"https://www.swpc.noaa.gov"_s);
        QCOMPARE(settings.callsign, u"NOCALL"_s);
    }

    void readingAgainKeepsOmidEmailAndScratchPadAndResetsTheRest()
    {
        Fixture f(
            "OMID=7\r\nEMAIL=a@b\r\nSCRATCH_PAD=x\r\nHOME_DEC_LAT=5\r\nLOG_BOOK_CALLSIGN=ME\r\n"
            "AS_MILES=FALSE\r\nLOGBOOK_FILENAME=o.log\r\nTIME_OFFSET=2\r\nFMLIST_URL=http://127.0.0.1\r\n");
        f.config.setLAST_ROUTE_MAP(u"map"_s);
        QCOMPARE(f.config.settings().lastRouteMap, u"map"_s);
        f.home.write(u"LOGBOOK.INI"_s, "\r\n");
        f.config.readConfig();
        const Settings &settings = f.config.settings();
        QCOMPARE(settings.omid, u"7"_s);
        QCOMPARE(settings.email, u"a@b"_s);
        QCOMPARE(settings.scratchPad, u"x"_s);
        QCOMPARE(settings.homeLatitude, u"0"_s);
        QCOMPARE(settings.callsign, u"NOCALL"_s);
        QVERIFY(!settings.titleCallsign);
        QCOMPARE(settings.asMiles, u"TRUE"_s);
        QCOMPARE(settings.logbookFileName, u"RDSLog.log"_s);
        QCOMPARE(settings.timeOffset, u"0"_s);
        QCOMPARE(settings.lastRouteMap, u"<NONE>"_s);
        QCOMPARE(settings.fmlistUrl, u"https://www.fmlist.org"_s);
    }

    void theMapDirectoryStaysAndNoKeyIsWritten()
    {
        Fixture f("OMID=7\r\n");
        f.config.setMAP_DIR(u"/maps"_s);
        f.config.setLAST_ROUTE_MAP(u"map"_s);
        QCOMPARE(f.config.settings().mapDirectory, u"C:\\Program Files\\Peak Systems\\UI-View32\\MAPS"_s);
        QCOMPARE(f.ini(), "OMID=7\r\n"_ba);
    }

    void theDefaultFileHoldsOneLine()
    {
        const TestDirectory home;
        Config config(home.path());
        QVERIFY(!config.exists());
        config.createDefaultConfig();
        QCOMPARE(home.names(), QStringList(u"LOGBOOK.INI"_s));
        QCOMPARE(home.read(u"LOGBOOK.INI"_s), "LOG_BOOK_CALLSIGN=NOCALL\r\n"_ba);
        QVERIFY(config.exists());
    }

    void theFileIsFoundAndKeptInItsCase_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"LOGBOOK.INI", "logbook.ini", "Logbook.Ini", "lOGBOOK.iNI"}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }

    void theFileIsFoundAndKeptInItsCase()
    {
        QFETCH(QString, name);
        Fixture f("OMID=1\r\n", name);
        QVERIFY(f.config.exists());
        QCOMPARE(f.config.settings().omid, u"1"_s);
        f.config.changeConfig(u"OMID="_s, u"2"_s);
        QCOMPARE(f.home.names(), QStringList(name));
        QCOMPARE(f.ini(), "OMID=2\r\n"_ba);
        f.config.createDefaultConfig();
        QCOMPARE(f.home.names(), QStringList(name));
        QCOMPARE(f.ini(), "LOG_BOOK_CALLSIGN=NOCALL\r\n"_ba);
    }

    void ofSeveralCasesTheUpperOneIsTaken()
    {
        Fixture f("OMID=upper\r\n");
        f.home.write(u"logbook.ini"_s, "OMID=lower\r\n");
        f.config.readConfig();
        QCOMPARE(f.config.settings().omid, u"upper"_s);
        f.config.changeConfig(u"OMID="_s, u"x"_s);
        QCOMPARE(f.home.read(u"logbook.ini"_s), "OMID=lower\r\n"_ba);
    }

    void changingWrites_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("upCase");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char *name, const QByteArray &before, const QString &key,
                             const QString &value, const QByteArray &after, bool upCase = false) {
            QTest::newRow(name) << before << key << value << upCase << after;
        };
        row("a key in its place", "A=1\r\nOMID=1\r\nB=2\r\n", u"OMID="_s, u"9"_s, "A=1\r\nOMID=9\r\nB=2\r\n");
        row("a new key at the end", "A=1\r\n", u"OMID="_s, u"9"_s, "A=1\r\nOMID=9\r\n");
        row("a new key in an empty file", "", u"OMID="_s, u"9"_s, "OMID=9\r\n");
        row("an empty value", "OMID=1\r\n", u"OMID="_s, u""_s, "OMID=\r\n");
        row("upper case", "", u"AS_MILES="_s, u"false"_s, "AS_MILES=FALSE\r\n", true);
        row("the case of the key stays", "", u"Key="_s, u"value"_s, "Key=VALUE\r\n", true);
        row("a comma becomes a bar", "", u"OMID="_s, u"a,b,,c"_s, "OMID=a|b||c\r\n");
        row("a bar stays a bar", "OMID=x|y\r\n", u"EMAIL="_s, u"e"_s, "OMID=x|y\r\nEMAIL=e\r\n");
        row("duplicates get the same value", "OMID=1\r\nA=1\r\nOMID=2\r\n", u"OMID="_s, u"9"_s,
            "OMID=9\r\nA=1\r\nOMID=9\r\n");
        row("a key inside an item", "XOMID=1\r\n", u"OMID="_s, u"9"_s, "OMID=9\r\n");
        row("several keys in one item", "EMAIL=a OMID=1\r\n", u"OMID="_s, u"9"_s, "OMID=9\r\n");
        row("unknown lines stay", "; note\r\n[x]\r\nFOO=bar|baz\r\n", u"OMID="_s, u"9"_s,
            "; note\r\n[x]\r\nFOO=bar|baz\r\nOMID=9\r\n");
        row("a comma ends an item", "A=1,B=2\r\n", u"OMID="_s, u"9"_s, "A=1\r\nB=2\r\nOMID=9\r\n");
        row("a comma at the end", "A=1,\r\n", u"OMID="_s, u"9"_s, "A=1\r\n\r\nOMID=9\r\n");
        row("blanks before an item go, behind it stay", "  A=1 ,  B=2\r\n", u"OMID="_s, u"9"_s,
            "A=1 \r\nB=2\r\nOMID=9\r\n");
        row("a quoted item loses its quotes", "\"A=1\"\r\n", u"OMID="_s, u"9"_s, "A=1\r\nOMID=9\r\n");
        row("a quoted item keeps its comma", "\"A=1,2\", \"B= 3\"\r\n", u"OMID="_s, u"9"_s,
            "A=1,2\r\nB= 3\r\nOMID=9\r\n");
        row("a quote inside an item stays", "A=\"1\"\r\n", u"OMID="_s, u"9"_s, "A=\"1\"\r\nOMID=9\r\n");
        row("an unended quote stays", "\"A=1\r\n", u"OMID="_s, u"9"_s, "\"A=1\r\nOMID=9\r\n");
        row("an empty line stays", "A=1\r\n\r\nB=2\r\n", u"OMID="_s, u"9"_s, "A=1\r\n\r\nB=2\r\nOMID=9\r\n");
        row("a blank line becomes an empty one", "A=1\r\n   \r\nB=2\r\n", u"OMID="_s, u"9"_s,
            "A=1\r\n\r\nB=2\r\nOMID=9\r\n");
        row("lines that end in LF", "A=1\nOMID=1\nB=2", u"OMID="_s, u"9"_s, "A=1\r\nOMID=9\r\nB=2\r\n");
        row("the code page", "A=K\xD6LN\r\n", u"OMID="_s, u"Ö3 ł"_s,
            "A=K\xD6LN\r\nOMID=\xD6"
            "3 l\r\n");
    }

    void changingWrites()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(bool, upCase);
        QFETCH(QByteArray, after);
        Fixture f(before);
        f.config.changeConfig(key, value, upCase);
        QCOMPARE(f.ini(), after);
        QCOMPARE(f.home.names(), QStringList(u"LOGBOOK.INI"_s));
        if (!after.contains(',')) {
            // What was written is read, and written again, unchanged.
            f.config.changeConfig(key, value, upCase);
            QCOMPARE(f.ini(), after);
        }
    }

    void aChangeTakesEffectAtOnceAndAllElseIsReadAgain()
    {
        Fixture f("OMID=1\r\n");
        f.home.write(u"LOGBOOK.INI"_s, "OMID=1\r\nEMAIL=new\r\n");
        f.config.changeConfig(u"HOME_DEC_LAT="_s, u"52,5"_s);
        QCOMPARE(f.config.settings().homeLatitude, u"52,5"_s);
        QCOMPARE(f.config.settings().email, u"new"_s);
        QCOMPARE(f.ini(), "OMID=1\r\nEMAIL=new\r\nHOME_DEC_LAT=52|5\r\n"_ba);
    }

    void aCommaSurvivesTheRoundTripAndABarBecomesOne()
    {
        Fixture f("");
        f.config.changeConfig(u"EMAIL="_s, u"a,b"_s);
        QCOMPARE(f.config.settings().email, u"a,b"_s);
        f.config.changeConfig(u"EMAIL="_s, u"a|b"_s);
        QCOMPARE(f.config.settings().email, u"a,b"_s);
    }

    void theTemporaryCopyIsGone_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("small") << u"logbook.tmp"_s;
        QTest::newRow("capitals") << u"LOGBOOK.TMP"_s;
    }

    void theTemporaryCopyIsGone()
    {
        QFETCH(QString, name);
        Fixture f("OMID=1\r\n");
        f.home.write(name, "OMID=0\r\n");
        f.config.changeConfig(u"OMID="_s, u"2"_s);
        QCOMPARE(f.home.names(), QStringList(u"LOGBOOK.INI"_s));
        QCOMPARE(f.ini(), "OMID=2\r\n"_ba);
    }

    void aMissingFileIsTold()
    {
        const TestDirectory home;
        Config config(home.path());
        for (int i = 0; i < 2; ++i) {
            try {
                i == 0 ? config.readConfig() : config.changeConfig(u"OMID="_s, u"1"_s);
                QFAIL("nothing was thrown");
            } catch (const RuntimeError &error) {
                QCOMPARE(error.name(), ErrorName::FileNotFound);
                QVERIFY(error.doing().contains(home.file(u"LOGBOOK.INI"_s)));
            }
        }
        QCOMPARE(home.names(), QStringList());
    }

    void aFailedChangeLeavesFileAndSettings()
    {
        bool succeeded = false;
        for (int failing = 1; !succeeded; ++failing) {
            QVERIFY(failing < 100);
            const TestDirectory home;
            home.write(u"LOGBOOK.INI"_s, "OMID=1\r\nX=y\r\n");
            FaultyCalls calls(failing, ENOSPC);
            Config config(home.path(), CodePage(), calls);
            config.readConfig();
            try {
                config.changeConfig(u"OMID="_s, u"2"_s);
                succeeded = true;
            } catch (const RuntimeError &error) {
                QCOMPARE(error.name(), ErrorName::DiskFull);
                // Only the sync of the directory fails after the change stands.
                QCOMPARE(config.settings().omid, calls.renamed() ? u"2"_s : u"1"_s);
            }
            QCOMPARE(home.names(), QStringList(u"LOGBOOK.INI"_s));
            QCOMPARE(home.read(u"LOGBOOK.INI"_s),
                calls.renamed() ? "OMID=2\r\nX=y\r\n"_ba : "OMID=1\r\nX=y\r\n"_ba);
        }
    }

    void whatAKilledWritingLeftIsRemoved()
    {
        Fixture f("OMID=1\r\n");
        f.home.write(u".LOGBOOK.INI.new"_s, "OMID=");
        f.config.readConfig();
        QCOMPARE(f.home.names(), QStringList(u"LOGBOOK.INI"_s));
        QCOMPARE(f.config.settings().omid, u"1"_s);
    }

    void filesOfTheProgramAreFoundInAnyCase()
    {
        Fixture f("");
        f.home.write(u"TX.lst"_s, "");
        QCOMPARE(f.config.path(u"tx.lst"_s), f.home.file(u"TX.lst"_s));
        QCOMPARE(f.config.path(u"new.txt"_s), f.home.file(u"new.txt"_s));
        QCOMPARE(f.config.applicationDir(), f.home.path());
    }

    void theDemosScratchPadSurvivesAChangeOfTheSetup()
    {
        Fixture fixture(readFile(QStringLiteral(QUILLON_TEST_DATA "/../../data/demo/LOGBOOK.INI")));
        const QString note = fixture.config.settings().scratchPad;
        QVERIFY2(note.startsWith(u"Antenna: 7 elements, rotor to 180 degrees, 12 m above ground"_s),
            qPrintable(note));
        QVERIFY(note.endsWith(u"14 July (RDSDX)"_s));
        fixture.config.changeConfig(u"OMID="_s, u"77"_s);
        QCOMPARE(fixture.config.settings().scratchPad, note);
        QCOMPARE(fixture.config.settings().callsign, u"DEMO"_s);
    }
};

QTEST_GUILESS_MAIN(TestConfig)
#include "tst_config.moc"
