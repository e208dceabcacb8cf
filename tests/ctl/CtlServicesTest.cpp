#include "CtlRun.h"
#include "FileBytes.h"
#include "GpxDocument.h"
#include "NmeaLog.h"
#include "RoutinoTown.h"
#include "StubHttpServer.h"
#include "TestMain.h"

#include "routing/RoutePace.h"
#include "settings/PropertyList.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <memory>

namespace {

// three vertices: 22.284681,114.1588  22.29,114.16  22.2988,114.1722
const QByteArray RouteBody =
    R"({"code":"Ok","routes":[{"geometry":"qwcoi@_luvxEmkI_jA_ePoyV","distance":2150.5,)"
    R"("duration":301.2},{"geometry":"??","distance":1,"duration":1}],"waypoints":[]})";

const QByteArray googleResult = R"({"status":"OK","results":[{
  "formatted_address":"1600 Amphitheatre Pkwy, Mountain View, CA 94043, USA",
  "address_components":[
    {"long_name":"1600","short_name":"1600","types":["street_number"]},
    {"long_name":"Amphitheatre Pkwy","short_name":"Amphitheatre Pkwy","types":["route"]},
    {"long_name":"United States","short_name":"US","types":["country","political"]}],
  "geometry":{"location":{"lat":37.4224764,"lng":-122.0842499}}}]})";

} // namespace

