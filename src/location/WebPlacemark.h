#pragma once

#include "platform/Coordinate.h"
#include "platform/PositionSource.h"

#include <QJsonObject>
#include <QString>

// One place found by the web geocoding client, built from one element of the
// service's "results". Every text may be null (absent).
class WebPlacemark
{
public:
    // A map region: its centre and its height and width in degrees.
    struct Region
    {
        Coordinate center;
        double latitudeDelta = 0.0;
        double longitudeDelta = 0.0;
    };

    WebPlacemark() = default;
    explicit WebPlacemark(const QJsonObject &result);

    // House number and street, else the finest area name there is.
    QString name() const;
    // The diagnostic text of the record's fields.
    QString description() const;

    QString formattedAddress;
    QString subThoroughfare;
    QString thoroughfare;
    QString subLocality;
    QString locality;
    QString subAdministrativeArea;
    QString administrativeArea;
    QString administrativeAreaCode;
    QString postalCode;
    QString country;
    QString ISOcountryCode;
    PositionFix location;
    Coordinate coordinate;
    Region region;
};
