#include "support/mainwindow.h"
#include "support/opened.h"
#include "ui/frmsplash.h"

#include <QDir>
#include <QGuiApplication>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// The newest month begins at row 2, so that it is closed by row 1.
const QByteArray entries = "E201|05/07/2010 21:34:10|Es|87.6|Bilbao|E|oneCRLFtwo|RNE_1|10|812.4|||\r\n"
                           "D382|05/07/2010 21:40:00|MS|89|K\xF6ln & Bonn|D||WDR 2|100|50|||\r\n"
                           "F201|03/06/2010 08:15:00|Tropo|90.1|Paris|F||FIP|10||||\r\n"
                           "F202|02/06/2010 08:15:00||100.25|||||||||\r\n"_ba;
const QByteArray sites = "Bilbao|E|43.263|-2.935|1|\r\nK\xF6ln & Bonn|D|50.9|7.0|2|\r\n"
                         "Madrid|E|40.4|-3.7|3|\r\n"_ba;

const QByteArray kmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
                           "<kml xmlns=\"http://earth.google.com/kml/2.1\">\r\n<Folder>\r\n<name>";
const QByteArray redStyle = "<Style><IconStyle><color>ff0000ff</color></IconStyle></Style>\r\n";
const QByteArray orangeStyle = "<Style><IconStyle><color>ff00aaff</color></IconStyle></Style>\r\n";

QByteArray point(const QByteArray &position)
{
    return "<Point><extrude>1</extrude><altitudeMode>relativeToGround</altitudeMode>\r\n<coordinates>"_ba
        + position + ",200</coordinates>\r\n</Point></Placemark>\r\n"_ba;
}

QByteArray heard(const QByteArray &items)
{
    return "<description><![CDATA[ <ol>\r\n"_ba + items + "</ol>]]> </description>\r\n"_ba;
}

class ExportingWindow : public MainWindow
{
public:
    Opened opened;

    explicit ExportingWindow(const QByteArray &settings = {})
    {
        directory.write(u"LOGBOOK.INI"_s, "LOG_BOOK_CALLSIGN=DL1ABC\r\n" + settings);
        start(entries, sites);
    }
    void writeTemplates()
    {
        directory.write(u"quillon_index.template"_s,
            "<h1>$CALLSIGN $TOTAL $VERSION</h1>\r\n<table>\r\n$RAWDATA\r\n</table>\r\n");
        directory.write(u"quillon_log.template"_s, "<h1>$MONTHYEAR</h1>\n$RAWDATA\n");
        directory.write(u"quillon_mapview.htm"_s, "<title>Map</title>\n");
    }
    // The grid is there and the pointer is the usual one.
    [[nodiscard]] bool isCalm() { return grid().isVisible() && !QGuiApplication::overrideCursor(); }
    // The one message of a command that failed; nothing was opened.
    QString failure()
    {
        const QStringList texts = answers.takeTexts();
        return texts.size() == 1 && opened.take().isEmpty() ? texts.first() : texts.join(u"\n---\n"_s);
    }
};

QString in(ExportingWindow &window, const QString &name)
{
    return window.directory.file(name);
}

} // namespace

class TestExports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTransmittersAreWrittenAndOpened();
    void theLogbookIsWrittenAndOpened();
    void aRefusedKmlIsToldAndNotOpened_data();
    void aRefusedKmlIsToldAndNotOpened();
    void theWebPagesAreWrittenAndTheIndexOpened();
    void aMissingWebFileIsToldWithItsPath_data();
    void aMissingWebFileIsToldWithItsPath();
    void aRefusedWebPageIsTold();
    void theGridKeepsTheFocus();
    void anEmptyLogGivesAnIndexWithoutRows();
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

void TestExports::theTransmittersAreWrittenAndOpened()
{
    ExportingWindow window;
    window.trigger("menuExportGoogleTX");
    QCOMPARE(window.directory.read(u"tx.kml"_s),
        kmlHead + "Quillon - Export TX</name>\r\n<Placemark><name>Bilbao (E)</name>\r\n" + redStyle
            + point("-2.935,43.263") + "<Placemark><name>K\xF6ln & Bonn (D)</name>\r\n" + redStyle
            + point("7.0,50.9") + "<Placemark><name>Madrid (E)</name>\r\n" + redStyle + point("-3.7,40.4")
            + "</Folder>\r\n</kml> \r\n");
    QCOMPARE(window.opened.take(), QStringList {in(window, u"tx.kml"_s)});
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QVERIFY(window.isCalm());
}

