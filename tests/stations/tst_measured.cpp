#include "stations/noisyreceptions.h"
#include "stations/stationcsv.h"

#include <QFile>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

StationList demoStations()
{
    QFile file(u"" QUILLON_TEST_DATA "/../../tools/fmlist-standin/stations.csv"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("the list of the demo is missing");
    }
    BlockSource source(file, file.fileName(), {});
    const CsvLayout layout {.encoding = u"1252"_s,
        .separator = u';',
        .hasHeading = false,
        .columns = {0, 1, 2, -1, 4, 3, 6, 7, 5, -1, -1, 8}};
    StationCollector stations;
    readStationCsv(source, layout, stations);
    return {stations.file(), u"stations.lst"_s};
}

// How many of a kind there were, and how many stood first.
struct Tally
{
    int all = 0;
    int first = 0;

    void count(bool isFirst)
    {
        ++all;
        first += isFirst ? 1 : 0;
    }
    [[nodiscard]] QString text() const { return u"%1 of %2"_s.arg(first).arg(all); }
};

// One line a kind of reception: the right station stood first in so many of so many.
class Report
{
public:
    void count(const NoisyReception &made, const std::vector<Candidate> &found)
    {
        const auto right = std::ranges::find(found, made.station, &Candidate::station);
        const bool first = right == found.begin() && !found.empty();
        m_all.count(first);
        m_lines[made.signal.pi ? u"with a PI code"_s : u"name alone"_s].count(first);
        if (made.signal.pi && made.lostLetters > 0 && !made.moved && !made.regional) {
            m_lines[u"letters missing"_s].count(first);
        }
        if (made.moved) {
            m_lines[u"pairs of letters in another order"_s].count(first);
        }
        if (made.regional) {
            m_lines[u"another regional PI code"_s].count(first);
        }
        if (found.size() > 1) {
            m_lines[u"more than one station fits"_s].count(first);
        }
        if (made.byEs != made.signal.esLikely) {
            m_lines[u"the hour misleads"_s].count(first);
        }
        if (!first) {
            const QString heard = made.signal.name.trimmed();
            const bool shown = right != found.end();
            m_wrong += u"%1 MHz \"%2\" %3 (%4 km, %5): %6"_s.arg(
                QString::number(made.station.kilohertz / 1000.0, 'f', 1), heard, made.station.site,
                QString::number(made.kilometres, 'f', 0), made.byEs ? u"Es"_s : u"ground"_s,
                found.empty() ? u"no candidate"_s
                              : u"%1 at %2 km stands first with %3, the right one %4"_s.arg(
                                  found[0].station.site, QString::number(found[0].leg->kilometres, 'f', 0),
                                  QString::number(100 * found[0].share, 'f', 0) + u" %"_s,
                                  shown ? u"has "_s + QString::number(100 * right->share, 'f', 1) + u" %"_s
                                        : u"is not there"_s));
        }
    }

    [[nodiscard]] const Tally &all() const { return m_all; }
    [[nodiscard]] QString text() const
    {
        QStringList lines {u"first in "_s + m_all.text()};
        for (auto it = m_lines.cbegin(); it != m_lines.cend(); ++it) {
            lines += it.key() + u": "_s + it->text();
        }
        return (lines + m_wrong).join(u'\n');
    }

private:
    Tally m_all;
    QMap<QString, Tally> m_lines;
    QStringList m_wrong;
};

} // namespace

class TestMeasured : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRightStationIsMostlyFirst_data()
    {
        QTest::addColumn<quint32>("seed");
        for (const quint32 seed : {875U, 1080U, 2025U}) {
            QTest::addRow("seed %u", seed) << seed;
        }
    }

    // Run with -v1 or more words, or read docs/CANDIDATES.md, for where it is not.
    void theRightStationIsMostlyFirst()
    {
        QFETCH(quint32, seed);
        const StationList list = demoStations();
        QVERIFY(list.count() > 3'000);
        NoisyReceptions receptions(list, seed);
        Report report;
        constexpr int measured = 1'000;
        for (int i = 0; i < measured; ++i) {
            const NoisyReception made = receptions.next();
            report.count(made, candidates(made.signal, list, {}));
        }
        for (const QString &line : report.text().split(u'\n')) {
            qInfo().noquote() << line;
        }
        QVERIFY2(report.all().first >= 950, qPrintable(report.all().text()));
    }
};

QTEST_GUILESS_MAIN(TestMeasured)
#include "tst_measured.moc"
