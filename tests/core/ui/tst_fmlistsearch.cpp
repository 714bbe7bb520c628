#include "fmlistwindow.h"

#include <QApplication>
#include <QHeaderView>
#include <QTcpServer>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::standin;
using namespace quillon::test;

namespace {

const QByteArray oneEntry = logLine("D3C1", "12/06/2010 18:22:05", "87.6", "RADIO_1", "TBD", "");
const QByteArray twoEntries = oneEntry + logLine("F201", "12/06/2010 18:30:00", "90.0", "FIP", "F", "");

const QString question = u"Update record with search results?"_s;
const QString berlin = u"87.6\tD3C1\tRADIO_1\tD\tBerlin (Alex)\t100\t52.5208\t13.4094\t4711"_s;

bool isBusy()
{
    const QCursor *cursor = QApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::WaitCursor;
}

// What a search leaves when it is over, well or not.
void checkEverythingIsBack(FmlistWindow &window)
{
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(window.enabled("Command11"));
    QVERIFY(window.results().isVisible());
    QVERIFY(window.results().updatesEnabled());
    QVERIFY(!window.list().isVisible());
}

QByteArray answerOf(const QByteArrayList &lines)
{
    return lines.join('\n') + '\n';
}

} // namespace

class TestFmlistSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window = std::make_unique<FmlistWindow>(); }
    void cleanup() { m_window.reset(); }

    void theRequestByteForByte_data();
    void theRequestByteForByte();
    void theRequestOfAnEntryThatWasLoaded();
    void withoutAFrequencyNothingIsAskedAndAllIsCleared();
    void withoutPiAndNameNothingIsAskedAndAllIsCleared();
    void whileItRunsThePointerIsBusyAndTheButtonOff();
    void theListsTakeTurns();
    void nineValuesInColumns();
    void theTransmitterIsThePieceAfterTheFirstComma_data();
    void theTransmitterIsThePieceAfterTheFirstComma();
    void characterReferencesAreStripped();
    void errorsOfTheService_data();
    void errorsOfTheService();
    void threeLinesAreThreeMatches();
    void withoutAFinalLineFeedTheLastLineIsLost();
    void theFirstRowWithThePiIsHighlighted_data();
    void theFirstRowWithThePiIsHighlighted();
    void sortingKeepsTheHighlightedResult();
    void theQuestionHasNoAsDefault();
    void noLeavesEverythingAsItIs();
    void yesUpdatesTheChosenEntry();
    void yesAddsTheEntryThatIsBeingTyped();
    void enterOnAResultTakesItToo();
    void withNothingSelectedOnlyTheFormIsFilled();
    void aDeletedRowCanStillBeWrittenOver();
    void failures_data();
    void failures();
    void noServer();
    void aSearchAfterAFailureWorks();
    void aSecondRequestIsRefusedAndTheFirstGoesOn();
    void whatIsTypedWhileItRunsIsKept();
    void anotherRowChosenWhileItRunsGetsTheResult();
    void closingTheWindowEndsTheRequest();
    void closingTheWindowEndsTheProgramWithCodeZero();

private:
    void search();

    std::unique_ptr<FmlistWindow> m_window;
};

// Searches for the only or last entry.
void TestFmlistSearch::search()
{
    m_window->clickRow(m_window->grid().rows() - 1);
    m_window->click("Command11");
}

void TestFmlistSearch::theRequestByteForByte_data()
{
    QTest::addColumn<QString>("frequency");
    QTest::addColumn<QString>("pi");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("query");
    QTest::newRow("all three") << u"87.6"_s << u"D3C1"_s << u"FIP"_s << "freq=87.6&pi=D3C1&ps=FIP"_ba;
    QTest::newRow("blank in the name")
        << u"87.6"_s << u"D3C1"_s << u"RADIO 1"_s << "freq=87.6&pi=D3C1&ps=RADIO%5F1"_ba;
    QTest::newRow("PI in lower case with blanks")
        << u"87.6"_s << u" d3c1 "_s << u""_s << "freq=87.6&pi=D3C1"_ba;
    QTest::newRow("no PI") << u"87.6"_s << u""_s << u"FIP"_s << "freq=87.6&ps=FIP"_ba;
    QTest::newRow("frequency as typed") << u"087,60"_s << u"D3C1"_s << u""_s << "freq=087,60&pi=D3C1"_ba;
    QTest::newRow("name of the code page")
        << u"87.6"_s << u""_s << u"\u00d6 3+~"_s << "freq=87.6&ps=%D6%5F3%2B%7E"_ba;
    QTest::newRow("character beyond the code page")
        << u"87.6"_s << u""_s << u"\u4e2d"_s << "freq=87.6&ps=%3F"_ba;
}

