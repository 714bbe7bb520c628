#include "core/ui/exportingwindow.h"

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestTextExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextAsksForTheRange();
    void theTextIsWrittenAndOpened();
    void aPromptThatIsLeftStopsTheText_data();
    void aPromptThatIsLeftStopsTheText();
    void anAnswerThatIsNoDateStopsTheText_data();
    void anAnswerThatIsNoDateStopsTheText();
    void theDistancesAreMeasuredForTheText();
    void withoutAHomeTheTextIsWrittenAllTheSame();
    void aRefusedTextIsTold();
};

void TestTextExport::theTextAsksForTheRange()
{
    ExportingWindow window;
    const DateTime before = localNow();
    window.answers.accept();
    window.answers.accept();
    window.trigger("menuExportEmail");
    const QList<SeenDialog> seen = window.answers.seen();
    QCOMPARE(seen.at(0).title, u"Date Range"_s);
    QCOMPARE(seen.at(0).text, u"Export from?"_s);
    QCOMPARE(seen.at(1).title, u"Date Range"_s);
    QCOMPARE(seen.at(1).text, u"Export to?"_s);
    const auto offered = [&seen](int prompt) {
        return toDateTime(seen.at(prompt).input.value_or(QString()), MonthNames(), u"The prompt"_s);
    };
    QVERIFY(offered(1) >= before && offered(1) <= localNow());
    QCOMPARE(offered(1).seconds - offered(0).seconds, secondsPerDay);
    QCOMPARE(generalText(offered(1)), *seen.at(1).input);
    // Nothing was heard within the last day.
    const MonthNames months = MonthNames::of(QLocale(u"en_GB"_s));
    QCOMPARE(window.directory.read(u"quillon.txt"_s),
        "Time  Freq   ITU PS       PI   TX           Distance\r\n"
        "----------------------------------------------------\r\n"
        "\r\n*Quillon Export:\r\n "_ba
            + formatted(offered(0), u"dd-mmm-yyyy hh:nn", months).toLatin1() + " to \r\n "_ba
            + formatted(offered(1), u"dd-mmm-yyyy hh:nn", months).toLatin1() + "\r\n 0 Entries\r\n"_ba);
}

void TestTextExport::theTextIsWrittenAndOpened()
{
    ExportingWindow window("HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\nOMID=77\r\n"
                           "FMLIST_URL=http://127.0.0.1:9/\r\n");
    window.answers.type(u"3/6/2010 08:15:00"_s);
    window.answers.type(u"05-Jul-2010 21:40:00"_s);
    const QByteArray today = formatted(localNow(), u"yyyy-mm-dd", {}).toLatin1();
    window.trigger("menuExportEmail");
    QCOMPARE(window.answers.takeTexts(), (QStringList {u"Export from?"_s, u"Export to?"_s}));
    const QByteArray written = window.directory.read(u"quillon.txt"_s);
    QCOMPARE(written,
        "http://127.0.0.1:9/fm_logmap.php?datum="_ba + today
            + "&band=ALL&hours=0&omid=77\r\n\r\n"
              "Time  Freq   ITU PS       PI   TX           Distance\r\n"
              "----------------------------------------------------\r\n"
              "\r\n05-Jul-2010 MS\r\n\r\n"
              "21:40z 89.0  D   WDR 2    D382 K\xF6ln & Bonn 501 Km\r\n"
              "\r\n05-Jul-2010 Es\r\n\r\n"
              "21:34z 87.6  E   RNE_1    E201 Bilbao 940 Km\r\n"
              "\r\n03-Jun-2010 Tropo\r\n\r\n"
              "08:15z 90.1  F   FIP      F201 Paris \r\n"
              "\r\n*Quillon Export:\r\n 03-Jun-2010 08:15 to \r\n 05-Jul-2010 21:40\r\n 3 Entries\r\n"_ba);
    QCOMPARE(window.opened.take(), QStringList {in(window, u"quillon.txt"_s)});
    QVERIFY(window.isCalm());
}

void TestTextExport::aPromptThatIsLeftStopsTheText_data()
{
    QTest::addColumn<int>("prompt");
    QTest::addColumn<bool>("empty");
    QTest::newRow("the first is cancelled") << 1 << false;
    QTest::newRow("the second is cancelled") << 2 << false;
    QTest::newRow("the first is empty") << 1 << true;
    QTest::newRow("the second is empty") << 2 << true;
}

