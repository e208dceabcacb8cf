#pragma once

#include "location/UserLocationMapView.h"
#include "platform/Coordinate.h"
#include "platform/HeadlessServices.h"
#include "platform/PositionSource.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
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
//
// The service works with the services of a `Location::Registration`, which
// whoever builds the services (the application, a test, trekmime-ctl)
// creates and keeps alive; the shared instance belongs to it and goes with
// it. Without a registration there is no shared instance, the class-level
// lookups fail at once and the class-level position reads the stored values.
//
// A delegate is never called once it is destroyed (see LocationDelegate),
// whether it asked for a lookup or registered for position fixes.
class Location : public QObject
{
    Q_OBJECT

public:
    class Registration;

    // The shared instance of the current registration, made on first use;
    // null when there is no registration.
    static Location *sharedInstacneWithDelegate(LocationDelegate *delegate);
    // A separate instance, owned by the caller, working with the current
    // registration's services; it must not outlive them.
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
    // The registered delegate; null once it has been destroyed.
    LocationDelegate *delegate() const;
    void setDelegate(LocationDelegate *delegate);

    PositionSource *locationManager() const { return m_locationManager; }
    bool isMapViewShow() const { return m_isMapViewShow; }

private:
    Location(const HeadlessServices &services, UserLocationMapViewFactory mapViews,
             QObject *parent = nullptr);
    static Location *shared();

    void prepareLocationManager();
    void storeAndReport(const PositionFix &fix);

    HeadlessServices m_services;
    UserLocationMapViewFactory m_mapViewFactory;
    PositionSource *m_locationManager = nullptr;
    UserLocationMapView *m_mapView = nullptr;
    bool m_isMapViewShow = false;
    double m_longitude = 0.0;
    double m_latitude = 0.0;
    QString m_address;
    LocationDelegate *m_delegate = nullptr;
    QPointer<QObject> m_delegateLifetime; // null once the delegate is gone
};

// Gives the location service its services for as long as it exists, and owns
// the shared instance made under it: destroying the registration destroys
// that instance, so nothing is left to reset. Registrations nest: the newest
// one is current until it is destroyed.
class Location::Registration
{
public:
    // Without a map-view factory, asking for the map-view source falls back
    // to the position source at once.
    explicit Registration(const HeadlessServices &services,
                          UserLocationMapViewFactory mapViews = {});
    ~Registration();
    Registration(const Registration &) = delete;
    Registration &operator=(const Registration &) = delete;

    void setMapViewFactory(UserLocationMapViewFactory mapViews);
    const HeadlessServices &services() const { return m_services; }
    // Null until the first `sharedInstacneWithDelegate`.
    Location *sharedInstance() const { return m_shared.get(); }

    // The newest registration still alive, or null.
    static Registration *current();

private:
    friend class Location;

    HeadlessServices m_services;
    UserLocationMapViewFactory m_mapViews;
    std::unique_ptr<Location> m_shared;
    Registration *m_outer;
};