void TestFmlistSearch::theRequestByteForByte()
{
    QFETCH(QString, frequency);
    QFETCH(QString, pi);
    QFETCH(QString, name);
    QFETCH(QByteArray, query);
    m_window->open();
    m_window->click("Command2");
    m_window->fill({u"Text9"_s, frequency, u"Text1"_s, pi, u"Text8"_s, name});
    m_window->click("Command11");
    QCOMPARE(m_window->asked(), QByteArrayList {"GET /rdslookup.php?" + query + " HTTP/1.1"});
    QVERIFY(m_window->service.requests().first().body.isEmpty());
}

void TestFmlistSearch::theRequestOfAnEntryThatWasLoaded()
{
    m_window->open(oneEntry);
    search();
    QCOMPARE(
        m_window->asked(), QByteArrayList {"GET /rdslookup.php?freq=87.6&pi=D3C1&ps=RADIO%5F1 HTTP/1.1"});
    QCOMPARE(m_window->text("Text8"), u"RADIO_1"_s);
}

void TestFmlistSearch::withoutAFrequencyNothingIsAskedAndAllIsCleared()
{
    m_window->open(oneEntry);
    search();
    QCOMPARE(m_window->results().count(), 1);
    m_window->type("Text9", {});
    m_window->click("Command11");
    QCOMPARE(m_window->service.requests().size(), 1);
    QCOMPARE(m_window->results().count(), 0);
    QCOMPARE(m_window->status(), QString());
    checkEverythingIsBack(*m_window);
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
}

void TestFmlistSearch::withoutPiAndNameNothingIsAskedAndAllIsCleared()
{
    m_window->open(oneEntry);
    search();
    m_window->fill({u"Text1"_s, {}, u"Text8"_s, {}});
    m_window->click("Command11");
    QCOMPARE(m_window->service.requests().size(), 1);
    QCOMPARE(m_window->results().count(), 0);
    QCOMPARE(m_window->status(), QString());
    checkEverythingIsBack(*m_window);
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
}

void TestFmlistSearch::whileItRunsThePointerIsBusyAndTheButtonOff()
{
    m_window->open(oneEntry);
    m_window->answerSlowly();
    bool looked = false;
    m_window->duringRequest(1, [&] {
        looked = true;
        QVERIFY(isBusy());
        QVERIFY(!m_window->enabled("Command11"));
        QVERIFY(m_window->results().isVisible());
        QVERIFY(!m_window->list().isVisible());
        QCOMPARE(m_window->results().count(), 0);
        QCOMPARE(m_window->status(), QString());
    });
    search();
    QVERIFY(looked);
    checkEverythingIsBack(*m_window);
}

void TestFmlistSearch::theListsTakeTurns()
{
    m_window->open(oneEntry);
    QVERIFY(m_window->list().isVisible());
    QVERIFY(!m_window->results().isVisible());
    search();
    checkEverythingIsBack(*m_window);
    m_window->click("Command4");
    QVERIFY(m_window->list().isVisible());
    QVERIFY(!m_window->results().isVisible());
}

void TestFmlistSearch::nineValuesInColumns()
{
    m_window->open(oneEntry);
    m_window->answerWith(
        answerOf({"87.65;D3C1;RADIO 1;D;Hessen, Rimberg;12.34;50.123456;-8.00004;17;more;fields",
            "87,6;;;;no comma;x;;1e2;", "104.96;a;b;c;a, b ,c;0.25;-0.00004;179.99996; 9 "}));
    search();
    QCOMPARE(m_window->resultRows(),
        QStringList({u"87.7\tD3C1\tRADIO 1\tD\tRimberg\t12.3\t50.1235\t-8\t17"_s,
            u"87.6\t\t\t\t\t-1\t-1\t100\t"_s, u"105\ta\tb\tc\tb\t0.2\t0\t180\t 9 "_s}));
    QCOMPARE(m_window->status(), u"FMList Search: 3 matches"_s);
    const QAbstractItemModel &model = *m_window->results().model();
    QStringList headings;
    for (int column = 0; column < model.columnCount(); ++column) {
        headings += model.headerData(column, Qt::Horizontal).toString();
    }
    QCOMPARE(headings,
        QStringList({u"Freq"_s, u"PI Code"_s, u"RDS Name"_s, u"Country"_s, u"Transmitter"_s, u"Power"_s,
            u"Latitude"_s, u"Longitude"_s, u"UID"_s}));
    QCOMPARE(model.index(0, 4).data().toString(), u"Rimberg"_s);
}