void TestExports::theLogbookIsWrittenAndOpened()
{
    ExportingWindow window;
    window.trigger("menuExportGoogleLog");
    QCOMPARE(window.directory.read(u"quillon.kml"_s),
        kmlHead + "Quillon - Export LogBook</name>\r\n<Placemark><name>Bilbao (E)</name>\r\n"
            + heard("<li>[05/07/2010 21:34:10] [E201] [RNE_1] [87.6]</li>\r\n") + orangeStyle
            + point("-2.935,43.263") + "<Placemark><name>K\xF6ln & Bonn (D)</name>\r\n"
            + heard("<li>[05/07/2010 21:40:00] [D382] [WDR 2] [89]</li>\r\n") + orangeStyle
            + point("7.0,50.9") + "<Placemark><name>Madrid (E)</name>\r\n" + heard({}) + orangeStyle
            + point("-3.7,40.4") + "</Folder>\r\n</kml> \r\n");
    QCOMPARE(window.opened.take(), QStringList {in(window, u"quillon.kml"_s)});
    QVERIFY(window.isCalm());
}

void TestExports::aRefusedKmlIsToldAndNotOpened_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("file");
    QTest::newRow("transmitters") << u"menuExportGoogleTX"_s << u"tx.kml"_s;
    QTest::newRow("logbook") << u"menuExportGoogleLog"_s << u"quillon.kml"_s;
}

void TestExports::aRefusedKmlIsToldAndNotOpened()
{
    QFETCH(QString, command);
    QFETCH(QString, file);
    ExportingWindow window;
    window.directory.write(file, "old");
    window.calls.failOpen = EROFS;
    window.trigger(command);
    const QString text = window.failure();
    QVERIFY2(text.startsWith(u"Run-time error: Permission denied\n"_s), qPrintable(text));
    QVERIFY2(text.contains(in(window, file)), qPrintable(text));
    QCOMPARE(window.directory.read(file), "old"_ba);
    QVERIFY(window.isCalm());
}

void TestExports::theWebPagesAreWrittenAndTheIndexOpened()
{
    ExportingWindow window;
    window.writeTemplates();
    window.trigger("menuExportWebPage");
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.opened.take(), QStringList {in(window, u"html/quillon_logindex.htm"_s)});
    QVERIFY(window.isCalm());
    QCOMPARE(QDir(in(window, u"html"_s)).entryList(QDir::Files, QDir::Name),
        (QStringList {u"quillon.kml"_s, u"quillon_log_2010-Jul.htm"_s, u"quillon_log_2010-Jul.kml"_s,
            u"quillon_log_2010-Jun.htm"_s, u"quillon_logindex.htm"_s, u"quillon_mapview.htm"_s}));
    QCOMPARE(window.directory.read(u"html/quillon_mapview.htm"_s), "<title>Map</title>\n"_ba);
    QCOMPARE(window.directory.read(u"html/quillon_logindex.htm"_s),
        "<h1>DL1ABC 4 "_ba + versionText().toLatin1()
            + "</h1>\r\n<table>\r\n<tr><td>Jul-2010</td><td><a href=\"quillon_log_2010-Jul.htm\">View Log</a>"
              "</td><td>1</td><td>1</td><td>&nbsp;</td><td>&nbsp;</td><td>2</td><td>"
              "<a href=\"quillon_mapview.htm?kml=quillon_log_2010-Jul.kml\">View Map</a></td></tr>\r\n"
              "<tr><td>Jun-2010</td><td><a href=\"quillon_log_2010-Jun.htm\">View Log</a></td>"
              "<td>&nbsp;</td><td>&nbsp;</td><td>1</td><td>1</td><td>2</td><td>&nbsp;</td></tr>\r\n"
              "\r\n</table>\r\n"_ba);
    QCOMPARE(window.directory.read(u"html/quillon_log_2010-Jul.htm"_s),
        "<h1>Jul-2010</h1>\r\n"
        "<tr><td>05-Jul-2010 21:40</td><td>D382</td><td>89</td><td>WDR 2</td><td>D</td><td>K&#246;ln &#38; "
        "Bonn</td><td>50</td><td>100</td><td>&nbsp;</td><td>MS</td></tr>\r\n"
        "<tr><td>05-Jul-2010 21:34</td><td>E201</td><td>87.6</td><td>RNE_1</td><td>E</td><td>Bilbao</td>"
        "<td>812.4</td><td>10</td><td>one two</td><td>Es</td></tr>\r\n\r\n"_ba);
    QVERIFY(window.directory.read(u"html/quillon.kml"_s).contains("<name>Quillon Full</name>"));
    QCOMPARE(window.logbook(), entries);
}

