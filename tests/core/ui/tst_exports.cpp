#include "core/ui/exportingwindow.h"
#include "ui/version.h"

#include <QDir>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

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
        (QStringList {u"quillon.kml"_s, u"quillon.kml.js"_s, u"quillon_log_2010-Jul.htm"_s,
            u"quillon_log_2010-Jul.kml"_s, u"quillon_log_2010-Jul.kml.js"_s, u"quillon_log_2010-Jun.htm"_s,
            u"quillon_logindex.htm"_s, u"quillon_mapview.htm"_s}));
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

QTEST_MAIN(TestExports)
#include "tst_exports.moc"
