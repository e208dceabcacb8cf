// The whitelist screen's list as it loads: N desktop entries with icons from
// an icon theme made here, turned into records with one name query and two
// icon lookups each, and each icon drawn for its row, nothing cached between
// runs.

#include "BenchMain.h"
#include "applications/ApplicationList.h"
#include "applications/GioApplicationRegistry.h"
#include "apps/ApplicationIconLoader.h"
#include "fakes/DesktopEntryFolder.h"
#include "settings/TMPreferenceUtil.h"

#include <QColor>
#include <QGuiApplication>
#include <QPixmapCache>
#include <QTemporaryDir>

namespace {

QTemporaryDir *dataFolder()
{
    static QTemporaryDir folder;
    return &folder;
}

// no hide list in the folder: every entry comes from GIO
const TMPreferenceUtil &preferences()
{
    static const TMPreferenceUtil store{PreferenceFiles(dataFolder()->path())};
    return store;
}

// GLib reads the data folders once per process: fill them before the first
// question, with the largest count any run asks for
void makeEntries(int count)
{
    const DesktopEntryFolder entries(dataFolder()->filePath(QStringLiteral("data")));
    for (int i = 0; i < count; ++i) {
        const QString bundle = QStringLiteral("org.example.App%1").arg(i, 3, 10, QLatin1Char('0'));
        entries.addThemeIcon(bundle, QColor::fromHsv(i * 37 % 360, 150, 210), {});
        entries.addApplication(bundle, QStringLiteral("Application %1").arg(i), bundle);
    }
    qputenv("XDG_DATA_DIRS", entries.root().toLocal8Bit());
    qputenv("XDG_DATA_HOME", dataFolder()->filePath(QStringLiteral("home")).toLocal8Bit());
}

void BM_InstalledAppModel(benchmark::State &state)
{
    const GioApplicationRegistry registry;
    qsizetype listed = 0;
    for (auto _ : state) {
        // Qt keeps drawn icons in its pixmap cache; a user opening the
        // screen after a while finds it empty
        state.PauseTiming();
        QPixmapCache::clear();
        state.ResumeTiming();
        const QList<ApplicationModel> models =
            ApplicationList::installedAppModel(registry, preferences());
        for (const ApplicationModel &model : models) {
            benchmark::DoNotOptimize(ApplicationIconLoader::load(
                model.appIcon(), ApplicationIconLoader::SmallIconFormat, 1.0));
        }
        listed = models.size();
    }
    if (listed != state.range(0))
        state.SkipWithError("the list does not hold every entry");
    state.counters["applications"] = double(listed);
}
BENCHMARK(BM_InstalledAppModel)->Arg(300)->Unit(benchmark::kMillisecond);

// The same list without icons, as trekmime-ctl reads it: what GIO costs alone.
void BM_InstalledAppNames(benchmark::State &state)
{
    const GioApplicationRegistry registry;
    for (auto _ : state) {
        const QStringList bundles = ApplicationList::installedAppBundle(registry, preferences());
        for (const QString &bundle : bundles)
            benchmark::DoNotOptimize(ApplicationModel::appNameWithBundle(registry, bundle));
    }
}
BENCHMARK(BM_InstalledAppNames)->Arg(300)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return runBenchmarks<QGuiApplication>(argc, argv, [] { makeEntries(300); });
}
