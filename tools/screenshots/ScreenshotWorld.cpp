#include "ScreenshotWorld.h"

#include "location/Location.h"

namespace {

// a Sunday morning, in whatever time zone the pictures are taken in
QDateTime fixedMoment()
{
    return QDateTime(QDate(2026, 11, 22), QTime(9, 30));
}

} // namespace

ScreenshotWorld::ScreenshotWorld() : clock(fixedMoment().toMSecsSinceEpoch())
{
    m_preferences = std::make_unique<TMPreferenceUtil>(PreferenceFiles(m_dir.path()));
    positionSources.scriptFix(22.2819, 114.1582); // Central, Hong Kong
    const struct
    {
        Coordinate place;
        const char *address;
    } places[] = {
        {{22.2819, 114.1582}, "Queen's Road Central"},
        {{22.2846809, 114.1588}, "Central Pier 7"},
        {{22.2988, 114.1722}, "Tsim Sha Tsui"},
        {{22.2783, 114.1747}, "Wan Chai"},
    };
    for (const auto &place : places) {
        geocoder.setAddress(place.place, QString::fromUtf8(place.address));
        geocoder.setCoordinate(QString::fromUtf8(place.address), place.place);
    }

    m_services.clock = &clock;
    m_services.alerts = &alerts;
    m_services.deviceMetrics = &deviceMetrics;
    m_services.urlOpener = &urlOpener;
    m_services.network = &network;
    m_services.positionSources = &positionSources;
    m_services.geocoder = &geocoder;
    m_services.tiles = &tiles;
    m_services.directions = &directions;
    m_services.applications = &applications;
    m_services.preferences = m_preferences.get();
    m_location = std::make_unique<Location>(&positionSources, &geocoder, &alerts);
    m_services.location = m_location.get();
}

ScreenshotWorld::~ScreenshotWorld()
{
    while (!m_kept.empty())
        m_kept.pop_back();
}
