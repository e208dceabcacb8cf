#pragma once

#include "platform/HeadlessServices.h"

#include <memory>

class AlertPresenter;

// The real services that need no window, built from the configuration and
// kept alive as long as this object: the clock, the network manager, the
// device's position sources, the address lookup (Nominatim), the route
// planner the configuration names (OSRM or Routino) and the settings
// store over the configuration's preferences folder. The web
// geocoding endpoint follows from them (WebGeocoderEndpoint::fromServices).
// trekmime-ctl uses them as they are; the application adds what needs a
// window (RealServices). The location service is made here too, with the
// alert presenter given (none for trekmime-ctl), which must outlive this.
class CoreServices
{
public:
    explicit CoreServices(const Configuration &configuration, AlertPresenter *alerts = nullptr);
    ~CoreServices();
    CoreServices(const CoreServices &) = delete;
    CoreServices &operator=(const CoreServices &) = delete;

    // The services above filled in, the window's ones left null.
    const HeadlessServices &services() const { return m_services; }

private:
    struct Owned;
    std::unique_ptr<Owned> m_owned;
    HeadlessServices m_services;
};
