#include "support/mainwindow.h"
#include "support/numericlocale.h"

#include <QGuiApplication>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// Madrid is heard under its country and under another one.
const QByteArray threeEntries = "E111|12/06/2010 18:00:00|Es|87.6|Madrid|E||RNE_1|10|7|fml=none#|1|\r\n"
                                "D222|11/06/2010 18:00:00|Es|88.2|Munich|D||B5|10|8|||\r\n"
                                "F333|10/06/2010 18:00:00|Es|90.1|Madrid|F||FIP|10|9|||\r\n"_ba;
const QByteArray sites = "Munich|D|48.3|11.5||\r\n"
                         "Madrid|E|40.4|-3.7|1|\r\n"
                         "Home|G|51.5|-0.1|2|\r\n"
                         "Nowhere|X|40.4||3|\r\n"
                         "Half|X|40.4|east|4|\r\n"
                         "Comma|E|40,4|-3,7|5|\r\n"_ba;

const QByteArray sitesInKilometres = "Munich|D|48.3|11.5|905.2|\r\n"
                                     "Madrid|E|40.4|-3.7|1264.5|\r\n"
                                     "Home|G|51.5|-0.1|0|\r\n"
                                     "Nowhere|X|40.4||1235.7|\r\n"
                                     "Half|X|40.4|east|1235.7|\r\n"
                                     "Comma|E|40,4|-3,7|1264.5|\r\n"_ba;
const QByteArray sitesInMiles = "Munich|D|48.3|11.5|562.5|\r\n"
                                "Madrid|E|40.4|-3.7|785.8|\r\n"
                                "Home|G|51.5|-0.1|0|\r\n"
                                "Nowhere|X|40.4||767.8|\r\n"
                                "Half|X|40.4|east|767.8|\r\n"
                                "Comma|E|40,4|-3,7|785.8|\r\n"_ba;

QByteArray log(const QByteArray &madrid, const QByteArray &munich)
{
    return "E111|12/06/2010 18:00:00|Es|87.6|Madrid|E||RNE_1|10|"_ba + madrid
        + "|fml=none#|1|\r\nD222|11/06/2010 18:00:00|Es|88.2|Munich|D||B5|10|"_ba + munich
        + "|||\r\nF333|10/06/2010 18:00:00|Es|90.1|Madrid|F||FIP|10|9|||\r\n"_ba;
}

void startAt(
    MainWindow &window, const QByteArray &latitude, const QByteArray &longitude, const QByteArray &unit)
{
    window.directory.write(u"LOGBOOK.INI"_s,
        "HOME_DEC_LAT=" + latitude + "\r\nHOME_DEC_LON=" + longitude + "\r\nAS_MILES=" + unit + "\r\n");
    window.start(threeEntries, sites);
}

QStringList distances(MainWindow &window)
{
    QStringList all;
    for (int row = 1; row < window.grid().rows(); ++row) {
        all += window.grid().text(row, GridColumn::Dist);
    }
    return all;
}

} // namespace

class TestDistances : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bothFilesAndTheGridAreMeasuredAnew_data();
    void bothFilesAndTheGridAreMeasuredAnew();
    void aHomeThatIsNotSetChangesNothing_data();
    void aHomeThatIsNotSetChangesNothing();
    void anythingElseThanZeroIsMeasured();
    void aDeletedEntryStaysOutOfTheFile();
    void aFailingListLeavesFilesGridAndLogAlone();
    void aFailingLogbookIsToldAndThePointerIsBack();
    void theListIsWrittenBeforeTheLogbook();
    void theEntryInTheFormStaysThere();
};

void TestDistances::bothFilesAndTheGridAreMeasuredAnew_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QByteArray>("latitude");
    QTest::addColumn<QByteArray>("longitude");
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<bool>("miles");
    for (const QByteArray &locale : {"en_GB.UTF-8"_ba, "de_DE.UTF-8"_ba}) {
        QTest::addRow("%s, km", locale.constData()) << locale << "51.5"_ba
                                                    << "-0.1"_ba
                                                    << "FALSE"_ba << false;
        QTest::addRow("%s, miles", locale.constData()) << locale << "51.5"_ba
                                                       << "-0.1"_ba
                                                       << "TRUE"_ba << true;
        QTest::addRow("%s, km for any other text", locale.constData()) << locale << "51.5"_ba
                                                                       << "-0.1"_ba
                                                                       << "true"_ba << false;
        // A comma in a setting is kept as "|".
        QTest::addRow("%s, a home typed with commas", locale.constData()) << locale << "51|5"_ba
                                                                          << "-0|1"_ba
                                                                          << "FALSE"_ba << false;
    }
}

void TestDistances::bothFilesAndTheGridAreMeasuredAnew()
{
    QFETCH(QByteArray, locale);
    QFETCH(QByteArray, latitude);
    QFETCH(QByteArray, longitude);
    QFETCH(QByteArray, unit);
    QFETCH(bool, miles);
    const NumericLocale numbers(locale);
    MainWindow window;
    startAt(window, latitude, longitude, unit);
    window.click("Command10");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.transmitterFile(), miles ? sitesInMiles : sitesInKilometres);
    QCOMPARE(window.logbook(), miles ? log("785.8", "562.5") : log("1264.5", "905.2"));
    const QStringList inKilometres {u"9"_s, u"905.2"_s, u"1264.5"_s};
    const QStringList inMiles {u"9"_s, u"562.5"_s, u"785.8"_s};
    QCOMPARE(distances(window), miles ? inMiles : inKilometres);
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(window.copies(), QStringList());
}

