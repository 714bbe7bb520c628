#include "platform/runtimeerror.h"
#include "support/pictures.h"
#include "support/testfiles.h"
#include "ui/chartcontrol.h"

#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QClipboard>
#include <QGraphicsTextItem>
#include <QGuiApplication>
#include <QLegend>
#include <QLegendMarker>
#include <QRegularExpression>
#include <QTest>
#include <QToolTip>
#include <QValueAxis>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize pictureSize(1920, 1080);

// June's bars rise from 1 to 12.
ChartTable juneByHours()
{
    MonthHourCounts counts {};
    for (std::size_t pair = 0; pair < 12; ++pair) {
        counts[2 * pair][6] = static_cast<qint16>(pair + 1);
    }
    return monthHoursTable(counts, u"2010 / All / Es"_s);
}

ChartTable risingMonths()
{
    return monthTable({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, u"All / All / All"_s);
}

QPalette darkPalette()
{
    QPalette palette(QColor(53, 53, 53));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::Text, QColor(230, 230, 230));
    return palette;
}

void show(ChartControl &chart, const ChartTable &table)
{
    chart.resize(900, 500);
    chart.setTable(table);
    chart.show();
    QVERIFY(QTest::qWaitForWindowExposed(&chart));
    QTest::qWait(1);
}

// What its titles, legends and axes show.
QStringList textsOf(const ChartControl &chart)
{
    QStringList texts;
    const QList<QGraphicsItem *> items = chart.scene()->items();
    for (const QGraphicsItem *item : items) {
        if (const auto *text = qgraphicsitem_cast<const QGraphicsTextItem *>(item)) {
            texts += text->toPlainText();
        }
    }
    return texts;
}

QPoint onControl(const ChartControl &chart, QPointF place)
{
    return chart.mapFromScene(place);
}

QRgb pixelAt(ChartControl &chart, QPointF place)
{
    return chart.viewport()->grab().toImage().pixel(onControl(chart, place)) | 0xff000000U;
}

} // namespace

class TestChartControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QGuiApplication::clipboard()->clear(); }

    void barsOfThePictureAreEvenlySpacedAndAsHighAsTheirCounts()
    {
        ChartControl chart;
        chart.setTable(risingMonths());
        const QImage picture = chart.picture();
        QCOMPARE(picture.size(), pictureSize);
        const auto bars = areasOf(picture, ChartStyle::of(lightPalette()).series(0, 1).rgb());
        QCOMPARE(bars.size(), std::size_t(12));
        const double unit = bars.back().height() / 12.0;
        const double pitch = (bars.back().center().x() - bars.front().center().x()) / 11.0;
        QVERIFY(unit > 50);
        QVERIFY(pitch > 100);
        for (std::size_t i = 0; i < bars.size(); ++i) {
            const auto number = static_cast<double>(i);
            QVERIFY(std::abs(bars[i].height() - unit * (number + 1)) <= 1.5);
            QVERIFY(std::abs(bars[i].center().x() - bars[0].center().x() - pitch * number) <= 1.5);
            QVERIFY(std::abs(bars[i].bottom() - bars[0].bottom()) <= 1);
        }
    }

    void twelveSeriesStandInTheOrderOfTheClock()
    {
        ChartControl chart;
        chart.setTable(juneByHours());
        const QImage picture = chart.picture();
        const ChartStyle style = ChartStyle::of(lightPalette());
        double before = 0;
        for (int series = 0; series < 12; ++series) {
            const auto bars = areasOf(picture, style.series(series, 12).rgb());
            QCOMPARE(bars.size(), std::size_t(1));
            const double place = bars.front().center().x();
            if (series > 0) {
                QVERIFY(place - before > 8);
                QVERIFY(place - before < 13);
            }
            before = place;
        }
    }

    void thePictureIsLightWhateverTheWindow()
    {
        ChartControl small;
        small.resize(200, 100);
        small.setTable(juneByHours());
        ChartControl dark;
        dark.setPalette(darkPalette());
        dark.resize(2500, 1500);
        dark.setTable(juneByHours());
        const QImage picture = small.picture();
        QCOMPARE(picture.size(), pictureSize);
        QCOMPARE(picture.pixel(3, 3), QColor(Qt::white).rgb());
        QCOMPARE(picture, dark.picture());
    }

    void barsOfTheControlStandWhereTheyAreSaidToStand_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void barsOfTheControlStandWhereTheyAreSaidToStand()
    {
        QFETCH(bool, dark);
        ChartControl chart;
        show(chart, risingMonths());
        chart.setPalette(dark ? darkPalette() : lightPalette());
        const ChartStyle style = ChartStyle::of(chart.palette());
        QCOMPARE(style.dark, dark);
        for (int month = 0; month < 12; ++month) {
            const QRectF bar = chart.barPlace({month, 0});
            QCOMPARE(pixelAt(chart, bar.center()), style.series(0, 1).rgb());
            QCOMPARE(pixelAt(chart, {bar.left() - 4, bar.bottom() - 4}), style.ground.rgb());
            QVERIFY(pixelAt(chart, {bar.center().x(), bar.top() - 2}) != style.series(0, 1).rgb());
        }
    }

    void coloursAreToldApartByEverySight_data();
    void coloursAreToldApartByEverySight();

    void pointingTellsPeriodHoursAndCount()
    {
        ChartControl chart;
        show(chart, juneByHours());
        QTest::mouseMove(chart.viewport(), onControl(chart, chart.barPlace({5, 7}).center()));
        QTRY_COMPARE(QToolTip::text(), u"Period: Jun (2010 / All / Es)\nHours: 14 & 15 hrs\nCount: 8"_s);
        QTest::mouseMove(
            chart.viewport(), onControl(chart, chart.barPlace({6, 0}).center() - QPointF(0, 60)));
        QTRY_COMPARE(QToolTip::text(), u"Period: Jul (2010 / All / Es)\nHours: 00 & 01 hrs\nCount: 0"_s);
    }

    void onePlainSeriesTellsPeriodAndCount()
    {
        ChartControl chart;
        show(chart, dayTable({0, 4}, u"All / May / All"_s));
        QCOMPARE(chart.barText({0, 0}), u"Period: 1 (All / May / All)\nCount: 4"_s);
        QCOMPARE(chart.barAt(chart.barPlace({30, 0}).center() - QPointF(0, 5)), (ChartControl::Bar {30, 0}));
        QVERIFY(!chart.barAt({1, 1}));
    }

    void everyBarIsFoundAtItsPlace()
    {
        ChartControl chart;
        show(chart, juneByHours());
        for (int month = 0; month < 12; ++month) {
            for (int pair = 0; pair < 12; ++pair) {
                const QPointF foot(
                    chart.barPlace({month, pair}).center().x(), chart.barPlace({0, 0}).bottom() - 1);
                QCOMPARE(chart.barAt(foot), (ChartControl::Bar {month, pair}));
            }
        }
    }

    void theAxisCountsInWholeNumbers()
    {
        ChartControl chart;
        chart.setTable(risingMonths());
        const auto axes = chart.chart()->axes(Qt::Vertical);
        QCOMPARE(axes.size(), 1);
        const auto *axis = qobject_cast<QValueAxis *>(axes.first());
        QCOMPARE(axis->min(), 0.0);
        QCOMPARE(axis->max(), 14.0);
        QCOMPARE(axis->tickCount(), 8);
        QCOMPARE(axis->labelFormat(), u"%d"_s);
    }

    void theLegendListsTheSeriesWhenItIsShown()
    {
        ChartControl chart;
        chart.setLegend(true, QFont(u"Arial"_s, 11));
        const ChartTable table = juneByHours();
        show(chart, table);
        const QLegend *legend = chart.chart()->legend();
        QVERIFY(legend->isVisible());
        QCOMPARE(legend->font().family(), u"Arial"_s);
        QCOMPARE(legend->markers().size(), table.series().size());
        const QStringList texts = textsOf(chart);
        for (const QString &series : table.series()) {
            QVERIFY2(texts.contains(series), qPrintable(series + u" in "_s + texts.join(u'|')));
        }
        chart.setLegend(false, QFont(u"Arial"_s, 11));
        QVERIFY(!legend->isVisible());
    }

    void aNewTableReplacesTheOld()
    {
        ChartControl chart;
        chart.setTable(juneByHours());
        chart.setTable(risingMonths());
        QCOMPARE(chart.chart()->series().size(), 1);
        QCOMPARE(chart.chart()->axes().size(), 2);
        QCOMPARE(chart.chart()->title(), u"All / All / All"_s);
        QCOMPARE(qobject_cast<QBarSeries *>(chart.chart()->series().first())->barSets().size(), 1);
        chart.setTable({});
        QVERIFY(chart.chart()->series().isEmpty());
        QCOMPARE(chart.picture().size(), pictureSize);
    }

    void aTitleIsShownAsItIsTyped()
    {
        ChartControl chart;
        chart.setTable(monthTable({}, u"<b>&All"_s));
        QCOMPARE(chart.chart()->title(), u"&lt;b&gt;&amp;All"_s);
    }

    void whatAChartNamesIsShownAsItIsWritten()
    {
        ChartControl chart;
        chart.setLegend(true, QFont(u"Arial"_s, 11));
        ChartTable table(u"<i>t</i>"_s, {u"<b>c</b>"_s}, {u"<u>s</u>"_s});
        table.setCount(0, 0, 3);
        show(chart, table);
        const QStringList texts = textsOf(chart);
        for (const QString &text : {table.title(), table.categories().first(), table.series().first()}) {
            QVERIFY2(texts.contains(text), qPrintable(text + u" in "_s + texts.join(u'|')));
        }
    }

    void emptyPlacesSpeak()
    {
        ChartControl chart;
        chart.setEmptyText(u"Press the button"_s);
        show(chart, {});
        QCOMPARE(chart.accessibleDescription(), u"Press the button"_s);
        const QImage before = chart.viewport()->grab().toImage();
        chart.setEmptyText({});
        QVERIFY(chart.viewport()->grab().toImage() != before);
        chart.setTable(risingMonths());
        QVERIFY(chart.accessibleDescription().startsWith(u"All / All / All. Jan: 1, Feb: 2, "_s));
    }

    void aChartWithoutRoomForItsPeriodsIsDrawnAllTheSame_data()
    {
        QTest::addColumn<int>("width");
        for (const int width : {400, 120, 60, 20, 1}) {
            QTest::addRow("%d pixels", width) << width;
        }
    }

    void aChartWithoutRoomForItsPeriodsIsDrawnAllTheSame()
    {
        QFETCH(int, width);
        QTest::failOnWarning(QRegularExpression(u"setPointSize"_s));
        ChartControl chart;
        chart.setMinimumSize(1, 1);
        show(chart, risingMonths());
        chart.resize(width, 500);
        QTest::qWait(1);
        QVERIFY(!chart.viewport()->grab().isNull());
    }

    void thePictureIsCopied()
    {
        ChartControl chart;
        chart.setTable(risingMonths());
        const QImage copied = chart.copyPicture();
        QCOMPARE(QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32), copied);
    }

    void aBitmapOf24BitsIsWrittenOverTheOldFile()
    {
        TestDirectory directory;
        directory.write(u"chart.bmp"_s, "old");
        ChartControl chart;
        chart.setTable(risingMonths());
        saveBitmap(chart.picture(), directory.file(u"chart.bmp"_s));
        const QByteArray bytes = directory.read(u"chart.bmp"_s);
        QVERIFY(bytes.startsWith("BM"));
        QCOMPARE(qFromLittleEndian<quint32>(bytes.constData() + 2), quint32(bytes.size()));
        QCOMPARE(qFromLittleEndian<quint32>(bytes.constData() + 18), quint32(1920));
        QCOMPARE(qFromLittleEndian<quint32>(bytes.constData() + 22), quint32(1080));
        QCOMPARE(qFromLittleEndian<quint16>(bytes.constData() + 28), quint16(24));
        QCOMPARE(QImage::fromData(bytes, "BMP").convertToFormat(QImage::Format_RGB32), chart.picture());
        QCOMPARE(directory.names(), QStringList(u"chart.bmp"_s));
    }

    void aFileThatCannotBeWrittenIsARunTimeError_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("a folder that is not there") << u"missing/chart.bmp"_s;
        QTest::newRow("a folder of that name") << u"folder"_s;
        QTest::newRow("below a file") << u"folder/file/chart.bmp"_s;
    }

    void aFileThatCannotBeWrittenIsARunTimeError()
    {
        QFETCH(QString, name);
        TestDirectory directory;
        directory.write(u"folder/file"_s, "kept");
        ChartControl chart;
        const QImage picture = chart.picture();
        QVERIFY_THROWS_EXCEPTION(RuntimeError, saveBitmap(picture, directory.file(name)));
        QCOMPARE(directory.read(u"folder/file"_s), QByteArray("kept"));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, saveBitmap({}, directory.file(u"nothing.bmp"_s)));
    }
};