void TestTextExport::aPromptThatIsLeftStopsTheText()
{
    QFETCH(int, prompt);
    QFETCH(bool, empty);
    ExportingWindow window("HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\n");
    if (prompt == 2) {
        window.answers.accept();
    }
    if (empty) {
        window.answers.type({});
    } else {
        window.answers.cancel();
    }
    window.trigger("menuExportEmail");
    QCOMPARE(window.answers.takeTexts().size(), prompt);
    QVERIFY(!window.directory.names().contains(u"quillon.txt"_s));
    QCOMPARE(window.opened.take(), QStringList());
    QCOMPARE(window.transmitterFile(), sites);
    QVERIFY(window.isCalm());
}

void TestTextExport::anAnswerThatIsNoDateStopsTheText_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("wrong");
    QTest::newRow("from") << u"yesterday"_s << u"05/07/2010"_s << u"yesterday"_s;
    QTest::newRow("to") << u"05/07/2010"_s << u"31/06/2010"_s << u"31/06/2010"_s;
    QTest::newRow("a time alone") << u"21:40"_s << u"05/07/2010"_s << u"21:40"_s;
}

void TestTextExport::anAnswerThatIsNoDateStopsTheText()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, wrong);
    ExportingWindow window("HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\n");
    window.answers.type(from);
    window.answers.type(to);
    window.trigger("menuExportEmail");
    const QStringList texts = window.answers.takeTexts();
    QCOMPARE(texts.size(), 3);
    QVERIFY2(texts.last().startsWith(u"Run-time error: Type mismatch\n"_s), qPrintable(texts.last()));
    QVERIFY2(texts.last().contains(wrong), qPrintable(texts.last()));
    QVERIFY(!window.directory.names().contains(u"quillon.txt"_s));
    QCOMPARE(window.transmitterFile(), sites);
    QCOMPARE(window.logbook(), entries);
    QVERIFY(window.isCalm());
}

void TestTextExport::theDistancesAreMeasuredForTheText()
{
    ExportingWindow window("HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=TRUE\r\n");
    window.answers.type(u"05/07/2010"_s);
    window.answers.type(u"06/07/2010"_s);
    window.trigger("menuExportEmail");
    // In the grid miles, in the text kilometres.
    QCOMPARE(window.grid().text(3, GridColumn::Dist), u"584.3"_s);
    const QByteArray written = window.directory.read(u"quillon.txt"_s);
    QVERIFY2(written.contains("21:34z 87.6  E   RNE_1    E201 Bilbao 940 Km\r\n"), written.constData());
    QVERIFY(window.logbook().startsWith(
        "E201|05/07/2010 21:34:10|Es|87.6|Bilbao|E|oneCRLFtwo|RNE_1|10|584.3|||\r\n"));
}

void TestTextExport::withoutAHomeTheTextIsWrittenAllTheSame()
{
    ExportingWindow window;
    window.answers.type(u"05/07/2010"_s);
    window.answers.type(u"06/07/2010"_s);
    window.trigger("menuExportEmail");
    QCOMPARE(window.answers.takeTexts(),
        (QStringList {
            u"Export from?"_s, u"Export to?"_s, u"Home Location not set, go to setup to configure"_s}));
    // Without a home the unit is still miles, the default.
    QCOMPARE(window.directory.read(u"quillon.txt"_s),
        "Time  Freq   ITU PS       PI   TX           Distance\r\n"
        "----------------------------------------------------\r\n"
        "\r\n05-Jul-2010 MS\r\n\r\n"
        "21:40z 89.0  D   WDR 2    D382 K\xF6ln & Bonn 80 Km\r\n"
        "\r\n05-Jul-2010 Es\r\n\r\n"
        "21:34z 87.6  E   RNE_1    E201 Bilbao 1307 Km\r\n"
        "\r\n*Quillon Export:\r\n 05-Jul-2010 00:00 to \r\n 06-Jul-2010 00:00\r\n 2 Entries\r\n"_ba);
    QCOMPARE(window.opened.take().size(), 1);
    QCOMPARE(window.transmitterFile(), sites);
}

void TestTextExport::aRefusedTextIsTold()
{
    ExportingWindow window;
    window.directory.write(u"quillon.txt"_s, "old");
    window.answers.type(u"05/07/2010"_s);
    window.answers.type(u"06/07/2010"_s);
    window.calls.failWrite = ENOSPC;
    window.trigger("menuExportEmail");
    const QStringList texts = window.answers.takeTexts();
    QVERIFY2(texts.last().startsWith(u"Run-time error: Disk full\n"_s), qPrintable(texts.last()));
    QVERIFY2(texts.last().contains(in(window, u"quillon.txt"_s)), qPrintable(texts.last()));
    QCOMPARE(window.opened.take(), QStringList());
    QCOMPARE(window.directory.read(u"quillon.txt"_s), "old"_ba);
    QVERIFY(window.isCalm());
}

QTEST_MAIN(TestTextExport)
#include "tst_textexport.moc"
