#include "geo/outlines.h"
#include "platform/runtimeerror.h"

#include <QFile>
#include <QProcess>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

qsizetype pointsOf(const std::vector<GeoLine> &lines)
{
    qsizetype count = 0;
    for (const GeoLine &line : lines) {
        count += static_cast<qsizetype>(line.size());
    }
    return count;
}

} // namespace

class TestOutlines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void areThoseOfTheMapPage()
    {
        QProcess node;
        node.start(u"node"_s, {QUILLON_TEST_DATA u"/../../tools/mapview/resource.js"_s, u"--stdout"_s});
        QVERIFY(node.waitForFinished(60000));
        QFile committed(QUILLON_TEST_DATA u"/../../geo/outlines.bin"_s);
        QVERIFY(committed.open(QIODevice::ReadOnly));
        QVERIFY(node.readAllStandardOutput() == committed.readAll());
    }

    void comeInThreeDetails()
    {
        const Outlines fine = outlines(OutlineDetail::Fine);
        const Outlines medium = outlines(OutlineDetail::Medium);
        const Outlines coarse = outlines(OutlineDetail::Coarse);
        QVERIFY(pointsOf(fine.land) > 50000);
        QVERIFY(pointsOf(medium.land) < 25000);
        QVERIFY(pointsOf(coarse.land) < 8000);
        QVERIFY(pointsOf(coarse.borders) > 1000);
        for (const Outlines &each : {fine, medium, coarse}) {
            for (const GeoLine &ring : each.land) {
                QVERIFY(ring.size() >= 3);
                QVERIFY(ring.front() != ring.back());
            }
        }
    }

    void readsSteps()
    {
        // One ring of three points, then one border of two; twice over for the second detail.
        const QByteArray one = QByteArray::fromHex("0103"
                                                   "d00f"
                                                   "cf0f"
                                                   "02"
                                                   "00"
                                                   "00"
                                                   "04"
                                                   "01"
                                                   "02"
                                                   "00"
                                                   "00"
                                                   "02"
                                                   "02");
        const Outlines read = readOutlines(QByteArray(one + one), OutlineDetail::Medium);
        QCOMPARE(read.land.size(), std::size_t(1));
        QCOMPARE(read.land.front(), (GeoLine {{-1.0, 1.0}, {-1.0, 1.001}, {-0.998, 1.001}}));
        QCOMPARE(read.borders.front(), (GeoLine {{0, 0}, {0.001, 0.001}}));
    }

    void whatIsCutShortIsRefused()
    {
        const QByteArray whole = QByteArray::fromHex("0103d00fcf0f020000040102000002"
                                                     "02");
        for (qsizetype length = 0; length < whole.size(); ++length) {
            QVERIFY_THROWS_EXCEPTION(
                RuntimeError, (void)readOutlines(whole.first(length), OutlineDetail::Fine));
        }
        const QByteArray greedy = QByteArray::fromHex("ffffffffffffffff7f");
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)readOutlines(greedy, OutlineDetail::Fine));
    }
};

QTEST_GUILESS_MAIN(TestOutlines)
#include "tst_outlines.moc"
