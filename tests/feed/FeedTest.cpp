#include "TestMain.h"
#include "ctl/CtlRun.h"

#include "feed/FeedSettings.h"
#include "feed/NmeaServer.h"
#include "routing/RoutePreview.h"
#include "settings/TMPreferenceUtil.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <memory>

// The feed's parts in one process (the sentences, where the settings put the device, the
// watch on the folder, the server's slow clients), then trekmime-feed run as a person runs
// it and read by the real receivers.
class FeedTest : public QObject
{
    Q_OBJECT

    static constexpr qint64 Start = 1000000000; // the test trip's start, in seconds
    std::unique_ptr<QTemporaryDir> m_dir;
    QProcess m_feed, m_gpsd; // killed after each test

    QStringList prefs(const char *more = "") const
    {
        return QStringList{u"--preferences-dir"_s, m_dir->path()} + words(more);
    }
    // A feed serving on a free loopback port; answers the port.
    quint16 serve()
    {
        m_feed.start(QStringLiteral(TREKMIME_FEED), prefs("--listen 127.0.0.1:0"));
        QByteArray err;
        if (!QTest::qWaitFor([&] { return (err += m_feed.readAllStandardError()).contains('\n'); }))
            return 0;
        return err.mid(err.lastIndexOf(':') + 1).trimmed().toUShort();
    }

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }
    void cleanup()
    {
        for (QProcess *process : {&m_feed, &m_gpsd}) {
            process->kill();
            process->waitForFinished();
        }
    }

    void sentences_data()
    {
        QTest::addColumn<qint64>("msecs");
        QTest::addColumn<std::optional<FeedFix>>("fix");
        QTest::addColumn<QByteArray>("expected");
        // 2026-11-22 12:35:19.5 UTC
        addRow("fixed place", qint64(1795350919500), std::optional(FeedFix{{22.5431, 114.0579}}),
               QByteArray(
                   "$GPGGA,123519.50,2232.586000,N,11403.474000,E,1,08,1.0,0.0,M,0.0,M,,*57\r\n"
                   "$GPRMC,123519.50,A,2232.586000,N,11403.474000,E,0.000,0.00,221126,,,A*68\r\n"
                   "$GPVTG,0.00,T,,M,0.000,N,0.000,K,A*3D\r\n"));
        // the last millisecond of a leap day; minutes that round up to 60
        // carry into the degrees
        addRow("south-west, moving", qint64(951868799999),
               std::optional(FeedFix{{-33.8688, -179.9999999999}, 10.0, 270.0}),
               QByteArray(
                   "$GPGGA,235959.99,3352.128000,S,18000.000000,W,1,08,1.0,0.0,M,0.0,M,,*5E\r\n"
                   "$GPRMC,235959.99,A,3352.128000,S,18000.000000,W,19.438,270.00,290200,,,A*5E\r\n"
                   "$GPVTG,270.00,T,,M,19.438,N,36.000,K,A*3A\r\n"));
        addRow("no fix", qint64(1795350919500), std::optional<FeedFix>(),
               QByteArray("$GPGGA,,,,,,0,00,99.99,,,,,,*48\r\n"
                          "$GPRMC,,V,,,,,,,,,,N*53\r\n"
                          "$GPVTG,,T,,M,,N,,K,N*2C\r\n"));
    }
    void sentences()
    {
        QFETCH(qint64, msecs);
        QFETCH(std::optional<FeedFix>, fix);
        QFETCH(QByteArray, expected);
        QCOMPARE(NmeaSentences::forMoment(msecs, fix), expected);
    }

    void position_data()
    {
        QTest::addColumn<int>("mode"); // 0 route, 1 fixed place
        QTest::addColumn<bool>("spot");
        QTest::addColumn<int>("route");              // 0 off, 1 north, 2 east, 3 on without points
        QTest::addColumn<int>("at");                 // seconds after the trip's start
        QTest::addColumn<QList<double>>("expected"); // lat, lng, m/s, course; empty: none
        using L = QList<double>;
        const double step = 111.195; // metres in a thousandth of a degree
        addRow("nothing on", 0, false, 0, 0, L{});
        addRow("place, route mode", 0, true, 0, 0, L{1, 2, 0, 0});
        addRow("both on, route mode", 0, true, 1, 100, L{22.1, 114, step, 0});
        addRow("both on, place mode", 1, true, 1, 100, L{1, 2, 0, 0});
        addRow("trip, place mode", 1, false, 2, 500, L{0, 100.5, step, 90});
        addRow("before the start", 0, false, 1, -5, L{22, 114, 0, 0});
        addRow("last second", 0, false, 1, 999, L{22.999, 114, 0, 0});
        addRow("no points", 0, false, 3, 0, L{});
    }
    void position()
    {
        QFETCH(int, mode);
        QFETCH(bool, spot);
        QFETCH(int, route);
        QFETCH(int, at);
        QFETCH(QList<double>, expected);
        TMPreferenceUtil store{PreferenceFiles(m_dir->path())};
        QVERIFY(store.writeMode(MasterRecord::Mode(mode)));
        QVERIFY(store.setLocationEnable(spot, 1.0, 2.0));
        // 1000 points, one a second, a thousandth of a degree apart, northward
        // up a meridian or eastward along the equator
        QList<RoutePoint> points;
        for (int i = 0; i < 1000 && route != 3; ++i)
            points.append(route == 2 ? RoutePoint(0.0, 100.0 + i * 0.001)
                                     : RoutePoint(22.0 + i * 0.001, 114.0));
        RouteRecord record;
        record.setEnabled(route != 0);
        record.setStart(double(Start));
        record.setEnd(double(Start + 1000));
        record.setPoints(points);
        QVERIFY(store.writeRoutePreference(record));

        const std::optional<FeedFix> fix = FeedSettings(store).fixAt((Start + at) * 1000 + 999);
        QCOMPARE(fix.has_value(), !expected.isEmpty());
        if (!fix)
            return;
        const QList<double> actual{fix->coordinate.latitude, fix->coordinate.longitude,
                                   fix->speedMetersPerSecond, fix->courseDegrees};
        for (int i = 0; i < 4; ++i)
            QVERIFY2(qAbs(actual[i] - expected[i]) < 1e-3,
                     qPrintable(QString::number(actual[i], 'f', 6)));
    }

    // The writers replace a file whole; the folder watch must see it within
    // a second and read only that file.
    void changedFile()
    {
        TMPreferenceUtil store{PreferenceFiles(m_dir->path())};
        FeedSettings settings(store);
        QVERIFY(settings.watch());
        const int reads = settings.reads();
        QVERIFY(!settings.fixAt(0));
        QVERIFY(store.setLocationEnable(true, 22.5431, 114.0579));
        QTRY_VERIFY_WITH_TIMEOUT(settings.fixAt(0).has_value(), 1000);
        QCOMPARE(settings.reads(), reads + 1);
        QVERIFY(store.addFavorite(FavoriteEntry::make(u"x"_s, 1.0, 2.0)));
        QTest::qWait(200);
        QCOMPARE(settings.reads(), reads + 1);
    }

    void slowClient_data()
    {
        QTest::addColumn<bool>("local");
        addRow("tcp", false);
        addRow("unix socket", true);
    }
    // One client stops reading: it is dropped, and the other gets every byte.
    void slowClient()
    {
        QFETCH(bool, local);
        NmeaServer server;
        server.setMaxPending(1 << 20);
        QString error;
        const QString path = m_dir->filePath(u"nmea.sock"_s);
        QVERIFY(local ? server.listenLocal(path, &error)
                      : server.listenTcp(QHostAddress::LocalHost, 0, &error));
        const quint16 port = server.addresses().first().section(u':', -1).toUShort();
        // a read buffer of one byte: Qt stops taking data from the system
        auto connectClient = [&](qint64 readBuffer) -> QIODevice * {
            if (local) {
                auto *socket = new QLocalSocket(&server);
                socket->setReadBufferSize(readBuffer);
                socket->connectToServer(path);
                return socket;
            }
            auto *socket = new QTcpSocket(&server);
            socket->setReadBufferSize(readBuffer);
            socket->connectToHost(QHostAddress::LocalHost, port);
            return socket;
        };
        connectClient(1);
        QIODevice *reader = connectClient(0);
        QTRY_COMPARE(server.clientCount(), 2);
        qint64 received = 0;
        connect(reader, &QIODevice::readyRead, reader,
                [&] { received += reader->readAll().size(); });
        int dropped = 0;
        connect(&server, &NmeaServer::clientDropped, this, [&] { ++dropped; });
        const QByteArray chunk(64 * 1024, 'x');
        qint64 sent = 0;
        for (int i = 0; i < 2000 && dropped == 0; ++i) {
            server.broadcast(chunk);
            sent += chunk.size();
            QTRY_COMPARE(received, sent);
        }
        QCOMPARE(dropped, 1);
        QCOMPARE(server.clientCount(), 1);
        server.broadcast(chunk);
        QTRY_COMPARE(received, sent + chunk.size());
    }

    void once_data()
    {
        QTest::addColumn<QString>("ctl");
        QTest::addColumn<QString>("arguments"); // PORT: a port in use; FILE: a plain file
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("out");
        QTest::addColumn<QString>("err");
        addRow("spot on", "spot on 22.5431 114.0579", "--once", 0, ",2232.586000,N,11403.474000,E,",
               "");
        addRow("spot off", "spot off", "--once", 1, ",V,", "");
        const char *const taken = "trekmime-feed: cannot listen on ";
        addRow("folder missing", "status", "--preferences-dir /nonexistent/prefs", 2, "",
               "trekmime-feed: no preferences folder /nonexistent/prefs");
        addRow("port in use", "status", "--listen 127.0.0.1:PORT", 2, "", taken);
        addRow("socket not writable", "status", "--socket /proc/trekmime.sock", 2, "", taken);
        addRow("not a socket", "status", "--socket FILE", 2, "",
               "trekmime-feed: FILE exists and is not a socket");
        addRow("not an address", "status", "--listen localhost", 2, "", "trekmime-feed: --listen");
    }
    void once()
    {
        QFETCH(QString, ctl);
        QFETCH(QString, arguments);
        QFETCH(int, status);
        QFETCH(QString, out);
        QFETCH(QString, err);
        QCOMPARE(runCtl(m_dir->path(), prefs(qPrintable(ctl))).status, 0);
        QTcpServer occupied;
        QVERIFY(occupied.listen(QHostAddress::LocalHost, 0));
        const QString file = m_dir->filePath(u"plain"_s);
        QFile(file).open(QIODevice::WriteOnly);
        arguments.replace(u"PORT"_s, QString::number(occupied.serverPort()))
            .replace(u"FILE"_s, file);
        err.replace(u"FILE"_s, file);

        const Run run =
            runProgram(QStringLiteral(TREKMIME_FEED), m_dir->path(), prefs(qPrintable(arguments)));
        QCOMPARE(run.status, status);
        QVERIFY2(run.out.contains(out), qPrintable(run.out));
        QVERIFY2(run.err.left(err.size()) == err && run.err.count(u'\n') == (err.isEmpty() ? 0 : 1),
                 qPrintable(run.err));
        QVERIFY(QFileInfo(file).isFile());
        // their checksums are checked here by FeedTest and by gpsd below
        QCOMPARE(run.out.count(u"*"_s), status == 2 ? 0 : 3);
    }

    // gpsd reads the feed as a network receiver and reports what it says.
    void gpsd_data()
    {
        QTest::addColumn<bool>("moving");
        QTest::newRow("fixed place") << false;
        QTest::newRow("running trip") << true;
    }
    void gpsd()
    {
        QFETCH(bool, moving);
        const QString gpsd = QStandardPaths::findExecutable(u"gpsd"_s, words("/usr/sbin /sbin"));
        if (gpsd.isEmpty() || QStandardPaths::findExecutable(u"gpspipe"_s).isEmpty())
            QSKIP("gpsd and gpspipe are not installed (Debian: gpsd, gpsd-clients)");
        TMPreferenceUtil store{PreferenceFiles(m_dir->path())};
        // a point a second, so that each report has its own
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        QList<RoutePoint> points;
        for (int i = 0; i < 3600; ++i)
            points.append(RoutePoint(22.0 + i * 1e-4, 114.0 + i * 1e-4));
        RouteRecord trip;
        trip.setPoints(points);
        trip.setEnabled(true);
        trip.setStart(double(now - 60));
        trip.setEnd(double(now - 60 + 3600));
        QVERIFY(moving ? store.writeRoutePreference(trip)
                       : store.setLocationEnable(true, 22.5431, 114.0579));

        const quint16 feedPort = serve();
        QTcpServer probe; // a free port for gpsd
        QVERIFY(probe.listen(QHostAddress::LocalHost, 0));
        const QString gpsdPort = QString::number(probe.serverPort());
        probe.close();
        m_gpsd.start(gpsd, words("-N -n -S") << gpsdPort << u"tcp://127.0.0.1:%1"_s.arg(feedPort));
        QTest::qWait(300);
        const Run pipe =
            runProgram(u"gpspipe"_s, m_dir->path(), words("-w -n 8") << u"127.0.0.1:"_s + gpsdPort);
        int reports = 0;
        for (const QString &line : pipe.out.split(u'\n')) {
            const QVariantMap tpv = QJsonDocument::fromJson(line.toUtf8()).toVariant().toMap();
            if (tpv.value(u"class"_s) != u"TPV"_s || !tpv.contains(u"lat"_s))
                continue;
            const QString time = tpv.value(u"time"_s).toString();
            const qint32 at =
                qint32(QDateTime::fromString(time, Qt::ISODateWithMs).toSecsSinceEpoch());
            const Coordinate expected =
                moving ? RoutePreview::stepAt(trip, at).coordinate : Coordinate{22.5431, 114.0579};
            const auto micro = [&](const char *key) {
                return qRound64(tpv.value(QLatin1String(key)).toDouble() * 1e6);
            };
            QCOMPARE(micro("lat"), qRound64(expected.latitude * 1e6));
            QCOMPARE(micro("lon"), qRound64(expected.longitude * 1e6));
            QCOMPARE(micro("speed") > 10000000, moving);
            ++reports;
        }
        QVERIFY2(reports >= 2, qPrintable(pipe.out + pipe.err));
    }

    // Qt Positioning's NMEA plugin, as any Qt application would use it.
    void qtPositioning()
    {
        QCOMPARE(runCtl(m_dir->path(), prefs("spot on 22.5431 114.0579")).status, 0);
        const QString server = u"127.0.0.1:%1"_s.arg(serve());
        const auto position = [&](const char *timeout) {
            return runCtl(m_dir->path(), prefs("position --nmea-socket")
                                             << server << u"--timeout"_s
                                             << QString::fromLatin1(timeout));
        };
        QCOMPARE(position("5").out, u"22.543100 114.057900\n"_s);
        QCOMPARE(runCtl(m_dir->path(), prefs("spot off")).status, 0);
        QCOMPARE(position("1.5").status, 1);
    }
};

TREKMIME_TEST(FeedTest)
#include "FeedTest.moc"
