#include "TestMain.h"
#include "TestServices.h"

#include "fakes/FakePositionSourceFactory.h"
#include "location/Location.h"
#include "location/LocationDelegate.h"
#include "shell/HiddenUserLocationMapView.h"
#include "ui/MapView.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {
class Listener : public LocationDelegate
{
public:
    void locationSuccess(Location *, double latitude, double longitude) override
    {
        fixes.append(Coordinate{latitude, longitude});
    }
    void locationFailed(Location *, const QString &) override { ++failures; }
    QList<Coordinate> fixes;
    int failures = 0;
};
} // namespace

// The location service finding the user through a hidden map of the
// application's own, attached to the main window for the time it looks.
class HiddenUserLocationMapViewTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_defaults;

private slots:
    void init()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_defaults.path());
    }

    void findsTheUserOffScreenThenLetsGo()
    {
        TestServices world;
        FakePositionSourceFactory sources;
        sources.scriptFix(59.91, 10.75);
        world.services().positionSources = &sources;
        QPointer<HiddenUserLocationMapView> hidden;
        QWidget window;
        const Location::Registration registration(world.services(), [&](QObject *parent) {
            hidden = new HiddenUserLocationMapView(&sources, parent);
            return hidden.data();
        });
        window.resize(320, 480);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        Listener listener;
        Location *location = Location::sharedInstacneWithDelegate(&listener);
        location->tryToUseMapView();
        auto *map = window.findChild<MapView *>();
        QVERIFY(map);
        QCOMPARE(map->geometry(), QRect(-1, -1, 1, 1));
        QVERIFY(map->showsUserLocation());

        QTRY_COMPARE_WITH_TIMEOUT(listener.fixes.size(), 1, 1000);
        QCOMPARE(listener.fixes.first(), (Coordinate{59.91, 10.75}));
        QVERIFY(!window.findChild<MapView *>()); // taken off the window again
        QVERIFY(!map->showsUserLocation());
        QCOMPARE(listener.failures, 0);
        // only the map's own source was used, and it is stopped
        QCOMPARE(sources.created(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(sources.sources().isEmpty() || !sources.last()->isRunning(), 500);
    }
};

TREKMIME_TEST(HiddenUserLocationMapViewTest)
#include "HiddenUserLocationMapViewTest.moc"
