#include "ui/MapCamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {
constexpr double Pi = std::numbers::pi;

// latitude in degrees of the world y coordinate
double latitudeOfY(double y)
{
    return std::atan(std::sinh(Pi * (1.0 - 2.0 * y))) * 180.0 / Pi;
}

double wrapUnit(double x)
{
    x -= std::floor(x);
    return x >= 1.0 ? 0.0 : x;
}
} // namespace

QPointF MapCamera::project(const Coordinate &coordinate)
{
    const double latitude = std::clamp(coordinate.latitude, -MaximumLatitude, MaximumLatitude);
    const double s = std::sin(latitude * Pi / 180.0);
    const double x = (coordinate.longitude + 180.0) / 360.0;
    const double y = 0.5 - std::atanh(s) / (2.0 * Pi);
    return {x, y};
}

Coordinate MapCamera::unproject(const QPointF &world)
{
    return Coordinate{latitudeOfY(world.y()), world.x() * 360.0 - 180.0};
}

// A place or zoom that is no finite number (a typo, a damaged file) leaves
// the camera where it is: the map must never look at nowhere.
void MapCamera::setZoom(double zoom)
{
    if (std::isnan(zoom))
        return;
    m_zoom = std::clamp(zoom, MinimumZoom, MaximumZoom);
}

void MapCamera::setCenterWorld(const QPointF &world)
{
    if (!std::isfinite(world.x()) || std::isnan(world.y()))
        return;
    m_center = QPointF(wrapUnit(world.x()), std::clamp(world.y(), 0.0, 1.0));
}

double MapCamera::worldSize() const
{
    return TileSize * std::exp2(m_zoom);
}

CoordinateRegion MapCamera::region() const
{
    const double world = worldSize();
    const double halfHeight = m_viewport.height() / world / 2.0;
    CoordinateRegion result;
    result.center = center();
    result.span.longitudeDelta = m_viewport.width() / world * 360.0;
    result.span.latitudeDelta = latitudeOfY(std::max(0.0, m_center.y() - halfHeight)) -
                                latitudeOfY(std::min(1.0, m_center.y() + halfHeight));
    return result;
}

double MapCamera::zoomToFit(const CoordinateRegion &region) const
{
    double zoom = MaximumZoom;
    if (region.span.longitudeDelta > 0.0 && m_viewport.width() > 0.0) {
        const double worldWidth = m_viewport.width() * 360.0 / region.span.longitudeDelta;
        zoom = std::min(zoom, std::log2(worldWidth / TileSize));
    }
    if (region.span.latitudeDelta > 0.0 && m_viewport.height() > 0.0) {
        // the half height h (world units) around the centre whose edges lie
        // latitudeDelta apart, the way region() measures it; the latitude
        // difference grows with h, so halving the interval finds it
        const double centerY = project(region.center).y();
        const auto spanOf = [centerY](double h) {
            return latitudeOfY(std::max(0.0, centerY - h)) -
                   latitudeOfY(std::min(1.0, centerY + h));
        };
        double low = 0.0;
        double high = 1.0;
        if (spanOf(high) <= region.span.latitudeDelta) {
            low = high;
        } else {
            for (int i = 0; i < 80; ++i) {
                const double middle = (low + high) / 2.0;
                (spanOf(middle) < region.span.latitudeDelta ? low : high) = middle;
            }
        }
        zoom = std::min(zoom, std::log2(m_viewport.height() / (2.0 * high) / TileSize));
    }
    return std::clamp(zoom, MinimumZoom, MaximumZoom);
}

CoordinateRegion MapCamera::regionThatFits(const CoordinateRegion &region) const
{
    MapCamera fitted = *this;
    fitted.setRegion(region);
    return fitted.region();
}

void MapCamera::setRegion(const CoordinateRegion &region)
{
    if (!std::isfinite(region.center.latitude) || !std::isfinite(region.center.longitude))
        return;
    setCenter(region.center);
    setZoom(zoomToFit(region));
}

QPointF MapCamera::worldToView(const QPointF &world) const
{
    const double size = worldSize();
    double dx = world.x() - m_center.x();
    dx -= std::round(dx); // the copy of the world nearest the centre
    return {m_viewport.width() / 2.0 + dx * size,
            m_viewport.height() / 2.0 + (world.y() - m_center.y()) * size};
}

QPointF MapCamera::viewToWorld(const QPointF &point) const
{
    const double size = worldSize();
    return {m_center.x() + (point.x() - m_viewport.width() / 2.0) / size,
            m_center.y() + (point.y() - m_viewport.height() / 2.0) / size};
}

void MapCamera::panBy(const QPointF &from, const QPointF &to)
{
    const double size = worldSize();
    setCenterWorld(m_center - (to - from) / size);
}

void MapCamera::zoomAround(const QPointF &anchor, double zoom)
{
    const QPointF world = viewToWorld(anchor);
    setZoom(zoom);
    const QPointF after = worldToView(world);
    panBy(after, anchor);
}
