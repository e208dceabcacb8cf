#include "shell/RealServices.h"

#include "location/Location.h"
#include "platform/AlertPresenter.h"
#include "platform/DeviceMetrics.h"
#include "platform/UrlOpener.h"
#include "shell/CoreServices.h"
#include "shell/HiddenUserLocationMapView.h"
#include "ui/ConfiguredTileSource.h"
#include "ui/TileSource.h"

struct RealServices::Owned
{
    explicit Owned(const Configuration &configuration) : core(configuration) {}

    CoreServices core;
    DialogAlertPresenter alerts;
    ScreenDeviceMetrics deviceMetrics;
    DesktopUrlOpener urlOpener;
    std::unique_ptr<TileSource> tiles; // after the network it uses
};

RealServices::RealServices(const Configuration &configuration)
    : m_owned(std::make_unique<Owned>(configuration))
{
    m_services = m_owned->core.services();
    m_services.alerts = &m_owned->alerts;
    m_services.deviceMetrics = &m_owned->deviceMetrics;
    m_services.urlOpener = &m_owned->urlOpener;
    m_owned->tiles = createConfiguredTileSource(configuration, m_services.network);
    m_services.tiles = m_owned->tiles.get();

    // the location service is reached through class operations; it gets its
    // services here, once
    Location::setServices(m_services);
    PositionSourceFactory *sources = m_services.positionSources;
    Location::setMapViewFactory([sources](QObject *parent) -> UserLocationMapView * {
        return new HiddenUserLocationMapView(sources, parent);
    });
}

RealServices::~RealServices()
{
    // the screens are gone by now; the shared location service goes with
    // the services it was given
    Location::resetSharedInstance();
    Location::setMapViewFactory({});
    Location::setServices(Services{});
}
