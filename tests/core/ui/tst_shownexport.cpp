#include "core/ui/exportingwindow.h"
#include "support/savedialog.h"
#include "ui/filterbar.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QToolButton>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

/// Export, Shown Receptions.
class TestShownExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void theShownRowsAreWrittenAsTheGridHasThem();
    void chosenRowsAreWrittenAlone();
    void eachKindIsWritten_data();
    void eachKindIsWritten();
    void theKindGivesTheNameItsEnd();
    void theNextOneIsOfferedTheSamePlace();
    void whatHasNoPlaceIsCounted();
    void nothingShownIsTold();
    void aFailedWriteIsToldAndLeavesTheOldFile();
    void theFileOpensFromTheStatusLine();
    void cancelledItWritesNothing();
};

void TestShownExport::theShownRowsAreWrittenAsTheGridHasThem()
{
    ExportingWindow window;
    window.grid().sortBy(LogRows::Sorting {GridColumn::Freq, true});
    window.find<FilterBar>("filterBar")->setText(u"date:2010-07"_s);
    for (int column = 3; column < allColumnCount; ++column) {
        window.grid().setColumnHidden(column, true);
    }
    window.grid().horizontalHeader()->moveSection(2, 0);
    QCOMPARE(window.grid().rows(), 3);
    saveAs(window.answers, in(window, u"a.csv"_s));
    window.key(Qt::Key_E, Qt::ControlModifier);
    QTRY_COMPARE(window.directory.read(u"a.csv"_s),
        "Freq,Date/Time,PI Code\r\n89,2010-07-05T21:40:00Z,D382\r\n87.6,2010-07-05T21:34:10Z,E201\r\n"_ba);
    QCOMPARE(window.answers.seen().front().title, u"Export 2 receptions (shown)"_s);
    QCOMPARE(window.text("status"), u"2 receptions exported to "_s + in(window, u"a.csv"_s));
}

void TestShownExport::chosenRowsAreWrittenAlone()
{
    ExportingWindow window;
    auto *chosen = window.grid().selectionModel();
    chosen->select(
        window.grid().model()->index(0, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    chosen->select(
        window.grid().model()->index(2, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    saveAs(window.answers, in(window, u"a.csv"_s));
    window.trigger("menuExportShown");
    const QByteArray csv = window.directory.read(u"a.csv"_s);
    // A heading, two rows, and the line break of a note.
    QCOMPARE(csv.count("\r\n"), 4);
    QVERIFY(csv.contains("F202") && csv.contains("E201"));
    QCOMPARE(window.answers.seen().front().title, u"Export 2 receptions (chosen)"_s);
}

void TestShownExport::eachKindIsWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("begin");
    QTest::newRow("CSV") << u"a.csv"_s << "Date/Time,PI Code,"_ba;
    QTest::newRow("GeoJSON") << u"a.geojson"_s << "{\"type\":\"FeatureCollection\""_ba;
    QTest::newRow("KML") << u"a.kml"_s << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"_ba;
    QTest::newRow("text") << u"a.txt"_s << "Date/Time "_ba;
    QTest::newRow("page") << u"a.html"_s << "<!DOCTYPE html>"_ba;
}

void TestShownExport::eachKindIsWritten()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, begin);
    ExportingWindow window;
    window.directory.write(name, "an older file");
    saveAs(window.answers, in(window, name));
    window.answers.press(QMessageBox::Yes);
    window.trigger("menuExportShown");
    const QByteArray bytes = window.directory.read(name);
    QVERIFY2(bytes.startsWith(begin), bytes.constData());
    QVERIFY(bytes.contains("K\xC3\xB6ln"));
}

void TestShownExport::theKindGivesTheNameItsEnd()
{
    ExportingWindow window;
    saveAs(window.answers, in(window, u"page"_s), 4);
    window.trigger("menuExportShown");
    QVERIFY(window.directory.read(u"page.html"_s).startsWith("<!DOCTYPE html>"));
    // A name of another kind's end is taken at its word, whatever the list of kinds says.
    saveAs(window.answers, in(window, u"b.geojson"_s), 0);
    window.trigger("menuExportShown");
    QVERIFY(window.directory.read(u"b.geojson"_s).startsWith("{"));
}

void TestShownExport::theNextOneIsOfferedTheSamePlace()
{
    ExportingWindow window;
    saveAs(window.answers, in(window, u"first.kml"_s));
    window.trigger("menuExportShown");
    QString offered;
    QString kind;
    window.answers.doing([&](QWidget *box) {
        auto *dialog = qobject_cast<QFileDialog *>(box);
        offered = dialog->directory().filePath(dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->text());
        kind = dialog->selectedNameFilter();
        dialog->reject();
    });
    window.trigger("menuExportShown");
    QCOMPARE(offered, in(window, u"first.kml"_s));
    QVERIFY(kind.startsWith(u"KML"_s));
}

void TestShownExport::whatHasNoPlaceIsCounted()
{
    ExportingWindow window;
    saveAs(window.answers, in(window, u"a.kml"_s));
    window.trigger("menuExportShown");
    QCOMPARE(window.text("status"),
        u"4 receptions exported to %1; left out, as their sites have no place: 2"_s.arg(
            in(window, u"a.kml"_s)));
}

void TestShownExport::nothingShownIsTold()
{
    ExportingWindow window;
    window.find<FilterBar>("filterBar")->setText(u"nowhere"_s);
    window.trigger("menuExportShown");
    QCOMPARE(window.text("status"), u"No receptions are shown: there is nothing to export"_s);
    QVERIFY(window.answers.seen().isEmpty());
}

void TestShownExport::aFailedWriteIsToldAndLeavesTheOldFile()
{
    ExportingWindow window;
    window.directory.write(u"a.csv"_s, "old");
    saveAs(window.answers, in(window, u"a.csv"_s));
    window.answers.press(QMessageBox::Yes);
    window.calls.failWrite = ENOSPC;
    window.trigger("menuExportShown");
    QCOMPARE(
        window.answers.takeTexts().last(), u"Run-time error: Disk full\nWriting "_s + in(window, u"a.csv"_s));
    QCOMPARE(window.directory.read(u"a.csv"_s), "old"_ba);
    QVERIFY(window.isCalm());
}

void TestShownExport::theFileOpensFromTheStatusLine()
{
    ExportingWindow window;
    saveAs(window.answers, in(window, u"a.html"_s));
    window.trigger("menuExportShown");
    QCOMPARE(window.opened.take(), QStringList());
    QTest::mouseClick(window.find<QWidget>("status")->findChild<QToolButton *>(), Qt::LeftButton);
    QCOMPARE(window.opened.take(), QStringList {in(window, u"a.html"_s)});
}

void TestShownExport::cancelledItWritesNothing()
{
    ExportingWindow window;
    const QStringList before = window.directory.names();
    window.answers.cancel();
    window.trigger("menuExportShown");
    QCOMPARE(window.directory.names(), before);
}

QTEST_MAIN(TestShownExport)
#include "tst_shownexport.moc"