void TestFmlistSearch::theTransmitterIsThePieceAfterTheFirstComma_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<QString>("transmitter");
    QTest::newRow("region and site") << "D, Berlin"_ba << u"Berlin"_s;
    QTest::newRow("no comma") << "Berlin"_ba << QString();
    QTest::newRow("two commas") << "A,B,C"_ba << u"B"_s;
    QTest::newRow("of the code page") << "E, M\xE1laga (Mijas)"_ba << u"M\u00e1laga (Mijas)"_s;
}

void TestFmlistSearch::theTransmitterIsThePieceAfterTheFirstComma()
{
    QFETCH(QByteArray, location);
    m_window->open(oneEntry);
    m_window->answerWith("87.6;D3C1;X;D;" + location + ";1;2;3;4\n");
    search();
    QTEST(m_window->results().text(0).section(u'\t', 4, 4), "transmitter");
}

void TestFmlistSearch::characterReferencesAreStripped()
{
    m_window->open(oneEntry);
    m_window->answerWith("87.6;D3C1;K&#246;ln&#65;;D;N, K&#246;ln;1;2;3;4\n87.6;D3C1;X;D;a,b;1;2;3;&#124;\n");
    search();
    // The reference of two digits ends in the ";" of the fields, so that the line has one more.
    QCOMPARE(m_window->results().text(0).section(u'\t', 2, 2), u"Kln&#65"_s);
    QCOMPARE(m_window->resultRows().size(), 2);
    m_window->answerWith("87.6;D3C1;X;D;a,b;1;2;3;4&#12\n");
    m_window->click("Command11");
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->text("uid"), u"412"_s);
}

void TestFmlistSearch::errorsOfTheService_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("status");
    QTest::newRow("10001") << "Error 10001"_ba << u"FMList Search: Frequency Not provided"_s;
    QTest::newRow("10002") << "Error 10002"_ba << u"FMList Search: Frequency Not Numeric"_s;
    QTest::newRow("10003") << "Error 10003"_ba << u"FMList Search: Incorrect PI code length"_s;
    QTest::newRow("10004") << "Error 10004"_ba << u"FMList Search: Incorrect PI code values"_s;
    QTest::newRow("10005 with a line feed") << "Error 10005\n"_ba << u"FMList Search: No matches"_s;
    QTest::newRow("10006 with CR LF and blanks")
        << "Error 10006  \r\n"_ba << u"FMList Search: PI and PS parameter missing"_s;
    QTest::newRow("unknown") << "Error 10007\n"_ba << QString();
    QTest::newRow("known with more behind it") << "Error 10005 x\n"_ba << QString();
}

