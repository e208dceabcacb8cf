// Writing and reading a route record of many points through the store, next
// to libplist's own XML conversion of the same tree: the store's overhead on
// top of the library is the conversion to and from Qt values and the atomic
// file replacement. A GPX track of as many points, read, sits next to the
// write of the route record it becomes.

#include "BenchMain.h"
#include "gpx/GpxFile.h"
#include "settings/PropertyList.h"
#include "settings/PropertyListGuard.h"
#include "settings/TMPreferenceUtil.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <plist/plist.h>

namespace {

RouteRecord routeRecord(int count)
{
    QList<RoutePoint> points;
    points.reserve(count);
    for (int i = 0; i < count; ++i)
        points.append(RoutePoint(22.2846809 + i * 1.37e-5, 114.1588 + i * 2.11e-5));
    RouteRecord record;
    record.setEnabled(true);
    record.setStart(1700000000.0);
    record.setEnd(1700003600.0);
    record.setStartAddress(QStringLiteral("Central, Hong Kong"));
    record.setEndAddress(QStringLiteral("Tsim Sha Tsui, Kowloon"));
    record.setPoints(points);
    return record;
}

plist_t routeTree(int count)
{
    plist_t root = nullptr;
    const QByteArray xml = PropertyList::toXml(routeRecord(count).toPropertyList());
    plist_from_xml(xml.constData(), uint32_t(xml.size()), &root);
    return root;
}

struct Folder
{
    QTemporaryDir dir;
    TMPreferenceUtil store{PreferenceFiles(dir.path())};
};

void BM_RouteRecordWrite(benchmark::State &state)
{
    Folder folder;
    const RouteRecord record = routeRecord(int(state.range(0)));
    for (auto _ : state)
        folder.store.writeRoutePreference(record);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_RouteRecordRead(benchmark::State &state)
{
    Folder folder;
    folder.store.writeRoutePreference(routeRecord(int(state.range(0))));
    for (auto _ : state) {
        RouteRecord record = folder.store.routePreference();
        benchmark::DoNotOptimize(record);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The physical floor under BM_RouteRecordWrite: the same bytes copied to a
// file, with nothing to format.
void BM_RouteRecordCopy(benchmark::State &state)
{
    Folder folder;
    folder.store.writeRoutePreference(routeRecord(int(state.range(0))));
    QFile record(folder.store.files().routeFile());
    record.open(QIODevice::ReadOnly);
    const QByteArray bytes = record.readAll();
    QFile copy(folder.dir.filePath(QStringLiteral("copy.plist")));
    for (auto _ : state) {
        copy.open(QIODevice::WriteOnly | QIODevice::Truncate);
        copy.write(bytes);
        copy.close();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_GpxImport(benchmark::State &state)
{
    Folder folder;
    const QList<RoutePoint> points = routeRecord(int(state.range(0))).points();
    QList<QDateTime> times;
    for (qsizetype i = 0; i < points.size(); ++i)
        times.append(QDateTime::fromSecsSinceEpoch(1700000000 + i, QTimeZone::utc()));
    const QString path = folder.dir.filePath(QStringLiteral("track.gpx"));
    Gpx::write(path, {}, points, times);
    for (auto _ : state) {
        Gpx::Content content = Gpx::read(path);
        benchmark::DoNotOptimize(content);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_LibplistToXml(benchmark::State &state)
{
    plist_t root = routeTree(int(state.range(0)));
    for (auto _ : state) {
        char *xml = nullptr;
        uint32_t length = 0;
        plist_to_xml(root, &xml, &length);
        benchmark::DoNotOptimize(xml);
        plist_to_xml_free(xml);
    }
    plist_free(root);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_LibplistFromXml(benchmark::State &state)
{
    const QByteArray xml = PropertyList::toXml(routeRecord(int(state.range(0))).toPropertyList());
    for (auto _ : state) {
        plist_t root = nullptr;
        plist_from_xml(xml.constData(), uint32_t(xml.size()), &root);
        benchmark::DoNotOptimize(root);
        plist_free(root);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The guard's pass over the route record's XML: a read no longer makes it
// (the reader keeps to the same depth), only a refused file does, to say why.
void BM_PropertyListGuard(benchmark::State &state)
{
    const QByteArray xml = PropertyList::toXml(routeRecord(int(state.range(0))).toPropertyList());
    for (auto _ : state) {
        QString refusal = PropertyListGuard::refusal(xml);
        benchmark::DoNotOptimize(refusal);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(BM_RouteRecordWrite)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RouteRecordRead)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RouteRecordCopy)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GpxImport)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LibplistToXml)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LibplistFromXml)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PropertyListGuard)->Arg(100000)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return runBenchmarks<QCoreApplication>(argc, argv);
}