// trekmime-ctl's commands that ask a service, run as a person runs them,
// against stub services on 127.0.0.1 and a replayed NMEA log.
class CtlServicesTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<StubHttpServer> m_server;

    Run ctl(const QStringList &arguments, const QString &preferences = {})
    {
        const QString url = m_server->baseUrl().toString();
        return runCtl(m_dir->path(),
                      QStringList{u"--preferences-dir"_s,
                                  preferences.isEmpty() ? m_dir->path() : preferences,
                                  u"--geocoding-url"_s, url, u"--nominatim-url"_s, url,
                                  u"--routing-url"_s, url} +
                          arguments,
                      {{u"LC_ALL"_s, u"C.UTF-8"_s}, {u"TZ"_s, u"UTC"_s}});
    }
    QVariantMap routeFile(const QString &preferences = {}) const
    {
        return PropertyList::readDictionary((preferences.isEmpty() ? m_dir->path() : preferences) +
                                            u"/com.velmora.trekmimex.route.plist"_s);
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_server = std::make_unique<StubHttpServer>([](const StubHttpServer::Request &request) {
            const QByteArray &target = request.target;
            QByteArray body;
            if (target.contains(";114.17,22.29?"))
                body = R"({"code":"NoRoute","message":"Impossible route between points"})";
            else if (target.startsWith("/route/v1/driving/"))
                body = RouteBody;
            else if (target.startsWith("/maps/api/geocode/json?address="))
                body = googleResult;
            else if (target.startsWith("/maps/api/geocode/json?latlng="))
                body = R"({"results":[],"status":"ZERO_RESULTS"})";
            else if (target.startsWith("/search?") && target.contains("q=nowhere"))
                body = R"([{"lat":"","lon":"1e999","display_name":"Nowhere"}])";
            else if (target.startsWith("/search?"))
                body = R"([{"lat":"22.5431","lon":"114.0579","display_name":"Futian"}])";
            else if (target.startsWith("/reverse?"))
                body = R"({"lat":"22.5","lon":"114.1","name":"","display_name":"Nanshan, Shenzhen",
                           "address":{"house_number":"1号","road":"科技园路","suburb":"南山区",
                                      "country_code":"cn"}})";
            else
                return StubHttpServer::Response{404, "text/plain", "none", {}};
            return StubHttpServer::Response{200, "application/json", body, {}};
        });
        QVERIFY(m_server->listen());
    }

    void commands_data()
    {
        // LOG: a log with fixes, NOFIX: without; MAP: a Routino database of RoutinoTown
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("out");
        QTest::addColumn<QString>("err");       // a part of it; empty: nothing at all
        QTest::addColumn<QByteArray>("target"); // the last request; "*": any
        const auto row = [](const char *name, const char *arguments, int status, const char *out,
                            const char *err, const QByteArray &target) {
            QTest::newRow(name) << words(arguments) << status << QString::fromUtf8(out)
                                << QString::fromUtf8(err) << target;
        };
        row("geocode in a region", "geocode a&b c --region 37.4,-122.1,1000", 0,
            "1600 Amphitheatre Pkwy\t1600 Amphitheatre Pkwy, Mountain View, CA 94043, USA\t"
            "37.422476, -122.084250\n",
            "",
            "/maps/api/geocode/json?address=a%26b%20c&bounds=37.395508%2C-122.105654"
            "%7C37.404492%2C-122.094346&sensor=true&language=en");
        row("reverse, service error", "reverse 22.5 114.1", 1, "", "Zero results returned",
            "/maps/api/geocode/json?latlng=22.500000%2C114.100000&sensor=true&language=en");
        row("lookup address", "lookup Futian Shenzhen", 0, "22.543100 114.057900\n", "",
            "/search?format=jsonv2&addressdetails=1&q=Futian%20Shenzhen&accept-language=en");
        // the first of the address lines, as the screens show it
        row("lookup coordinate", "lookup 22.5 114.1", 0, "科技园路1号\n", "",
            "/reverse?format=jsonv2&addressdetails=1&lat=22.500000&lon=114.100000&"
            "accept-language=en");
        row("lookup, no usable place", "lookup nowhere", 1, "",
            "The geocoding service found no place", "*");
        row("position, command option", "position --nmea-file LOG", 0, "22.500000 114.100000\n", "",
            "");
        row("position, global option", "--nmea-file LOG position", 0, "22.500000 114.100000\n", "",
            "");
        row("position without a fix", "position --nmea-file NOFIX --timeout 0.3", 1, "",
            "no position within 0.3 seconds", "");
        for (const char *bad : {"geocode", "geocode x --region 1,2", "reverse abc 1",
                                "reverse 91 1", "lookup", "lookup 95 10", "position --timeout soon",
                                "position --nmea-file /nonexistent/track.nmea"})
            row(bad, bad, 2, "", "trekmime-ctl: ", "");
        row("route plan", "route plan 22.2846809 114.1588 22.2988 114.1722", 0,
            "22.284681 114.158800\n22.290000 114.160000\n22.298800 114.172200\n", "",
            "/route/v1/driving/114.1588,22.2846809;114.1722,22.2988"
            "?alternatives=true&overview=full&steps=false&geometries=polyline6");
        row("route plan offline",
            "--router routino --routino-data MAP route plan 51 7 51.004 7.003", 0,
            "50.999998 7.000000\n50.999998 7.003000\n51.001999 7.003000\n51.004000 7.003000\n", "",
            "");
        row("route plan through stops, in order",
            "route plan 22.2846809 114.1588 22.2988 114.1722 --via 22.29,114.16 --via -33.9,151.2",
            0, "22.284681 114.158800\n22.290000 114.160000\n22.298800 114.172200\n", "",
            "/route/v1/driving/114.1588,22.2846809;114.16,22.29;151.2,-33.9;114.1722,22.2988"
            "?alternatives=true&overview=full&steps=false&geometries=polyline6");
        row("route plan, no route", "route plan 22.28 114.15 22.29 114.17", 1, "",
            "Impossible route between points", "*");
        row("route on, no route",
            "route on 22.28 114.15 22.29 114.17 --start 1893484800 --end 1893488400", 1, "",
            "Path planning failure, rechoose Start/End please: Impossible route between points",
            "*");
        row("route on, refused",
            "route on 0 114.1588 22.2988 114.1722 --start 1893484800 --end 1893488400", 1, "",
            "Please choose Start", "*");
        row("route on, bad time",
            "route on 22.28 114.15 22.29 114.16 --start tomorrow --end 1893488400", 2, "",
            "tomorrow", "*");
    }
    void commands()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, out);
        QFETCH(QString, err);
        QFETCH(QByteArray, target);
        for (QString &argument : arguments) {
            if (argument == u"MAP"_s) {
                argument = m_dir->filePath(argument);
                const QString why =
                    QDir().mkdir(argument) ? RoutinoTown::build(argument) : argument;
                QVERIFY2(why.isEmpty(), qPrintable(why));
            }
            if (argument != u"LOG"_s && argument != u"NOFIX"_s)
                continue;
            const bool fix = argument == u"LOG"_s;
            argument = m_dir->filePath(argument);
            QVERIFY(writeBytes(argument, NmeaLog::log(22.5, 114.1, 2, fix)));
        }
        const Run run = ctl(arguments);
        if (err.isEmpty())
            QCOMPARE(run.err, QString());
        else
            QVERIFY2(run.err.contains(err), qPrintable(run.err));
        QCOMPARE(run.status, status);
        QCOMPARE(run.out, out);
        if (target != "*")
            QCOMPARE(m_server->requests().isEmpty() ? QByteArray()
                                                    : m_server->requests().last().target,
                     target);
        QVERIFY(routeFile().isEmpty());
    }

    void asJson()
    {
        const auto json = [this](const char *arguments) {
            return QJsonDocument::fromJson(ctl(words(arguments)).out.toUtf8());
        };
        const QJsonObject place = json("--json geocode x").array()[0].toObject();
        QCOMPARE(place.value(u"name"_s).toString(), u"1600 Amphitheatre Pkwy"_s);
        QVERIFY(place.value(u"locality"_s).isNull());
        QCOMPARE(place.value(u"latitude"_s).toDouble(), 37.4224764);
        const QJsonObject route = json("route plan 22.28 114.15 22.29 114.16 --json").object();
        QCOMPARE(route.value(u"distance"_s).toDouble(), 2150.5);
        QCOMPARE(route.value(u"duration"_s).toDouble(), 301.2);
        const QJsonArray points = route.value(u"points"_s).toArray();
        QCOMPARE(points.size(), 3);
        QCOMPARE(points[1].toObject().value(u"lng"_s).toDouble(), 114.16);
        // respaced (RoutePaceTest checks how) for the service's 301.2 s: a point a second
        const QJsonArray even =
            json("route plan 22.2846809 114.1588 22.2988 114.1722 --even-pace --json")
                .object()
                .value(u"points"_s)
                .toArray();
        QCOMPARE(even.size(), 303);
        QCOMPARE(even.last().toObject().value(u"lat"_s).toDouble(), 22.2988);
    }

    // The trip as the route switch writes it; exported as a GPX track with
    // the times the preview passes each point, it gives another folder the
    // same route, asking the routing service nothing and looking up the
    // places' addresses again.
    void routeOnWritesTheTripThatTravelsAsGpx()
    {
        const Run run = ctl(words("route on 22.2846809 114.1588 22.2988 114.1722 --start "
                                  "2030-01-01T08:00 --end 1893488400"));
        QCOMPARE(run.status, 0);
        QVariantMap record = routeFile();
        const QVariant points = record.take(u"points"_s);
        // 2030-01-01 08:00 in UTC; the end's address is the same stub answer
        QCOMPARE(record, (QVariantMap{{u"enable"_s, u"1"_s},
                                      {u"start"_s, u"1893484800.000000"_s},
                                      {u"end"_s, u"1893488400.000000"_s},
                                      {u"s"_s, u"科技园路1号"_s},
                                      {u"e"_s, u"科技园路1号"_s}}));
        QCOMPARE(points.toList().size(), 3);
        QCOMPARE(points.toList()[2].toMap().value(u"lng"_s).toDouble(), 114.1722);
        QCOMPARE(ctl(words("where --at 1893486600")).out, u"22.290000 114.160000\n"_s);

        const QString out = m_dir->filePath(u"out.gpx"_s);
        QCOMPARE(ctl(words("route export") << out).status, 0);
        QVERIFY(bytesOf(out).contains("<time>2030-01-01T08:20:00Z</time>")); // 3600 s / 3
        const qsizetype asked = m_server->requests().size();
        QTemporaryDir other;
        QCOMPARE(ctl(words("route on --start 1893484800 --speed walk --gpx") << out, other.path())
                     .status,
                 0);
        QCOMPARE(routeFile(other.path()).value(u"points"_s), points);
        QCOMPARE(routeFile(other.path()).value(u"e"_s), QVariant(u"科技园路1号"_s));
        for (qsizetype i = asked; i < m_server->requests().size(); ++i)
            QVERIFY(!m_server->requests()[i].target.startsWith("/route/"));
    }

    void routeOnAtAPace()
    {
        const QList<Coordinate> planned{
            {22.2846809, 114.1588}, {22.29, 114.16}, {22.2988, 114.1722}};
        const double walk = RoutePace::lengthMeters(planned) * 3600.0 / 5000.0;
        QCOMPARE(ctl(words("route on 22.2846809 114.1588 22.2988 114.1722 --start 1893484800 "
                           "--speed walk --even-pace"))
                     .status,
                 0);
        const QVariantMap record = routeFile();
        const qint64 seconds = record.value(u"end"_s).toString().toDouble() - 1893484800;
        QVERIFY(seconds >= walk && seconds < walk + 1); // rounded up
        // a point a second of the trip; without --even-pace, the planned points
        const QVariantList points = record.value(u"points"_s).toList();
        QCOMPARE(points.size(), seconds + 1);
        QCOMPARE(points.last().toMap().value(u"lat"_s).toDouble(), 22.2988);
    }
};

TREKMIME_TEST(CtlServicesTest)
#include "CtlServicesTest.moc"
