#include "routing/OsrmDirectionsService.h"

#include "location/ReplyFailure.h"
#include "platform/HeadlessServices.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QTimer>

#include <cmath>
#include <memory>

namespace {

QString coordinateText(const Coordinate &c)
{
    // longitude first, as OSRM wants; 'g' keeps every digit the user chose
    return QString::number(c.longitude, 'g', 12) + QLatin1Char(',') +
           QString::number(c.latitude, 'g', 12);
}

// Reads one zig-zag encoded number; false when the text ends inside it or
// holds a character outside the encoding.
bool readValue(QByteArrayView encoded, qsizetype &at, qint64 &value)
{
    quint64 result = 0;
    int shift = 0;
    while (at < encoded.size()) {
        const int chunk = int(uchar(encoded[at++])) - 63;
        if (chunk < 0 || chunk > 63 || shift > 60)
            return false;
        result |= quint64(chunk & 0x1f) << shift;
        shift += 5;
        if (!(chunk & 0x20)) {
            value = (result & 1) ? ~qint64(result >> 1) : qint64(result >> 1);
            return true;
        }
    }
    return false;
}

} // namespace

OsrmDirectionsService::OsrmDirectionsService(QNetworkAccessManager *network, const QUrl &endpoint,
                                             const QString &profile, const QString &userAgent,
                                             QObject *parent)
    : QObject(parent), m_network(network), m_endpoint(endpoint), m_profile(profile),
      m_userAgent(userAgent)
{
}

OsrmDirectionsService *OsrmDirectionsService::fromServices(const HeadlessServices &services,
                                                           QObject *parent)
{
    return new OsrmDirectionsService(services.network, services.configuration.routingUrl,
                                     services.configuration.routingProfile,
                                     services.configuration.userAgent(), parent);
}

QUrl OsrmDirectionsService::requestUrl(const QList<Coordinate> &waypoints) const
{
    QUrl url = m_endpoint;
    QString base = url.path();
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    QStringList places;
    places.reserve(waypoints.size());
    for (const Coordinate &c : waypoints)
        places.append(coordinateText(c));
    url.setPath(base + QStringLiteral("/route/v1/") + m_profile + QLatin1Char('/') +
                places.join(QLatin1Char(';')));
    url.setQuery(
        QStringLiteral("alternatives=true&overview=full&steps=false&geometries=polyline6"));
    return url;
}

void OsrmDirectionsService::calculateDirections(const QList<Coordinate> &waypoints,
                                                QObject *receiver, Completion completion)
{
    const bool watching = receiver != nullptr;
    Deliver deliver = DirectionsService::guarded(receiver, std::move(completion));

    if (waypoints.size() < 2) {
        QTimer::singleShot(0, this, [deliver] {
            deliver(DirectionsAnswer::failure(tr("A route needs a start and an end.")));
        });
        return;
    }
    if (!m_network) {
        QTimer::singleShot(
            0, this, [deliver] { deliver(DirectionsAnswer::failure(tr("No network access."))); });
        return;
    }
    Request request{requestUrl(waypoints), watching, receiver, std::move(deliver)};
    if (m_waiting) {
        // its turn is already booked: the newer request takes it
        QTimer::singleShot(0, this, [replaced = std::move(m_waiting->deliver)] {
            replaced(
                DirectionsAnswer::replacedRequest(tr("A newer route request replaced this one.")));
        });
        m_waiting = std::move(request);
        return;
    }
    m_waiting = std::move(request);
    m_pacer.schedule([this] {
        const Request due = std::move(*m_waiting);
        m_waiting.reset();
        send(due);
    });
}

