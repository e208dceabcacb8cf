#pragma once

#include "location/UserLocationMapView.h"
#include "ui/MapViewDelegate.h"

#include <QPointer>

class MapView;
class PositionSourceFactory;

// The location service's hidden map view, made of the application's own
// map: a one-point map without tiles, placed just off the main window's
// corner, reporting the user's position as it finds it.
class HiddenUserLocationMapView : public UserLocationMapView, private MapViewDelegate
{
    Q_OBJECT

public:
    HiddenUserLocationMapView(PositionSourceFactory *positionSources, QObject *parent = nullptr);
    ~HiddenUserLocationMapView() override;

    void attachHidden() override;
    void detach() override;
    void setShowsUserLocation(bool shows) override;

private:
    void didUpdateUserLocation(MapView *mapView, const PositionFix &fix) override;
    void didFailToLocateUserWithError(MapView *mapView, int code,
                                      const QString &description) override;

    QPointer<MapView> m_map;
};