void TestFmlistSearch::errorsOfTheService()
{
    QFETCH(QByteArray, answer);
    m_window->open(oneEntry);
    search();
    QCOMPARE(m_window->results().count(), 1);
    m_window->answerWith(answer);
    m_window->click("Command11");
    QTEST(m_window->status(), "status");
    QCOMPARE(m_window->results().count(), 0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
    checkEverythingIsBack(*m_window);
}

void TestFmlistSearch::threeLinesAreThreeMatches()
{
    m_window->open(twoEntries);
    search();
    QCOMPARE(m_window->results().count(), 3);
    QCOMPARE(m_window->status(), u"FMList Search: 3 matches"_s);
}

void TestFmlistSearch::withoutAFinalLineFeedTheLastLineIsLost()
{
    m_window->open(twoEntries);
    m_window->service.behave({.fault = Fault::NoLf});
    search();
    QCOMPARE(m_window->results().count(), 2);
    QCOMPARE(m_window->status(), u"FMList Search: 2 matches"_s);
    m_window->answerWith("87.6;D3C1");
    m_window->click("Command11");
    QCOMPARE(m_window->results().count(), 0);
    QCOMPARE(m_window->status(), u"FMList Search: 0 matches"_s);
}

void TestFmlistSearch::theFirstRowWithThePiIsHighlighted_data()
{
    QTest::addColumn<QString>("pi");
    QTest::addColumn<int>("row");
    QTest::newRow("second of three") << u"e201"_s << 1;
    QTest::newRow("the first has it") << u"5201"_s << 0;
    QTest::newRow("none has it: the last") << u"5200"_s << 2;
    QTest::newRow("no PI: the last") << QString() << 2;
}

void TestFmlistSearch::theFirstRowWithThePiIsHighlighted()
{
    QFETCH(QString, pi);
    m_window->open();
    m_window->answerWith("95;5201;A;I;a,b;1;2;3;1\n95;E201;A;I;a,b;1;2;3;2\n95;5202;A;I;a,b;1;2;3;3\n");
    m_window->click("Command2");
    m_window->fill({u"Text9"_s, u"95.0"_s, u"Text1"_s, pi, u"Text8"_s, u"RAI 1"_s});
    m_window->click("Command11");
    QTEST(m_window->results().listIndex(), "row");
    QCOMPARE(m_window->results().selectionModel()->selectedRows().size(), 1);
}

void TestFmlistSearch::sortingKeepsTheHighlightedResult()
{
    m_window->open(twoEntries);
    search();
    QCOMPARE(m_window->results().listIndex(), 0);
    const QString highlighted = m_window->results().text(0);
    QHeaderView *header = m_window->results().horizontalHeader();
    constexpr int transmitter = 4;
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
        {header->sectionViewportPosition(transmitter) + 20, header->height() / 2});
    QStringList transmitters;
    for (const QString &row : m_window->resultRows()) {
        transmitters += row.section(u'\t', transmitter, transmitter);
    }
    QCOMPARE(transmitters, QStringList({u"Brest"_s, u"Moulins"_s, u"Paris"_s}));
    QCOMPARE(m_window->results().text(m_window->results().listIndex()), highlighted);
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(1);
    QCOMPARE(m_window->text("uid"), u"503"_s);
}

void TestFmlistSearch::theQuestionHasNoAsDefault()
{
    m_window->open(oneEntry);
    search();
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.seen().size(), 1);
    const SeenDialog &box = m_window->answers.seen().first();
    QCOMPARE(box.text, question);
    QCOMPARE(box.title, u"Update Record"_s);
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.defaultButton, QMessageBox::No);
}

void TestFmlistSearch::noLeavesEverythingAsItIs()
{
    m_window->open(oneEntry);
    search();
    const QStringList fields = m_window->fields();
    m_window->answers.press(QMessageBox::No);
    m_window->doubleClickResult(0);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList({question, question}));
    QCOMPARE(m_window->fields(), fields);
    QCOMPARE(m_window->logbook(), oneEntry);
    QVERIFY(m_window->transmitterFile().isNull());
}

void TestFmlistSearch::yesUpdatesTheChosenEntry()
{
    m_window->open("D3C1|12/06/2010 18:22:05|Es|87.6||TBD|goodCRLFday|R 1|5|7.5|fml=multi#||\r\n"
        + logLine("F201", "12/06/2010 18:30:00", "90.0", "FIP", "F", ""));
    m_window->clickRow(1);
    m_window->type("Text8", {});
    m_window->click("Command11");
    QCOMPARE(m_window->resultRows(), QStringList {berlin});
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QCOMPARE(m_window->fields(),
        QStringList({u"Text9=87.6"_s, u"Text1=D3C1"_s, u"Text8=RADIO_1"_s, u"Text2=12/06/2010 18:22:05"_s,
            u"Combo2=Es"_s, u"Text3=good\nday"_s, u"uid=4711"_s, u"Combo3=D"_s, u"Text5=Berlin (Alex)"_s,
            u"Text6=100"_s, u"Text7=52.5208"_s, u"Text10=13.4094"_s}));
    QCOMPARE(m_window->logbook(),
        "D3C1|12/06/2010 18:22:05|Es|87.6|Berlin (Alex)|D|goodCRLFday|RADIO_1|100|7.5|fml=multi#|4711|\r\n"
            + logLine("F201", "12/06/2010 18:30:00", "90.0", "FIP", "F", ""));
    QCOMPARE(m_window->transmitterFile(), "Berlin (Alex)|D|52.5208|13.4094||\r\n"_ba);
    QCOMPARE(m_window->row(1).section(u'|', 9), u"Es|Multi|4711"_s);
}

