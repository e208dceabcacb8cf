#include "TestMain.h"
#include "TestServices.h"

#include "location/FakeGeocoder.h"
#include "platform/FakePositionSourceFactory.h"
#include "location/Location.h"
#include "location/LocationDelegate.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

// Writes down every callback, with the number of alerts shown at that time.
class RecordingDelegate : public LocationDelegate
{
public:
    explicit RecordingDelegate(const RecordingAlertPresenter *alerts = nullptr) : m_alerts(alerts)
    {
    }

    void locationSuccess(Location *location, double latitude, double longitude) override
    {
        note(location, QStringLiteral("success %1 %2").arg(latitude).arg(longitude));
    }
    void locationFailed(Location *location, const QString &error) override
    {
        note(location, QStringLiteral("failed ") + textOf(error));
    }
    void reverseGeocoderSuccess(Location *location, const QString &address) override
    {
        note(location, QStringLiteral("address ") + textOf(address));
    }
    void reverseGeocoderFailed(Location *location, const QString &error) override
    {
        note(location, QStringLiteral("address failed ") + textOf(error));
    }
    void geocoderSuccess(Location *location, const Coordinate &coordinate) override
    {
        note(location, QStringLiteral("coordinate ") + coordinate.toString());
    }
    void geocoderFailed(Location *location, const QString &error) override
    {
        note(location, QStringLiteral("coordinate failed ") + textOf(error));
    }

    QStringList events;
    QList<Location *> callers;
    QList<qsizetype> alertsSeen;

private:
    static QString textOf(const QString &text)
    {
        return text.isNull() ? QStringLiteral("<null>") : text;
    }
    void note(Location *location, const QString &event)
    {
        events.append(event);
        callers.append(location);
        alertsSeen.append(m_alerts ? m_alerts->alerts().size() : 0);
    }
    const RecordingAlertPresenter *m_alerts;
};

// A hidden map view that does what the test tells it.
class FakeMapView : public UserLocationMapView
{
public:
    using UserLocationMapView::UserLocationMapView;
    void attachHidden() override
    {
        attached = true;
        ++attachCount;
    }
    void detach() override { attached = false; }
    void setShowsUserLocation(bool on) override { shows = on; }
    bool attached = false;
    bool shows = false;
    int attachCount = 0;
};

} // namespace

// The location service with a fake position source, a fake geocoder and
// recorded alerts.
class LocationTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    std::unique_ptr<QTemporaryDir> m_defaultsDir;
    FakePositionSourceFactory *m_sources = nullptr;
    FakeGeocoder *m_geocoder = nullptr;
    QPointer<FakeMapView> m_mapView;

    FakePositionSource *source() const { return m_sources->last(); }
    QStringList alertTexts() const
    {
        QStringList texts;
        for (const Alert &alert : m_world->alerts.alerts())
            texts.append(alert.title + u'|' + alert.message + u'|' + alert.buttons.join(u','));
        return texts;
    }

