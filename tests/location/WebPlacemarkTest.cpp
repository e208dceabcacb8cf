#include "TestMain.h"

#include "location/Location.h"
#include "location/WebPlacemark.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// A result from ';'-split "types:long:short" components and `rest` (JSON members).
QJsonObject resultWith(const QString &components, const char *rest = "")
{
    QJsonObject result = QJsonDocument::fromJson("{" + QByteArray(rest) + "}").object();
    QJsonArray array;
    for (const QString &component : components.split(u';', Qt::SkipEmptyParts)) {
        const QStringList parts = component.split(u':');
        QJsonObject entry{{u"types"_s, QJsonArray::fromStringList(parts[0].split(u','))},
                          {u"long_name"_s, parts.value(1)}};
        if (parts.size() > 2)
            entry.insert(u"short_name"_s, parts[2]);
        array.append(entry);
    }
    if (!array.isEmpty())
        result.insert(u"address_components"_s, array);
    return result;
}

} // namespace

// The placemark: which component fills which field, its name, description and unescaping.
class WebPlacemarkTest : public QObject
{
    Q_OBJECT

private slots:
    void name_data()
    {
        QTest::addColumn<QString>("components");
        QTest::addColumn<QString>("name"); // "<null>" for none
        addRow("house number first", "route:Main St;street_number:12", "12 Main St");
        addRow("street alone", "route:Main St;sublocality:Old Town", "Main St");
        addRow("number without street",
               "street_number:12;locality:Oslo:Oslo;administrative_area_level_1:Oslo:OS",
               "Oslo, OS");
        addRow("sublocality with its level", "sublocality,sublocality_level_1:Futian", "Futian");
        addRow("level alone is not a sublocality", "sublocality_level_1:Futian", "<null>");
        addRow("third admin level counts as sublocality",
               "administrative_area_level_3:Nanshan;locality:Shenzhen", "Nanshan");
        addRow("neighborhood", "neighborhood:Soho", "Soho");
        addRow("locality without code", "locality,political:Shenzhen:SZ", "Shenzhen, (null)");
        addRow("state", "administrative_area_level_1:Guangdong:GD;country:China:CN", "Guangdong");
        addRow("country", "country:China:CN;postal_code:518000", "China");
        addRow("nothing named", "postal_code:518000", "<null>");
        // the last matching component wins
        addRow("two streets", "route:First Rd;route:Second Rd", "Second Rd");
    }
    void name()
    {
        QFETCH(QString, components);
        QFETCH(QString, name);
        const QString actual = WebPlacemark(resultWith(components)).name();
        QCOMPARE(actual.isNull() ? u"<null>"_s : actual, name);
    }

    void aFullResult()
    {
        const WebPlacemark placemark(
            resultWith(u"street_number:1600;route:Amph Pkwy;locality,political:Mountain View;"
                       "administrative_area_level_2:SC;administrative_area_level_1:Calif:CA;"
                       "country:United States:US;postal_code:94043"_s,
                       R"("formatted_address": "1600 Amph Pkwy, USA", "geometry": {"location":
                 {"lat": 37.4224764, "lng": -122.0842499}, "bounds": {"northeast":
                 {"lat": 37.43, "lng": -122.08}, "southwest": {"lat": 37.42, "lng": -122.1}}})"));
        // every field but the state's code and the span
        QCOMPARE(placemark.description(), QString::fromUtf8(R"({
    ISOcountryCode = US;
    administrativeArea = Calif;
    coordinate = "37.422476, -122.084250";
    country = "United States";
    formattedAddress = "1600 Amph Pkwy, USA";
    locality = "Mountain View";
    postalCode = 94043;
    subAdministrativeArea = SC;
    subLocality = "<null>";
    subThoroughfare = 1600;
    thoroughfare = "Amph Pkwy";
})"));
        QCOMPARE(placemark.administrativeAreaCode, u"CA"_s);
        QCOMPARE(placemark.location.coordinate, placemark.region.center);
        QVERIFY(qAbs(placemark.region.latitudeDelta - 0.01) < 1e-9); // the bounds, not the viewport
        QVERIFY(qAbs(placemark.region.longitudeDelta - 0.02) < 1e-9);
    }

    void withoutBoundsOrAddress()
    {
        const WebPlacemark placemark(resultWith({}, R"("geometry":{"location":{"lat":1.5,"lng":2.5},
            "viewport":{"northeast":{"lat":2,"lng":3},"southwest":{"lat":1,"lng":2}}})"));
        QCOMPARE(placemark.region.center, (Coordinate{1.5, 2.5}));
        QCOMPARE(placemark.region.latitudeDelta + placemark.region.longitudeDelta, 0.0);
        QCOMPARE(placemark.description(), u"{\n}"_s);
    }

    // backslash-u texts, as the service's texts and a description have them
    void replaceUnicode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected"); // "<null>" for a null answer
        addRow("small u escapes", "\\u4e2d\\u6587", "中文");
        addRow("capital U escapes", "\\U4E2D!", "中!");
        addRow("quotes kept", "say \"hi\"", "say \"hi\"");
        addRow("escaped line break", "a\\r\\nb", "a\nb");
        addRow("literal backslash-r-backslash-n", "a\\\\r\\\\nb", "a\nb");
        addRow("other escapes", "tab\\there\\101", "tab\thereA");
        addRow("empty is not null", "", "");
        addRow("trailing backslash", "abc\\", "<null>");
        addRow("backslash before a quote", "a\\\"b", "<null>");
    }
    void replaceUnicode()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const QString actual = Location::replaceUnicode(text);
        QCOMPARE(actual.isNull() ? u"<null>"_s : actual, expected);
    }

    void undoesADescription()
    {
        WebPlacemark placemark;
        placemark.formattedAddress = u"广东省深圳市"_s;
        const QString quoted = placemark
                                   .description() // "\U5e7f...", like the service's texts
                                   .section(u"formattedAddress = \""_s, 1)
                                   .section(u'"', 0, 0);
        QVERIFY2(quoted.startsWith(u"\\U5e7f"_s), qPrintable(quoted));
        QCOMPARE(Location::replaceUnicode(quoted), u"广东省深圳市"_s);
    }
};

TREKMIME_TEST(WebPlacemarkTest)
#include "WebPlacemarkTest.moc"
