#pragma once

#include "platform/Coordinate.h"

#include <QObject>
#include <QString>

class Location;

// The listener of the location service and of the address lookups. Every
// operation is optional: the defaults do nothing, so a listener overrides
// only what it cares about. The first argument is the calling service, or
// null for the class-level lookups. A null error text means the failure
// carried no error object.
//
// A delegate is often a screen that goes away with a lookup or a position
// request still out. `lifetime()` is a QObject that is destroyed together
// with the delegate: the service passes it as the receiver of every
// asynchronous request made for the delegate and watches it before each
// call, so a delegate that is gone is never called. Screens (QWidgets that
// also implement this interface) need do nothing more than be destroyed.
class LocationDelegate
{
public:
    LocationDelegate() = default;
    LocationDelegate(const LocationDelegate &) = delete;
    LocationDelegate &operator=(const LocationDelegate &) = delete;
    virtual ~LocationDelegate() = default;

    virtual void locationSuccess(Location *, double /*latitude*/, double /*longitude*/) {}
    virtual void locationFailed(Location *, const QString & /*error*/) {}
    virtual void reverseGeocoderSuccess(Location *, const QString & /*address*/) {}
    virtual void reverseGeocoderFailed(Location *, const QString & /*error*/) {}
    virtual void geocoderSuccess(Location *, const Coordinate &) {}
    virtual void geocoderFailed(Location *, const QString & /*error*/) {}

    // Exists exactly as long as this delegate; usable as the receiver
    // (context object) of any asynchronous request on its behalf.
    QObject *lifetime() { return &m_lifetime; }

private:
    QObject m_lifetime;
};
