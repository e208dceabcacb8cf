#pragma once

#include "platform/Coordinate.h"
#include "ui/CoordinateRegion.h"

#include <QSizeF>

class MapView;

// Integer zoom levels of the web-map tile convention (level 0: the whole
// world in one 256-point tile), through a fixed Mercator pixel space: the
// world at level 20, 2^28 units across, where one unit is one screen point.
class ZoomGeometry
{
public:
    static constexpr double MercatorOffset = 268435456.0;
    static constexpr double MercatorRadius = 85445659.44705395;
    static constexpr unsigned MaximumZoomLevel = 28;
    static constexpr int ReferenceLevel = 20;

    static double longitudeToPixelSpaceX(double longitude);
    // The sine and the logarithm are taken in single precision on purpose:
    // that choice decides which pixel a latitude falls on, and callers depend
    // on the exact pixel.
    static double latitudeToPixelSpaceY(double latitude);
    static double pixelSpaceXToLongitude(double pixelX);
    static double pixelSpaceYToLatitude(double pixelY);

    // The span a view of `viewSize` points shows around `center` at level
    // `zoomLevel`; levels above 20 give fractions of a unit per point.
    static CoordinateSpan coordinateSpanForViewSize(const QSizeF &viewSize,
                                                    const Coordinate &center, unsigned zoomLevel);
    static CoordinateSpan coordinateSpanWithMapView(const MapView &mapView,
                                                    const Coordinate &center, unsigned zoomLevel);
};
