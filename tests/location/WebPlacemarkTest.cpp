#include "TestMain.h"

#include "location/Location.h"
#include "location/WebPlacemark.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(QByteArray(text)).object();
}

// A result whose components are given as "types:long:short" triples.
QJsonObject resultWith(const QStringList &components)
{
    QJsonArray array;
    for (const QString &component : components) {
        const QStringList parts = component.split(QLatin1Char(':'));
        QJsonObject entry{
            {QStringLiteral("types"), QJsonArray::fromStringList(parts[0].split(u','))},
            {QStringLiteral("long_name"), parts.value(1)}};
        if (parts.size() > 2)
            entry.insert(QStringLiteral("short_name"), parts[2]);
        array.append(entry);
    }
    return QJsonObject{{QStringLiteral("address_components"), array}};
}

const char *const fullResult = R"({
  "formatted_address": "1600 Amphitheatre Pkwy, Mountain View, CA 94043, USA",
  "address_components": [
    {"long_name": "1600", "short_name": "1600", "types": ["street_number"]},
    {"long_name": "Amphitheatre Pkwy", "short_name": "Amphitheatre Pkwy", "types": ["route"]},
    {"long_name": "Mountain View", "short_name": "Mountain View", "types": ["locality", "political"]},
    {"long_name": "Santa Clara County", "short_name": "Santa Clara County", "types": ["administrative_area_level_2", "political"]},
    {"long_name": "California", "short_name": "CA", "types": ["administrative_area_level_1", "political"]},
    {"long_name": "United States", "short_name": "US", "types": ["country", "political"]},
    {"long_name": "94043", "short_name": "94043", "types": ["postal_code"]}
  ],
  "geometry": {
    "location": {"lat": 37.4224764, "lng": -122.0842499},
    "bounds": {"northeast": {"lat": 37.43, "lng": -122.08}, "southwest": {"lat": 37.42, "lng": -122.1}},
    "viewport": {"northeast": {"lat": 38, "lng": -121}, "southwest": {"lat": 37, "lng": -123}}
  }
})";

} // namespace

// The placemark record: which component fills which field, the display
// name and the diagnostic text.
class WebPlacemarkTest : public QObject
{
    Q_OBJECT

private slots:
    void name_data()
    {
        QTest::addColumn<QStringList>("components");
        QTest::addColumn<QString>("name"); // "<null>" for none
        QTest::newRow("house number first")
            << QStringList{QStringLiteral("route:Main St"), QStringLiteral("street_number:12")}
            << QStringLiteral("12 Main St");
        QTest::newRow("street alone")
            << QStringList{QStringLiteral("route:Main St"), QStringLiteral("sublocality:Old Town")}
            << QStringLiteral("Main St");
        QTest::newRow("number without street")
            << QStringList{QStringLiteral("street_number:12"), QStringLiteral("locality:Oslo:Oslo"),
                           QStringLiteral("administrative_area_level_1:Oslo:OS")}
            << QStringLiteral("Oslo, OS");
        QTest::newRow("sublocality with its level")
            << QStringList{QStringLiteral("sublocality,sublocality_level_1:Futian")}
            << QStringLiteral("Futian");
        QTest::newRow("level alone is not a sublocality")
            << QStringList{QStringLiteral("sublocality_level_1:Futian")}
            << QStringLiteral("<null>");
        QTest::newRow("third admin level counts as sublocality")
            << QStringList{QStringLiteral("administrative_area_level_3:Nanshan"),
                           QStringLiteral("locality:Shenzhen")}
            << QStringLiteral("Nanshan");
        QTest::newRow("neighborhood")
            << QStringList{QStringLiteral("neighborhood:Soho")} << QStringLiteral("Soho");
        QTest::newRow("locality without code")
            << QStringList{QStringLiteral("locality,political:Shenzhen:SZ")}
            << QStringLiteral("Shenzhen, (null)");
        QTest::newRow("state") << QStringList{QStringLiteral(
                                                  "administrative_area_level_1:Guangdong:GD"),
                                              QStringLiteral("country:China:CN")}
                               << QStringLiteral("Guangdong");
        QTest::newRow("country") << QStringList{QStringLiteral("country:China:CN"),
                                                QStringLiteral("postal_code:518000")}
                                 << QStringLiteral("China");
        QTest::newRow("nothing named")
            << QStringList{QStringLiteral("postal_code:518000")} << QStringLiteral("<null>");
    }
    void name()
    {
        QFETCH(QStringList, components);
        QFETCH(QString, name);
        const QString actual = WebPlacemark(resultWith(components)).name();
        QCOMPARE(actual.isNull() ? QStringLiteral("<null>") : actual, name);
    }

    void fieldsOfAFullResult()
    {
        const WebPlacemark placemark(json(fullResult));
        QCOMPARE(placemark.subThoroughfare, QStringLiteral("1600"));
        QCOMPARE(placemark.thoroughfare, QStringLiteral("Amphitheatre Pkwy"));
        QVERIFY(placemark.subLocality.isNull());
        QCOMPARE(placemark.locality, QStringLiteral("Mountain View"));
        QCOMPARE(placemark.subAdministrativeArea, QStringLiteral("Santa Clara County"));
        QCOMPARE(placemark.administrativeArea, QStringLiteral("California"));
        QCOMPARE(placemark.administrativeAreaCode, QStringLiteral("CA"));
        QCOMPARE(placemark.postalCode, QStringLiteral("94043"));
        QCOMPARE(placemark.country, QStringLiteral("United States"));
        QCOMPARE(placemark.ISOcountryCode, QStringLiteral("US"));
        QCOMPARE(placemark.coordinate, (Coordinate{37.4224764, -122.0842499}));
        QCOMPARE(placemark.location.coordinate, placemark.coordinate);
        QVERIFY(placemark.location.isValid());
        // the span comes from the bounds, never the viewport
        QCOMPARE(placemark.region.center, placemark.coordinate);
        QVERIFY(qAbs(placemark.region.latitudeDelta - 0.01) < 1e-9);
        QVERIFY(qAbs(placemark.region.longitudeDelta - 0.02) < 1e-9);
        QCOMPARE(placemark.name(), QStringLiteral("1600 Amphitheatre Pkwy"));
    }

