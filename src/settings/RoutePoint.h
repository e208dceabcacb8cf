#pragma once

#include <QList>
#include <QVariant>
#include <QVariantList>

// One vertex of the planned route. Stored as a dictionary of two reals,
// {"lat", "lng"}; an entry read from a file is written back exactly as it
// was read, odd or not, so a route passes through the application unchanged.
class RoutePoint
{
public:
    RoutePoint() : RoutePoint(0.0, 0.0) {}
    RoutePoint(double latitude, double longitude);

    // Any stored entry makes a point: one that is not a dictionary, or whose
    // values are missing, reads as 0 where it falls short, as the hooking
    // component reads it. The entry itself is kept.
    static RoutePoint fromPropertyList(const QVariant &stored);
    QVariant toPropertyList() const { return m_stored; }

    static QList<RoutePoint> listFromPropertyList(const QVariantList &stored);
    static QVariantList listToPropertyList(const QList<RoutePoint> &points);

    double latitude() const { return m_latitude; }
    double longitude() const { return m_longitude; }
    // Whether it is a place on the globe: finite, latitude within ±90 and
    // longitude within ±180. A file may hold anything else; such a point
    // must never reach the map or the screen.
    bool isUsable() const
    {
        return m_latitude >= -90.0 && m_latitude <= 90.0 && m_longitude >= -180.0 &&
               m_longitude <= 180.0;
    }

private:
    RoutePoint(double latitude, double longitude, const QVariant &stored);

    double m_latitude = 0.0;
    double m_longitude = 0.0;
    QVariant m_stored; // the entry as read, or as made for a new point
};
