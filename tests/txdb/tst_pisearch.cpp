#include "txdb/pisearch.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

Logbook sample()
{
    const DateTime time = *fromCivil({2010, 6, 12, 18, 22, 5});
    Logbook log;
    log.AddEntry({u"D3C3"_s, time, u"Es"_s, u"87.6"_s, u"Brocken"_s, u"D"_s, u"note"_s, u"MDR_JUMP"_s,
        u"100"_s, u"812"_s, u"fml=sent#"_s, u"4711"_s});
    log.AddEntry(
        {u"delete"_s, time, u"Es"_s, u"87.60"_s, u"Inselsberg"_s, u"D"_s, {}, u"gone"_s, {}, {}, {}, {}});
    log.AddEntry({u"3D30"_s, time, {}, u"87.6"_s, {}, u"AUT"_s, {}, {}, {}, {}, {}, {}});
    log.AddEntry({u"D318"_s, time, u"MS"_s, {}, u"brocken"_s, {}, {}, u"JUMP"_s, u"5"_s, {}, {}, {}});
    return log;
}

} // namespace

class TestPiSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsByItsRule_data()
    {
        QTest::addColumn<int>("search");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("piCodes");
        const auto row = [](const char *name, LogSearch search, const QString &text,
                             const QStringList &codes) {
            QTest::newRow(name) << int(search) << text << codes;
        };
        const QStringList all {u"D3C3"_s, u"delete"_s, u"3D30"_s, u"D318"_s};
        row("PI contains", LogSearch::PiCodeContains, u"D3"_s, {u"D3C3"_s, u"3D30"_s, u"D318"_s});
        row("PI whole", LogSearch::PiCodeContains, u"D318"_s, {u"D318"_s});
        row("PI, case counts", LogSearch::PiCodeContains, u"d3"_s, {});
        row("PI, deleted ones too", LogSearch::PiCodeContains, u"de"_s, {u"delete"_s});
        row("PI, nothing", LogSearch::PiCodeContains, u"FFFF"_s, {});
        row("PI, empty text", LogSearch::PiCodeContains, u""_s, all);
        row("PI, not trimmed", LogSearch::PiCodeContains, u"D318 "_s, {});
        row("PI longer than any", LogSearch::PiCodeContains, u"D318D318"_s, {});
        row("name contains", LogSearch::RdsNameContains, u"JUMP"_s, {u"D3C3"_s, u"D318"_s});
        row("name, case counts", LogSearch::RdsNameContains, u"jump"_s, {});
        row("name, empty text", LogSearch::RdsNameContains, u""_s, all);
        row("transmitter contains", LogSearch::TransmitterContains, u"rocken"_s, {u"D3C3"_s, u"D318"_s});
        row("transmitter, case counts", LogSearch::TransmitterContains, u"Br"_s, {u"D3C3"_s});
        row("transmitter, empty text", LogSearch::TransmitterContains, u""_s, all);
        row("freq equals", LogSearch::FreqEquals, u"87.6"_s, {u"D3C3"_s, u"3D30"_s});
        row("freq as text", LogSearch::FreqEquals, u"87.60"_s, {u"delete"_s});
        row("freq, no part", LogSearch::FreqEquals, u"87"_s, {});
        row("freq, empty text", LogSearch::FreqEquals, u""_s, {u"D318"_s});
        row("country equals", LogSearch::CountryEquals, u"D"_s, {u"D3C3"_s, u"delete"_s});
        row("country, case counts", LogSearch::CountryEquals, u"d"_s, {});
        row("country, empty text", LogSearch::CountryEquals, u""_s, {u"D318"_s});
    }

    void findsByItsRule()
    {
        QFETCH(int, search);
        QFETCH(QString, text);
        QFETCH(QStringList, piCodes);
        const Logbook log = sample();
        QStringList found;
        for (const QString &line : searchLog(log, LogSearch(search), text)) {
            found += line.section(u'\t', 0, 0);
        }
        QCOMPARE(found, piCodes);
    }

    void aResultLineHasEightFieldsAndEightTabs()
    {
        QCOMPARE(searchLog(sample(), LogSearch::PiCodeContains, u"D3C3"),
            QStringList(u"D3C3\t12/06/2010 18:22:05\tEs\t87.6\tBrocken\tD\tMDR_JUMP\t100\t"_s));
        Logbook days;
        for (const int day : {12, 13, 13}) {
            LogEntry entry;
            entry.piCode = u"D3C3"_s;
            entry.dateTime = *fromCivil({2010, 6, day, 18, 22, day});
            days.AddEntry(entry);
        }
        QCOMPARE(searchLog(days, LogSearch::PiCodeContains, u""),
            (QStringList {u"D3C3\t12/06/2010 18:22:12\t\t\t\t\t\t\t"_s,
                u"D3C3\t13/06/2010 18:22:13\t\t\t\t\t\t\t"_s, u"D3C3\t13/06/2010 18:22:13\t\t\t\t\t\t\t"_s}));
        Logbook empty;
        empty.AddEntry({});
        QCOMPARE(searchLog(empty, LogSearch::PiCodeContains, u""),
            QStringList(u"\t01/01/1970 00:00:00\t\t\t\t\t\t\t"_s));
    }

    void anEmptyLogHasNoResults()
    {
        QCOMPARE(searchLog(Logbook(), LogSearch::PiCodeContains, u""), QStringList());
        QCOMPARE(searchLog(Logbook(), LogSearch::FreqEquals, u""), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestPiSearch)
#include "tst_pisearch.moc"
