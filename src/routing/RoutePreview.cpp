#include "routing/RoutePreview.h"

#include "platform/Clock.h"
#include "settings/RouteRecord.h"

#include <cmath>
#include <limits>

namespace {
// two's-complement wrap-around, as the 32-bit registers of the original
// arithmetic behave
qint32 wrap(qint64 value)
{
    return qint32(quint32(quint64(value)));
}
} // namespace

qint32 RoutePreview::nowSeconds(double secondsSince1970)
{
    if (std::isnan(secondsSince1970))
        return 0;
    if (secondsSince1970 >= double(std::numeric_limits<qint32>::max()))
        return std::numeric_limits<qint32>::max();
    if (secondsSince1970 <= double(std::numeric_limits<qint32>::min()))
        return std::numeric_limits<qint32>::min();
    return qint32(secondsSince1970);
}

qint32 RoutePreview::nowSeconds(const Clock &clock)
{
    return nowSeconds(clock.secondsSince1970());
}

qint32 RoutePreview::proportionalIndex(qint32 now, qint32 start, qint32 end, qint32 count)
{
    const qint32 elapsed = wrap(qint64(now) - start);
    const qint32 product = wrap(qint64(elapsed) * count);
    const qint32 duration = wrap(qint64(end) - start);
    if (duration == 0)
        return 0;
    if (duration == -1 && product == std::numeric_limits<qint32>::min())
        return product; // the one quotient that does not fit wraps onto itself
    return product / duration;
}

RoutePreview::Step RoutePreview::stepAt(const RouteRecord &record, qint32 now)
{
    const qint32 startTime = record.startSeconds();
    const qint32 endTime = record.endSeconds();
    const qsizetype size = record.pointCount();
    const qint32 count = qint32(std::min<qsizetype>(size, std::numeric_limits<qint32>::max()));

    Step step;
    if (startTime > now) {
        step.pick = Pick::First;
        step.index = 0;
    } else if (endTime > now) {
        step.pick = Pick::Proportional;
        step.index = proportionalIndex(now, startTime, endTime, count);
    } else {
        step.pick = Pick::Last;
        step.index = count - 1;
    }
    if (size == 0) {
        // nothing to show: the map goes to latitude 0, longitude 0
        step.index = 0;
        return step;
    }
    step.inRange = step.index >= 0 && step.index < count;
    if (step.inRange) {
        const RoutePoint point = record.pointAt(step.index);
        step.coordinate = {point.latitude(), point.longitude()};
    }
    return step;
}

QList<qint64> RoutePreview::passingTimes(const RouteRecord &record)
{
    const qint64 start = record.startSeconds();
    const qint64 count = record.pointCount();
    // a trip that ends at or before its start shows the last point from the start on
    const qint64 duration = std::max<qint64>(0, qint64(record.endSeconds()) - start);
    QList<qint64> times;
    times.reserve(count);
    // the index at `start + e` is floor(e x count / duration), so point i
    // shows from ceil(i x duration / count); split so the product stays small
    const qint64 whole = count ? duration / count : 0;
    const qint64 rest = count ? duration % count : 0;
    for (qint64 i = 0; i < count; ++i)
        times.append(start + i * whole + (i * rest + count - 1) / count);
    return times;
}