void TestFmlistSearch::yesAddsTheEntryThatIsBeingTyped()
{
    m_window->open(oneEntry);
    m_window->click("Command2");
    m_window->fill({u"Text9"_s, u"90"_s, u"Text1"_s, u"f201"_s, u"Text2"_s, u"13/06/2010 08:00:00"_s});
    m_window->click("Command11");
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(1);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QCOMPARE(m_window->logbook(), oneEntry + "F201|13/06/2010 08:00:00||90|Paris|F||FIP|5.2|||502|\r\n");
    QCOMPARE(m_window->grid().rows(), 3);
    QCOMPARE(m_window->caption("Command2"), u"New"_s);
}

void TestFmlistSearch::enterOnAResultTakesItToo()
{
    m_window->open(oneEntry);
    search();
    m_window->results().setFocus();
    m_window->answers.press(QMessageBox::Yes);
    m_window->key(Qt::Key_Return);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QCOMPARE(m_window->text("uid"), u"4711"_s);
    QVERIFY(m_window->logbook().endsWith("|4711|\r\n"));
}

void TestFmlistSearch::withNothingSelectedOnlyTheFormIsFilled()
{
    m_window->open(oneEntry);
    m_window->click("Command2");
    m_window->fill({u"Text9"_s, u"87.6"_s, u"Text1"_s, u"D3C1"_s});
    m_window->click("Command11");
    m_window->click("Command2");
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QCOMPARE(m_window->text("uid"), u"4711"_s);
    QCOMPARE(m_window->text("Text5"), u"Berlin (Alex)"_s);
    QCOMPARE(m_window->logbook(), oneEntry);
    QCOMPARE(m_window->grid().rows(), 2);
}

void TestFmlistSearch::aDeletedRowCanStillBeWrittenOver()
{
    m_window->open(twoEntries);
    m_window->clickRow(1);
    m_window->click("Command11");
    m_window->click("Command15");
    m_window->form().populateGrid();
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QVERIFY(m_window->logbook().startsWith("D3C1|12/06/2010 18:22:05|Es|87.6|Berlin (Alex)|D|"));
    QCOMPARE(m_window->piCodes(), QStringList({u"D3C1"_s, u"F201"_s}));
}

void TestFmlistSearch::failures_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told");
    const auto row = [](const char *title, Fault fault, const QString &name, const QString &told) {
        QTest::newRow(title) << static_cast<int>(fault) << name << told;
    };
    const QString service = u"The service answered with an error"_s;
    const QString subscript = u"Subscript out of range"_s;
    row("dropped in the middle", Fault::Drop, u"Cannot reach the service"_s, u"/rdslookup.php"_s);
    row("500", Fault::Fail500, service, u"500"_s);
    row("503", Fault::Fail503, service, u"503"_s);
    row("eight fields", Fault::Eight, subscript, u"line 1"_s);
    row("a megabyte of junk", Fault::Junk, subscript, u"line 1"_s);
    row("more than 16 MiB", Fault::Huge, service, u"16 MiB"_s);
}

void TestFmlistSearch::failures()
{
    QFETCH(int, fault);
    QFETCH(QString, name);
    QFETCH(QString, told);
    m_window->open(oneEntry);
    search();
    const QStringList fields = m_window->fields();
    m_window->service.behave({.fault = static_cast<Fault>(fault)});
    m_window->click("Command11");
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(u"Run-time error: "_s + name + u'\n'), qPrintable(texts.first()));
    QVERIFY2(texts.first().contains(told), qPrintable(texts.first()));
    QVERIFY(texts.first().size() < 1000);
    checkEverythingIsBack(*m_window);
    QCOMPARE(m_window->results().count(), 0);
    QCOMPARE(m_window->status(), QString());
    QCOMPARE(m_window->fields(), fields);
    QCOMPARE(m_window->logbook(), oneEntry);
}

