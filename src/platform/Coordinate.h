#pragma once

#include <QHashFunctions>
#include <QString>

// The radius of the sphere that web maps and geocoding boxes take the earth
// to be, in metres.
constexpr double EarthRadiusMeters = 6378137.0;

// A place on the earth: latitude and longitude in degrees. The route screen
// treats an exact 0.0 in either as "not chosen".
struct Coordinate
{
    double latitude = 0.0;
    double longitude = 0.0;

    bool isChosen() const { return latitude != 0.0 && longitude != 0.0; }
    bool isValid() const
    {
        return latitude >= -90.0 && latitude <= 90.0 && longitude >= -180.0 && longitude <= 180.0;
    }
    QString toString() const { return QString::asprintf("%f, %f", latitude, longitude); }

    friend bool operator==(const Coordinate &, const Coordinate &) = default;
};

inline size_t qHash(const Coordinate &c, size_t seed = 0) noexcept
{
    return qHashMulti(seed, c.latitude, c.longitude);
}
