#include "NmeaLog.h"
#include "TestMain.h"
#include "ctl/CtlRun.h"

#include "routing/RoutePreview.h"
#include "settings/TMPreferenceUtil.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>

#include <memory>

namespace {

// a port nobody listens on, just now
quint16 freePort()
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost, 0) ? probe.serverPort() : 0;
}

// Starts `program` and kills it when the test is over.
std::unique_ptr<QProcess, void (*)(QProcess *)> start(const QString &program,
                                                      const QStringList &arguments)
{
    std::unique_ptr<QProcess, void (*)(QProcess *)> process(new QProcess, [](QProcess *p) {
        p->kill();
        p->waitForFinished();
        delete p;
    });
    process->start(program, arguments);
    return process;
}

} // namespace

// trekmime-feed run as a person runs it, and read by the real receivers.
class FeedProgramTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;

    QStringList prefs() const { return {QStringLiteral("--preferences-dir"), m_dir->path()}; }
    Run feed(const QStringList &arguments)
    {
        return runProgram(QStringLiteral(TREKMIME_FEED), m_dir->path(), prefs() + arguments);
    }
    // A feed serving on a free loopback port; answers the port.
    quint16 serve(std::unique_ptr<QProcess, void (*)(QProcess *)> &process)
    {
        process =
            start(QStringLiteral(TREKMIME_FEED),
                  prefs() + QStringList{QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0")});
        QByteArray err;
        if (!QTest::qWaitFor(
                [&] { return (err += process->readAllStandardError()).contains('\n'); }, 5000))
            return 0;
        return err.mid(err.lastIndexOf(':') + 1).trimmed().toUShort();
    }

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void once_data()
    {
        QTest::addColumn<QString>("ctl");
        QTest::addColumn<QString>("arguments"); // PORT: a port in use; FILE: a plain file
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("out");
        QTest::addColumn<QString>("err");
        QTest::newRow("spot on") << "spot on 22.5431 114.0579"
                                 << "--once" << 0 << ",2232.586000,N,11403.474000,E,"
                                 << "";
        QTest::newRow("spot off") << "spot off"
                                  << "--once" << 1 << ",V,"
                                  << "";
        const char *const taken = "trekmime-feed: cannot listen on ";
        const struct
        {
            const char *name, *arguments, *err;
        } refused[] = {
            {"folder missing", "--preferences-dir /nonexistent/prefs",
             "trekmime-feed: no preferences folder /nonexistent/prefs"},
            {"port in use", "--listen 127.0.0.1:PORT", taken},
            {"socket not writable", "--socket /proc/trekmime.sock", taken},
            {"not a socket", "--socket FILE", "trekmime-feed: FILE exists and is not a socket"},
            {"not an address", "--listen localhost", "trekmime-feed: --listen"},
        };
        for (const auto &row : refused)
            QTest::newRow(row.name) << "status" << row.arguments << 2 << "" << row.err;
    }
    void once()
    {
        QFETCH(QString, ctl);
        QFETCH(QString, arguments);
        QFETCH(int, status);
        QFETCH(QString, out);
        QFETCH(QString, err);
        QCOMPARE(runCtl(m_dir->path(), prefs() + words(qPrintable(ctl))).status, 0);
        QTcpServer occupied;
        QVERIFY(occupied.listen(QHostAddress::LocalHost, 0));
        const QString file = m_dir->filePath(QStringLiteral("plain"));
        QFile(file).open(QIODevice::WriteOnly);
        arguments.replace(QStringLiteral("PORT"), QString::number(occupied.serverPort()))
            .replace(QStringLiteral("FILE"), file);
        err.replace(QStringLiteral("FILE"), file);

        const Run run = feed(words(qPrintable(arguments)));
        QCOMPARE(run.status, status);
        QVERIFY2(run.out.contains(out), qPrintable(run.out));
        QVERIFY2(run.err.left(err.size()) == err && run.err.count(u'\n') == (err.isEmpty() ? 0 : 1),
                 qPrintable(run.err));
        QVERIFY(QFileInfo(file).isFile());
        // three sentences, each with its checksum as an independent sum gives it
        const QStringList lines = run.out.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), status == 2 ? 0 : 3);
        for (const QString &line : lines)
            QCOMPARE(NmeaLog::sentence(line.mid(1, line.size() - 4).toLatin1()),
                     line.toLatin1() + "\r\n");
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
        const QString gpsd =
            QStandardPaths::findExecutable(QStringLiteral("gpsd"), words("/usr/sbin /sbin"));
        if (gpsd.isEmpty() || QStandardPaths::findExecutable(QStringLiteral("gpspipe")).isEmpty())
            QSKIP("gpsd and gpspipe are not installed (Debian: gpsd, gpsd-clients)");
        TMPreferenceUtil store{PreferenceFiles(m_dir->path())};
        // a point a second, so that each report has its own
        RouteRecord trip;
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        QList<RoutePoint> points;
        for (int i = 0; i < 3600; ++i)
            points.append(RoutePoint(22.0 + i * 1e-4, 114.0 + i * 1e-4));
        trip.setPoints(points);
        trip.setEnabled(true);
        trip.setStart(double(now - 60));
        trip.setEnd(double(now - 60 + 3600));
        QVERIFY(moving ? store.writeRoutePreference(trip)
                       : store.setLocationEnable(true, 22.5431, 114.0579));

        std::unique_ptr<QProcess, void (*)(QProcess *)> server(nullptr, nullptr),
            receiver(nullptr, nullptr);
        const quint16 feedPort = serve(server);
        const QString gpsdPort = QString::number(freePort());
        receiver =
            start(gpsd, words("-N -n -S")
                            << gpsdPort << QStringLiteral("tcp://127.0.0.1:%1").arg(feedPort));
        QVERIFY(QTest::qWaitFor([&] { return receiver->state() == QProcess::Running; }, 5000));
        QTest::qWait(300);
        const Run pipe = runProgram(QStringLiteral("gpspipe"), m_dir->path(),
                                    words("-w -n 8") << QStringLiteral("127.0.0.1:") + gpsdPort);
        int reports = 0;
        for (const QString &line : pipe.out.split(u'\n')) {
            const QJsonObject tpv = QJsonDocument::fromJson(line.toUtf8()).object();
            if (tpv.value(QLatin1String("class")) != QLatin1String("TPV") ||
                !tpv.contains(QLatin1String("lat")))
                continue;
            const qint32 at =
                qint32(QDateTime::fromString(tpv.value(QLatin1String("time")).toString(),
                                             Qt::ISODateWithMs)
                           .toSecsSinceEpoch());
            const Coordinate expected =
                moving ? RoutePreview::stepAt(trip, at).coordinate : Coordinate{22.5431, 114.0579};
            QCOMPARE(qRound64(tpv.value(QLatin1String("lat")).toDouble() * 1e6),
                     qRound64(expected.latitude * 1e6));
            QCOMPARE(qRound64(tpv.value(QLatin1String("lon")).toDouble() * 1e6),
                     qRound64(expected.longitude * 1e6));
            QCOMPARE(tpv.value(QLatin1String("speed")).toDouble() > 10.0, moving);
            ++reports;
        }
        QVERIFY2(reports >= 2, qPrintable(pipe.out + pipe.err));
    }

    // Qt Positioning's NMEA plugin, as any Qt application would use it.
    void qtPositioning()
    {
        QCOMPARE(runCtl(m_dir->path(), prefs() + words("spot on 22.5431 114.0579")).status, 0);
        std::unique_ptr<QProcess, void (*)(QProcess *)> server(nullptr, nullptr);
        const QString socket = QStringLiteral("127.0.0.1:%1").arg(serve(server));
        const auto position = [&](const char *timeout) {
            return runCtl(m_dir->path(), prefs() + words("position --nmea-socket")
                                             << socket << QStringLiteral("--timeout")
                                             << QString::fromLatin1(timeout));
        };
        const Run run = position("5");
        QVERIFY2(run.out == QStringLiteral("22.543100 114.057900\n"), qPrintable(run.err));
        QCOMPARE(runCtl(m_dir->path(), prefs() + words("spot off")).status, 0);
        QCOMPARE(position("1.5").status, 1);
    }
};

TREKMIME_TEST(FeedProgramTest)
#include "FeedProgramTest.moc"
