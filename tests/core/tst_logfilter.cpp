#include "core/filterreader.h"
#include "core/logfilter.h"
#include "support/plainfilter.h"

#include <QLocale>
#include <QRandomGenerator>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

MonthNames months()
{
    return MonthNames::of(QLocale::c());
}

LogEntry reception(const QString &piCode, const CivilTime &time, const QString &freq, const QString &rdsName,
    const QString &country, const QString &transmitter)
{
    LogEntry entry;
    entry.piCode = piCode;
    entry.dateTime = *fromCivil(time);
    entry.freq = freq;
    entry.rdsName = rdsName;
    entry.country = country;
    entry.transmitter = transmitter;
    return entry;
}

// a to e: what the cases are about.
std::vector<LogEntry> receptions()
{
    LogEntry a = reception(u"E213"_s, {2024, 5, 1, 0, 0, 0}, u"87.6"_s, u"RNE_1"_s, u"E"_s, u"Málaga"_s);
    a.prop = u"Es"_s;
    a.dist = u"1500"_s;
    a.power = u"0.5"_s;
    a.fmlist = u"fml=sent#"_s;
    a.uid = u"4711"_s;
    LogEntry b =
        reception(u"D3C3"_s, {2024, 5, 1, 23, 59, 59}, u"87.60"_s, u"BAYERN_3"_s, u"D"_s, u"Groß Łuk"_s);
    b.prop = u"Tropo"_s;
    b.dist = u"812.5"_s;
    b.power = u"100"_s;
    b.uid = u"815"_s;
    b.notes = u"Jingle at\r\nten"_s;
    LogEntry c =
        reception(u"F201"_s, {2025, 6, 12, 10, 30, 15}, u"98,5"_s, u"NRK P1"_s, u"NOR"_s, u"Tromsø"_s);
    c.prop = u"Es"_s;
    c.dist = u"1500.1"_s;
    c.power = u"1"_s;
    c.fmlist = u"fml=none#"_s;
    LogEntry d =
        reception(u"D3A0"_s, {2025, 12, 31, 23, 0, 0}, u"100.0"_s, u"rne_5"_s, u"EST"_s, u"Lisboa"_s);
    d.power = u"?"_s;
    d.uid = u"99"_s;
    d.fmlist = u"fml=multi#"_s;
    d.notes = u"say \"hello world\" -loud"_s;
    LogEntry e = reception(u"1234"_s, {1999, 1, 2, 3, 4, 5}, {}, {}, {}, {});
    e.notes = u"  "_s;
    return {a, b, c, d, e};
}

LogFilter filterOf(const QString &text)
{
    const FilterReading reading = readFilter(text, months());
    LogFilter filter;
    filter.terms = reading.terms;
    return filter;
}

// The letters of the receptions that are shown.
QString shown(const LogFilter &filter, bool inMiles = false)
{
    LogFilterMatcher shows(filter, inMiles);
    QString letters;
    char16_t letter = u'a';
    for (const LogEntry &entry : receptions()) {
        if (shows(entry)) {
            letters += QChar(letter);
        }
        ++letter;
    }
    return letters;
}

LogFilter chosen(void (*choose)(LogFilter &))
{
    LogFilter filter;
    choose(filter);
    return filter;
}

// Texts of terms and fields that meet each other often.
class Junk
{
public:
    explicit Junk(quint32 seed)
        : m_random(seed)
    {
    }

    QString text()
    {
        static const QStringList pieces {u"es"_s, u"É"_s, u"ß"_s, u"87.6"_s, u"87,60"_s, u"1"_s, u"0"_s,
            u"2"_s, u"20"_s, u"25"_s, u"-0"_s, u" "_s, u"ø"_s, u"fml=sent#"_s, u"fml=none#"_s, u"\r\n"_s,
            u"/"_s};
        QString made;
        for (int count = m_random.bounded(4); count > 0; --count) {
            made += pieces[m_random.bounded(pieces.size())];
        }
        return made;
    }

    QString term()
    {
        static const QStringList dates {u"2025"_s, u"2025-0"_s, u"2025-06"_s, u"1/6/2025"_s, u"20"_s,
            u"12-Jun-2025"_s, u"\"2025-06-12 10\""_s, u"\"1.6.2025 10:00\""_s};
        const FilterKey key = filterKeys()[static_cast<std::size_t>(m_random.bounded(logFieldCount))];
        static const QStringList signs {u":"_s, u":"_s, u":"_s, u"<"_s, u">"_s, u"=="_s};
        const QString &sign = signs[m_random.bounded(signs.size())];
        const QString minus = m_random.bounded(3) ? QString() : u"-"_s;
        const QString value =
            key.field == LogField::DateTime ? dates[m_random.bounded(dates.size())] : text();
        return m_random.bounded(3) ? QString(minus + key.key + sign + value) : QString(minus + text());
    }

