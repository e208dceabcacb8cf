#pragma once

#include "platform/Coordinate.h"

#include <QObject>
#include <QString>

#include <cmath>

// One position report of a source. A negative horizontal accuracy marks a fix
// the source itself does not trust.
struct PositionFix
{
    Coordinate coordinate;
    double horizontalAccuracy = -1.0;

    bool isValid() const { return !std::signbit(horizontalAccuracy); }
};

// The device's position, as a location manager reports it: started and
// stopped by its user, reporting fixes and failures on the GUI thread.
// Failure code 1 means the user denied access.
class PositionSource : public QObject
{
    Q_OBJECT

public:
    enum ErrorCode { UnknownError = 0, AccessDenied = 1 };

    using QObject::QObject;

    virtual bool locationServicesEnabled() const = 0;
    virtual void requestAuthorization() {}
    virtual void startUpdatingLocation() = 0;
    virtual void stopUpdatingLocation() = 0;

signals:
    void locationUpdated(const PositionFix &fix);
    void failed(int code, const QString &description);
};

// Each user of the position (the location service, a map showing the user's
// place) gets a source of its own, as each would create its own location
// manager; starting or stopping one never affects another.
class PositionSourceFactory
{
public:
    virtual ~PositionSourceFactory() = default;
    virtual PositionSource *create(QObject *parent) = 0;
};
