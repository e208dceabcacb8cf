#pragma once

#include "location/LocationDelegate.h"

#include <QObject>
#include <QPointer>

#include <functional>

// Hands one address-lookup answer to the closures given, only while `owner`
// (the screen that asked) still exists, then deletes itself. The lookups hold
// their delegate until they answer and a screen may be closed before that;
// the relay is what they hold instead of the screen.
class RelayLocationDelegate : public QObject, public LocationDelegate
{
public:
    using TextHandler = std::function<void(const QString &)>;
    using CoordinateHandler = std::function<void(const Coordinate &)>;

    // a lookup of the address at a coordinate
    static RelayLocationDelegate *forAddress(QObject *owner, TextHandler found, TextHandler failed)
    {
        auto *relay = new RelayLocationDelegate(owner);
        relay->m_address = std::move(found);
        relay->m_failed = std::move(failed);
        return relay;
    }
    // a lookup of the coordinate of an address
    static RelayLocationDelegate *forCoordinate(QObject *owner, CoordinateHandler found,
                                                TextHandler failed)
    {
        auto *relay = new RelayLocationDelegate(owner);
        relay->m_coordinate = std::move(found);
        relay->m_failed = std::move(failed);
        return relay;
    }

    void reverseGeocoderSuccess(Location *, const QString &address) override
    {
        if (m_owner && m_address)
            m_address(address);
        deleteLater();
    }
    void reverseGeocoderFailed(Location *, const QString &error) override { fail(error); }
    void geocoderSuccess(Location *, const Coordinate &coordinate) override
    {
        if (m_owner && m_coordinate)
            m_coordinate(coordinate);
        deleteLater();
    }
    void geocoderFailed(Location *, const QString &error) override { fail(error); }

private:
    explicit RelayLocationDelegate(QObject *owner) : m_owner(owner) {}
    void fail(const QString &error)
    {
        if (m_owner && m_failed)
            m_failed(error);
        deleteLater();
    }

    QPointer<QObject> m_owner;
    TextHandler m_address;
    CoordinateHandler m_coordinate;
    TextHandler m_failed;
};
