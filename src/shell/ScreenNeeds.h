#pragma once

#include "app/Services.h"
#include "apps/WhitelistViewController.h"
#include "info/InfoViewController.h"
#include "route/TrekmimeViewController.h"
#include "spot/FavoritesViewController.h"
#include "spot/SpotmimeViewController.h"

// Each screen gets only what it uses; these pick it out of the whole set of
// services the entry point (or a test) built. The clock, the alerts and the
// settings store must be set in `services` for the screens that use them.
namespace ScreenNeeds {

inline MapServices map(const Services &services)
{
    return {services.tiles, services.positionSources};
}

inline TrekmimeViewController::Needs route(const Services &services)
{
    return {*services.clock,   *services.alerts,       *services.preferences, services.directions,
            services.location, services.deviceMetrics, map(services)};
}

inline SelectAddressViewController::Needs addressPicker(const Services &services)
{
    return {*services.clock, *services.alerts, services.location, services.deviceMetrics,
            map(services)};
}

inline SpotmimeViewController::Needs spot(const Services &services)
{
    return {*services.clock,   *services.alerts,       *services.preferences,
            services.location, services.deviceMetrics, map(services)};
}

inline FavoritesViewController::Needs favorites(const Services &services)
{
    return {*services.preferences, services.deviceMetrics, services.alerts};
}

inline WhitelistViewController::Needs whitelist(const Services &services)
{
    return {*services.preferences, services.applications, services.deviceMetrics};
}

inline InfoViewController::Needs info(const Services &services)
{
    return {services.configuration, services.urlOpener, services.deviceMetrics};
}

} // namespace ScreenNeeds
