// The map at full size, 32,498 receptions of 5,001 sites, on 1920 x 1080 pixels: each frame as it is painted
// when something moves, with nothing kept from the frame before but what the map keeps itself.

#include "geo/ui/mapground.h"
#include "geo/ui/mapview.h"
#include "stats/maplog.h"
#include "support.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>

#include <cstdlib>
#include <numeric>

namespace quillon {

namespace {

QApplication &application()
{
    static int argc = 1;
    static char name[] = "bench_map";
    static char *argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never destroyed: when the program ends, what it needs for that is gone.
    static auto *instance = new QApplication(argc, argv);
    return *instance;
}

std::vector<qint32> everyEntry(const Logbook &log)
{
    std::vector<qint32> shown(static_cast<std::size_t>(log.count()));
    std::iota(shown.begin(), shown.end(), 0);
    return shown;
}

MapData fullData()
{
    const Logbook log = bench::fullLog();
    return mapData(log, bench::fullTransmitterList(), everyEntry(log), bench::homeSettings(), UtcNow());
}

// The map on the screen, zoomed in so many times, and painted once.
class ShownMap
{
public:
    explicit ShownMap(int zoomed)
    {
        m_view.resize(1920, 1080);
        m_view.setData(fullData());
        m_view.show();
        for (int i = 0; i < std::abs(zoomed); ++i) {
            zoomed < 0 ? m_view.zoomOut() : m_view.zoomIn();
        }
        application().processEvents();
        m_view.repaint();
        // The outlines of a move are there from the first one on.
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Plus, Qt::Key_Minus}) {
            press(key);
            m_view.repaint();
        }
    }

    [[nodiscard]] MapView &view() { return m_view; }
    [[nodiscard]] const MapView &view() const { return m_view; }

    void press(Qt::Key key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&m_view, &event);
    }

private:
    QApplication &m_application = application();
    MapView m_view;
};

void data(benchmark::State &state)
{
    const Logbook log = bench::fullLog();
    const TransmitterList transmitters = bench::fullTransmitterList();
    const std::vector<qint32> shown = everyEntry(log);
    const Settings settings = bench::homeSettings();
    for (auto _ : state) {
        benchmark::DoNotOptimize(mapData(log, transmitters, shown, settings, UtcNow()));
    }
}

// Data of another filter comes, and is painted.
void newData(benchmark::State &state)
{
    ShownMap map(0);
    const MapData full = fullData();
    for (auto _ : state) {
        map.view().setData(full);
        map.view().repaint();
    }
}

void choosingARow(benchmark::State &state)
{
    ShownMap map(0);
    std::size_t site = 0;
    for (auto _ : state) {
        const MapSite &chosen = map.view().scene().data().sites[site++ % 1000];
        map.view().setPath(MapPath {chosen.name, chosen.place});
        map.view().repaint();
    }
}

// One step of a drag, there and back, at the scale of so many zooms.
void moving(benchmark::State &state)
{
    ShownMap map(static_cast<int>(state.range(0)));
    bool there = false;
    for (auto _ : state) {
        map.press(there ? Qt::Key_Left : Qt::Key_Right);
        there = !there;
        map.view().repaint();
    }
}

void zooming(benchmark::State &state)
{
    ShownMap map(static_cast<int>(state.range(0)));
    bool in = true;
    for (auto _ : state) {
        in ? map.view().zoomIn() : map.view().zoomOut();
        in = !in;
        map.view().repaint();
    }
}

// After a move the outlines come in full, before the frame that shows them.
void fullOutlines(benchmark::State &state)
{
    const ShownMap map(static_cast<int>(state.range(0)));
    const MapViewport &viewport = map.view().viewport();
    const MapStyle style = MapStyle::of(map.view().palette());
    const PlaneOutlines &outlines = map.view().scene().outlines(detailFor(viewport.kmPerPixel()));
    QPixmap ground(viewport.size().toSize());
    for (auto _ : state) {
        QPainter painter(&ground);
        paintGround(painter, viewport, outlines, style, DistanceUnit::Kilometres);
    }
}

void movingClouds(benchmark::State &state)
{
    ShownMap map(0);
    map.view().setClouds(true);
    bool there = false;
    for (auto _ : state) {
        map.press(there ? Qt::Key_Left : Qt::Key_Right);
        there = !there;
        map.view().repaint();
    }
}

BENCHMARK(data)->Unit(benchmark::kMillisecond);
BENCHMARK(newData)->Unit(benchmark::kMillisecond);
BENCHMARK(choosingARow)->Unit(benchmark::kMillisecond);
BENCHMARK(moving)->Arg(-8)->Arg(-4)->Arg(0)->Arg(3)->Arg(6)->Arg(12)->Unit(benchmark::kMillisecond);
BENCHMARK(zooming)->Arg(-4)->Arg(0)->Arg(6)->Unit(benchmark::kMillisecond);
BENCHMARK(fullOutlines)->Arg(-8)->Arg(-4)->Arg(0)->Arg(3)->Arg(6)->Unit(benchmark::kMillisecond);
BENCHMARK(movingClouds)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace quillon
