#include "StubHttpServer.h"
#include "TestMain.h"

#include "location/NominatimGeocoder.h"
#include "platform/Configuration.h"
#include "platform/HeadlessServices.h"

#include <QElapsedTimer>
#include <QNetworkAccessManager>

namespace {

struct Answers
{
    QStringList received; // each described in one line
    Geocoder::Completion completion()
    {
        return [this](const GeocoderAnswer &answer) {
            QVERIFY(answer.placemarks.has_value() != answer.error.has_value());
            if (answer.error)
                return received.append(u"error: "_s + *answer.error);
            const GeocoderPlacemark &first = answer.placemarks->first();
            received.append(
                u"%1 | %2 | %3"_s
                    .arg(first.formattedAddressLines->join(u'/'), first.location->toString())
                    .arg(answer.placemarks->size()));
        };
    }
};

} // namespace

// The Nominatim geocoder against a stub that answers like the service.
class NominatimGeocoderTest : public QObject
{
    Q_OBJECT

private:
    QNetworkAccessManager m_network;
    std::unique_ptr<StubHttpServer> m_server;
    StubHttpServer::Response m_answer;
    QList<qint64> m_arrivals;
    QElapsedTimer m_clock;

    std::unique_ptr<NominatimGeocoder> geocoder(int interval = 0, const QString &path = {})
    {
        QUrl endpoint = m_server->baseUrl();
        endpoint.setPath(path);
        auto result =
            std::make_unique<NominatimGeocoder>(&m_network, endpoint, Configuration().userAgent());
        result->pacer().setMinimumInterval(interval);
        return result;
    }

private slots:
    void init()
    {
        m_answer = {200, "application/json", R"([{"lat":"1","lon":"2","display_name":"A"}])", {}};
        m_arrivals.clear();
        m_clock.start();
        m_server = std::make_unique<StubHttpServer>([this](const auto &) {
            m_arrivals.append(m_clock.elapsed());
            return m_answer;
        });
        QVERIFY(m_server->listen());
    }

