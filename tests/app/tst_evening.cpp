#include "app/eveningfiles.h"
#include "fmlist-standin/standin.h"
#include "import/ui/importrdsspy.h"
#include "import/ui/rdsdxlist.h"
#include "stats/ui/logstats.h"
#include "support/mainwindow.h"
#include "support/opened.h"
#include "support/pictures.h"
#include "ui/chartcontrol.h"
#include "ui/version.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <memory>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// On 97.7 two transmitters have one PI; on 101.3 nothing is heard.
const QByteArray stations = "87.6;E213;RNE 3;E;Andaluc\xED"
                            "a, Guadalcanal;60;38.0700;-5.8300;74072\n"
                            "87.6;F206;F INFO;F;Champagne, Reims;64;49.0961;3.9300;23113\n"
                            "97.7;5201;RAI R1;I;Puglia, Monte Caccia;10;41.0500;16.2000;501\n"
                            "97.7;5201;RAI R1;I;Sardegna, Monte Limbara;20.04;40.8500;9.1800;502\n"_ba;

const QByteArray oldEntry =
    "D3C3|12/06/2010 18:22:05|Tropo|100.5|Bilbao|E|oneCRLFtwo|RNE_1|10|7|fml=sent#|4711|\r\n";
const QByteArray oldSite = "Bilbao|E|43.263|-2.935|7|\r\n";
const QByteArray countries = "D\r\nE\r\nF\r\nI\r\nTBD\r\n";

const QByteArray indexTemplate = "$CALLSIGN $TOTAL $VERSION\r\n$RAWDATA\r\n";
const QByteArray logTemplate = "$MONTHYEAR\r\n$RAWDATA\r\n";
const QByteArray mapViewer = "<!DOCTYPE html>\n<p>map \xE4\0\r\n\x1A end"_ba;

const QByteArray rdsdxLog = "  Freq PI   PS       Time    ITU Station|Remarks\r\n"
                            "  97.7 5201 RAI R1   2020 05 I   RAI R1,Somewhere|fading\r\n"
                            " 101.3 5279 VIRGIN   2025 38 TBD VIRGIN|\r\n";

void press(const QWidget *window, const QString &button)
{
    QTest::mouseClick(window->findChild<QPushButton *>(button), Qt::LeftButton);
}

} // namespace

// Each test goes on where the one before it ended.
class TestEvening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void receptionsOfRdsSpyAreImported();
    void receptionsOfRdsdxAreImportedAndSearched();
    void theRestIsSearchedByHand();
    void theLogIsUploaded();
    void theDistancesAreMeasured();
    void theLogbookIsExportedAsKml();
    void theWebPagesAreExported();
    void theTextIsExported();
    void theStatisticsAreSaved();
    void everythingIsThereAfterARestart();

private:
    [[nodiscard]] QByteArray configuration() const;

    standin::StandIn m_service {stations};
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<Opened> m_opened;
};

void TestEvening::initTestCase()
{
    QVERIFY(m_service.listen());
    m_opened = std::make_unique<Opened>();
    m_window = std::make_unique<MainWindow>();
    const TestDirectory &directory = m_window->directory;
    directory.write(u"LOGBOOK.INI"_s, configuration());
    directory.write(u"spy/2025-07-13 21-10-05 E213 RNE 3.txt"_s, {});
    directory.write(u"spy/2025-07-13 21-15-00 F206 F INFO.txt"_s, {});
    directory.write(u"spy/2025-07-14 21-15-00 F206 F INFO.txt"_s, {});
    directory.write(u"dx/20250713.txt"_s, rdsdxLog);
    directory.write(u"quillon_index.template"_s, indexTemplate);
    directory.write(u"quillon_log.template"_s, logTemplate);
    directory.write(u"quillon_mapview.htm"_s, mapViewer);
    m_window->start(oldEntry, oldSite, countries);
}

QByteArray TestEvening::configuration() const
{
    const TestDirectory &directory = m_window->directory;
    return "LOG_BOOK_CALLSIGN=DL1ABC\r\nHOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\nOMID="
           "77\r\n"
           "RDSSPY_LOGS="
        + directory.file(u"spy"_s).toLocal8Bit() + "\r\nRDSDX_LOG=" + directory.file(u"dx"_s).toLocal8Bit()
        + "\r\nFMLIST_URL=" + m_service.url().toLatin1() + "\r\n";
}

