#include "TestMain.h"
#include "fakes/FakePositionSourceFactory.h"

#include "ui/MapCamera.h"
#include "ui/MapView.h"
#include "ui/MapViewDelegate.h"
#include "ui/ZoomGeometry.h"

#include <QPointingDevice>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace {

class RecordingDelegate : public MapViewDelegate
{
public:
    void regionWillChangeAnimated(MapView *, bool a) override { events << u"will %1"_s.arg(a); }
    void regionDidChangeAnimated(MapView *, bool a) override { events << u"did %1"_s.arg(a); }
    QImage viewForAnnotation(MapView *, const MapPointAnnotation &annotation) override
    {
        asked << annotation.tag();
        return annotation.tag() == RouteEndAnnotationTag ? QImage(12, 12, QImage::Format_RGB32)
                                                         : QImage();
    }
    std::optional<MapPolylineRenderer> rendererForOverlay(MapView *, const MapPolyline &) override
    {
        asked << -1;
        return MapPolylineRenderer{4.0, QColor(Qt::green)};
    }
    void didUpdateUserLocation(MapView *, const PositionFix &fix) override { fixes.append(fix); }
    void didFailToLocateUserWithError(MapView *, int code, const QString &) override
    {
        failures.append(code);
    }

    QStringList events;
    QList<int> asked; // annotation tags, -1 for a line
    QList<PositionFix> fixes;
    QList<int> failures;
};

enum class Move {
    Set,
    SetSameRegion,
    Animated,
    AnimatedInterruptedBySet,
    Drag,
    DoubleClick,
    Pinch
};

const Coordinate Paris{48.8566, 2.3522};
const Coordinate Lyon{45.764, 4.8357};

bool near(double a, double b, double tolerance = 1e-9)
{
    return std::abs(a - b) <= tolerance * std::max(1.0, std::abs(b));
}

} // namespace

class MapViewTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<MapView> m_map;
    RecordingDelegate m_delegate;

    // shown, at rest and its events forgotten if `settled`
    void newMap(bool settled)
    {
        m_map = std::make_unique<MapView>();
        m_map->resize(390, 844);
        m_map->setCenterCoordinate(Paris, 14u, false);
        if (!settled)
            return;
        m_map->setAnimationDuration(60);
        m_map->setWheelSettleDelay(40);
        m_map->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_map.get()));
        m_map->setDelegate(&m_delegate);
        m_map->setRegion(CoordinateRegionMakeWithDistance(Paris, 2000, 2000));
        QTRY_COMPARE(m_delegate.events.size(), 2);
        m_delegate.events.clear();
    }

