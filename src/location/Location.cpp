#include "location/Location.h"

#include "location/Geocoder.h"
#include "location/LocationDelegate.h"
#include "location/OldStyleText.h"
#include "platform/AlertPresenter.h"

#include <QCoreApplication>
#include <QSettings>

namespace {

Location::Registration *g_current = nullptr;

const QString latitudeKey = QStringLiteral("LocationLatitudeKey");
const QString longitudeKey = QStringLiteral("LocationLongitudeKey");

// The standard user-defaults store of this application.
QSettings userDefaults()
{
    QString organization = QCoreApplication::organizationName();
    if (organization.isEmpty())
        organization = QStringLiteral("trekmime");
    QString application = QCoreApplication::applicationName();
    if (application.isEmpty())
        application = QStringLiteral("trekmime");
    return QSettings(QSettings::UserScope, organization, application);
}

void storeUserDefault(const QString &key, double value)
{
    QSettings settings = userDefaults();
    settings.setValue(key, value);
    // written through at once, so that a crash cannot lose the last fix
    settings.sync();
}

double readUserDefault(const QString &key)
{
    return userDefaults().value(key, 0.0).toDouble();
}

void presentAlert(const HeadlessServices &services, const QString &title, const QString &message,
                  const QString &button)
{
    if (services.alerts)
        services.alerts->present(Alert{title, message, {button}, {}}, nullptr);
}

// The services the class-level operations work with.
HeadlessServices currentServices()
{
    return g_current ? g_current->services() : HeadlessServices{};
}

} // namespace

Location::Registration::Registration(const HeadlessServices &services,
                                     UserLocationMapViewFactory mapViews)
    : m_services(services), m_mapViews(std::move(mapViews)), m_outer(g_current)
{
    g_current = this;
}

Location::Registration::~Registration()
{
    // the shared instance goes first, while the services it uses still exist
    m_shared.reset();
    for (Registration **link = &g_current; *link; link = &(*link)->m_outer) {
        if (*link == this) {
            *link = m_outer;
            break;
        }
    }
}

void Location::Registration::setMapViewFactory(UserLocationMapViewFactory mapViews)
{
    m_mapViews = std::move(mapViews);
    if (m_shared)
        m_shared->m_mapViewFactory = m_mapViews;
}

Location::Registration *Location::Registration::current()
{
    return g_current;
}

Location::Location(const HeadlessServices &services, UserLocationMapViewFactory mapViews,
                   QObject *parent)
    : QObject(parent), m_services(services), m_mapViewFactory(std::move(mapViews))
{
}

Location::~Location() = default;

Location *Location::shared()
{
    return g_current ? g_current->m_shared.get() : nullptr;
}

Location *Location::sharedInstacneWithDelegate(LocationDelegate *delegate)
{
    if (!g_current)
        return nullptr;
    if (!g_current->m_shared)
        g_current->m_shared.reset(new Location(g_current->m_services, g_current->m_mapViews));
    g_current->m_shared->setDelegate(delegate);
    return g_current->m_shared.get();
}

Location *Location::locationWihtDelegate(LocationDelegate *delegate, QObject *parent)
{
    auto *location = g_current ? new Location(g_current->m_services, g_current->m_mapViews, parent)
                               : new Location(HeadlessServices{}, {}, parent);
    location->setDelegate(delegate);
    return location;
}

LocationDelegate *Location::delegate() const
{
    return m_delegateLifetime ? m_delegate : nullptr;
}

void Location::setDelegate(LocationDelegate *delegate)
{
    m_delegate = delegate;
    m_delegateLifetime = delegate ? delegate->lifetime() : nullptr;
}

void Location::setLatitude(double latitude)
{
    if (Location *location = shared())
        location->m_latitude = latitude;
    storeUserDefault(latitudeKey, latitude);
}

void Location::setLongitude(double longitude)
{
    if (Location *location = shared())
        location->m_longitude = longitude;
    storeUserDefault(longitudeKey, longitude);
}

// Once the shared instance exists its memory wins, even while it still holds
// 0 because no fix has arrived yet.
double Location::latitude()
{
    const Location *location = shared();
    return location ? location->m_latitude : readUserDefault(latitudeKey);
}

double Location::longitude()
{
    const Location *location = shared();
    return location ? location->m_longitude : readUserDefault(longitudeKey);
}

QString Location::address()
{
    const Location *location = shared();
    return location ? location->m_address : QString();
}

