#pragma once

#include "platform/Coordinate.h"

#include <QList>
#include <QtGlobal>

class Clock;
class RouteRecord;

// Where the simulated trip stands at a given time: the first point before the
// start, the last point from the end on, and in between the point at index
// ((now - start) x count) / (end - start). The hooking component computes the
// index in signed 32-bit arithmetic, and the preview must show exactly what
// it will report, so the overflow of long trips is reproduced, not fixed.
class RoutePreview
{
public:
    enum class Pick { First, Proportional, Last };

    struct Step
    {
        Pick pick = Pick::First;
        qint32 index = 0;
        bool inRange = true; // false when the 32-bit index falls outside the list
        Coordinate coordinate;
    };

    // The current time in whole seconds since 1970, truncated toward zero to
    // a signed 32-bit integer.
    static qint32 nowSeconds(const Clock &clock);
    static qint32 nowSeconds(double secondsSince1970);

    // The index the 32-bit arithmetic gives for a time between start and end.
    static qint32 proportionalIndex(qint32 now, qint32 start, qint32 end, qint32 count);

    // The preview step for the route record `record` at time `now`. A record
    // without points answers latitude 0, longitude 0.
    static Step stepAt(const RouteRecord &record, qint32 now);

    // For each point of `record`, the second (since 1970) at which the trip
    // passes it: the first second whose step shows that point or a later
    // one. stepAt turned around, for trips short enough that its 32-bit
    // product does not wrap; for longer ones, where the trip was meant to be.
    static QList<qint64> passingTimes(const RouteRecord &record);
};