    LogEntry entry()
    {
        LogEntry made;
        for (const LogColumn &column : logFields()) {
            if (column.text) {
                made.*column.text = text();
            }
        }
        made.dateTime = *fromCivil({2024 + m_random.bounded(3), 1 + m_random.bounded(12), 12, 10, 0, 0});
        return made;
    }

    LogFilter filter()
    {
        LogFilter made = filterOf(term() + u' ' + term());
        const int choice = m_random.bounded(8);
        if (choice == 0) {
            made.mode = text();
        } else if (choice == 1) {
            made.country = text();
        } else if (choice == 2) {
            made.year = 2025;
        } else if (choice == 3) {
            made.fmlist = static_cast<FMListState>(m_random.bounded(5));
        }
        return made;
    }

private:
    QRandomGenerator m_random;
};

} // namespace

class TestLogFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void termsShowTheirReceptions_data();
    void termsShowTheirReceptions();
    void whatCannotBeReadIsTold_data();
    void whatCannotBeReadIsTold();
    void problemsAreShort();
    void kilometresAreKilometresWhateverTheSetupSays();
    void choicesShowTheirReceptions_data();
    void choicesShowTheirReceptions();
    void anEmptyFilterIsEmpty();
    void randomFiltersEqualThePlainOne();
    void listsHoldWhatIsInTheLog();
};

void TestLogFilter::termsShowTheirReceptions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char16_t *text, const char16_t *expected) {
        QTest::addRow("%s", qPrintable(QString::fromUtf16(text)))
            << QString::fromUtf16(text) << QString::fromUtf16(expected);
    };
    add(u"", u"abcde");
    add(u"   ", u"abcde");
    // Words.
    add(u"malaga", u"a");
    add(u"MÁLAGA", u"a");
    add(u"gross", u"b");
    add(u"luk", u"b");
    add(u"tromso", u"c");
    add(u"Tromsø", u"c");
    add(u"rne", u"ad");
    add(u"rne es", u"ad");
    add(u"rne malaga", u"a");
    add(u"rne nothing", u"");
    add(u"23:59", u"b");
    add(u"01/05/2024", u"ab");
    add(u"sent", u"a");
    add(u"fml=sent", u"");
    add(u"multi", u"d");
    add(u"4711", u"a");
    add(u"812.5", u"b");
    add(u"3c3", u"b");
    add(u"tropo", u"b");
    add(u"\"nrk p1\"", u"c");
    add(u"\"p1 nrk\"", u"");
    add(u"\"at ten\"", u"b");
    add(u"\"nrk p", u"c");
    add(u"\"freq:98\"", u"");
    add(u"\"\"", u"abcde");
    add(u"\"", u"abcde");
    add(u"-", u"abcde");
    add(u"\"-loud\"", u"d");
    add(u"--loud", u"abce");
    add(u"\"hello", u"d");
    add(u"\"nrk p1\"es", u"c");
    add(u"-rne", u"bce");
    add(u"-rne -malaga -tropo", u"ce");
    add(u"-\"nrk p1\"", u"abde");
    // One frequency in each writing.
    add(u"87,6", u"ab");
    add(u"87.60", u"ab");
    add(u"98.50", u"c");
    add(u"-87,60", u"cde");
    add(u"freq:87.6", u"ab");
    add(u"freq:87,600", u"ab");
    add(u"freq:98.5", u"c");
    add(u"freq:87", u"");
    add(u"freq:100", u"d");
    add(u"freq:98.", u"");
    add(u"freq>98.5", u"d");
    add(u"freq<98,5", u"ab");
    add(u"freq>87.6 freq<100", u"c");
    add(u"freq:", u"e");
    add(u"-freq:", u"abcd");
    // Beginnings.
    add(u"pi:D3", u"bd");
    add(u"pi:d3c", u"b");
    add(u"PI:3", u"");
    add(u"ps:rne", u"ad");
    add(u"ps:ne", u"");
    add(u"ps:\"nrk p\"", u"c");
    add(u"itu:E", u"ad");
    add(u"-itu:E", u"bce");
    add(u"itu:", u"e");
    // All of the field.
    add(u"itu==e", u"a");
    add(u"-itu==E", u"bcde");
    add(u"itu==", u"e");
    add(u"itu==\"\"", u"e");
    add(u"ps==rne", u"");
    add(u"pi==D3C", u"");
    add(u"site==malaga prop==es", u"a");
    add(u"kw==100", u"b");
    add(u"prop:es", u"ac");
    add(u"prop:", u"de");
    add(u"fml:sent", u"a");
    add(u"fml:n", u"c");
    add(u"fml:", u"be");
    add(u"uid:", u"ce");
    add(u"-uid:", u"abd");
    add(u"uid:\"\"", u"ce");
    add(u"uid:8", u"b");
    // Anywhere in the field.
    add(u"site:lis", u"d");
    add(u"site:boa", u"d");
    add(u"site:\"oß Ł\"", u"b");
    add(u"notes:jingle", u"b");
    add(u"notes:ten", u"b");
    add(u"notes:", u"ace");
    // Numbers.
    add(u"km>1500", u"c");
    add(u"km>1499", u"ac");
    add(u"km:1500", u"a");
    add(u"km:1500,0", u"a");
    add(u"km<1500", u"b");
    add(u"km:", u"de");
    add(u"kw<1", u"a");
    add(u"kw:1", u"c");
    add(u"kw>0.5", u"bc");
    add(u"kw:", u"e");
    add(u"-kw<1", u"bcde");
    // Dates.
    add(u"date:2025-06", u"c");
    add(u"date:2025", u"cd");
    add(u"date:202", u"abcd");
    add(u"date:2025-1", u"d");
    add(u"date:2025-06-12", u"c");
    add(u"date:\"2025-06-12 10:3\"", u"c");
    add(u"date:01/05", u"ab");
    add(u"date:31/12/2025", u"d");
    add(u"date:2/1/1999", u"e");
    add(u"date:12-Jun-2025", u"c");
    add(u"date:2025/6", u"c");
    add(u"date:", u"");
    add(u"date>2024-05-01", u"cd");
    add(u"date>2024-04-30", u"abcd");
    add(u"date<2024-05-01", u"e");
    add(u"date<2024-05-02", u"abe");
    add(u"date>2024", u"cd");
    add(u"date<2025", u"abe");
    add(u"date>2024-05", u"cd");
    add(u"date>2025-12", u"");
    add(u"date>1.5.2024", u"cd");
    add(u"date>\"2024-05-01 23:59\"", u"cd");
    add(u"date>\"2024-05-01 23:59:58\"", u"bcd");
    add(u"date<\"12.6.2025 10:30:15\"", u"abe");
    add(u"date>9999", u"");
    add(u"date>2023 date<2025 -tropo", u"a");
}

