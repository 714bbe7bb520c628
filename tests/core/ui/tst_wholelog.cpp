#include "exportingwindow.h"
#include "fmlistwindow.h"

#include <QHash>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::standin;
using namespace quillon::test;

namespace {

// All that the exports of a log write, by the names of the files.
QHash<QString, QByteArray> exportsWith(const QString &filter)
{
    ExportingWindow window("HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n");
    window.writeTemplates();
    window.find<QLineEdit>("filterText")->setText(filter);
    for (const char *action : {"menuExportGoogleTX", "menuExportGoogleLog", "menuExportWebPage"}) {
        window.trigger(action);
    }
    window.answers.type(u"01/06/2010 00:00:00"_s);
    window.answers.type(u"31/07/2010 00:00:00"_s);
    window.trigger("menuExportEmail");
    QHash<QString, QByteArray> files;
    const QStringList names = window.directory.names();
    for (const QString &name : names) {
        // Copies are dated, and the folder of the log holds no other files that know the time.
        if (name.endsWith(u".kml"_s) || name.endsWith(u".txt"_s) || name.contains(u".htm"_s)) {
            files.insert(name, window.directory.read(name));
        }
    }
    (void)window.opened.take();
    return files;
}

} // namespace

/// What goes by the whole log, whatever the filter shows.
class TestWholeLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exportsTakeNoNoticeOfTheFilter();
    void theAutomaticSearchTakesNoNoticeOfTheFilter();
    void theUploadTakesNoNoticeOfTheFilter();
};

void TestWholeLog::exportsTakeNoNoticeOfTheFilter()
{
    const QHash<QString, QByteArray> all = exportsWith({});
    for (const QString &name : {u"tx.kml"_s, u"quillon.kml"_s, u"quillon.txt"_s}) {
        QVERIFY2(all.contains(name), qPrintable(name));
    }
    QVERIFY(all.size() > 3);
    const QHash<QString, QByteArray> filtered = exportsWith(u"itu:E"_s);
    QCOMPARE(filtered.keys().size(), all.keys().size());
    for (auto file = all.cbegin(); file != all.cend(); ++file) {
        QVERIFY(!file.value().isEmpty());
        QCOMPARE(filtered.value(file.key()), file.value());
    }
}

void TestWholeLog::theAutomaticSearchTakesNoNoticeOfTheFilter()
{
    FmlistWindow window;
    window.open(unknown + several);
    window.find<QLineEdit>("filterText")->setText(u"itu:E"_s);
    QCOMPARE(window.piCodes(), QStringList());
    window.searchAutomatically();
    QCOMPARE(window.logbook(), unknownAfter + severalAfter);
}

void TestWholeLog::theUploadTakesNoNoticeOfTheFilter()
{
    const QByteArray other = QByteArray(identified).replace(" 13:", " 14:");
    QList<QByteArray> logs;
    QList<qsizetype> requests;
    for (const QString &filter : {QString(), u"itu:E notes:nothing"_s}) {
        FmlistWindow window;
        window.open(identified + other, "OMID=7\r\n");
        window.find<QLineEdit>("filterText")->setText(filter);
        window.trigger("menuFMListUploadLogs");
        logs += window.logbook();
        requests += window.asked().size();
    }
    QCOMPARE(requests, (QList<qsizetype> {2, 2}));
    QCOMPARE(logs[1], logs[0]);
    QVERIFY(logs[0] != identified + other);
}

QTEST_MAIN(TestWholeLog)
#include "tst_wholelog.moc"
