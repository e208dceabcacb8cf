#pragma once

#include "location/UserLocationMapView.h"
#include "platform/Coordinate.h"
#include "platform/PositionSource.h"
#include "platform/Services.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <optional>

class LocationDelegate;

// A location manager's failure: its code (1: access denied) and the
// source's own description text.
struct PositionError
{
    int code = 0;
    QString description;
};

// The device's own position, found once per request and reported to one
// listener, and address lookups in both directions. One shared instance
// serves the whole process; the last screen to register before a request
// receives its answer. The last valid fix is also kept in the user defaults
// ("LocationLatitudeKey", "LocationLongitudeKey") for the next start.
//
// The class-level `latitude()`/`longitude()`/`address()` read the shared
// instance; an instance's own values are `ownLatitude()` and friends, as C++
// cannot give a static and a member function the same name.
class Location : public QObject
{
    Q_OBJECT

public:
    // What the service works with: the position sources, the geocoder and
    // the alert presenter. Set once at start-up (and by tests).
    static void setServices(const Services &services);
    // Where hidden map views come from; without one, asking for the map-view
    // source falls back to the position source at once.
    static void setMapViewFactory(UserLocationMapViewFactory factory);

    static Location *sharedInstacneWithDelegate(LocationDelegate *delegate);
    // A separate instance, owned by the caller.
    static Location *locationWihtDelegate(LocationDelegate *delegate, QObject *parent = nullptr);

    static void setLatitude(double latitude);
    static void setLongitude(double longitude);
    static double latitude();
    static double longitude();
    static QString address();
    static bool isLocationOn();

    // Address lookups on behalf of any delegate; the callbacks carry a null
    // instance. The second name of each pair is a synonym of the first.
    static void addressWithCoordinate(const Coordinate &coordinate, LocationDelegate *delegate);
    static void reverseGeocoderCoordinate(const Coordinate &coordinate, LocationDelegate *delegate);
    static void coordinateWithAddress(const QString &address, LocationDelegate *delegate);
    static void geocoderAddress(const QString &address, LocationDelegate *delegate);

    // Decodes backslash-u escapes (as printed by old-style property list
    // descriptions) into characters; null when the text cannot be decoded.
    static QString replaceUnicode(const QString &text);

    // Drops the process's shared instance. The application never does this;
    // tests need a process state without one.
    static void resetSharedInstance();

    ~Location() override;

    void startLocation();
    void startCoordinate();
    void tryToUseLocationManager();
    void tryToUseMapView();
    void startAddress();
    void startGeocoder();

    // What the position source and the hidden map view report.
    void locationManagerDidUpdateToLocation(PositionSource *manager,
                                            const std::optional<PositionFix> &location);
    void locationManagerDidFailWithError(PositionSource *manager,
                                         const std::optional<PositionError> &error);
    void mapViewDidUpdateUserLocation(const std::optional<PositionFix> &location);
    void mapViewDidFailToLocateUser(const PositionError &error);

    double ownLatitude() const { return m_latitude; }
    double ownLongitude() const { return m_longitude; }
    QString ownAddress() const { return m_address; }
    void setOwnLatitude(double latitude) { m_latitude = latitude; }
    void setOwnLongitude(double longitude) { m_longitude = longitude; }
    void setOwnAddress(const QString &address) { m_address = address; }
    LocationDelegate *delegate() const { return m_delegate; }
    void setDelegate(LocationDelegate *delegate) { m_delegate = delegate; }

    PositionSource *locationManager() const { return m_locationManager; }
    bool isMapViewShow() const { return m_isMapViewShow; }

private:
    explicit Location(QObject *parent = nullptr);

    void prepareLocationManager();
    void storeAndReport(const PositionFix &fix);

    PositionSource *m_locationManager = nullptr;
    UserLocationMapView *m_mapView = nullptr;
    bool m_isMapViewShow = false;
    double m_longitude = 0.0;
    double m_latitude = 0.0;
    QString m_address;
    LocationDelegate *m_delegate = nullptr;
};
