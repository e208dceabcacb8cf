#include "TestMain.h"

#include "routing/RoutePace.h"

#include <cmath>
#include <limits>

namespace {

// Routes are written as flat lists of latitude, longitude pairs.
QList<Coordinate> route(const QList<double> &flat)
{
    QList<Coordinate> points;
    for (qsizetype i = 0; i + 1 < flat.size(); i += 2)
        points.append({flat[i], flat[i + 1]});
    return points;
}

constexpr double Degree = RoutePace::MeanEarthRadiusMeters * M_PI / 180.0; // 111,194.93 m
constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
constexpr double Inf = std::numeric_limits<double>::infinity();
} // namespace

class RoutePaceTest : public QObject
{
    Q_OBJECT

private slots:
    void length_data()
    {
        QTest::addColumn<QList<double>>("points");
        QTest::addColumn<double>("meters");
        addRow("empty", QList<double>{}, 0.0);
        addRow("one point", QList<double>{10, 20}, 0.0);
        addRow("a degree of latitude", QList<double>{0, 0, 1, 0}, 111195.08);
        addRow("across the date line", QList<double>{0, 179.5, 0, -179.5}, 111195.08);
        addRow("half the world", QList<double>{0, 0, 0, 180}, 20015114.44);
        addRow("legs add up", QList<double>{0, 0, 0, 1, 1, 1, 1, 1}, 2 * 111195.08);
        // a parallel at 60 degrees is half as long as the equator
        addRow("small step at 60 north", QList<double>{60, 0, 60, 0.001}, Degree * 0.0005);
    }
    void length()
    {
        QFETCH(QList<double>, points);
        QFETCH(double, meters);
        QVERIFY2(std::abs(RoutePace::lengthMeters(route(points)) - meters) < 0.01,
                 qPrintable(QString::number(RoutePace::lengthMeters(route(points)), 'f', 3)));
    }

    void endTime_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<double>("meters");
        QTest::addColumn<QString>("speed");
        QTest::addColumn<qint64>("end"); // -1: refused
        addRow("walk an hour", 1000, 5000.0, "walk", qint64(4600));
        addRow("a millimetre more rounds up", 1000, 5000.001, "walk", qint64(4601));
        addRow("run", 0, 10000.0, "run", qint64(3600));
        addRow("cycle", 0, 18000.0, "cycle", qint64(3600));
        addRow("drive, any case", 0, 50000.0, "Drive", qint64(3600));
        addRow("km/h exact second", 0, 2.0, "7.2", qint64(1));
        addRow("km/h part second", 0, 1.0, "3", qint64(2));
        addRow("no length", 500, 0.0, "walk", qint64(500));
        addRow("before 1970", -7200, 5000.0, "walk", qint64(-3600));
        addRow("ends on the last second", 2147480047, 5000.0, "walk", qint64(2147483647));
        addRow("ends past it", 2147480048, 5000.0, "walk", qint64(-1));
        addRow("far too long", 0, 1e15, "walk", qint64(-1));
        addRow("negative length", 0, -1.0, "walk", qint64(-1));
        addRow("infinite length", 0, Inf, "walk", qint64(-1));
    }
    void endTime()
    {
        QFETCH(int, start);
        QFETCH(double, meters);
        QFETCH(QString, speed);
        QFETCH(qint64, end);
        const std::optional<double> kmh = RoutePace::speedKmh(speed);
        const std::optional<qint32> got =
            kmh ? RoutePace::endTime(start, meters, *kmh) : std::nullopt;
        QCOMPARE(got ? qint64(*got) : qint64(-1), end);
        // a bad speed is refused by name and by number
        for (const char *bad : {"0", "-5", "inf", "nan", "fly", ""})
            QVERIFY(!RoutePace::speedKmh(QString::fromLatin1(bad)));
        for (double bad : {0.0, -1.0, Inf, Nan})
            QVERIFY(!RoutePace::endTime(start, meters, bad));
    }

    void evenPace_data()
    {
        QTest::addColumn<QList<double>>("points");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<int>("count"); // 0: the route comes back unchanged
        QTest::addColumn<int>("corners");
        const QList<double> crowded{0, 0, 0, 0.0001, 0, 0.0002, 0, 0.05};
        addRow("crowded start", crowded, 10.0, 11, 0);
        addRow("a point a second", crowded, 600.0, 601, 0);
        addRow("part seconds round up", crowded, 10.2, 12, 0);
        addRow("never fewer segments", crowded, 2.0, 4, 0);
        addRow("a corner", QList<double>{0, 0, 0, 0.01, 0.02, 0.01}, 100.0, 101, 1);
        addRow("capped", QList<double>{0, 0, 1, 1}, 1e6, int(RoutePace::MaxEvenPoints), 0);
        addRow("no duration", crowded, 0.0, 0, 0);
        addRow("negative duration", crowded, -5.0, 0, 0);
        addRow("duration not a number", crowded, Nan, 0, 0);
        addRow("one point", QList<double>{1, 2}, 100.0, 0, 0);
        addRow("no length", QList<double>{1, 2, 1, 2}, 100.0, 0, 0);
    }
    void evenPace()
    {
        QFETCH(QList<double>, points);
        QFETCH(double, seconds);
        QFETCH(int, count);
        QFETCH(int, corners);
        const QList<Coordinate> original = route(points);
        const QList<Coordinate> even = RoutePace::evenPace(original, seconds);
        if (count == 0) {
            QCOMPARE(even, original);
            return;
        }
        QCOMPARE(even.size(), count);
        QCOMPARE(even.first(), original.first());
        QCOMPARE(even.last(), original.last());
        // every gap is the route's length over the number of gaps, within 1%,
        // except where a gap cuts across a corner of the route
        const double spacing = RoutePace::lengthMeters(original) / (count - 1);
        int off = 0;
        for (qsizetype i = 1; i < even.size(); ++i) {
            const double gap = RoutePace::distanceMeters(even[i - 1], even[i]);
            QVERIFY(gap <= spacing * 1.01);
            off += gap < spacing * 0.99;
        }
        QVERIFY2(off <= corners, qPrintable(QString::number(off)));
    }
};

TREKMIME_TEST(RoutePaceTest)
#include "RoutePaceTest.moc"
