#include "FileBytes.h"
#include "NmeaLog.h"
#include "TestMain.h"
#include "TestServices.h"

#include "fakes/FakeGeocoder.h"
#include "fakes/FakePositionSourceFactory.h"
#include "location/ConfiguredPositionSourceFactory.h"
#include "location/Location.h"
#include "location/QtPositionSource.h"

#include <QDir>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

namespace {

QString shown(const QString &text)
{
    return text.isNull() ? u"<null>"_s : text;
}

// One answer as a line: the value found, or "failed" and the error text.
template <typename T> QString describe(const LocationAnswer<T> &answer)
{
    if (!answer.succeeded())
        return u"failed "_s + shown(answer.error);
    if constexpr (std::is_same_v<T, QString>)
        return shown(*answer.value);
    else
        return answer.value->toString();
}

const QByteArray ConfigText = "# mine\n[General]\nlanguage = fr\n";

enum Failure { InvalidFix, SourceError, ServicesOff, NoSources };
enum Request { ReverseLookup, PositionRequest, OwnAddress };

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

// The location service over fake sources, geocoder and alerts; then the Qt Positioning
// sources themselves: fixes, failures and the NMEA replay.
class LocationTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    std::unique_ptr<QTemporaryDir> m_defaultsDir;
    std::unique_ptr<FakePositionSourceFactory> m_sources;
    std::unique_ptr<FakeGeocoder> m_geocoder;
    std::unique_ptr<Location> m_location;
    QStringList m_heard;           // every answer, in order
    QList<qsizetype> m_alertsSeen; // the alerts shown when each answer came
    QObject m_receiver;

