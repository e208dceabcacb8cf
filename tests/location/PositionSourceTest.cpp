#include "FileBytes.h"
#include "NmeaLog.h"
#include "TestMain.h"

#include "location/ConfiguredPositionSourceFactory.h"
#include "location/QtPositionSource.h"

#include <QSignalSpy>
#include <QTemporaryDir>
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

// The Qt Positioning sources: fixes, failures and the NMEA replay.
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
        QCOMPARE(fix.horizontalAccuracy, horizontalAccuracy);
        QVERIFY(!fix.isValid() || fix.coordinate == (Coordinate{22.5, 114.1}));
    }

    void failuresOnEveryStart_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<bool>("enabledAfter"); // a denied source is not switched off
        QTest::newRow("access denied") << int(QGeoPositionInfoSource::AccessError) << true;
        QTest::newRow("closed") << int(QGeoPositionInfoSource::ClosedError) << false;
        QTest::newRow("timeout") << int(QGeoPositionInfoSource::UpdateTimeoutError) << true;
        QTest::newRow("unknown") << int(QGeoPositionInfoSource::UnknownSourceError) << true;
    }
    void failuresOnEveryStart()
    {
        QFETCH(int, error);
        QFETCH(bool, enabledAfter);
        const int code = error == QGeoPositionInfoSource::AccessError
                             ? PositionSource::AccessDenied
                             : PositionSource::UnknownError;
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

    void nmeaReplay()
    {
        for (bool logExists : {false, true}) { // a missing log: no service
            QTemporaryDir dir;
            Configuration configuration;
            configuration.nmeaFile = dir.filePath(u"track.nmea"_s);
            QVERIFY(!logExists || writeBytes(configuration.nmeaFile, NmeaLog::log(22.5, -114.1)));
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
                continue;
            const Coordinate at = fixes.first().first().value<PositionFix>().coordinate;
            QVERIFY(qAbs(at.latitude - 22.5) + qAbs(at.longitude + 114.1) < 1e-6);
            source->stopUpdatingLocation();
            const qsizetype seen = fixes.size();
            QTest::qWait(50);
            QCOMPARE(fixes.size(), seen);
        }
    }
};

TREKMIME_TEST(PositionSourceTest)
#include "PositionSourceTest.moc"