void TestExports::aMissingWebFileIsToldWithItsPath_data()
{
    QTest::addColumn<QString>("missing");
    for (const char *name : {"quillon_index.template", "quillon_log.template", "quillon_mapview.htm"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestExports::aMissingWebFileIsToldWithItsPath()
{
    QFETCH(QString, missing);
    ExportingWindow window;
    window.writeTemplates();
    QVERIFY(QFile::remove(in(window, missing)));
    window.trigger("menuExportWebPage");
    const QString text = window.failure();
    QVERIFY2(text.startsWith(u"Run-time error: File not found\n"_s), qPrintable(text));
    QVERIFY2(text.contains(in(window, missing)), qPrintable(text));
    QVERIFY(window.isCalm());

    window.writeTemplates();
    window.trigger("menuExportWebPage");
    QCOMPARE(window.opened.take().size(), 1);
}

void TestExports::aRefusedWebPageIsTold()
{
    ExportingWindow window;
    window.writeTemplates();
    window.calls.failRename = ENOSPC;
    window.trigger("menuExportWebPage");
    const QString text = window.failure();
    QVERIFY2(text.startsWith(u"Run-time error: Disk full\n"_s), qPrintable(text));
    QVERIFY2(text.contains(in(window, u"html/quillon_mapview.htm"_s)), qPrintable(text));
    QVERIFY(window.isCalm());
    QCOMPARE(QDir(in(window, u"html"_s)).entryList(QDir::Files), QStringList());
}

void TestExports::theGridKeepsTheFocus()
{
    ExportingWindow window;
    window.writeTemplates();
    window.clickRow(2);
    window.trigger("menuExportWebPage");
    QVERIFY(window.grid().hasFocus());
    window.key(Qt::Key_Down);
    QCOMPARE(window.grid().row(), 3);
}

void TestExports::anEmptyLogGivesAnIndexWithoutRows()
{
    ExportingWindow window;
    window.writeTemplates();
    window.start(""_ba, "");
    window.trigger("menuExportWebPage");
    QCOMPARE(window.directory.read(u"html/quillon_logindex.htm"_s),
        "<h1>DL1ABC 0 "_ba + versionText().toLatin1() + "</h1>\r\n<table>\r\n\r\n</table>\r\n"_ba);
    QCOMPARE(window.directory.read(u"html/quillon.kml"_s),
        kmlHead + "Quillon Full</name>\r\n</Folder>\r\n</kml> \r\n");
}

void TestExports::theTextAsksForTheRange()
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

void TestExports::theTextIsWrittenAndOpened()
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

void TestExports::aPromptThatIsLeftStopsTheText_data()
{
    QTest::addColumn<int>("prompt");
    QTest::addColumn<bool>("empty");
    QTest::newRow("the first is cancelled") << 1 << false;
    QTest::newRow("the second is cancelled") << 2 << false;
    QTest::newRow("the first is empty") << 1 << true;
    QTest::newRow("the second is empty") << 2 << true;
}

void TestExports::aPromptThatIsLeftStopsTheText()
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

void TestExports::anAnswerThatIsNoDateStopsTheText_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("wrong");
    QTest::newRow("from") << u"yesterday"_s << u"05/07/2010"_s << u"yesterday"_s;
    QTest::newRow("to") << u"05/07/2010"_s << u"31/06/2010"_s << u"31/06/2010"_s;
    QTest::newRow("a time alone") << u"21:40"_s << u"05/07/2010"_s << u"21:40"_s;
}

void TestExports::anAnswerThatIsNoDateStopsTheText()
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

void TestExports::theDistancesAreMeasuredForTheText()
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

void TestExports::withoutAHomeTheTextIsWrittenAllTheSame()
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

void TestExports::aRefusedTextIsTold()
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

QTEST_MAIN(TestExports)
#include "tst_exports.moc"
