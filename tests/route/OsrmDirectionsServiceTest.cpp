#include "AskDirections.h"
#include "StubHttpServer.h"
#include "TestMain.h"

#include "platform/HeadlessServices.h"
#include "routing/OsrmDirectionsService.h"

#include <QElapsedTimer>
#include <QNetworkAccessManager>

#include <memory>

namespace {

const QByteArray TwoRoutes = R"({"code":"Ok","waypoints":[],"routes":[
    {"geometry":"qwcoi@_luvxEmkI_jA_ePoyV","distance":1000,"duration":100},
    {"geometry":"f`er_A_tal_HgoVavJ","distance":2000,"duration":200}]})";
const QString NotJson = u"The routing service sent an answer that is not the expected JSON."_s;
} // namespace

class OsrmDirectionsServiceTest : public QObject
{
    Q_OBJECT

private:
    QNetworkAccessManager m_network;
    std::unique_ptr<StubHttpServer> m_server;

    std::unique_ptr<OsrmDirectionsService> service(const QUrl &url)
    {
        return std::make_unique<OsrmDirectionsService>(&m_network, url, u"driving"_s,
                                                       u"Trekmime-test/1"_s);
    }

    static DirectionsAnswer ask(OsrmDirectionsService &s)
    {
        return askOnce(s, {{22.2846809, 114.1588}, {22.2988, 114.1722}});
    }

    void answerWith(int status, const QByteArray &body)
    {
        m_server->setHandler([=](const StubHttpServer::Request &) {
            return StubHttpServer::Response{status, "application/json", body, {}};
        });
    }

private slots:
    void init()
    {
        m_server = std::make_unique<StubHttpServer>();
        QVERIFY(m_server->listen());
    }

    void requestAndRoutesInOrder()
    {
        answerWith(200, TwoRoutes);
        auto s = service(m_server->baseUrl().resolved(QUrl(u"/osrm/"_s)));
        const DirectionsAnswer answer = ask(*s);

        const StubHttpServer::Request &request = m_server->requests().first();
        QCOMPARE(request.target, QByteArray("/osrm/route/v1/driving/114.1588,22.2846809;"
                                            "114.1722,22.2988?alternatives=true&overview=full"
                                            "&steps=false&geometries=polyline6"));

        QCOMPARE(answer.routes.size(), 2);
        QCOMPARE(answer.routes[0].coordinates,
                 (QList<Coordinate>{{22.284681, 114.1588}, {22.29, 114.16}, {22.2988, 114.1722}}));
        QCOMPARE(answer.routes[1].coordinates, // southern: negative steps
                 (QList<Coordinate>{{-33.86882, 151.209296}, {-33.856784, 151.215297}}));
    }

    void errors_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("error"); // how it begins
        const auto row = [](const char *name, int status, const QByteArray &body,
                            const QString &error) {
            QTest::newRow(name) << status << body << error;
        };
        const QString unreadable = u"The routing service sent a route whose line cannot be read."_s;
        row("no route", 200, R"({"code":"NoRoute","message":"Impossible route between points"})",
            u"Impossible route between points"_s);
        row("refused, service's words", 400,
            R"({"code":"InvalidQuery","message":"Query string malformed"})",
            u"Query string malformed"_s);
        row("code without message", 200, R"({"code":"NoSegment"})", u"NoSegment"_s);
        row("HTTP error", 502, "<html>Bad gateway</html>",
            u"The routing service answered with HTTP status 502."_s);
        row("not JSON", 200, "hello", NotJson);
        row("no code", 200, R"({"routes":[]})", NotJson);
        row("unreadable line", 200, R"({"code":"Ok","routes":[{"geometry":"_izlhA"}]})",
            unreadable);
        row("character below the polyline alphabet", 200,
            R"({"code":"Ok","routes":[{"geometry":"_izlhA~rlgdF !"}]})", unreadable);
        // steps that would overflow, and places off the globe
        const auto line = [](const char *geometry) {
            return QByteArray(R"({"code":"Ok","routes":[{"geometry":")") + geometry + "\"}]}";
        };
        row("overflowing steps", 200, line("}~~~~~~~~~~~F?}~~~~~~~~~~~F?"), unreadable);
        row("latitude 91", 200, line("_keqlD?"), unreadable);
        row("longitude -181", 200, line("_gjaR~rjfxI"), unreadable);
        row("no routes", 200, R"({"code":"Ok","routes":[]})",
            u"The routing service found no route."_s);
        row("never answers", 0, "", u"The routing service did not answer within 0.2 seconds."_s);
        row("nobody listens", -1, "", u"Cannot reach the routing service: "_s);
        row("cut short", -2, TwoRoutes,
            u"The connection to the routing service broke off before its whole answer came"_s);
        row("redirect loop", -3, "",
            u"The request to the routing service was redirected in a loop"_s);
    }
    void errors()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(QString, error);
        answerWith(status == -2 ? 200 : status, body);
        m_server->setCutShort(status == -2);
        if (status == -3) {
            m_server->setHandler([](const StubHttpServer::Request &r) {
                return StubHttpServer::Response{302, "text/plain", "", {{"Location", r.target}}};
            });
        }
        const QUrl url = m_server->baseUrl();
        if (status == -1)
            m_server.reset();
        auto s = service(url);
        s->setTimeout(status == -3 ? 3000 : 200);
        const QString said = ask(*s).error.value_or(QString());
        QVERIFY2(said.startsWith(error), qPrintable(said));
    }

    // one request a second at most, named as the geocoder names itself; a
    // request still waiting when a newer one comes is answered as replaced
    void pacedAndTheLatestWins()
    {
        QElapsedTimer clock;
        QList<qint64> arrivals;
        m_server->setHandler([&](const StubHttpServer::Request &) {
            arrivals.append(clock.elapsed());
            return StubHttpServer::Response{200, "application/json", TwoRoutes, {}};
        });
        HeadlessServices services;
        services.network = &m_network;
        services.configuration.routingUrl = m_server->baseUrl();
        std::unique_ptr<OsrmDirectionsService> s(OsrmDirectionsService::fromServices(services));
        s->pacer().setMinimumInterval(300);
        clock.start();
        QStringList answers(3);
        for (int i = 0; i < 3; ++i)
            s->calculateDirections(
                {{22.5, 114.0 + i}, {22.6, 114.5}}, nullptr, [&, i](const auto &a) {
                    answers[i] = a.replaced ? u"replaced"_s : a.error.value_or(u"found"_s);
                });
        QTRY_COMPARE_WITH_TIMEOUT(answers, u"found replaced found"_s.split(u' '), 5000);
        QVERIFY(m_server->requests()[1].target.contains("/116,22.5;"));
        QVERIFY(arrivals.size() == 2 && arrivals[1] - arrivals[0] >= 250);
        for (const StubHttpServer::Request &request : m_server->requests())
            QCOMPARE(request.headers.value("user-agent"),
                     services.configuration.userAgent().toUtf8());
    }

    void receiverGone()
    {
        answerWith(200, TwoRoutes);
        auto s = service(m_server->baseUrl());
        int calls = 0;
        auto receiver = std::make_unique<QObject>();
        s->calculateDirections({{22.28, 114.15}, {22.29, 114.17}}, receiver.get(),
                               [&](const DirectionsAnswer &) { ++calls; });
        QVERIFY(QTest::qWaitFor([&] { return !m_server->requests().isEmpty(); }, 5000));
        receiver.reset();
        QTest::qWait(200);
        QCOMPARE(calls, 0);
    }
};

TREKMIME_TEST(OsrmDirectionsServiceTest)
#include "OsrmDirectionsServiceTest.moc"