void TestLogFilter::termsShowTheirReceptions()
{
    QFETCH(QString, text);
    QCOMPARE(readFilter(text, months()).problem, QString());
    QTEST(shown(filterOf(text)), "expected");
}

void TestLogFilter::whatCannotBeReadIsTold_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no number") << u"es freq:abc"_s << u"freq:abc: \"abc\" is not a number"_s;
    QTest::newRow("nothing to compare") << u"km>"_s << u"km>: a number belongs behind it"_s;
    QTest::newRow("at least") << u"kw>=5"_s << u"kw>=5: \"=5\" is not a number"_s;
    QTest::newRow("order of texts") << u"-ps>a"_s
                                    << u"-ps>a: \"<\" and \">\" are for date, freq, km and kw"_s;
    QTest::newRow("no key")
        << u"freg:98"_s
        << u"freg:98: there is no key \"freg\" (a word with \":\" in it goes between quotes)"_s;
    QTest::newRow("no date") << u"date:yesterday"_s
                             << u"date:yesterday: \"yesterday\" is not a date such as 2025-06-30"_s;
    QTest::newRow("no such month") << u"date:2025-13"_s
                                   << u"date:2025-13: \"2025-13\" is not a date such as 2025-06-30"_s;
    QTest::newRow("no such day") << u"date:31/02"_s
                                 << u"date:31/02: \"31/02\" is not a date such as 2025-06-30"_s;
    QTest::newRow("no moment") << u"date>20"_s << u"date>20: \"20\" is not a date such as 2025-06-30"_s;
    QTest::newRow("no date at all") << u"date<"_s << u"date<: a date belongs behind it"_s;
}

void TestLogFilter::whatCannotBeReadIsTold()
{
    QFETCH(QString, text);
    const FilterReading reading = readFilter(text, months());
    QTEST(reading.problem, "expected");
    QVERIFY(reading.terms.empty());
}

void TestLogFilter::problemsAreShort()
{
    for (const QString &text : {u"freq:"_s, u"pi>"_s, u"date:"_s, u""_s}) {
        const QString problem = readFilter(QString(text + QString(5000, u'x') + u":"_s), months()).problem;
        QVERIFY(!problem.isEmpty());
        QVERIFY2(problem.size() < 200, qPrintable(problem));
    }
}

