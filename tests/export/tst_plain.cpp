#include "export/kml.h"
#include "export/mapscript.h"
#include "export/textlog.h"
#include "plainexports.h"
#include "sitefixture.h"

#include <QTest>

#include <random>

using namespace quillon;
using namespace quillon::test;

namespace {

/// Small random logs, the same in every run.
class Generator
{
public:
    explicit Generator(unsigned seed)
        : m_random(seed)
    {
    }

    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    QString oneOf(const QStringList &texts) { return texts.at(below(static_cast<int>(texts.size()))); }

    QString site()
    {
        return oneOf({u"Brocken"_s, u"brocken"_s, u"Köln & <b>"_s, u"Łódź"_s, u"A|B"_s, u""_s, u"X "_s});
    }
    QString country() { return oneOf({u"D"_s, u"F"_s, u"TBD"_s, u"C&D"_s, u""_s}); }

    LogEntry entry()
    {
        LogEntry e;
        e.dateTime =
            *fromCivil({2009 + below(2), 1 + below(4), 1 + below(28), below(24), below(60), below(60)});
        e.piCode = oneOf({u"D382"_s, u"delete"_s, u""_s, u"12345"_s});
        e.prop = oneOf({u"Es"_s, u"Tropo"_s, u"MS"_s, u"TEP"_s, u"es"_s, u""_s});
        e.freq = oneOf({u"89"_s, u"100.25"_s, u"87,6"_s, u""_s, u" 99.9"_s});
        e.transmitter = site();
        e.country = country();
        e.notes = oneOf({u""_s, u"two\r\nlines"_s, u"<i>\r\n\r\n$RAWDATA"_s, u"|"_s});
        e.rdsName = oneOf({u"WDR 2"_s, u"123456789"_s, u""_s, u" NDR ä"_s, u"]]>"_s});
        e.power = oneOf({u"100"_s, u""_s});
        e.dist = oneOf({u"0"_s, u"62.1"_s, u"2.5"_s, u"n/a"_s, u""_s, u"1234,5"_s});
        return e;
    }

    Logbook log()
    {
        Logbook made;
        const int count = below(4) == 0 ? below(4) : below(40);
        for (int i = 0; i < count; ++i) {
            made.AddEntry(entry());
        }
        return made;
    }

    TransmitterList transmitters()
    {
        TransmitterList list;
        for (int i = below(20); i > 0; --i) {
            list.add({site(), country(), oneOf({u"50.1"_s, u"-3"_s, u""_s}),
                oneOf({u"8.5"_s, u"7,5"_s, u""_s}), {}});
        }
        return list;
    }

    /// The rows of the log; sometimes in another order, sometimes with line breaks left in.
    QList<QStringList> rows(const Logbook &log)
    {
        QList<QStringList> all = shownRows(log);
        if (below(3) == 0) {
            for (int i = static_cast<int>(all.size()) - 1; i > 0; --i) {
                all.swapItemsAt(i, below(i + 1));
            }
        }
        for (QStringList &row : all) {
            if (below(5) == 0) {
                row[8] = u"up\r\ndated"_s;
            }
        }
        return all;
    }

    QByteArray templateText()
    {
        QByteArray text;
        for (int i = below(6); i > 0; --i) {
            text +=
                oneOf({u"$RAWDATA"_s, u"<p>$MONTHYEAR $TOTAL $RAWDATA$RAWDATA</p>"_s, u"$CALLSIGN$CALLSIGN"_s,
                          u""_s, u"$VERSION $GENERATED $generated"_s, u"\xA0<script>$</script>"_s})
                    .toLatin1()
                + oneOf({u"\r\n"_s, u"\n"_s}).toLatin1();
        }
        return text + (below(2) ? "$RAWDATA" : "last");
    }

    Regional regional() { return below(2) ? english() : regionalOf(u"de_DE"_s, below(2) ? 1250 : 1252); }

private:
    std::mt19937 m_random;
};

} // namespace

class TestPlain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kmlEqualsThePlainScan()
    {
        Generator random(1);
        for (int run = 0; run < 300; ++run) {
            const Logbook log = random.log();
            const TransmitterList list = random.transmitters();
            const Regional regional = random.regional();
            const TableGrid noRows;
            const PlainExports plain(log, list, noRows, regional);
            QCOMPARE(transmitterKml(list, regional.codePage), plain.transmitterKml());
            QCOMPARE(logbookKml(log, list, regional.codePage), plain.logbookKml());
            const HeardKml heard(log, list, regional);
            bool written = false;
            QCOMPARE(heard.full(), plain.heardKml(std::nullopt, written));
            for (int month = 1; month <= 5; ++month) {
                const DateTime day = *fromCivil({2010, month, 15, 0, 0, 0});
                const QByteArray expected = plain.heardKml(day, written);
                QCOMPARE(heard.month(day).has_value(), written);
                QCOMPARE(heard.month(day).value_or(expected), expected);
            }
        }
    }

    void webSiteEqualsThePlainOne()
    {
        Generator random(2);
        UnsyncedCalls calls;
        for (int run = 0; run < 300; ++run) {
            const Logbook log = random.log();
            Site site(log, random.transmitters(), random.rows(log));
            site.regional = random.regional();
            const QByteArray index = random.templateText();
            const QByteArray month = random.templateText();
            site.directory.write(u"quillon_index.template"_s, index);
            site.directory.write(u"quillon_log.template"_s, month);
            site.write(calls);
            const PlainExports plain(site.log, site.transmitters, site.grid, site.regional);
            auto expected =
                plain.webSite(index, month, u"DL1ABC"_s, u"V1.0.12"_s, at(u"01/02/2012 03:04:05"_s));
            expected.insert(u"quillon_mapview.htm"_s, viewerPage);
            for (const QString &name : expected.keys()) {
                if (name.endsWith(u".kml"_s)) {
                    expected.insert(name + u".js"_s, mapScript(expected.value(name)));
                }
            }
            const auto written = site.pages();
            QCOMPARE(written.keys(), expected.keys());
            for (auto file = expected.begin(); file != expected.end(); ++file) {
                QCOMPARE(written.value(file.key()), file.value());
            }
        }
    }

    void textTableEqualsThePlainOne()
    {
        Generator random(3);
        for (int run = 0; run < 500; ++run) {
            const Logbook log = random.log();
            const TableGrid grid(random.rows(log));
            const Regional regional = random.regional();
            const TransmitterList none;
            const PlainExports plain(log, none, grid, regional);
            const DateTime from = random.entry().dateTime;
            const DateTime to = {from.seconds + (random.below(400) - 20) * secondsPerDay};
            const bool miles = random.below(2) == 0;
            const QString link = random.oneOf({u""_s, u"http://127.0.0.1/fm_logmap.php"_s});
            QCOMPARE(textLog(grid.rows(), {from, to, miles, link}, regional),
                plain.textLog(from, to, miles, link));
        }
    }
};

QTEST_GUILESS_MAIN(TestPlain)
#include "tst_plain.moc"
