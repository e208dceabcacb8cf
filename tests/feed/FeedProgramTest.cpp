#include "TestMain.h"
#include "ctl/CtlRun.h"

#include "routing/RoutePreview.h"
#include "settings/TMPreferenceUtil.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>

#include <memory>

// trekmime-feed run as a person runs it, and read by the real receivers.
class FeedProgramTest : public QObject
{
    Q_OBJECT

private:
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

TREKMIME_TEST(FeedProgramTest)
#include "FeedProgramTest.moc"
