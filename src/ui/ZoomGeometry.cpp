#include "ui/ZoomGeometry.h"

#include "ui/MapView.h"

#include <cmath>
#include <numbers>

namespace {
constexpr double Pi = std::numbers::pi;
}

double ZoomGeometry::longitudeToPixelSpaceX(double longitude)
{
    return std::round(MercatorOffset + MercatorRadius * longitude * Pi / 180.0);
}

double ZoomGeometry::latitudeToPixelSpaceY(double latitude)
{
    const float s = std::sin(float(latitude * Pi / 180.0));
    const float l = std::log((1.0f + s) / (1.0f - s));
    return std::round(MercatorOffset - MercatorRadius * double(l) / 2.0);
}

double ZoomGeometry::pixelSpaceXToLongitude(double pixelX)
{
    return (std::round(pixelX) - MercatorOffset) / MercatorRadius * 180.0 / Pi;
}

double ZoomGeometry::pixelSpaceYToLatitude(double pixelY)
{
    return (Pi / 2.0 -
            2.0 * std::atan(std::exp((std::round(pixelY) - MercatorOffset) / MercatorRadius))) *
           180.0 / Pi;
}

CoordinateSpan ZoomGeometry::coordinateSpanForViewSize(const QSizeF &viewSize,
                                                       const Coordinate &center, unsigned zoomLevel)
{
    const double centerX = longitudeToPixelSpaceX(center.longitude);
    const double centerY = latitudeToPixelSpaceY(center.latitude);

    // a signed exponent: levels above the reference give fractions
    const double scale = std::ldexp(1.0, ReferenceLevel - int(zoomLevel));
    const double scaledWidth = scale * viewSize.width();
    const double scaledHeight = scale * viewSize.height();
    const double topLeftX = centerX - scaledWidth / 2.0;
    const double topLeftY = centerY - scaledHeight / 2.0;

    CoordinateSpan span;
    span.longitudeDelta =
        pixelSpaceXToLongitude(topLeftX + scaledWidth) - pixelSpaceXToLongitude(topLeftX);
    // y grows southwards, so the difference is negated to come out positive
    span.latitudeDelta =
        -(pixelSpaceYToLatitude(topLeftY + scaledHeight) - pixelSpaceYToLatitude(topLeftY));
    return span;
}

CoordinateSpan ZoomGeometry::coordinateSpanWithMapView(const MapView &mapView,
                                                       const Coordinate &center, unsigned zoomLevel)
{
    return coordinateSpanForViewSize(QSizeF(mapView.size()), center, zoomLevel);
}
