#include "StubHttpServer.h"
#include "TestMain.h"

#include "fakes/ManualClock.h"
#include "location/Location.h"
#include "location/WebGeocoder.h"
#include "location/WebPlacemark.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QThread>

namespace {

struct Outcome
{
    int calls = 0;
    std::optional<WebGeocoder::PlacemarkList> placemarks;
    std::optional<WebGeocoderResponse> response;
    std::optional<WebGeocoderError> error;

    WebGeocoder::Completion completion()
    {
        return [this](const auto &list, const auto &head, const auto &failure) {
            ++calls, placemarks = list, response = head, error = failure;
        };
    }
};

const QByteArray twoResults = R"({"status":"OK","results":[
    {"formatted_address":"1 A Road","geometry":{"location":{"lat":22.5,"lng":114.1}}},
    {"formatted_address":"2 B Road","geometry":{"location":{"lat":22.6,"lng":114.2}}}]})";

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

// The web geocoding client against a stub of the Google JSON interface, and its placemarks:
// which component fills which field, their name, description and unescaping.
class WebGeocoderTest : public QObject
{
    Q_OBJECT

private:
    ManualClock m_clock;
    QNetworkAccessManager m_network;
    std::unique_ptr<StubHttpServer> m_server;
    StubHttpServer::Response m_answer;

    WebGeocoderEndpoint endpoint()
    {
        WebGeocoderEndpoint result{&m_network, m_server->baseUrl(), u"TrekmimeTest/1"_s};
        result.clock = &m_clock; // the watchdog fires when the test says
        return result;
    }

private slots:
    void init()
    {
        m_answer = {200, "application/json; charset=UTF-8", twoResults, {}};
        m_server = std::make_unique<StubHttpServer>([this](const auto &) { return m_answer; });
        QVERIFY(m_server->listen());
    }

    void requestsCarryTheQueryAndTheAgent()
    {
        WebGeocoder::Parameters parameters{
            {u"language"_s, u"xx"_s}, {u"count"_s, 3}, {u"address"_s, u"a b"_s}};
        Outcome outcome;
        const auto done = outcome.completion();
        WebGeocoder byAddress(endpoint(), u"a&b=?| :/,+#深A-z_0.9~"_s, done);
        WebGeocoder inRegion(endpoint(), u"x"_s, CircularRegion{{60.0, 10.0}, 2000.0}, done);
        WebGeocoder byCoordinate(endpoint(), Coordinate{22.5, 114.1}, done);
        WebGeocoder byParameters(endpoint(), parameters, done);
        QByteArrayList targets;
        for (WebGeocoder *operation : {&byAddress, &inRegion, &byCoordinate, &byParameters}) {
            operation->start();
            QTRY_VERIFY_WITH_TIMEOUT(operation->isFinished(), 1000);
            targets.append(m_server->requests().last().target.mid(23)); // after "...json?"
        }
        // the language comes from the test's C locale; the box spans the radius, not the diameter
        QCOMPARE(targets,
                 (QByteArrayList{"address=a%26b%3D%3F%7C%20%3A%2F%2C%2B%23%E6%B7%B1A-z_0.9~&sensor="
                                 "true&language=en",
                                 "address=x&bounds=59.991017%2C9.982034%7C60.008983%2C10.017966&"
                                 "sensor=true&language=en",
                                 "latlng=22.500000%2C114.100000&sensor=true&language=en",
                                 "language=en&count=3&address=a%20b&sensor=true"}));
        QCOMPARE(m_server->requests().first().target.left(23),
                 QByteArray("/maps/api/geocode/json?"));
        QCOMPARE(m_server->requests().first().headers.value("user-agent"),
                 QByteArray("TrekmimeTest/1"));
        QCOMPARE(parameters.first().second.toString(), u"en"_s); // written into
    }

