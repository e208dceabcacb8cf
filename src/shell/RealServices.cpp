#include "shell/RealServices.h"

#include "platform/AlertPresenter.h"
#include "platform/Clock.h"
#include "platform/DeviceMetrics.h"
#include "platform/UrlOpener.h"
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
}

RealServices::~RealServices() = default;
