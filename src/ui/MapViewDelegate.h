#pragma once

#include "platform/PositionSource.h"
#include "ui/MapPointAnnotation.h"
#include "ui/MapPolyline.h"

#include <QImage>

#include <optional>

class MapView;

// What a map view tells its owner, and what it asks. Every operation is
// optional: the defaults do nothing and answer "use the map's own".
class MapViewDelegate
{
public:
    virtual ~MapViewDelegate() = default;

    // A move of the map begins: a drag or pinch, an animated move, a set.
    virtual void regionWillChangeAnimated(MapView *mapView, bool animated)
    {
        Q_UNUSED(mapView);
        Q_UNUSED(animated);
    }
    // Called exactly once when a move has come to rest.
    virtual void regionDidChangeAnimated(MapView *mapView, bool animated)
    {
        Q_UNUSED(mapView);
        Q_UNUSED(animated);
    }
    // The image to show for an annotation; a null image keeps the default pin.
    virtual QImage viewForAnnotation(MapView *mapView, const MapPointAnnotation &annotation)
    {
        Q_UNUSED(mapView);
        Q_UNUSED(annotation);
        return {};
    }
    // How to stroke an overlay; nothing keeps the map's default stroke.
    virtual std::optional<MapPolylineRenderer> rendererForOverlay(MapView *mapView,
                                                                  const MapPolyline &overlay)
    {
        Q_UNUSED(mapView);
        Q_UNUSED(overlay);
        return std::nullopt;
    }
    virtual void didUpdateUserLocation(MapView *mapView, const PositionFix &fix)
    {
        Q_UNUSED(mapView);
        Q_UNUSED(fix);
    }
    virtual void didFailToLocateUserWithError(MapView *mapView, int code,
                                              const QString &description)
    {
        Q_UNUSED(mapView);
        Q_UNUSED(code);
        Q_UNUSED(description);
    }
};
