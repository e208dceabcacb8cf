#include "TestMain.h"
#include "TestServices.h"

#include "settings/RouteSwitch.h"
#include "settings/TMPreferenceUtil.h"

#include <QTest>

Q_DECLARE_METATYPE(RouteSwitch::Choices)

namespace {
RouteSwitch::Choices complete()
{
    RouteSwitch::Choices c;
    c.startLatitude = 22.2846809;
    c.startLongitude = 114.1588;
    c.endLatitude = 22.2988;
    c.endLongitude = 114.1722;
    c.startTime = 1900000000;
    c.endTime = 1900003600;
    c.startAddress = QStringLiteral("Central");
    c.endAddress = QStringLiteral("Tsim Sha Tsui");
    c.points = {RoutePoint(22.2846809, 114.1588), RoutePoint(22.2988, 114.1722)};
    return c;
}
} // namespace

// The switch's checks, in their order, the start time moved out of the past,
// and what each direction of the switch writes.
class RouteSwitchTest : public QObject
{
    Q_OBJECT

private slots:
    void checkOrder_data()
    {
        QTest::addColumn<RouteSwitch::Choices>("choices");
        QTest::addColumn<QString>("message");
        auto with = [](auto change) {
            RouteSwitch::Choices c = complete();
            change(c);
            return c;
        };
        const QString start = QStringLiteral("Please choose Start");
        const QString path = QStringLiteral("Path planning failure, rechoose Start/End please");
        QTest::newRow("nothing chosen") << RouteSwitch::Choices{} << start;
        QTest::newRow("start on the equator")
            << with([](auto &c) { c.startLatitude = 0.0; }) << start;
        QTest::newRow("start on the prime meridian, all else missing") << with([](auto &c) {
            c.startLongitude = 0.0;
            c.endLatitude = 0.0;
            c.startTime = 0;
        }) << start;
        QTest::newRow("end") << with([](auto &c) {
            c.endLongitude = 0.0;
            c.startTime = -5;
        }) << QStringLiteral("Please choose End");
        QTest::newRow("start time before end time check") << with([](auto &c) {
            c.startTime = 0;
            c.endTime = 0;
        }) << QStringLiteral("Please choose Start Time");
        QTest::newRow("end time") << with([](auto &c) {
            c.endTime = -1;
            c.points.clear();
        }) << QStringLiteral("Please choose End Time");
        QTest::newRow("end before start") << with([](auto &c) {
            c.endTime = c.startTime - 1;
            c.routeError = true;
        }) << QStringLiteral("End Time must later than Start Time");
        QTest::newRow("equal times pass")
            << with([](auto &c) { c.endTime = c.startTime; }) << QString();
        QTest::newRow("no points") << with([](auto &c) { c.points.clear(); }) << path;
        QTest::newRow("route error despite points")
            << with([](auto &c) { c.routeError = true; }) << path;
        QTest::newRow("all chosen") << complete() << QString();
    }
    void checkOrder()
    {
        QFETCH(RouteSwitch::Choices, choices);
        QFETCH(QString, message);
        QCOMPARE(RouteSwitch::check(choices), message);
    }

    void normalizedStart_data()
    {
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("end");
        QTest::addColumn<double>("expected");
        const qint32 now = 1700000000;
        QTest::newRow("future start kept")
            << double(now + 60) << double(now + 120) << double(now + 60);
        QTest::newRow("past start becomes now")
            << double(now - 60) << double(now + 120) << double(now);
        QTest::newRow("both past: one second before the end")
            << double(now - 600) << double(now - 60) << double(now - 61);
        QTest::newRow("end is now") << double(now - 600) << double(now) << double(now);
    }
    void normalizedStart()
    {
        QFETCH(double, start);
        QFETCH(double, end);
        QFETCH(double, expected);
        QCOMPARE(RouteSwitch::normalizedStartTime(start, end, 1700000000), expected);
    }

    void writeOnThenOff()
    {
        TestServices world;
        RouteSwitch routeSwitch(world.preferences());
        // a record as read: a key and route entries this program does not
        // understand go back to the file untouched by a switch-off
        const QVariantList oddPoints{
            QStringLiteral("not a point"),
            QVariantMap{{QStringLiteral("lat"), QStringLiteral("1.5")}, {QStringLiteral("x"), 2}}};
        RouteRecord record = RouteRecord::fromPropertyList(
            QVariantMap{{QStringLiteral("extra"), QStringLiteral("kept")},
                        {QStringLiteral("points"), oddPoints}});
        QVERIFY(routeSwitch.writeOff(record));
        QCOMPARE(world.preferences().routePreference().toPropertyList(),
                 (QVariantMap{{QStringLiteral("enable"), QStringLiteral("0")},
                              {QStringLiteral("extra"), QStringLiteral("kept")},
                              {QStringLiteral("points"), oddPoints}}));

        RouteSwitch::Choices c = complete();
        c.startTime = 1900000000.75; // the fraction is written as "%f" makes it
        QVERIFY(routeSwitch.writeOn(record, c));
        QVariantMap stored = world.preferences().routePreference().toPropertyList();
        QCOMPARE(stored.value(QStringLiteral("enable")), QVariant(QStringLiteral("1")));
        QCOMPARE(stored.value(QStringLiteral("start")),
                 QVariant(QStringLiteral("1900000000.750000")));
        QCOMPARE(stored.value(QStringLiteral("end")),
                 QVariant(QStringLiteral("1900003600.000000")));
        QCOMPARE(stored.value(QStringLiteral("s")), QVariant(QStringLiteral("Central")));
        QCOMPARE(stored.value(QStringLiteral("e")), QVariant(QStringLiteral("Tsim Sha Tsui")));
        QCOMPARE(
            stored.value(QStringLiteral("points")).toList(),
            (QVariantList{
                QVariantMap{{QStringLiteral("lat"), 22.2846809}, {QStringLiteral("lng"), 114.1588}},
                QVariantMap{{QStringLiteral("lat"), 22.2988}, {QStringLiteral("lng"), 114.1722}}}));
        QCOMPARE(stored.value(QStringLiteral("extra")), QVariant(QStringLiteral("kept")));

        QVERIFY(routeSwitch.writeOff(record));
        stored.insert(QStringLiteral("enable"), QStringLiteral("0"));
        // everything but "enable" as the switch-on wrote it
        QCOMPARE(world.preferences().routePreference().toPropertyList(), stored);
    }
};

TREKMIME_TEST(RouteSwitchTest)
#include "RouteSwitchTest.moc"