private slots:
    void init() { m_delegate = RecordingDelegate(); }
    void cleanup() { m_map.reset(); }

    void regionDidChangeOncePerSettledMove_data()
    {
        QTest::addColumn<Move>("move");
        QTest::addColumn<QStringList>("expected");
        const QStringList plain{u"will 0"_s, u"did 0"_s}, animated{u"will 1"_s, u"did 1"_s};
        QTest::newRow("set") << Move::Set << plain;
        QTest::newRow("set to where it is") << Move::SetSameRegion << QStringList();
        QTest::newRow("animated") << Move::Animated << animated;
        QTest::newRow("animation overtaken by a set") << Move::AnimatedInterruptedBySet << animated;
        QTest::newRow("drag") << Move::Drag << plain;
        QTest::newRow("double click") << Move::DoubleClick << animated;
        QTest::newRow("pinch") << Move::Pinch << plain;
    }
    void regionDidChangeOncePerSettledMove()
    {
        QFETCH(Move, move);
        QFETCH(QStringList, expected);
        newMap(true);
        MapView &map = *m_map;
        const double zoomBefore = map.zoomLevel();
        const CoordinateRegion lyon = CoordinateRegionMakeWithDistance(Lyon, 5000, 5000);
        bool completed = false;
        const auto complete = [&] { completed = true; };
        switch (move) {
        case Move::Set:
            map.setRegion(lyon);
            break;
        case Move::SetSameRegion:
            map.setRegion(map.region());
            break;
        case Move::Animated:
            map.setRegion(lyon, true, complete);
            break;
        case Move::AnimatedInterruptedBySet:
            map.setRegion(lyon, true, complete);
            QTest::qWait(20);
            map.setRegion(map.regionThatFits(CoordinateRegionMakeWithDistance(Paris, 900, 900)));
            break;
        case Move::Drag:
            QTest::mousePress(&map, Qt::LeftButton, {}, QPoint(100, 100));
            QTest::mouseMove(&map, QPoint(200, 220));
            QTest::qWait(30);
            QCOMPARE(m_delegate.events, QStringList{u"will 0"_s});
            QTest::mouseRelease(&map, Qt::LeftButton, {}, QPoint(200, 220));
            break;
        case Move::DoubleClick:
            QTest::mouseDClick(&map, Qt::LeftButton, {}, QPoint(195, 422));
            break;
        case Move::Pinch: {
            const std::unique_ptr<QPointingDevice> touch(QTest::createTouchDevice());
            QTest::touchEvent(&map, touch.get()).press(0, {145, 422}).press(1, {245, 422});
            QTest::touchEvent(&map, touch.get()).move(0, {95, 422}).move(1, {295, 422});
            QTest::touchEvent(&map, touch.get()).release(0, {95, 422}).release(1, {295, 422});
            break;
        }
        }
        QTRY_COMPARE_WITH_TIMEOUT(m_delegate.events, expected, 1000);
        QTest::qWait(80); // and nothing more comes
        QCOMPARE(m_delegate.events, expected);

        const Coordinate centre = map.centerCoordinate();
        switch (move) {
        case Move::Set:
        case Move::Animated:
            QVERIFY(fuzzyEqual(map.region(), map.regionThatFits(lyon), 1e-9));
            QCOMPARE(completed, move != Move::Set);
            break;
        case Move::AnimatedInterruptedBySet:
            QVERIFY(completed && std::abs(centre.latitude - Paris.latitude) < 1e-9);
            break;
        case Move::DoubleClick:
        case Move::Pinch:
            // one level in, the middle of the gesture kept over the same place
            QVERIFY(std::abs(map.zoomLevel() - (zoomBefore + 1.0)) < 1e-9 &&
                    std::abs(centre.longitude - Paris.longitude) < 1e-9);
            break;
        case Move::Drag: // dragged down and right: looks north-west
            QVERIFY(centre.latitude > Paris.latitude && centre.longitude < Paris.longitude);
            break;
        default:
            break;
        }
    }

    void asksTheDelegateWhatToDraw()
    {
        newMap(false);
        // the delegate's image, then the default pin
        auto a = std::make_shared<MapPointAnnotation>(Paris, RouteEndAnnotationTag);
        auto b = std::make_shared<MapPointAnnotation>(Lyon, 0);
        m_map->addAnnotation(a);
        m_map->addAnnotation(b);
        auto line = std::make_shared<MapPolyline>(QList<Coordinate>{Paris, Lyon});
        m_map->addOverlay(line);
        m_map->setDelegate(&m_delegate); // set after: what is there is asked about all the same
        m_map->grab();
        std::sort(m_delegate.asked.begin(), m_delegate.asked.end());
        QCOMPARE(m_delegate.asked, (QList<int>{-1, 0, RouteEndAnnotationTag}));
        m_map->addAnnotation(a); // added twice, removed at once
        m_map->removeAnnotations({a});
        m_map->removeOverlay(line);
        QCOMPARE(m_map->annotations(), QList<MapAnnotationPtr>{b});
        QVERIFY(m_map->overlays().isEmpty());
    }

    // Places no honest source gives are left out of the picture, whatever
    // the caller passes.
    void impossiblePlacesAreNotPainted()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double inf = std::numeric_limits<double>::infinity();
        newMap(false);
        m_map->addOverlay(std::make_shared<MapPolyline>(QList<Coordinate>{Paris, Lyon}));
        const QImage expected = m_map->grab().toImage();
        newMap(false);
        m_map->addOverlay(std::make_shared<MapPolyline>(
            QList<Coordinate>{{nan, 2.0}, Paris, {inf, 3.0}, {91.0, 3.0}, Lyon, {45.0, -inf}}));
        m_map->addOverlay(std::make_shared<MapPolyline>(QList<Coordinate>{{nan, nan}}));
        for (const Coordinate &c : {Coordinate{nan, 2.0}, Coordinate{inf, -inf}, {-91.0, 0.0}})
            m_map->addAnnotation(std::make_shared<MapPointAnnotation>(c));
        QCOMPARE(m_map->grab().toImage(), expected);
    }

    void showsTheUserLocation()
    {
        newMap(false);
        MapView &map = *m_map;
        map.setDelegate(&m_delegate);
        map.setShowsUserLocation(true); // no source to ask: the failure is told later
        QVERIFY(m_delegate.failures.isEmpty());
        QTRY_COMPARE(m_delegate.failures.size(), 1);
        map.setShowsUserLocation(false);

        FakePositionSourceFactory factory;
        map.setPositionSourceFactory(&factory);
        map.setShowsUserLocation(true);
        map.setShowsUserLocation(true);
        QCOMPARE(factory.created(), 1);
        FakePositionSource *source = factory.last();
        source->deliver(Paris.latitude, Paris.longitude, 5.0);
        QCOMPARE(m_delegate.fixes.first().coordinate, Paris);
        QCOMPARE(map.userLocation()->coordinate, Paris);
        source->fail(PositionSource::AccessDenied, u"denied"_s);
        QCOMPARE(m_delegate.failures.last(), int(PositionSource::AccessDenied));
        map.setShowsUserLocation(false);
        QCOMPARE(source->stopCount(), 1);
        QVERIFY(!map.userLocation());
        // a zoom level shows the map at the next tile zoom, up to the finest
        QVERIFY(std::abs(map.zoomLevel() - 15.0) < 1e-3);
        map.setCenterCoordinate(Paris, 40u, false);
        QVERIFY(std::abs(map.zoomLevel() - 19.0) < 1e-3);
    }

    // the geometry under the view: regions, the camera, the pixel space
    void regionWithDistance_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitudeDelta");
        // 2000 m: a degree is 111319.49 m on the 6378137 m sphere, a parallel
        // at 60 degrees half as long as the equator
        QTest::newRow("equator") << 0.0 << 0.0179663;
        QTest::newRow("60 north") << 60.0 << 0.0359326;
        QTest::newRow("at the pole the whole width") << 90.0 << 360.0;
    }
    void regionWithDistance()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitudeDelta);
        const CoordinateRegion region =
            CoordinateRegionMakeWithDistance(Coordinate{latitude, 10.0}, 2000, 2000);
        QCOMPARE(region.center, (Coordinate{latitude, 10.0}));
        QVERIFY(near(region.span.latitudeDelta, 0.0179663, 1e-5));
        QVERIFY(near(region.span.longitudeDelta, longitudeDelta, 1e-5));
    }

    void regionThatFits_data()
    {
        QTest::addColumn<QSizeF>("view");
        QTest::addColumn<CoordinateRegion>("asked");
        QTest::addColumn<bool>("widthBinds");
        const Coordinate paris{48.8566, 2.3522};
        QTest::newRow("square region, tall view")
            << QSizeF(390, 844) << CoordinateRegion{paris, {0.05, 0.05}} << true;
        QTest::newRow("southern hemisphere")
            << QSizeF(390, 844) << CoordinateRegion{{-33.8688, 151.2093}, {0.1, 0.02}} << false;
    }
    void regionThatFits()
    {
        QFETCH(QSizeF, view);
        QFETCH(CoordinateRegion, asked);
        QFETCH(bool, widthBinds);
        MapCamera camera;
        camera.setViewportSize(view);
        const CoordinateRegion fitted = camera.regionThatFits(asked);
        // the same centre; both spans at least those asked, one of them exactly
        QVERIFY(fuzzyEqual(CoordinateRegion{asked.center, fitted.span}, fitted, 1e-9));
        QVERIFY(fitted.span.longitudeDelta >= asked.span.longitudeDelta * (1 - 1e-9));
        QVERIFY(fitted.span.latitudeDelta >= asked.span.latitudeDelta * (1 - 1e-9));
        QVERIFY(widthBinds ? near(fitted.span.longitudeDelta, asked.span.longitudeDelta)
                           : near(fitted.span.latitudeDelta, asked.span.latitudeDelta));
        camera.setRegion(asked); // what fits is what the view shows
        QVERIFY(fuzzyEqual(camera.region(), fitted, 1e-9));
    }

    void zoomIsBounded()
    {
        MapCamera camera;
        camera.setViewportSize(QSizeF(390, 844));
        camera.setRegion(CoordinateRegion{{52.52, 13.405}, {1e-6, 1e-6}}); // a few metres
        QCOMPARE(camera.zoom(), MapCamera::MaximumZoom);
        QVERIFY(near(camera.center().longitude, 13.405));
        camera.setRegion(CoordinateRegion{{0.0, 0.0}, {170.0, 720.0}}); // more than the world
        QCOMPARE(camera.zoom(), MapCamera::MinimumZoom);
        // no finite place: the camera stays
        camera.setRegion(CoordinateRegionMakeWithDistance({std::nan(""), 1.0}, 2000, 2000));
        camera.setCenter({1.0, std::numeric_limits<double>::infinity()});
        QVERIFY(camera.zoom() == MapCamera::MinimumZoom && near(camera.center().longitude, 0.0));
    }

    // the hand starts east of the antimeridian and drags west: the view looks
    // east across it, and places there are not drawn a world away
    void theHandKeepsItsPlace()
    {
        const Coordinate center{10.0, 179.99};
        MapCamera camera;
        camera.setViewportSize(QSizeF(390, 844));
        camera.setZoom(12.0);
        camera.setCenter(center);
        const auto drawnAt = [&](const Coordinate &place, QPointF point) {
            const QPointF drawn = camera.coordinateToPoint(place);
            return near(drawn.x(), point.x(), 1e-6) && near(drawn.y(), point.y(), 1e-6);
        };
        QVERIFY(drawnAt(center, QPointF(195, 422)));
        const Coordinate under = camera.pointToCoordinate(QPointF(300, 700));
        QVERIFY(under.latitude < center.latitude); // north is up
        camera.panBy(QPointF(300, 700), QPointF(100, 300));
        QVERIFY(drawnAt(under, QPointF(100, 300)));
        QVERIFY(std::abs(camera.center().longitude) <= 180.0);
        camera.zoomAround(QPointF(100, 300), 14.5);
        QCOMPARE(camera.zoom(), 14.5);
        QVERIFY(drawnAt(under, QPointF(100, 300)));
    }

    void toPixelSpaceAndBack_data()
    {
        QTest::addColumn<bool>("isLatitude");
        QTest::addColumn<double>("degrees");
        QTest::addColumn<double>("pixel");
        QTest::newRow("prime meridian") << false << 0.0 << 268435456.0;
        // these fall on other pixels than a double-precision sine and
        // logarithm would give (up to 251 units away)
        QTest::newRow("Beijing") << true << 39.9087 << 203425760.0;
        QTest::newRow("70.5 south") << true << -70.5 << 418925892.0;
    }
    void toPixelSpaceAndBack()
    {
        QFETCH(bool, isLatitude);
        QFETCH(double, degrees);
        QFETCH(double, pixel);
        QCOMPARE(isLatitude ? ZoomGeometry::latitudeToPixelSpaceY(degrees)
                            : ZoomGeometry::longitudeToPixelSpaceX(degrees),
                 pixel);
        // back: the pixel is rounded first, so a fraction below a half changes nothing
        const auto back = [&](double p) {
            return isLatitude ? ZoomGeometry::pixelSpaceYToLatitude(p)
                              : ZoomGeometry::pixelSpaceXToLongitude(p);
        };
        QCOMPARE(back(pixel + 0.4), back(pixel));
        QVERIFY(std::abs(back(pixel) - degrees) < 1e-3);
    }
};

TREKMIME_TEST(MapViewTest)
#include "MapViewTest.moc"
