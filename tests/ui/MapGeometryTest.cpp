#include "TestMain.h"

#include "ui/CoordinateRegion.h"
#include "ui/MapCamera.h"
#include "ui/ZoomGeometry.h"

#include <cmath>
#include <limits>

namespace {
bool near(double a, double b, double tolerance = 1e-9)
{
    return std::abs(a - b) <= tolerance * std::max(1.0, std::abs(b));
}
} // namespace

class MapGeometryTest : public QObject
{
    Q_OBJECT

private slots:
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

TREKMIME_TEST(MapGeometryTest)
#include "MapGeometryTest.moc"
