#include "TestMain.h"
#include "fakes/FakePositionSourceFactory.h"

#include "ui/MapView.h"
#include "ui/MapViewDelegate.h"

#include <QPointingDevice>
#include <QTest>
#include <QWheelEvent>

#include <memory>

namespace {

using namespace Qt::StringLiterals;

class RecordingDelegate : public MapViewDelegate
{
public:
    void regionWillChangeAnimated(MapView *, bool a) override { events << u"will %1"_s.arg(a); }
    void regionDidChangeAnimated(MapView *, bool a) override { events << u"did %1"_s.arg(a); }
    QImage viewForAnnotation(MapView *, const MapPointAnnotation &annotation) override
    {
        return annotation.tag() == RouteEndAnnotationTag ? endImage : QImage();
    }
    std::optional<MapPolylineRenderer> rendererForOverlay(MapView *, const MapPolyline &) override
    {
        return MapPolylineRenderer{4.0, QColor(Qt::green)};
    }
    void didUpdateUserLocation(MapView *, const PositionFix &fix) override { fixes.append(fix); }
    void didFailToLocateUserWithError(MapView *, int code, const QString &) override
    {
        failures.append(code);
    }

    QStringList events;
    QImage endImage;
    QList<PositionFix> fixes;
    QList<int> failures;
};

enum class Move {
    Set,
    SetThenCentre,
    SetSameRegion,
    Animated,
    AnimatedThenRegion,
    AnimatedInterruptedBySet,
    Drag,
    WheelBurst,
    DoubleClick,
    Pinch
};

const Coordinate Paris{48.8566, 2.3522};
const Coordinate Lyon{45.764, 4.8357};

bool isNear(QRgb pixel, QColor color, int tolerance)
{
    return std::abs(qRed(pixel) - color.red()) <= tolerance &&
           std::abs(qGreen(pixel) - color.green()) <= tolerance &&
           std::abs(qBlue(pixel) - color.blue()) <= tolerance;
}

} // namespace

class MapViewTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<MapView> m_map;
    RecordingDelegate m_delegate;

    // a map over Paris; shown, at rest and its events forgotten if `settled`
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
        QTest::newRow("set, then centre in the same turn") << Move::SetThenCentre << plain;
        QTest::newRow("set to where it is") << Move::SetSameRegion << QStringList();
        QTest::newRow("animated") << Move::Animated << animated;
        QTest::newRow("animated centre, then region") << Move::AnimatedThenRegion << animated;
        QTest::newRow("animation overtaken by a set") << Move::AnimatedInterruptedBySet << animated;
        QTest::newRow("drag") << Move::Drag << plain;
        QTest::newRow("burst of wheel turns") << Move::WheelBurst << plain;
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
        case Move::SetThenCentre:
            map.setRegion(map.regionThatFits(lyon));
            map.setCenterCoordinate(Lyon);
            break;
        case Move::SetSameRegion:
            map.setRegion(map.region());
            map.setCenterCoordinate(map.centerCoordinate());
            break;
        case Move::Animated:
            map.setRegion(lyon, true, complete);
            QCOMPARE(map.centerCoordinate().latitude, Paris.latitude); // not there yet
            break;
        case Move::AnimatedThenRegion:
            map.animateCenterCoordinate(Lyon, 60, [&] { map.setRegion(lyon, true, complete); });
            break;
        case Move::AnimatedInterruptedBySet:
            map.setRegion(lyon, true, complete);
            QTest::qWait(20);
            map.setRegion(map.regionThatFits(CoordinateRegionMakeWithDistance(Paris, 900, 900)));
            break;
        case Move::Drag:
            QTest::mousePress(&map, Qt::LeftButton, {}, QPoint(100, 100));
            QTest::mouseMove(&map, QPoint(140, 150));
            QTest::mouseMove(&map, QPoint(200, 220));
            QTest::qWait(30);
            // held in the hand: the move has not come to rest
            QCOMPARE(m_delegate.events, QStringList{u"will 0"_s});
            QTest::mouseRelease(&map, Qt::LeftButton, {}, QPoint(200, 220));
            break;
        case Move::WheelBurst:
            for (int i = 0; i < 3; ++i) {
                QWheelEvent wheel(QPointF(100, 200), map.mapToGlobal(QPointF(100, 200)), QPoint(),
                                  QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                                  false);
                QApplication::sendEvent(&map, &wheel);
            }
            QCOMPARE(map.zoomLevel(), zoomBefore + 1.5);
            break;
        case Move::DoubleClick:
            QTest::mouseDClick(&map, Qt::LeftButton, {}, QPoint(195, 422));
            break;
        case Move::Pinch: {
            // fingers spread to twice their distance around the middle
            const std::unique_ptr<QPointingDevice> touch(QTest::createTouchDevice());
            QTest::touchEvent(&map, touch.get()).press(0, {145, 422}).press(1, {245, 422});
            QTest::touchEvent(&map, touch.get()).move(0, {120, 422}).move(1, {270, 422});
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
        case Move::AnimatedThenRegion:
            QVERIFY(fuzzyEqual(map.region(), map.regionThatFits(lyon), 1e-9));
            QCOMPARE(completed, move != Move::Set);
            break;
        case Move::AnimatedInterruptedBySet:
            QVERIFY(completed); // told, though it never arrived
            QVERIFY(std::abs(centre.latitude - Paris.latitude) < 1e-9);
            break;
        case Move::DoubleClick:
        case Move::Pinch:
            QVERIFY(std::abs(map.zoomLevel() - (zoomBefore + 1.0)) < 1e-9);
            // the middle of the gesture stays over the same place
            QVERIFY(std::abs(centre.longitude - Paris.longitude) < 1e-9);
            break;
        case Move::Drag: // dragged down and right: looks north-west
            QVERIFY(centre.latitude > Paris.latitude && centre.longitude < Paris.longitude);
            break;
        default:
            break;
        }
    }

    void annotationsAndOverlaysKeepTheirOrder()
    {
        MapView map;
        auto a = std::make_shared<MapPointAnnotation>(Paris, RouteStartAnnotationTag);
        auto b = std::make_shared<MapPointAnnotation>(Lyon, RouteEndAnnotationTag);
        auto c = std::make_shared<MapPointAnnotation>(Lyon, RouteStartAnnotationTag);
        for (const MapAnnotationPtr &annotation : {a, b, c})
            map.addAnnotation(annotation);
        map.removeAnnotation(a);
        QCOMPARE(map.annotations(), (QList<MapAnnotationPtr>{b, c}));
        map.removeAnnotations({c, a});
        QCOMPARE(map.annotations(), QList<MapAnnotationPtr>{b});

        auto first = std::make_shared<MapPolyline>(QList<Coordinate>{Paris, Lyon});
        auto second = std::make_shared<MapPolyline>(QList<Coordinate>{Lyon, Paris});
        auto third = std::make_shared<MapPolyline>(QList<Coordinate>{Paris});
        for (const MapOverlayPtr &overlay : {first, second, third})
            map.addOverlay(overlay);
        map.removeOverlay(second);
        QCOMPARE(map.overlays(), (QList<MapOverlayPtr>{first, third}));
    }

    void drawsWhatTheDelegateSupplies_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<bool>("delegateFirst");
        QTest::newRow("delegate's image") << RouteEndAnnotationTag << true;
        QTest::newRow("delegate set after the annotation") << RouteEndAnnotationTag << false;
        QTest::newRow("default pin") << 0 << true;
    }
    void drawsWhatTheDelegateSupplies()
    {
        QFETCH(int, tag);
        QFETCH(bool, delegateFirst);
        m_delegate.endImage = QImage(12, 12, QImage::Format_ARGB32_Premultiplied);
        m_delegate.endImage.fill(Qt::magenta);
        newMap(false);
        MapView &map = *m_map;
        if (delegateFirst)
            map.setDelegate(&m_delegate);
        map.addAnnotation(std::make_shared<MapPointAnnotation>(Paris, tag));
        map.addOverlay(std::make_shared<MapPolyline>(
            QList<Coordinate>{map.convertPointToCoordinate(QPointF(0, 600)),
                              map.convertPointToCoordinate(QPointF(390, 600))}));
        if (!delegateFirst)
            map.setDelegate(&m_delegate);
        const QImage frame = map.grab().toImage();
        // the default pin stands with its tip on the place: red above it
        const QRgb above = frame.pixel(195, 422 - 22);
        QVERIFY(tag ? isNear(frame.pixel(195, 422), Qt::magenta, 10)
                    : qRed(above) > 180 && qGreen(above) < 110);
        QVERIFY(isNear(frame.pixel(100, 600), Qt::green, 60));
    }

    void showsTheUserLocation()
    {
        newMap(false);
        MapView &map = *m_map;
        map.setDelegate(&m_delegate);
        // with no source to ask, the failure is told later, like a real source's
        map.setShowsUserLocation(true);
        QVERIFY(m_delegate.failures.isEmpty());
        QTRY_COMPARE(m_delegate.failures.size(), 1);
        map.setShowsUserLocation(false);

        FakePositionSourceFactory factory;
        map.setPositionSourceFactory(&factory);
        QCOMPARE(factory.created(), 0); // nothing until asked
        map.setShowsUserLocation(true);
        map.setShowsUserLocation(true);
        QCOMPARE(factory.created(), 1);
        FakePositionSource *source = factory.last();
        QVERIFY(source->isRunning());
        const QRgb before = map.grab().toImage().pixel(195, 422);
        source->deliver(Paris.latitude, Paris.longitude, 5.0);
        QCOMPARE(m_delegate.fixes.first().coordinate, Paris);
        QCOMPARE(map.userLocation()->coordinate, Paris);
        QVERIFY(map.grab().toImage().pixel(195, 422) != before); // drawn at the place
        source->fail(PositionSource::AccessDenied, QStringLiteral("denied"));
        QCOMPARE(m_delegate.failures.last(), int(PositionSource::AccessDenied));
        map.setShowsUserLocation(false);
        QCOMPARE(source->stopCount(), 1);
        QVERIFY(!map.userLocation());
        // a zoom level shows the map at the next tile zoom, up to the finest
        QVERIFY(std::abs(map.zoomLevel() - 15.0) < 1e-3);
        map.setCenterCoordinate(Paris, 40u, false);
        QVERIFY(std::abs(map.zoomLevel() - 19.0) < 1e-3);
    }
};

TREKMIME_TEST(MapViewTest)
#include "MapViewTest.moc"
