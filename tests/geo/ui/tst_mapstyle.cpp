#include "geo/ui/mapstyle.h"
#include "stats/mapdata.h"

#include <QPalette>
#include <QTest>

#include <array>
#include <cmath>

using namespace quillon;

namespace {

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;

} // namespace

Q_DECLARE_METATYPE(Matrix)

namespace {

double linear(float value)
{
    const auto v = static_cast<double>(value);
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

// Ottosson's OKLab of what an eye sees, in which equal distances look equally different; 0.02 is just
// visible.
Vector seen(const Matrix &sight, const QColor &colour)
{
    const Vector rgb {linear(colour.redF()), linear(colour.greenF()), linear(colour.blueF())};
    Vector c {};
    for (std::size_t row = 0; row < 3; ++row) {
        c[row] =
            std::clamp(sight[row][0] * rgb[0] + sight[row][1] * rgb[1] + sight[row][2] * rgb[2], 0.0, 1.0);
    }
    const double l = std::cbrt(0.4122214708 * c[0] + 0.5363325363 * c[1] + 0.0514459929 * c[2]);
    const double m = std::cbrt(0.2119034982 * c[0] + 0.6806995451 * c[1] + 0.1073969566 * c[2]);
    const double s = std::cbrt(0.0883024619 * c[0] + 0.2817188376 * c[1] + 0.6299787005 * c[2]);
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
        1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
        0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

double apart(const Vector &a, const Vector &b)
{
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

QPalette palette(bool dark)
{
    return dark ? QPalette(QColor(53, 53, 53), QColor(30, 30, 32)) : QPalette(QColor(0xf0, 0xf0, 0xf0));
}

} // namespace

class TestMapStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Machado, Oliveira and Fernandes (2009): what eyes without one kind of cones see, in linear RGB.
    void modesAreToldApartByEverySight_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<Matrix>("sight");
        for (const bool dark : {false, true}) {
            const auto row = [dark](const char *sight) -> QTestData & {
                return QTest::addRow("%s on %s", sight, dark ? "dark" : "light") << dark;
            };
            row("full sight") << Matrix {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
            row("no red cones") << Matrix {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216},
                {-0.003882, -0.048116, 1.051998}}};
            row("no green cones") << Matrix {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413},
                {-0.011820, 0.042940, 0.968881}}};
            row("no blue cones") << Matrix {{{1.255528, -0.076749, -0.178779},
                {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}};
        }
    }

    void modesAreToldApartByEverySight()
    {
        QFETCH(bool, dark);
        QFETCH(Matrix, sight);
        const MapStyle style = MapStyle::of(palette(dark));
        QCOMPARE(style.dark, dark);
        for (std::size_t first = 0; first < mapModeCount; ++first) {
            const Vector one = seen(sight, style.mode(first));
            QVERIFY(apart(one, seen(sight, style.land)) > 0.12);
            QVERIFY(apart(one, seen(sight, style.sea)) > 0.12);
            for (std::size_t second = 0; second < first; ++second) {
                QVERIFY(apart(one, seen(sight, style.mode(second))) > 0.095);
            }
        }
    }

    void densityGrowsFromNothing()
    {
        for (const bool dark : {false, true}) {
            const MapStyle style = MapStyle::of(palette(dark));
            QCOMPARE(style.density(0).alpha(), 0);
            int before = 0;
            for (int i = 1; i <= 100; ++i) {
                const int alpha = style.density(i / 100.0).alpha();
                QVERIFY(alpha >= before);
                before = alpha;
            }
            QCOMPARE(style.density(1), style.density(7));
        }
    }

    void linksAreNoMarkupOfOthers()
    {
        QVERIFY(MapStyle::of(palette(true))
                    .linked(QStringLiteral("a<b"))
                    .contains(QStringLiteral(">a&lt;b</a>")));
    }
};

QTEST_MAIN(TestMapStyle)
#include "tst_mapstyle.moc"
