#include "location/Location.h"

#include "location/Geocoder.h"
#include "location/OldStyleText.h"
#include "platform/AlertPresenter.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>

namespace {

const QString latitudeKey = QStringLiteral("LocationLatitudeKey");
const QString longitudeKey = QStringLiteral("LocationLongitudeKey");

// The application's own state folder ($XDG_STATE_HOME/trekmime): the last
// position is state, not configuration, and the user's configuration file
// (with its comments) is never written.
QString stateFolder()
{
    QString home = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(home))
        home = QDir::homePath() + QStringLiteral("/.local/state");
    return home + QStringLiteral("/trekmime");
}

QSettings userDefaults()
{
    return QSettings(stateFolder() + QStringLiteral("/last-position.ini"), QSettings::IniFormat);
}

void storeUserDefault(const QString &key, double value)
{
    QSettings settings = userDefaults();
    settings.setValue(key, value);
    // written through at once, so that a crash cannot lose the last fix
    settings.sync();
}

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

AddressAnswer addressAnswer(const GeocoderAnswer &answer)
{
    if (failed(answer))
        return AddressAnswer::failure(answer.error.value_or(QString()));
    return AddressAnswer::found(firstAddressLine(*answer.placemarks));
}

} // namespace

Location::Location(PositionSourceFactory *positionSources, Geocoder *geocoder,
                   AlertPresenter *alerts, QObject *parent)
    : QObject(parent), m_positionSources(positionSources), m_geocoder(geocoder), m_alerts(alerts)
{
    // the last position of an earlier run, until this one finds its own
    QSettings settings = userDefaults();
    m_latitude = settings.value(latitudeKey, 0.0).toDouble();
    m_longitude = settings.value(longitudeKey, 0.0).toDouble();
}

Location::~Location() = default;

bool Location::isLocationOn() const
{
    if (m_locationManager)
        return m_locationManager->locationServicesEnabled();
    if (!m_positionSources)
        return false;
    // no manager to ask yet: ask a short-lived one
    QObject owner;
    PositionSource *source = m_positionSources->create(&owner);
    return source && source->locationServicesEnabled();
}

void Location::presentAlert(const QString &title, const QString &message) const
{
    if (m_alerts)
        m_alerts->present(Alert{title, message, {tr("确定")}, {}}, nullptr);
}

void Location::prepareLocationManager()
{
    if (m_locationManager || !m_positionSources)
        return;
    PositionSource *manager = m_positionSources->create(this);
    if (!manager)
        return;
    m_locationManager = manager;
    connect(manager, &PositionSource::locationUpdated, this,
            [this, manager](const PositionFix &fix) { didUpdateToLocation(manager, fix); });
    connect(manager, &PositionSource::failed, this,
            [this, manager](int code, const QString &text) { didFail(manager, code, text); });
    manager->requestAuthorization();
}

void Location::startLocation(QObject *receiver, PositionCompletion completion)
{
    // an earlier requester still waiting is replaced: the last one hears
    m_receiver = receiver;
    m_completion = std::move(completion);
    prepareLocationManager();
    const bool on =
        m_locationManager ? m_locationManager->locationServicesEnabled() : isLocationOn();
    if (!on) {
        presentAlert(QString(), tr("定位服务未开启"));
        // a failure without description: no second alert
        didFail(m_locationManager, PositionSource::UnknownError, QString());
        return;
    }
    if (m_locationManager)
        m_locationManager->startUpdatingLocation();
    else // nothing to ask on this machine: the request ends as any failure does
        didFail(nullptr, PositionSource::UnknownError, QString());
}

void Location::answerPosition(const PositionAnswer &answer)
{
    // taken first, so that a completion may start the next request
    const QPointer<QObject> receiver = m_receiver;
    const PositionCompletion completion = std::move(m_completion);
    m_receiver = nullptr;
    m_completion = nullptr;
    if (receiver && completion)
        completion(answer);
}

void Location::didUpdateToLocation(PositionSource *manager, const PositionFix &fix)
{
    // an untrusted fix ends the request; it does not wait for a better one
    if (!fix.isValid()) {
        didFail(manager, PositionSource::UnknownError, QString());
        return;
    }
    m_latitude = fix.coordinate.latitude;
    m_longitude = fix.coordinate.longitude;
    storeUserDefault(latitudeKey, m_latitude);
    storeUserDefault(longitudeKey, m_longitude);
    answerPosition(PositionAnswer::found(Coordinate{m_latitude, m_longitude}));
    // one request, one answer
    manager->stopUpdatingLocation();
}

void Location::didFail(PositionSource *manager, int code, const QString &description)
{
    // These texts are chosen and then left unused on purpose: the requester
    // gets the source's own description, the user at most the alert below.
    [[maybe_unused]] const QString failureText = code == PositionSource::AccessDenied
                                                     ? tr("获取数据失败，定位服务未开启")
                                                     : tr("获取地理位置失败");
    answerPosition(PositionAnswer::failure(description));
    if (code == PositionSource::AccessDenied)
        presentAlert(tr("定位失败"), tr("请开启定位以保证程序正常运行"));
    if (manager)
        manager->stopUpdatingLocation();
}

// ---- address lookups ----

void Location::addressWithCoordinate(const Coordinate &coordinate, QObject *receiver,
                                     AddressCompletion completion)
{
    if (!m_geocoder) {
        if (receiver && completion)
            completion(AddressAnswer::failure(QString()));
        return;
    }
    m_geocoder->reverseGeocodeLocation(
        coordinate, receiver, [completion = std::move(completion)](const GeocoderAnswer &answer) {
            if (completion)
                completion(addressAnswer(answer));
        });
}

void Location::coordinateWithAddress(const QString &address, QObject *receiver,
                                     CoordinateCompletion completion)
{
    if (!m_geocoder) {
        if (receiver && completion)
            completion(CoordinateAnswer::failure(QString()));
        return;
    }
    m_geocoder->geocodeAddressString(
        address, receiver, [completion = std::move(completion)](const GeocoderAnswer &answer) {
            if (!completion)
                return;
            if (failed(answer)) {
                completion(CoordinateAnswer::failure(answer.error.value_or(QString())));
                return;
            }
            const QList<GeocoderPlacemark> &placemarks = *answer.placemarks;
            completion(CoordinateAnswer::found(
                placemarks.isEmpty() ? Coordinate{}
                                     : placemarks.first().location.value_or(Coordinate{})));
        });
}

void Location::startAddress(QObject *receiver, AddressCompletion completion)
{
    if (!m_geocoder) {
        if (receiver && completion)
            completion(AddressAnswer::failure(QString()));
        return;
    }
    // this instance receives the geocoder's answer, so that the address is
    // kept even when the requester is gone by then
    m_geocoder->reverseGeocodeLocation(
        Coordinate{m_latitude, m_longitude}, this,
        [this, receiver = QPointer<QObject>(receiver),
         completion = std::move(completion)](const GeocoderAnswer &answer) {
            const AddressAnswer result = addressAnswer(answer);
            if (result.succeeded())
                m_address = *result.value;
            if (receiver && completion)
                completion(result);
        });
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
