#include "settings/RoutePoint.h"

#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

#include <QVariantMap>

RoutePoint::RoutePoint(double latitude, double longitude)
    : m_latitude(latitude), m_longitude(longitude),
      // reals, not texts: the one place the settings files hold numbers as
      // numbers. Made once here, so that writing a long route copies no map.
      m_stored(QVariantMap{{RecordKeys::pointLatitude(), latitude},
                           {RecordKeys::pointLongitude(), longitude}})
{
}

RoutePoint::RoutePoint(double latitude, double longitude, const QVariant &stored)
    : m_latitude(latitude), m_longitude(longitude), m_stored(stored)
{
}

RoutePoint RoutePoint::fromPropertyList(const QVariant &stored)
{
    const QVariantMap map = stored.toMap();
    return RoutePoint(StoredValue::doubleValue(map.value(RecordKeys::pointLatitude())),
                      StoredValue::doubleValue(map.value(RecordKeys::pointLongitude())), stored);
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
