#include "shell/RealServices.h"

#include "location/Location.h"
#include "platform/gui/DeviceMetrics.h"
#include "platform/gui/DialogAlertPresenter.h"
#include "platform/gui/UrlOpener.h"
#include "shell/HiddenUserLocationMapView.h"
#include "startup/CoreServices.h"
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
    // last, so that it goes first and takes the shared location service along
    std::unique_ptr<Location::Registration> location;
};

RealServices::RealServices(const Configuration &configuration)
    : m_owned(std::make_unique<Owned>(configuration))
{
    static_cast<HeadlessServices &>(m_services) = m_owned->core.services();
    m_services.alerts = &m_owned->alerts;
    m_services.deviceMetrics = &m_owned->deviceMetrics;
    m_services.urlOpener = &m_owned->urlOpener;
    m_owned->tiles = createConfiguredTileSource(configuration, m_services.network);
    m_services.tiles = m_owned->tiles.get();

    // the location service is reached through class operations; it gets its
    // services here, once
    PositionSourceFactory *sources = m_services.positionSources;
    m_owned->location = std::make_unique<Location::Registration>(
        m_services, [sources](QObject *parent) -> UserLocationMapView * {
            return new HiddenUserLocationMapView(sources, parent);
        });
}

RealServices::~RealServices() = default;
