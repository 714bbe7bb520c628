#include "fmlistwindow.h"

#include <QApplication>
#include <QHeaderView>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::standin;
using namespace quillon::test;

namespace {

bool isBusy()
{
    const QCursor *cursor = QApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::WaitCursor;
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

private:
    // Searches for the only or last entry.
    void search()
    {
        m_window->clickRow(m_window->grid().rows() - 1);
        m_window->click("Command11");
    }

    std::unique_ptr<FmlistWindow> m_window;
};

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
    QVERIFY(m_window->isAfterASearch());
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
    QVERIFY(m_window->isAfterASearch());
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
    QVERIFY(m_window->isAfterASearch());
}

void TestFmlistSearch::theListsTakeTurns()
{
    m_window->open(oneEntry);
    QVERIFY(m_window->list().isVisible());
    QVERIFY(!m_window->results().isVisible());
    search();
    QVERIFY(m_window->isAfterASearch());
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
            u"Latitude"_s, u"Longitude"_s, u"UID"_s, u"Dist"_s, u"Azimuth"_s}));
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
    const QString told = m_window->status().isEmpty() ? u"FMList named no station"_s : m_window->status();
    QVERIFY2(m_window->results().emptyText().startsWith(told + u'\n'),
        qPrintable(m_window->results().emptyText()));
    QCOMPARE(m_window->answers.takeTexts(), QStringList());
    QVERIFY(m_window->isAfterASearch());
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

QTEST_MAIN(TestFmlistSearch)
#include "tst_fmlistsearch.moc"
