#pragma once

#include "platform/Coordinate.h"

#include <QHashFunctions>
#include <QString>

// The extent of a region in degrees: north-south and east-west.
struct CoordinateSpan
{
    double latitudeDelta = 0.0;
    double longitudeDelta = 0.0;

    friend bool operator==(const CoordinateSpan &, const CoordinateSpan &) = default;
};

// What a map shows: the coordinate at its centre and the degrees it spans.
struct CoordinateRegion
{
    Coordinate center;
    CoordinateSpan span;

    bool isEmpty() const { return span.latitudeDelta <= 0.0 || span.longitudeDelta <= 0.0; }
    QString toString() const;

    friend bool operator==(const CoordinateRegion &, const CoordinateRegion &) = default;
};

inline size_t qHash(const CoordinateSpan &s, size_t seed = 0) noexcept
{
    return qHashMulti(seed, s.latitudeDelta, s.longitudeDelta);
}

inline size_t qHash(const CoordinateRegion &r, size_t seed = 0) noexcept
{
    return qHashMulti(seed, r.center, r.span);
}

// Lets QCOMPARE print regions readably (found by argument-dependent lookup).
char *toString(const CoordinateRegion &region);

// A region `latitudinalMeters` tall and `longitudinalMeters` wide around
// `center`, on a spherical earth: a degree of latitude is the same length
// everywhere, a degree of longitude shrinks with the cosine of the latitude.
CoordinateRegion CoordinateRegionMakeWithDistance(const Coordinate &center,
                                                  double latitudinalMeters,
                                                  double longitudinalMeters);

// Whether two regions agree to within `tolerance` degrees in every part.
bool fuzzyEqual(const CoordinateRegion &a, const CoordinateRegion &b, double tolerance = 1e-9);
