#include "StubHttpServer.h"
#include "TestMain.h"

#include "location/NominatimGeocoder.h"
#include "platform/Configuration.h"

#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QTcpServer>
#include <QTest>

#include <memory>

namespace {

struct Answers
{
    QList<GeocoderAnswer> received;
    Geocoder::Completion completion()
    {
        return [this](const GeocoderAnswer &answer) { received.append(answer); };
    }
};

QString describe(const GeocoderAnswer &answer)
{
    if (answer.error)
        return QStringLiteral("error: ") + *answer.error;
    if (!answer.placemarks || answer.placemarks->isEmpty())
        return QStringLiteral("nothing");
    const GeocoderPlacemark &first = answer.placemarks->first();
    return QStringLiteral("%1 | %2 | %3")
        .arg(first.formattedAddressLines ? first.formattedAddressLines->join(u'/')
                                         : QStringLiteral("-"),
             first.location ? first.location->toString() : QStringLiteral("-"))
        .arg(answer.placemarks->size());
}

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

    std::unique_ptr<NominatimGeocoder> geocoder(const QString &path = QString())
    {
        QUrl endpoint = m_server->baseUrl();
        endpoint.setPath(path);
        auto result =
            std::make_unique<NominatimGeocoder>(&m_network, endpoint, Configuration().userAgent());
        result->pacer().setMinimumInterval(0);
        return result;
    }

private slots:
    void init()
    {
        m_answer = {200, "application/json", "[]", {}};
        m_arrivals.clear();
        m_clock.start();
        m_server = std::make_unique<StubHttpServer>([this](const auto &) {
            m_arrivals.append(m_clock.elapsed());
            return m_answer;
        });
        QVERIFY(m_server->listen());
    }

    void requests_data()
    {
        QTest::addColumn<QString>("endpointPath");
        QTest::addColumn<bool>("reverse");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("search")
            << QString() << false
            << QByteArray("/search?format=jsonv2&q=1%2B2%20Main%20St%26Co&accept-language=en");
        QTest::newRow("reverse")
            << QString() << true
            << QByteArray("/reverse?format=jsonv2&lat=22.500000&lon=114.100000&accept-language=en");
        QTest::newRow("under a path")
            << QStringLiteral("/nominatim/") << true
            << QByteArray("/nominatim/"
                          "reverse?format=jsonv2&lat=22.500000&lon=114.100000&accept-language=en");
    }
    void requests()
    {
        QFETCH(QString, endpointPath);
        QFETCH(bool, reverse);
        QFETCH(QByteArray, target);
        auto service = geocoder(endpointPath);
        Answers answers;
        if (reverse)
            service->reverseGeocodeLocation(Coordinate{22.5, 114.1}, answers.completion());
        else
            service->geocodeAddressString(QStringLiteral("1+2 Main St&Co"), answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 1, 1000);
        QCOMPARE(m_server->requests().size(), 1);
        QCOMPARE(m_server->requests().first().target, target);
        const QByteArray agent = m_server->requests().first().headers.value("user-agent");
        QVERIFY2(agent.startsWith("Trekmime/"), agent);
    }