    FakePositionSource *source() const { return m_sources->last(); }
    Location &make(PositionSourceFactory *sources)
    {
        m_location = std::make_unique<Location>(sources, m_geocoder.get(), &m_world->alerts);
        return *m_location;
    }
    // Writes to the test, not the receiver, so answers to a gone receiver are seen.
    template <typename T> std::function<void(const LocationAnswer<T> &)> record()
    {
        return [this](const LocationAnswer<T> &answer) {
            m_heard.append(describe(answer));
            m_alertsSeen.append(m_world->alerts.alerts().size());
        };
    }
    QSettings defaults() const
    {
        return QSettings(m_defaultsDir->filePath(u"state/trekmime/last-position.ini"_s),
                         QSettings::IniFormat);
    }
    void store(double latitude, double longitude)
    {
        QSettings settings = defaults();
        settings.setValue(u"LocationLatitudeKey"_s, latitude);
        settings.setValue(u"LocationLongitudeKey"_s, longitude);
    }
    double stored(const char *key) const { return defaults().value(key).toDouble(); }

private slots:
    void init()
    {
        m_world = std::make_unique<TestServices>();
        m_defaultsDir = std::make_unique<QTemporaryDir>();
        // the state folder, and a configuration file with a comment that
        // must survive every fix
        qputenv("XDG_STATE_HOME", QFile::encodeName(m_defaultsDir->filePath(u"state"_s)));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_defaultsDir->path()));
        QVERIFY(QDir().mkpath(m_defaultsDir->filePath(u"trekmime"_s)));
        QVERIFY(writeBytes(m_defaultsDir->filePath(u"trekmime/trekmime.conf"_s), ConfigText));
        QCoreApplication::setApplicationName(u"trekmime"_s); // as the application is named
        m_sources = std::make_unique<FakePositionSourceFactory>();
        m_geocoder = std::make_unique<FakeGeocoder>();
        m_heard.clear();
        m_alertsSeen.clear();
    }
    void cleanup()
    {
        m_location.reset(); // before what it uses
        QCoreApplication::setApplicationName(u"test_location"_s);
    }

    void validFixIsStoredAndAnsweredOncePerRequest()
    {
        store(5.0, 6.0);
        Location &location = make(m_sources.get());
        QCOMPARE(location.latitude(), 5.0); // a fresh start knows the last place
        location.startLocation(&m_receiver, [](const PositionAnswer &) { QFAIL("replaced"); });
        location.startLocation(&m_receiver, record<Coordinate>()); // the last requester is answered
        QVERIFY(source()->deliver(22.54321, 114.05432));
        QVERIFY(!source()->deliver(1.0, 2.0)); // one request, one answer
        QCOMPARE(location.longitude(), 114.05432);
        QCOMPARE(stored("LocationLatitudeKey"), 22.54321); // unrounded, for the next start
        QCOMPARE(stored("LocationLongitudeKey"), 114.05432);
        QCOMPARE(bytesOf(m_defaultsDir->filePath(u"trekmime/trekmime.conf"_s)), ConfigText);
        location.startLocation(&m_receiver, record<Coordinate>()); // the same source, asked once
        QVERIFY(source()->deliver(0.0, 0.0, 0.0)); // at 0,0 with accuracy 0: a fix all the same
        QCOMPARE(m_sources->created() + source()->authorizationRequests(), 2);
        QCOMPARE(m_heard, (QStringList{Coordinate{22.54321, 114.05432}.toString(),
                                       Coordinate{0.0, 0.0}.toString()}));
        QVERIFY(m_world->alerts.alerts().isEmpty());
    }

    void failures_data()
    {
        QTest::addColumn<Failure>("kind");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("alert");
        addRow("negative accuracy", InvalidFix, 0, QString(), "");
        addRow("access denied", SourceError, 1, "Access denied.",
               "定位失败|请开启定位以保证程序正常运行|确定");
        addRow("other error", SourceError, 2, "No fix", "");
        addRow("services off", ServicesOff, 0, QString(), "|定位服务未开启|确定");
        addRow("no sources", NoSources, 0, QString(), "|定位服务未开启|确定");
    }
    void failures()
    {
        QFETCH(Failure, kind);
        QFETCH(int, code);
        QFETCH(QString, description);
        QFETCH(QString, alert);
        store(7.0, 8.0);
        m_sources->setServicesEnabled(kind != ServicesOff);
        Location &location = make(kind == NoSources ? nullptr : m_sources.get());
        QCOMPARE(location.isLocationOn(), kind != ServicesOff && kind != NoSources);
        location.startLocation(&m_receiver, record<Coordinate>());
        if (kind == InvalidFix)
            QVERIFY(source()->deliverInvalid());
        else if (kind == SourceError)
            QVERIFY(source()->fail(code, description));
        QCOMPARE(m_heard, QStringList{u"failed "_s + shown(description)});
        QString seen;
        for (const Alert &a : m_world->alerts.alerts())
            seen += a.title + u'|' + a.message + u'|' + a.buttons.join(u',');
        QCOMPARE(seen, alert);
        // the requester hears of a denial before the user does; of services that are off, after
        QCOMPARE(m_alertsSeen.first(), kind == SourceError ? 0 : m_world->alerts.alerts().size());
        if (kind != NoSources) {
            QCOMPARE(source()->startCount(), kind == ServicesOff ? 0 : 1);
            QVERIFY(!source()->deliver(1.0, 1.0)); // no better fix is waited for
        }
        QCOMPARE(location.latitude(), 7.0); // the last good place is kept, in memory and stored
        QCOMPARE(stored("LocationLongitudeKey"), 8.0);
    }

    void lookups()
    {
        const GeocoderPlacemark lines{QStringList{u"Line 1"_s, u"2"_s}, Coordinate{22.5, 114.1}};
        m_geocoder->setReverseAnswer(Coordinate{22.5, 114.1}, GeocoderAnswer::found({lines}));
        // a place without lines, and an answer with neither places nor error
        m_geocoder->setReverseAnswer(
            Coordinate{1.0, 1.0},
            GeocoderAnswer::found({GeocoderPlacemark{std::nullopt, Coordinate{1.0, 1.0}}}));
        m_geocoder->setReverseAnswer(Coordinate{2.0, 2.0}, GeocoderAnswer{});
        m_geocoder->setCoordinate(u" Shenzhen "_s, Coordinate{22.54, 114.05});
        for (const QString &answers : {u"Line 1|failed not found|<null>|failed <null>|22.540000, "
                                       "114.050000|failed not found"_s,
                                       QStringList(6, u"failed <null>"_s).join(u'|')}) {
            Location &location = make(m_sources.get());
            m_heard.clear();
            for (const Coordinate &at : {Coordinate{22.5, 114.1}, Coordinate{0.0, -160.0},
                                         Coordinate{1.0, 1.0}, Coordinate{2.0, 2.0}})
                location.addressWithCoordinate(at, &m_receiver, record<QString>());
            for (const char *address : {" Shenzhen ", "Shenzhen"}) // sent untrimmed
                location.coordinateWithAddress(QString::fromUtf8(address), &m_receiver,
                                               record<Coordinate>());
            QVERIFY(!m_geocoder || m_heard.isEmpty()); // answers come later
            QTRY_COMPARE_WITH_TIMEOUT(m_heard.join(u'|'), answers, 1000);
            QVERIFY(location.address().isNull());   // only the own address is kept
            m_location.reset(), m_geocoder.reset(); // then without a geocoder
        }
    }

    void startAddressKeepsTheLineOfTheLastFix()
    {
        m_geocoder->setAddress(Coordinate{1.0, 2.0}, u"Somewhere 1"_s);
        Location &location = make(m_sources.get());
        for (double latitude : {1.0, 50.0}) { // nothing known at the second
            location.startLocation(&m_receiver, record<Coordinate>());
            source()->deliver(latitude, 2.0);
            location.startAddress(&m_receiver, record<QString>());
            QTRY_COMPARE_WITH_TIMEOUT(m_heard.size() % 2, 0, 1000);
            QCOMPARE(location.address(), u"Somewhere 1"_s);
        }
        QCOMPARE(m_heard[1] + m_heard[3], u"Somewhere 1failed not found"_s);
    }

    void goneReceiverGetsNothing_data()
    {
        QTest::addColumn<Request>("request");
        QTest::addColumn<bool>("serviceGoes"); // the service itself goes, not the receiver
        addRow("address of a coordinate", ReverseLookup, false);
        addRow("position", PositionRequest, false);
        addRow("own address", OwnAddress, false);
        addRow("own address, service gone", OwnAddress, true);
    }
    void goneReceiverGetsNothing()
    {
        QFETCH(Request, request);
        QFETCH(bool, serviceGoes);
        m_geocoder->setAddress(Coordinate{0.0, 0.0}, u"Null Island"_s);
        store(0.0, 0.0);
        make(m_sources.get());
        const auto askAndAnswer = [&](QObject *receiver, bool goes) {
            if (request == ReverseLookup)
                m_location->addressWithCoordinate({0.0, 0.0}, receiver, record<QString>());
            else if (request == PositionRequest)
                m_location->startLocation(receiver, record<Coordinate>());
            else
                m_location->startAddress(receiver, record<QString>());
            if (goes)
                m_location.reset();
            else if (receiver != &m_receiver)
                delete receiver;
            if (request == PositionRequest)
                QVERIFY(source()->deliver(1.0, 2.0));
            QTest::qWait(20);
        };
        askAndAnswer(new QObject(this), serviceGoes);
        QCOMPARE(m_heard, QStringList());
        if (serviceGoes)
            return;
        if (request == OwnAddress) // kept all the same
            QCOMPARE(m_location->address(), u"Null Island"_s);
        askAndAnswer(&m_receiver, false); // the service works on for the next requester
        QVERIFY(m_heard.size() == 1 && !m_heard.first().startsWith(u"failed"_s));
    }

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

TREKMIME_TEST(LocationTest)
#include "LocationTest.moc"
