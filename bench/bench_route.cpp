// The route switch and the directions decoding at the size of a long trip:
// compare BM_SwitchOn with BM_RouteRecordWrite of bench_settings (the write
// the switch does), BM_DirectionsDecode with a fifth of it, and BM_EvenPace
// with the same write.

#include "BenchMain.h"
#include "app/ApplicationShell.h"
#include "app/Services.h"
#include "fakes/FakeDirectionsService.h"
#include "fakes/FixedDeviceMetrics.h"
#include "fakes/ManualClock.h"
#include "fakes/RecordingAlertPresenter.h"
#include "route/DateTimePicker.h"
#include "route/TrekmimeViewController.h"
#include "routing/OsrmDirectionsService.h"
#include "routing/RoutePace.h"
#include "settings/TMPreferenceUtil.h"
#include "shell/ScreenNeeds.h"

#include <QApplication>
#include <QTemporaryDir>

namespace {

QList<Coordinate> longRoute(int count)
{
    QList<Coordinate> coordinates;
    coordinates.reserve(count);
    for (int i = 0; i < count; ++i)
        coordinates.append({22.2 + i * 1e-6, 114.1 + (i % 1000) * 1e-6});
    return coordinates;
}

void encodeValue(qint64 value, QByteArray &out)
{
    quint64 v = value < 0 ? ~(quint64(value) << 1) : quint64(value) << 1;
    while (v >= 0x20) {
        out.append(char((0x20 | (v & 0x1f)) + 63));
        v >>= 5;
    }
    out.append(char(v + 63));
}

QByteArray osrmBody(const QList<Coordinate> &coordinates)
{
    QByteArray line;
    qint64 lastLatitude = 0;
    qint64 lastLongitude = 0;
    for (const Coordinate &c : coordinates) {
        const qint64 latitude = qRound64(c.latitude * 1e6);
        const qint64 longitude = qRound64(c.longitude * 1e6);
        encodeValue(latitude - lastLatitude, line);
        encodeValue(longitude - lastLongitude, line);
        lastLatitude = latitude;
        lastLongitude = longitude;
    }
    return R"({"code":"Ok","routes":[{"geometry":")" + line +
           R"(","distance":100000,"duration":7200}],"waypoints":[]})";
}

struct NoShell : ApplicationShell
{
    void changeToRouter() override {}
    void changeToLocation() override {}
};

void BM_SwitchOn(benchmark::State &state)
{
    QTemporaryDir dir;
    TMPreferenceUtil preferences{PreferenceFiles(dir.path())};
    ManualClock clock(qint64(1700000000) * 1000);
    RecordingAlertPresenter alerts;
    FixedDeviceMetrics metrics;
    FakeDirectionsService directions;
    Services services;
    services.clock = &clock;
    services.alerts = &alerts;
    services.deviceMetrics = &metrics;
    services.directions = &directions;
    services.preferences = &preferences;
    NoShell shell;

    TrekmimeViewController screen(ScreenNeeds::route(services), shell);
    screen.setAnimationDuration(0);
    screen.resize(390, 844);
    screen.loadViewIfNeeded();
    directions.setAnswer(
        DirectionsAnswer::found({DirectionsRoute{longRoute(int(state.range(0))), 0, 0}}));
    screen.startChosen(22.2, 114.1, QStringLiteral("Start"));
    screen.endChosen(22.3, 114.2, QStringLiteral("End"));
    while (screen.points().size() != state.range(0))
        QCoreApplication::processEvents();
    screen.chooseStartTime();
    screen.datePicker()->step(DateTimePicker::Minute, 1);
    screen.pickerButtonClicked();
    screen.chooseEndTime();
    screen.datePicker()->step(DateTimePicker::Hour, 2);
    screen.pickerButtonClicked();
    directions.setHeld(true); // the re-plan of each switch-on stays unanswered

    for (auto _ : state) {
        screen.setEnable(true);
        screen.refreshLocation();
        state.PauseTiming();
        screen.setEnable(false);
        state.ResumeTiming();
    }
    if (!alerts.alerts().isEmpty())
        state.SkipWithError("the switch refused");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_DirectionsDecode(benchmark::State &state)
{
    const QByteArray body = osrmBody(longRoute(int(state.range(0))));
    for (auto _ : state) {
        const DirectionsAnswer answer = OsrmDirectionsService::answerFor(200, body);
        // as the screen keeps them: one {"lat", "lng"} dictionary per vertex
        QVariantList points;
        const QList<Coordinate> &coordinates = answer.routes.first().coordinates;
        points.reserve(coordinates.size());
        for (const Coordinate &c : coordinates) {
            points.append(QVariantMap{{QStringLiteral("lat"), c.latitude},
                                      {QStringLiteral("lng"), c.longitude}});
        }
        benchmark::DoNotOptimize(points);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Respacing a long route for a trip long enough that the point cap decides
// the spacing; compare with BM_RouteRecordWrite, which follows it on a switch.
void BM_EvenPace(benchmark::State &state)
{
    const QList<Coordinate> route = longRoute(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(RoutePace::evenPace(route, 1e7));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(BM_SwitchOn)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DirectionsDecode)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EvenPace)->Arg(100000)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return runBenchmarks<QApplication>(argc, argv);
}
