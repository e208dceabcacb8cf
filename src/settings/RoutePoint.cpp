#include "settings/RoutePoint.h"

#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

#include <QVariantMap>

RoutePoint::RoutePoint(double latitude, double longitude)
    : m_latitude(latitude), m_longitude(longitude)
{
}

RoutePoint RoutePoint::fromPropertyList(const QVariant &stored)
{
    const QVariantMap map = stored.toMap();
    RoutePoint point(StoredValue::doubleValue(map.value(RecordKeys::pointLatitude())),
                     StoredValue::doubleValue(map.value(RecordKeys::pointLongitude())));
    point.m_stored = stored;
    return point;
}

QVariant RoutePoint::toPropertyList() const
{
    if (m_stored.isValid())
        return m_stored;
    // reals, not texts: the one place the settings files hold numbers as numbers
    return QVariantMap{{RecordKeys::pointLatitude(), m_latitude},
                       {RecordKeys::pointLongitude(), m_longitude}};
}

QList<RoutePoint> RoutePoint::listFromPropertyList(const QVariantList &stored)
{
    QList<RoutePoint> points;
    points.reserve(stored.size());
    for (const QVariant &entry : stored)
        points.append(fromPropertyList(entry));
    return points;
}

QVariantList RoutePoint::listToPropertyList(const QList<RoutePoint> &points)
{
    QVariantList stored;
    stored.reserve(points.size());
    for (const RoutePoint &point : points)
        stored.append(point.toPropertyList());
    return stored;
}