bool Location::isLocationOn()
{
    const Location *location = shared();
    if (location && location->m_locationManager)
        return location->m_locationManager->locationServicesEnabled();
    const HeadlessServices services = currentServices();
    if (!services.positionSources)
        return false;
    // no manager to ask yet: ask a short-lived one
    QObject owner;
    PositionSource *source = services.positionSources->create(&owner);
    return source && source->locationServicesEnabled();
}

void Location::prepareLocationManager()
{
    if (m_locationManager || !m_services.positionSources)
        return;
    PositionSource *manager = m_services.positionSources->create(this);
    if (!manager)
        return;
    m_locationManager = manager;
    connect(manager, &PositionSource::locationUpdated, this,
            [this, manager](const PositionFix &fix) {
                locationManagerDidUpdateToLocation(manager, fix);
            });
    connect(manager, &PositionSource::failed, this, [this, manager](int code, const QString &text) {
        locationManagerDidFailWithError(manager, PositionError{code, text});
    });
    manager->requestAuthorization();
}

void Location::startLocation()
{
    prepareLocationManager();
    m_isMapViewShow = false;
    startCoordinate();
}

void Location::startCoordinate()
{
    const bool on =
        m_locationManager ? m_locationManager->locationServicesEnabled() : isLocationOn();
    if (on) {
        tryToUseLocationManager();
        return;
    }
    presentAlert(m_services, QString(), tr("定位服务未开启"), tr("确定"));
    // a null error: the delegate hears of the failure, but no second alert
    locationManagerDidFailWithError(m_locationManager, std::nullopt);
}

void Location::tryToUseLocationManager()
{
    prepareLocationManager();
    if (m_locationManager) {
        m_locationManager->startUpdatingLocation();
    } else {
        // nothing to ask on this machine: the request ends as any failure does
        locationManagerDidFailWithError(nullptr, std::nullopt);
    }
}

void Location::tryToUseMapView()
{
    if (!m_mapView) {
        if (!m_mapViewFactory) {
            tryToUseLocationManager();
            return;
        }
        m_mapView = m_mapViewFactory(this);
        if (!m_mapView) {
            tryToUseLocationManager();
            return;
        }
        connect(m_mapView, &UserLocationMapView::didUpdateUserLocation, this,
                &Location::mapViewDidUpdateUserLocation);
        connect(m_mapView, &UserLocationMapView::didFailToLocateUser, this,
                [this](int code, const QString &text) {
                    mapViewDidFailToLocateUser(PositionError{code, text});
                });
        m_mapView->attachHidden();
        m_isMapViewShow = true;
    }
    m_mapView->setShowsUserLocation(true);
}

void Location::storeAndReport(const PositionFix &fix)
{
    const double latitude = fix.coordinate.latitude;
    const double longitude = fix.coordinate.longitude;
    Location::setLatitude(latitude);
    Location::setLongitude(longitude);
    m_longitude = longitude;
    m_latitude = latitude;
    if (LocationDelegate *listener = delegate())
        listener->locationSuccess(this, m_latitude, m_longitude);
}

void Location::locationManagerDidUpdateToLocation(PositionSource *manager,
                                                  const std::optional<PositionFix> &location)
{
    // an untrusted fix ends the request; it does not wait for a better one
    if (!location || !location->isValid()) {
        locationManagerDidFailWithError(manager, std::nullopt);
        return;
    }
    storeAndReport(*location);
    // one request, one success report
    if (manager)
        manager->stopUpdatingLocation();
}

void Location::locationManagerDidFailWithError(PositionSource *manager,
                                               const std::optional<PositionError> &error)
{
    const int code = error ? error->code : 0;
    // These texts are chosen and then left unused on purpose: the delegate
    // gets the source's own description, the user at most the alert below.
    [[maybe_unused]] const QString failureText = code == PositionSource::AccessDenied
                                                     ? tr("获取数据失败，定位服务未开启")
                                                     : tr("获取地理位置失败");
    if (LocationDelegate *listener = delegate())
        listener->locationFailed(this, error ? error->description : QString());
    if (code == PositionSource::AccessDenied)
        presentAlert(m_services, tr("定位失败"), tr("请开启定位以保证程序正常运行"), tr("确定"));
    if (manager)
        manager->stopUpdatingLocation();
}

