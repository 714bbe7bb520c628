#include "core/ui/importingwindow.h"

#include <QAction>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

QStringList rows(MainWindow &window)
{
    QStringList all;
    for (int row = 1; row < window.grid().rows(); ++row) {
        all += window.row(row);
    }
    return all;
}

} // namespace

/// An import is one step, whatever it brought.
class TestUndoImports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anImportIsTakenBackAndMadeAgain_data();
    void anImportIsTakenBackAndMadeAgain();
};

void TestUndoImports::anImportIsTakenBackAndMadeAgain_data()
{
    using Work = std::function<void(ImportingWindow &)>;
    QTest::addColumn<Work>("work");
    QTest::newRow("RDS Spy") << Work([](ImportingWindow &window) {
        window.spy(u"2010-06-12 00-30-00 D3C3 RADIO 1.txt"_s);
        window.spy(u"2010-06-12 23-59-59 F201 FIP.txt"_s);
        window.spy(u"2010-06-12 20-59-59 F202 INTER.txt"_s);
        ImportingWindow::press(window.openSpy(u"12/06/2010"_s), u"Command3"_s);
    });
    QTest::newRow("RDSDX") << Work([](ImportingWindow &window) {
        window.directory.write(u"dx/20100612.txt"_s,
            "  Freq PI   PS       Time    ITU Station|Remarks\r\n"
            "  98.1 C2A2 NARODNI  1610 05 HRV NARODNI, Biokovo|\r\n"
            " 101.3 5279 VIRGIN   1615 38 I   VIRGIN,Monte|stereo\r\n");
        window.answers.press(QMessageBox::Yes);
        ImportingWindow::press(window.openDx(), u"OKButton"_s);
    });
}

void TestUndoImports::anImportIsTakenBackAndMadeAgain()
{
    QFETCH(std::function<void(ImportingWindow &)>, work);
    const QByteArray sites = "Bilbao|E|43.2630|-2.9350|812.4|\r\n";
    ImportingWindow window;
    window.start(oldEntry, sites);
    const QStringList before = rows(window);
    work(window);
    const QStringList after = rows(window);
    const QByteArray log = window.logbook();
    QVERIFY(after.size() >= before.size() + 2);
    const auto *undo = window.find<QAction>("menuEditUndo");
    const auto *redo = window.find<QAction>("menuEditRedo");
    QVERIFY2(undo->text().remove(u'&').startsWith(u"Undo Import"_s), qPrintable(undo->text()));
    for (int turn = 0; turn < 2; ++turn) {
        window.trigger("menuEditUndo");
        QVERIFY(!undo->isEnabled());
        QCOMPARE(rows(window), before);
        QCOMPARE(window.logbook(), oldEntry);
        QCOMPARE(window.transmitterFile(), sites);
        window.trigger("menuEditRedo");
        QVERIFY(!redo->isEnabled());
        QCOMPARE(rows(window), after);
        QCOMPARE(window.logbook(), log);
    }
}

QTEST_MAIN(TestUndoImports)
#include "tst_undo_imports.moc"
