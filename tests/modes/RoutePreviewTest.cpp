#include "TestMain.h"

#include "routing/RoutePreview.h"
#include "settings/RouteRecord.h"

#include <cmath>
#include <limits>

namespace {
const qint32 Start = 1700000000;

RouteRecord trip(qint32 duration, int count)
{
    RouteRecord record;
    record.setStart(Start);
    record.setEnd(double(Start) + duration);
    QList<RoutePoint> points;
    for (int i = 0; i < count; ++i)
        points.append(RoutePoint(i, -i));
    record.setPoints(points);
    return record;
}
} // namespace

// The preview's index is worked out in signed 32-bit arithmetic, as the hooking
// component does it: long trips overflow, and the preview must show that.
class RoutePreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void stepAt_data()
    {
        QTest::addColumn<qint32>("duration");
        QTest::addColumn<int>("count");
        QTest::addColumn<qint32>("elapsed");
        QTest::addColumn<int>("pick");
        QTest::addColumn<qint32>("index");
        using Pick = RoutePreview::Pick;
        const int first = int(Pick::First), mid = int(Pick::Proportional), last = int(Pick::Last);
        QTest::newRow("before the start") << 100 << 4 << -1 << first << 0;
        QTest::newRow("half way") << 100 << 10 << 50 << mid << 5;
        QTest::newRow("rounds toward zero") << 100 << 10 << 99 << mid << 9;
        QTest::newRow("at the end") << 100 << 4 << 100 << last << 3;
        QTest::newRow("no points: 0, 0") << 100 << 0 << 50 << mid << 0;
        // 43200 x 100000 = 4 320 000 000 wraps to 25 032 704
        QTest::newRow("product wraps positive") << 86400 << 100000 << 43200 << mid << 289;
        // 30000 x 100000 = 3 000 000 000 wraps to -1 294 967 296
        QTest::newRow("product wraps out of the list") << 86400 << 100000 << 30000 << mid << -14988;
    }
    void stepAt()
    {
        QFETCH(qint32, duration);
        QFETCH(int, count);
        QFETCH(qint32, elapsed);
        QFETCH(int, pick);
        QFETCH(qint32, index);
        const auto step = RoutePreview::stepAt(trip(duration, count), Start + elapsed);
        QCOMPARE(int(step.pick), pick);
        QCOMPARE(step.index, index);
        QCOMPARE(step.inRange, index >= 0 && index < qMax(count, 1)); // no points: 0 counts as in
        if (step.inRange)
            QCOMPARE(step.coordinate, (Coordinate{double(index), -double(index)}));
        if (step.pick == RoutePreview::Pick::Proportional)
            QCOMPARE(
                RoutePreview::proportionalIndex(Start + elapsed, Start, Start + duration, count),
                index);
    }

    void degenerateDurationsAndNow()
    {
        QCOMPARE(RoutePreview::proportionalIndex(Start + 5, Start, Start, 10), 0);
        // 65536 x 32768 = 2^31 wraps to the smallest value; divided by -1 it stays
        QCOMPARE(RoutePreview::proportionalIndex(Start + 65536, Start, Start - 1, 32768),
                 std::numeric_limits<qint32>::min());
        // wall-clock seconds are cut toward zero and clamped to 32 bits
        QCOMPARE(RoutePreview::nowSeconds(1700000000.9), 1700000000);
        QCOMPARE(RoutePreview::nowSeconds(-1.9), -1);
        QCOMPARE(RoutePreview::nowSeconds(3e9), std::numeric_limits<qint32>::max()); // after 2038
        QCOMPARE(RoutePreview::nowSeconds(std::nan("")), 0);
    }

    // Each point's time is the first second at which the preview shows it
    // (or, when points are closer than a second apart, one after it).
    void passingTimesTurnTheStepAround()
    {
        for (const auto &[duration, count] :
             {std::pair{100, 10}, {100, 3}, {7, 20}, {86400, 1000}, {1, 1}, {0, 4}, {-5, 3}}) {
            const RouteRecord record = trip(duration, count);
            const QList<qint64> times = RoutePreview::passingTimes(record);
            QCOMPARE(times.size(), count);
            QCOMPARE(times.first(), Start);
            for (int i = 1; i < count; ++i)
                QVERIFY2(
                    RoutePreview::stepAt(record, qint32(times[i])).index >= i &&
                        RoutePreview::stepAt(record, qint32(times[i] - 1)).index < i,
                    qPrintable(u"%1 s, %2 points: point %3"_s.arg(duration).arg(count).arg(i)));
        }
    }
};

TREKMIME_TEST(RoutePreviewTest)
#include "RoutePreviewTest.moc"
