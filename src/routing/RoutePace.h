#pragma once

#include "platform/Coordinate.h"

#include <QList>
#include <QStringView>
#include <QtGlobal>

#include <optional>

// The arithmetic of a trip taken at a set pace: how long the route is along
// its points, when a trip at a given speed ends, and how to respace the points
// so that the location hook, which walks them in proportion to time, moves at
// a steady speed.
class RoutePace
{
public:
    // Lengths are measured on a sphere of the earth's mean radius (IUGG,
    // 6,371,008.8 m): over a trip the error against the ellipsoid stays
    // within half a percent, well below what a chosen pace means.
    static constexpr double MeanEarthRadiusMeters = 6371008.8;
    // An even route never has more points than this, however long the trip.
    static constexpr qsizetype MaxEvenPoints = 100000;

    // The great-circle (haversine) distance between two places, in metres.
    static double distanceMeters(const Coordinate &from, const Coordinate &to);
    // The length of the route along its points, in metres; 0 for fewer than two.
    static double lengthMeters(const QList<Coordinate> &points);

    // A speed in km/h from "walk" (5), "run" (10), "cycle" (18), "drive" (50)
    // or a positive finite number; nothing for anything else.
    static std::optional<double> speedKmh(QStringView text);

    // The end time in seconds since 1970 of a trip of `lengthMeters` from
    // `start` at `kmh`: the travel time is rounded up to the next whole
    // second. Nothing for a speed that is not a positive finite number, a
    // length that is negative or not finite, or an end past 2147483647 (the
    // last second a 32-bit time holds).
    static std::optional<qint32> endTime(qint32 start, double lengthMeters, double kmh);

    // The route respaced so consecutive points are equally far apart along
    // it, close enough that a trip of `durationSeconds` passes at most one
    // second between them (never fewer segments than the route had), and
    // never more than MaxEvenPoints points. The first and last points are kept
    // exactly. A route of fewer than two points, of no length, or a duration
    // that is not a positive finite number comes back unchanged.
    static QList<Coordinate> evenPace(const QList<Coordinate> &points, double durationSeconds);
};