    void lastMatchingComponentWins()
    {
        const WebPlacemark placemark(resultWith(
            {QStringLiteral("route:First Rd"), QStringLiteral("route,locality:Second Rd")}));
        QCOMPARE(placemark.thoroughfare, QStringLiteral("Second Rd"));
        QCOMPARE(placemark.locality, QStringLiteral("Second Rd"));
    }

    void viewportAloneGivesNoSpan()
    {
        const WebPlacemark placemark(json(R"({"geometry":{"location":{"lat":1.5,"lng":2.5},
            "viewport":{"northeast":{"lat":2,"lng":3},"southwest":{"lat":1,"lng":2}}}})"));
        QCOMPARE(placemark.region.center, (Coordinate{1.5, 2.5}));
        QCOMPARE(placemark.region.latitudeDelta, 0.0);
        QCOMPARE(placemark.region.longitudeDelta, 0.0);
    }

    void description()
    {
        const WebPlacemark placemark(json(fullResult));
        QCOMPARE(
            placemark.description(),
            QStringLiteral(
                "{\n"
                "    ISOcountryCode = US;\n"
                "    administrativeArea = California;\n"
                "    coordinate = \"37.422476, -122.084250\";\n"
                "    country = \"United States\";\n"
                "    formattedAddress = \"1600 Amphitheatre Pkwy, Mountain View, CA 94043, USA\";\n"
                "    locality = \"Mountain View\";\n"
                "    postalCode = 94043;\n"
                "    subAdministrativeArea = \"Santa Clara County\";\n"
                "    subLocality = \"<null>\";\n"
                "    subThoroughfare = 1600;\n"
                "    thoroughfare = \"Amphitheatre Pkwy\";\n"
                "}"));
    }

    void descriptionWithoutFormattedAddressIsEmpty()
    {
        const WebPlacemark placemark(resultWith({QStringLiteral("country:China:CN")}));
        QCOMPARE(placemark.description(), QStringLiteral("{\n}"));
    }
};

// The unescaping of backslash-u texts.
class ReplaceUnicodeTest : public QObject
{
    Q_OBJECT

private slots:
    void replaceUnicode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected"); // "<null>" for a null answer
        QTest::newRow("small u escapes")
            << QStringLiteral("\\u4e2d\\u6587") << QStringLiteral("中文");
        QTest::newRow("capital U escapes") << QStringLiteral("\\U4E2D!") << QStringLiteral("中!");
        QTest::newRow("quotes kept")
            << QStringLiteral("say \"hi\"") << QStringLiteral("say \"hi\"");
        QTest::newRow("escaped line break") << QStringLiteral("a\\r\\nb") << QStringLiteral("a\nb");
        QTest::newRow("literal backslash-r-backslash-n")
            << QStringLiteral("a\\\\r\\\\nb") << QStringLiteral("a\nb");
        QTest::newRow("other escapes") << QStringLiteral("tab\\there\\101")
                                       << QStringLiteral("tab\there"
                                                         "A");
        QTest::newRow("plain") << QStringLiteral("plain text") << QStringLiteral("plain text");
        QTest::newRow("trailing backslash") << QStringLiteral("abc\\") << QStringLiteral("<null>");
        QTest::newRow("backslash before a quote")
            << QStringLiteral("a\\\"b") << QStringLiteral("<null>");
    }
    void replaceUnicode()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const QString actual = Location::replaceUnicode(text);
        QCOMPARE(actual.isNull() ? QStringLiteral("<null>") : actual, expected);
    }

    void emptyTextIsEmptyNotNull()
    {
        QVERIFY(!Location::replaceUnicode(QStringLiteral("")).isNull());
        QVERIFY(Location::replaceUnicode(QStringLiteral("")).isEmpty());
    }

    void undoesADescription()
    {
        WebPlacemark placemark;
        placemark.formattedAddress = QStringLiteral("广东省深圳市");
        const QStringList lines = placemark.description().split(QLatin1Char('\n'));
        const auto line = std::find_if(lines.begin(), lines.end(), [](const QString &l) {
            return l.contains(QLatin1String("formattedAddress"));
        });
        QVERIFY(line != lines.end());
        // the value between its quotes, as it is printed: "\U5e7f..."
        const QString quoted = line->section(QStringLiteral(" = "), 1).chopped(1);
        QVERIFY2(quoted.startsWith(QLatin1String("\"\\U5e7f")), qPrintable(quoted));
        QCOMPARE(Location::replaceUnicode(quoted.mid(1).chopped(1)),
                 QStringLiteral("广东省深圳市"));
    }
};

TREKMIME_TEST(WebPlacemarkTest)
TREKMIME_TEST(ReplaceUnicodeTest)
#include "WebPlacemarkTest.moc"
