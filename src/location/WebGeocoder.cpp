#include "location/WebGeocoder.h"

#include "location/PreferredLanguage.h"
#include "location/UrlParameterString.h"
#include "platform/Clock.h"
#include "platform/HeadlessServices.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QThread>

#include <cmath>
#include <numbers>

const QString WebGeocoder::ErrorDomain = QStringLiteral("WebGeocoderErrorDomain");
const QString WebGeocoder::URLErrorDomain = QStringLiteral("NSURLErrorDomain");
const QString WebGeocoder::EndpointPath = QStringLiteral("/maps/api/geocode/json");

namespace {

// metres in one degree of latitude on a sphere of the earth's equatorial radius
constexpr double metresPerDegree = EarthRadiusMeters * std::numbers::pi / 180.0;

QString serviceErrorText(int code)
{
    switch (code) {
    case WebGeocoder::ZeroResults:
        return QStringLiteral("Zero results returned");
    case WebGeocoder::OverQueryLimit:
        return QStringLiteral(
            "Currently rate limited. Too many queries in a short time. (Over Quota)");
    case WebGeocoder::RequestDenied:
        return QStringLiteral(
            "Request was denied. Did you remember to add the \"sensor\" parameter?");
    case WebGeocoder::InvalidRequest:
        return QStringLiteral(
            "The request was invalid. Was the \"address\" or \"latlng\" missing?");
    }
    return QString();
}

int serviceErrorCode(const QString &status)
{
    if (status == QLatin1String("ZERO_RESULTS"))
        return WebGeocoder::ZeroResults;
    if (status == QLatin1String("OVER_QUERY_LIMIT"))
        return WebGeocoder::OverQueryLimit;
    if (status == QLatin1String("REQUEST_DENIED"))
        return WebGeocoder::RequestDenied;
    if (status == QLatin1String("INVALID_REQUEST"))
        return WebGeocoder::InvalidRequest;
    return 0;
}

// Failures of the connection itself. The reply also reports most HTTP error
// statuses as errors (400 even as a protocol error), but those still bring
// an answer to read.
bool isConnectionError(QNetworkReply::NetworkError error)
{
    return (error >= QNetworkReply::ConnectionRefusedError &&
            error <= QNetworkReply::UnknownNetworkError) ||
           (error >= QNetworkReply::ProxyConnectionRefusedError &&
            error <= QNetworkReply::ProxyTimeoutError) ||
           error == QNetworkReply::ProtocolFailure;
}

QUrl endpointUrl(const QUrl &host)
{
    QUrl url = host;
    if (url.scheme().isEmpty())
        url = QUrl(QStringLiteral("http://") + host.toString());
    url.setPath(WebGeocoder::EndpointPath);
    url.setQuery(QString());
    url.setFragment(QString());
    return url;
}

} // namespace

WebGeocoderEndpoint WebGeocoderEndpoint::fromServices(const HeadlessServices &services)
{
    WebGeocoderEndpoint endpoint{services.network, services.configuration.geocodingUrl,
                                 services.configuration.userAgent()};
    endpoint.clock = services.clock;
    endpoint.language = preferredLanguage(services.configuration);
    return endpoint;
}

WebGeocoder *WebGeocoder::launch(WebGeocoder *operation, QObject *receiver)
{
    operation->setDeleteWhenFinished(true);
    operation->m_hasReceiver = true;
    operation->m_receiver = receiver;
    if (receiver)
        connect(receiver, &QObject::destroyed, operation, &WebGeocoder::cancel);
    else
        operation->cancel(); // nobody to answer
    operation->start();
    return operation;
}

WebGeocoder *WebGeocoder::geocode(const WebGeocoderEndpoint &endpoint, const QString &address,
                                  QObject *receiver, Completion completion)
{
    return launch(new WebGeocoder(endpoint, address, std::move(completion)), receiver);
}

WebGeocoder *WebGeocoder::geocode(const WebGeocoderEndpoint &endpoint, const QString &address,
                                  const CircularRegion &region, QObject *receiver,
                                  Completion completion)
{
    return launch(new WebGeocoder(endpoint, address, region, std::move(completion)), receiver);
}

WebGeocoder *WebGeocoder::reverseGeocode(const WebGeocoderEndpoint &endpoint,
                                         const Coordinate &coordinate, QObject *receiver,
                                         Completion completion)
{
    return launch(new WebGeocoder(endpoint, coordinate, std::move(completion)), receiver);
}

namespace {
WebGeocoder::Parameters addressParameters(const QString &address)
{
    return {{QStringLiteral("address"), address}};
}
WebGeocoder::Parameters regionParameters(const QString &address, const CircularRegion &region)
{
    return {{QStringLiteral("address"), address},
            {QStringLiteral("bounds"), WebGeocoder::boundsText(region)}};
}
WebGeocoder::Parameters coordinateParameters(const Coordinate &coordinate)
{
    return {{QStringLiteral("latlng"),
             QString::asprintf("%f,%f", coordinate.latitude, coordinate.longitude)}};
}
} // namespace

