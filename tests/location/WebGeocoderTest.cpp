#include "StubHttpServer.h"
#include "TestMain.h"

#include "location/WebGeocoder.h"

#include <QJsonParseError>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>
#include <QUrlQuery>

#include <memory>
#include <optional>

namespace {

// What one operation's completion received, and how often it ran.
struct Outcome
{
    int calls = 0;
    std::optional<WebGeocoder::PlacemarkList> placemarks;
    std::optional<WebGeocoderResponse> response;
    std::optional<WebGeocoderError> error;

    WebGeocoder::Completion completion()
    {
        return [this](const auto &list, const auto &head, const auto &failure) {
            ++calls;
            placemarks = list;
            response = head;
            error = failure;
        };
    }
};

const QByteArray twoResults = R"({"status":"OK","results":[
    {"formatted_address":"1 A Road","geometry":{"location":{"lat":22.5,"lng":114.1}}},
    {"formatted_address":"2 B Road","geometry":{"location":{"lat":22.6,"lng":114.2}}}]})";

} // namespace

// The web geocoding client against a stub of the Google JSON interface.
class WebGeocoderTest : public QObject
{
    Q_OBJECT

private:
    QNetworkAccessManager m_network;
    std::unique_ptr<StubHttpServer> m_server;
    StubHttpServer::Response m_answer;

    WebGeocoderEndpoint endpoint() const
    {
        return {const_cast<QNetworkAccessManager *>(&m_network), m_server->baseUrl(),
                QStringLiteral("TrekmimeTest/1")};
    }

    // Starts `operation` and waits for its end.
    void run(WebGeocoder &operation)
    {
        operation.start();
        QTRY_VERIFY_WITH_TIMEOUT(operation.isFinished(), 2000);
    }

    QByteArray onlyTarget() const
    {
        return m_server->requests().size() == 1 ? m_server->requests().first().target
                                                : QByteArray("(not one request)");
    }

private slots:
    void init()
    {
        m_answer = {200, "application/json; charset=UTF-8", twoResults, {}};
        m_server = std::make_unique<StubHttpServer>([this](const auto &) { return m_answer; });
        QVERIFY(m_server->listen());
    }

