#include "AskDirections.h"
#include "RoutinoTown.h"
#include "TestMain.h"

#include "routing/RoutePace.h"
#include "routing/RoutinoDirectionsService.h"

#include <QTemporaryDir>

#include <memory>

using RoutinoTown::corner;

namespace {

// Where on the town's grid a vertex lies: row * 3 + column, or -1 off every corner.
int cornerAt(const Coordinate &c)
{
    for (int i = 0; i < 9; ++i) {
        const Coordinate k = corner(i / 3, i % 3);
        // Routino gives its points as single-precision radians: within a metre
        if (qAbs(c.latitude - k.latitude) < 1e-5 && qAbs(c.longitude - k.longitude) < 1e-5)
            return i;
    }
    return -1;
}

} // namespace

// Routes planned on this machine from a Routino database made inside the test.
class RoutinoDirectionsServiceTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_town;

private slots:
    void initTestCase()
    {
        const QString why = RoutinoTown::build(m_town.path());
        QVERIFY2(why.isEmpty(), qPrintable(why));
    }

    // the corners the route passes, by row * 3 + column
    void followsTheStreets_data()
    {
        QTest::addColumn<QString>("profile");
        QTest::addColumn<QList<int>>("places");
        QTest::addColumn<double>("fastest"); // km/h on the whole, at most
        addRow("driving across", u"driving"_s, QList<int>{0, 8}, 130.0);
        addRow("walking along one street", u"walking"_s, QList<int>{6, 8}, 7.0);
        addRow("cycling through a stop", u"cycling"_s, QList<int>{0, 8, 2}, 30.0);
        addRow("driving back through two", u"driving"_s, QList<int>{8, 3, 1, 6}, 130.0);
    }
    void followsTheStreets()
    {
        QFETCH(QString, profile);
        QFETCH(QList<int>, places);
        QFETCH(double, fastest);
        RoutinoDirectionsService service(m_town.path(), profile);
        QList<Coordinate> waypoints;
        for (int place : places)
            waypoints.append(corner(place / 3, place % 3));
        const DirectionsAnswer answer = askOnce(service, waypoints);
        QVERIFY2(!answer.isError(), qPrintable(answer.error.value_or(QString())));
        const DirectionsRoute &route = answer.routes.first();

        // every vertex a corner, each the next along a street, the places in order
        qsizetype reached = 0;
        for (qsizetype i = 0; i < route.coordinates.size(); ++i) {
            const int at = cornerAt(route.coordinates[i]);
            QVERIFY2(at >= 0, qPrintable(route.coordinates[i].toString()));
            if (i > 0) {
                const int from = cornerAt(route.coordinates[i - 1]);
                QCOMPARE(qAbs(at / 3 - from / 3) + qAbs(at % 3 - from % 3), 1);
            }
            if (reached < places.size() && at == places[reached])
                ++reached;
        }
        QCOMPARE(reached, places.size());
        QCOMPARE(cornerAt(route.coordinates.last()), places.last());
        // as long as the line it draws, no shorter than straight between the places
        const double drawn = RoutePace::lengthMeters(route.coordinates);
        QVERIFY2(qAbs(route.distance - drawn) < drawn * 0.01,
                 qPrintable(u"%1 m along %2 m"_s.arg(route.distance).arg(drawn)));
        QVERIFY(route.distance >= RoutePace::lengthMeters(waypoints) * 0.99);
        const double kmh = route.distance / route.duration * 3.6;
        QVERIFY2(kmh > fastest / 4 && kmh <= fastest, qPrintable(QString::number(kmh)));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("database"); // empty: the town
        QTest::addColumn<QString>("profile");
        QTest::addColumn<QList<Coordinate>>("waypoints");
        QTest::addColumn<QString>("error");
        const Coordinate far{51.1, 7.0};
        const QList<Coordinate> across{corner(0, 0), corner(2, 2)};
        const auto row = [&](const char *name, const char *profile, const QList<Coordinate> &at,
                             const char *error, const QString &database = {}) {
            addRow(name, database, QString::fromUtf8(profile), at, QString::fromUtf8(error));
        };
        row("end off the map", "driving", {corner(0, 0), far},
            "The end is too far from any road on the offline map.");
        row("stop off the map", "walking", {corner(0, 0), far, corner(1, 1)},
            "Stop 1 is too far from any road on the offline map.");
        row("no road to a stop", "driving", {corner(0, 0), RoutinoTown::lone(1), corner(2, 2)},
            "The offline map has no road route to stop 1.");
        row("unknown profile", "flying", across,
            "Offline routing plans for driving, walking or cycling, not \"flying\".");
        row("one place", "driving", across.mid(1), "A route needs a start and an end.");
        row("no database", "driving", across, "No offline map can be read in /nonexistent.",
            u"/nonexistent"_s);
    }
    void refusals()
    {
        QFETCH(QString, database);
        QFETCH(QString, profile);
        QFETCH(QList<Coordinate>, waypoints);
        QFETCH(QString, error);
        RoutinoDirectionsService service(database.isEmpty() ? m_town.path() : database, profile);
        const DirectionsAnswer answer = askOnce(service, waypoints);
        QCOMPARE(answer.error.value_or(u"(no error)"_s), error);
    }

    // each request answered once (a waiting one may be replaced), none when
    // its receiver or the service is gone, and nothing breaks
    void answersOnceOrNever()
    {
        auto service = std::make_unique<RoutinoDirectionsService>(m_town.path(), u"driving"_s);
        QList<DirectionsAnswer> answers[4];
        auto receiver = std::make_unique<QObject>();
        for (int i = 0; i < 4; ++i) {
            service->calculateDirections({corner(0, 0), corner(2, 2)}, i ? nullptr : receiver.get(),
                                         [&, i](const DirectionsAnswer &a) { answers[i] << a; });
        }
        receiver.reset();
        QVERIFY(QTest::qWaitFor([&] { return !answers[3].isEmpty(); }, 5000));
        QTest::qWait(100);
        QVERIFY(answers[0].isEmpty() && !answers[3].first().isError());
        for (int i = 1; i < 4; ++i)
            QVERIFY(answers[i].size() == 1 && (!answers[i][0].isError() || answers[i][0].replaced));
        service->calculateDirections({corner(0, 0), corner(2, 2)}, nullptr,
                                     [&](const DirectionsAnswer &a) { answers[0] << a; });
        service.reset();
        QTest::qWait(200);
        QVERIFY(answers[0].isEmpty());
    }
};

TREKMIME_TEST(RoutinoDirectionsServiceTest)
#include "RoutinoDirectionsServiceTest.moc"
