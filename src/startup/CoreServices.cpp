#include "startup/CoreServices.h"

#include "applications/GioApplicationRegistry.h"
#include "location/ConfiguredPositionSourceFactory.h"
#include "location/Location.h"
#include "location/NominatimGeocoder.h"
#include "platform/Clock.h"
#include "routing/OsrmDirectionsService.h"
#include "routing/RoutinoDirectionsService.h"
#include "settings/TMPreferenceUtil.h"

#include <QNetworkAccessManager>

struct CoreServices::Owned
{
    explicit Owned(const Configuration &configuration)
        : preferences(
              PreferenceFiles(configuration.preferencesDir.isEmpty()
                                  ? QString::fromLatin1(PreferenceFiles::DevicePreferencesDirectory)
                                  : configuration.preferencesDir))
    {
    }

    SystemClock clock;
    QNetworkAccessManager network;
    std::unique_ptr<ConfiguredPositionSourceFactory> positionSources;
    std::unique_ptr<NominatimGeocoder> geocoder; // after the network it uses
    std::unique_ptr<DirectionsService> directions;
    GioApplicationRegistry applications;
    TMPreferenceUtil preferences;
    std::unique_ptr<Location> location; // last: it uses the sources and the geocoder
};

CoreServices::CoreServices(const Configuration &configuration, AlertPresenter *alerts)
    : m_owned(std::make_unique<Owned>(configuration))
{
    m_services.alerts = alerts;
    m_services.configuration = configuration;
    m_services.clock = &m_owned->clock;
    m_services.network = &m_owned->network;
    m_owned->positionSources = std::make_unique<ConfiguredPositionSourceFactory>(configuration);
    m_services.positionSources = m_owned->positionSources.get();
    m_owned->geocoder.reset(NominatimGeocoder::fromServices(m_services));
    m_services.geocoder = m_owned->geocoder.get();
    if (configuration.router == Configuration::DirectionsBackend::Routino)
        m_owned->directions.reset(RoutinoDirectionsService::fromServices(m_services));
    else
        m_owned->directions.reset(OsrmDirectionsService::fromServices(m_services));
    m_services.directions = m_owned->directions.get();
    m_services.applications = &m_owned->applications;
    m_services.preferences = &m_owned->preferences;
    m_owned->location =
        std::make_unique<Location>(m_services.positionSources, m_services.geocoder, alerts);
    m_services.location = m_owned->location.get();
}

CoreServices::~CoreServices() = default;