void TestDistances::aHomeThatIsNotSetChangesNothing_data()
{
    QTest::addColumn<QByteArray>("latitude");
    QTest::addColumn<QByteArray>("longitude");
    QTest::newRow("both") << "0"_ba
                          << "0"_ba;
    QTest::newRow("latitude") << "0"_ba
                              << "-0.1"_ba;
    QTest::newRow("longitude") << "51.5"_ba
                               << "0"_ba;
}

void TestDistances::aHomeThatIsNotSetChangesNothing()
{
    QFETCH(QByteArray, latitude);
    QFETCH(QByteArray, longitude);
    MainWindow window;
    startAt(window, latitude, longitude, "FALSE");
    window.click("Command10");
    QCOMPARE(window.answers.seen().size(), 1);
    QCOMPARE(window.answers.seen().first().title, u"Quillon"_s);
    QCOMPARE(window.answers.takeTexts(), QStringList {u"Home Location not set, go to setup to configure"_s});
    QCOMPARE(window.transmitterFile(), sites);
    QCOMPARE(window.logbook(), threeEntries);
    QCOMPARE(distances(window), (QStringList {u"9"_s, u"8"_s, u"7"_s}));
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestDistances::anythingElseThanZeroIsMeasured()
{
    MainWindow window;
    startAt(window, "0.0", "", "FALSE");
    window.click("Command10");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    // An empty longitude counts as -1 degree: from (0, -1) to Half, whose longitude is no number either.
    QVERIFY(window.transmitterFile().contains("Half|X|40.4|east|4467.7|\r\n"));
}

void TestDistances::aDeletedEntryStaysOutOfTheFile()
{
    MainWindow window;
    startAt(window, "51.5", "-0.1", "FALSE");
    window.clickRow(2);
    window.click("Command15");
    window.click("Command10");
    QCOMPARE(distances(window), (QStringList {u"9"_s, u"905.2"_s, u"1264.5"_s}));
    QCOMPARE(window.piCodes(), (QStringList {u"F333"_s, u"delete"_s, u"E111"_s}));
    QCOMPARE(window.logbook(),
        "E111|12/06/2010 18:00:00|Es|87.6|Madrid|E||RNE_1|10|1264.5|fml=none#|1|\r\n"
        "F333|10/06/2010 18:00:00|Es|90.1|Madrid|F||FIP|10|9|||\r\n"_ba);
}

void TestDistances::aFailingListLeavesFilesGridAndLogAlone()
{
    MainWindow window;
    startAt(window, "51.5", "-0.1", "FALSE");
    window.calls.failOpen = EACCES;
    window.click("Command10");
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(u"Run-time error: Permission denied\n"_s), qPrintable(texts.first()));
    QVERIFY2(texts.first().contains(window.directory.file(u"tx.lst"_s)), qPrintable(texts.first()));
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(window.transmitterFile(), sites);
    QCOMPARE(window.logbook(), threeEntries);
    QCOMPARE(distances(window), (QStringList {u"9"_s, u"8"_s, u"7"_s}));
    QCOMPARE(window.form().log().entry(0).dist, u"7"_s);

    window.calls.failOpen = 0;
    window.click("Command10");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.transmitterFile(), sitesInKilometres);
    QCOMPARE(window.logbook(), log("1264.5", "905.2"));
}

void TestDistances::aFailingLogbookIsToldAndThePointerIsBack()
{
    MainWindow window;
    startAt(window, "51.5", "-0.1", "FALSE");
    window.form().config().changeConfig(u"LOGBOOK_FILENAME="_s, u"missing/log.txt"_s);
    window.click("Command10");
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(u"Run-time error: Path not found\n"_s), qPrintable(texts.first()));
    QVERIFY2(texts.first().contains(window.directory.file(u"missing/log.txt"_s)), qPrintable(texts.first()));
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(window.enabled("Command10"));
    QCOMPARE(window.transmitterFile(), sitesInKilometres);
    QCOMPARE(window.logbook(), threeEntries);
    QCOMPARE(distances(window), (QStringList {u"9"_s, u"905.2"_s, u"1264.5"_s}));
}

void TestDistances::theListIsWrittenBeforeTheLogbook()
{
    MainWindow window;
    startAt(window, "51.5", "-0.1", "FALSE");
    window.calls.failSync = ENOSPC;
    window.click("Command10");
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(u"Run-time error: Disk full\n"_s), qPrintable(texts.first()));
    QVERIFY2(texts.first().contains(u"tx.lst"_s), qPrintable(texts.first()));
    QCOMPARE(window.directory.names(), (QStringList {u"LOGBOOK.INI"_s, u"RDSLog.log"_s, u"tx.lst"_s}));
    QCOMPARE(window.transmitterFile(), sites);
}

void TestDistances::theEntryInTheFormStaysThere()
{
    MainWindow window;
    startAt(window, "51.5", "-0.1", "FALSE");
    window.clickRow(3);
    const QStringList before = window.fields();
    window.click("Command10");
    QCOMPARE(window.fields(), before);
    QCOMPARE(window.form().selected(), 0);
    window.type("Text6", u"20"_s);
    window.click("Command3");
    QCOMPARE(window.row(3), u"12/06/2010 18:00:00|E111|87.6|RNE_1|E|Madrid|1264.5|20||Es|None|1"_s);
    QVERIFY(window.logbook().startsWith(
        "E111|12/06/2010 18:00:00|Es|87.6|Madrid|E||RNE_1|20|1264.5|fml=none#|1|\r\n"));
}

QTEST_MAIN(TestDistances)
#include "tst_distances.moc"
