#include "shell/RealServices.h"

#include "platform/gui/DeviceMetrics.h"
#include "platform/gui/DialogAlertPresenter.h"
#include "platform/gui/UrlOpener.h"
#include "startup/CoreServices.h"
#include "ui/ConfiguredTileSource.h"
#include "ui/TileSource.h"

struct RealServices::Owned
{
    explicit Owned(const Configuration &configuration) : core(configuration, &alerts) {}

    DialogAlertPresenter alerts; // first: the location service in `core` uses it
    CoreServices core;
    ScreenDeviceMetrics deviceMetrics;
    DesktopUrlOpener urlOpener;
    std::unique_ptr<TileSource> tiles; // after the network it uses
};

RealServices::RealServices(const Configuration &configuration)
    : m_owned(std::make_unique<Owned>(configuration))
{
    static_cast<HeadlessServices &>(m_services) = m_owned->core.services();
    m_services.deviceMetrics = &m_owned->deviceMetrics;
    m_services.urlOpener = &m_owned->urlOpener;
    m_owned->tiles = createConfiguredTileSource(configuration, m_services.network);
    m_services.tiles = m_owned->tiles.get();
}

RealServices::~RealServices() = default;