    void answers_data()
    {
        // 0: never answers, -1: nobody listening, -2: a 200 cut short in the body
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("places");    // -1: no list at all
        QTest::addColumn<QString>("error"); // "domain code text"; "*" ends a text not compared
        const auto row = [](const char *name, int status, const QByteArray &body, int places,
                            const char *error = "") {
            QTest::newRow(name) << status << body << places << QString::fromUtf8(error);
        };
        row("zero results", 200, R"({"results":[],"status":"ZERO_RESULTS"})", 0,
            "WebGeocoderErrorDomain 1 Zero results returned");
        row("over limit", 200, R"({"status":"OVER_QUERY_LIMIT"})", -1,
            "WebGeocoderErrorDomain 2 *");
        row("denied", 200, R"({"status":"REQUEST_DENIED"})", -1, "WebGeocoderErrorDomain 3 *");
        row("invalid", 200, R"({"status":"INVALID_REQUEST"})", -1, "WebGeocoderErrorDomain 4 *");
        row("two places", 200, twoResults, 2);
        row("500 with places", 500, twoResults, 2, "NSURLErrorDomain -1011 Bad Server Response.");
        row("not JSON", 200, "<h1>hi</h1>", -1);
        row("broken JSON", 200, "{\"results\":[", -1, "QJsonParseError *");
        row("timeout", 0, "", -1, "NSURLErrorDomain -1001 The operation timed out.");
        row("connection refused", -1, "", -1, "QNetworkReply 1 *");
        row("dropped after the head", -2, twoResults, -1, "QNetworkReply 2 *");
    }
    void answers()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(int, places);
        QFETCH(QString, error);
        const QByteArray type = body.startsWith('<') ? "text/html" : "application/json";
        m_answer = {status == -2 ? 200 : status, type, body, {}};
        m_server->setCutShort(status == -2);
        Outcome outcome;
        WebGeocoder operation(endpoint(), u"x"_s, outcome.completion());
        if (status == -1)
            m_server.reset(); // the port closes
        operation.start();
        if (status == 0) {
            QTRY_COMPARE_WITH_TIMEOUT(m_server->requests().size(), 1, 1000);
            m_clock.advance(operation.timeoutInterval());
        }
        QTRY_VERIFY_WITH_TIMEOUT(operation.isFinished(), 1000);
        QCOMPARE(outcome.calls, 1);
        QCOMPARE(outcome.placemarks ? int(outcome.placemarks->size()) : -1, places);
        QCOMPARE(outcome.response ? outcome.response->statusCode : -1,
                 status > 0 ? status : (status == -2 ? 200 : -1));
        QVERIFY(places != 2 || outcome.placemarks->at(1).formattedAddress == u"2 B Road");
        QString seen;
        if (const auto &e = outcome.error) {
            const bool parse = e->domain == u"QJsonParseError"_s; // its own code
            seen = e->domain + (parse ? QString() : u' ' + QString::number(e->code)) + u' ' +
                   (error.endsWith(u'*') ? u"*"_s : e->localizedDescription);
            QVERIFY(!e->localizedDescription.isEmpty() && (!parse || e->code));
        }
        QCOMPARE(seen, error);
        if (error.startsWith(u"NSURL"_s))
            QCOMPARE(outcome.error->failingURLString,
                     operation.requestURL().toString(QUrl::FullyEncoded));
    }

    void cancel()
    {
        m_answer.status = 0;
        for (bool started : {true, false}) { // before the answer, before the start
            Outcome outcome;
            WebGeocoder operation(endpoint(), u"x"_s, outcome.completion());
            if (started)
                operation.start();
            operation.cancel();
            QVERIFY(operation.isCancelled());
            if (!started)
                operation.start();
            QTRY_VERIFY_WITH_TIMEOUT(operation.isFinished(), 1000);
            m_clock.advance(operation.timeoutInterval()); // past the watchdog too
            operation.cancel();                           // finished: ignored
            QVERIFY(!outcome.calls && operation.state() == WebGeocoder::Finished);
        }
    }

    void classOperationsAnswerLaterAndDeleteThemselves()
    {
        Outcome outcome;
        QPointer<WebGeocoder> operation = WebGeocoder::reverseGeocode(
            endpoint(), Coordinate{1.0, 2.0}, this, outcome.completion());
        QVERIFY(operation && operation->isExecuting() && !outcome.calls);
        QTRY_VERIFY_WITH_TIMEOUT(operation.isNull(), 1000);
        QCOMPARE(outcome.placemarks->size(), 2);
        m_answer.status = 0; // held until the caller is gone
        Outcome gone;
        auto caller = std::make_unique<QObject>();
        operation = WebGeocoder::geocode(endpoint(), u"x"_s, caller.get(), gone.completion());
        caller.reset();
        QTRY_VERIFY_WITH_TIMEOUT(operation.isNull(), 1000); // cancelled itself and went
        m_clock.advance(20000); // a watchdog left behind would answer now
        QCOMPARE(gone.calls, 0);
    }

    void watchdogFollowsTheOperationToTheGuiThread()
    {
        m_answer.status = 0;
        Outcome outcome;
        WebGeocoder *made = nullptr;
        std::unique_ptr<QThread> worker(QThread::create([&] {
            WebGeocoderEndpoint real = endpoint();
            real.clock = nullptr; // Qt's own timer, which has a thread
            made = new WebGeocoder(real, u"x"_s, outcome.completion());
            made->setTimeoutInterval(100);
            made->start(); // moves itself over and starts there
        }));
        worker->start();
        QVERIFY(worker->wait(1000));
        const std::unique_ptr<WebGeocoder> operation(made);
        QTRY_COMPARE_WITH_TIMEOUT(outcome.calls, 1, 1000);
        QCOMPARE(outcome.error->code, int(WebGeocoder::TimedOut));
    }

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

TREKMIME_TEST(WebGeocoderTest)
#include "WebGeocoderTest.moc"
