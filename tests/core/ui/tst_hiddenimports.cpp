#include "core/ui/importingwindow.h"

#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

void clickLink(MainWindow &window)
{
    auto *link = window.find<QToolButton>("statusLink");
    QVERIFY(link->isVisible());
    QCOMPARE(link->text(), u"Show"_s);
    QTest::mouseClick(link, Qt::LeftButton);
}

void importSpy(ImportingWindow &window)
{
    const importRDSSpy *spy = window.openSpy(u"12/06/2010"_s);
    window.answers.press(QMessageBox::Ok);
    ImportingWindow::press(spy, u"Command3"_s);
}

} // namespace

/// What an import brings although the filter hides it is said, with a way to see it.
class TestHiddenImports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ofRdsdx();
    void ofRdsSpy();
    void ofAFile();
    void whatIsShownIsNotToldAsHidden();
};

void TestHiddenImports::ofRdsdx()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s,
        "  Freq PI   PS       Time    ITU Station|Remarks\r\n"
        "  98.1 C2A2 NARODNI  1610 05 HRV NARODNI, Biokovo|\r\n"
        "  98.5 E201 RNE1     1612 05 E   RNE, Madrid|\r\n"
        "  98.9 C2A3 DRUGI    1613 05 HRV DRUGI, Biokovo|\r\n");
    window.start(oldEntry);
    window.type("filterText", u"itu:E"_s);
    window.importDx();
    QCOMPARE(window.piCodes(), (QStringList {u"E201"_s, u"D3C3"_s}));
    QCOMPARE(window.text("status"), u"Import of 20100612.txt: 3 imported, 2 of them the filter hides"_s);
    clickLink(window);
    QCOMPARE(window.text("filterText"), QString());
    QCOMPARE(window.piCodes(), (QStringList {u"C2A2"_s, u"E201"_s, u"C2A3"_s, u"D3C3"_s}));
    QCOMPARE(window.grid().row(), 1);
}

void TestHiddenImports::ofRdsSpy()
{
    ImportingWindow window;
    window.spy(u"2010-06-12 18-22-05 F201 FIP.txt"_s);
    window.spy(u"2010-06-12 18-30-05 F202 INTER.txt"_s);
    window.start(oldEntry);
    window.type("filterText", u"itu:E"_s);
    importSpy(window);
    QCOMPARE(window.piCodes(), QStringList {u"D3C3"_s});
    QCOMPARE(window.text("status"), u"RDS Spy import: 2 imported, 0 refused, 2 of them the filter hides"_s);
    clickLink(window);
    QCOMPARE(window.piCodes(), (QStringList {u"D3C3"_s, u"F201"_s, u"F202"_s}));
    QCOMPARE(window.grid().row(), 2);
}

void TestHiddenImports::ofAFile()
{
    ImportingWindow window;
    window.directory.write(u"in/a.csv"_s,
        "Date/Time,PI Code,Freq,Country,Notes\r\n"
        "2010-06-12 18:40:00,F201,90.0,F,\r\n2010-06-12 18:41:00,E202,91.0,E,\r\n");
    window.start(oldEntry);
    window.type("filterText", u"itu:E"_s);
    window.importFileAt(window.directory.file(u"in/a.csv"_s));
    QCOMPARE(window.piCodes(), (QStringList {u"D3C3"_s, u"E202"_s}));
    QCOMPARE(window.text("status"),
        u"Import of a.csv: 2 added, 0 completed, 0 already there, 0 refused, 1 of them the filter hides"_s);
    clickLink(window);
    QCOMPARE(window.grid().rows(), 4);
    QCOMPARE(window.grid().row(), 2);
}

void TestHiddenImports::whatIsShownIsNotToldAsHidden()
{
    ImportingWindow window;
    window.directory.write(u"dx/20100612.txt"_s,
        "  Freq PI   PS       Time    ITU Station|Remarks\r\n"
        "  98.5 E201 RNE1     1612 05 E   RNE, Madrid|\r\n");
    window.spy(u"2010-06-12 18-30-05 F202 INTER.txt"_s);
    window.start(oldEntry);
    window.type("filterText", u"itu:E"_s);
    window.importDx();
    QVERIFY(!window.text("status").contains(u"hides"_s));
    window.type("filterText", u"freq<99"_s);
    importSpy(window);
    QCOMPARE(window.text("status"), u"RDS Spy import: 1 imported, 0 refused"_s);
    QVERIFY(!window.find<QToolButton>("statusLink")->isVisible());
}

QTEST_MAIN(TestHiddenImports)
#include "tst_hiddenimports.moc"
