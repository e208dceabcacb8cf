// The routing service's answer with its routes' encoded polylines, and the
// polyline decoder on raw text at both precisions the service writes.

#include "FuzzInput.h"

#include "routing/OsrmDirectionsService.h"
#include "routing/RoutePace.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray body = fuzzBytes(data, size);
    const DirectionsAnswer answer = OsrmDirectionsService::answerFor(200, body);
    volatile double seen = answer.error.value_or(QString()).size();
    for (const DirectionsRoute &route : answer.routes)
        seen = RoutePace::lengthMeters(route.coordinates) + route.distance + route.duration;
    for (const int precision : {5, 6})
        seen = OsrmDirectionsService::decodePolyline(body, precision)
                   .value_or(QList<Coordinate>())
                   .size();
    (void)seen;
    return 0;
}
