#include "NmeaLog.h"
#include "TestMain.h"

#include "location/ConfiguredPositionSourceFactory.h"
#include "location/QtPositionSource.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

// The Qt Positioning sources: how their reports become fixes and failures,
// and the NMEA replay.
class PositionSourceTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString writeLog(const QByteArray &text)
    {
        const QString path = m_dir.filePath(QStringLiteral("track.nmea"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            file.write(text) != text.size())
            return QString();
        return path;
    }

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

    void nmeaLogIsReplayed()
    {
        Configuration configuration;
        configuration.set(Configuration::NmeaFile, writeLog(NmeaLog::log(22.5, -114.1)));
        ConfiguredPositionSourceFactory factory(configuration);
        QObject owner;
        PositionSource *source = factory.create(&owner);
        QVERIFY(source->locationServicesEnabled());
        QSignalSpy fixes(source, &PositionSource::locationUpdated);
        source->startUpdatingLocation();
        QTRY_VERIFY_WITH_TIMEOUT(!fixes.isEmpty(), 1000);
        const PositionFix fix = fixes.first().first().value<PositionFix>();
        QVERIFY(fix.isValid());
        QVERIFY(qAbs(fix.coordinate.latitude - 22.5) < 1e-6);
        QVERIFY(qAbs(fix.coordinate.longitude + 114.1) < 1e-6);
        source->stopUpdatingLocation();
        const qsizetype seen = fixes.size();
        QTest::qWait(50);
        QCOMPARE(fixes.size(), seen);
    }

    void missingLogMeansNoService()
    {
        ConfiguredPositionSourceFactory factory(m_dir.filePath(QStringLiteral("absent.nmea")));
        QObject owner;
        PositionSource *source = factory.create(&owner);
        QVERIFY(!source->locationServicesEnabled());
        QSignalSpy failures(source, &PositionSource::failed);
        source->startUpdatingLocation();
        QVERIFY(failures.isEmpty()); // reported later, as real sources do
        QTRY_COMPARE_WITH_TIMEOUT(failures.size(), 1, 1000);
        QCOMPARE(failures.first().first().toInt(), 0);
        QVERIFY(!failures.first().last().toString().isEmpty());
    }
};

TREKMIME_TEST(PositionSourceTest)
#include "PositionSourceTest.moc"
