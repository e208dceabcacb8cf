#include "TestMain.h"
#include "TestServices.h"

#include "fakes/FakeGeocoder.h"
#include "fakes/FakePositionSourceFactory.h"
#include "location/Location.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <type_traits>

namespace {

QString shown(const QString &text)
{
    return text.isNull() ? QStringLiteral("<null>") : text;
}

// One answer as a line: the value found, or "failed" and the error text.
template <typename T> QString describe(const LocationAnswer<T> &answer)
{
    if (!answer.succeeded())
        return QStringLiteral("failed ") + shown(answer.error);
    if constexpr (std::is_same_v<T, QString>)
        return shown(*answer.value);
    else
        return answer.value->toString();
}

enum Failure { InvalidFix, SourceError, ServicesOff, NoSources };
enum Request { ReverseLookup, ForwardLookup, PositionRequest, OwnAddress };

} // namespace

// The location service over a fake position source, a fake geocoder and
// recorded alerts, with a user-defaults store of its own.
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
    // Records an answer; it writes to the test, not to the receiver, so an
    // answer to a receiver that is gone would still be seen.
    template <typename T> std::function<void(const LocationAnswer<T> &)> record()
    {
        return [this](const LocationAnswer<T> &answer) {
            m_heard.append(describe(answer));
            m_alertsSeen.append(m_world->alerts.alerts().size());
        };
    }
    static QSettings defaults()
    {
        return QSettings(QSettings::UserScope, QStringLiteral("trekmime"),
                         QCoreApplication::applicationName());
    }
    static void store(double latitude, double longitude)
    {
        QSettings settings = defaults();
        settings.setValue(QStringLiteral("LocationLatitudeKey"), latitude);
        settings.setValue(QStringLiteral("LocationLongitudeKey"), longitude);
    }
    static double stored(const char *key) { return defaults().value(key).toDouble(); }

