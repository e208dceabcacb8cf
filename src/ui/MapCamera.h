#pragma once

#include "platform/Coordinate.h"
#include "ui/CoordinateRegion.h"

#include <QPointF>
#include <QSizeF>

// Where a map looks: the centre in Web Mercator world units (the world is
// the unit square, x eastwards from longitude -180, y southwards from the
// top), a fractional zoom level (the world is 256 x 2^zoom points across)
// and the size of the viewport in points. Everything a map knows about
// turning coordinates into points and regions into zoom levels lives here.
class MapCamera
{
public:
    static constexpr double TileSize = 256.0;
    static constexpr double MinimumZoom = 0.0;
    static constexpr double MaximumZoom = 19.0;
    // the latitude at which the Mercator square ends
    static constexpr double MaximumLatitude = 85.05112877980659;

    static QPointF project(const Coordinate &coordinate);
    static Coordinate unproject(const QPointF &world);

    QSizeF viewportSize() const { return m_viewport; }
    void setViewportSize(const QSizeF &size) { m_viewport = size; }

    double zoom() const { return m_zoom; }
    void setZoom(double zoom);
    QPointF centerWorld() const { return m_center; }
    void setCenterWorld(const QPointF &world);
    double worldSize() const;

    Coordinate center() const { return unproject(m_center); }
    void setCenter(const Coordinate &coordinate) { setCenterWorld(project(coordinate)); }

    // The region the viewport shows: the centre coordinate, the degrees of
    // longitude across and the degrees of latitude between the top and the
    // bottom edge.
    CoordinateRegion region() const;
    // The zoom level at which `region` just fits the viewport in both
    // directions, within the zoom limits.
    double zoomToFit(const CoordinateRegion &region) const;
    // The region the viewport would really show for `region`: same centre,
    // spans grown to the viewport's aspect ratio.
    CoordinateRegion regionThatFits(const CoordinateRegion &region) const;
    void setRegion(const CoordinateRegion &region);

    // Viewport points (origin top-left) against world units. The world
    // repeats east and west; a point is placed on the copy nearest the centre.
    QPointF worldToView(const QPointF &world) const;
    QPointF viewToWorld(const QPointF &point) const;
    QPointF coordinateToPoint(const Coordinate &coordinate) const
    {
        return worldToView(project(coordinate));
    }
    Coordinate pointToCoordinate(const QPointF &point) const
    {
        return unproject(viewToWorld(point));
    }

    // Moves the map so that the content under the viewport point `from`
    // comes to lie under `to`.
    void panBy(const QPointF &from, const QPointF &to);
    // Changes the zoom keeping the content under the viewport point `anchor`
    // in place.
    void zoomAround(const QPointF &anchor, double zoom);

    friend bool operator==(const MapCamera &, const MapCamera &) = default;

private:
    QPointF m_center{0.5, 0.5};
    double m_zoom = 2.0;
    QSizeF m_viewport{256.0, 256.0};
};
