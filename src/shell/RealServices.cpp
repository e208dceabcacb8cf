#include "shell/RealServices.h"

#include "location/ConfiguredPositionSourceFactory.h"
#include "location/Location.h"
#include "location/NominatimGeocoder.h"
#include "platform/AlertPresenter.h"
#include "platform/Clock.h"
#include "platform/DeviceMetrics.h"
#include "platform/UrlOpener.h"
#include "shell/HiddenUserLocationMapView.h"
#include "ui/ConfiguredTileSource.h"
#include "ui/TileSource.h"

#include <QNetworkAccessManager>

struct RealServices::Owned
{
    SystemClock clock;
    DialogAlertPresenter alerts;
    ScreenDeviceMetrics deviceMetrics;
    DesktopUrlOpener urlOpener;
    QNetworkAccessManager network;
    std::unique_ptr<TileSource> tiles; // after the network it uses
    std::unique_ptr<ConfiguredPositionSourceFactory> positionSources;
    std::unique_ptr<NominatimGeocoder> geocoder; // after the network it uses
    // last, so that it goes first and takes the shared location service along
    std::unique_ptr<Location::Registration> location;
};

RealServices::RealServices(const Configuration &configuration) : m_owned(std::make_unique<Owned>())
{
    m_services.clock = &m_owned->clock;
    m_services.alerts = &m_owned->alerts;
    m_services.deviceMetrics = &m_owned->deviceMetrics;
    m_services.urlOpener = &m_owned->urlOpener;
    m_services.network = &m_owned->network;
    m_owned->tiles = createConfiguredTileSource(configuration, &m_owned->network);
    m_services.tiles = m_owned->tiles.get();
    m_services.configuration = configuration;
    m_owned->positionSources = std::make_unique<ConfiguredPositionSourceFactory>(configuration);
    m_services.positionSources = m_owned->positionSources.get();
    m_owned->geocoder.reset(NominatimGeocoder::fromServices(m_services));
    m_services.geocoder = m_owned->geocoder.get();

    // the location service is reached through class operations; it gets its
    // services here, once
    PositionSourceFactory *sources = m_services.positionSources;
    m_owned->location = std::make_unique<Location::Registration>(
        m_services, [sources](QObject *parent) -> UserLocationMapView * {
            return new HiddenUserLocationMapView(sources, parent);
        });
}

RealServices::~RealServices() = default;
