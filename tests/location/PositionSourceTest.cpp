#include "NmeaLog.h"
#include "TestMain.h"

#include "location/ConfiguredPositionSourceFactory.h"
#include "location/QtPositionSource.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

// A Qt Positioning source that fails with the same error each time it is started.
class FailingSource : public QGeoPositionInfoSource
{
public:
    explicit FailingSource(Error error) : QGeoPositionInfoSource(nullptr), m_failure(error) {}
    QGeoPositionInfo lastKnownPosition(bool) const override { return {}; }
    PositioningMethods supportedPositioningMethods() const override { return {}; }
    int minimumUpdateInterval() const override { return 0; }
    Error error() const override { return m_error; }
    void startUpdates() override
    {
        QTimer::singleShot(0, this, [this] { emit errorOccurred(m_error = m_failure); });
    }
    void stopUpdates() override {}
    void requestUpdate(int) override {}

private:
    Error m_failure;
    Error m_error = NoError;
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
        QTest::addColumn<double>("accuracy");           // NaN: none given
        QTest::addColumn<double>("horizontalAccuracy"); // -1: no fix
        QTest::newRow("with accuracy") << 22.5 << 12.0 << 12.0;
        QTest::newRow("no accuracy given") << 22.5 << qQNaN() << 0.0;
        QTest::newRow("no coordinate") << qQNaN() << 5.0 << -1.0;
    }
    void fixes()
    {
        QFETCH(double, latitude);
        QFETCH(double, accuracy);
        QFETCH(double, horizontalAccuracy);
        QGeoPositionInfo info(QGeoCoordinate(latitude, 114.1), QDateTime::currentDateTimeUtc());
        if (!qIsNaN(accuracy))
            info.setAttribute(QGeoPositionInfo::HorizontalAccuracy, accuracy);
        const PositionFix fix = QtPositionSource::fixFrom(info);
        QCOMPARE(fix.isValid(), horizontalAccuracy >= 0);
        QCOMPARE(fix.horizontalAccuracy, horizontalAccuracy);
        if (fix.isValid())
            QCOMPARE(fix.coordinate, (Coordinate{22.5, 114.1}));
    }

    void failuresOnEveryStart_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("code");
        QTest::addColumn<bool>("enabledAfter"); // a denied source is not switched off
        QTest::newRow("access denied") << int(QGeoPositionInfoSource::AccessError)
                                       << int(PositionSource::AccessDenied) << true;
        QTest::newRow("closed") << int(QGeoPositionInfoSource::ClosedError)
                                << int(PositionSource::UnknownError) << false;
        QTest::newRow("timeout") << int(QGeoPositionInfoSource::UpdateTimeoutError)
                                 << int(PositionSource::UnknownError) << true;
        QTest::newRow("unknown") << int(QGeoPositionInfoSource::UnknownSourceError)
                                 << int(PositionSource::UnknownError) << true;
    }
    void failuresOnEveryStart()
    {
        QFETCH(int, error);
        QFETCH(int, code);
        QFETCH(bool, enabledAfter);
        QtPositionSource source(new FailingSource(QGeoPositionInfoSource::Error(error)));
        QSignalSpy failures(&source, &PositionSource::failed);
        for (int start = 1; start <= 2; ++start) {
            source.startUpdatingLocation();
            QTRY_COMPARE_WITH_TIMEOUT(failures.size(), start, 1000);
            QCOMPARE(failures.last().first().toInt(), code);
            QCOMPARE(failures.last().last().toString(),
                     QtPositionSource::describe(QGeoPositionInfoSource::Error(error)));
        }
        QCOMPARE(source.locationServicesEnabled(), enabledAfter);
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
        Configuration configuration;
        configuration.nmeaFile = dir.filePath(QStringLiteral("track.nmea"));
        QFile file(configuration.nmeaFile);
        if (logExists)
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(NmeaLog::log(22.5, -114.1)) > 0);
        file.close();
        ConfiguredPositionSourceFactory factory(configuration);
        QObject owner;
        PositionSource *source = factory.create(&owner);
        QCOMPARE(source->locationServicesEnabled(), logExists);
        QSignalSpy fixes(source, &PositionSource::locationUpdated);
        QSignalSpy failures(source, &PositionSource::failed);
        source->startUpdatingLocation();
        QVERIFY(failures.isEmpty()); // reported later, as real sources do
        QTRY_VERIFY_WITH_TIMEOUT(!fixes.isEmpty() || !failures.isEmpty(), 1000);
        QCOMPARE(failures.isEmpty(), logExists);
        if (!logExists)
            return;
        const PositionFix fix = fixes.first().first().value<PositionFix>();
        QVERIFY(qAbs(fix.coordinate.latitude - 22.5) < 1e-6);
        QVERIFY(qAbs(fix.coordinate.longitude + 114.1) < 1e-6);
        source->stopUpdatingLocation();
        const qsizetype seen = fixes.size();
        QTest::qWait(50);
        QCOMPARE(fixes.size(), seen);
    }
};

TREKMIME_TEST(PositionSourceTest)
#include "PositionSourceTest.moc"
