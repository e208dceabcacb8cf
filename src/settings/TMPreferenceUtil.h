#pragma once

#include "settings/FavoriteEntry.h"
#include "settings/LocationRecord.h"
#include "settings/MasterRecord.h"
#include "settings/PreferenceFiles.h"
#include "settings/RouteRecord.h"
#include "settings/WhitelistRecord.h"

#include <QList>
#include <QStringList>

// The settings store over one preferences folder: made once at start-up
// and handed to whoever reads or writes the settings files. Every operation
// reads its file afresh and every change rewrites the whole file atomically;
// there is no cache. A missing or malformed file reads as empty. Every write
// answers whether the file was replaced: the screens ignore a failure,
// trekmime-ctl reports it. A write that would store a coordinate that is no
// finite number (the location, a new favourite, a route point) writes
// nothing and answers false.
class TMPreferenceUtil
{
public:
    explicit TMPreferenceUtil(const PreferenceFiles &files);

    const PreferenceFiles &files() const { return m_files; }

    RouteRecord routePreference() const;
    bool writeRoutePreference(const RouteRecord &preference);
    bool isRouteEnable() const;
    // Writes the route record with the new flag into the location file, not
    // the route file. The hooking component has always seen it this way, so
    // the crossing stays.
    bool setRouteEnable(bool enable);

    LocationRecord locationPreference() const;
    bool writeLocationPreference(const LocationRecord &preference);
    double locationLatitude() const;
    double locationLongitude() const;
    bool isLocationEnable() const;
    bool setLocationEnable(bool enable);
    // Rewrites the location file with the coordinates it already holds: the
    // fixed-location screen calls this whenever the map comes to rest, and
    // panning must never move the stored place.
    bool setLocationLatitude(double latitude, double longitude);
    bool setLocationEnable(bool enable, double latitude, double longitude);

    QList<FavoriteEntry> favoritePreference() const;
    bool addFavorite(const FavoriteEntry &favorite);
    // Removes the entry at `index` from `favorites` (the caller's copy: the
    // favourites list edits the one it loaded) and writes the whole list. An
    // index outside the list changes nothing and answers false.
    bool removeFavorite(QList<FavoriteEntry> &favorites, qsizetype index);

    WhitelistRecord whitePreference() const;
    // What a tap on an application's row does (WhitelistRecord::toggle),
    // then the whole record written. The new flag is in `whitelist` either
    // way.
    bool toggleWhitelist(WhitelistRecord &whitelist, const QString &bundle);

    // The mode the application starts in (MasterRecord).
    int mode() const;
    bool writeMode(MasterRecord::Mode mode);

    // The bundle identifiers a sibling application hides from the home
    // screen: the keys of its hide list, which is only ever read.
    QStringList hideListBundles() const;

private:
    PreferenceFiles m_files;
};
