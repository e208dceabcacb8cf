#include "modes/ModeChange.h"

#include "modes/TripController.h"
#include "settings/RouteRecord.h"
#include "settings/TMPreferenceUtil.h"

ModeChange::Result ModeChange::change(MasterRecord::Mode to)
{
    // written before the screens swap; a failed write still lets the caller
    // swap, and the stored mode wins again when the application next becomes
    // active
    return {QString(), to, m_store.writeMode(to)};
}

ModeChange::Result ModeChange::fromRouteMode(const RouteRecord &routeRecord)
{
    if (routeRecord.isEnabled())
        return {TripController::workingRefusal(), MasterRecord::RouteMode, false};
    return change(MasterRecord::LocationMode);
}

ModeChange::Result ModeChange::fromLocationMode()
{
    if (m_store.isLocationEnable())
        return {tr("Spotmime is working,please turn off the Spotmime first!"),
                MasterRecord::LocationMode, false};
    return change(MasterRecord::RouteMode);
}

ModeChange::Result ModeChange::fromStoredMode()
{
    if (m_store.mode() == MasterRecord::RouteMode)
        return fromRouteMode(m_store.routePreference());
    return fromLocationMode();
}
