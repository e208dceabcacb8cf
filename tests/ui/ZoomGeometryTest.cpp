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
    void toPixelSpace_data()
    {
        QTest::addColumn<bool>("isLatitude");
        QTest::addColumn<double>("degrees");
        QTest::addColumn<double>("pixel");
        QTest::newRow("prime meridian") << false << 0.0 << 268435456.0;
        QTest::newRow("antimeridian west") << false << -180.0 << 0.0;
        // half a unit east of the offset rounds away from zero
        QTest::newRow("half unit")
            << false << 0.5 / ZoomGeometry::MercatorRadius * 180.0 / std::numbers::pi
            << 268435457.0;
        // the rows below fall on other pixels than a double-precision sine
        // and logarithm would give (up to 251 units away)
        QTest::newRow("Beijing") << true << 39.9087 << 203425760.0;
        QTest::newRow("85 north") << true << 85.0 << 879098.0;
        QTest::newRow("70.5 south") << true << -70.5 << 418925892.0;
    }
    void toPixelSpace()
    {
        QFETCH(bool, isLatitude);
        QFETCH(double, degrees);
        QFETCH(double, pixel);
        QCOMPARE(isLatitude ? ZoomGeometry::latitudeToPixelSpaceY(degrees)
                            : ZoomGeometry::longitudeToPixelSpaceX(degrees),
                 pixel);
    }

    void backToDegrees_data()
    {
        QTest::addColumn<double>("pixel");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<double>("latitude");
        QTest::newRow("origin") << 268435456.0 << 0.0 << 0.0;
        // the pixel is rounded first: a fraction below one half changes nothing
        QTest::newRow("rounded") << 268435456.4 << 0.0 << 0.0;
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

    void centringShowsTheLevel_data()
    {
        QTest::addColumn<unsigned>("level");
        QTest::addColumn<double>("zoom");
        // the pixel space is 2^29 units wide (longitude 180 lies at 2^29),
        // twice a 256-point tile world of the same level: a level shows
        // the map at the next tile zoom, so each level halves the span
        QTest::newRow("3") << 3u << 4.0;
        QTest::newRow("18") << 18u << 19.0;
        QTest::newRow("above the finest level") << 40u << 19.0;
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
