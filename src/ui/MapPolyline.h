#pragma once

#include "platform/Coordinate.h"
#include "ui/ColorPalette.h"

#include <QColor>
#include <QList>

#include <memory>

// A line through coordinates, drawn over the map (a route). The points are
// kept exactly as given, all of them: drawing may leave out what cannot be
// seen, but the line itself is never thinned.
class MapPolyline
{
public:
    MapPolyline() = default;
    explicit MapPolyline(QList<Coordinate> coordinates) : m_coordinates(std::move(coordinates)) {}

    const QList<Coordinate> &coordinates() const { return m_coordinates; }
    qsizetype pointCount() const { return m_coordinates.size(); }

private:
    QList<Coordinate> m_coordinates;
};

using MapOverlayPtr = std::shared_ptr<MapPolyline>;

// How an overlay is stroked.
struct MapPolylineRenderer
{
    double lineWidth = 3.0;
    QColor strokeColor = ColorPalette::mapBlueColor();
};