WebGeocoder::WebGeocoder(const WebGeocoderEndpoint &endpoint, const QString &address,
                         Completion completion, QObject *parent)
    : QObject(parent)
{
    Parameters parameters = addressParameters(address);
    build(endpoint, parameters, std::move(completion));
}

WebGeocoder::WebGeocoder(const WebGeocoderEndpoint &endpoint, const QString &address,
                         const CircularRegion &region, Completion completion, QObject *parent)
    : QObject(parent)
{
    Parameters parameters = regionParameters(address, region);
    build(endpoint, parameters, std::move(completion));
}

WebGeocoder::WebGeocoder(const WebGeocoderEndpoint &endpoint, const Coordinate &coordinate,
                         Completion completion, QObject *parent)
    : QObject(parent)
{
    Parameters parameters = coordinateParameters(coordinate);
    build(endpoint, parameters, std::move(completion));
}

WebGeocoder::WebGeocoder(const WebGeocoderEndpoint &endpoint, Parameters &parameters,
                         Completion completion, QObject *parent)
    : QObject(parent)
{
    build(endpoint, parameters, std::move(completion));
}

void WebGeocoder::build(const WebGeocoderEndpoint &endpoint, Parameters &parameters,
                        Completion completion)
{
    m_operationCompletionBlock = std::move(completion);
    m_network = endpoint.network;
    m_timeoutInterval = endpoint.timeoutInterval;
    const Clock *clock = endpoint.clock ? endpoint.clock : SystemClock::instance();
    m_timeoutTimer = clock->createTimer(this);
    m_timeoutTimer->setSingleShot(true);
    connect(m_timeoutTimer, &ClockTimer::timeout, this, &WebGeocoder::requestTimeout);

    setParameter(parameters, QStringLiteral("sensor"), QStringLiteral("true"));
    setParameter(parameters, QStringLiteral("language"),
                 endpoint.language.isEmpty() ? preferredLanguage() : endpoint.language);
    const QByteArray url = endpointUrl(endpoint.host).toEncoded() + '?' + queryText(parameters);
    // the query is encoded already and must reach the service byte for byte
    m_operationRequest.setUrl(QUrl::fromEncoded(url, QUrl::StrictMode));
    if (!endpoint.userAgent.isEmpty())
        m_operationRequest.setHeader(QNetworkRequest::UserAgentHeader, endpoint.userAgent);
    setState(Ready);
}

WebGeocoder::~WebGeocoder()
{
    dropConnection();
}

void WebGeocoder::setParameter(Parameters &parameters, const QString &key, const QVariant &value)
{
    for (auto &entry : parameters) {
        if (entry.first == key) {
            entry.second = value;
            return;
        }
    }
    parameters.append({key, value});
}

QByteArray WebGeocoder::queryText(const Parameters &parameters)
{
    QByteArrayList pieces;
    for (const auto &[key, value] : parameters) {
        // texts are encoded; anything else is written as it describes itself
        const QByteArray written = value.typeId() == QMetaType::QString
                                       ? encodedURLParameterString(value.toString())
                                       : value.toString().toUtf8();
        pieces.append(key.toUtf8() + '=' + written);
    }
    return pieces.join('&');
}

QString WebGeocoder::boundsText(const CircularRegion &region)
{
    // The radius, not the diameter, is taken as the box's height and width,
    // so the box is half as large as the circle. Callers rely on that size.
    const double latitudeDelta = region.radius / metresPerDegree;
    const double longitudeDelta =
        region.radius /
        (metresPerDegree * std::cos(region.center.latitude * std::numbers::pi / 180.0));
    const Coordinate &c = region.center;
    return QString::asprintf("%f,%f|%f,%f", c.latitude - latitudeDelta * 0.5,
                             c.longitude - longitudeDelta * 0.5, c.latitude + latitudeDelta * 0.5,
                             c.longitude + longitudeDelta * 0.5);
}

void WebGeocoder::setState(int state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}

void WebGeocoder::start()
{
    if (m_cancelled) {
        finish();
        return;
    }
    QThread *guiThread = QCoreApplication::instance()->thread();
    if (QThread::currentThread() != guiThread) {
        moveToThread(guiThread);
        QMetaObject::invokeMethod(this, &WebGeocoder::start, Qt::QueuedConnection);
        return;
    }
    if (m_state != Ready)
        return;
    setState(Executing);
    emit isExecutingChanged();
    m_operationData.clear();
    m_timeoutTimer->start(m_timeoutInterval);
    if (!m_network) {
        failWithError({URLErrorDomain, -1, QStringLiteral("No network access."),
                       m_operationRequest.url(), m_operationRequest.url().toString()});
        return;
    }
    QNetworkReply *reply = m_network->get(m_operationRequest);
    m_operationConnection = reply;
    connect(reply, &QNetworkReply::metaDataChanged, this, [this, reply] { keepResponse(reply); });
    connect(reply, &QNetworkReply::readyRead, this,
            [this, reply] { m_operationData.append(reply->readAll()); });
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        m_operationData.append(reply->readAll());
        keepResponse(reply);
        // an HTTP error status still brings an answer to read; a connection
        // that failed, before the head or after it, is a connection failure
        if (reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid() &&
            !isConnectionError(reply->error())) {
            finishedLoading();
        } else {
            failWithError({QStringLiteral("QNetworkReply"), int(reply->error()),
                           reply->errorString(), reply->url(), reply->url().toString()});
        }
    });
}

