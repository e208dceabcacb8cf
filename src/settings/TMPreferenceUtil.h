#pragma once

#include <QVariantList>
#include <QVariantMap>

// The settings store: class-level operations over the location, favorites,
// route and whitelist files. Every operation reads its file afresh and every
// change rewrites the whole file atomically; there is no cache. File problems
// are silent: a missing or malformed file reads as empty, a failed write is
// ignored.
class TMPreferenceUtil
{
public:
    TMPreferenceUtil() = delete;

    static QVariantMap routePreference();
    static void writeRoutePreference(const QVariantMap &preference);
    static bool isRouteEnable();
    // Writes the route record with the new flag into the location file, not
    // the route file. The hooking component has always seen it this way, so
    // the crossing stays.
    static void setRouteEnable(bool enable);

    static QVariantMap locationPreference();
    static void writeLocationPreference(const QVariantMap &preference);
    static double locationLatitude();
    static double locationLongitude();
    static bool isLocationEnable();
    static void setLocationEnable(bool enable);
    // Rewrites the location file with the coordinates it already holds: the
    // fixed-location screen calls this whenever the map comes to rest, and
    // panning must never move the stored place.
    static void setLocationLatitude(double latitude, double longitude);
    static void setLocationEnable(bool enable, double latitude, double longitude);

    static QVariantList favoritePreference();
    static void addFavorite(const QVariantMap &favorite);

    static QVariantMap whitePreference();
};
