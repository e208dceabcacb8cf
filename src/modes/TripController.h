#pragma once

#include "platform/Coordinate.h"
#include "routing/DirectionsService.h"
#include "settings/RouteRecord.h"

#include <QObject>
#include <QString>

class Clock;
class ClockTimer;
class TMPreferenceUtil;

// The simulated trip of the route mode, as the route screen shows it and as
// trekmime-ctl drives it for a script: the choices (start and end place with
// their address texts, the stops on the way, start and end time), planning
// the road route through the places, the switch with its checks and writes,
// and the one-second preview of where the trip stands.
//
// It keeps an in-memory copy of the route record, read from the route file
// on `restore()` and `reload()`; the switch writes that copy back whole.
// After a switch-on the record's "points" follow the planned points, so a
// route that answers after the write changes the copy (and the file at the
// next write).
class TripController : public QObject
{
    Q_OBJECT

public:
    TripController(TMPreferenceUtil &store, DirectionsService *directions, Clock &clock,
                   QObject *parent = nullptr);
    ~TripController() override;

    // Reads the route record. When it is on, the times, addresses and
    // points come from it, the places from the first and last point, and
    // there are no stops (the record keeps only points); planning and the
    // preview are the caller's to start.
    void restore();
    // Reads the route record again, leaving the choices as they are.
    void reload();
    const RouteRecord &record() const { return m_record; }
    bool isOn() const { return m_record.isEnabled(); }

    // --- the choices. A place with a latitude or longitude of exactly 0 is
    // not chosen, and is ignored (false); a chosen one plans the route.
    bool chooseStart(const Coordinate &place, const QString &address);
    bool chooseEnd(const Coordinate &place, const QString &address);
    void setAddresses(const QString &start, const QString &end);
    void setStartTime(double seconds) { m_startTime = seconds; }
    void setEndTime(double seconds) { m_endTime = seconds; }
    Coordinate start() const { return m_start; }
    Coordinate end() const { return m_end; }
    QString startAddress() const { return m_startAddress; }
    QString endAddress() const { return m_endAddress; }
    double startTime() const { return m_startTime; }
    double endTime() const { return m_endTime; }
    // The stops on the way, in travel order between the start and the end.
    // A stop is a place like the start and the end: one on the equator or
    // the prime meridian is refused (false), as is an index outside 0 to
    // stops().size(); a change plans the route again.
    struct Stop
    {
        Coordinate place;
        QString address;
    };
    bool addStop(qsizetype index, const Coordinate &place, const QString &address);
    bool removeStop(qsizetype index);
    const QList<Stop> &stops() const { return m_stops; }
    // The refusal to show when a choice is made while the trip is on, or
    // an empty text when choosing is allowed.
    QString choiceRefusal() const;

    // --- planning. `plan()` asks for a route through the start, the stops
    // and the end when both places are chosen; `planBetween()` and
    // `planThrough()` ask in any case. Every request ends in exactly one
    // planningFinished(), later, unless this object is gone by then or a
    // newer request replaced it before it was sent (the newer one's answer
    // then stands for both).
    void plan();
    void planBetween(const Coordinate &from, const Coordinate &to) { planThrough({from, to}); }
    void planThrough(const QList<Coordinate> &waypoints);
    bool isPlanning() const { return m_pendingPlans > 0; }
    const QList<RoutePoint> &points() const { return m_points; }
    // The planned route's length along its points, in metres.
    double routeLengthMeters() const;
    // Off (the default), the record gets the routing service's points as
    // they are; on, respaced evenly for the trip's duration (RoutePace).
    void setEvenPace(bool on) { m_evenPace = on; }
    bool evenPace() const { return m_evenPace; }
    // The points the record gets at a switch-on: the planned ones, respaced
    // when even pace is on.
    QList<RoutePoint> pointsToWrite() const;
    bool isRouteError() const { return m_routeError; }
    // A route of one's own (a GPX track, say) as the planned route, instead
    // of the routing service's: the places become its first and last point
    // (their addresses are the caller's to find), the last answer becomes
    // one route of these points, and planningFinished() follows at once.
    // From then on plan() and switchOn() ask for no route, and an answer
    // still on its way is ignored, until a place is chosen or planBetween()
    // asks again. An empty list is ignored (false).
    bool usePlannedPoints(const QList<Coordinate> &points);
    // The last answer and the places it was asked for: its two ends and the
    // stops between them in travel order.
    const DirectionsAnswer &lastAnswer() const { return m_lastAnswer; }
    Coordinate plannedFrom() const { return m_plannedFrom; }
    Coordinate plannedTo() const { return m_plannedTo; }
    const QList<Coordinate> &plannedStops() const { return m_plannedStops; }

    // --- the switch
    struct SwitchResult
    {
        QString refusal; // the first failing check; empty when switched on
        bool written = false;
    };
    // The six checks of the choices in their fixed order: the text of the
    // first that fails, or an empty text.
    QString check() const;
    // Checks; then moves the start out of the past, plans again (unless
    // `replan` is false: the caller has just planned), writes the record on
    // and starts the preview.
    SwitchResult switchOn(bool replan = true);
    // Writes the record with only "enable" changed, and stops the preview.
    bool switchOff();

    // The start time to store: never in the past (`now` is whole seconds,
    // 32-bit), and never after the end (then one second before it).
    static double normalizedStartTime(double startTime, double endTime, qint32 now);
    static QString workingRefusal();

    // --- the preview, once a second while the trip is on
    void startPreview();
    void stopPreview();
    // Emits previewAt() for the present moment, unless the 32-bit index
    // falls outside the points.
    void previewNow();
    ClockTimer *previewTimer() const { return m_timer; }

signals:
    void planningStarted();
    void planningFinished();
    void previewAt(const Coordinate &coordinate);

private:
    void answered(const DirectionsAnswer &answer, const Coordinate &from, const Coordinate &to,
                  const QList<Coordinate> &stops = {});
    void takeRoute(const QList<Coordinate> &route);

    TMPreferenceUtil &m_store;
    DirectionsService *m_directions;
    Clock &m_clock;

    RouteRecord m_record;
    // whether the record's "points" is `m_points` (after a switch-on)
    bool m_recordFollowsPoints = false;

    Coordinate m_start;
    Coordinate m_end;
    QString m_startAddress;
    QString m_endAddress;
    QList<Stop> m_stops;
    double m_startTime = 0.0;
    double m_endTime = 0.0;

    QList<RoutePoint> m_points;
    bool m_evenPace = false;
    bool m_ownPoints = false; // usePlannedPoints() chose the route
    bool m_routeError = false;
    int m_pendingPlans = 0;
    DirectionsAnswer m_lastAnswer;
    Coordinate m_plannedFrom;
    Coordinate m_plannedTo;
    QList<Coordinate> m_plannedStops;

    ClockTimer *m_timer = nullptr;
};
