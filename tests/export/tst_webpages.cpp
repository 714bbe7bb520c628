#include "export/mapscript.h"
#include "export/webrows.h"
#include "sitefixture.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

using namespace quillon;
using namespace quillon::test;

namespace {

/// The rows of a page: what stands between "<table>" and "</table>".
QByteArray tableOf(const QByteArray &page)
{
    const qsizetype begin = page.indexOf("<table>\r\n") + 9;
    return page.mid(begin, page.indexOf("\r\n</table>") - begin);
}

QStringList row(const QString &time, const QString &prop = u"Es"_s)
{
    return {time, u"D382"_s, u"89"_s, u"WDR 2"_s, u"D"_s, u"Langenberg"_s, u"1"_s, u"2"_s, u"note"_s, prop};
}

Site siteOfRows(const QList<QStringList> &rows)
{
    return {sampleLog(), sampleTransmitters(), rows};
}

QByteArray indexRow(const QByteArray &file, const QByteArray &label, const QByteArray &counts, bool map)
{
    return "<tr><td>" + label + "</td><td><a href=\"quillon_log_" + file + ".htm\">View Log</a></td><td>"
        + counts + "</td><td>"
        + (map ? "<a href=\"quillon_mapview.htm?kml=quillon_log_" + file + ".kml\">View Map</a>"
               : "&nbsp;"_ba)
        + "</td></tr>\r\n";
}

} // namespace

class TestWebPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSiteAsGolden()
    {
        const Site site(sampleLog());
        QCOMPARE(site.write(), site.directory.file(u"html/quillon_logindex.htm"_s));
        // The oldest row is of the month of the second, so three months are closed.
        QCOMPARE(site.pageNames(),
            (QStringList {u"quillon.kml"_s, u"quillon.kml.js"_s, u"quillon_log_2010-Aug.htm"_s,
                u"quillon_log_2010-Jul.htm"_s, u"quillon_log_2010-Jul.kml"_s,
                u"quillon_log_2010-Jul.kml.js"_s, u"quillon_log_2011-Jul.htm"_s,
                u"quillon_log_2011-Jul.kml"_s, u"quillon_log_2011-Jul.kml.js"_s, u"quillon_logindex.htm"_s,
                u"quillon_mapview.htm"_s}));
        QCOMPARE(site.page(u"quillon_logindex.htm"_s), golden(u"quillon_logindex.htm"_s));
        QCOMPARE(site.page(u"quillon_log_2010-Jul.htm"_s), golden(u"quillon_log_2010-Jul.htm"_s));
        QCOMPARE(site.page(u"quillon_log_2010-Aug.htm"_s), golden(u"quillon_log_2010-Aug.htm"_s));
        QCOMPARE(site.page(u"quillon_log_2010-Jul.kml"_s), golden(u"html_quillon_log_2010-Jul.kml"_s));
        QCOMPARE(site.page(u"quillon.kml"_s), golden(u"html_quillon.kml"_s));
        QCOMPARE(site.page(u"quillon_mapview.htm"_s), viewerPage);
    }

    void aPageThatIsThereInAnotherCaseIsReplacedNotDoubled()
    {
        const Site site(sampleLog());
        const QStringList names {u"QUILLON_LOGINDEX.HTM"_s, u"Quillon.KML"_s, u"Quillon_Log_2010-JUL.kml"_s,
            u"quillon_LOG_2010-Aug.KML"_s, u"quillon_log_2010-jul.htm"_s, u"quillon_log_2011-Jul.HTM"_s,
            u"quillon_mapview.html"_s, u"quillon_mapView.htm"_s, u"quillon.KML.js"_s,
            u"quillon_log_2010-AUG.kml.JS"_s};
        for (const QString &name : names) {
            site.directory.write(u"html/"_s + name, "old");
        }
        QCOMPARE(site.write(), site.directory.file(u"html/QUILLON_LOGINDEX.HTM"_s));
        // No reception of August belongs to a transmitter, so its map is gone.
        QCOMPARE(site.pageNames(),
            (QStringList {u"QUILLON_LOGINDEX.HTM"_s, u"Quillon.KML"_s, u"Quillon_Log_2010-JUL.kml"_s,
                u"quillon.KML.js"_s, u"quillon_log_2010-Aug.htm"_s, u"quillon_log_2010-Jul.kml.js"_s,
                u"quillon_log_2010-jul.htm"_s, u"quillon_log_2011-Jul.HTM"_s, u"quillon_log_2011-Jul.kml"_s,
                u"quillon_log_2011-Jul.kml.js"_s, u"quillon_mapView.htm"_s, u"quillon_mapview.html"_s}));
        QCOMPARE(site.page(u"QUILLON_LOGINDEX.HTM"_s), golden(u"quillon_logindex.htm"_s));
        QCOMPARE(site.page(u"quillon_log_2010-jul.htm"_s), golden(u"quillon_log_2010-Jul.htm"_s));
        QCOMPARE(site.page(u"Quillon_Log_2010-JUL.kml"_s), golden(u"html_quillon_log_2010-Jul.kml"_s));
        QCOMPARE(site.page(u"Quillon.KML"_s), golden(u"html_quillon.kml"_s));
        QCOMPARE(site.page(u"quillon_mapView.htm"_s), viewerPage);
        QCOMPARE(site.page(u"quillon_mapview.html"_s), "old"_ba);
    }

    void ofPagesInSeveralCasesTheOneSpelledAsItIsIsReplaced()
    {
        const Site site(sampleLog());
        site.directory.write(u"html/QUILLON.KML"_s, "old");
        site.directory.write(u"html/quillon.kml"_s, "old");
        site.write();
        QCOMPARE(site.page(u"QUILLON.KML"_s), "old"_ba);
        QCOMPARE(site.page(u"quillon.kml"_s), golden(u"html_quillon.kml"_s));
    }

    void anEmptyLogGivesAnIndexWithoutRowsAndAnEmptyFullKml()
    {
        const Site site(Logbook {});
        site.write();
        QCOMPARE(site.pageNames(),
            (QStringList {
                u"quillon.kml"_s, u"quillon.kml.js"_s, u"quillon_logindex.htm"_s, u"quillon_mapview.htm"_s}));
        QCOMPARE(site.page(u"quillon_logindex.htm"_s),
            "<h1>DL1ABC</h1><p>0 V1.0.12 01/02/2012 03:04:05</p>\r\n<table>\r\n\r\n</table>\r\n"_ba);
        QVERIFY(!site.page(u"quillon.kml"_s).contains("<Placemark>"));
    }

    void aSingleEntryIsNeverListed()
    {
        const Site site = siteOfRows({row(u"01/07/2010 10:00:00"_s)});
        site.write();
        QCOMPARE(site.pageNames(),
            (QStringList {
                u"quillon.kml"_s, u"quillon.kml.js"_s, u"quillon_logindex.htm"_s, u"quillon_mapview.htm"_s}));
        QCOMPARE(tableOf(site.page(u"quillon_logindex.htm"_s)), ""_ba);
    }

    void oneMonthIsOneRowClosedAtRow1()
    {
        const Site site = siteOfRows({row(u"01/07/2010 10:00:00"_s), row(u"02/07/2010 10:00:00"_s, u"MS"_s)});
        site.write();
        QCOMPARE(tableOf(site.page(u"quillon_logindex.htm"_s)),
            indexRow("2010-Jul", "Jul-2010", "1</td><td>1</td><td>&nbsp;</td><td>&nbsp;</td><td>2", true));
    }

    void aMonthThatBeginsAtRow1IsMissing()
    {
        const Site site = siteOfRows({row(u"01/07/2010 10:00:00"_s), row(u"02/08/2010 10:00:00"_s)});
        site.write();
        QCOMPARE(tableOf(site.page(u"quillon_logindex.htm"_s)),
            indexRow(
                "2010-Aug", "Aug-2010", "&nbsp;</td><td>1</td><td>&nbsp;</td><td>&nbsp;</td><td>1", false));
        QVERIFY(!site.pageNames().contains(u"quillon_log_2010-Jul.htm"_s));
        QVERIFY(!site.pageNames().contains(u"quillon_log_2010-Jul.kml"_s));
    }

    void row1AloneInTheNewestMonthIsMissing()
    {
        const Site site = siteOfRows(
            {row(u"01/09/2010 10:00:00"_s), row(u"01/07/2010 10:00:00"_s), row(u"02/07/2010 10:00:00"_s)});
        site.write();
        QCOMPARE(tableOf(site.page(u"quillon_logindex.htm"_s)),
            indexRow(
                "2010-Jul", "Jul-2010", "&nbsp;</td><td>2</td><td>&nbsp;</td><td>&nbsp;</td><td>2", true));
    }

    void aMonthInTwoPiecesIsListedTwiceWithAllOfIt()
    {
        const Site site = siteOfRows({row(u"01/07/2010 10:00:00"_s), row(u"02/07/2010 10:00:00"_s),
            row(u"01/08/2010 10:00:00"_s), row(u"03/07/2010 10:00:00"_s)});
        site.write();
        const QByteArray july = indexRow(
            "2010-Jul", "Jul-2010", "&nbsp;</td><td>3</td><td>&nbsp;</td><td>&nbsp;</td><td>3", true);
        const QByteArray august = indexRow(
            "2010-Aug", "Aug-2010", "&nbsp;</td><td>1</td><td>&nbsp;</td><td>&nbsp;</td><td>1", false);
        QCOMPARE(tableOf(site.page(u"quillon_logindex.htm"_s)), july + august + july);
        QCOMPARE(site.page(u"quillon_log_2010-Jul.htm"_s).count("<tr>"), 3);
    }

    void anIndexWithoutRawDataWritesNoMonths()
    {
        Site site = siteOfRows({row(u"no date"_s), row(u"02/07/2010 10:00:00"_s)});
        site.directory.write(u"quillon_index.template"_s, "<h1>$CALLSIGN</h1>");
        site.write();
        QCOMPARE(site.page(u"quillon_logindex.htm"_s), "<h1>DL1ABC</h1>\r\n"_ba);
        QCOMPARE(site.pageNames(),
            (QStringList {
                u"quillon.kml"_s, u"quillon.kml.js"_s, u"quillon_logindex.htm"_s, u"quillon_mapview.htm"_s}));
        QCOMPARE(site.page(u"quillon.kml"_s), golden(u"html_quillon.kml"_s));
    }

    void aMonthPageWithoutRawDataHasNoRowsAndCountsNothing()
    {
        const Site site = siteOfRows({row(u"01/07/2010 10:00:00"_s), row(u"02/07/2010 10:00:00"_s)});
        site.directory.write(u"quillon_log.template"_s, "$MONTHYEAR $MONTHYEAR");
        site.write();
        QCOMPARE(site.page(u"quillon_log_2010-Jul.htm"_s), "Jul-2010 Jul-2010\r\n"_ba);
        QCOMPARE(tableOf(site.page(u"quillon_logindex.htm"_s)),
            indexRow("2010-Jul", "Jul-2010", "&nbsp;</td><td>&nbsp;</td><td>&nbsp;</td><td>&nbsp;</td><td>0",
                true));
    }

    void onlyTheTransmitterIsEncoded()
    {
        const QStringList cells {u"01/07/2010 10:00:00"_s, u"<1>"_s, u"<2>"_s, u"R&B <3>"_s, u"A&B"_s,
            u"Köln & <5>"_s, u"<6>"_s, u"<7>"_s, u"<8>\r\nlö\r\n\r\nx\ny"_s, u"<9>"_s};
        const Site site = siteOfRows({cells, cells});
        site.write();
        const QByteArray line =
            "<tr><td>01-Jul-2010 10:00</td><td><1></td><td><2></td><td>R&B <3></td><td>A&B"
            "</td><td>K&#246;ln &#38; &#60;5&#62;</td><td><6></td><td><7></td><td><8><br>l\xF6"
            "<br><br>x\ny</td><td><9></td></tr>\r\n"_ba;
        QCOMPARE(tableOf(site.page(u"quillon_log_2010-Jul.htm"_s)), line + line);
    }

    void metaIsDisarmedInEveryCell_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("cell");
        QTest::newRow("refresh") << u"<meta http-equiv=refresh content='0;url=//evil'>"_s
                                 << "&lt;meta http-equiv=refresh content='0;url=//evil'>"_ba;
        QTest::newRow("any case") << u"a<MeTa/><META\t><<meta"_s << "a&lt;MeTa/>&lt;META\t><&lt;meta"_ba;
        QTest::newRow("what connects ahead")
            << u"<link rel=preconnect href=//evil><svg><iFrame src=//evil></svg><linked><FORM><i>"_s
            << "&lt;link rel=preconnect href=//evil><svg>&lt;iFrame src=//evil></svg>&lt;linked>&lt;FORM><i>"_ba;
        QTest::newRow("cut off at the end") << u"<met<lin<ifram<for"_s << "<met<lin<ifram<for"_ba;
        QTest::newRow("letters that lose their accents") << u"<m\u0113t\u0101>"_s << "&lt;meta>"_ba;
        QTest::newRow("other elements") << u"<met><b>metal</b></meta>< meta><\u00B5eta>"_s
                                        << "<met><b>metal</b></meta>< meta><\xB5\x65ta>"_ba;
        QTest::newRow("at the end") << u"<met"_s << "<met"_ba;
    }

    void metaIsDisarmedInEveryCell()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, cell);
        QByteArray page = "<meta>";
        appendTableRow(page, {text, u"<i>"_s, text}, CodePage(1252));
        QCOMPARE(page, "<meta><tr><td>" + cell + "</td><td><i></td><td>" + cell + "</td></tr>\r\n");
    }

    void aNoteFullOfMetaTakesTimeInProportion()
    {
        constexpr int count = 1'000'000;
        QByteArray page;
        QElapsedTimer timer;
        timer.start();
        appendTableRow(page, {u"<meta>"_s.repeated(count)}, CodePage(1252));
        QCOMPARE(page.size(), "<tr><td></td></tr>\r\n"_ba.size() + "&lt;meta>"_ba.size() * count);
        QVERIFY(timer.elapsed() < 10'000);
    }

    void emptyCellsAreNonBreakingBlanks()
    {
        const QStringList cells {u"01/07/2010"_s, {}, {}, {}, {}, {}, {}, {}, {}, {}};
        const Site site = siteOfRows({cells, cells});
        site.write();
        const QByteArray line =
            "<tr><td>01-Jul-2010 00:00" + "</td><td>&nbsp;"_ba.repeated(9) + "</td></tr>\r\n";
        QCOMPARE(tableOf(site.page(u"quillon_log_2010-Jul.htm"_s)), line + line);
    }

    void receptionsAreCountedByTheExactMode()
    {
        ModeCounts counts;
        for (const QString &prop :
            {u"MS"_s, u"Tropo"_s, u"Tropo"_s, u"Es"_s, u"es"_s, u""_s, u"TEP"_s, u"Es "_s}) {
            counts.count(prop);
        }
        QCOMPARE(counts, (ModeCounts {8, 2, 1, 1, 4}));
    }

    void datesAreReadInAnyFormAndOnce()
    {
        const Site site =
            siteOfRows({row(u" 1.7.2010"_s), row(u"2010-07-02 10:00"_s), row(u"3-Jul-10 1:05 PM "_s)});
        site.write();
        const QByteArray table = tableOf(site.page(u"quillon_log_2010-Jul.htm"_s));
        QVERIFY(table.startsWith("<tr><td>03-Jul-2010 13:05</td>"));
        QVERIFY(table.contains("<tr><td>02-Jul-2010 10:00</td>"));
        QVERIFY(table.contains("<tr><td>01-Jul-2010 00:00</td>"));
    }

    void monthsAreNamedInTheLocaleInFilesLinksAndLabels()
    {
        Site site = siteOfRows({row(u"01/03/2010 10:00:00"_s), row(u"02/03/2010 10:00:00"_s)});
        site.regional = regionalOf(u"de_DE"_s);
        site.write();
        QVERIFY(site.pageNames().contains(u"quillon_log_2010-Mär.htm"_s));
        QCOMPARE(tableOf(site.page(u"quillon_logindex.htm"_s)),
            indexRow("2010-M\xE4r", "M\xE4r-2010", "&nbsp;</td><td>2</td><td>&nbsp;</td><td>&nbsp;</td><td>2",
                false));
        QVERIFY(site.page(u"quillon_log_2010-Mär.htm"_s).startsWith("<h1>M\xE4r-2010</h1>\r\n"));
        QVERIFY(site.page(u"quillon_log_2010-Mär.htm"_s).contains("<td>01-M\xE4r-2010 10:00</td>"));
    }

    void besideEachKmlFileStandsAScriptThatHoldsTheSame()
    {
        const Site site(sampleLog());
        site.write();
        const QMap<QString, QByteArray> pages = site.pages();
        int maps = 0;
        for (auto file = pages.begin(); file != pages.end(); ++file) {
            if (file.key().endsWith(u".kml"_s)) {
                ++maps;
                QCOMPARE(pages.value(file.key() + u".js"_s),
                    "window.quillonMap = \"" + file.value().toBase64() + "\";\n");
            }
        }
        QCOMPARE(maps, 3);
    }

    void whateverAKmlFileHoldsItsScriptIsATextInBase64()
    {
        QByteArray every("\";alert(1)//</script><!--\\\r\n\xE2\x80\xA8 +ADw-");
        for (int byte = 0; byte < 256; ++byte) {
            every += static_cast<char>(byte);
        }
        const QByteArray script = mapScript(every);
        const QByteArray before = "window.quillonMap = \"";
        const QByteArray after = "\";\n";
        QVERIFY(script.startsWith(before) && script.endsWith(after));
        const QByteArray text = script.sliced(before.size()).chopped(after.size());
        QVERIFY(QRegularExpression(u"^[A-Za-z0-9+/]*={0,2}$"_s).match(QString::fromLatin1(text)).hasMatch());
        QCOMPARE(QByteArray::fromBase64(text), every);
        QCOMPARE(mapScript({}), before + after);
    }

    void aScriptThatIsMissingOrOldIsWrittenBesideAnUnchangedKmlFile()
    {
        const Site site(sampleLog());
        site.write();
        const auto before = site.pages();
        QVERIFY(QFile::remove(site.directory.file(u"html/quillon.kml.js"_s)));
        site.directory.write(u"html/quillon_log_2010-Jul.kml.js"_s, "old");
        site.write();
        QCOMPARE(site.pages(), before);
    }

    void anOldMonthKmlIsDeletedWhenNoPlacemarkIsLeft()
    {
        const Site site(sampleLog());
        site.directory.write(u"html/quillon_log_2010-Aug.kml"_s, "old");
        site.directory.write(u"html/quillon_log_2010-Aug.kml.js"_s, "old");
        site.directory.write(u"html/quillon_log_2009-Jan.kml"_s, "of another time");
        site.write();
        QVERIFY(!site.pageNames().contains(u"quillon_log_2010-Aug.kml"_s));
        QVERIFY(!site.pageNames().contains(u"quillon_log_2010-Aug.kml.js"_s));
        QCOMPARE(site.page(u"quillon_log_2009-Jan.kml"_s), "of another time"_ba);
    }

    void theCallsignIsWrittenAsItStands()
    {
        Site site = siteOfRows({});
        site.directory.write(u"quillon_index.template"_s, "$CALLSIGN");
        const WebSite source {site.grid.rows(), site.transmitters, u"Ö<$TOTAL>"_s, u"V1.0.0"_s, {}};
        exportWebPages(site.directory.path(), source, site.regional);
        QCOMPARE(site.page(u"quillon_logindex.htm"_s), "\xD6<$TOTAL>\r\n"_ba.replace("$TOTAL", "7"));
    }

    void eachListedMonthIsToldAsProgress()
    {
        const Site site(sampleLog());
        QList<int> told;
        const WebSite source {site.grid.rows(), site.transmitters, u"X"_s, u"V1.0.0"_s, {}};
        exportWebPages(
            site.directory.path(), source, site.regional, FileCalls::real(), [&](int done, int count) {
                QCOMPARE(count, site.grid.count());
                QVERIFY(done > told.value(told.size() - 1, 0));
                told.append(done);
            });
        QCOMPARE(told.size(), site.page(u"quillon_logindex.htm"_s).count("<tr>"));
        QVERIFY(!told.isEmpty());
        QCOMPARE(told.last(), site.grid.count());
    }

    void filesAndFolderAreFoundInAnyCase()
    {
        const Site site = siteOfRows({});
        QDir dir(site.directory.path());
        QVERIFY(dir.rename(u"quillon_index.template"_s, u"QUILLON_INDEX.TEMPLATE"_s));
        QVERIFY(dir.rename(u"quillon_mapview.htm"_s, u"Quillon_MapView.htm"_s));
        QVERIFY(dir.mkdir(u"HTML"_s));
        QCOMPARE(site.write(), site.directory.file(u"HTML/quillon_logindex.htm"_s));
        QVERIFY(!site.directory.names().contains(u"html"_s));
    }

    void whatIsMissingIsToldWithItsPath_data()
    {
        QTest::addColumn<QString>("missing");
        QTest::addColumn<QStringList>("written");
        QTest::newRow("map viewer") << u"quillon_mapview.htm"_s << QStringList();
        QTest::newRow("index template")
            << u"quillon_index.template"_s << QStringList {u"quillon_mapview.htm"_s};
        QTest::newRow("month template")
            << u"quillon_log.template"_s << QStringList {u"quillon_mapview.htm"_s};
    }

    void whatIsMissingIsToldWithItsPath()
    {
        QFETCH(QString, missing);
        QFETCH(QStringList, written);
        const Site site(sampleLog());
        QVERIFY(QFile::remove(site.directory.file(missing)));
        QCOMPARE(errorOf([&] { site.write(); }),
            u"Run-time error: File not found\nReading "_s + site.directory.file(missing));
        QCOMPARE(site.pageNames(), written);
    }

    void aMissingMonthTemplateIsNotMissedWithoutMonths()
    {
        const Site site = siteOfRows({row(u"01/07/2010"_s)});
        QVERIFY(QFile::remove(site.directory.file(u"quillon_log.template"_s)));
        site.write();
        QVERIFY(site.pageNames().contains(u"quillon_logindex.htm"_s));
    }

    void aFolderThatCannotBeCreatedIsTold()
    {
        const Site site(sampleLog());
        site.directory.write(u"html"_s, "a file");
        const QString error = errorOf([&] { site.write(); });
        QVERIFY2(error.startsWith(u"Run-time error: Device I/O error\nCreating the directory "_s
                     + site.directory.file(u"html"_s)),
            qPrintable(error));
        QCOMPARE(site.directory.read(u"html"_s), "a file"_ba);
    }

    void aRowWithoutADateStopsTheExportWhereItIsMet()
    {
        // Row 1 is met when August is closed, because its page looks at all rows.
        const Site site =
            siteOfRows({row(u"no date"_s), row(u"01/07/2010"_s), row(u"01/08/2010"_s), row(u"02/08/2010"_s)});
        QCOMPARE(errorOf([&] { site.write(); }),
            u"Run-time error: Type mismatch\nExporting row 1 of the log: \"no date\" is not a date and time"_s);
        QCOMPARE(site.pageNames(), QStringList {u"quillon_mapview.htm"_s});
    }

    void monthsWrittenBeforeTheRowWithoutADateStay()
    {
        const Site site =
            siteOfRows({row(u"no date"_s), row(u"01/07/2010"_s), row(u"01/08/2010"_s), row(u"02/08/2010"_s)});
        site.directory.write(u"quillon_log.template"_s, "no rows here");
        QVERIFY(!errorOf([&] { site.write(); }).isEmpty());
        QCOMPARE(site.pageNames(), (QStringList {u"quillon_log_2010-Aug.htm"_s, u"quillon_mapview.htm"_s}));
    }

    void everyCellIsReadAFixedNumberOfTimes()
    {
        QList<QStringList> rows;
        for (int i = 0; i < 500; ++i) {
            rows.append(row(u"%1/%2/2010"_s.arg(1 + i % 28).arg(1 + i % 2)));
        }
        const Site site = siteOfRows(rows);
        site.write();
        QCOMPARE(site.page(u"quillon_logindex.htm"_s).count("<tr>"), 499);
    }

    void filesThatDoNotChangeAreLeftAlone()
    {
        const Site site(sampleLog());
        site.write();
        site.directory.write(
            u"html/quillon.kml"_s, golden(u"html_quillon.kml"_s).replace("Langenberg", "langenberg"));
        site.directory.write(u"html/quillon_logindex.htm"_s, "short");
        const auto before = site.pages();
        FailingCalls nothingToWrite(1);
        QVERIFY(!errorOf([&] { site.write(nothingToWrite); }).isEmpty());
        QCOMPARE(site.pages(), before);
        site.write();
        QCOMPARE(site.page(u"quillon.kml"_s), golden(u"html_quillon.kml"_s));
        QCOMPARE(site.page(u"quillon_logindex.htm"_s), golden(u"quillon_logindex.htm"_s));
        FailingCalls none(1);
        site.write(none);
        QVERIFY(!none.wasCalled());
    }

    void whatAKilledExportLeftIsRemoved()
    {
        const Site site(sampleLog());
        site.write();
        const auto before = site.pages();
        // Beside a page that does not change, and of a month that is no longer in the log.
        site.directory.write(u"html/.quillon_log_2010-Jul.htm.new"_s, "half");
        site.directory.write(u"html/.quillon_log_1999-Jan.kml.new"_s, "half");
        site.write();
        QCOMPARE(site.pages(), before);
    }

    void aFailingDiskLeavesEachFileOldOrNew()
    {
        const Site oldSite(sampleLog());
        Logbook changed = sampleLog();
        changeEntry(changed, 3, [](LogEntry &entry) {
            entry.transmitter = u"Langenberg"_s;
            entry.country = u"D"_s;
        });
        changeEntry(changed, 5, [](LogEntry &entry) { entry.country = u"E"_s; });
        const Site newSite(changed);
        oldSite.write();
        newSite.write();
        const QMap<QString, QByteArray> before = oldSite.pages();
        const QMap<QString, QByteArray> after = newSite.pages();
        for (int failing = 1;; ++failing) {
            const Site site(changed);
            for (auto file = before.begin(); file != before.end(); ++file) {
                site.directory.write(u"html/"_s + file.key(), file.value());
            }
            FailingCalls calls(failing);
            const QString error = errorOf([&] { site.write(calls); });
            const QMap<QString, QByteArray> now = site.pages();
            for (auto file = now.begin(); file != now.end(); ++file) {
                QVERIFY2(file.value() == before.value(file.key(), "none")
                        || file.value() == after.value(file.key(), "none"),
                    qPrintable(file.key()));
            }
            if (!calls.hasFailed()) {
                QCOMPARE(error, QString());
                QCOMPARE(now, after);
                QVERIFY(failing > 50);
                break;
            }
            QVERIFY2(error.startsWith(u"Run-time error: Disk full\n"_s), qPrintable(error));
        }
    }
};

QTEST_GUILESS_MAIN(TestWebPages)
#include "tst_webpages.moc"
