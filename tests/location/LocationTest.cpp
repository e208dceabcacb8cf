#include "TestMain.h"
#include "TestServices.h"

#include "fakes/FakeGeocoder.h"
#include "fakes/FakePositionSourceFactory.h"
#include "location/Location.h"
#include "location/LocationDelegate.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <memory>

namespace {

// Writes down every callback, with the number of alerts shown at that time.
class RecordingDelegate : public LocationDelegate
{
public:
    void locationSuccess(Location *l, double latitude, double longitude) override
    {
        note(l, QStringLiteral("success %1 %2").arg(latitude).arg(longitude));
    }
    void locationFailed(Location *l, const QString &t) override { note(l, "failed", t); }
    void reverseGeocoderSuccess(Location *l, const QString &t) override { note(l, "address", t); }
    void reverseGeocoderFailed(Location *l, const QString &t) override
    {
        note(l, "address failed", t);
    }
    void geocoderSuccess(Location *l, const Coordinate &c) override
    {
        note(l, "coordinate", c.toString());
    }
    void geocoderFailed(Location *l, const QString &t) override { note(l, "coordinate failed", t); }

    QStringList events;
    QStringList *journal = nullptr; // outlives the delegate, if set
    QList<Location *> callers;
    QList<qsizetype> alertsSeen;
    const RecordingAlertPresenter *alerts = nullptr;

private:
    void note(Location *location, const char *what, const QString &text)
    {
        note(location,
             QLatin1String(what) + u' ' + (text.isNull() ? QStringLiteral("<null>") : text));
    }
    void note(Location *location, const QString &event)
    {
        events.append(event);
        if (journal)
            journal->append(event);
        callers.append(location);
        alertsSeen.append(alerts ? alerts->alerts().size() : 0);
    }
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

// A screen: a widget that is also a delegate, destroyed on dismissal.
class ScreenDelegate : public QWidget, public RecordingDelegate
{
};

enum Failure { InvalidFix, SourceError, ServicesOff };
enum Request { ReverseLookup, ForwardLookup, PositionRequest, OwnAddress, SeparateInstance };

} // namespace

// The location service with a fake position source, a fake geocoder and
// recorded alerts.
class LocationTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    std::unique_ptr<QTemporaryDir> m_defaultsDir;
    std::unique_ptr<Location::Registration> m_registration;
    FakePositionSourceFactory *m_sources = nullptr;
    FakeGeocoder *m_geocoder = nullptr;
    QPointer<FakeMapView> m_mapView;

    FakePositionSource *source() const { return m_sources->last(); }
    // What the next start of the application would read.
    static double stored(const QString &key)
    {
        return QSettings(QSettings::UserScope, QStringLiteral("trekmime"),
                         QCoreApplication::applicationName())
            .value(key)
            .toDouble();
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
        m_registration = std::make_unique<Location::Registration>(m_world->services());
    }
    void cleanup()
    {
        m_registration.reset();
        delete m_sources;
        delete m_geocoder;
        m_world.reset();
    }

    void validFixIsStoredAndReportedOncePerRequest()
    {
        Location::setLatitude(5.0);
        RecordingDelegate delegate;
        Location *location = Location::sharedInstacneWithDelegate(&delegate);
        location->startLocation();
        QVERIFY(source()->deliver(22.54321, 114.05432));
        QCOMPARE(delegate.callers, QList<Location *>{location});
        QVERIFY(!source()->deliver(1.0, 2.0)); // one request, one report
        QCOMPARE(Location::latitude(), 22.54321);
        QCOMPARE(location->ownLongitude(), 114.05432);
        // stored unrounded, for the next start of the application
        QCOMPARE(stored(QStringLiteral("LocationLatitudeKey")), 22.54321);
        QCOMPARE(stored(QStringLiteral("LocationLongitudeKey")), 114.05432);

        location->startLocation();                 // the same source, asked once for permission
        QVERIFY(source()->deliver(0.0, 0.0, 0.0)); // at 0,0 with accuracy 0: a fix all the same
        QCOMPARE(m_sources->created(), 1);
        QCOMPARE(source()->authorizationRequests(), 1);
        QCOMPARE(delegate.events, (QStringList{QStringLiteral("success 22.5432 114.054"),
                                               QStringLiteral("success 0 0")}));
        QCOMPARE(stored(QStringLiteral("LocationLatitudeKey")), 0.0);
        QVERIFY(m_world->alerts.alerts().isEmpty());
    }

