#pragma once

#include <QVariantList>
#include <QVariantMap>

// The settings store: class-level operations over the location, favorites,
// route and whitelist files. Every operation reads its file afresh and every
// change rewrites the whole file atomically; there is no cache. A missing or
// malformed file reads as empty. Every write answers whether the file was
// replaced: the screens ignore a failure, trekmime-ctl reports it.
class TMPreferenceUtil
{
public:
    TMPreferenceUtil() = delete;

    static QVariantMap routePreference();
    static bool writeRoutePreference(const QVariantMap &preference);
    static bool isRouteEnable();
    // Writes the route record with the new flag into the location file, not
    // the route file. The hooking component has always seen it this way, so
    // the crossing stays.
    static bool setRouteEnable(bool enable);

    static QVariantMap locationPreference();
    static bool writeLocationPreference(const QVariantMap &preference);
    static double locationLatitude();
    static double locationLongitude();
    static bool isLocationEnable();
    static bool setLocationEnable(bool enable);
    // Rewrites the location file with the coordinates it already holds: the
    // fixed-location screen calls this whenever the map comes to rest, and
    // panning must never move the stored place.
    static bool setLocationLatitude(double latitude, double longitude);
    static bool setLocationEnable(bool enable, double latitude, double longitude);

    static QVariantList favoritePreference();
    static bool addFavorite(const QVariantMap &favorite);
    // Removes the entry at `index` from `favorites` (the caller's copy: the
    // favourites list edits the one it loaded) and writes the whole list. An
    // index outside the list changes nothing and answers false.
    static bool removeFavorite(QVariantList &favorites, qsizetype index);

    static QVariantMap whitePreference();
    // What a tap on an application's row does: flips the flag `whitelist`
    // holds for `bundle` (any stored value read as a flag, so a text "1" is
    // on), or stores true for an application never tapped, then writes the
    // whole dictionary. The new flag is in `whitelist` either way.
    static bool toggleWhitelist(QVariantMap &whitelist, const QString &bundle);
};
