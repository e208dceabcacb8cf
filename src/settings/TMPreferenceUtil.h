#pragma once

#include "settings/FavoriteEntry.h"
#include "settings/LocationRecord.h"
#include "settings/MasterRecord.h"
#include "settings/PreferenceFiles.h"
#include "settings/RouteRecord.h"
#include "settings/WhitelistRecord.h"

#include <QHash>
#include <QList>
#include <QStringList>

#include <functional>

// The settings store over one preferences folder: made once at start-up
// and handed to whoever reads or writes the settings files. Every operation
// reads its file afresh and every change rewrites the whole file atomically;
// there is no cache. A missing or unreadable file reads as empty (an
// unreadable one is also reported, see below) and is left as it is until
// a change of that setting replaces it whole. Every write
// answers whether the file was replaced: the screens ignore a failure,
// trekmime-ctl reports it. A write that would store a coordinate that is no
// finite number (the location, a new favourite, a route point) writes
// nothing and answers false.
class TMPreferenceUtil
{
public:
    explicit TMPreferenceUtil(const PreferenceFiles &files);

    // Told once when a settings file turns out unreadable (malformed, not a
    // plain file, too large, nested too deep, a root of the wrong kind),
    // and again only after it was readable or missing in between. Unless
    // set, a warning is logged.
    using UnreadableHandler = std::function<void(const QString &path, const QString &problem)>;
    void setUnreadableHandler(UnreadableHandler handler) { m_unreadable = std::move(handler); }

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
    // panning must never move the stored place. An unreadable file is not
    // written (answer false): putting back "what was read" would erase it.
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
    // `unreadable`, when given, tells whether the file exists but could not
    // be taken (as opposed to read or missing).
    QVariant readRoot(const QString &path, int expectedType, bool *unreadable = nullptr) const;
    QVariantMap readDictionary(const QString &path) const;
    QVariantList readArray(const QString &path) const;

    PreferenceFiles m_files;
    UnreadableHandler m_unreadable;
    mutable QHash<QString, QString> m_reported; // path -> problem last told
};
