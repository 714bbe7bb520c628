#include "core/ui/dialog1.h"
#include "loggingwindow.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

/// Texts from elsewhere hold line breaks. A line of the files is one entry all the same.
class TestPaste : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFieldTakesOneLine_data();
    void aFieldTakesOneLine();
    void whatIsPastedIntoTheMiddleLeavesTheCursorBehindIt();
    void everyFieldOfAnEntryStaysOnItsLine_data();
    void everyFieldOfAnEntryStaysOnItsLine();
    void quickAddTakesOneLine();

private:
    static void paste(QWidget *field, const QString &text);
};

void TestPaste::paste(QWidget *field, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
}

void TestPaste::aFieldTakesOneLine_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("taken");
    QTest::newRow("a line with its end") << u"FIP\r\n"_s << u"FIP"_s;
    QTest::newRow("several ends") << u"FIP\n\n\r"_s << u"FIP"_s;
    QTest::newRow("two lines") << u"RADIO\r\nUNO"_s << u"RADIO UNO"_s;
    QTest::newRow("a lone LF") << u"RADIO\nUNO"_s << u"RADIO UNO"_s;
    QTest::newRow("a lone CR") << u"RADIO\rUNO"_s << u"RADIO UNO"_s;
    QTest::newRow("a tab") << u"RADIO\tUNO"_s << u"RADIO UNO"_s;
    QTest::newRow("blanks stay") << u" RADIO "_s << u" RADIO "_s;
}

void TestPaste::aFieldTakesOneLine()
{
    QFETCH(QString, pasted);
    QFETCH(QString, taken);
    MainWindow window;
    window.start();
    paste(window.find<QLineEdit>("Text8"), pasted);
    QCOMPARE(window.text("Text8"), taken);
    paste(window.find<QComboBox>("Combo3")->lineEdit(), pasted);
    QCOMPARE(window.find<QComboBox>("Combo3")->currentText(), taken);
}

void TestPaste::whatIsPastedIntoTheMiddleLeavesTheCursorBehindIt()
{
    MainWindow window;
    window.start();
    auto *field = window.find<QLineEdit>("Text5");
    field->setText(u"AD"_s);
    field->setCursorPosition(1);
    paste(field, u"B\r\nC"_s);
    QTest::keyClicks(field, u"x"_s);
    QCOMPARE(field->text(), u"AB CxD"_s);
}

void TestPaste::everyFieldOfAnEntryStaysOnItsLine_data()
{
    QTest::addColumn<QString>("field");
    for (const char *field : {"Text1", "Text8", "Text9", "Text5", "Text6", "Text7", "Text10", "uid"}) {
        QTest::newRow(field) << QString::fromLatin1(field);
    }
}

// The text comes here without keys, as it does from a search result or an import.
void TestPaste::everyFieldOfAnEntryStaysOnItsLine()
{
    QFETCH(QString, field);
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    window.click("Command2");
    typeEntry(window);
    window.find<QLineEdit>(field)->setText(u"1\r\n2\n3"_s);
    window.find<QLineEdit>("Text2")->setText(u"01/07/2010 09:05:00"_s);
    Q_EMIT window.find<QPushButton>("Command1")->clicked();
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.logbook().count('\n'), 2);
    QCOMPARE(window.transmitterFile().count('\n'), 2);
    window.start();
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.form().log().count(), 2);
    QCOMPARE(window.form().transmitters().count(), 2);
    QVERIFY(window.logbook().contains("1 2 3") || window.transmitterFile().contains("1 2 3"));
}

void TestPaste::quickAddTakesOneLine()
{
    MainWindow window;
    window.start();
    window.click("Command14");
    auto *quickAdd = window.find<Dialog1>("Dialog1");
    auto *name = quickAdd->findChild<QLineEdit *>(u"Text3"_s);
    paste(name, u"RADIO\r\nUNO\r\n"_s);
    QCOMPARE(name->text(), u"RADIO UNO"_s);
}

QTEST_MAIN(TestPaste)
#include "tst_paste.moc"
