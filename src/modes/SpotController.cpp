#include "modes/SpotController.h"

#include "settings/FavoriteEntry.h"
#include "settings/TMPreferenceUtil.h"

bool SpotController::isOn() const
{
    return m_store.isLocationEnable();
}

Coordinate SpotController::takeStoredPlace()
{
    m_candidate.longitude = m_store.locationLongitude();
    m_candidate.latitude = m_store.locationLatitude();
    return m_candidate;
}

bool SpotController::switchTo(bool on)
{
    return m_store.setLocationEnable(on, m_candidate.latitude, m_candidate.longitude);
}

bool SpotController::setFlag(bool on)
{
    return m_store.setLocationEnable(on);
}

void SpotController::mapSettled(const Coordinate &centre)
{
    m_candidate = centre;
    m_store.setLocationLatitude(centre.latitude, centre.longitude);
}

void SpotController::searchStarted()
{
    setFlag(false);
}

void SpotController::searchFound(const Coordinate &place, bool switchShowsOn)
{
    m_candidate = place;
    setFlag(switchShowsOn);
}

bool SpotController::chooseFavorite(const FavoriteEntry &favorite)
{
    return m_store.setLocationEnable(true, favorite.latitude(), favorite.longitude());
}

bool SpotController::addFavorite(const QString &typedName)
{
    return m_store.addFavorite(
        FavoriteEntry::make(typedName, m_candidate.latitude, m_candidate.longitude));
}
