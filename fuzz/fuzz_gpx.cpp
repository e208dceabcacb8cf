// GPX import: the file's waypoints become favourites, its track the trip's
// points; a small point limit lets the fuzzer reach the refusal too.

#include "FuzzInput.h"

#include "gpx/GpxFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray xml = fuzzBytes(data, size);
    for (const qsizetype limit : {Gpx::MaxPoints, qsizetype(3)}) {
        const Gpx::Content content = Gpx::fromXml(xml, limit);
        volatile double seen = content.ok() + content.error.size();
        for (const FavoriteEntry &waypoint : content.waypoints)
            seen = waypoint.name().size() + waypoint.latitude() + waypoint.longitude();
        for (const Coordinate &point : content.track)
            seen = point.isValid();
        (void)seen;
    }
    return 0;
}