    void addressIsEncodedIntoTheQuery_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QByteArray>("encoded");
        QTest::newRow("structure characters")
            << QStringLiteral("a&b=c?d|e f") << QByteArray("a%26b%3Dc%3Fd%7Ce%20f");
        QTest::newRow("the rest of the extra set")
            << QStringLiteral(":/,!$'()*+;[]@#")
            << QByteArray("%3A%2F%2C%21%24%27%28%29%2A%2B%3B%5B%5D%40%23");
        QTest::newRow("Chinese as UTF-8")
            << QStringLiteral("深圳市") << QByteArray("%E6%B7%B1%E5%9C%B3%E5%B8%82");
        QTest::newRow("unreserved marks stay")
            << QStringLiteral("A-z_0.9~") << QByteArray("A-z_0.9~");
    }
    void addressIsEncodedIntoTheQuery()
    {
        QFETCH(QString, address);
        QFETCH(QByteArray, encoded);
        Outcome outcome;
        WebGeocoder operation(endpoint(), address, outcome.completion());
        run(operation);
        // the language comes from the test's C locale
        QCOMPARE(onlyTarget(),
                 "/maps/api/geocode/json?address=" + encoded + "&sensor=true&language=en");
        QCOMPARE(m_server->requests().first().headers.value("user-agent"),
                 QByteArray("TrekmimeTest/1"));
    }

    void reverseSendsSixDecimals()
    {
        Outcome outcome;
        WebGeocoder operation(endpoint(), Coordinate{22.5, 114.1}, outcome.completion());
        run(operation);
        QCOMPARE(
            onlyTarget(),
            QByteArray(
                "/maps/api/geocode/json?latlng=22.500000%2C114.100000&sensor=true&language=en"));
    }

    void regionBoxIsHalfTheCircle()
    {
        Outcome outcome;
        const CircularRegion region{Coordinate{60.0, 10.0}, 2000.0};
        WebGeocoder operation(endpoint(), QStringLiteral("x"), region, outcome.completion());
        run(operation);
        const QUrlQuery query(m_server->requests().value(0).url());
        const QByteArray raw = m_server->requests().value(0).target;
        QVERIFY2(raw.contains("&bounds=") && raw.contains("%7C") && raw.contains("%2C"), raw);
        const QStringList corners =
            query.queryItemValue(QStringLiteral("bounds"), QUrl::FullyDecoded)
                .split(QLatin1Char('|'));
        QCOMPARE(corners.size(), 2);
        const QStringList sw = corners[0].split(QLatin1Char(','));
        const QStringList ne = corners[1].split(QLatin1Char(','));
        const double height = ne[0].toDouble() - sw[0].toDouble();
        const double width = ne[1].toDouble() - sw[1].toDouble();
        // the radius, not the diameter, spans the box: about 0.018 degrees
        // of latitude for 2 km, and twice that in longitude at 60 degrees
        QVERIFY2(qAbs(height - 2000.0 / 111319.49) < 1e-5, qPrintable(corners.join(u' ')));
        QVERIFY2(qAbs(width - 2.0 * height) < 1e-5, qPrintable(corners.join(u' ')));
        QVERIFY(qAbs((ne[0].toDouble() + sw[0].toDouble()) / 2 - 60.0) < 1e-6);
        QVERIFY(qAbs((ne[1].toDouble() + sw[1].toDouble()) / 2 - 10.0) < 1e-6);
    }

    void callerParametersGetSensorAndLanguage()
    {
        WebGeocoder::Parameters parameters{{QStringLiteral("language"), QStringLiteral("xx")},
                                           {QStringLiteral("count"), 3},
                                           {QStringLiteral("address"), QStringLiteral("a b")}};
        Outcome outcome;
        WebGeocoder operation(endpoint(), parameters, outcome.completion());
        // written into the caller's own list, replacing its value in place
        QCOMPARE(parameters.size(), 4);
        QCOMPARE(parameters[0].second.toString(), QStringLiteral("en"));
        QCOMPARE(parameters[3],
                 (QPair<QString, QVariant>(QStringLiteral("sensor"), QStringLiteral("true"))));
        run(operation);
        QCOMPARE(
            onlyTarget(),
            QByteArray("/maps/api/geocode/json?language=en&count=3&address=a%20b&sensor=true"));
    }

    void serviceStatuses_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("listPresent");
        QTest::newRow("zero results") << QByteArray(R"({"results":[],"status":"ZERO_RESULTS"})")
                                      << 1 << QStringLiteral("Zero results returned") << true;
        QTest::newRow("over limit, no results key")
            << QByteArray(R"({"status":"OVER_QUERY_LIMIT"})") << 2
            << QStringLiteral(
                   "Currently rate limited. Too many queries in a short time. (Over Quota)")
            << false;
        QTest::newRow("denied")
            << QByteArray(R"({"results":[],"status":"REQUEST_DENIED"})") << 3
            << QStringLiteral(
                   "Request was denied. Did you remember to add the \"sensor\" parameter?")
            << true;
        QTest::newRow("invalid")
            << QByteArray(R"({"results":[],"status":"INVALID_REQUEST"})") << 4
            << QStringLiteral("The request was invalid. Was the \"address\" or \"latlng\" missing?")
            << true;
        QTest::newRow("OK with no results")
            << QByteArray(R"({"results":[],"status":"OK"})") << 0 << QString() << true;
        QTest::newRow("unknown status")
            << QByteArray(R"({"status":"UNKNOWN_ERROR"})") << 0 << QString() << false;
    }
    void serviceStatuses()
    {
        QFETCH(QByteArray, body);
        QFETCH(int, code);
        QFETCH(QString, text);
        QFETCH(bool, listPresent);
        m_answer.body = body;
        Outcome outcome;
        WebGeocoder operation(endpoint(), QStringLiteral("x"), outcome.completion());
        run(operation);
        QCOMPARE(outcome.calls, 1);
        QCOMPARE(outcome.placemarks.has_value(), listPresent);
        if (listPresent)
            QVERIFY(outcome.placemarks->isEmpty());
        QCOMPARE(outcome.error.has_value(), code != 0);
        if (code) {
            QCOMPARE(outcome.error->domain, QStringLiteral("WebGeocoderErrorDomain"));
            QCOMPARE(outcome.error->code, code);
            QCOMPARE(outcome.error->localizedDescription, text);
        }
    }

    void answers_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("contentType");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("places"); // -1: no list at all
        QTest::addColumn<QString>("errorDomain");
        QTest::addColumn<int>("errorCode"); // -1: any parse error
        QTest::newRow("two places")
            << 200 << QByteArray("application/json") << twoResults << 2 << QString() << 0;
        QTest::newRow("500 with places") << 500 << QByteArray("application/json") << twoResults << 2
                                         << QStringLiteral("NSURLErrorDomain") << -1011;
        QTest::newRow("500 with a page")
            << 500 << QByteArray("text/html") << QByteArray("<h1>down</h1>") << -1
            << QStringLiteral("NSURLErrorDomain") << -1011;
        QTest::newRow("not JSON") << 200 << QByteArray("text/html") << QByteArray("<h1>hi</h1>")
                                  << -1 << QString() << 0;
        QTest::newRow("empty body")
            << 200 << QByteArray("application/json") << QByteArray() << -1 << QString() << 0;
        QTest::newRow("broken JSON")
            << 200 << QByteArray("application/json") << QByteArray("{\"results\":[") << -1
            << QStringLiteral("QJsonParseError") << -1;
        QTest::newRow("a bare value")
            << 200 << QByteArray("application/json") << QByteArray("42") << -1 << QString() << 0;
        QTest::newRow("404 with places")
            << 404 << QByteArray("application/json") << twoResults << 2 << QString() << 0;
    }
    void answers()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, contentType);
        QFETCH(QByteArray, body);
        QFETCH(int, places);
        QFETCH(QString, errorDomain);
        QFETCH(int, errorCode);
        m_answer = {status, contentType, body, {}};
        Outcome outcome;
        WebGeocoder operation(endpoint(), QStringLiteral("x"), outcome.completion());
        run(operation);
        QCOMPARE(outcome.calls, 1);
        QCOMPARE(outcome.placemarks ? int(outcome.placemarks->size()) : -1, places);
        QCOMPARE(outcome.error ? outcome.error->domain : QString(), errorDomain);
        if (errorCode == -1) // a parse error, whichever the parser names
            QVERIFY(outcome.error->code != QJsonParseError::NoError);
        else
            QCOMPARE(outcome.error ? outcome.error->code : 0, errorCode);
        QVERIFY(outcome.response);
        QCOMPARE(outcome.response->statusCode, status);
        if (places == 2) {
            QCOMPARE(outcome.placemarks->at(1).formattedAddress, QStringLiteral("2 B Road"));
            QCOMPARE(outcome.placemarks->at(1).coordinate.longitude, 114.2);
        }
        if (errorCode == -1011) {
            QCOMPARE(outcome.error->localizedDescription, QStringLiteral("Bad Server Response."));
            QCOMPARE(outcome.error->failingURL, operation.requestURL());
            QCOMPARE(outcome.error->failingURLString,
                     operation.requestURL().toString(QUrl::FullyEncoded));
        }
    }

    void watchdogEndsASilentRequest()
    {
        m_answer.status = 0; // never answers
        Outcome outcome;
        WebGeocoder operation(endpoint(), QStringLiteral("x"), outcome.completion());
        QCOMPARE(operation.timeoutInterval(), 20000);
        operation.setTimeoutInterval(100);
        run(operation);
        QCOMPARE(outcome.calls, 1);
        QVERIFY(!outcome.placemarks);
        QVERIFY(!outcome.response);
        QCOMPARE(outcome.error->domain, QStringLiteral("NSURLErrorDomain"));
        QCOMPARE(outcome.error->code, -1001);
        QCOMPARE(outcome.error->localizedDescription, QStringLiteral("The operation timed out."));
        QVERIFY(outcome.error->failingURLString.contains(QStringLiteral("address=x")));
        QTest::qWait(50);
        QCOMPARE(outcome.calls, 1);
    }

    void connectionFailureIsPassedOn()
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const quint16 port = closed.serverPort();
        closed.close();
        Outcome outcome;
        WebGeocoderEndpoint nowhere = endpoint();
        nowhere.host = QUrl(QStringLiteral("http://127.0.0.1:%1").arg(port));
        WebGeocoder operation(nowhere, QStringLiteral("x"), outcome.completion());
        run(operation);
        QCOMPARE(outcome.calls, 1);
        QVERIFY(!outcome.placemarks);
        QCOMPARE(outcome.error->domain, QStringLiteral("QNetworkReply"));
        QCOMPARE(outcome.error->code, int(QNetworkReply::ConnectionRefusedError));
    }

    void cancelBeforeTheAnswerCallsNothing()
    {
        m_answer.status = 0;
        Outcome outcome;
        WebGeocoder operation(endpoint(), QStringLiteral("x"), outcome.completion());
        operation.setTimeoutInterval(150);
        operation.start();
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests().size(), 1, 1000);
        operation.cancel();
        QVERIFY(operation.isCancelled());
        QTRY_VERIFY_WITH_TIMEOUT(operation.isFinished(), 1000);
        QTest::qWait(250); // past the watchdog too
        QCOMPARE(outcome.calls, 0);
        operation.cancel(); // finished: ignored
        QCOMPARE(operation.state(), int(WebGeocoder::Finished));
    }

    void cancelledBeforeStartNeverAsks()
    {
        Outcome outcome;
        WebGeocoder operation(endpoint(), QStringLiteral("x"), outcome.completion());
        operation.cancel();
        operation.start();
        QTRY_VERIFY_WITH_TIMEOUT(operation.isFinished(), 1000);
        QTest::qWait(50);
        QCOMPARE(outcome.calls, 0);
        QCOMPARE(m_server->requests().size(), 0);
    }

    void statesAreAnnouncedAndCompletionComesLater()
    {
        Outcome outcome;
        WebGeocoder operation(endpoint(), QStringLiteral("x"), outcome.completion());
        QSignalSpy state(&operation, &WebGeocoder::stateChanged);
        QSignalSpy executing(&operation, &WebGeocoder::isExecutingChanged);
        QSignalSpy finished(&operation, &WebGeocoder::isFinishedChanged);
        QVERIFY(operation.isConcurrent());
        QCOMPARE(operation.state(), int(WebGeocoder::Ready));
        operation.start();
        QVERIFY(operation.isExecuting());
        QCOMPARE(outcome.calls, 0);
        QTRY_VERIFY_WITH_TIMEOUT(operation.isFinished(), 2000);
        QCOMPARE(outcome.calls, 1);
        QCOMPARE(state.size(), 2);
        QCOMPARE(executing.size(), 2);
        QCOMPARE(finished.size(), 1);
    }

    void classOperationDeletesItselfWhenDone()
    {
        Outcome outcome;
        QPointer<WebGeocoder> operation =
            WebGeocoder::reverseGeocode(endpoint(), Coordinate{1.0, 2.0}, outcome.completion());
        QVERIFY(operation && operation->isExecuting());
        QTRY_VERIFY_WITH_TIMEOUT(operation.isNull(), 2000);
        QCOMPARE(outcome.calls, 1);
        QCOMPARE(outcome.placemarks->size(), 2);
    }
};

TREKMIME_TEST(WebGeocoderTest)
#include "WebGeocoderTest.moc"
