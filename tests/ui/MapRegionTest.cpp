#include "TestMain.h"

#include "ui/CoordinateRegion.h"
#include "ui/MapCamera.h"

#include <QTest>

#include <cmath>

namespace {
MapCamera cameraOfSize(double width, double height)
{
    MapCamera camera;
    camera.setViewportSize(QSizeF(width, height));
    return camera;
}

bool near(double a, double b, double tolerance = 1e-9)
{
    return std::abs(a - b) <= tolerance * std::max(1.0, std::abs(b));
}
} // namespace

class MapRegionTest : public QObject
{
    Q_OBJECT

private slots:
    void regionWithDistance_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("meters");
        QTest::addColumn<double>("latitudeDelta");
        QTest::addColumn<double>("longitudeDelta");
        // a degree is 111319.49 m on the 6378137 m sphere
        QTest::newRow("2000 m at the equator") << 0.0 << 2000.0 << 0.0179663 << 0.0179663;
        // a parallel at 60 degrees is half as long as the equator
        QTest::newRow("2000 m at 60 north") << 60.0 << 2000.0 << 0.0179663 << 0.0359326;
        QTest::newRow("at the pole the whole width") << 90.0 << 2000.0 << 0.0179663 << 360.0;
    }
    void regionWithDistance()
    {
        QFETCH(double, latitude);
        QFETCH(double, meters);
        QFETCH(double, latitudeDelta);
        QFETCH(double, longitudeDelta);
        const CoordinateRegion region =
            CoordinateRegionMakeWithDistance(Coordinate{latitude, 10.0}, meters, meters);
        QCOMPARE(region.center, (Coordinate{latitude, 10.0}));
        QVERIFY2(near(region.span.latitudeDelta, latitudeDelta, 1e-5),
                 qPrintable(region.toString()));
        QVERIFY2(near(region.span.longitudeDelta, longitudeDelta, 1e-5),
                 qPrintable(region.toString()));
    }

    void regionThatFits_data()
    {
        QTest::addColumn<QSizeF>("view");
        QTest::addColumn<CoordinateRegion>("asked");
        QTest::addColumn<bool>("widthBinds");
        const Coordinate paris{48.8566, 2.3522};
        QTest::newRow("square region, tall view")
            << QSizeF(390, 844) << CoordinateRegion{paris, {0.05, 0.05}} << true;
        QTest::newRow("square region, wide view")
            << QSizeF(844, 390) << CoordinateRegion{paris, {0.05, 0.05}} << false;
        QTest::newRow("tall region, tall view")
            << QSizeF(390, 844) << CoordinateRegion{paris, {0.5, 0.01}} << false;
        QTest::newRow("southern hemisphere")
            << QSizeF(390, 844) << CoordinateRegion{{-33.8688, 151.2093}, {0.1, 0.02}} << false;
    }
    void regionThatFits()
    {
        QFETCH(QSizeF, view);
        QFETCH(CoordinateRegion, asked);
        QFETCH(bool, widthBinds);
        MapCamera camera = cameraOfSize(view.width(), view.height());
        const CoordinateRegion fitted = camera.regionThatFits(asked);

        // the same centre; both spans at least those asked, one of them exactly
        QVERIFY(near(fitted.center.latitude, asked.center.latitude));
        QVERIFY(near(fitted.center.longitude, asked.center.longitude));
        QVERIFY2(fitted.span.longitudeDelta >= asked.span.longitudeDelta * (1 - 1e-9),
                 qPrintable(fitted.toString()));
        QVERIFY2(fitted.span.latitudeDelta >= asked.span.latitudeDelta * (1 - 1e-9),
                 qPrintable(fitted.toString()));
        if (widthBinds)
            QVERIFY(near(fitted.span.longitudeDelta, asked.span.longitudeDelta));
        else
            QVERIFY(near(fitted.span.latitudeDelta, asked.span.latitudeDelta));

        // what fits is what the view shows, and fits itself
        camera.setRegion(asked);
        QVERIFY(fuzzyEqual(camera.region(), fitted, 1e-9));
        QVERIFY(fuzzyEqual(camera.regionThatFits(fitted), fitted, 1e-9));
        // the view's aspect ratio: degrees of longitude per point equal
        // world units per point in both directions
        const double perPointX = fitted.span.longitudeDelta / view.width();
        const QPointF top =
            MapCamera::project(camera.pointToCoordinate(QPointF(view.width() / 2, 0)));
        const QPointF bottom =
            MapCamera::project(camera.pointToCoordinate(QPointF(view.width() / 2, view.height())));
        QVERIFY(near((bottom.y() - top.y()) * 360.0 / view.height(), perPointX, 1e-9));
    }

    void zoomLimits_data()
    {
        QTest::addColumn<CoordinateRegion>("asked");
        QTest::addColumn<double>("zoom");
        QTest::newRow("a few metres: the finest level")
            << CoordinateRegion{{52.52, 13.405}, {1e-6, 1e-6}} << MapCamera::MaximumZoom;
        QTest::newRow("more than the world: the whole world")
            << CoordinateRegion{{0.0, 0.0}, {170.0, 720.0}} << MapCamera::MinimumZoom;
    }
    void zoomLimits()
    {
        QFETCH(CoordinateRegion, asked);
        QFETCH(double, zoom);
        MapCamera camera = cameraOfSize(390, 844);
        camera.setRegion(asked);
        QCOMPARE(camera.zoom(), zoom);
        QVERIFY(near(camera.center().longitude, asked.center.longitude));
    }

    void theHandKeepsItsPlace_data()
    {
        QTest::addColumn<Coordinate>("center");
        QTest::newRow("origin") << Coordinate{0.0, 0.0};
        QTest::newRow("Sydney") << Coordinate{-33.8688, 151.2093};
        // the hand starts east of the line and drags west: the view looks
        // east across it, and places there are not drawn a world away
        QTest::newRow("at the antimeridian") << Coordinate{10.0, 179.99};
    }
    void theHandKeepsItsPlace()
    {
        QFETCH(Coordinate, center);
        MapCamera camera = cameraOfSize(390, 844);
        camera.setZoom(12.0);
        camera.setCenter(center);
        const auto drawnAt = [&](const Coordinate &place, QPointF point) {
            const QPointF drawn = camera.coordinateToPoint(place);
            return near(drawn.x(), point.x(), 1e-6) && near(drawn.y(), point.y(), 1e-6);
        };
        QVERIFY(drawnAt(center, QPointF(195, 422)));
        const QPointF grip(300, 700);
        const Coordinate under = camera.pointToCoordinate(grip);
        QVERIFY(drawnAt(under, grip));
        QVERIFY(under.latitude < center.latitude); // north is up

        camera.panBy(grip, QPointF(100, 300));
        QVERIFY(drawnAt(under, QPointF(100, 300)));
        QVERIFY2(std::abs(camera.center().longitude) <= 180.0,
                 qPrintable(camera.center().toString()));
        camera.zoomAround(QPointF(100, 300), 14.5);
        QCOMPARE(camera.zoom(), 14.5);
        QVERIFY(drawnAt(under, QPointF(100, 300)));
    }
};

TREKMIME_TEST(MapRegionTest)
#include "MapRegionTest.moc"
