#include "NmeaLog.h"
#include "StubHttpServer.h"
#include "TestMain.h"

#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

struct Run
{
    int status = -1;
    QString out;
    QString err;
};

const QByteArray googleResult = R"({"status":"OK","results":[{
  "formatted_address":"1600 Amphitheatre Pkwy, Mountain View, CA 94043, USA",
  "address_components":[
    {"long_name":"1600","short_name":"1600","types":["street_number"]},
    {"long_name":"Amphitheatre Pkwy","short_name":"Amphitheatre Pkwy","types":["route"]},
    {"long_name":"United States","short_name":"US","types":["country","political"]}],
  "geometry":{"location":{"lat":37.4224764,"lng":-122.0842499}}}]})";

} // namespace

// trekmime-ctl's location commands, run as a person runs them, against stub
// services on 127.0.0.1 and a replayed NMEA log.
class CtlLocationTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<StubHttpServer> m_server;
    QHash<QByteArray, StubHttpServer::Response> m_answers; // by path

    // Runs the tool while this process keeps serving the stub.
    Run ctl(const QStringList &arguments)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"),
                           m_dir->filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        process.setProcessEnvironment(environment);
        QEventLoop loop;
        connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
        QTimer::singleShot(10000, &loop, &QEventLoop::quit);
        process.start(QStringLiteral(TREKMIME_CTL),
                      QStringList{QStringLiteral("--preferences-dir"), m_dir->path(),
                                  QStringLiteral("--geocoding-url"), m_server->baseUrl().toString(),
                                  QStringLiteral("--nominatim-url"),
                                  m_server->baseUrl().toString()} +
                          arguments);
        if (process.state() != QProcess::NotRunning)
            loop.exec();
        return {process.state() == QProcess::NotRunning &&
                        process.exitStatus() == QProcess::NormalExit
                    ? process.exitCode()
                    : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QString writeLog(const QByteArray &text)
    {
        const QString path = m_dir->filePath(QStringLiteral("track.nmea"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            return QString();
        return path;
    }

    QByteArray lastTarget() const
    {
        return m_server->requests().isEmpty() ? QByteArray() : m_server->requests().last().target;
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_answers.clear();
        m_server = std::make_unique<StubHttpServer>([this](const StubHttpServer::Request &request) {
            const QByteArray path = request.target.left(request.target.indexOf('?'));
            return m_answers.value(path, StubHttpServer::Response{404, "text/plain", "none", {}});
        });
        QVERIFY(m_server->listen());
    }

    void geocodePrintsEachPlace()
    {
        m_answers.insert("/maps/api/geocode/json", {200, "application/json", googleResult, {}});
        const Run run = ctl({QStringLiteral("geocode"), QStringLiteral("a&b"), QStringLiteral("c"),
                             QStringLiteral("--region"), QStringLiteral("37.4,-122.1,1000")});
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out,
                 QStringLiteral("1600 Amphitheatre Pkwy\t1600 Amphitheatre Pkwy, Mountain View, "
                                "CA 94043, USA\t37.422476, -122.084250\n"));
        QVERIFY2(lastTarget().startsWith("/maps/api/geocode/json?address=a%26b%20c&bounds=37.39"),
                 lastTarget());
        QVERIFY2(lastTarget().endsWith("&sensor=true&language=en"), lastTarget());
    }

    void geocodeAsJson()
    {
        m_answers.insert("/maps/api/geocode/json", {200, "application/json", googleResult, {}});
        const Run run =
            ctl({QStringLiteral("--json"), QStringLiteral("geocode"), QStringLiteral("x")});
        QCOMPARE(run.status, 0);
        const QJsonArray places = QJsonDocument::fromJson(run.out.toUtf8()).array();
        QCOMPARE(places.size(), 1);
        const QJsonObject place = places.first().toObject();
        QCOMPARE(place.value(QStringLiteral("name")).toString(),
                 QStringLiteral("1600 Amphitheatre Pkwy"));
        QCOMPARE(place.value(QStringLiteral("ISOcountryCode")).toString(), QStringLiteral("US"));
        QVERIFY(place.value(QStringLiteral("locality")).isNull());
        QCOMPARE(place.value(QStringLiteral("latitude")).toDouble(), 37.4224764);
    }

    void reverseReportsTheServiceError()
    {
        m_answers.insert(
            "/maps/api/geocode/json",
            {200, "application/json", R"({"results":[],"status":"ZERO_RESULTS"})", {}});
        const Run run =
            ctl({QStringLiteral("reverse"), QStringLiteral("22.5"), QStringLiteral("114.1")});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.out, QString());
        QVERIFY2(run.err.contains(QStringLiteral("Zero results returned")), qPrintable(run.err));
        QVERIFY2(lastTarget().contains("latlng=22.500000%2C114.100000&"), lastTarget());
    }

    void lookupBothWays_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("out");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("address")
            << QStringList{QStringLiteral("lookup"), QStringLiteral("Futian"),
                           QStringLiteral("Shenzhen")}
            << 0 << QStringLiteral("22.543100 114.057900\n")
            << QByteArray("/search?format=jsonv2&q=Futian%20Shenzhen&accept-language=en");
        QTest::newRow("coordinate")
            << QStringList{QStringLiteral("lookup"), QStringLiteral("22.5"),
                           QStringLiteral("114.1")}
            << 0 << QStringLiteral("Nanshan, Shenzhen\n")
            << QByteArray("/reverse?format=jsonv2&lat=22.500000&lon=114.100000&accept-language=en");
        QTest::newRow("ocean")
            << QStringList{QStringLiteral("lookup"), QStringLiteral("0"), QStringLiteral("-160")}
            << 1 << QString()
            << QByteArray("/reverse?format=jsonv2&lat=0.000000&lon=-160.000000&accept-language=en");
    }
    void lookupBothWays()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, out);
        QFETCH(QByteArray, target);
        m_answers.insert("/search",
                         {200,
                          "application/json",
                          R"([{"lat":"22.5431","lon":"114.0579","display_name":"Futian"}])",
                          {}});
        const bool ocean = arguments.last() == QLatin1String("-160");
        m_answers.insert(
            "/reverse",
            {200,
             "application/json",
             ocean
                 ? QByteArray(R"({"error":"Unable to geocode"})")
                 : QByteArray(R"({"lat":"22.5","lon":"114.1","display_name":"Nanshan, Shenzhen"})"),
             {}});
        const Run run = ctl(arguments);
        QCOMPARE(run.status, status);
        QCOMPARE(run.out, out);
        QCOMPARE(lastTarget(), target);
        if (status)
            QVERIFY2(run.err.contains(QStringLiteral("Unable to geocode")), qPrintable(run.err));
    }

    void positionReplaysTheLog_data()
    {
        QTest::addColumn<bool>("globalOption");
        QTest::newRow("command option") << false;
        QTest::newRow("global option") << true;
    }
    void positionReplaysTheLog()
    {
        QFETCH(bool, globalOption);
        const QString log = writeLog(NmeaLog::log(22.5, 114.1));
        const QStringList arguments =
            globalOption
                ? QStringList{QStringLiteral("--nmea-file"), log, QStringLiteral("position")}
                : QStringList{QStringLiteral("position"), QStringLiteral("--nmea-file"), log};
        const Run run = ctl(arguments);
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, QStringLiteral("22.500000 114.100000\n"));
    }

    void positionWithoutAFixTimesOut()
    {
        const QString log = writeLog(NmeaLog::log(22.5, 114.1, 2, false));
        const Run run = ctl({QStringLiteral("position"), QStringLiteral("--nmea-file"), log,
                             QStringLiteral("--timeout"), QStringLiteral("0.3")});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.contains(QStringLiteral("no position within 0.3 seconds")),
                 qPrintable(run.err));
    }

    void badInput_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("geocode without address") << QStringList{QStringLiteral("geocode")};
        QTest::newRow("geocode bad region")
            << QStringList{QStringLiteral("geocode"), QStringLiteral("x"),
                           QStringLiteral("--region"), QStringLiteral("1,2")};
        QTest::newRow("reverse not a number")
            << QStringList{QStringLiteral("reverse"), QStringLiteral("abc"), QStringLiteral("1")};
        QTest::newRow("reverse out of range")
            << QStringList{QStringLiteral("reverse"), QStringLiteral("91"), QStringLiteral("1")};
        QTest::newRow("lookup nothing") << QStringList{QStringLiteral("lookup")};
        QTest::newRow("lookup latitude out of range")
            << QStringList{QStringLiteral("lookup"), QStringLiteral("95"), QStringLiteral("10")};
        QTest::newRow("position bad timeout") << QStringList{
            QStringLiteral("position"), QStringLiteral("--timeout"), QStringLiteral("soon")};
        QTest::newRow("position missing log")
            << QStringList{QStringLiteral("position"), QStringLiteral("--nmea-file"),
                           QStringLiteral("/nonexistent/track.nmea")};
    }
    void badInput()
    {
        QFETCH(QStringList, arguments);
        const Run run = ctl(arguments);
        QCOMPARE(run.status, 2);
        QVERIFY(!run.err.isEmpty());
        QCOMPARE(m_server->requests().size(), 0);
    }
};

TREKMIME_TEST(CtlLocationTest)
#include "CtlLocationTest.moc"
