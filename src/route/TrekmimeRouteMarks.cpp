// The route screen's map: the planned route's line, its start and end
// markers and the markers of the stops on the way.

#include "route/TrekmimeViewController.h"

#include "route/RouteImages.h"
#include "ui/ColorPalette.h"
#include "ui/CoordinateRegion.h"
#include "ui/MapView.h"

namespace {
Coordinate pointCoordinate(const RoutePoint &point)
{
    return {point.latitude(), point.longitude()};
}
} // namespace

// --- the route on the map ----------------------------------------------------

void TrekmimeViewController::routeAnswered()
{
    hideHUDView();
    forgetPace(); // a new route: a pace chosen before no longer holds
    cleanStart();
    cleanStops();
    cleanEnd();
    cleanPath();
    if (m_trip->isRouteError())
        return; // the user hears of it when switching on
    // drawn in this order: the stops over the start, the end over them all
    buildStart();
    buildStops();
    buildEnd();
    mv_main->addOverlay(
        std::make_shared<MapPolyline>(m_trip->lastAnswer().routes.first().coordinates));

    // framed on the chosen places, not on the route's own bounds
    const Coordinate from = m_trip->plannedFrom();
    double south = from.latitude, north = south, west = from.longitude, east = west;
    for (const Coordinate &c : m_trip->plannedStops() + QList<Coordinate>{m_trip->plannedTo()}) {
        south = std::min(south, c.latitude), north = std::max(north, c.latitude);
        west = std::min(west, c.longitude), east = std::max(east, c.longitude);
    }
    CoordinateRegion region;
    region.center = {(south + north) / 2, (west + east) / 2};
    region.span = {north - south, east - west};
    mv_main->setRegion(mv_main->regionThatFits(region), true);
}

void TrekmimeViewController::cleanPath()
{
    const QList<MapOverlayPtr> overlays = mv_main->overlays();
    for (const MapOverlayPtr &overlay : overlays)
        mv_main->removeOverlay(overlay);
}

namespace {
// only the first marker with the tag goes; later ones stay, as they always have
void removeFirstWithTag(MapView *map, int tag)
{
    const QList<MapAnnotationPtr> annotations = map->annotations();
    for (const MapAnnotationPtr &annotation : annotations) {
        if (annotation->tag() == tag) {
            map->removeAnnotation(annotation);
            return;
        }
    }
}
} // namespace

void TrekmimeViewController::cleanStart()
{
    removeFirstWithTag(mv_main, RouteStartAnnotationTag);
}

void TrekmimeViewController::cleanEnd()
{
    removeFirstWithTag(mv_main, RouteEndAnnotationTag);
}

void TrekmimeViewController::cleanStops()
{
    const QList<MapAnnotationPtr> annotations = mv_main->annotations();
    for (const MapAnnotationPtr &annotation : annotations) {
        if (annotation->tag() == RouteStopAnnotationTag)
            mv_main->removeAnnotation(annotation);
    }
}

void TrekmimeViewController::buildStops()
{
    // at the places the route was asked through
    for (const Coordinate &stop : m_trip->plannedStops())
        mv_main->addAnnotation(std::make_shared<MapPointAnnotation>(stop, RouteStopAnnotationTag));
}

void TrekmimeViewController::buildStart()
{
    // the start marker stands at the route's last point: kept as it has always been
    const QList<RoutePoint> &points = m_trip->points();
    const Coordinate at = points.isEmpty() ? Coordinate{} : pointCoordinate(points.last());
    mv_main->addAnnotation(std::make_shared<MapPointAnnotation>(at, RouteStartAnnotationTag));
}

void TrekmimeViewController::buildEnd()
{
    const QList<RoutePoint> &points = m_trip->points();
    const Coordinate at = points.isEmpty() ? Coordinate{} : pointCoordinate(points.first());
    mv_main->addAnnotation(std::make_shared<MapPointAnnotation>(at, RouteEndAnnotationTag));
}

QImage TrekmimeViewController::viewForAnnotation(MapView *, const MapPointAnnotation &annotation)
{
    if (annotation.tag() == RouteEndAnnotationTag)
        return RouteImages::named(QStringLiteral("icon_end"));
    if (annotation.tag() == RouteStartAnnotationTag)
        return RouteImages::named(QStringLiteral("icon_start"));
    if (annotation.tag() == RouteStopAnnotationTag)
        return RouteImages::named(QStringLiteral("icon_stop"));
    return {};
}

std::optional<MapPolylineRenderer> TrekmimeViewController::rendererForOverlay(MapView *,
                                                                              const MapPolyline &)
{
    return MapPolylineRenderer{2.5, ColorPalette::routeLineColor()};
}
