// The route file as the trip screen, the position feed and trekmime-ctl read
// it: the record, its times, addresses and points, the preview steps, and the
// record written back after the switch is flipped.

#include "FuzzInput.h"

#include "routing/RoutePace.h"
#include "routing/RoutePreview.h"
#include "settings/RouteRecord.h"

#include <limits>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    RouteRecord route =
        RouteRecord::fromPropertyList(settingsRoot(data, size, QMetaType::QVariantMap));
    const qint32 start = route.startSeconds();
    const qint32 end = route.endSeconds();
    volatile double seen = route.start() + route.end() + route.hasStart() + route.hasEnd();
    seen = route.startAddress().size() + route.endAddress().size() + route.hasTextStartAddress();
    QList<Coordinate> places;
    for (const RoutePoint &point : route.points()) {
        if (point.isUsable())
            places.append({point.latitude(), point.longitude()});
    }
    seen = RoutePace::lengthMeters(places);
    // the feed asks for the step now and a second later, wherever now is
    for (const qint32 now : {start, qint32((qint64(start) + end) / 2), end}) {
        seen = RoutePreview::stepAt(route, now).coordinate.latitude;
        if (now < std::numeric_limits<qint32>::max())
            seen = RoutePreview::stepAt(route, now + 1).coordinate.longitude;
    }
    if (route.pointCount() < 10000)
        seen = RoutePreview::passingTimes(route).size();
    (void)seen;
    route.setEnabled(!route.isEnabled());
    checkWrittenBack(route.toPropertyList());
    return 0;
}
