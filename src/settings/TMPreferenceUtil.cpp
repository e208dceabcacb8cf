#include "settings/TMPreferenceUtil.h"

#include "settings/PropertyList.h"
#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

#include <QCoreApplication>

namespace {
// The hooking component would take a non-finite coordinate at its word, so
// no write lets one through. A missing key is no coordinate and passes.
bool finiteCoordinate(const QVariantMap &values, const QString &latitude, const QString &longitude)
{
    return StoredValue::isFiniteNumber(values.value(latitude)) &&
           StoredValue::isFiniteNumber(values.value(longitude));
}
} // namespace

TMPreferenceUtil::TMPreferenceUtil(const PreferenceFiles &files) : m_files(files) {}

QVariant TMPreferenceUtil::readRoot(const QString &path, int expectedType, bool *unreadable) const
{
    PropertyList::Loaded loaded = PropertyList::load(path);
    if (loaded.status == PropertyList::ReadStatus::Read &&
        loaded.root.metaType().id() != expectedType) {
        loaded.status = PropertyList::ReadStatus::Unreadable;
        loaded.problem = expectedType == QMetaType::QVariantMap
                             ? QCoreApplication::translate("TMPreferenceUtil", "not a dictionary")
                             : QCoreApplication::translate("TMPreferenceUtil", "not an array");
    }
    if (unreadable)
        *unreadable = loaded.status == PropertyList::ReadStatus::Unreadable;
    if (loaded.status != PropertyList::ReadStatus::Unreadable) {
        m_reported.remove(path);
        return loaded.root;
    }
    if (m_reported.value(path) != loaded.problem) {
        m_reported.insert(path, loaded.problem);
        if (m_unreadable)
            m_unreadable(path, loaded.problem);
        else
            qWarning("%s is unreadable (%s); it reads as empty", qPrintable(path),
                     qPrintable(loaded.problem));
    }
    return {};
}

QVariantMap TMPreferenceUtil::readDictionary(const QString &path) const
{
    return readRoot(path, QMetaType::QVariantMap).toMap();
}

QVariantList TMPreferenceUtil::readArray(const QString &path) const
{
    return readRoot(path, QMetaType::QVariantList).toList();
}

RouteRecord TMPreferenceUtil::routePreference() const
{
    return RouteRecord::fromPropertyList(readDictionary(m_files.routeFile()));
}

bool TMPreferenceUtil::writeRoutePreference(const RouteRecord &preference)
{
    const QVariantList points = preference.toPropertyList().value(RecordKeys::points()).toList();
    for (const QVariant &point : points) {
        if (!finiteCoordinate(point.toMap(), RecordKeys::pointLatitude(),
                              RecordKeys::pointLongitude()))
            return false;
    }
    return PropertyList::write(m_files.routeFile(), preference.toPropertyList());
}

bool TMPreferenceUtil::isRouteEnable() const
{
    return routePreference().isEnabled();
}

bool TMPreferenceUtil::setRouteEnable(bool on)
{
    RouteRecord record = routePreference();
    record.setEnabled(on);
    return writeLocationPreference(LocationRecord::fromPropertyList(record.toPropertyList()));
}

LocationRecord TMPreferenceUtil::locationPreference() const
{
    return LocationRecord::fromPropertyList(readDictionary(m_files.locationFile()));
}

bool TMPreferenceUtil::writeLocationPreference(const LocationRecord &preference)
{
    if (!finiteCoordinate(preference.toPropertyList(), RecordKeys::latitude(),
                          RecordKeys::longitude()))
        return false;
    return PropertyList::write(m_files.locationFile(), preference.toPropertyList());
}

double TMPreferenceUtil::locationLatitude() const
{
    return locationPreference().latitude();
}

double TMPreferenceUtil::locationLongitude() const
{
    return locationPreference().longitude();
}

bool TMPreferenceUtil::isLocationEnable() const
{
    return locationPreference().isEnabled();
}

bool TMPreferenceUtil::setLocationEnable(bool on)
{
    LocationRecord record = locationPreference();
    record.setEnabled(on);
    return writeLocationPreference(record);
}

bool TMPreferenceUtil::setLocationLatitude(double lat, double lng)
{
    bool unreadable = false;
    const LocationRecord unchanged = LocationRecord::fromPropertyList(
        readRoot(m_files.locationFile(), QMetaType::QVariantMap, &unreadable).toMap());
    if (unreadable)
        return false;
    LocationRecord changed = locationPreference();
    changed.setCoordinate(lat, lng);
    // the changed copy is dropped on purpose; see the header
    return writeLocationPreference(unchanged);
}

bool TMPreferenceUtil::setLocationEnable(bool on, double lat, double lng)
{
    LocationRecord record = locationPreference();
    record.setEnabled(on);
    record.setCoordinate(lat, lng);
    return writeLocationPreference(record);
}

QList<FavoriteEntry> TMPreferenceUtil::favoritePreference() const
{
    return FavoriteEntry::listFromPropertyList(readArray(m_files.favoritesFile()));
}

bool TMPreferenceUtil::addFavorite(const FavoriteEntry &favorite)
{
    if (!finiteCoordinate(favorite.toPropertyList().toMap(), RecordKeys::latitude(),
                          RecordKeys::longitude()))
        return false;
    QList<FavoriteEntry> favorites = favoritePreference();
    favorites.append(favorite);
    return PropertyList::write(m_files.favoritesFile(),
                               FavoriteEntry::listToPropertyList(favorites));
}

bool TMPreferenceUtil::removeFavorite(QList<FavoriteEntry> &favorites, qsizetype index)
{
    if (index < 0 || index >= favorites.size())
        return false;
    favorites.removeAt(index);
    return PropertyList::write(m_files.favoritesFile(),
                               FavoriteEntry::listToPropertyList(favorites));
}

WhitelistRecord TMPreferenceUtil::whitePreference() const
{
    return WhitelistRecord::fromPropertyList(readDictionary(m_files.whitelistFile()));
}

bool TMPreferenceUtil::toggleWhitelist(WhitelistRecord &whitelist, const QString &bundle)
{
    whitelist.toggle(bundle);
    return PropertyList::write(m_files.whitelistFile(), whitelist.toPropertyList());
}

int TMPreferenceUtil::mode() const
{
    return MasterRecord::fromPropertyList(readDictionary(m_files.masterFile())).mode();
}

bool TMPreferenceUtil::writeMode(MasterRecord::Mode mode)
{
    return PropertyList::write(m_files.masterFile(), MasterRecord(mode).toPropertyList());
}

QStringList TMPreferenceUtil::hideListBundles() const
{
    return readDictionary(m_files.hideListFile()).keys();
}
