#pragma once

#include "settings/RoutePoint.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

class RouteRecord;
class TMPreferenceUtil;

// Turning the trip on and off, as the route screen's switch does and as
// trekmime-ctl does for a script: the six checks of the user's choices in
// their fixed order, the start time moved out of the past, and the route
// record written whole.
class RouteSwitch
{
    Q_DECLARE_TR_FUNCTIONS(RouteSwitch)

public:
    explicit RouteSwitch(TMPreferenceUtil &store) : m_store(store) {}

    // What the user has chosen. A latitude or longitude of exactly 0 means
    // the place is not chosen; a time of 0 or less means not chosen.
    struct Choices
    {
        double startLatitude = 0.0;
        double startLongitude = 0.0;
        double endLatitude = 0.0;
        double endLongitude = 0.0;
        double startTime = 0.0; // whole seconds since 1970
        double endTime = 0.0;
        QString startAddress;
        QString endAddress;
        QList<RoutePoint> points; // in travel order
        bool routeError = false;
    };

    // The text of the first check that fails, or an empty text when all pass.
    static QString check(const Choices &choices);
    // The start time to store: never in the past (`now` is whole seconds,
    // 32-bit), and never after the end (then one second before it).
    static double normalizedStartTime(double startTime, double endTime, qint32 now);

    // Sets "enable" "1", "start", "end", "s", "e" and "points" in `record`
    // (the caller's in-memory copy) and writes it whole. Checks and
    // normalising are the caller's, so a screen can do its own steps between.
    bool writeOn(RouteRecord &record, const Choices &choices);
    // Sets only "enable" "0" in `record` and writes it whole; the rest of the
    // record stays as it was.
    bool writeOff(RouteRecord &record);

    // The refusal shown while the trip is on.
    static QString workingRefusal();

private:
    TMPreferenceUtil &m_store;
};
