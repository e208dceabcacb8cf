// The position feed over an hour of a running trip: one tick a second on a
// simulated clock, sentences to ten clients on a Unix socket. Its CPU time
// for the hour should stay well under a second, and nothing is read from
// disk again while the settings files stay as they are.

#include "BenchMain.h"
#include "fakes/ManualClock.h"
#include "feed/FeedSettings.h"
#include "feed/NmeaServer.h"
#include "feed/PositionFeed.h"
#include "settings/TMPreferenceUtil.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <memory>

namespace {

constexpr qint64 TripStart = 1893484800; // 2030-01-01, seconds since 1970
constexpr int HourSeconds = 3600;

void writeTrip(TMPreferenceUtil &store, int points)
{
    QList<RoutePoint> route;
    route.reserve(points);
    for (int i = 0; i < points; ++i)
        route.append(RoutePoint(22.2 + i * 1e-6, 114.1 + (i % 1000) * 1e-6));
    RouteRecord record;
    record.setPoints(route);
    record.setStart(double(TripStart));
    record.setEnd(double(TripStart + HourSeconds));
    record.setEnabled(true);
    store.writeRoutePreference(record);
    store.writeMode(MasterRecord::RouteMode);
}

void BM_FeedHour(benchmark::State &state)
{
    QTemporaryDir dir;
    TMPreferenceUtil store{PreferenceFiles(dir.path())};
    writeTrip(store, int(state.range(0)));
    const int clientCount = int(state.range(1));
    qint64 rereads = 0;
    qint64 bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ManualClock clock(TripStart * 1000);
        FeedSettings settings(store);
        NmeaServer server;
        QString error;
        const QString path = dir.filePath(QStringLiteral("nmea.sock"));
        if (!server.listenLocal(path, &error)) {
            state.SkipWithError(qPrintable(error));
            return;
        }
        PositionFeed feed(settings, server, clock);
        feed.start();
        std::vector<std::unique_ptr<QLocalSocket>> clients;
        qint64 received = 0;
        for (int i = 0; i < clientCount; ++i) {
            auto client = std::make_unique<QLocalSocket>();
            QLocalSocket *socket = client.get();
            QObject::connect(socket, &QLocalSocket::readyRead, socket,
                             [socket, &received] { received += socket->readAll().size(); });
            socket->connectToServer(path);
            clients.push_back(std::move(client));
        }
        while (server.clientCount() < clientCount)
            QCoreApplication::processEvents();
        const int readsBefore = settings.reads();
        state.ResumeTiming();

        for (int second = 0; second < HourSeconds; ++second) {
            clock.advance(1000);
            QCoreApplication::processEvents();
        }
        // the last sentences on their way to the clients
        for (qint64 before = -1; before != received;) {
            before = received;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }

        state.PauseTiming();
        rereads += settings.reads() - readsBefore;
        bytes += received;
        clients.clear();
        state.ResumeTiming();
    }
    if (rereads != 0)
        state.SkipWithError("a settings file was read again although none changed");
    state.counters["rereads"] = double(rereads);
    state.counters["bytes_per_client_hour"] =
        double(bytes) / double(state.iterations()) / double(clientCount);
}

} // namespace

BENCHMARK(BM_FeedHour)
    ->Args({100000, 10})
    ->Iterations(3)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return runBenchmarks<QCoreApplication>(argc, argv);
}