    void failures_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("event");
        QTest::addColumn<QStringList>("alerts");
        QTest::newRow("negative accuracy") << int(InvalidFix) << 0 << QString()
                                           << QStringLiteral("failed <null>") << QStringList();
        QTest::newRow("access denied")
            << int(SourceError) << 1 << QStringLiteral("Access denied.")
            << QStringLiteral("failed Access denied.")
            << QStringList{QStringLiteral("定位失败|请开启定位以保证程序正常运行|确定")};
        QTest::newRow("other error") << int(SourceError) << 2 << QStringLiteral("No fix")
                                     << QStringLiteral("failed No fix") << QStringList();
        QTest::newRow("services off")
            << int(ServicesOff) << 0 << QString() << QStringLiteral("failed <null>")
            << QStringList{QStringLiteral("|定位服务未开启|确定")};
    }
    void failures()
    {
        QFETCH(int, kind);
        QFETCH(int, code);
        QFETCH(QString, description);
        QFETCH(QString, event);
        QFETCH(QStringList, alerts);
        Location::setLatitude(7.0);
        Location::setLongitude(8.0);
        m_sources->setServicesEnabled(kind != ServicesOff);
        QCOMPARE(Location::isLocationOn(), kind != ServicesOff);
        RecordingDelegate delegate;
        delegate.alerts = &m_world->alerts;
        QCOMPARE(Location::latitude(), 7.0);
        QVERIFY(Location::address().isNull());
        Location *location = Location::sharedInstacneWithDelegate(&delegate);
        // no fix yet: once shared, its memory wins over the stored values
        QCOMPARE(Location::latitude(), 0.0);
        QCOMPARE(Location::longitude(), 0.0);
        location->startLocation();
        if (kind == InvalidFix)
            QVERIFY(source()->deliverInvalid());
        else if (kind == SourceError)
            QVERIFY(source()->fail(code, description));
        QCOMPARE(delegate.events, QStringList{event});
        QStringList shown;
        for (const Alert &alert : m_world->alerts.alerts())
            shown.append(alert.title + u'|' + alert.message + u'|' + alert.buttons.join(u','));
        QCOMPARE(shown, alerts);
        if (code == PositionSource::AccessDenied) // the delegate hears first
            QCOMPARE(delegate.alertsSeen, QList<qsizetype>{0});
        QCOMPARE(source()->startCount(), kind == ServicesOff ? 0 : 1);
        QVERIFY(!source()->deliver(1.0, 1.0)); // no better fix is waited for
        QCOMPARE(location->ownLatitude(), 0.0);
        m_registration.reset(); // the stored values are left as they were
        QCOMPARE(Location::latitude(), 7.0);
        QCOMPARE(Location::longitude(), 8.0);
    }

    void theLastDelegateWinsAndASeparateInstanceHasItsOwn()
    {
        RecordingDelegate first;
        RecordingDelegate second;
        RecordingDelegate own;
        Location *shared = Location::sharedInstacneWithDelegate(&first);
        QCOMPARE(Location::sharedInstacneWithDelegate(&second), shared);
        shared->startLocation();
        source()->deliver(1.0, 2.0);
        QVERIFY(first.events.isEmpty());
        QCOMPARE(second.events.size(), 1);

        std::unique_ptr<Location> separate(Location::locationWihtDelegate(&own));
        separate->startLocation();
        source()->deliver(4.0, 5.0);
        QCOMPARE(own.callers, QList<Location *>{separate.get()});
        QCOMPARE(second.events.size(), 1);
        QCOMPARE(Location::latitude(), 4.0); // the class values follow every fix

        Location::sharedInstacneWithDelegate(nullptr)->startLocation();
        QVERIFY(m_sources->sources().first()->deliver(6.0, 7.0));
        QCOMPARE(Location::latitude(), 6.0);
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
        m_registration->setMapViewFactory([this](QObject *parent) {
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
        QCOMPARE(source() ? source()->startCount() : 0, managerStarts);
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

    void lookups_data()
    {
        QTest::addColumn<int>("operation");
        QTest::addColumn<QStringList>("events");
        const QStringList reverse{
            QStringLiteral("address Line 1"), QStringLiteral("address failed not found"),
            QStringLiteral("address <null>"), QStringLiteral("address failed <null>")};
        const QStringList forward{QStringLiteral("coordinate 22.540000, 114.050000"),
                                  QStringLiteral("coordinate failed not found")};
        QTest::newRow("addressWithCoordinate") << 0 << reverse;
        QTest::newRow("reverseGeocoderCoordinate") << 1 << reverse;
        QTest::newRow("coordinateWithAddress") << 2 << forward;
        QTest::newRow("geocoderAddress") << 3 << forward;
    }
    void lookups()
    {
        QFETCH(int, operation);
        QFETCH(QStringList, events);
        m_geocoder->setReverseAnswer(
            Coordinate{22.5, 114.1},
            GeocoderAnswer::found(
                {GeocoderPlacemark{QStringList{QStringLiteral("Line 1"), QStringLiteral("Line 2")},
                                   Coordinate{22.5, 114.1}},
                 GeocoderPlacemark{QStringList{QStringLiteral("Other")}, std::nullopt}}));
        // a place without lines, and an answer with neither places nor error
        m_geocoder->setReverseAnswer(
            Coordinate{1.0, 1.0},
            GeocoderAnswer::found({GeocoderPlacemark{std::nullopt, Coordinate{1.0, 1.0}}}));
        m_geocoder->setReverseAnswer(Coordinate{2.0, 2.0}, GeocoderAnswer{});
        m_geocoder->setCoordinate(QStringLiteral(" Shenzhen "), Coordinate{22.54, 114.05});
        using Reverse = void (*)(const Coordinate &, LocationDelegate *);
        using Forward = void (*)(const QString &, LocationDelegate *);
        const Reverse reverse[] = {&Location::addressWithCoordinate,
                                   &Location::reverseGeocoderCoordinate};
        const Forward forward[] = {&Location::coordinateWithAddress, &Location::geocoderAddress};
        RecordingDelegate delegate;
        if (operation < 2) {
            // the fake knows no ocean
            for (const Coordinate &at : {Coordinate{22.5, 114.1}, Coordinate{0.0, -160.0},
                                         Coordinate{1.0, 1.0}, Coordinate{2.0, 2.0}})
                reverse[operation](at, &delegate);
        } else {
            forward[operation - 2](QStringLiteral(" Shenzhen "), &delegate);
            forward[operation - 2](QStringLiteral("Shenzhen"), &delegate); // sent untrimmed
        }
        QVERIFY(delegate.events.isEmpty()); // answers come later
        QTRY_COMPARE_WITH_TIMEOUT(delegate.events.size(), events.size(), 1000);
        QCOMPARE(delegate.events, events);
        QCOMPARE(delegate.callers, QList<Location *>(events.size(), nullptr));
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

    void goneRequesterGetsNothing_data()
    {
        QTest::addColumn<int>("request");
        QTest::addColumn<bool>("screen");
        QTest::newRow("address of a coordinate, delegate") << int(ReverseLookup) << false;
        QTest::newRow("coordinate of an address, screen") << int(ForwardLookup) << true;
        QTest::newRow("position fix, screen") << int(PositionRequest) << true;
        QTest::newRow("address of the shared fix, delegate") << int(OwnAddress) << false;
        QTest::newRow("address of a separate instance's fix, screen")
            << int(SeparateInstance) << true;
    }
    void goneRequesterGetsNothing()
    {
        QFETCH(int, request);
        QFETCH(bool, screen);
        m_geocoder->setAddress(Coordinate{0.0, 0.0}, QStringLiteral("Null Island"));
        m_geocoder->setCoordinate(QStringLiteral("Here"), Coordinate{1.0, 2.0});
        QStringList heard;
        const auto make = [&] {
            std::unique_ptr<RecordingDelegate> delegate(screen ? new ScreenDelegate
                                                               : new RecordingDelegate);
            delegate->journal = &heard;
            return delegate;
        };
        std::unique_ptr<Location> separate;
        // asks on the delegate's behalf
        const auto ask = [&](RecordingDelegate *delegate) {
            switch (request) {
            case ReverseLookup:
                Location::addressWithCoordinate(Coordinate{0.0, 0.0}, delegate);
                break;
            case ForwardLookup:
                Location::coordinateWithAddress(QStringLiteral("Here"), delegate);
                break;
            case PositionRequest:
                Location::sharedInstacneWithDelegate(delegate)->startLocation();
                break;
            case OwnAddress:
                Location::sharedInstacneWithDelegate(delegate)->startAddress();
                break;
            case SeparateInstance:
                separate.reset(Location::locationWihtDelegate(delegate));
                separate->startAddress();
                break;
            }
        };
        const auto answer = [&] {
            if (request == PositionRequest)
                QVERIFY(source()->deliver(1.0, 2.0));
            QTest::qWait(20);
        };

        std::unique_ptr<RecordingDelegate> gone = make();
        ask(gone.get());
        gone.reset();
        answer();
        QCOMPARE(heard, QStringList());

        std::unique_ptr<RecordingDelegate> next = make();
        ask(next.get());
        answer();
        QCOMPARE(heard.size(), 1);
        QVERIFY(!heard.first().contains(QLatin1String("failed")));

        if (request == SeparateInstance) { // the instance itself goes with its lookup out
            ask(next.get());
            separate.reset();
            answer();
            QCOMPARE(heard.size(), 1);
        }
    }
};

TREKMIME_TEST(LocationTest)
#include "LocationTest.moc"
