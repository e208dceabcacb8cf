#include "settings/ModeChange.h"

#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"
#include "settings/TMPreferenceUtil.h"

namespace {
ModeChange::Result change(MasterRecord::Mode to)
{
    // written before the screens swap; a failed write still lets the caller
    // swap, and the stored mode wins again when the application next becomes
    // active
    return {QString(), to, MasterRecord::write(to)};
}
} // namespace

ModeChange::Result ModeChange::fromRouteMode(const QVariantMap &routeRecord)
{
    if (StoredValue::boolValue(routeRecord.value(RecordKeys::enable())))
        return {tr("Trekmime is working,please turn off the Trekmime first!"),
                MasterRecord::RouteMode, false};
    return change(MasterRecord::LocationMode);
}

ModeChange::Result ModeChange::fromLocationMode()
{
    if (TMPreferenceUtil::isLocationEnable())
        return {tr("Spotmime is working,please turn off the Spotmime first!"),
                MasterRecord::LocationMode, false};
    return change(MasterRecord::RouteMode);
}

ModeChange::Result ModeChange::fromStoredMode()
{
    if (MasterRecord::readMode() == MasterRecord::RouteMode)
        return fromRouteMode(TMPreferenceUtil::routePreference());
    return fromLocationMode();
}
