#include "CtlRun.h"
#include "StubHttpServer.h"
#include "TestMain.h"

#include "settings/PropertyList.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

// three vertices: 22.284681,114.1588  22.29,114.16  22.2988,114.1722
const QByteArray RouteBody =
    R"({"code":"Ok","routes":[{"geometry":"qwcoi@_luvxEmkI_jA_ePoyV","distance":2150.5,)"
    R"("duration":301.2},{"geometry":"??","distance":1,"duration":1}],"waypoints":[]})";

} // namespace

// trekmime-ctl's route commands end to end, against a stub routing and
// address service on 127.0.0.1.
class CtlRouteTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<StubHttpServer> m_server;
    QByteArray m_routeBody;

    Run ctl(const QStringList &arguments)
    {
        const QString url = m_server->baseUrl().toString();
        return runCtl(m_dir->path(),
                      QStringList{QStringLiteral("--preferences-dir"), m_dir->path(),
                                  QStringLiteral("--routing-url"), url,
                                  QStringLiteral("--nominatim-url"), url} +
                          arguments,
                      {{QStringLiteral("TZ"), QStringLiteral("UTC")}});
    }
    QVariantMap routeFile() const
    {
        return PropertyList::readDictionary(
            m_dir->filePath(QStringLiteral("com.velmora.trekmimex.route.plist")));
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_routeBody = RouteBody;
        m_server = std::make_unique<StubHttpServer>([this](const StubHttpServer::Request &r) {
            if (r.target.startsWith("/route/v1/driving/"))
                return StubHttpServer::Response{200, "application/json", m_routeBody, {}};
            if (r.target.startsWith("/reverse?"))
                return StubHttpServer::Response{200,
                                                "application/json",
                                                "{\"lat\":\"22.28\",\"lon\":\"114.15\",\"display_"
                                                "name\":\"Queen's Road Central\"}",
                                                {}};
            return StubHttpServer::Response{404, "text/plain", "no", {}};
        });
        QVERIFY(m_server->listen());
    }

    void plan()
    {
        Run run = ctl(words("route plan 22.2846809 114.1588 22.2988 114.1722"));
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, QStringLiteral("22.284681 114.158800\n22.290000 114.160000\n"
                                         "22.298800 114.172200\n"));
        QCOMPARE(m_server->requests().first().target,
                 QByteArray("/route/v1/driving/114.1588,22.2846809;114.1722,22.2988"
                            "?alternatives=true&overview=full&steps=false&geometries=polyline6"));

        run = ctl(words("route plan 22.28 114.15 22.29 114.17 --json"));
        const QJsonObject json = QJsonDocument::fromJson(run.out.toUtf8()).object();
        QCOMPARE(json.value(QLatin1String("distance")).toDouble(), 2150.5);
        QCOMPARE(json.value(QLatin1String("duration")).toDouble(), 301.2);
        const QJsonArray points = json.value(QLatin1String("points")).toArray();
        QCOMPARE(points.size(), 3);
        QCOMPARE(points[1].toObject().value(QLatin1String("lng")).toDouble(), 114.16);

        m_routeBody = R"({"code":"NoRoute","message":"Impossible route between points"})";
        run = ctl(words("route plan 22.28 114.15 22.29 114.17"));
        QCOMPARE(run.status, 1);
        QVERIFY(run.err.contains(QStringLiteral("Impossible route between points")));
    }

    void on_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        const QString places = QStringLiteral("22.2846809 114.1588 22.2988 114.1722 ");
        const auto row = [](const char *name, const QString &arguments, int status,
                            const char *message) {
            QTest::newRow(name) << arguments.split(u' ') << status << QString::fromUtf8(message);
        };
        row("written", places + QStringLiteral("--start 2030-01-01T08:00 --end 1893488400"), 0, "");
        row("start not chosen",
            QStringLiteral("0 114.1588 22.2988 114.1722 --start 2030-01-01T08:00 --end 1893488400"),
            1, "Please choose Start");
        row("end before start", places + QStringLiteral("--start 1893488400 --end 1893484800"), 1,
            "End Time must later than Start Time");
        row("bad time", places + QStringLiteral("--start tomorrow --end 1893488400"), 2,
            "tomorrow");
    }
    void on()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, message);
        const Run run = ctl(words("route on") + arguments);
        QCOMPARE(run.status, status);
        if (status != 0) {
            QVERIFY2(run.err.contains(message), qPrintable(run.err));
            QVERIFY(routeFile().isEmpty());
            return;
        }
        const QVariantMap record = routeFile();
        QCOMPARE(record.value(QStringLiteral("enable")).toString(), QStringLiteral("1"));
        QCOMPARE(record.value(QStringLiteral("start")).toString(),
                 QStringLiteral("1893484800.000000")); // 2030-01-01 08:00 in UTC
        QCOMPARE(record.value(QStringLiteral("end")).toString(),
                 QStringLiteral("1893488400.000000"));
        QCOMPARE(record.value(QStringLiteral("s")).toString(),
                 QStringLiteral("Queen's Road Central"));
        const QVariantList points = record.value(QStringLiteral("points")).toList();
        QCOMPARE(points.size(), 3);
        QCOMPARE(points[2].toMap().value(QStringLiteral("lng")).toDouble(), 114.1722);

        QCOMPARE(ctl(words("where --at 1893486600")).out, QStringLiteral("22.290000 114.160000\n"));
        const Run again = ctl(words("route on") + arguments);
        QCOMPARE(again.status, 1);
        QVERIFY(again.err.contains(
            QStringLiteral("Trekmime is working,please turn off the Trekmime first!")));
    }
};

TREKMIME_TEST(CtlRouteTest)
#include "CtlRouteTest.moc"