void OsrmDirectionsService::send(const Request &request)
{
    if (request.guarded && !request.receiver)
        return; // nobody waits any more
    const Deliver deliver = request.deliver;
    QNetworkRequest get(request.url);
    get.setHeader(QNetworkRequest::UserAgentHeader, m_userAgent);
    get.setRawHeader("Accept", "application/json");
    QNetworkReply *reply = m_network->get(get);
    // the answer is told once, whichever of the reply and the watchdog comes first
    auto answered = std::make_shared<bool>(false);

    auto *watchdog = new QTimer(reply);
    watchdog->setSingleShot(true);
    connect(watchdog, &QTimer::timeout, this, [this, reply, deliver, answered] {
        *answered = true;
        reply->abort();
        deliver(DirectionsAnswer::failure(
            tr("The routing service did not answer within %1 seconds.").arg(m_timeout / 1000.0)));
    });
    watchdog->start(m_timeout);
    if (request.guarded) {
        // nobody waits any more: stop the transfer (its answer is dropped)
        connect(request.receiver, &QObject::destroyed, reply, [reply] { reply->abort(); });
    }

    connect(reply, &QNetworkReply::finished, this, [reply, deliver, answered, watchdog] {
        watchdog->stop();
        reply->deleteLater();
        if (*answered)
            return;
        *answered = true;
        if (const auto failure = replyFailure(*reply, tr("the routing service"))) {
            deliver(DirectionsAnswer::failure(*failure));
            return;
        }
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        deliver(answerFor(status, reply->readAll()));
    });
}

DirectionsAnswer OsrmDirectionsService::answerFor(int status, const QByteArray &body)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(body, &parseError);
    const bool json = parseError.error == QJsonParseError::NoError && document.isObject();
    const QJsonObject root = document.object();
    const QString code = root.value(QLatin1String("code")).toString();
    const QString message = root.value(QLatin1String("message")).toString();

    if (json && !code.isEmpty() && code != QLatin1String("Ok")) {
        // the service's own words say best what went wrong (no route, bad place)
        return DirectionsAnswer::failure(message.isEmpty() ? code : message);
    }
    if (status != 200) {
        return DirectionsAnswer::failure(
            tr("The routing service answered with HTTP status %1.").arg(status));
    }
    if (!json || code.isEmpty()) {
        return DirectionsAnswer::failure(
            tr("The routing service sent an answer that is not the expected JSON."));
    }
    const QJsonValue routesValue = root.value(QLatin1String("routes"));
    if (!routesValue.isArray()) {
        return DirectionsAnswer::failure(
            tr("The routing service sent an answer that is not the expected JSON."));
    }
    QList<DirectionsRoute> routes;
    const QJsonArray list = routesValue.toArray();
    for (const QJsonValue &value : list) {
        const QJsonObject object = value.toObject();
        const QJsonValue geometry = object.value(QLatin1String("geometry"));
        std::optional<QList<Coordinate>> coordinates;
        if (geometry.isString())
            coordinates = decodePolyline(geometry.toString().toLatin1());
        if (!coordinates) {
            return DirectionsAnswer::failure(
                tr("The routing service sent a route whose line cannot be read."));
        }
        routes.append({std::move(*coordinates), object.value(QLatin1String("distance")).toDouble(),
                       object.value(QLatin1String("duration")).toDouble()});
    }
    if (routes.isEmpty())
        return DirectionsAnswer::failure(tr("The routing service found no route."));
    return DirectionsAnswer::found(std::move(routes));
}

std::optional<QList<Coordinate>> OsrmDirectionsService::decodePolyline(QByteArrayView encoded,
                                                                       int precision)
{
    if (precision < 0 || precision > 9)
        return std::nullopt;
    const double factor = std::pow(10.0, precision);
    // Every running value must stay a place; a step larger than the whole
    // globe cannot be one either, and refusing it keeps the sums far from
    // overflowing.
    const qint64 maxLatitude = qint64(90 * factor);
    const qint64 maxLongitude = qint64(180 * factor);
    const qint64 maxStep = 2 * maxLongitude;
    QList<Coordinate> coordinates;
    coordinates.reserve(encoded.size() / 4);
    qint64 latitude = 0;
    qint64 longitude = 0;
    qsizetype at = 0;
    while (at < encoded.size()) {
        qint64 dLatitude = 0;
        qint64 dLongitude = 0;
        if (!readValue(encoded, at, dLatitude) || !readValue(encoded, at, dLongitude))
            return std::nullopt;
        if (dLatitude > maxStep || dLatitude < -maxStep || dLongitude > maxStep ||
            dLongitude < -maxStep)
            return std::nullopt;
        latitude += dLatitude;
        longitude += dLongitude;
        if (latitude > maxLatitude || latitude < -maxLatitude || longitude > maxLongitude ||
            longitude < -maxLongitude)
            return std::nullopt;
        // integers divided once: the nearest double to the encoded decimal
        coordinates.append({double(latitude) / factor, double(longitude) / factor});
    }
    return coordinates;
}
