#include "fmlist/search.h"
#include "platform/runtimeerror.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

const NumberFormat point {u'.'};
const NumberFormat comma {u','};

QByteArray url(const SearchRequest &request)
{
    return searchUrl(u"http://fm"_s, request, CodePage(1252)).value_or("no request");
}

// A line of the service with one of its fields replaced.
QString lineWith(qsizetype field, const QString &value)
{
    QStringList fields {
        u"87.6"_s, u"D3C1"_s, u"RADIO_1"_s, u"D"_s, u"D, Berlin"_s, u"10"_s, u"52.5"_s, u"13.4"_s, u"4711"_s};
    fields[field] = value;
    return fields.join(u';') + u'\n';
}

QStringList rowsOf(const SearchAnswer &answer)
{
    QStringList rows;
    for (const SearchResult &result : answer.results) {
        rows += resultRow(result);
    }
    return rows;
}

QString fieldOf(const QString &answer, qsizetype field, NumberFormat format = point)
{
    return rowsOf(readSearchAnswer(answer, format)).value(0).split(u'\t').value(field);
}

} // namespace

class TestSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theAddress_data()
    {
        QTest::addColumn<QString>("freq");
        QTest::addColumn<QString>("pi");
        QTest::addColumn<QString>("ps");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("all") << u"87.6"_s << u"d3c1"_s << u"RADIO 1"_s
                             << "http://fm/rdslookup.php?freq=87.6&pi=D3C1&ps=RADIO%5F1"_ba;
        QTest::newRow("no PS") << u"87.6"_s << u" d3c1 "_s << u""_s
                               << "http://fm/rdslookup.php?freq=87.6&pi=D3C1"_ba;
        QTest::newRow("no PI") << u"87,6"_s << u""_s << u"B&B"_s
                               << "http://fm/rdslookup.php?freq=87,6&ps=B%26B"_ba;
        QTest::newRow("blanks around PS stay as _")
            << u"87.6"_s << u""_s << u" A "_s << "http://fm/rdslookup.php?freq=87.6&ps=%5FA%5F"_ba;
        QTest::newRow("tab in PS has one digit")
            << u"87.6"_s << u""_s << u"A\tB"_s << "http://fm/rdslookup.php?freq=87.6&ps=A%9B"_ba;
        QTest::newRow("PS of the code page")
            << u"87.6"_s << u""_s << u"\u00d6 3"_s << "http://fm/rdslookup.php?freq=87.6&ps=%D6%5F3"_ba;
        QTest::newRow("blank PI is no PI, but asks")
            << u"87.6"_s << u" "_s << u""_s << "http://fm/rdslookup.php?freq=87.6"_ba;
        QTest::newRow("frequency as typed")
            << u"+8e1&x=1"_s << u"D3C1"_s << u""_s << "http://fm/rdslookup.php?freq=+8e1&x=1&pi=D3C1"_ba;
        QTest::newRow("what no address can hold")
            << u"8 7<\u00e9#\r\n%2"_s << u"D3C1"_s << u""_s
            << "http://fm/rdslookup.php?freq=8%207%3C%E9%23%0D%0A%2&pi=D3C1"_ba;
        QTest::newRow("no frequency") << u""_s << u"D3C1"_s << u"RADIO"_s << "no request"_ba;
        QTest::newRow("neither PI nor PS") << u"87.6"_s << u""_s << u""_s << "no request"_ba;
    }

    void theAddress()
    {
        QFETCH(QString, freq);
        QFETCH(QString, pi);
        QFETCH(QString, ps);
        QTEST(url({freq, pi, ps}), "expected");
    }

    void errorAnswers_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("status");
        QTest::newRow("10001") << u"Error 10001"_s << u"FMList Search: Frequency Not provided"_s;
        QTest::newRow("10002") << u"Error 10002"_s << u"FMList Search: Frequency Not Numeric"_s;
        QTest::newRow("10003") << u"Error 10003"_s << u"FMList Search: Incorrect PI code length"_s;
        QTest::newRow("10004") << u"Error 10004"_s << u"FMList Search: Incorrect PI code values"_s;
        QTest::newRow("10005 with LF") << u"Error 10005\n"_s << u"FMList Search: No matches"_s;
        QTest::newRow("10006 with CR LF")
            << u"Error 10006\r\n"_s << u"FMList Search: PI and PS parameter missing"_s;
        QTest::newRow("unknown") << u"Error 10007\n"_s << QString();
        QTest::newRow("more words") << u"Error 10005 nothing\n"_s << QString();
    }

    void errorAnswers()
    {
        QFETCH(QString, answer);
        const SearchAnswer read = readSearchAnswer(answer, point);
        QTEST(read.status, "status");
        QCOMPARE(read.matches, 0);
        QVERIFY(read.results.isEmpty());
    }

    void threeLinesAreThreeMatches()
    {
        const QString line = lineWith(0, u"87.6"_s);
        const SearchAnswer read = readSearchAnswer(line + line + line, point);
        QCOMPARE(read.matches, 3);
        QCOMPARE(read.status, u"FMList Search: 3 matches"_s);
        QCOMPARE(rowsOf(read), QStringList(3, u"87.6\tD3C1\tRADIO_1\tD\tBerlin\t10\t52.5\t13.4\t4711"_s));
    }

    void withoutAFinalLineFeedTheLastLineIsLost()
    {
        const QString line = lineWith(0, u"87.6"_s);
        const SearchAnswer read = readSearchAnswer(line + line + line.chopped(1), point);
        QCOMPARE(read.matches, 2);
        QCOMPARE(read.results.size(), 2);
        QCOMPARE(read.status, u"FMList Search: 2 matches"_s);
        QCOMPARE(readSearchAnswer(u"no line end at all"_s, point).matches, 0);
        QCOMPARE(readSearchAnswer(QString(), point).status, u"FMList Search: 0 matches"_s);
    }

    void numbersAreRoundedAndWrittenByTheLocale_data()
    {
        QTest::addColumn<qsizetype>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("withPoint");
        QTest::addColumn<QString>("withComma");
        QTest::newRow("frequency") << qsizetype(0) << u"87.60"_s << u"87.6"_s << u"87,6"_s;
        QTest::newRow("frequency with comma") << qsizetype(0) << u"87,6"_s << u"87.6"_s << u"87,6"_s;
        QTest::newRow("a single just above the half") << qsizetype(0) << u"87.65"_s << u"87.7"_s << u"87,7"_s;
        QTest::newRow("a single on the half, to even")
            << qsizetype(0) << u"88.25"_s << u"88.2"_s << u"88,2"_s;
        QTest::newRow("no frequency") << qsizetype(0) << u""_s << u"-1"_s << u"-1"_s;
        QTest::newRow("words as frequency") << qsizetype(0) << u"abc"_s << u"-1"_s << u"-1"_s;
        QTest::newRow("power") << qsizetype(5) << u"0.25"_s << u"0.2"_s << u"0,2"_s;
        QTest::newRow("power up") << qsizetype(5) << u"0,75"_s << u"0.8"_s << u"0,8"_s;
        QTest::newRow("whole power") << qsizetype(5) << u"100.0"_s << u"100"_s << u"100"_s;
        QTest::newRow("no power") << qsizetype(5) << u"?"_s << u"-1"_s << u"-1"_s;
        QTest::newRow("latitude") << qsizetype(6) << u"52.51999"_s << u"52.52"_s << u"52,52"_s;
        QTest::newRow("south") << qsizetype(6) << u"-33.86785"_s << u"-33.8678"_s << u"-33,8678"_s;
        QTest::newRow("longitude") << qsizetype(7) << u"13.40496"_s << u"13.405"_s << u"13,405"_s;
        QTest::newRow("two separators") << qsizetype(7) << u"1.234,5"_s << u"-1"_s << u"-1"_s;
        QTest::newRow("nothing is left of it") << qsizetype(7) << u"-0.00001"_s << u"0"_s << u"0"_s;
    }

    void numbersAreRoundedAndWrittenByTheLocale()
    {
        QFETCH(qsizetype, field);
        QFETCH(QString, value);
        QTEST(fieldOf(lineWith(field, value), field, point), "withPoint");
        QTEST(fieldOf(lineWith(field, value), field, comma), "withComma");
    }

    void theTransmitterStandsBetweenTheCommas_data()
    {
        QTest::addColumn<QString>("location");
        QTest::addColumn<QString>("transmitter");
        QTest::newRow("after the comma") << u"D, Berlin"_s << u"Berlin"_s;
        QTest::newRow("no comma") << u"Berlin"_s << u""_s;
        QTest::newRow("up to the next") << u"A,B,C"_s << u"B"_s;
        QTest::newRow("nothing between them") << u"A,,C"_s << u""_s;
        QTest::newRow("nothing after it") << u"A,"_s << u""_s;
        QTest::newRow("empty") << u""_s << u""_s;
        QTest::newRow("blanks inside stay") << u"NRW,  Bad  Ems , x"_s << u"Bad  Ems"_s;
    }

    void theTransmitterStandsBetweenTheCommas()
    {
        QFETCH(QString, location);
        QTEST(fieldOf(lineWith(4, location), 4), "transmitter");
    }

    void textFieldsAreTakenAsTheyAre()
    {
        QCOMPARE(rowsOf(readSearchAnswer(u"87.6; d3c1 ;R&#228;dio ;D;x, Y;1;2;3;47\r\n"_s, point)),
            QStringList(u"87.6\t d3c1 \tRdio \tD\tY\t1\t2\t3\t47\r"_s));
        QCOMPARE(rowsOf(readSearchAnswer(u"87.6;D3C1;PS;D;x, Y;1;2;3;47;more;fields\n"_s, point)),
            QStringList(u"87.6\tD3C1\tPS\tD\tY\t1\t2\t3\t47"_s));
    }

    void aLineOfEightFieldsIsTold()
    {
        const QString good = lineWith(0, u"87.6"_s);
        const SearchAnswer read = readSearchAnswer(good + u"87.6;D3C1;PS;D;x, Y;1;2;3\n"_s + good, point);
        QVERIFY(read.failure);
        QCOMPARE(read.failure->text(),
            u"Run-time error: Subscript out of range\n"
            "Reading the answer of FMList, line 2: the line has 8 pieces instead of 9: "
            "\"87.6;D3C1;PS;D;x, Y;1;2;3\""_s);
        QCOMPARE(read.results, readSearchAnswer(good, point).results);
        QCOMPARE(read.matches, 0);
        QCOMPARE(read.status, QString());
    }

    void aFrequencyThatNoSingleHoldsIsTold()
    {
        const auto failure = readSearchAnswer(lineWith(0, u"1e39"_s), point).failure;
        QVERIFY(failure);
        QCOMPARE(failure->name(), ErrorName::Overflow);
        QVERIFY(failure->doing().startsWith(u"Reading the answer of FMList, line 1: "_s));
    }

    void aMegabyteOfJunkIsToldShortly()
    {
        const QString junk = QString(1'048'576, u'x') + u'\n';
        const auto failure = readSearchAnswer(junk, point).failure;
        QVERIFY(failure);
        QCOMPARE(failure->name(), ErrorName::SubscriptOutOfRange);
        QVERIFY(failure->doing().size() < 300);
        QVERIFY(failure->doing().endsWith(u"xxx...\""_s));
    }

    void theFirstResultWithThePiIsHighlighted()
    {
        QList<SearchResult> results;
        for (const QString &pi : {u"AAAA"_s, u"D3C1"_s, u"D3C1"_s, u"BBBB"_s}) {
            results += SearchResult {u"1"_s, pi, u"D3C1"_s, {}, {}, {}, {}, {}, {}};
        }
        QCOMPARE(highlightedResult(results, u"d3c1 "_s), 1);
        QCOMPARE(highlightedResult(results, u"FFFF"_s), 3);
        QCOMPARE(highlightedResult(results, QString()), 3);
        QCOMPARE(highlightedResult({}, u"D3C1"_s), -1);
    }

    void theNumbersOfAChosenRowHavePointsInEveryLocale()
    {
        const QString line = u"87.6;D3C1;RADIO_1;D;D, Berlin;0.5;-33.8679;13.4049;4711\n"_s;
        const SearchResult result = readSearchAnswer(line, comma).results.value(0);
        QCOMPARE(resultRow(result), u"87,6\tD3C1\tRADIO_1\tD\tBerlin\t0,5\t-33,8679\t13,4049\t4711"_s);
        const SearchResult chosen = chosenResult(result);
        QCOMPARE(chosen.frequency, u"87.6"_s);
        QCOMPARE(chosen.power, u"0.5"_s);
        QCOMPARE(chosen.latitude, u"-33.8679"_s);
        QCOMPARE(chosen.longitude, u"13.4049"_s);
    }

    void aChosenResultHasNoCharacterReferences()
    {
        const SearchResult result {u"87.6"_s, u"D3C1"_s, u"R&#65;1"_s, u"D"_s, u"Berlin"_s, u"10"_s,
            u"52.5"_s, u"13.4"_s, u"4711"_s};
        SearchResult expected = result;
        expected.ps = u"R65;1"_s;
        QCOMPARE(chosenResult(result), expected);
    }

    void aTabInAValueBeginsTheNext()
    {
        const SearchResult chosen = chosenResult(
            readSearchAnswer(u"87.6;D3C1;A\tB;D;D, Berlin;10;52.5;13.4;4711\n"_s, point).results.value(0));
        QCOMPARE(chosen,
            (SearchResult {
                u"87.6"_s, u"D3C1"_s, u"A"_s, u"B"_s, u"D"_s, u"Berlin"_s, u"10"_s, u"52.5"_s, u"13.4"_s}));
    }
};

QTEST_GUILESS_MAIN(TestSearch)
#include "tst_search.moc"
