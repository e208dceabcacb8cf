#include "StubHttpServer.h"
#include "TestMain.h"

#include "fakes/ManualClock.h"
#include "location/WebGeocoder.h"

#include <QJsonParseError>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

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

enum Form { ByAddress, InRegion, ByCoordinate, ByParameters };

} // namespace

// The web geocoding client against a stub of the Google JSON interface.
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
        WebGeocoderEndpoint result{&m_network, m_server->baseUrl(),
                                   QStringLiteral("TrekmimeTest/1")};
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

    void query_data()
    {
        QTest::addColumn<int>("form");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QByteArray>("query"); // the language comes from the test's C locale
        const auto row = [](const char *name, Form form, const char *address, const char *query) {
            QTest::newRow(name) << int(form) << QString::fromUtf8(address)
                                << QByteArray(query) + "&sensor=true&language=en";
        };
        row("reserved characters", ByAddress, "a&b=c?d|e f:/,!$'()*+;[]@#",
            "address=a%26b%3Dc%3Fd%7Ce%20f%3A%2F%2C%21%24%27%28%29%2A%2B%3B%5B%5D%40%23");
        row("Chinese as UTF-8", ByAddress, "深圳市", "address=%E6%B7%B1%E5%9C%B3%E5%B8%82");
        row("unreserved marks stay", ByAddress, "A-z_0.9~", "address=A-z_0.9~");
        // the box spans the radius, not the diameter: half the circle
        row("region box", InRegion, "x",
            "address=x&bounds=59.991017%2C9.982034%7C60.008983%2C10.017966");
        row("coordinate with six decimals", ByCoordinate, "", "latlng=22.500000%2C114.100000");
        QTest::newRow("caller's parameters, language replaced in place")
            << int(ByParameters) << QString()
            << QByteArray("language=en&count=3&address=a%20b&sensor=true");
    }
    void query()
    {
        QFETCH(int, form);
        QFETCH(QString, address);
        QFETCH(QByteArray, query);
        Outcome outcome;
        WebGeocoder::Parameters parameters{{QStringLiteral("language"), QStringLiteral("xx")},
                                           {QStringLiteral("count"), 3},
                                           {QStringLiteral("address"), QStringLiteral("a b")}};
        std::unique_ptr<WebGeocoder> operation;
        if (form == ByAddress)
            operation = std::make_unique<WebGeocoder>(endpoint(), address, outcome.completion());
        else if (form == InRegion)
            operation = std::make_unique<WebGeocoder>(
                endpoint(), address, CircularRegion{Coordinate{60.0, 10.0}, 2000.0},
                outcome.completion());
        else if (form == ByCoordinate)
            operation = std::make_unique<WebGeocoder>(endpoint(), Coordinate{22.5, 114.1},
                                                      outcome.completion());
        else
            operation = std::make_unique<WebGeocoder>(endpoint(), parameters, outcome.completion());
        operation->start();
        QTRY_VERIFY_WITH_TIMEOUT(operation->isFinished(), 1000);
        QCOMPARE(m_server->requests().size(), 1);
        QCOMPARE(m_server->requests().first().target, "/maps/api/geocode/json?" + query);
        QCOMPARE(m_server->requests().first().headers.value("user-agent"),
                 QByteArray("TrekmimeTest/1"));
        if (form == ByParameters) // the caller's own list is written into
            QCOMPARE(parameters.first().second.toString(), QStringLiteral("en"));
    }

    void answers_data()
    {
        // 0: never answers, -1: nobody listening, -2: a 200 whose connection
        // drops in the middle of the body
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("contentType");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("places"); // -1: no list at all
        QTest::addColumn<QString>("errorDomain");
        QTest::addColumn<int>("errorCode");
        QTest::addColumn<QString>("errorText"); // "*": not compared
        const auto row = [](const char *name, int status, const char *type, const QByteArray &body,
                            int places, const char *domain = "", int code = 0,
                            const char *text = "") {
            QTest::newRow(name) << status << QByteArray(type) << body << places
                                << QString::fromUtf8(domain) << code << QString::fromUtf8(text);
        };
        const char *json = "application/json";
        const char *service = "WebGeocoderErrorDomain";
        const char *url = "NSURLErrorDomain";
        row("zero results", 200, json, R"({"results":[],"status":"ZERO_RESULTS"})", 0, service, 1,
            "Zero results returned");
        row("over limit, no results key", 200, json, R"({"status":"OVER_QUERY_LIMIT"})", -1,
            service, 2, "Currently rate limited. Too many queries in a short time. (Over Quota)");
        row("denied", 200, json, R"({"results":[],"status":"REQUEST_DENIED"})", 0, service, 3,
            "Request was denied. Did you remember to add the \"sensor\" parameter?");
        row("invalid", 200, json, R"({"results":[],"status":"INVALID_REQUEST"})", 0, service, 4,
            "The request was invalid. Was the \"address\" or \"latlng\" missing?");
        row("OK with no results", 200, json, R"({"results":[],"status":"OK"})", 0);
        row("unknown status", 200, json, R"({"status":"UNKNOWN"})", -1);
        row("two places", 200, json, twoResults, 2);
        row("500 with places", 500, json, twoResults, 2, url, -1011, "Bad Server Response.");
        row("500 with a page", 500, "text/html", "<h1>down</h1>", -1, url, -1011,
            "Bad Server Response.");
        row("404 with places", 404, json, twoResults, 2);
        row("not JSON", 200, "text/html", "<h1>hi</h1>", -1);
        row("empty body", 200, json, "", -1);
        row("broken JSON", 200, json, "{\"results\":[", -1, "QJsonParseError", 0, "*");
        row("a bare value", 200, json, "42", -1);
        row("timeout", 0, json, "", -1, url, -1001, "The operation timed out.");
        row("connection refused", -1, json, "", -1, "QNetworkReply",
            int(QNetworkReply::ConnectionRefusedError), "*");
        row("dropped after the head", -2, json, twoResults, -1, "QNetworkReply",
            int(QNetworkReply::RemoteHostClosedError), "*");
    }
    void answers()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, contentType);
        QFETCH(QByteArray, body);
        QFETCH(int, places);
        QFETCH(QString, errorDomain);
        QFETCH(int, errorCode);
        QFETCH(QString, errorText);
        m_answer = {status == -2 ? 200 : status, contentType, body, {}};
        m_server->setCutShort(status == -2);
        Outcome outcome;
        WebGeocoder operation(endpoint(), QStringLiteral("x"), outcome.completion());
        if (status == -1)
            m_server.reset(); // the port closes
        operation.start();
        if (status == 0) {
            QTRY_COMPARE_WITH_TIMEOUT(m_server->requests().size(), 1, 1000);
            m_clock.advance(19999);
            QVERIFY(!operation.isFinished());
            m_clock.advance(1);
        }
        QTRY_VERIFY_WITH_TIMEOUT(operation.isFinished(), 1000);
        QCOMPARE(outcome.calls, 1);
        QCOMPARE(outcome.placemarks ? int(outcome.placemarks->size()) : -1, places);
        QCOMPARE(outcome.response ? outcome.response->statusCode : -1,
                 status > 0 || status == -2 ? m_answer.status : -1);
        if (places == 2)
            QCOMPARE(outcome.placemarks->at(1).formattedAddress, QStringLiteral("2 B Road"));
        QCOMPARE(outcome.error ? outcome.error->domain : QString(), errorDomain);
        if (errorDomain == QLatin1String("QJsonParseError")) // whichever the parser names
            QVERIFY(outcome.error->code != QJsonParseError::NoError);
        else
            QCOMPARE(outcome.error ? outcome.error->code : 0, errorCode);
        if (errorText == QLatin1String("*")) // the connection's own words
            errorText = outcome.error->localizedDescription;
        QCOMPARE(outcome.error ? outcome.error->localizedDescription : QString(), errorText);
        if (errorDomain == QLatin1String("NSURLErrorDomain"))
            QCOMPARE(outcome.error->failingURLString,
                     operation.requestURL().toString(QUrl::FullyEncoded));
    }

    void cancel_data()
    {
        QTest::addColumn<bool>("started");
        QTest::newRow("before the answer") << true;
        QTest::newRow("before the start") << false;
    }
    void cancel()
    {
        QFETCH(bool, started);
        m_answer.status = 0;
        Outcome outcome;
        WebGeocoder operation(endpoint(), QStringLiteral("x"), outcome.completion());
        if (started) {
            operation.start();
            QTRY_COMPARE_WITH_TIMEOUT(m_server->requests().size(), 1, 1000);
        }
        operation.cancel();
        QVERIFY(operation.isCancelled());
        if (!started)
            operation.start();
        QTRY_VERIFY_WITH_TIMEOUT(operation.isFinished(), 1000);
        m_clock.advance(operation.timeoutInterval()); // past the watchdog too
        QCOMPARE(outcome.calls, 0);
        QCOMPARE(m_server->requests().size(), started ? 1 : 0);
        operation.cancel(); // finished: ignored
        QCOMPARE(operation.state(), int(WebGeocoder::Finished));
    }

    void classOperationAnswersLaterAndDeletesItself()
    {
        Outcome outcome;
        QPointer<WebGeocoder> operation = WebGeocoder::reverseGeocode(
            endpoint(), Coordinate{1.0, 2.0}, this, outcome.completion());
        QVERIFY(operation && operation->isExecuting());
        QSignalSpy state(operation.data(), &WebGeocoder::stateChanged);
        QSignalSpy executing(operation.data(), &WebGeocoder::isExecutingChanged);
        QSignalSpy finished(operation.data(), &WebGeocoder::isFinishedChanged);
        QCOMPARE(outcome.calls, 0);
        QTRY_VERIFY_WITH_TIMEOUT(operation.isNull(), 1000);
        QCOMPARE(outcome.placemarks->size(), 2);
        QCOMPARE((QList<qsizetype>{outcome.calls, state.size(), executing.size(), finished.size()}),
                 (QList<qsizetype>{1, 1, 1, 1}));
    }

    void goneCallerGetsNothing()
    {
        m_answer.status = 0; // held until the caller is gone
        Outcome gone;
        auto caller = std::make_unique<QObject>();
        QPointer<WebGeocoder> operation =
            WebGeocoder::geocode(endpoint(), QStringLiteral("x"), caller.get(), gone.completion());
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests().size(), 1, 1000);
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
            made = new WebGeocoder(real, QStringLiteral("x"), outcome.completion());
            made->setTimeoutInterval(100);
            made->start(); // moves itself over and starts there
        }));
        worker->start();
        QVERIFY(worker->wait(1000));
        const std::unique_ptr<WebGeocoder> operation(made);
        QCOMPARE(operation->thread(), thread());
        QTRY_COMPARE_WITH_TIMEOUT(outcome.calls, 1, 1000);
        QCOMPARE(outcome.error->code, int(WebGeocoder::TimedOut));
    }
};

TREKMIME_TEST(WebGeocoderTest)
#include "WebGeocoderTest.moc"