void TestLogFilter::kilometresAreKilometresWhateverTheSetupSays()
{
    // 812.5 mi are 1307.6 km.
    QCOMPARE(shown(filterOf(u"km:1307.6"_s), true), u"b"_s);
    QCOMPARE(shown(filterOf(u"km:812.5"_s), true), QString());
    QCOMPARE(shown(filterOf(u"km>1307.5"_s), true), u"abc"_s);
    QCOMPARE(shown(filterOf(u"km<1307.7"_s), true), u"b"_s);
    // The cell itself is what it shows.
    QCOMPARE(shown(filterOf(u"812.5"_s), true), u"b"_s);
}

void TestLogFilter::choicesShowTheirReceptions_data()
{
    QTest::addColumn<LogFilter>("filter");
    QTest::addColumn<QString>("expected");
    QTest::newRow("mode") << chosen([](LogFilter &filter) { filter.mode = u"Es"_s; }) << u"ac"_s;
    QTest::newRow("country") << chosen([](LogFilter &filter) { filter.country = u"E"_s; }) << u"a"_s;
    QTest::newRow("year") << chosen([](LogFilter &filter) { filter.year = 2025; }) << u"cd"_s;
    QTest::newRow("no such year") << chosen([](LogFilter &filter) { filter.year = 0; }) << QString();
    const auto state = [](FMListState wanted) {
        LogFilter filter;
        filter.fmlist = wanted;
        return filter;
    };
    QTest::newRow("no UID") << state(FMListState::NoUid) << u"ce"_s;
    QTest::newRow("not sent") << state(FMListState::NotSent) << u"bd"_s;
    QTest::newRow("sent") << state(FMListState::Sent) << u"a"_s;
    QTest::newRow("none") << state(FMListState::None) << u"c"_s;
    QTest::newRow("multi") << state(FMListState::Multi) << u"d"_s;
    LogFilter all = filterOf(u"p1"_s);
    all.mode = u"Es"_s;
    all.year = 2025;
    QTest::newRow("all of them") << all << u"c"_s;
}

void TestLogFilter::choicesShowTheirReceptions()
{
    QFETCH(LogFilter, filter);
    QVERIFY(!filter.isEmpty());
    QTEST(shown(filter), "expected");
}

void TestLogFilter::anEmptyFilterIsEmpty()
{
    QVERIFY(LogFilter().isEmpty());
    QVERIFY(filterOf(u" - \""_s).isEmpty());
    QVERIFY(!filterOf(u"x"_s).isEmpty());
    QCOMPARE(shown({}), u"abcde"_s);
}

void TestLogFilter::randomFiltersEqualThePlainOne()
{
    Junk junk(1);
    int shownOnes = 0;
    for (int round = 0; round < 3000; ++round) {
        const LogFilter filter = junk.filter();
        const bool inMiles = round % 2 == 1;
        LogFilterMatcher shows(filter, inMiles);
        const PlainFilter plain(filter, inMiles);
        for (int i = 0; i < 20; ++i) {
            const LogEntry entry = junk.entry();
            const bool expected = plain.shows(entry);
            QCOMPARE(shows(entry), expected);
            shownOnes += expected ? 1 : 0;
        }
    }
    QVERIFY(shownOnes > 6000);
    QVERIFY(shownOnes < 54000);
}

void TestLogFilter::listsHoldWhatIsInTheLog()
{
    Logbook log;
    QCOMPARE(filterLists(log), FilterLists());
    for (const LogEntry &entry : receptions()) {
        log.AddEntry(entry);
    }
    LogEntry other = receptions().front();
    other.prop = u"Balloon"_s;
    other.country = u"Österreich"_s;
    log.AddEntry(other);
    other.piCode = u"delete"_s;
    other.prop = u"Gone"_s;
    log.AddEntry(other);
    // The ends of years, to the second, and the last year that there is.
    other.piCode = u"D3C3"_s;
    other.prop.clear();
    other.country.clear();
    for (const CivilTime &moment : std::initializer_list<CivilTime> {{1969, 12, 31, 23, 59, 59}, {1970, 1, 1},
             {1971, 12, 31, 23, 59, 59}, {9999, 12, 31, 23, 59, 59}, {9999, 1, 1}, {100, 1, 1},
             {1973, 1, 1}}) {
        other.dateTime = fromCivil(moment).value();
        log.AddEntry(other);
    }
    const FilterLists lists = filterLists(log);
    QCOMPARE(lists.modes, (QStringList {u"Es"_s, u"Tropo"_s, u"Balloon"_s}));
    QCOMPARE(lists.countries, (QStringList {u"D"_s, u"E"_s, u"EST"_s, u"NOR"_s, u"Österreich"_s}));
    QCOMPARE(lists.years, (std::vector {9999, 2025, 2024, 1999, 1973, 1971, 1970, 1969, 100}));
}

QTEST_GUILESS_MAIN(TestLogFilter)
#include "tst_logfilter.moc"
