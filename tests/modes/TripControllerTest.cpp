#include "FileBytes.h"
#include "TestMain.h"
#include "TestServices.h"

#include "fakes/FakeDirectionsService.h"
#include "modes/TripController.h"
#include "routing/RoutePace.h"
#include "settings/PropertyList.h"

#include <QSignalSpy>

#include <limits>
#include <tuple>

namespace {
const Coordinate Central{22.2846809, 114.1588}, Tst{22.2988, 114.1722};
const double Now = 1700000000; // the test clock's start
const QString Busy = u"Trekmime is working,please turn off the Trekmime first!"_s;

struct Choice
{
    Coordinate start, end;
    double startTime, endTime;
    bool routeFound;
};

QVariantMap point(const Coordinate &c)
{
    return {{u"lat"_s, c.latitude}, {u"lng"_s, c.longitude}};
}

} // namespace

Q_DECLARE_METATYPE(Choice)

// The trip behind the route screen and trekmime-ctl.
class TripControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    std::unique_ptr<FakeDirectionsService> m_directions;
    std::unique_ptr<TripController> m_trip;

    QVariantMap stored() { return m_world->preferences().routePreference().toPropertyList(); }
    void writeRoute(const QVariantMap &record)
    {
        QVERIFY(PropertyList::write(m_world->files().routeFile(), record));
        m_trip->restore();
    }
    void choose(const Coordinate &start, const Coordinate &end, double startTime, double endTime)
    {
        m_trip->chooseStart(start, u"Central"_s);
        m_trip->chooseEnd(end, u"Tsim Sha Tsui"_s);
        QTRY_VERIFY(!m_trip->isPlanning());
        m_trip->setStartTime(startTime);
        m_trip->setEndTime(endTime);
    }

