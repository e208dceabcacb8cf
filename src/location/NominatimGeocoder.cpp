#include "location/NominatimGeocoder.h"

#include "location/PreferredLanguage.h"
#include "location/UrlParameterString.h"
#include "platform/Services.h"
#include "settings/StoredValue.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

namespace {

double coordinateValue(const QJsonValue &value)
{
    // the service writes coordinates as texts
    return value.isString() ? StoredValue::doubleValue(value.toString()) : value.toDouble();
}

std::optional<GeocoderPlacemark> placemarkFrom(const QJsonObject &place)
{
    if (!place.contains(QLatin1String("lat")) || !place.contains(QLatin1String("lon")))
        return std::nullopt;
    GeocoderPlacemark placemark;
    placemark.location = Coordinate{coordinateValue(place.value(QLatin1String("lat"))),
                                    coordinateValue(place.value(QLatin1String("lon")))};
    const QJsonValue name = place.value(QLatin1String("display_name"));
    if (name.isString())
        placemark.formattedAddressLines = QStringList{name.toString()};
    return placemark;
}

// The message of an "error" entry, which is a text or an object with one.
QString errorMessage(const QJsonValue &error)
{
    if (error.isString())
        return error.toString();
    const QJsonObject object = error.toObject();
    const QString message = object.value(QLatin1String("message")).toString();
    return message.isEmpty()
               ? QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact))
               : message;
}

} // namespace

NominatimGeocoder::NominatimGeocoder(QNetworkAccessManager *network, const QUrl &endpoint,
                                     const QString &userAgent, QObject *parent)
    : QObject(parent), m_network(network), m_endpoint(endpoint), m_userAgent(userAgent)
{
}

NominatimGeocoder *NominatimGeocoder::fromServices(const Services &services, QObject *parent)
{
    return new NominatimGeocoder(services.network, services.configuration.nominatimUrl,
                                 services.configuration.userAgent(), parent);
}

QUrl NominatimGeocoder::url(const QString &path, const QList<QPair<QString, QString>> &query) const
{
    QUrl url = m_endpoint;
    QString base = url.path();
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    url.setPath(base + path);
    url.setQuery(QString());
    // built by hand: a "+" or "&" inside an address must arrive as itself
    QByteArrayList pieces;
    for (const auto &[key, value] : query)
        pieces.append(key.toUtf8() + '=' + encodedURLParameterString(value));
    return QUrl::fromEncoded(url.toEncoded() + '?' + pieces.join('&'), QUrl::StrictMode);
}

void NominatimGeocoder::reverseGeocodeLocation(const Coordinate &location, Completion completion)
{
    request(url(QStringLiteral("/reverse"),
                {{QStringLiteral("format"), QStringLiteral("jsonv2")},
                 {QStringLiteral("lat"), QString::asprintf("%f", location.latitude)},
                 {QStringLiteral("lon"), QString::asprintf("%f", location.longitude)},
                 {QStringLiteral("accept-language"), preferredLanguage()}}),
            std::move(completion));
}

void NominatimGeocoder::geocodeAddressString(const QString &address, Completion completion)
{
    request(
        url(QStringLiteral("/search"), {{QStringLiteral("format"), QStringLiteral("jsonv2")},
                                        {QStringLiteral("q"), address},
                                        {QStringLiteral("accept-language"), preferredLanguage()}}),
        std::move(completion));
}

void NominatimGeocoder::request(const QUrl &url, Completion completion)
{
    if (const GeocoderAnswer *cached = m_cache.object(url)) {
        // answered later all the same, as callers count on
        QTimer::singleShot(0, this, [completion = std::move(completion), answer = *cached] {
            completion(answer);
        });
        return;
    }
    auto waiting = m_waiting.find(url);
    if (waiting != m_waiting.end()) {
        waiting->append(std::move(completion));
        return;
    }
    m_waiting.insert(url, {std::move(completion)});
    m_pacer.schedule([this, url] { send(url); });
}

void NominatimGeocoder::send(const QUrl &url)
{
    if (!m_network) {
        answer(url, GeocoderAnswer::failure(tr("No network access.")), false);
        return;
    }
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, m_userAgent);
    request.setRawHeader("Accept", "application/json");
    QNetworkReply *reply = m_network->get(request);

    auto *watchdog = new QTimer(reply);
    watchdog->setSingleShot(true);
    connect(watchdog, &QTimer::timeout, this, [this, reply, url] {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
        answer(url,
               GeocoderAnswer::failure(tr("The geocoding service did not answer within %1 seconds.")
                                           .arg(m_timeout / 1000.0)),
               false);
    });
    watchdog->start(m_timeout);

    connect(reply, &QNetworkReply::finished, this, [this, reply, url, watchdog] {
        watchdog->stop();
        reply->deleteLater();
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (!status.isValid()) {
            answer(url,
                   GeocoderAnswer::failure(
                       tr("Cannot reach the geocoding service: %1").arg(reply->errorString())),
                   false);
            return;
        }
        const int code = status.toInt();
        const GeocoderAnswer result = answerFor(code, reply->readAll());
        // only what the service itself decided is worth remembering
        answer(url, result, code == 200);
    });
}

void NominatimGeocoder::answer(const QUrl &url, const GeocoderAnswer &result, bool keep)
{
    if (keep)
        m_cache.insert(url, new GeocoderAnswer(result));
    const QList<Completion> completions = m_waiting.take(url);
    for (const Completion &completion : completions)
        completion(result);
}

GeocoderAnswer NominatimGeocoder::answerFor(int status, const QByteArray &body)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(body, &parseError);
    const bool json = parseError.error == QJsonParseError::NoError;
    const QJsonValue error = document.object().value(QLatin1String("error"));

    if (status != 200) {
        if (json && !error.isUndefined()) {
            return GeocoderAnswer::failure(
                tr("The geocoding service refused the request (HTTP %1): %2")
                    .arg(status)
                    .arg(errorMessage(error)));
        }
        return GeocoderAnswer::failure(
            tr("The geocoding service answered with HTTP status %1.").arg(status));
    }
    if (!json) {
        return GeocoderAnswer::failure(
            tr("The geocoding service sent an answer that is not JSON (%1).")
                .arg(parseError.errorString()));
    }
    if (!error.isUndefined())
        return GeocoderAnswer::failure(
            tr("The geocoding service found nothing: %1").arg(errorMessage(error)));

    QList<GeocoderPlacemark> placemarks;
    if (document.isArray()) {
        const QJsonArray places = document.array();
        for (const QJsonValue &place : places) {
            if (auto placemark = placemarkFrom(place.toObject()))
                placemarks.append(*placemark);
        }
    } else if (auto placemark = placemarkFrom(document.object())) {
        placemarks.append(*placemark);
    }
    if (placemarks.isEmpty())
        return GeocoderAnswer::failure(
            tr("The geocoding service found no place for this request."));
    return GeocoderAnswer::found(placemarks);
}