    void answers_data()
    {
        // 0: never answers, -1: nobody listening, -2: cut short, -3: redirects to itself
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("expected"); // how the answer begins
        const auto row = [](const char *name, int status, const char *body, const char *expected) {
            QTest::newRow(name) << status << QByteArray(body)
                                << QString::fromUtf8(expected).replace(
                                       u'!', u"error: The geocoding service "_s);
        };
        row("search results", 200,
            R"([{"lat":"1","lon":"2","display_name":"F, SZ"},{"lat":"1","lon":"2","display_name":"B"}])",
            "F | 1.000000, 2.000000 | 2");
        row("reverse result", 200, R"({"lat":"1","lon":"2","display_name":"N"})",
            "N | 1.000000, 2.000000 | 1");
        row("no results", 200, "[]", "!found no place for this request.");
        // places that are none: no number, infinite, off the globe
        row("no usable place", 200,
            R"([{"lat":"x","lon":"2"},{"lat":"1e999","lon":"2"},{"lat":"1","lon":"-181"}])",
            "!found no place for this request.");
        row("ocean", 200, R"({"error":"Unable to geocode"})", "!found nothing: Unable to geocode");
        row("bad request", 400, R"({"error":{"code":400,"message":"Bad."}})",
            "!refused the request (HTTP 400): Bad.");
        row("server error", 500, "<html>oops</html>", "!answered with HTTP status 500.");
        row("not JSON", 200, "<html>", "!sent an answer that is not JSON");
        row("timeout", 0, "", "!did not answer within 0.15 seconds.");
        row("unreachable", -1, "", "error: Cannot reach the geocoding service");
        row("cut short", -2, R"([{"lat":"1","lon":"2","display_name":"F, SZ"}])",
            "error: The connection to the geocoding service broke off before its whole answer");
        row("redirect loop", -3, "",
            "error: The request to the geocoding service was redirected in a loop");
    }
    void answers()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(QString, expected);
        m_answer = {status, "application/json", body, {}};
        if (status == -3)
            m_answer = {302, "text/plain", "", {{"Location", "/search"}}};
        m_server->setCutShort(status == -2);
        if (status == -2)
            m_answer.status = 200;
        auto service = geocoder();
        service->setTimeout(status == -3 ? 3000 : 150);
        if (status == -1)
            m_server.reset(); // the port closes
        Answers answers;
        service->geocodeAddressString(u"x"_s, this, answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 1, 3000);
        QVERIFY2(answers.received.first().startsWith(expected), qPrintable(answers.received[0]));
    }

    void requestsArePacedAndAllAnswered()
    {
        auto service = geocoder(150, u"/nominatim/"_s);
        Answers answers;
        service->geocodeAddressString(u"1+2 Main St&Co"_s, this, answers.completion());
        service->reverseGeocodeLocation(Coordinate{22.5, 114.1}, this, answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 2, 5000);
        QVERIFY(m_arrivals[1] - m_arrivals[0] >= 100); // as the server sees them
        QVERIFY(m_server->requests()[0].headers.value("user-agent").startsWith("Trekmime/"));
        QCOMPARE(m_server->requests()[0].target + ' ' + m_server->requests()[1].target,
                 "/nominatim/search?format=jsonv2&addressdetails=1&q=1%2B2%20Main%20St%26Co&"
                 "accept-language=en /nominatim/reverse?format=jsonv2&addressdetails=1&"
                 "lat=22.500000&lon=114.100000&accept-language=en");
    }

    // the configured languages first, else the system's
    void answersComeInThePreferredLanguage()
    {
        HeadlessServices services;
        services.network = &m_network;
        services.configuration.nominatimUrl = m_server->baseUrl();
        qputenv("LANGUAGE", "zh_TW");
        std::unique_ptr<NominatimGeocoder> system(NominatimGeocoder::fromServices(services));
        services.configuration.languages = QStringList{u"zh-Hans"_s};
        std::unique_ptr<NominatimGeocoder> configured(NominatimGeocoder::fromServices(services));
        qunsetenv("LANGUAGE");
        Answers answers;
        system->geocodeAddressString(u"a"_s, this, answers.completion());
        configured->geocodeAddressString(u"b"_s, this, answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 2, 5000);
        QStringList languages;
        for (const auto &request : m_server->requests())
            languages.append(QString::fromLatin1(request.target).section(u'=', -1));
        languages.sort();
        QCOMPARE(languages, QStringList({u"zh-Hans"_s, u"zh-Hant"_s}));
    }

    void answersAreSharedAndCachedButFailuresAreNot()
    {
        auto service = geocoder(100);
        Answers answers, gone;
        auto receiver = std::make_unique<QObject>();
        // asked twice before the answer: one trip for all, none for the gone receiver
        service->geocodeAddressString(u"A"_s, receiver.get(), gone.completion());
        service->geocodeAddressString(u"A"_s, this, answers.completion());
        receiver.reset();
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 1, 1000);
        {
            QObject brief; // asks for a remembered answer and goes at once
            service->geocodeAddressString(u"A"_s, &brief, gone.completion());
        }
        service->geocodeAddressString(u"A"_s, this, answers.completion());
        QCOMPARE(answers.received.size(), 1); // even a cached answer comes later
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 2, 1000);
        QCOMPARE(answers.received[1], u"A | 1.000000, 2.000000 | 1"_s);
        m_answer = {503, "text/plain", "busy", {}};
        for (int asked = 3; asked <= 4; ++asked) {
            service->geocodeAddressString(u"B"_s, this, answers.completion());
            QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), asked, 1000);
        }
        QCOMPARE(m_server->requests().size(), 3);
        QCOMPARE(gone.received.size(), 0);
    }

    void addressLines_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("lines");
        addRow("a named place, then its street", R"("name":"Café","address":{"house_number":"58",
                "road":"Linden","suburb":"M","city":"B","postcode":"1","country":"DE","country_code":"de"})",
               "Café/Linden 58/M/B/1/DE");
        addRow("number first", R"("address":{"house_number":"16","road":"Pk","country_code":"us"})",
               "16 Pk");
        addRow("number after, comma",
               R"("address":{"house_number":"1","road":"Av","country_code":"br"})", "Av, 1");
        addRow("number joined",
               R"("address":{"house_number":"1号","road":"科技园路","country_code":"cn"})",
               "科技园路1号");
        addRow("street is the place", R"("name":"R","address":{"road":"R","town":"P"})", "R/P");
        addRow("display name's first part", R"("display_name":"Bay, N","address":{"suburb":"N"})",
               "Bay/N");
        addRow("no details", R"("display_name":"Nanshan, Shenzhen")", "Nanshan");
    }
    void addressLines()
    {
        QFETCH(QString, address);
        QFETCH(QString, lines);
        const GeocoderAnswer answer =
            NominatimGeocoder::answerFor(200, "{" + address.toUtf8() + R"(,"lat":"1","lon":"2"})");
        QCOMPARE(answer.placemarks.value().first().formattedAddressLines.value().join(u'/'), lines);
    }
};

TREKMIME_TEST(NominatimGeocoderTest)
#include "NominatimGeocoderTest.moc"