private slots:
    void init()
    {
        m_world = std::make_unique<TestServices>();
        m_directions = std::make_unique<FakeDirectionsService>();
        m_trip = std::make_unique<TripController>(m_world->preferences(), m_directions.get(),
                                                  m_world->clock);
    }
    void cleanup() { m_trip.reset(), m_directions.reset(), m_world.reset(); }

    // A point no place can be makes the stored route one without points;
    // the preview never goes to it, and the file stays as it was.
    void impossiblePointsNeverReachTheScreen_data()
    {
        QTest::addColumn<int>("at"); // which point is impossible; -1: all
        QTest::addColumn<double>("latitude");
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double inf = std::numeric_limits<double>::infinity();
        for (const auto &[name, at, latitude] : {std::tuple{"first NaN", 0, nan},
                                                 {"middle infinite", 1, inf},
                                                 {"last 91", 2, 91.0},
                                                 {"all -infinite", -1, -inf}})
            QTest::newRow(name) << at << latitude;
    }
    void impossiblePointsNeverReachTheScreen()
    {
        QFETCH(int, at);
        QFETCH(double, latitude);
        QVariantList points;
        for (int i = 0; i < 3; ++i)
            points << point({at == i || at < 0 ? latitude : 22.3 + i * 0.01, 114.1});
        // from before the start to after the end: each point's turn comes
        writeRoute({{u"enable"_s, u"1"_s},
                    {u"start"_s, QString::number(Now + 1, 'f', 0)},
                    {u"end"_s, QString::number(Now + 4, 'f', 0)},
                    {u"points"_s, points}});
        const QByteArray file = bytesOf(m_world->files().routeFile());
        QVERIFY(m_trip->points().isEmpty() && !m_trip->start().isChosen());
        QSignalSpy previews(m_trip.get(), &TripController::previewAt);
        for (int second = 0; second < 6; ++second, m_world->clock.advance(1000))
            m_trip->previewNow();
        for (const QList<QVariant> &preview : std::as_const(previews))
            QVERIFY(preview.first().value<Coordinate>().isValid());
        // each point has its seconds in these six; the bad one's are skipped
        QVERIFY(at < 0 ? previews.isEmpty() : previews.size() > 0 && previews.size() < 6);
        QCOMPARE(bytesOf(m_world->files().routeFile()), file);
        // nor is a planned route with such a point taken, from any source
        const QList<Coordinate> route{Central, {latitude, 114.1}, Tst};
        QVERIFY(!m_trip->usePlannedPoints(route));
        m_directions->setAnswer(DirectionsAnswer::found({DirectionsRoute{route, 1.0, 1.0}}));
        m_trip->switchOff();
        m_trip->planBetween(Central, Tst);
        QTRY_VERIFY(!m_trip->isPlanning());
        QVERIFY(m_trip->isRouteError() && m_trip->points().isEmpty());
    }

    // A refused switch-on leaves the route file exactly as it was.
    void checksInOrder_data()
    {
        QTest::addColumn<Choice>("choice");
        QTest::addColumn<QString>("refusal");
        const double t1 = Now + 60, t2 = Now + 120;
        const Coordinate none{}, meridian{22.3, 0};
        const auto row = [](const char *name, Choice choice, const char *refusal) {
            QTest::newRow(name) << choice << QString::fromUtf8(refusal);
        };
        row("nothing chosen", {none, none, 0, 0, true}, "Please choose Start");
        row("start on the equator", {{0, 114.1}, Tst, t1, t2, true}, "Please choose Start");
        row("start on the meridian", {meridian, none, 0, 0, false}, "Please choose Start");
        row("end", {Central, meridian, -5, t2, true}, "Please choose End");
        row("start time first", {Central, Tst, 0, 0, false}, "Please choose Start Time");
        row("end time", {Central, Tst, t1, -1, false}, "Please choose End Time");
        row("end first", {Central, Tst, t2, t1, false}, "End Time must later than Start Time");
        row("no route", {Central, Tst, t1, t2, false},
            "Path planning failure, rechoose Start/End please");
        row("equal times pass", {Central, Tst, t1, t1, true}, "");
    }
    void checksInOrder()
    {
        QFETCH(Choice, choice);
        QFETCH(QString, refusal);
        writeRoute({{u"enable"_s, u"0"_s}, {u"odd"_s, 7}});
        const QByteArray before = bytesOf(m_world->files().routeFile());
        if (!choice.routeFound)
            m_directions->setAnswer(DirectionsAnswer::failure(u"no road"_s));
        choose(choice.start, choice.end, choice.startTime, choice.endTime);
        const TripController::SwitchResult result = m_trip->switchOn();
        QCOMPARE(result.refusal, refusal);
        QCOMPARE(result.written, refusal.isEmpty());
        QCOMPARE(bool(m_trip->previewTimer()), refusal.isEmpty());
        if (!refusal.isEmpty())
            QCOMPARE(bytesOf(m_world->files().routeFile()), before);
    }

    void normalizedStart()
    {
        // future start kept; past start: now; both past: a second before the end, or now
        const double rows[][3] = {{Now + 60, Now + 120, Now + 60},
                                  {Now - 60, Now + 120, Now},
                                  {Now - 600, Now - 60, Now - 61},
                                  {Now - 600, Now, Now}};
        for (const auto &[start, end, expected] : rows)
            QCOMPARE(TripController::normalizedStartTime(start, end, qint32(Now)), expected);
    }

    void switchOnThenOff()
    {
        writeRoute({{u"extra"_s, u"kept"_s}});
        choose(Central, Tst, Now - 60.5, Now + 120);
        // the switch plans again; that answer comes after the write
        const Coordinate b{22.29, 114.16}, c{22.295, 114.17};
        m_directions->setAnswer(
            DirectionsAnswer::found({DirectionsRoute{{Central, b, c, Tst}, 0, 0}}));
        QVERIFY(m_trip->switchOn().written);
        QVariantMap on{{u"enable"_s, u"1"_s},
                       {u"start"_s, u"1700000000.000000"_s},
                       {u"end"_s, u"1700000120.000000"_s},
                       {u"s"_s, u"Central"_s},
                       {u"e"_s, u"Tsim Sha Tsui"_s},
                       {u"extra"_s, u"kept"_s},
                       {u"points"_s, stored().value(u"points"_s)}};
        QCOMPARE(stored(), on);
        QCOMPARE(on.value(u"points"_s).toList().size(), 3);
        QCOMPARE(m_trip->choiceRefusal(), Busy);

        QTRY_COMPARE(m_trip->record().pointCount(), 4); // memory follows the new route
        QSignalSpy shown(m_trip.get(), &TripController::previewAt);
        m_world->clock.advance(60000); // 60 x 4 / 120 = 2
        QCOMPARE(shown.size(), 60);
        QCOMPARE(shown.last().first().value<Coordinate>(), c);
        m_world->clock.advance(61000);
        QCOMPARE(shown.last().first().value<Coordinate>(), Tst);

        QVERIFY(m_trip->switchOff() && !m_trip->previewTimer());
        on.insert(u"enable"_s, u"0"_s);
        on.insert(u"points"_s, QVariantList{point(Central), point(b), point(c), point(Tst)});
        QCOMPARE(stored(), on);
        QCOMPARE(m_trip->choiceRefusal(), QString());
    }

    // Stops go between the start and the end where asked; each change plans
    // once through every place in travel order.
    void plansThroughStopsInOrder()
    {
        const Coordinate a{22.29, 114.16}, b{22.295, 114.17};
        choose(Central, Tst, 0, 0);
        QVERIFY(m_trip->addStop(0, b, u"B"_s) && m_trip->addStop(0, a, u"A"_s));
        QVERIFY(!m_trip->addStop(3, a, {}) && !m_trip->addStop(-1, a, {}));
        QVERIFY(!m_trip->addStop(1, {0, 114.1}, {}) && !m_trip->addStop(1, {22.3, 0}, {}));
        QVERIFY(!m_trip->removeStop(2));
        QTRY_VERIFY(!m_trip->isPlanning());
        QCOMPARE(m_directions->requests().last(), (QList<Coordinate>{Central, a, b, Tst}));
        QCOMPARE(m_trip->plannedStops(), (QList<Coordinate>{a, b}));
        QVERIFY(m_trip->removeStop(0));
        QCOMPARE(m_directions->requests().last(), (QList<Coordinate>{Central, b, Tst}));
        QCOMPARE(m_directions->requests().size(), 4);
    }

    // A restored trip plans again, but switching off writes the stored points.
    void restoredTripReplannedAndSwitchedOff()
    {
        QVariantMap record{{u"enable"_s, u"1"_s},
                           {u"start"_s, u"1699999000.500000"_s},
                           {u"end"_s, u"1700001000.000000"_s},
                           {u"e"_s, u"TST"_s},
                           {u"points"_s, QVariantList{point({22.28, 114.15}), u"odd entry"_s,
                                                      point({22.3, 114.17})}}};
        m_trip->addStop(0, Central, {}); // not the restored trip's
        writeRoute(record);
        QVERIFY(m_trip->isOn() && m_trip->stops().isEmpty());
        QCOMPARE(m_trip->start(), (Coordinate{22.28, 114.15}));
        QCOMPARE(m_trip->startTime(), 1699999000.0);
        QCOMPARE(m_trip->choiceRefusal(), Busy);
        m_trip->plan();
        QTRY_VERIFY(!m_trip->isPlanning());
        QCOMPARE(m_directions->requests(),
                 (QList<QList<Coordinate>>{{{22.28, 114.15}, {22.3, 114.17}}}));
        QVERIFY(m_trip->points().at(1).latitude() != 0.0); // the new route's corner
        QVERIFY(m_trip->switchOff());
        record.insert(u"enable"_s, u"0"_s);
        QCOMPARE(stored(), record);
        QVERIFY(m_trip->switchOn(false).written); // an unknown address is no key, not ""
        QVERIFY(!bytesOf(m_world->files().routeFile()).contains("<key>s</key>"));
        QCOMPARE(stored().value(u"e"_s).toString(), u"TST"_s);
    }

    // A route of one's own (a GPX track) is the planned route as an answer
    // would be: nothing is asked for, not even by the switch, an answer asked
    // for before it is ignored, and choosing a place plans again. (A request
    // a newer one replaced is no failure and ends nothing.)
    void plannedPointsStandForTheAnswer()
    {
        m_directions->setHeld(true);
        m_trip->planBetween(Central, Tst);
        m_trip->planBetween(Central, Tst);
        QSignalSpy finished(m_trip.get(), &TripController::planningFinished);
        QVERIFY(m_directions->release(0, DirectionsAnswer::replacedRequest(u"x"_s)));
        QVERIFY(m_trip->isPlanning() && finished.isEmpty() && !m_trip->isRouteError());
        const QList<Coordinate> own{Central, {22.29, 114.16}, Tst};
        QVERIFY(!m_trip->usePlannedPoints({}) && m_trip->usePlannedPoints(own));
        QCOMPARE(finished.size(), 1);
        QVERIFY(m_directions->release(0, DirectionsAnswer::found({DirectionsRoute{{}, 0, 0}})));
        QVERIFY(!m_trip->isPlanning() && !m_trip->isRouteError());
        QCOMPARE(m_trip->lastAnswer().routes.first().coordinates, own);
        QCOMPARE(QList<Coordinate>({m_trip->start(), m_trip->end()}), QList({Central, Tst}));
        QCOMPARE(m_trip->routeLengthMeters(), RoutePace::lengthMeters(own));
        m_directions->setHeld(false);
        choose(Central, Tst, Now + 60, Now + 70); // the places again: asks for a route
        QVERIFY(m_trip->usePlannedPoints(own));
        m_trip->setEvenPace(true);
        QVERIFY(m_trip->switchOn().written);
        const QVariantList points = stored().value(u"points"_s).toList();
        QCOMPARE(QVariantList({points.first(), points.last()}),
                 QVariantList({point(Central), point(Tst)}));
        QCOMPARE(points.size(), 11); // a point a second
        QCOMPARE(m_directions->requests().size(), 4);
    }

    // A failed plan keeps the last good points but fails the last check;
    // answers count in the order they come.
    void failedPlanAfterAGoodOne()
    {
        m_directions->setHeld(true);
        m_trip->chooseStart(Central, u"Central"_s);
        m_trip->chooseEnd(Tst, u"TST"_s);
        m_trip->plan();
        QCOMPARE(m_directions->pending().size(), 2);
        QVERIFY(m_directions->release(
            1, DirectionsAnswer::found({DirectionsRoute{{{1, 1}, {2, 2}}, 0, 0}})));
        QVERIFY(m_trip->isPlanning());
        QVERIFY(m_directions->release(0, DirectionsAnswer::failure(u"x"_s)));
        QVERIFY(!m_trip->isPlanning() && m_trip->isRouteError());
        QCOMPARE(m_trip->points().size(), 2);
        m_trip->setStartTime(Now + 60);
        m_trip->setEndTime(Now + 120);
        QCOMPARE(m_trip->check(), u"Path planning failure, rechoose Start/End please"_s);
        m_trip->plan(); // a controller gone before the answer hears nothing
        m_trip.reset();
        QVERIFY(!m_directions->release(0, DirectionsAnswer::failure(u"x"_s)));
    }
};

TREKMIME_TEST(TripControllerTest)
#include "TripControllerTest.moc"