void TestFmlistSearch::noServer()
{
    QString url;
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        url = u"http://127.0.0.1:%1"_s.arg(closed.serverPort());
    }
    m_window->openAt(url, oneEntry);
    search();
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(
        texts.first().startsWith(u"Run-time error: Cannot reach the service\n"_s), qPrintable(texts.first()));
    QVERIFY2(texts.first().contains(url), qPrintable(texts.first()));
    checkEverythingIsBack(*m_window);
}

void TestFmlistSearch::aSearchAfterAFailureWorks()
{
    m_window->open(oneEntry);
    m_window->service.behave({.fault = Fault::Drop, .times = 1});
    search();
    QCOMPARE(m_window->answers.takeTexts().size(), 1);
    m_window->click("Command11");
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
    QCOMPARE(m_window->resultRows(), QStringList {berlin});
}

void TestFmlistSearch::aSecondRequestIsRefusedAndTheFirstGoesOn()
{
    m_window->open(twoEntries, "OMID=1\r\n");
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        // Choosing a row enables the button while the request runs.
        m_window->clickRow(2);
        m_window->click("Command11");
        m_window->trigger("menuFMListUploadLogs");
        m_window->trigger("menuFMListAutoSearch");
        QVERIFY(!m_window->find<QWidget>("proclogs")->isVisible());
    });
    m_window->clickRow(1);
    m_window->click("Command11");
    const QStringList texts = m_window->answers.takeTexts();
    QCOMPARE(texts.size(), 3);
    for (const QString &text : texts) {
        QVERIFY2(text.startsWith(u"Run-time error: Still executing last request\n"_s), qPrintable(text));
    }
    QCOMPARE(m_window->service.requests().size(), 1);
    QCOMPARE(m_window->resultRows(), QStringList {berlin});
    QCOMPARE(m_window->status(), u"FMList Search: 1 matches"_s);
    checkEverythingIsBack(*m_window);
}

void TestFmlistSearch::whatIsTypedWhileItRunsIsKept()
{
    m_window->open(oneEntry);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] {
        m_window->fill(
            {u"Text8"_s, u"OTHER"_s, u"Text1"_s, u"E201"_s, u"Text9"_s, u"99.9"_s, u"Text3"_s, u"typed"_s});
    });
    search();
    QCOMPARE(m_window->text("Text3"), u"typed"_s);
    QCOMPARE(m_window->text("Text9"), u"99.9"_s);
    QCOMPARE(m_window->text("Text1"), u"E201"_s);
    QCOMPARE(m_window->text("Text8"), u"OTHER"_s);
    QCOMPARE(m_window->resultRows(), QStringList {berlin});
}

void TestFmlistSearch::anotherRowChosenWhileItRunsGetsTheResult()
{
    m_window->open(twoEntries);
    m_window->answerSlowly();
    m_window->duringRequest(1, [this] { m_window->clickRow(2); });
    m_window->clickRow(1);
    m_window->click("Command11");
    QCOMPARE(m_window->text("Text1"), u"F201"_s);
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->logbook(),
        oneEntry + "D3C1|12/06/2010 18:30:00|Es|87.6|Berlin (Alex)|D||RADIO_1|100|||4711|\r\n");
}

void TestFmlistSearch::closingTheWindowEndsTheRequest()
{
    m_window->open(oneEntry);
    m_window->service.behave({.fault = Fault::Hang});
    m_window->duringRequest(1, [this] { m_window->form().close(); });
    search();
    QVERIFY(!m_window->form().isVisible());
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
    QCOMPARE(m_window->logbook(), oneEntry);
    m_window->stop();
}

void TestFmlistSearch::closingTheWindowEndsTheProgramWithCodeZero()
{
    m_window->open(oneEntry);
    m_window->service.behave({.fault = Fault::Hang});
    m_window->duringRequest(1, [this] { m_window->form().close(); });
    bool isOver = false;
    QTimer::singleShot(0, this, [&] {
        search();
        isOver = true;
    });
    constexpr int patience = 20'000;
    QTimer::singleShot(patience, qApp, [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(isOver);
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
}

QTEST_MAIN(TestFmlistSearch)
#include "tst_fmlistsearch.moc"
