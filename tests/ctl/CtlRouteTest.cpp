#include "CtlRun.h"
#include "StubHttpServer.h"
#include "TestMain.h"

#include "settings/PropertyList.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
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
        Run run = ctl({QStringLiteral("route"), QStringLiteral("plan"),
                       QStringLiteral("22.2846809"), QStringLiteral("114.1588"),
                       QStringLiteral("22.2988"), QStringLiteral("114.1722")});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, QStringLiteral("22.284681 114.158800\n22.290000 114.160000\n"
                                         "22.298800 114.172200\n"));
        QCOMPARE(m_server->requests().first().target,
                 QByteArray("/route/v1/driving/114.1588,22.2846809;114.1722,22.2988"
                            "?alternatives=true&overview=full&steps=false&geometries=polyline6"));

        run = ctl({QStringLiteral("route"), QStringLiteral("plan"), QStringLiteral("22.28"),
                   QStringLiteral("114.15"), QStringLiteral("22.29"), QStringLiteral("114.17"),
                   QStringLiteral("--json")});
        QCOMPARE(run.status, 0);
        const QJsonObject json = QJsonDocument::fromJson(run.out.toUtf8()).object();
        QCOMPARE(json.value(QLatin1String("distance")).toDouble(), 2150.5);
        QCOMPARE(json.value(QLatin1String("duration")).toDouble(), 301.2);
        const QJsonArray points = json.value(QLatin1String("points")).toArray();
        QCOMPARE(points.size(), 3);
        QCOMPARE(points[1].toObject().value(QLatin1String("lng")).toDouble(), 114.16);

        m_routeBody = R"({"code":"NoRoute","message":"Impossible route between points"})";
        run = ctl({QStringLiteral("route"), QStringLiteral("plan"), QStringLiteral("22.28"),
                   QStringLiteral("114.15"), QStringLiteral("22.29"), QStringLiteral("114.17")});
        QCOMPARE(run.status, 1);
        QVERIFY(run.err.contains(QStringLiteral("Impossible route between points")));
    }

    void on_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        const QStringList places{QStringLiteral("22.2846809"), QStringLiteral("114.1588"),
                                 QStringLiteral("22.2988"), QStringLiteral("114.1722")};
        const QStringList times{QStringLiteral("--start"), QStringLiteral("2030-01-01T08:00"),
                                QStringLiteral("--end"), QStringLiteral("1893488400")};
        QTest::newRow("written") << places + times << 0 << QString();
        QStringList equator = places;
        equator[0] = QStringLiteral("0");
        QTest::newRow("start not chosen")
            << equator + times << 1 << QStringLiteral("Please choose Start");
        QTest::newRow("end before start")
            << places + QStringList{QStringLiteral("--start"), QStringLiteral("1893488400"),
                                    QStringLiteral("--end"), QStringLiteral("1893484800")}
            << 1 << QStringLiteral("End Time must later than Start Time");
        QTest::newRow("bad time") << places + QStringList{QStringLiteral("--start"),
                                                          QStringLiteral("tomorrow"),
                                                          QStringLiteral("--end"),
                                                          QStringLiteral("1893488400")}
                                  << 2 << QStringLiteral("tomorrow");
    }
    void on()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, message);
        const Run run = ctl(QStringList{QStringLiteral("route"), QStringLiteral("on")} + arguments);
        QCOMPARE(run.status, status);
        if (status != 0) {
            QVERIFY2(run.err.contains(message), qPrintable(run.err));
            QVERIFY(routeFile().isEmpty()); // nothing written
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
        QCOMPARE(points[0].toMap().value(QStringLiteral("lat")).toDouble(), 22.284681);
        QCOMPARE(points[2].toMap().value(QStringLiteral("lng")).toDouble(), 114.1722);

        // where the preview stands half way, and a second "on" refused while on
        Run where =
            ctl({QStringLiteral("where"), QStringLiteral("--at"), QStringLiteral("1893486600")});
        QCOMPARE(where.out, QStringLiteral("22.290000 114.160000\n"));
        Run again = ctl(QStringList{QStringLiteral("route"), QStringLiteral("on")} + arguments);
        QCOMPARE(again.status, 1);
        QVERIFY(again.err.contains(
            QStringLiteral("Trekmime is working,please turn off the Trekmime first!")));
        QCOMPARE(ctl({QStringLiteral("route"), QStringLiteral("off")}).status, 0);
        QCOMPARE(routeFile().value(QStringLiteral("points")).toList(), points);
    }
};

TREKMIME_TEST(CtlRouteTest)
#include "CtlRouteTest.moc"
