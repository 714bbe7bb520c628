#include "exportingwindow.h"

#include <QDir>
#include <QHash>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// The files that an export leaves, but for what tells the time.
QHash<QString, QByteArray> exportAll(ExportingWindow &window)
{
    window.trigger("menuExportGoogleLog");
    window.trigger("menuExportWebPage");
    window.answers.type(u"01/01/2010"_s);
    window.answers.type(u"31/12/2010"_s);
    window.trigger("menuExportEmail");
    (void)window.answers.takeTexts();
    QHash<QString, QByteArray> files;
    const QStringList names = window.directory.names();
    for (const QString &name : names) {
        if (name.endsWith(u".htm"_s) || name.endsWith(u".kml"_s) || name.endsWith(u".txt"_s)) {
            files.insert(name, window.directory.read(name));
        }
    }
    const QStringList pages = QDir(window.directory.file(u"html"_s)).entryList(QDir::Files);
    for (const QString &name : pages) {
        files.insert(u"html/"_s + name, window.directory.read(u"html/"_s + name));
    }
    return files;
}

} // namespace

/// What is exported does not depend on how the grid is sorted.
class TestExportOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyHeadingLeavesTheFilesAsTheyWere_data();
    void everyHeadingLeavesTheFilesAsTheyWere();
    void anUpdatedRowIsExportedInItsPlace();
};

void TestExportOrder::everyHeadingLeavesTheFilesAsTheyWere_data()
{
    QTest::addColumn<int>("column");
    for (const LogColumn &column : logFields()) {
        QTest::newRow(column.caption.toUtf8().constData()) << static_cast<int>(column.column);
    }
}

void TestExportOrder::everyHeadingLeavesTheFilesAsTheyWere()
{
    QFETCH(int, column);
    ExportingWindow window("HOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\n");
    window.writeTemplates();
    window.click("Command10");
    const auto before = exportAll(window);
    QVERIFY(before.size() >= 8);
    window.form().grab();
    window.clickHeading(column);
    window.clickHeading(column);
    const auto after = exportAll(window);
    QCOMPARE(after, before);
}

void TestExportOrder::anUpdatedRowIsExportedInItsPlace()
{
    ExportingWindow window;
    window.writeTemplates();
    window.clickRow(4);
    window.type("Text2", u"1/2/2009 8:00"_s);
    window.click("Command3");
    window.trigger("menuExportWebPage");
    // The last row is met first, whatever its date says now.
    const QByteArray index = window.directory.read(u"html/quillon_logindex.htm"_s);
    QVERIFY(index.indexOf("Feb-2009") > 0);
    QVERIFY(index.indexOf("Feb-2009") < index.indexOf("Jul-2010"));
}

QTEST_MAIN(TestExportOrder)
#include "tst_exportorder.moc"
