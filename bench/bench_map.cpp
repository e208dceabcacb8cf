// One frame of the map as the route screen shows it: a 390 x 844 view with
// its tiles in memory, 20 pins and a route line of N points across the
// view, painted into an image.

#include "BenchMain.h"
#include "ui/MapPolyline.h"
#include "ui/SlippyMap.h"
#include "ui/TileSource.h"

#include <QApplication>
#include <QPainter>
#include <QTimer>

#include <cmath>
#include <numbers>

namespace {

// answers every tile with a drawn image, as a disk cache would
class MemoryTileSource : public TileSource
{
public:
    QString attribution() const override
    {
        return QStringLiteral("\u00a9 OpenStreetMap contributors");
    }
    void requestTile(const TileId &tile) override
    {
        QImage image(256, 256, QImage::Format_RGB32);
        image.fill(QColor::fromHsv((tile.x * 37 + tile.y * 91) % 360, 30, 240));
        QPainter painter(&image);
        painter.setPen(QColor(0x99, 0x99, 0x99));
        for (int i = 16; i < 256; i += 32)
            painter.drawLine(0, i, 255, i + 20);
        painter.end();
        QTimer::singleShot(0, this, [this, tile, image] { emit tileLoaded(tile, image); });
    }
};

constexpr QSize ViewSize(390, 844);

// A route across the view from the top-left to the bottom-right corner,
// winding like a road, with the small irregularities of real points.
QList<Coordinate> routeAcross(const MapCamera &camera, int count)
{
    QList<Coordinate> points;
    points.reserve(count);
    quint32 noise = 12345;
    for (int i = 0; i < count; ++i) {
        const double t = count > 1 ? double(i) / (count - 1) : 0.0;
        noise = noise * 1664525u + 1013904223u;
        const double jitter = (double(noise >> 8) / double(1u << 24) - 0.5) * 0.6;
        const double wiggle = 40.0 * std::sin(t * 16.0 * std::numbers::pi) + jitter;
        const QPointF along(20.0 + t * (ViewSize.width() - 40.0),
                            20.0 + t * (ViewSize.height() - 40.0));
        points.append(camera.pointToCoordinate(along + QPointF(wiggle, -wiggle * 0.4)));
    }
    return points;
}

struct Scene
{
    MemoryTileSource tiles;
    SlippyMap map;

    explicit Scene(int points, double zoom = 14.0)
    {
        map.setTileSource(&tiles);
        map.camera().setViewportSize(QSizeF(ViewSize));
        map.camera().setCenter(Coordinate{39.9087, 116.3975});
        map.camera().setZoom(zoom);
        for (int i = 0; i < 20; ++i) {
            const QPointF at(30.0 + (i % 4) * 100.0, 40.0 + (i / 4) * 160.0);
            map.addAnnotation(std::make_shared<MapPointAnnotation>(
                map.camera().pointToCoordinate(at), i == 0   ? RouteStartAnnotationTag
                                                    : i == 1 ? RouteEndAnnotationTag
                                                             : 0));
        }
        if (points > 0)
            map.addOverlay(std::make_shared<MapPolyline>(routeAcross(map.camera(), points)),
                           MapPolylineRenderer{2.5, QColor(Qt::green)});
        // bring every tile of the view into memory
        QImage warm(ViewSize, QImage::Format_ARGB32_Premultiplied);
        for (int round = 0; round < 3; ++round) {
            paintInto(warm);
            QCoreApplication::processEvents();
        }
    }

    void paintInto(QImage &frame)
    {
        QPainter painter(&frame);
        map.paint(painter);
        painter.end();
        benchmark::DoNotOptimize(frame.constBits());
    }
};

// Frames of a map at rest at `zoom`.
void renderAtRest(benchmark::State &state, double zoom)
{
    Scene scene(int(state.range(0)), zoom);
    QImage frame(ViewSize, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state)
        scene.paintInto(frame);
}

void BM_MapRender(benchmark::State &state)
{
    renderAtRest(state, 14.0);
}
BENCHMARK(BM_MapRender)->Arg(0)->Arg(100000)->Unit(benchmark::kMillisecond);

// The same at rest between two tile levels (after fitting a region), where
// tiles are shown enlarged.
void BM_MapRenderFractionalZoom(benchmark::State &state)
{
    renderAtRest(state, 14.3);
}
BENCHMARK(BM_MapRenderFractionalZoom)->Arg(0)->Arg(100000)->Unit(benchmark::kMillisecond);

// Frames of a pinch or a zooming animation: the zoom differs every frame,
// so tiles are scaled and lines drawn afresh each time.
void BM_MapRenderZooming(benchmark::State &state)
{
    Scene scene(int(state.range(0)), 14.3);
    QImage frame(ViewSize, QImage::Format_ARGB32_Premultiplied);
    int step = 0;
    for (auto _ : state) {
        scene.map.camera().setZoom(14.3 + 0.01 * (++step % 2));
        scene.paintInto(frame);
    }
}
BENCHMARK(BM_MapRenderZooming)->Arg(0)->Arg(100000)->Unit(benchmark::kMillisecond);

// The frame in which a zoom comes to rest, followed by one copying what it
// kept: tiles are scaled and the line drawn into each of them once.
void BM_MapRenderSettling(benchmark::State &state)
{
    Scene scene(int(state.range(0)), 14.3);
    QImage frame(ViewSize, QImage::Format_ARGB32_Premultiplied);
    int step = 0;
    for (auto _ : state) {
        scene.map.camera().setZoom(14.3 + 0.01 * (++step % 2));
        scene.paintInto(frame);
        scene.paintInto(frame);
    }
}
BENCHMARK(BM_MapRenderSettling)->Arg(0)->Arg(100000)->Unit(benchmark::kMillisecond);

// The frame after the line is added or the zoom crosses a whole level: the
// line's drawing copy for that level is built first.
void BM_MapRenderFirstFrame(benchmark::State &state)
{
    Scene scene(0);
    const auto line =
        std::make_shared<MapPolyline>(routeAcross(scene.map.camera(), int(state.range(0))));
    QImage frame(ViewSize, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        scene.map.addOverlay(line, MapPolylineRenderer{2.5, QColor(Qt::green)});
        scene.paintInto(frame);
        scene.map.removeOverlay(line);
    }
}
BENCHMARK(BM_MapRenderFirstFrame)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return runBenchmarks<QApplication>(argc, argv);
}