void Location::mapViewDidUpdateUserLocation(const std::optional<PositionFix> &location)
{
    if (!m_mapView)
        return;
    if (m_isMapViewShow) {
        m_mapView->detach();
        m_isMapViewShow = false;
    }
    m_mapView->setShowsUserLocation(false);
    if (location && location->isValid())
        storeAndReport(*location);
    else
        tryToUseLocationManager();
}

void Location::mapViewDidFailToLocateUser(const PositionError &)
{
    if (m_mapView && m_isMapViewShow) {
        m_mapView->detach();
        m_isMapViewShow = false;
    }
    tryToUseLocationManager();
}

// ---- address lookups ----

namespace {

// The first line of the first placemark, or null.
QString firstAddressLine(const QList<GeocoderPlacemark> &placemarks)
{
    if (placemarks.isEmpty() || !placemarks.first().formattedAddressLines)
        return QString();
    return placemarks.first().formattedAddressLines->value(0);
}

bool failed(const GeocoderAnswer &answer)
{
    return !answer.placemarks || answer.error;
}

} // namespace

void Location::addressWithCoordinate(const Coordinate &coordinate, LocationDelegate *delegate)
{
    Geocoder *geocoder = currentServices().geocoder;
    if (!geocoder) {
        if (delegate)
            delegate->reverseGeocoderFailed(nullptr, QString());
        return;
    }
    // The delegate's lifetime is the receiver: the answer reaches the
    // delegate only while it exists, whatever the caller does meanwhile.
    geocoder->reverseGeocodeLocation(
        coordinate, delegate ? delegate->lifetime() : nullptr,
        [delegate](const GeocoderAnswer &answer) {
            if (failed(answer))
                delegate->reverseGeocoderFailed(nullptr, answer.error.value_or(QString()));
            else
                delegate->reverseGeocoderSuccess(nullptr, firstAddressLine(*answer.placemarks));
        });
}

void Location::reverseGeocoderCoordinate(const Coordinate &coordinate, LocationDelegate *delegate)
{
    addressWithCoordinate(coordinate, delegate);
}

void Location::coordinateWithAddress(const QString &address, LocationDelegate *delegate)
{
    Geocoder *geocoder = currentServices().geocoder;
    if (!geocoder) {
        if (delegate)
            delegate->geocoderFailed(nullptr, QString());
        return;
    }
    geocoder->geocodeAddressString(
        address, delegate ? delegate->lifetime() : nullptr,
        [delegate](const GeocoderAnswer &answer) {
            if (failed(answer)) {
                delegate->geocoderFailed(nullptr, answer.error.value_or(QString()));
                return;
            }
            const QList<GeocoderPlacemark> &placemarks = *answer.placemarks;
            const Coordinate coordinate = placemarks.isEmpty()
                                              ? Coordinate{}
                                              : placemarks.first().location.value_or(Coordinate{});
            delegate->geocoderSuccess(nullptr, coordinate);
        });
}

void Location::geocoderAddress(const QString &address, LocationDelegate *delegate)
{
    coordinateWithAddress(address, delegate);
}

void Location::startAddress()
{
    if (!m_services.geocoder) {
        if (LocationDelegate *listener = delegate())
            listener->reverseGeocoderFailed(this, QString());
        return;
    }
    const Coordinate coordinate{m_latitude, m_longitude};
    // this instance is the receiver; the delegate is looked at when the
    // answer comes, as it may have changed or gone by then
    m_services.geocoder->reverseGeocodeLocation(
        coordinate, this, [this](const GeocoderAnswer &answer) {
            if (failed(answer)) {
                if (LocationDelegate *listener = delegate())
                    listener->reverseGeocoderFailed(this, answer.error.value_or(QString()));
                return;
            }
            m_address = firstAddressLine(*answer.placemarks);
            if (LocationDelegate *listener = delegate())
                listener->reverseGeocoderSuccess(this, m_address);
        });
}

void Location::startGeocoder()
{
    startAddress();
}

QString Location::replaceUnicode(const QString &text)
{
    QString quoted = text;
    quoted.replace(QStringLiteral("\\u"), QStringLiteral("\\U"));
    quoted.replace(QStringLiteral("\""), QStringLiteral("\\\""));
    quoted = QLatin1Char('"') + quoted + QLatin1Char('"');
    const std::optional<QString> parsed = OldStyleText::parseQuotedString(quoted);
    if (!parsed)
        return QString();
    QString result = *parsed;
    result.replace(QStringLiteral("\\r\\n"), QStringLiteral("\n"));
    return result;
}
