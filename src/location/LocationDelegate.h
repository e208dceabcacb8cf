#pragma once

#include "platform/Coordinate.h"

#include <QString>

class Location;

// The listener of the location service and of the address lookups. Every
// operation is optional: the defaults do nothing, so a listener overrides
// only what it cares about. The first argument is the calling service, or
// null for the class-level lookups. A null error text means the failure
// carried no error object.
class LocationDelegate
{
public:
    virtual ~LocationDelegate() = default;

    virtual void locationSuccess(Location *, double /*latitude*/, double /*longitude*/) {}
    virtual void locationFailed(Location *, const QString & /*error*/) {}
    virtual void reverseGeocoderSuccess(Location *, const QString & /*address*/) {}
    virtual void reverseGeocoderFailed(Location *, const QString & /*error*/) {}
    virtual void geocoderSuccess(Location *, const Coordinate &) {}
    virtual void geocoderFailed(Location *, const QString & /*error*/) {}
};
