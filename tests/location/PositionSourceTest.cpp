#include "NmeaLog.h"
#include "TestMain.h"
#include "TestServices.h"

#include "location/ConfiguredPositionSourceFactory.h"
#include "location/Location.h"
#include "location/QtPositionSource.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

// A Qt Positioning source whose user refuses this application access, each
// time it is started.
class DeniedSource : public QGeoPositionInfoSource
{
public:
    DeniedSource() : QGeoPositionInfoSource(nullptr) {}
    QGeoPositionInfo lastKnownPosition(bool) const override { return {}; }
    PositioningMethods supportedPositioningMethods() const override
    {
        return AllPositioningMethods;
    }
    int minimumUpdateInterval() const override { return 0; }
    Error error() const override { return m_error; }
    void startUpdates() override
    {
        QTimer::singleShot(0, this, [this] {
            m_error = AccessError;
            emit errorOccurred(m_error);
        });
    }
    void stopUpdates() override {}
    void requestUpdate(int) override {}

private:
    Error m_error = NoError;
};

class DeniedSources : public PositionSourceFactory
{
public:
    PositionSource *create(QObject *parent) override
    {
        return new QtPositionSource(new DeniedSource, parent);
    }
};

} // namespace

// The Qt Positioning sources: how their reports become fixes and failures,
// and the NMEA replay.
class PositionSourceTest : public QObject
{
    Q_OBJECT

private slots:
    void fixes_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("accuracy"); // NaN: none given
        QTest::addColumn<bool>("valid");
        QTest::addColumn<double>("horizontalAccuracy");
        QTest::newRow("with accuracy") << 22.5 << 12.0 << true << 12.0;
        QTest::newRow("no accuracy given") << 22.5 << qQNaN() << true << 0.0;
        QTest::newRow("no coordinate") << qQNaN() << 5.0 << false << -1.0;
    }
    void fixes()
    {
        QFETCH(double, latitude);
        QFETCH(double, accuracy);
        QFETCH(bool, valid);
        QFETCH(double, horizontalAccuracy);
        QGeoPositionInfo info(QGeoCoordinate(latitude, 114.1), QDateTime::currentDateTimeUtc());
        if (!qIsNaN(accuracy))
            info.setAttribute(QGeoPositionInfo::HorizontalAccuracy, accuracy);
        const PositionFix fix = QtPositionSource::fixFrom(info);
        QCOMPARE(fix.isValid(), valid);
        QCOMPARE(fix.horizontalAccuracy, horizontalAccuracy);
        if (valid)
            QCOMPARE(fix.coordinate, (Coordinate{22.5, 114.1}));
    }

    void onlyAccessErrorsMeanDenied()
    {
        QCOMPARE(QtPositionSource::codeFor(QGeoPositionInfoSource::AccessError), 1);
        QCOMPARE(QtPositionSource::codeFor(QGeoPositionInfoSource::ClosedError), 0);
        QCOMPARE(QtPositionSource::codeFor(QGeoPositionInfoSource::UnknownSourceError), 0);
    }

    void nmeaReplay_data()
    {
        QTest::addColumn<bool>("logExists");
        QTest::newRow("log replayed") << true;
        QTest::newRow("missing log: no service") << false;
    }
    void nmeaReplay()
    {
        QFETCH(bool, logExists);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("track.nmea"));
        QFile file(path);
        if (logExists)
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(NmeaLog::log(22.5, -114.1)) > 0);
        file.close();
        Configuration configuration;
        configuration.nmeaFile = path; // past the start-up check, the file may still go
        ConfiguredPositionSourceFactory factory(configuration);
        QObject owner;
        PositionSource *source = factory.create(&owner);
        QCOMPARE(source->locationServicesEnabled(), logExists);
        QSignalSpy fixes(source, &PositionSource::locationUpdated);
        QSignalSpy failures(source, &PositionSource::failed);
        source->startUpdatingLocation();
        QVERIFY(failures.isEmpty()); // reported later, as real sources do
        QTRY_VERIFY_WITH_TIMEOUT(!fixes.isEmpty() || !failures.isEmpty(), 1000);
        if (!logExists) {
            QCOMPARE(failures.first().first().toInt(), 0);
            QVERIFY(!failures.first().last().toString().isEmpty());
            return;
        }
        const PositionFix fix = fixes.first().first().value<PositionFix>();
        QVERIFY(fix.isValid());
        QVERIFY(qAbs(fix.coordinate.latitude - 22.5) < 1e-6);
        QVERIFY(qAbs(fix.coordinate.longitude + 114.1) < 1e-6);
        source->stopUpdatingLocation();
        const qsizetype seen = fixes.size();
        QTest::qWait(50);
        QCOMPARE(fixes.size(), seen);
    }

    void accessDeniedStaysDeniedOnEveryRequest()
    {
        TestServices world;
        DeniedSources sources;
        Location location(&sources, nullptr, &world.alerts);
        QStringList failures;
        for (int request = 1; request <= 2; ++request) {
            location.startLocation(
                this, [&](const PositionAnswer &answer) { failures.append(answer.error); });
            QTRY_COMPARE_WITH_TIMEOUT(failures.size(), request, 1000);
        }
        const QString denied = QtPositionSource::describe(QGeoPositionInfoSource::AccessError);
        QCOMPARE(failures, (QStringList{denied, denied}));
        QCOMPARE(world.alerts.alerts().size(), 2);
        for (const Alert &alert : world.alerts.alerts())
            QCOMPARE(alert.title, QStringLiteral("定位失败"));
    }
};

TREKMIME_TEST(PositionSourceTest)
#include "PositionSourceTest.moc"
