#include "modes/TripController.h"

#include "platform/Clock.h"
#include "routing/RoutePace.h"
#include "routing/RoutePreview.h"
#include "settings/TMPreferenceUtil.h"

#include <algorithm>

namespace {
Coordinate pointCoordinate(const RoutePoint &point)
{
    return {point.latitude(), point.longitude()};
}

QList<Coordinate> pointCoordinates(const QList<RoutePoint> &points)
{
    QList<Coordinate> coordinates;
    coordinates.reserve(points.size());
    for (const RoutePoint &p : points)
        coordinates.append(pointCoordinate(p));
    return coordinates;
}

// Whatever the source (a routing service, an offline router, a file), a
// route with a point that is no place on the globe is no route.
bool allPlaces(const QList<Coordinate> &route)
{
    return std::all_of(route.cbegin(), route.cend(),
                       [](const Coordinate &c) { return c.isValid(); });
}
} // namespace

TripController::TripController(TMPreferenceUtil &store, DirectionsService *directions, Clock &clock,
                               QObject *parent)
    : QObject(parent), m_store(store), m_directions(directions), m_clock(clock)
{
}

TripController::~TripController() = default;

void TripController::restore()
{
    reload();
    if (!m_record.isEnabled())
        return;
    m_startTime = m_record.startSeconds();
    m_endTime = m_record.endSeconds();
    m_points = m_record.points();
    // a point no place can be (a damaged or hostile file) makes the whole
    // route unusable: shown as a route without points, the file left alone
    if (!std::all_of(m_points.cbegin(), m_points.cend(),
                     [](const RoutePoint &p) { return p.isUsable(); }))
        m_points.clear();
    m_start = m_points.isEmpty() ? Coordinate{} : pointCoordinate(m_points.first());
    m_end = m_points.isEmpty() ? Coordinate{} : pointCoordinate(m_points.last());
    m_startAddress = m_record.startAddress();
    m_endAddress = m_record.endAddress();
    m_stops.clear(); // the record's points do not tell which of them were stops
}

void TripController::reload()
{
    m_record = m_store.routePreference();
    m_recordFollowsPoints = false;
}

// --- the choices --------------------------------------------------------------

bool TripController::chooseStart(const Coordinate &place, const QString &address)
{
    if (place.latitude == 0.0 || place.longitude == 0.0)
        return false;
    m_start = place;
    m_startAddress = address;
    m_ownPoints = false;
    plan();
    return true;
}

bool TripController::chooseEnd(const Coordinate &place, const QString &address)
{
    if (place.latitude == 0.0 || place.longitude == 0.0)
        return false;
    m_end = place;
    m_endAddress = address;
    m_ownPoints = false;
    plan();
    return true;
}

bool TripController::addStop(qsizetype index, const Coordinate &place, const QString &address)
{
    if (!place.isChosen() || index < 0 || index > m_stops.size())
        return false;
    m_stops.insert(index, Stop{place, address});
    plan();
    return true;
}

bool TripController::removeStop(qsizetype index)
{
    if (index < 0 || index >= m_stops.size())
        return false;
    m_stops.removeAt(index);
    plan();
    return true;
}

void TripController::setAddresses(const QString &start, const QString &end)
{
    m_startAddress = start;
    m_endAddress = end;
}

QString TripController::choiceRefusal() const
{
    return m_record.isEnabled() ? workingRefusal() : QString();
}

QString TripController::workingRefusal()
{
    return tr("Trekmime is working,please turn off the Trekmime first!");
}

// --- planning -------------------------------------------------------------------

void TripController::plan()
{
    if (m_ownPoints || !m_start.isChosen() || !m_end.isChosen())
        return;
    QList<Coordinate> waypoints{m_start};
    for (const Stop &stop : std::as_const(m_stops))
        waypoints.append(stop.place);
    waypoints.append(m_end);
    planThrough(waypoints);
}

void TripController::planThrough(const QList<Coordinate> &waypoints)
{
    ++m_pendingPlans;
    emit planningStarted();
    m_routeError = false;
    m_ownPoints = false;
    const Coordinate from = waypoints.value(0);
    const Coordinate to = waypoints.value(waypoints.size() - 1);
    const QList<Coordinate> stops =
        waypoints.size() > 2 ? waypoints.mid(1, waypoints.size() - 2) : QList<Coordinate>();
    if (!m_directions) {
        answered(DirectionsAnswer::failure(tr("No route planning service.")), from, to, stops);
        return;
    }
    m_directions->calculateDirections(waypoints, this,
                                      [this, from, to, stops](const DirectionsAnswer &answer) {
                                          answered(answer, from, to, stops);
                                      });
}