namespace {

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;

Vector times(const Matrix &matrix, const Vector &vector)
{
    Vector result {};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            result[i] += matrix[i][j] * vector[j];
        }
        result[i] = std::clamp(result[i], 0.0, 1.0);
    }
    return result;
}

Vector linear(const QColor &colour)
{
    const auto value = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return {value(colour.redF()), value(colour.greenF()), value(colour.blueF())};
}

// Ottosson's OKLab, in which equal distances look equally different; 0.02 is just visible.
Vector oklab(const Vector &c)
{
    const double l = std::cbrt(0.4122214708 * c[0] + 0.5363325363 * c[1] + 0.0514459929 * c[2]);
    const double m = std::cbrt(0.2119034982 * c[0] + 0.6806995451 * c[1] + 0.1073969566 * c[2]);
    const double s = std::cbrt(0.0883024619 * c[0] + 0.2817188376 * c[1] + 0.6299787005 * c[2]);
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
        1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
        0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

double luminance(const QColor &colour)
{
    const Vector c = linear(colour);
    return 0.2126 * c[0] + 0.7152 * c[1] + 0.0722 * c[2];
}

double contrast(const QColor &first, const QColor &second)
{
    const auto [least, most] = std::minmax({luminance(first), luminance(second)});
    return (most + 0.05) / (least + 0.05);
}

} // namespace

// Machado, Oliveira and Fernandes (2009): what eyes without one kind of cones see, in linear RGB.
void TestChartControl::coloursAreToldApartByEverySight_data()
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
        row("no blue cones") << Matrix {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602},
            {0.004733, 0.691367, 0.303900}}};
    }
}

void TestChartControl::coloursAreToldApartByEverySight()
{
    QFETCH(bool, dark);
    QFETCH(Matrix, sight);
    const ChartStyle style = ChartStyle::of(dark ? darkPalette() : lightPalette());
    for (int first = 0; first < 12; ++first) {
        QVERIFY(contrast(style.series(first, 12), style.ground) > 1.7);
        for (int second = 0; second < first; ++second) {
            const Vector a = oklab(times(sight, linear(style.series(first, 12))));
            const Vector b = oklab(times(sight, linear(style.series(second, 12))));
            QVERIFY(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]) > 0.1);
        }
    }
    QVERIFY(contrast(style.series(0, 1), style.ground) > 3);
}

QTEST_MAIN(TestChartControl)
#include "tst_chartcontrol.moc"
