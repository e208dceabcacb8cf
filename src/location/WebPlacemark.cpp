#include "location/WebPlacemark.h"

#include "location/OldStyleText.h"
#include "settings/StoredValue.h"

#include <QJsonArray>

#include <cmath>

namespace {

// A text of the answer, or null when it is absent or not a text.
QString text(const QJsonValue &value)
{
    if (!value.isString())
        return QString();
    const QString string = value.toString();
    // an empty text is still a text, unlike an absent one
    return string.isNull() ? QStringLiteral("") : string;
}

// A number of the answer: a JSON number, or a text read as the platform
// reads numbers in text; 0 when absent.
double number(const QJsonValue &value)
{
    if (value.isString())
        return StoredValue::doubleValue(value.toString());
    return value.toDouble(0.0);
}

bool hasType(const QJsonArray &types, const char *type)
{
    return types.contains(QJsonValue(QLatin1String(type)));
}

} // namespace

WebPlacemark::WebPlacemark(const QJsonObject &result)
{
    formattedAddress = text(result.value(QLatin1String("formatted_address")));

    const QJsonArray components = result.value(QLatin1String("address_components")).toArray();
    for (const QJsonValue &entry : components) {
        const QJsonObject component = entry.toObject();
        const QJsonArray types = component.value(QLatin1String("types")).toArray();
        const QString longName = text(component.value(QLatin1String("long_name")));
        const QString shortName = text(component.value(QLatin1String("short_name")));
        // each test stands alone: one component may fill several fields, and
        // a later component overwrites an earlier one
        if (hasType(types, "street_number"))
            subThoroughfare = longName;
        if (hasType(types, "route"))
            thoroughfare = longName;
        // the third administrative level counts as a part of a town
        if (hasType(types, "administrative_area_level_3") || hasType(types, "sublocality") ||
            hasType(types, "neighborhood"))
            subLocality = longName;
        if (hasType(types, "locality"))
            locality = longName;
        if (hasType(types, "administrative_area_level_2"))
            subAdministrativeArea = longName;
        if (hasType(types, "administrative_area_level_1")) {
            administrativeArea = longName;
            administrativeAreaCode = shortName;
        }
        if (hasType(types, "country")) {
            country = longName;
            ISOcountryCode = shortName;
        }
        if (hasType(types, "postal_code"))
            postalCode = longName;
    }

    const QJsonObject geometry = result.value(QLatin1String("geometry")).toObject();
    const QJsonObject place = geometry.value(QLatin1String("location")).toObject();
    coordinate = Coordinate{number(place.value(QLatin1String("lat"))),
                            number(place.value(QLatin1String("lng")))};
    location = PositionFix{coordinate, 0.0};

    // only "bounds" gives the span; a result with just a viewport gets none
    const QJsonObject bounds = geometry.value(QLatin1String("bounds")).toObject();
    const QJsonObject northeast = bounds.value(QLatin1String("northeast")).toObject();
    const QJsonObject southwest = bounds.value(QLatin1String("southwest")).toObject();
    region.center = location.coordinate;
    region.latitudeDelta = std::fabs(number(northeast.value(QLatin1String("lat"))) -
                                     number(southwest.value(QLatin1String("lat"))));
    region.longitudeDelta = std::fabs(number(northeast.value(QLatin1String("lng"))) -
                                      number(southwest.value(QLatin1String("lng"))));
}

QString WebPlacemark::name() const
{
    if (!subThoroughfare.isNull() && !thoroughfare.isNull())
        return subThoroughfare + QLatin1Char(' ') + thoroughfare;
    if (!thoroughfare.isNull())
        return thoroughfare;
    if (!subLocality.isNull())
        return subLocality;
    if (!locality.isNull()) {
        // a missing code prints as the platform prints a null object
        return locality + QStringLiteral(", ") +
               (administrativeAreaCode.isNull() ? QStringLiteral("(null)")
                                                : administrativeAreaCode);
    }
    if (!administrativeArea.isNull())
        return administrativeArea;
    if (!country.isNull())
        return country;
    return QString();
}

QString WebPlacemark::description() const
{
    // The dictionary is built from a list whose first value is the
    // formatted address: when that is missing the list ends at once and the
    // dictionary is empty.
    if (formattedAddress.isNull())
        return OldStyleText::describeDictionary({});
    return OldStyleText::describeDictionary({
        {QStringLiteral("formattedAddress"), formattedAddress},
        {QStringLiteral("subThoroughfare"), subThoroughfare},
        {QStringLiteral("thoroughfare"), thoroughfare},
        {QStringLiteral("subLocality"), subLocality},
        {QStringLiteral("locality"), locality},
        {QStringLiteral("subAdministrativeArea"), subAdministrativeArea},
        {QStringLiteral("administrativeArea"), administrativeArea},
        {QStringLiteral("postalCode"), postalCode},
        {QStringLiteral("country"), country},
        {QStringLiteral("ISOcountryCode"), ISOcountryCode},
        {QStringLiteral("coordinate"),
         QString::asprintf("%f, %f", coordinate.latitude, coordinate.longitude)},
    });
}