void TestEvening::cleanup()
{
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(m_window->grid().isVisible());
    QVERIFY(!m_window->find<QLabel>("proclogs")->isVisible());
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestEvening::cleanupTestCase()
{
    m_window.reset();
}

void TestEvening::receptionsOfRdsSpyAreImported()
{
    m_window->answers.type(u"13/07/2025"_s);
    m_window->trigger("menuImportRDSSpyLog");
    auto *dialog = m_window->find<importRDSSpy>("importRDSSpy");
    dialog->findChild<QLineEdit *>(u"Text1"_s)->setText(u"87.6"_s);
    dialog->findChild<QLineEdit *>(u"Text2"_s)->setText(u"-1"_s);
    press(dialog, u"Command3"_s);
    QCOMPARE(
        m_window->answers.takeTexts(), (QStringList {u"Enter date of logs to import?"_s, u"Imported"_s}));
    QCOMPARE(m_window->logbook(),
        oldEntry
            + "E213|13/07/2025 20:10:05||87.6||TBD||RNE 3|||||\r\n"
              "F206|13/07/2025 20:15:00||87.6||TBD||F INFO|||||\r\n"_ba);
}

void TestEvening::receptionsOfRdsdxAreImportedAndSearched()
{
    const QByteArray before = m_window->logbook();
    DialogAnswers &answers = m_window->answers;
    answers.press(QMessageBox::Yes);
    answers.press(QMessageBox::Ok);
    answers.press(QMessageBox::Yes);
    answers.type(u"13/07/2025"_s);
    answers.press(QMessageBox::Yes);
    answers.press(QMessageBox::Ok);
    m_window->trigger("menuImportRDSDXLogCnv");
    press(m_window->find<rdsdxlist>("rdsdxlist"), u"OKButton"_s);
    QCOMPARE(answers.takeTexts(),
        (QStringList {u"Import "_s + m_window->directory.file(u"dx/20250713.txt"_s) + u'?',
            u"Imported 2 logs"_s, u"Perform FMList Auto Search?"_s,
            u"Logs from what day do you want Quillon to automatically find a match for from FMList?"_s,
            u"If FMList returns an exact match do you want to automatically update your log book entry?"_s,
            u"Updated 2 entries"_s}));
    QCOMPARE(m_window->copies().size(), 1);
    QCOMPARE(m_window->directory.read(m_window->copies().first()), before);
    QByteArrayList targets;
    for (const standin::Request &request : m_service.requests()) {
        targets += request.target();
    }
    QCOMPARE(targets,
        (QByteArrayList {"/rdslookup.php?freq=87.6&pi=E213&ps=RNE%5F3",
            "/rdslookup.php?freq=87.6&pi=F206&ps=F%5FINFO", "/rdslookup.php?freq=97.7&pi=5201&ps=RAI%5FR1",
            "/rdslookup.php?freq=101.3&pi=5279&ps=VIRGIN"}));
    QCOMPARE(m_window->logbook(),
        oldEntry
            + "E213|13/07/2025 20:10:05||87.6|Guadalcanal|E||RNE 3|60|||74072|\r\n"
              "F206|13/07/2025 20:15:00||87.6|Reims|F||F INFO|64|||23113|\r\n"
              "5201|13/07/2025 20:20:05||97.7|Somewhere|I|fading|RAI R1|||fml=multi#||\r\n"
              "5279|13/07/2025 20:25:38||101.3|VIRGIN|TBD||VIRGIN|||fml=none#||\r\n"_ba);
    QCOMPARE(
        m_window->transmitterFile(), oldSite + "Guadalcanal|E|38.07|-5.83||\r\nReims|F|49.0961|3.93||\r\n");
    QStringList records;
    for (const QByteArray &line : m_window->directory.read(u"autoupdate.log"_s).split('\n')) {
        QVERIFY(line.isEmpty() || parseDateTime(QString::fromLatin1(line).section(u'\t', 0, 0), {}));
        records += QString::fromLatin1(line).section(u'\t', 1).remove(u'\r');
    }
    QCOMPARE(records,
        (QStringList {
            u"BEFORE\t0:13/07/2025 20:10:05\t1:E213\t2:87.6\t3:RNE 3\t4:TBD\t5:\t6:\t7:\t8:\t9:\t10:\t11:\t"_s,
            u"AFTER\t0:13/07/2025 20:10:05\t1:E213\t2:87.6\t3:RNE 3\t4:E\t5:Guadalcanal\t6:\t7:60\t8:\t9:\t10:\t11:74072\t"_s,
            u"BEFORE\t0:13/07/2025 20:15:00\t1:F206\t2:87.6\t3:F INFO\t4:TBD\t5:\t6:\t7:\t8:\t9:\t10:\t11:\t"_s,
            u"AFTER\t0:13/07/2025 20:15:00\t1:F206\t2:87.6\t3:F INFO\t4:F\t5:Reims\t6:\t7:64\t8:\t9:\t10:\t11:23113\t"_s,
            u""_s}));
}

void TestEvening::theRestIsSearchedByHand()
{
    m_service.forget();
    m_window->clickRow(4);
    QCOMPARE(m_window->text("Text1"), u"5201"_s);
    m_window->find<QComboBox>("Combo2")->setFocus();
    m_window->type("Combo2", u"Es"_s);
    m_window->click("Command11");
    QCOMPARE(m_service.requests().size(), 1);
    auto *results = m_window->find<ResultList>("List2");
    QCOMPARE(results->count(), 2);
    QCOMPARE(results->text(1), u"97.7\t5201\tRAI R1\tI\tMonte Limbara\t20\t40.85\t9.18\t502"_s);
    QCOMPARE(m_window->text("status"), u"FMList Search: 2 matches"_s);
    m_window->answers.press(QMessageBox::Yes);
    const QPoint second = results->visualRect(results->model()->index(1, 0)).center();
    QTest::mouseClick(results->viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(results->viewport(), Qt::LeftButton, {}, second);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {u"Update record with search results?"_s});
    QCOMPARE(
        m_window->row(4), u"13/07/2025 20:20:05|5201|97.7|RAI R1|I|Monte Limbara||20|fading|Es|Multi|502"_s);
    QVERIFY(m_window->transmitterFile().endsWith("Monte Limbara|I|40.85|9.18||\r\n"));
}

void TestEvening::theLogIsUploaded()
{
    m_service.forget();
    m_window->trigger("menuFMListUploadLogs");
    QCOMPARE(m_window->answers.takeTexts(), QStringList {u"done."_s});
    QByteArrayList bodies;
    for (const standin::Request &request : m_service.requests()) {
        QCOMPARE(request.target(), "/logpost1.php"_ba);
        bodies += request.body;
    }
    QCOMPARE(bodies,
        (QByteArrayList {"omid=77&freq=87%2E6&pi=E213&uid=74072&dateTime=13%2D07%2D2025+20%3A10%3A05",
            "omid=77&freq=87%2E6&pi=F206&uid=23113&dateTime=13%2D07%2D2025+20%3A15%3A00",
            "omid=77&freq=97%2E7&pi=5201&uid=502&dateTime=13%2D07%2D2025+20%3A20%3A05&propa=Es"}));
    QCOMPARE(m_window->text("status"), u"OK log of transmitter 502 stored"_s);
    QStringList states;
    for (int row = 1; row < m_window->grid().rows(); ++row) {
        states += m_window->grid().text(row, GridColumn::FMList);
    }
    QCOMPARE(states, (QStringList {u"Sent"_s, u"Sent"_s, u"Sent"_s, u"Sent"_s, u"None"_s}));
}

void TestEvening::theDistancesAreMeasured()
{
    m_window->click("Command10");
    QCOMPARE(m_window->transmitterFile(),
        "Bilbao|E|43.263|-2.935|940.3|\r\nGuadalcanal|E|38.07|-5.83|1558.5|\r\nReims|F|49.0961|3.93|392.4|"
        "\r\n"
        "Monte Limbara|I|40.85|9.18|1381.3|\r\n"_ba);
    QCOMPARE(m_window->logbook(),
        "D3C3|12/06/2010 18:22:05|Tropo|100.5|Bilbao|E|oneCRLFtwo|RNE_1|10|940.3|fml=sent#|4711|\r\n"
        "E213|13/07/2025 20:10:05||87.6|Guadalcanal|E||RNE 3|60|1558.5|fml=sent#|74072|\r\n"
        "F206|13/07/2025 20:15:00||87.6|Reims|F||F INFO|64|392.4|fml=sent#|23113|\r\n"
        "5201|13/07/2025 20:20:05|Es|97.7|Monte Limbara|I|fading|RAI R1|20|1381.3|fml=sent#|502|\r\n"
        "5279|13/07/2025 20:25:38||101.3|VIRGIN|TBD||VIRGIN|||fml=none#||\r\n"_ba);
}

void TestEvening::theLogbookIsExportedAsKml()
{
    m_window->trigger("menuExportGoogleLog");
    QCOMPARE(m_opened->take(), QStringList {m_window->directory.file(u"quillon.kml"_s)});
    QCOMPARE(m_window->directory.read(u"quillon.kml"_s), goldenOfTheEvening(u"quillon.kml"_s));
}

void TestEvening::theWebPagesAreExported()
{
    m_window->trigger("menuExportWebPage");
    QCOMPARE(m_opened->take(), QStringList {m_window->directory.file(u"html/quillon_logindex.htm"_s)});
    // The month of row 1 alone is not closed by another.
    for (const QString &name :
        {u"html/quillon.kml"_s, u"html/quillon_log_2025-Jul.htm"_s, u"html/quillon_log_2025-Jul.kml"_s}) {
        QCOMPARE(m_window->directory.read(name), goldenOfTheEvening(name));
    }
    QCOMPARE(m_window->directory.read(u"html/quillon_mapview.htm"_s), mapViewer);
    QCOMPARE(m_window->directory.read(u"html/quillon_logindex.htm"_s),
        "DL1ABC 5 "_ba + versionText().toLatin1()
            + "\r\n<tr><td>Jul-2025</td><td><a href=\"quillon_log_2025-Jul.htm\">View Log</a></td><td>&nbsp;"
              "</td><td>1</td><td>&nbsp;</td><td>3</td><td>4</td><td>"
              "<a href=\"quillon_mapview.htm?kml=quillon_log_2025-Jul.kml\">View Map</a></td></tr>\r\n\r\n"_ba);
}

void TestEvening::theTextIsExported()
{
    m_window->answers.type(u"13/07/2025"_s);
    m_window->answers.type(u"13/07/2025 20:20:05"_s);
    const QByteArray today = formatted(localNow(), u"yyyy-mm-dd", {}).toLatin1();
    m_window->trigger("menuExportEmail");
    QCOMPARE(m_window->answers.takeTexts(), (QStringList {u"Export from?"_s, u"Export to?"_s}));
    QCOMPARE(m_opened->take(), QStringList {m_window->directory.file(u"quillon.txt"_s)});
    QCOMPARE(m_window->directory.read(u"quillon.txt"_s),
        m_service.url().toLatin1() + "/fm_logmap.php?datum=" + today
            + "&band=ALL&hours=0&omid=77\r\n\r\n"
              "Time  Freq   ITU PS       PI   TX           Distance\r\n"
              "----------------------------------------------------\r\n"
              "\r\n13-Jul-2025 Es\r\n\r\n"
              "20:20z 97.7  I   RAI R1   5201 Monte Limbara 1381 Km\r\n"
              "\r\n13-Jul-2025 \r\n\r\n"
              "20:15z 87.6  F   F INFO   F206 Reims 392 Km\r\n"
              "20:10z 87.6  E   RNE 3    E213 Guadalcanal 1558 Km\r\n"
              "\r\n*Quillon Export:\r\n 13-Jul-2025 00:00 to \r\n 13-Jul-2025 20:20\r\n 3 Entries\r\n"_ba);
}

void TestEvening::theStatisticsAreSaved()
{
    m_window->trigger("menuStats");
    auto *stats = m_window->find<logStats>("logStats");
    stats->findChild<QComboBox *>(u"Combo1"_s)->setCurrentText(u"2025"_s);
    press(stats, u"Command3"_s);
    m_window->answers.accept();
    press(stats, u"Command2"_s);
    QCOMPARE(m_window->answers.seen().first().input, m_window->directory.file(u"2025-All-All.bmp"_s));
    QCOMPARE(m_window->answers.takeTexts(), (QStringList {u"Enter Filename"_s, u"done"_s}));
    const QImage saved(m_window->directory.file(u"2025-All-All.bmp"_s), "BMP");
    const auto *chart = stats->findChild<ChartControl *>(u"MSChart1"_s);
    QCOMPARE(saved.convertToFormat(QImage::Format_RGB32), chart->picture());
    // One bar: the four of July.
    QCOMPARE(saved.size(), QSize(1920, 1080));
    const auto bars = areasOf(saved, ChartStyle::of(lightPalette()).series(0, 1).rgb());
    QCOMPARE(bars.size(), std::size_t(1));
    QVERIFY(bars.front().height() > saved.height() * 7 / 10);
    const double share = static_cast<double>(bars.front().center().x()) / saved.width();
    QVERIFY(share > 0.53 && share < 0.57);
    QCOMPARE(chart->table().cell(8, 1), u"Jul"_s);
    QCOMPARE(chart->table().cell(8, 2), u"4"_s);
    press(stats, u"Command1"_s);
}

void TestEvening::everythingIsThereAfterARestart()
{
    const TestDirectory &directory = m_window->directory;
    const Files before = filesBelow(directory);
    const QStringList copies = m_window->copies();
    QCOMPARE(copies.size(), 1);
    QCOMPARE(before.keys(),
        (QStringList {u"2025-All-All.bmp"_s, copies.first(), u"LOGBOOK.INI"_s, u"RDSLog.log"_s,
            u"autoupdate.log"_s, u"country.lst"_s, u"dx/"_s, u"dx/20250713.txt"_s, u"html/"_s,
            u"html/quillon.kml"_s, u"html/quillon.kml.js"_s, u"html/quillon_log_2025-Jul.htm"_s,
            u"html/quillon_log_2025-Jul.kml"_s, u"html/quillon_log_2025-Jul.kml.js"_s,
            u"html/quillon_logindex.htm"_s, u"html/quillon_mapview.htm"_s, u"quillon.kml"_s, u"quillon.txt"_s,
            u"quillon_index.template"_s, u"quillon_log.template"_s, u"quillon_mapview.htm"_s, u"spy/"_s,
            u"spy/2025-07-13 21-10-05 E213 RNE 3.txt"_s, u"spy/2025-07-13 21-15-00 F206 F INFO.txt"_s,
            u"spy/2025-07-14 21-15-00 F206 F INFO.txt"_s, u"tx.lst"_s}));
    // The setting that the first import asked for is new; what was only read is as it was.
    QCOMPARE(before[u"LOGBOOK.INI"_s], configuration() + "TIME_OFFSET=-1\r\n");
    QCOMPARE(before[u"country.lst"_s], countries);
    QCOMPARE(before[u"dx/20250713.txt"_s], rdsdxLog);
    QCOMPARE(before[u"quillon_index.template"_s], indexTemplate);
    QCOMPARE(before[u"quillon_log.template"_s], logTemplate);
    QCOMPARE(before[u"quillon_mapview.htm"_s], mapViewer);

    QStringList rows;
    for (int row = 1; row < m_window->grid().rows(); ++row) {
        rows += m_window->row(row);
    }
    m_window->start();
    QCOMPARE(firstDifference(before, filesBelow(directory)), QString());
    QCOMPARE(m_window->grid().rows() - 1, rows.size());
    for (int row = 1; row < m_window->grid().rows(); ++row) {
        QCOMPARE(m_window->row(row), rows.value(row - 1));
    }

    // Nothing is left to be sent.
    m_service.forget();
    m_window->trigger("menuFMListUploadLogs");
    QCOMPARE(m_window->answers.takeTexts().size(), 2);
    QCOMPARE(m_service.requests().size(), 0);
}

QTEST_MAIN(TestEvening)
#include "tst_evening.moc"
