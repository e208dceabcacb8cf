#include "TestMain.h"

#include "ui/MapView.h"
#include "ui/ZoomGeometry.h"

#include <QTest>

#include <cmath>
#include <numbers>

class ZoomGeometryTest : public QObject
{
    Q_OBJECT

private slots:
    void longitudeToX_data()
    {
        QTest::addColumn<double>("longitude");
        QTest::addColumn<double>("x");
        QTest::newRow("prime meridian") << 0.0 << 268435456.0;
        QTest::newRow("antimeridian east") << 180.0 << 536870912.0;
        QTest::newRow("antimeridian west") << -180.0 << 0.0;
        QTest::newRow("a quarter east") << 90.0 << 402653184.0;
        // half a unit east of the offset rounds away from zero
        QTest::newRow("half unit")
            << 0.5 / ZoomGeometry::MercatorRadius * 180.0 / std::numbers::pi << 268435457.0;
    }
    void longitudeToX()
    {
        QFETCH(double, longitude);
        QFETCH(double, x);
        QCOMPARE(ZoomGeometry::longitudeToPixelSpaceX(longitude), x);
    }

    void latitudeToY_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("y");
        QTest::newRow("equator") << 0.0 << 268435456.0;
        QTest::newRow("45 north") << 45.0 << 193125909.0;
        // the rows below fall on other pixels than a double-precision sine
        // and logarithm would give (one, fifteen and 251 units away)
        QTest::newRow("Beijing") << 39.9087 << 203425760.0;
        QTest::newRow("60 north") << 60.0 << 155907105.0;
        QTest::newRow("85 north") << 85.0 << 879098.0;
        QTest::newRow("70.5 south") << -70.5 << 418925892.0;
    }
    void latitudeToY()
    {
        QFETCH(double, latitude);
        QFETCH(double, y);
        QCOMPARE(ZoomGeometry::latitudeToPixelSpaceY(latitude), y);
    }

    void backToDegrees_data()
    {
        QTest::addColumn<double>("pixel");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<double>("latitude");
        QTest::newRow("origin") << 268435456.0 << 0.0 << 0.0;
        // the pixel is rounded first: a fraction below one half changes nothing
        QTest::newRow("rounded") << 268435456.4 << 0.0 << 0.0;
        QTest::newRow("east edge") << 536870912.0 << 180.0 << -85.05112877980659;
        QTest::newRow("west edge") << 0.0 << -180.0 << 85.05112877980659;
    }
    void backToDegrees()
    {
        QFETCH(double, pixel);
        QFETCH(double, longitude);
        QFETCH(double, latitude);
        QCOMPARE(ZoomGeometry::pixelSpaceXToLongitude(pixel), longitude);
        QVERIFY(std::abs(ZoomGeometry::pixelSpaceYToLatitude(pixel) - latitude) < 1e-9);
    }

    void spanAtReferenceLevel()
    {
        // at level 20 one unit is one point: the span is the degrees the
        // view's own width and height cover around the centre
        const QSizeF view(390, 844);
        const CoordinateSpan span =
            ZoomGeometry::coordinateSpanForViewSize(view, Coordinate{0.0, 0.0}, 20);
        QCOMPARE(span.longitudeDelta,
                 390.0 / ZoomGeometry::MercatorRadius * 180.0 / std::numbers::pi);
        const double halfHeight = 422.0 / ZoomGeometry::MercatorRadius;
        const double expected = 2.0 *
                                (2.0 * std::atan(std::exp(halfHeight)) - std::numbers::pi / 2.0) *
                                180.0 / std::numbers::pi;
        QVERIFY(std::abs(span.latitudeDelta - expected) < 1e-12);
    }

    void spanHalvesPerLevel_data()
    {
        QTest::addColumn<unsigned>("level");
        QTest::newRow("level 1") << 1u;
        QTest::newRow("level 10") << 10u;
        QTest::newRow("level 19") << 19u;
    }
    void spanHalvesPerLevel()
    {
        QFETCH(unsigned, level);
        const QSizeF view(390, 844);
        const Coordinate center{0.0, 10.0};
        const CoordinateSpan wide = ZoomGeometry::coordinateSpanForViewSize(view, center, level);
        const CoordinateSpan near =
            ZoomGeometry::coordinateSpanForViewSize(view, center, level + 1);
        // exact up to the rounding of the pixel edges
        QVERIFY(std::abs(wide.longitudeDelta / near.longitudeDelta - 2.0) < 1e-3);
        QVERIFY(near.latitudeDelta > 0.0);
    }

    void centringClampsTheLevel()
    {
        MapView map;
        map.resize(390, 844);
        const Coordinate center{48.8566, 2.3522};
        map.setCenterCoordinate(center, 40u, false);
        const CoordinateRegion at40 = map.region();
        map.setCenterCoordinate(center, 28u, false);
        QCOMPARE(map.region(), at40);
    }

    void centringShowsTheLevel_data()
    {
        QTest::addColumn<unsigned>("level");
        QTest::addColumn<double>("zoom");
        // the pixel space is 2^29 units wide (longitude 180 lies at 2^29),
        // twice a 256-point tile world of the same level: a level shows
        // the map at the next tile zoom
        QTest::newRow("3") << 3u << 4.0;
        QTest::newRow("12") << 12u << 13.0;
        QTest::newRow("18") << 18u << 19.0;
        QTest::newRow("above the map's finest") << 22u << 19.0;
    }
    void centringShowsTheLevel()
    {
        QFETCH(unsigned, level);
        QFETCH(double, zoom);
        MapView map;
        map.resize(390, 844);
        const Coordinate center{35.6762, 139.6503};
        map.setCenterCoordinate(center, level, false);
        QVERIFY2(std::abs(map.zoomLevel() - zoom) < 1e-3,
                 qPrintable(QString::number(map.zoomLevel())));
        QVERIFY(std::abs(map.centerCoordinate().latitude - center.latitude) < 1e-6);
        QVERIFY(std::abs(map.centerCoordinate().longitude - center.longitude) < 1e-9);
    }
};

TREKMIME_TEST(ZoomGeometryTest)
#include "ZoomGeometryTest.moc"