private slots:
    void init()
    {
        m_world = std::make_unique<TestServices>();
        m_defaultsDir = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_defaultsDir->path());
        m_sources = new FakePositionSourceFactory;
        m_geocoder = new FakeGeocoder;
        m_world->services().positionSources = m_sources;
        m_world->services().geocoder = m_geocoder;
        Location::resetSharedInstance();
        Location::setServices(m_world->services());
        Location::setMapViewFactory({});
    }
    void cleanup()
    {
        Location::resetSharedInstance();
        Location::setServices(Services{});
        Location::setMapViewFactory({});
        delete m_sources;
        delete m_geocoder;
        m_world.reset();
    }

    void validFixIsStoredReportedOnceAndStopsTheSource()
    {
        RecordingDelegate delegate;
        Location *location = Location::sharedInstacneWithDelegate(&delegate);
        location->startLocation();
        QCOMPARE(m_sources->created(), 1);
        QVERIFY(source()->isRunning());
        QCOMPARE(source()->authorizationRequests(), 1);

        QVERIFY(source()->deliver(22.54321, 114.05432));
        QCOMPARE(delegate.events, QStringList{QStringLiteral("success 22.5432 114.054")});
        QCOMPARE(delegate.callers.first(), location);
        QVERIFY(!source()->isRunning());
        QVERIFY(!source()->deliver(1.0, 2.0)); // the request is over
        QCOMPARE(Location::latitude(), 22.54321);
        QCOMPARE(location->ownLongitude(), 114.05432);
        // stored unrounded, for the next start of the application
        Location::resetSharedInstance();
        QCOMPARE(Location::latitude(), 22.54321);
        QCOMPARE(Location::longitude(), 114.05432);
        QVERIFY(m_world->alerts.alerts().isEmpty());
    }

    void secondRequestReusesTheSource()
    {
        RecordingDelegate delegate;
        Location *location = Location::sharedInstacneWithDelegate(&delegate);
        location->startLocation();
        source()->deliver(1.0, 2.0);
        Location::sharedInstacneWithDelegate(&delegate)->startLocation();
        QCOMPARE(m_sources->created(), 1);
        QCOMPARE(source()->authorizationRequests(), 1);
        QVERIFY(source()->deliver(3.0, 4.0));
        QCOMPARE(delegate.events.size(), 2);
    }

    void fixAtZeroZeroIsLikeAnyOther()
    {
        Location::setLatitude(5.0);
        RecordingDelegate delegate;
        Location::sharedInstacneWithDelegate(&delegate)->startLocation();
        source()->deliver(0.0, 0.0, 0.0);
        QCOMPARE(delegate.events, QStringList{QStringLiteral("success 0 0")});
        Location::resetSharedInstance();
        QCOMPARE(Location::latitude(), 0.0);
    }

    void failures_data()
    {
        QTest::addColumn<bool>("invalidFix");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("event");
        QTest::addColumn<QStringList>("alerts");
        QTest::newRow("negative accuracy")
            << true << 0 << QString() << QStringLiteral("failed <null>") << QStringList();
        QTest::newRow("access denied")
            << false << 1 << QStringLiteral("Access to the device position was denied.")
            << QStringLiteral("failed Access to the device position was denied.")
            << QStringList{QStringLiteral("定位失败|请开启定位以保证程序正常运行|确定")};
        QTest::newRow("other error") << false << 2 << QStringLiteral("No fix")
                                     << QStringLiteral("failed No fix") << QStringList();
    }
    void failures()
    {
        QFETCH(bool, invalidFix);
        QFETCH(int, code);
        QFETCH(QString, description);
        QFETCH(QString, event);
        QFETCH(QStringList, alerts);
        Location::setLatitude(7.0);
        Location::setLongitude(8.0);
        RecordingDelegate delegate(&m_world->alerts);
        Location *location = Location::sharedInstacneWithDelegate(&delegate);
        location->startLocation();
        if (invalidFix)
            QVERIFY(source()->deliverInvalid());
        else
            QVERIFY(source()->fail(code, description));
        QCOMPARE(delegate.events, QStringList{event});
        // the delegate hears first, then the user sees the alert
        QCOMPARE(delegate.alertsSeen, QList<qsizetype>{0});
        QCOMPARE(alertTexts(), alerts);
        QVERIFY(!source()->isRunning());
        QVERIFY(!source()->deliver(1.0, 1.0)); // no better fix is waited for
        QCOMPARE(location->ownLatitude(), 0.0);
        Location::resetSharedInstance();
        QCOMPARE(Location::latitude(), 7.0);
        QCOMPARE(Location::longitude(), 8.0);
    }

    void servicesOffShowOneAlertAndFail()
    {
        m_sources->setServicesEnabled(false);
        QVERIFY(!Location::isLocationOn());
        RecordingDelegate delegate(&m_world->alerts);
        Location::sharedInstacneWithDelegate(&delegate)->startLocation();
        QCOMPARE(alertTexts(), QStringList{QStringLiteral("|定位服务未开启|确定")});
        QCOMPARE(delegate.events, QStringList{QStringLiteral("failed <null>")});
        QCOMPARE(source()->startCount(), 0);
    }

    void lastDelegateWins()
    {
        RecordingDelegate first;
        RecordingDelegate second;
        Location *a = Location::sharedInstacneWithDelegate(&first);
        Location *b = Location::sharedInstacneWithDelegate(&second);
        QCOMPARE(a, b);
        b->startLocation();
        source()->deliver(1.0, 2.0);
        QVERIFY(first.events.isEmpty());
        QCOMPARE(second.events.size(), 1);
    }

    void delegateWithoutOperationsIsFine()
    {
        LocationDelegate silent;
        Location::sharedInstacneWithDelegate(&silent)->startLocation();
        source()->denyAccess();
        QCOMPARE(m_world->alerts.alerts().size(), 1);
        Location::sharedInstacneWithDelegate(nullptr)->startLocation();
        source()->deliver(1.0, 2.0);
        QCOMPARE(Location::latitude(), 1.0);
    }

    void memoryWinsOverStoredValuesOnceShared()
    {
        Location::setLatitude(31.5);
        Location::setLongitude(121.25);
        QCOMPARE(Location::latitude(), 31.5);
        QVERIFY(Location::address().isNull());
        Location *location = Location::sharedInstacneWithDelegate(nullptr);
        // no fix yet: the shared instance's 0 wins over the stored values
        QCOMPARE(Location::latitude(), 0.0);
        QCOMPARE(Location::longitude(), 0.0);
        Location::setLatitude(10.0);
        QCOMPARE(location->ownLatitude(), 10.0);
        QCOMPARE(QSettings(QSettings::UserScope, QStringLiteral("trekmime"),
                           QCoreApplication::applicationName())
                     .value(QStringLiteral("LocationLatitudeKey"))
                     .toDouble(),
                 10.0);
    }

    void separateInstanceReportsToItsOwnDelegate()
    {
        RecordingDelegate shared;
        RecordingDelegate own;
        Location::sharedInstacneWithDelegate(&shared);
        std::unique_ptr<Location> location(Location::locationWihtDelegate(&own));
        location->startLocation();
        source()->deliver(4.0, 5.0);
        QCOMPARE(own.events.size(), 1);
        QCOMPARE(own.callers.first(), location.get());
        QVERIFY(shared.events.isEmpty());
        // the class values follow every fix
        QCOMPARE(Location::latitude(), 4.0);
    }

    void mapViewSource_data()
    {
        QTest::addColumn<int>("outcome"); // 0 valid fix, 1 invalid fix, 2 failure
        QTest::addColumn<QStringList>("events");
        QTest::addColumn<int>("managerStarts");
        QTest::newRow("valid fix") << 0 << QStringList{QStringLiteral("success 1 2")} << 0;
        QTest::newRow("invalid fix falls back") << 1 << QStringList() << 1;
        QTest::newRow("failure falls back") << 2 << QStringList() << 1;
    }
    void mapViewSource()
    {
        QFETCH(int, outcome);
        QFETCH(QStringList, events);
        QFETCH(int, managerStarts);
        Location::setMapViewFactory([this](QObject *parent) {
            m_mapView = new FakeMapView(parent);
            return m_mapView.data();
        });
        RecordingDelegate delegate;
        Location *location = Location::sharedInstacneWithDelegate(&delegate);
        location->tryToUseMapView();
        QVERIFY(m_mapView);
        QVERIFY(m_mapView->attached && m_mapView->shows && location->isMapViewShow());
        if (outcome == 0)
            emit m_mapView->didUpdateUserLocation(PositionFix{Coordinate{1.0, 2.0}, 3.0});
        else if (outcome == 1)
            emit m_mapView->didUpdateUserLocation(std::nullopt);
        else
            emit m_mapView->didFailToLocateUser(0, QStringLiteral("no"));
        QVERIFY(!m_mapView->attached);
        QVERIFY(!location->isMapViewShow());
        QCOMPARE(m_mapView->shows, outcome == 2); // a failure leaves it as it is
        QCOMPARE(delegate.events, events);
        QCOMPARE(m_sources->last() ? m_sources->last()->startCount() : 0, managerStarts);
        // the hidden view is made once and reused
        location->tryToUseMapView();
        QCOMPARE(m_mapView->attachCount, 1);
        QVERIFY(m_mapView->shows);
    }

    void withoutMapViewTheManagerIsUsed()
    {
        Location::sharedInstacneWithDelegate(nullptr)->tryToUseMapView();
        QCOMPARE(source()->startCount(), 1);
    }

    void reverseLookups_data()
    {
        QTest::addColumn<bool>("synonym");
        QTest::newRow("addressWithCoordinate") << false;
        QTest::newRow("reverseGeocoderCoordinate") << true;
    }
    void reverseLookups()
    {
        QFETCH(bool, synonym);
        m_geocoder->setReverseAnswer(
            Coordinate{22.5, 114.1},
            GeocoderAnswer::found(
                {GeocoderPlacemark{QStringList{QStringLiteral("Line 1"), QStringLiteral("Line 2")},
                                   Coordinate{22.5, 114.1}},
                 GeocoderPlacemark{QStringList{QStringLiteral("Other")}, std::nullopt}}));
        RecordingDelegate delegate;
        auto lookup =
            synonym ? &Location::reverseGeocoderCoordinate : &Location::addressWithCoordinate;
        lookup(Coordinate{22.5, 114.1}, &delegate);
        lookup(Coordinate{0.0, -160.0}, &delegate); // ocean: the fake knows nothing there
        QVERIFY(delegate.events.isEmpty());         // answers come later
        QTRY_COMPARE_WITH_TIMEOUT(delegate.events.size(), 2, 1000);
        QCOMPARE(delegate.events, (QStringList{QStringLiteral("address Line 1"),
                                               QStringLiteral("address failed not found")}));
        QCOMPARE(delegate.callers, (QList<Location *>{nullptr, nullptr}));
    }

    void forwardLookups_data()
    {
        QTest::addColumn<bool>("synonym");
        QTest::newRow("coordinateWithAddress") << false;
        QTest::newRow("geocoderAddress") << true;
    }
    void forwardLookups()
    {
        QFETCH(bool, synonym);
        m_geocoder->setCoordinate(QStringLiteral(" Shenzhen "), Coordinate{22.54, 114.05});
        RecordingDelegate delegate;
        auto lookup = synonym ? &Location::geocoderAddress : &Location::coordinateWithAddress;
        lookup(QStringLiteral(" Shenzhen "), &delegate);
        lookup(QStringLiteral("Shenzhen"), &delegate);
        QTRY_COMPARE_WITH_TIMEOUT(delegate.events.size(), 2, 1000);
        // the text is sent as typed, untrimmed
        QCOMPARE(delegate.events, (QStringList{QStringLiteral("coordinate 22.540000, 114.050000"),
                                               QStringLiteral("coordinate failed not found")}));
        QCOMPARE(m_geocoder->forwardRequests().first(), QStringLiteral(" Shenzhen "));
    }

    void startAddressKeepsTheLineOnTheSharedInstance()
    {
        m_geocoder->setAddress(Coordinate{1.0, 2.0}, QStringLiteral("Somewhere 1"));
        RecordingDelegate delegate;
        Location *location = Location::sharedInstacneWithDelegate(&delegate);
        location->startLocation();
        source()->deliver(1.0, 2.0);
        location->startGeocoder();
        QTRY_COMPARE_WITH_TIMEOUT(delegate.events.size(), 2, 1000);
        QCOMPARE(delegate.events.last(), QStringLiteral("address Somewhere 1"));
        QCOMPARE(delegate.callers.last(), location);
        QCOMPARE(Location::address(), QStringLiteral("Somewhere 1"));

        Location::setLatitude(50.0); // nothing known there
        location->startAddress();
        QTRY_COMPARE_WITH_TIMEOUT(delegate.events.size(), 3, 1000);
        QCOMPARE(delegate.events.last(), QStringLiteral("address failed not found"));
        QCOMPARE(Location::address(), QStringLiteral("Somewhere 1"));
    }

    void placemarkWithoutLinesGivesANullAddress()
    {
        m_geocoder->setReverseAnswer(
            Coordinate{1.0, 1.0},
            GeocoderAnswer::found({GeocoderPlacemark{std::nullopt, Coordinate{1.0, 1.0}}}));
        m_geocoder->setReverseAnswer(Coordinate{2.0, 2.0}, GeocoderAnswer{});
        RecordingDelegate delegate;
        Location::addressWithCoordinate(Coordinate{1.0, 1.0}, &delegate);
        Location::addressWithCoordinate(Coordinate{2.0, 2.0}, &delegate);
        QTRY_COMPARE_WITH_TIMEOUT(delegate.events.size(), 2, 1000);
        QCOMPARE(delegate.events, (QStringList{QStringLiteral("address <null>"),
                                               QStringLiteral("address failed <null>")}));
    }
};

TREKMIME_TEST(LocationTest)
#include "LocationTest.moc"
