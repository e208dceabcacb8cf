#pragma once

#include "platform/PositionSource.h"

#include <QObject>

#include <functional>
#include <optional>

// A map view kept out of sight that finds the user's position the way a
// visible map showing the user's place does. The location service may use
// one as an alternative to its own position source.
class UserLocationMapView : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Puts the view, one point large, just off the top-left corner of the
    // application's main window, so that it is live but invisible.
    virtual void attachHidden() = 0;
    virtual void detach() = 0;
    virtual void setShowsUserLocation(bool shows) = 0;

signals:
    // An empty location means the map reported the user without a position.
    void didUpdateUserLocation(const std::optional<PositionFix> &location);
    void didFailToLocateUser(int code, const QString &description);
};

using UserLocationMapViewFactory = std::function<UserLocationMapView *(QObject *parent)>;