void TripController::answered(const DirectionsAnswer &answer, const Coordinate &from,
                              const Coordinate &to, const QList<Coordinate> &stops)
{
    --m_pendingPlans;
    if (answer.replaced)
        return; // not a failure: the newer request's answer is still to come
    if (m_ownPoints) {
        emit planningFinished(); // asked before the route of one's own came
        return;
    }
    m_lastAnswer = answer;
    m_plannedFrom = from;
    m_plannedTo = to;
    m_plannedStops = stops;
    if (answer.isError() || answer.routes.isEmpty() ||
        !allPlaces(answer.routes.first().coordinates)) {
        // the user hears of it when switching on; the old points stay
        m_routeError = true;
    } else {
        takeRoute(answer.routes.first().coordinates);
    }
    emit planningFinished();
}

void TripController::takeRoute(const QList<Coordinate> &route)
{
    m_points.clear();
    m_points.reserve(route.size());
    for (const Coordinate &c : route)
        m_points.append(RoutePoint(c.latitude, c.longitude));
    if (m_recordFollowsPoints)
        m_record.setPoints(pointsToWrite());
}

bool TripController::usePlannedPoints(const QList<Coordinate> &points)
{
    if (points.isEmpty() || !allPlaces(points))
        return false;
    m_ownPoints = true;
    m_routeError = false;
    m_stops.clear(); // the track goes where it goes
    m_plannedStops.clear();
    m_start = m_plannedFrom = points.first();
    m_end = m_plannedTo = points.last();
    m_startAddress.clear();
    m_endAddress.clear();
    DirectionsRoute route;
    route.coordinates = points;
    route.distance = RoutePace::lengthMeters(points);
    m_lastAnswer = DirectionsAnswer::found({route});
    takeRoute(points);
    emit planningFinished();
    return true;
}

double TripController::routeLengthMeters() const
{
    return RoutePace::lengthMeters(pointCoordinates(m_points));
}

QList<RoutePoint> TripController::pointsToWrite() const
{
    if (!m_evenPace)
        return m_points; // the routing service's points, exactly
    const QList<Coordinate> even =
        RoutePace::evenPace(pointCoordinates(m_points), m_endTime - m_startTime);
    QList<RoutePoint> points;
    points.reserve(even.size());
    for (const Coordinate &c : even)
        points.append(RoutePoint(c.latitude, c.longitude));
    return points;
}

// --- the switch -----------------------------------------------------------------

QString TripController::check() const
{
    if (!m_start.isChosen())
        return tr("Please choose Start");
    if (!m_end.isChosen())
        return tr("Please choose End");
    if (m_startTime <= 0)
        return tr("Please choose Start Time");
    if (m_endTime <= 0)
        return tr("Please choose End Time");
    // equal times pass on purpose: the preview never divides by a zero span
    if (m_startTime > m_endTime)
        return tr("End Time must later than Start Time");
    if (m_points.isEmpty() || m_routeError)
        return tr("Path planning failure, rechoose Start/End please");
    return {};
}

double TripController::normalizedStartTime(double startTime, double endTime, qint32 now)
{
    if (startTime < now)
        startTime = now;
    if (startTime > endTime)
        startTime = endTime - 1.0;
    return startTime;
}

TripController::SwitchResult TripController::switchOn(bool replan)
{
    SwitchResult result;
    result.refusal = check();
    if (!result.refusal.isEmpty())
        return result;
    m_startTime = normalizedStartTime(m_startTime, m_endTime, RoutePreview::nowSeconds(m_clock));
    if (replan)
        plan();
    // the points of the route at hand; a new answer reaches the record later
    m_record.setEnabled(true);
    m_record.setStart(m_startTime);
    m_record.setEnd(m_endTime);
    m_record.setStartAddress(m_startAddress);
    m_record.setEndAddress(m_endAddress);
    m_record.setPoints(pointsToWrite());
    result.written = m_store.writeRoutePreference(m_record);
    m_recordFollowsPoints = true;
    startPreview();
    return result;
}

bool TripController::switchOff()
{
    m_record.setEnabled(false);
    const bool written = m_store.writeRoutePreference(m_record);
    stopPreview();
    return written;
}

// --- the preview ------------------------------------------------------------------

void TripController::startPreview()
{
    // one preview timer at most
    stopPreview();
    m_timer = m_clock.createTimer(this);
    connect(m_timer, &ClockTimer::timeout, this, &TripController::previewNow);
    m_timer->start(1000);
}

void TripController::stopPreview()
{
    if (!m_timer)
        return;
    m_timer->stop();
    m_timer->deleteLater();
    m_timer = nullptr;
}

void TripController::previewNow()
{
    const RoutePreview::Step step =
        RoutePreview::stepAt(m_record, RoutePreview::nowSeconds(m_clock));
    if (!step.inRange || !step.coordinate.isValid())
        return; // the 32-bit index left the list, or the point is no place
    emit previewAt(step.coordinate);
}