private slots:
    void init()
    {
        m_world = std::make_unique<TestServices>();
        m_defaultsDir = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_defaultsDir->path());
        m_sources = std::make_unique<FakePositionSourceFactory>();
        m_geocoder = std::make_unique<FakeGeocoder>();
        m_heard.clear();
        m_alertsSeen.clear();
    }
    void cleanup()
    {
        m_location.reset();
        m_sources.reset();
        m_geocoder.reset();
        m_world.reset();
    }

    void validFixIsStoredAndAnsweredOncePerRequest()
    {
        store(5.0, 6.0);
        Location &location = make(m_sources.get());
        QCOMPARE(location.latitude(), 5.0); // a fresh start knows the last place
        QCOMPARE(location.longitude(), 6.0);
        location.startLocation(&m_receiver, record<Coordinate>());
        QVERIFY(source()->deliver(22.54321, 114.05432));
        QVERIFY(!source()->deliver(1.0, 2.0)); // one request, one answer
        QCOMPARE(location.latitude(), 22.54321);
        QCOMPARE(location.longitude(), 114.05432);
        // stored unrounded, for the next start of the application
        QCOMPARE(stored("LocationLatitudeKey"), 22.54321);
        QCOMPARE(stored("LocationLongitudeKey"), 114.05432);

        location.startLocation(&m_receiver, record<Coordinate>()); // the same source, asked once
        QVERIFY(source()->deliver(0.0, 0.0, 0.0)); // at 0,0 with accuracy 0: a fix all the same
        QCOMPARE(m_sources->created(), 1);
        QCOMPARE(source()->authorizationRequests(), 1);
        QCOMPARE(m_heard, (QStringList{Coordinate{22.54321, 114.05432}.toString(),
                                       Coordinate{0.0, 0.0}.toString()}));
        QCOMPARE(stored("LocationLatitudeKey"), 0.0);
        QVERIFY(m_world->alerts.alerts().isEmpty());
    }

    void failures_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QStringList>("alerts");
        const QStringList off{QStringLiteral("|定位服务未开启|确定")};
        QTest::newRow("negative accuracy") << int(InvalidFix) << 0 << QString()
                                           << QStringLiteral("failed <null>") << QStringList();
        QTest::newRow("access denied")
            << int(SourceError) << 1 << QStringLiteral("Access denied.")
            << QStringLiteral("failed Access denied.")
            << QStringList{QStringLiteral("定位失败|请开启定位以保证程序正常运行|确定")};
        QTest::newRow("other error") << int(SourceError) << 2 << QStringLiteral("No fix")
                                     << QStringLiteral("failed No fix") << QStringList();
        QTest::newRow("services off")
            << int(ServicesOff) << 0 << QString() << QStringLiteral("failed <null>") << off;
        QTest::newRow("no sources")
            << int(NoSources) << 0 << QString() << QStringLiteral("failed <null>") << off;
    }
    void failures()
    {
        QFETCH(int, kind);
        QFETCH(int, code);
        QFETCH(QString, description);
        QFETCH(QString, answer);
        QFETCH(QStringList, alerts);
        store(7.0, 8.0);
        m_sources->setServicesEnabled(kind != ServicesOff);
        Location &location = make(kind == NoSources ? nullptr : m_sources.get());
        QCOMPARE(location.isLocationOn(), kind != ServicesOff && kind != NoSources);
        location.startLocation(&m_receiver, record<Coordinate>());
        if (kind == InvalidFix)
            QVERIFY(source()->deliverInvalid());
        else if (kind == SourceError)
            QVERIFY(source()->fail(code, description));
        QCOMPARE(m_heard, QStringList{answer});
        QStringList seen;
        for (const Alert &alert : m_world->alerts.alerts())
            seen.append(alert.title + u'|' + alert.message + u'|' + alert.buttons.join(u','));
        QCOMPARE(seen, alerts);
        // the requester hears of a denial before the user does; of services
        // that are off, after
        QCOMPARE(m_alertsSeen.first(), kind == SourceError ? 0 : alerts.size());
        if (kind != NoSources) {
            QCOMPARE(source()->startCount(), kind == ServicesOff ? 0 : 1);
            QVERIFY(!source()->deliver(1.0, 1.0)); // no better fix is waited for
        }
        QCOMPARE(m_heard.size(), 1);
        // the last good place is kept, in memory and stored
        QCOMPARE(location.latitude(), 7.0);
        QCOMPARE(stored("LocationLatitudeKey"), 7.0);
        QCOMPARE(stored("LocationLongitudeKey"), 8.0);
    }

    void theLastRequesterIsAnswered()
    {
        Location &location = make(m_sources.get());
        QObject first;
        QStringList firstHeard;
        location.startLocation(&first,
                               [&](const PositionAnswer &a) { firstHeard.append(describe(a)); });
        location.startLocation(&m_receiver, record<Coordinate>());
        QVERIFY(source()->deliver(1.0, 2.0));
        QVERIFY(firstHeard.isEmpty());
        QCOMPARE(m_heard, (QStringList{Coordinate{1.0, 2.0}.toString()}));
    }

    void lookups_data()
    {
        QTest::addColumn<bool>("reverse");
        QTest::addColumn<bool>("withGeocoder");
        QTest::addColumn<QStringList>("answers");
        QTest::newRow("address of a coordinate")
            << true << true
            << QStringList{QStringLiteral("Line 1"), QStringLiteral("failed not found"),
                           QStringLiteral("<null>"), QStringLiteral("failed <null>")};
        QTest::newRow("coordinate of an address")
            << false << true
            << QStringList{QStringLiteral("22.540000, 114.050000"),
                           QStringLiteral("failed not found")};
        QTest::newRow("no geocoder, reverse")
            << true << false << QStringList(4, QStringLiteral("failed <null>"));
        QTest::newRow("no geocoder, forward")
            << false << false << QStringList(2, QStringLiteral("failed <null>"));
    }
    void lookups()
    {
        QFETCH(bool, reverse);
        QFETCH(bool, withGeocoder);
        QFETCH(QStringList, answers);
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
        if (!withGeocoder)
            m_geocoder.reset();
        Location &location = make(m_sources.get());
        if (reverse) {
            // the fake knows no ocean
            for (const Coordinate &at : {Coordinate{22.5, 114.1}, Coordinate{0.0, -160.0},
                                         Coordinate{1.0, 1.0}, Coordinate{2.0, 2.0}})
                location.addressWithCoordinate(at, &m_receiver, record<QString>());
        } else {
            location.coordinateWithAddress(QStringLiteral(" Shenzhen "), &m_receiver,
                                           record<Coordinate>());
            location.coordinateWithAddress(QStringLiteral("Shenzhen"), &m_receiver,
                                           record<Coordinate>()); // sent untrimmed
        }
        if (withGeocoder)
            QVERIFY(m_heard.isEmpty()); // answers come later
        QTRY_COMPARE_WITH_TIMEOUT(m_heard.size(), answers.size(), 1000);
        QCOMPARE(m_heard, answers);
        QVERIFY(location.address().isNull()); // only the own address is kept
    }

    void startAddressKeepsTheLineOfTheLastFix()
    {
        m_geocoder->setAddress(Coordinate{1.0, 2.0}, QStringLiteral("Somewhere 1"));
        Location &location = make(m_sources.get());
        location.startLocation(&m_receiver, record<Coordinate>());
        source()->deliver(1.0, 2.0);
        location.startAddress(&m_receiver, record<QString>());
        QTRY_COMPARE_WITH_TIMEOUT(m_heard.size(), 2, 1000);
        QCOMPARE(m_heard.last(), QStringLiteral("Somewhere 1"));
        QCOMPARE(location.address(), QStringLiteral("Somewhere 1"));

        location.startLocation(&m_receiver, record<Coordinate>());
        source()->deliver(50.0, 2.0); // nothing known there
        location.startAddress(&m_receiver, record<QString>());
        QTRY_COMPARE_WITH_TIMEOUT(m_heard.size(), 4, 1000);
        QCOMPARE(m_heard.last(), QStringLiteral("failed not found"));
        QCOMPARE(location.address(), QStringLiteral("Somewhere 1"));
    }

    void goneReceiverGetsNothing_data()
    {
        QTest::addColumn<int>("request");
        QTest::addColumn<bool>("serviceGoes"); // the service itself goes, not the receiver
        QTest::newRow("address of a coordinate") << int(ReverseLookup) << false;
        QTest::newRow("coordinate of an address") << int(ForwardLookup) << false;
        QTest::newRow("position") << int(PositionRequest) << false;
        QTest::newRow("own address") << int(OwnAddress) << false;
        QTest::newRow("own address, service gone") << int(OwnAddress) << true;
    }
    void goneReceiverGetsNothing()
    {
        QFETCH(int, request);
        QFETCH(bool, serviceGoes);
        m_geocoder->setAddress(Coordinate{0.0, 0.0}, QStringLiteral("Null Island"));
        m_geocoder->setCoordinate(QStringLiteral("Here"), Coordinate{1.0, 2.0});
        store(0.0, 0.0);
        make(m_sources.get());
        const auto ask = [&](QObject *receiver) {
            switch (request) {
            case ReverseLookup:
                m_location->addressWithCoordinate({0.0, 0.0}, receiver, record<QString>());
                break;
            case ForwardLookup:
                m_location->coordinateWithAddress(QStringLiteral("Here"), receiver,
                                                  record<Coordinate>());
                break;
            case PositionRequest:
                m_location->startLocation(receiver, record<Coordinate>());
                break;
            case OwnAddress:
                m_location->startAddress(receiver, record<QString>());
                break;
            }
        };
        const auto answer = [&] {
            if (request == PositionRequest)
                QVERIFY(source()->deliver(1.0, 2.0));
            QTest::qWait(20);
        };

        auto gone = std::make_unique<QObject>();
        ask(gone.get());
        if (serviceGoes)
            m_location.reset();
        else
            gone.reset();
        answer();
        QCOMPARE(m_heard, QStringList());
        if (serviceGoes)
            return;
        if (request == OwnAddress) // kept all the same
            QCOMPARE(m_location->address(), QStringLiteral("Null Island"));

        ask(&m_receiver); // the service works on for the next requester
        answer();
        QCOMPARE(m_heard.size(), 1);
        QVERIFY(!m_heard.first().startsWith(QLatin1String("failed")));
    }
};

TREKMIME_TEST(LocationTest)
#include "LocationTest.moc"