    void answers_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("expected");
        QTest::newRow("search results")
            << 200
            << QByteArray(R"([{"lat":"22.5431","lon":"114.0579","display_name":"Futian, Shenzhen"},
                             {"lat":"1","lon":"2","display_name":"Other"}])")
            << QStringLiteral("Futian, Shenzhen | 22.543100, 114.057900 | 2");
        QTest::newRow("reverse result")
            << 200
            << QByteArray(R"({"lat":"22.5","lon":"114.1","display_name":"Nanshan","place_id":1})")
            << QStringLiteral("Nanshan | 22.500000, 114.100000 | 1");
        QTest::newRow("no results")
            << 200 << QByteArray("[]")
            << QStringLiteral("error: The geocoding service found no place for this request.");
        QTest::newRow("ocean")
            << 200 << QByteArray(R"({"error":"Unable to geocode"})")
            << QStringLiteral("error: The geocoding service found nothing: Unable to geocode");
        QTest::newRow("bad request")
            << 400
            << QByteArray(R"({"error":{"code":400,"message":"Parameter 'lon' must be a number."}})")
            << QStringLiteral("error: The geocoding service refused the request (HTTP 400): "
                              "Parameter 'lon' must be a number.");
        QTest::newRow("server error")
            << 500 << QByteArray("<html>oops</html>")
            << QStringLiteral("error: The geocoding service answered with HTTP status 500.");
        QTest::newRow("not JSON")
            << 200 << QByteArray("<html>hello</html>")
            << QStringLiteral("error: The geocoding service sent an answer that is not JSON");
    }
    void answers()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(QString, expected);
        m_answer = {status, "application/json", body, {}};
        auto service = geocoder();
        Answers answers;
        service->geocodeAddressString(QStringLiteral("x"), answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 1, 1000);
        const QString actual = describe(answers.received.first());
        QVERIFY2(actual.startsWith(expected), qPrintable(actual));
        QCOMPARE(answers.received.first().placemarks.has_value(), !answers.received.first().error);
    }

    void unreachableServiceAndTimeout()
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QUrl nowhere(QStringLiteral("http://127.0.0.1:%1").arg(closed.serverPort()));
        closed.close();
        NominatimGeocoder unreachable(&m_network, nowhere, QStringLiteral("t"));
        Answers answers;
        unreachable.geocodeAddressString(QStringLiteral("x"), answers.completion());

        m_answer.status = 0; // never answers
        auto silent = geocoder();
        silent->setTimeout(150);
        silent->geocodeAddressString(QStringLiteral("x"), answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 2, 1000);
        QVERIFY(answers.received[0].error->startsWith(
            QStringLiteral("Cannot reach the geocoding service")));
        QCOMPARE(*answers.received[1].error,
                 QStringLiteral("The geocoding service did not answer within 0.15 seconds."));
    }

    void requestsArePacedAndAllAnswered()
    {
        auto service = geocoder();
        service->pacer().setMinimumInterval(150);
        Answers answers;
        for (int i = 0; i < 4; ++i)
            service->geocodeAddressString(QString::number(i), answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 4, 1500);
        QCOMPARE(m_arrivals.size(), 4);
        for (int i = 1; i < 4; ++i)
            QVERIFY2(m_arrivals[i] - m_arrivals[i - 1] >= 140,
                     qPrintable(QString::number(m_arrivals[i] - m_arrivals[i - 1])));
        for (int i = 0; i < 4; ++i)
            QVERIFY(m_server->requests()[i].target.contains("q=" + QByteArray::number(i) + '&'));
    }

    void answersAreCachedButFailuresAreNot()
    {
        m_answer.body = R"([{"lat":"1","lon":"2","display_name":"A"}])";
        auto service = geocoder();
        Answers answers;
        service->geocodeAddressString(QStringLiteral("A"), answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 1, 1000);
        service->geocodeAddressString(QStringLiteral("A"), answers.completion());
        QCOMPARE(answers.received.size(), 1); // even a cached answer comes later
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 2, 1000);
        QCOMPARE(m_server->requests().size(), 1);
        QCOMPARE(describe(answers.received[1]), describe(answers.received[0]));

        m_answer = {503, "text/plain", "busy", {}};
        service->geocodeAddressString(QStringLiteral("B"), answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 3, 1000);
        service->geocodeAddressString(QStringLiteral("B"), answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 4, 1000);
        QCOMPARE(m_server->requests().size(), 3);
    }

    void equalRequestsWaitingTogetherShareOneTrip()
    {
        auto service = geocoder();
        Answers answers;
        service->reverseGeocodeLocation(Coordinate{1.0, 2.0}, answers.completion());
        service->reverseGeocodeLocation(Coordinate{1.0, 2.0}, answers.completion());
        QTRY_COMPARE_WITH_TIMEOUT(answers.received.size(), 2, 1000);
        QCOMPARE(m_server->requests().size(), 1);
    }
};

TREKMIME_TEST(NominatimGeocoderTest)
#include "NominatimGeocoderTest.moc"
