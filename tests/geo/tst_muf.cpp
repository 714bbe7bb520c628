#include "geo/muf.h"

#include <QTest>

#include <cmath>

using namespace quillon;

class TestMuf : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The first three rows are those of a program of 1994 in the public domain.
    void oneHop_data()
    {
        QTest::addColumn<double>("kilometres");
        QTest::addColumn<double>("megahertz");
        QTest::addColumn<double>("elevation");
        QTest::addColumn<double>("critical");
        QTest::addColumn<double>("muf");
        QTest::addColumn<double>("tolerance");
        QTest::newRow("719 km") << 719.0 << 144.3 << 15.2 << 45.75 << 249.29 << 0.14;
        QTest::newRow("324 km") << 324.0 << 50.1 << 33.2 << 28.51 << 155.37 << 0.13;
        QTest::newRow("1202 km") << 1202.0 << 144.3 << 7.6 << 32.41 << 176.62 << 0.13;
        QTest::newRow("1000 km") << 1000.0 << 100.0 << 10.05 << 25.12 << 136.91 << 0.01;
        QTest::newRow("2000 km") << 2000.0 << 100.0 << 1.71 << 18.58 << 101.28 << 0.01;
    }

    void oneHop()
    {
        QFETCH(double, kilometres);
        QFETCH(double, megahertz);
        QFETCH(double, elevation);
        QFETCH(double, critical);
        QFETCH(double, muf);
        QFETCH(double, tolerance);
        const EsHop hop = esHop(kilometres, megahertz);
        QVERIFY(std::abs(hop.elevation - elevation) < 0.06);
        QVERIFY(std::abs(hop.critical - critical) < 0.03);
        QVERIFY(std::abs(hop.muf - muf) <= tolerance);
    }

    void theHorizonEndsTheHop()
    {
        QVERIFY(esHop(2350, 100).elevation > 0);
        QVERIFY(esHop(2352, 100).elevation < 0);
    }

    void otherPathsHaveNoMuf()
    {
        QVERIFY(!esMuf(499, 100));
        QVERIFY(esMuf(500, 100));
        QVERIFY(esMuf(2400, 100));
        QVERIFY(!esMuf(2401, 100));
        QVERIFY(!esMuf(1000, 0));
        QVERIFY(!esMuf(1000, std::nan("")));
    }
};

QTEST_GUILESS_MAIN(TestMuf)
#include "tst_muf.moc"
