#include "settings/RouteSwitch.h"

#include "settings/RouteRecord.h"
#include "settings/TMPreferenceUtil.h"

namespace {
bool chosen(double latitude, double longitude)
{
    return latitude != 0.0 && longitude != 0.0;
}
} // namespace

QString RouteSwitch::check(const Choices &c)
{
    if (!chosen(c.startLatitude, c.startLongitude))
        return tr("Please choose Start");
    if (!chosen(c.endLatitude, c.endLongitude))
        return tr("Please choose End");
    if (c.startTime <= 0)
        return tr("Please choose Start Time");
    if (c.endTime <= 0)
        return tr("Please choose End Time");
    // equal times pass on purpose: the preview never divides by a zero span
    if (c.startTime > c.endTime)
        return tr("End Time must later than Start Time");
    if (c.points.isEmpty() || c.routeError)
        return tr("Path planning failure, rechoose Start/End please");
    return {};
}

double RouteSwitch::normalizedStartTime(double startTime, double endTime, qint32 now)
{
    if (startTime < now)
        startTime = now;
    if (startTime > endTime)
        startTime = endTime - 1.0;
    return startTime;
}

bool RouteSwitch::writeOn(RouteRecord &record, const Choices &c)
{
    record.setEnabled(true);
    record.setStart(c.startTime);
    record.setEnd(c.endTime);
    record.setStartAddress(c.startAddress);
    record.setEndAddress(c.endAddress);
    record.setPoints(c.points);
    return m_store.writeRoutePreference(record);
}

bool RouteSwitch::writeOff(RouteRecord &record)
{
    record.setEnabled(false);
    return m_store.writeRoutePreference(record);
}

QString RouteSwitch::workingRefusal()
{
    return tr("Trekmime is working,please turn off the Trekmime first!");
}
