#pragma once

#include "location/Geocoder.h"
#include "location/RequestPacer.h"

#include <QCache>
#include <QHash>
#include <QObject>
#include <QUrl>

class QJsonObject;
class QNetworkAccessManager;
class QNetworkReply;
struct HeadlessServices;

// The geocoder over a Nominatim service ("/search" and "/reverse", JSON
// version 2, in the user's language). As the public service asks, it names
// itself in the User-Agent, sends at most one request a second and keeps
// answers in memory, so a place looked up again costs nothing. Equal
// requests waiting at the same time share one trip to the service; a trip
// whose askers are all gone still fills the memory for the next one.
//
// Each place gets address lines as a person writes them in its country
// (from the service's address details): the place's name, or its house
// number and road, first; district, city, postcode and country after.
class NominatimGeocoder : public QObject, public Geocoder
{
    Q_OBJECT

public:
    NominatimGeocoder(QNetworkAccessManager *network, const QUrl &endpoint,
                      const QString &userAgent, QObject *parent = nullptr);
    static NominatimGeocoder *fromServices(const HeadlessServices &services,
                                           QObject *parent = nullptr);

    void reverseGeocodeLocation(const Coordinate &location, QObject *receiver,
                                Completion completion) override;
    void geocodeAddressString(const QString &address, QObject *receiver,
                              Completion completion) override;

    RequestPacer &pacer() { return m_pacer; }
    // The language the answers come in (accept-language); the system's
    // first preferred one unless changed.
    void setLanguage(const QString &language) { m_language = language; }
    // How long one request may take; 20 seconds unless changed.
    void setTimeout(int msecs) { m_timeout = msecs; }

    // The address lines of one place of a "jsonv2" answer with address
    // details; without usable details, the first part of its display name.
    static std::optional<QStringList> addressLines(const QJsonObject &place);

    // The answer a service response means: `status` is the HTTP status (0
    // for none), `body` what came with it.
    static GeocoderAnswer answerFor(int status, const QByteArray &body);

private:
    void request(const QUrl &url, QObject *receiver, Completion completion);
    void send(const QUrl &url);
    void answer(const QUrl &url, const GeocoderAnswer &answer, bool keep);
    QUrl url(const QString &path, const QList<QPair<QString, QString>> &query) const;

    QNetworkAccessManager *m_network;
    QUrl m_endpoint;
    QString m_userAgent;
    QString m_language;
    RequestPacer m_pacer;
    int m_timeout = 20000;
    QCache<QUrl, GeocoderAnswer> m_cache{512};
    QHash<QUrl, QList<GeocoderRequest>> m_waiting;
};
