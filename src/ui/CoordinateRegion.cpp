#include "ui/CoordinateRegion.h"

#include <cmath>
#include <cstring>
#include <numbers>

namespace {
// WGS 84 equatorial radius, the sphere Web Mercator maps use
constexpr double MetersPerDegree = 2.0 * std::numbers::pi * EarthRadiusMeters / 360.0;
} // namespace

QString CoordinateRegion::toString() const
{
    return QString::asprintf("centre (%.9f, %.9f) span (%.9f, %.9f)", center.latitude,
                             center.longitude, span.latitudeDelta, span.longitudeDelta);
}

char *toString(const CoordinateRegion &region)
{
    const QByteArray text = region.toString().toUtf8();
    char *result = new char[size_t(text.size()) + 1];
    std::memcpy(result, text.constData(), size_t(text.size()) + 1);
    return result;
}

CoordinateRegion CoordinateRegionMakeWithDistance(const Coordinate &center,
                                                  double latitudinalMeters,
                                                  double longitudinalMeters)
{
    CoordinateRegion region;
    region.center = center;
    region.span.latitudeDelta = latitudinalMeters / MetersPerDegree;
    const double parallel = std::cos(center.latitude * std::numbers::pi / 180.0);
    // at the poles a parallel has no length: span the whole world
    region.span.longitudeDelta =
        parallel > 1e-12 ? std::min(360.0, longitudinalMeters / (MetersPerDegree * parallel))
                         : 360.0;
    return region;
}

bool fuzzyEqual(const CoordinateRegion &a, const CoordinateRegion &b, double tolerance)
{
    return std::abs(a.center.latitude - b.center.latitude) <= tolerance &&
           std::abs(a.center.longitude - b.center.longitude) <= tolerance &&
           std::abs(a.span.latitudeDelta - b.span.latitudeDelta) <= tolerance &&
           std::abs(a.span.longitudeDelta - b.span.longitudeDelta) <= tolerance;
}
