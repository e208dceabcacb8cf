#include "TestMain.h"

#include "feed/FeedSettings.h"
#include "feed/NmeaServer.h"
#include "settings/TMPreferenceUtil.h"

#include <QLocalSocket>
#include <QTcpSocket>
#include <QTemporaryDir>

// The feed's parts in one process: the sentences, where the settings put
// the device, the watch on the folder, and the server's slow clients.
class FeedTest : public QObject
{
    Q_OBJECT

    static constexpr qint64 Start = 1000000000; // the test trip's start, in seconds

private slots:
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
        QTemporaryDir dir;
        TMPreferenceUtil store{PreferenceFiles(dir.path())};
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
        QTemporaryDir dir;
        TMPreferenceUtil store{PreferenceFiles(dir.path())};
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
        QTemporaryDir dir;
        NmeaServer server;
        server.setMaxPending(1 << 20);
        QString error;
        const QString path = dir.filePath(u"nmea.sock"_s);
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
};

TREKMIME_TEST(FeedTest)
#include "FeedTest.moc"