void WebGeocoder::keepResponse(QNetworkReply *reply)
{
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid())
        return;
    const QString contentType = reply->header(QNetworkRequest::ContentTypeHeader).toString();
    m_operationURLResponse =
        WebGeocoderResponse{reply->url(), status.toInt(),
                            contentType.section(QLatin1Char(';'), 0, 0).trimmed().toLower()};
}

WebGeocoder::Parsed WebGeocoder::parseResponseData(const QByteArray &data)
{
    // a bare value at the top is accepted too; it simply has no results
    std::optional<WebGeocoderError> parseError;
    QJsonParseError jsonError;
    const QJsonDocument document = QJsonDocument::fromJson('[' + data + ']', &jsonError);
    QJsonObject top;
    if (jsonError.error != QJsonParseError::NoError || document.array().size() != 1) {
        parseError = WebGeocoderError{QStringLiteral("QJsonParseError"), int(jsonError.error),
                                      jsonError.error != QJsonParseError::NoError
                                          ? jsonError.errorString()
                                          : QStringLiteral("garbage at the end of the document"),
                                      QUrl(), QString()};
    } else {
        top = document.array().first().toObject();
    }

    const QJsonValue results = top.value(QLatin1String("results"));
    const QString status = top.value(QLatin1String("status")).toString();
    std::optional<PlacemarkList> placemarks;
    if (results.isArray())
        placemarks = PlacemarkList();
    if (results.isArray() && !results.toArray().isEmpty()) {
        const QJsonArray entries = results.toArray();
        placemarks->reserve(entries.size());
        for (const QJsonValue &entry : entries)
            placemarks->append(WebPlacemark(entry.toObject()));
        return {placemarks, parseError};
    }
    const int code = serviceErrorCode(status);
    if (code)
        return {placemarks,
                WebGeocoderError{ErrorDomain, code, serviceErrorText(code), QUrl(), QString()}};
    return {placemarks, parseError};
}

void WebGeocoder::finishedLoading()
{
    if (!m_operationURLResponse ||
        m_operationURLResponse->mimeType != QLatin1String("application/json") ||
        m_operationData.isEmpty()) {
        callCompletionBlockWithResponse(std::nullopt, std::nullopt);
        return;
    }

    const Parsed parsed = parseResponseData(m_operationData);
    callCompletionBlockWithResponse(parsed.placemarks, parsed.error);
}

void WebGeocoder::failWithError(const WebGeocoderError &error)
{
    callCompletionBlockWithResponse(std::nullopt, error);
}

WebGeocoderError WebGeocoder::urlError(int code, const QString &text) const
{
    const QUrl url = m_operationRequest.url();
    return {URLErrorDomain, code, text, url, url.toString(QUrl::FullyEncoded)};
}

void WebGeocoder::requestTimeout()
{
    failWithError(urlError(TimedOut, QStringLiteral("The operation timed out.")));
}

void WebGeocoder::callCompletionBlockWithResponse(const std::optional<PlacemarkList> &placemarks,
                                                  const std::optional<WebGeocoderError> &error)
{
    // the first outcome wins: a late answer after the watchdog, or a
    // cancel after the answer, changes nothing
    if (m_delivering)
        return;
    m_delivering = true;
    m_timeoutTimer->stop();
    QMetaObject::invokeMethod(
        this,
        [this, placemarks, error] {
            std::optional<WebGeocoderError> delivered = error;
            if (!delivered && m_operationURLResponse && m_operationURLResponse->statusCode == 500)
                delivered = urlError(BadServerResponse, QStringLiteral("Bad Server Response."));
            if (m_operationCompletionBlock) {
                // a receiver that went before this moment gets nothing either
                if (m_cancelled || (m_hasReceiver && !m_receiver)) {
                    finish();
                    return;
                }
                m_operationCompletionBlock(placemarks, m_operationURLResponse, delivered);
            }
            finish();
        },
        Qt::QueuedConnection);
}

void WebGeocoder::dropConnection()
{
    if (!m_operationConnection)
        return;
    QNetworkReply *reply = m_operationConnection;
    m_operationConnection = nullptr;
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
}

void WebGeocoder::finish()
{
    dropConnection();
    const bool wasFinished = m_state == Finished;
    setState(Finished);
    if (!wasFinished) {
        emit isExecutingChanged();
        emit isFinishedChanged();
        if (m_deleteWhenFinished)
            deleteLater();
    }
}

void WebGeocoder::cancel()
{
    if (m_state == Finished)
        return;
    m_cancelled = true;
    callCompletionBlockWithResponse(std::nullopt, std::nullopt);
}
