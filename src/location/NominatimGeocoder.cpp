#include "location/NominatimGeocoder.h"

#include "location/PreferredLanguage.h"
#include "location/ReplyFailure.h"
#include "location/UrlParameterString.h"
#include "platform/HeadlessServices.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <limits>

namespace {

// The service writes coordinates as texts; one that is no number reads as
// NaN, so the place is left out rather than put at 0.
double coordinateValue(const QJsonValue &value)
{
    if (value.isDouble())
        return value.toDouble();
    bool ok = false;
    const double number = value.toString().trimmed().toDouble(&ok);
    return ok ? number : std::numeric_limits<double>::quiet_NaN();
}

// How a street line is written: the house number before the road ("10
// Downing Street"), after it ("Hauptstraße 10"), after it with a comma
// ("Avenida Paulista, 1000"), or joined to it ("科技园路1号").
enum class StreetOrder { NumberRoad, RoadNumber, RoadCommaNumber, RoadNumberJoined };

StreetOrder streetOrder(const QString &countryCode)
{
    static const QHash<QString, StreetOrder> orders = [] {
        QHash<QString, StreetOrder> table;
        for (const char *code : {"de", "at", "ch", "li", "nl", "be", "lu", "dk", "se", "no", "fi",
                                 "is", "it", "es", "pt", "pl", "cz", "sk", "hu", "si", "hr", "rs",
                                 "ba", "me", "mk", "al", "bg", "ro", "gr", "tr", "ee", "lv", "lt",
                                 "il", "ar", "cl", "mx", "co", "pe", "uy", "ve", "bo", "ec", "py"})
            table.insert(QLatin1String(code), StreetOrder::RoadNumber);
        for (const char *code : {"br", "ru", "ua", "by", "kz"})
            table.insert(QLatin1String(code), StreetOrder::RoadCommaNumber);
        for (const char *code : {"cn", "tw", "hk", "mo", "jp"})
            table.insert(QLatin1String(code), StreetOrder::RoadNumberJoined);
        return table;
    }();
    return orders.value(countryCode.toLower(), StreetOrder::NumberRoad);
}

QString streetLine(const QString &number, const QString &road, const QString &countryCode)
{
    if (road.isEmpty())
        return QString();
    if (number.isEmpty())
        return road;
    switch (streetOrder(countryCode)) {
    case StreetOrder::NumberRoad:
        return number + u' ' + road;
    case StreetOrder::RoadNumber:
        return road + u' ' + number;
    case StreetOrder::RoadCommaNumber:
        return road + QLatin1String(", ") + number;
    case StreetOrder::RoadNumberJoined:
        return road + number;
    }
    return road;
}

// The first of `keys` that the address details name.
QString firstOf(const QJsonObject &address, std::initializer_list<const char *> keys)
{
    for (const char *key : keys) {
        const QString value = address.value(QLatin1String(key)).toString().trimmed();
        if (!value.isEmpty())
            return value;
    }
    return QString();
}

std::optional<GeocoderPlacemark> placemarkFrom(const QJsonObject &place)
{
    if (!place.contains(QLatin1String("lat")) || !place.contains(QLatin1String("lon")))
        return std::nullopt;
    const Coordinate location{coordinateValue(place.value(QLatin1String("lat"))),
                              coordinateValue(place.value(QLatin1String("lon")))};
    if (!location.isValid())
        return std::nullopt; // off the globe, infinite or no number: no place
    GeocoderPlacemark placemark;
    placemark.location = location;
    placemark.formattedAddressLines = NominatimGeocoder::addressLines(place);
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
    : QObject(parent), m_network(network), m_endpoint(endpoint), m_userAgent(userAgent),
      m_language(preferredLanguage())
{
}

std::optional<QStringList> NominatimGeocoder::addressLines(const QJsonObject &place)
{
    const QJsonObject address = place.value(QLatin1String("address")).toObject();
    const QString countryCode = address.value(QLatin1String("country_code")).toString();
    const QString name = place.value(QLatin1String("name")).toString().trimmed();
    const QString street =
        streetLine(firstOf(address, {"house_number"}),
                   firstOf(address, {"road", "pedestrian", "footway"}), countryCode);
    QString first = name.isEmpty() ? street : name;
    const QJsonValue displayName = place.value(QLatin1String("display_name"));
    if (first.isEmpty() && displayName.isString())
        first = displayName.toString().section(QLatin1Char(','), 0, 0).trimmed();
    if (first.isEmpty())
        return std::nullopt;

    QStringList lines{first};
    for (const QString &line :
         {street,
          firstOf(address,
                  {"suburb", "city_district", "district", "borough", "quarter", "neighbourhood"}),
          firstOf(address, {"city", "town", "village", "municipality", "hamlet"}),
          firstOf(address, {"postcode"}), firstOf(address, {"country"})}) {
        // a street that is itself the place, or a town that is its own
        // district, is written once
        if (!line.isEmpty() && !lines.contains(line))
            lines.append(line);
    }
    return lines;
}

NominatimGeocoder *NominatimGeocoder::fromServices(const HeadlessServices &services,
                                                   QObject *parent)
{
    auto *geocoder = new NominatimGeocoder(services.network, services.configuration.nominatimUrl,
                                           services.configuration.userAgent(), parent);
    geocoder->setLanguage(preferredLanguage(services.configuration));
    return geocoder;
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

void NominatimGeocoder::reverseGeocodeLocation(const Coordinate &location, QObject *receiver,
                                               Completion completion)
{
    request(url(QStringLiteral("/reverse"),
                {{QStringLiteral("format"), QStringLiteral("jsonv2")},
                 {QStringLiteral("addressdetails"), QStringLiteral("1")},
                 {QStringLiteral("lat"), QString::asprintf("%f", location.latitude)},
                 {QStringLiteral("lon"), QString::asprintf("%f", location.longitude)},
                 {QStringLiteral("accept-language"), m_language}}),
            receiver, std::move(completion));
}

void NominatimGeocoder::geocodeAddressString(const QString &address, QObject *receiver,
                                             Completion completion)
{
    request(url(QStringLiteral("/search"), {{QStringLiteral("format"), QStringLiteral("jsonv2")},
                                            {QStringLiteral("addressdetails"), QStringLiteral("1")},
                                            {QStringLiteral("q"), address},
                                            {QStringLiteral("accept-language"), m_language}}),
            receiver, std::move(completion));
}

void NominatimGeocoder::request(const QUrl &url, QObject *receiver, Completion completion)
{
    if (const GeocoderAnswer *cached = m_cache.object(url)) {
        // answered later all the same, as callers count on, and only to a
        // receiver that is still there
        if (receiver) {
            QTimer::singleShot(0, receiver, [completion = std::move(completion), answer = *cached] {
                completion(answer);
            });
        }
        return;
    }
    GeocoderRequest waiter{receiver, std::move(completion)};
    auto waiting = m_waiting.find(url);
    if (waiting != m_waiting.end()) {
        waiting->append(std::move(waiter));
        return;
    }
    m_waiting.insert(url, {std::move(waiter)});
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
        if (const auto failure = replyFailure(*reply, tr("the geocoding service"))) {
            answer(url, GeocoderAnswer::failure(*failure), false);
            return;
        }
        const int code = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const GeocoderAnswer result = answerFor(code, reply->readAll());
        // only what the service itself decided is worth remembering
        answer(url, result, code == 200);
    });
}

void NominatimGeocoder::answer(const QUrl &url, const GeocoderAnswer &result, bool keep)
{
    if (keep)
        m_cache.insert(url, new GeocoderAnswer(result));
    const QList<GeocoderRequest> waiters = m_waiting.take(url);
    for (const GeocoderRequest &waiter : waiters)
        waiter.answer(result);
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
