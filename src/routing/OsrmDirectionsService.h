#pragma once

#include "routing/DirectionsService.h"

#include <QByteArrayView>
#include <QObject>
#include <QUrl>

class QNetworkAccessManager;
struct HeadlessServices;

// Directions from an OSRM server ("/route/v1/{profile}/{lng},{lat};{lng},{lat}"),
// with alternates, the full geometry as a six-digit encoded polyline, and no
// turn-by-turn steps. The network manager is not owned.
class OsrmDirectionsService : public QObject, public DirectionsService
{
    Q_OBJECT

public:
    OsrmDirectionsService(QNetworkAccessManager *network, const QUrl &endpoint,
                          const QString &profile, const QString &userAgent,
                          QObject *parent = nullptr);
    static OsrmDirectionsService *fromServices(const HeadlessServices &services,
                                               QObject *parent = nullptr);

    void calculateDirections(const Coordinate &source, const Coordinate &destination,
                             QObject *receiver, Completion completion) override;

    // How long one request may take; 30 seconds unless changed.
    int timeout() const { return m_timeout; }
    void setTimeout(int msecs) { m_timeout = msecs; }

    QUrl requestUrl(const Coordinate &source, const Coordinate &destination) const;

    // The answer an HTTP response means: `status` is the HTTP status, `body`
    // what came with it.
    static DirectionsAnswer answerFor(int status, const QByteArray &body);
    // The coordinates of an encoded polyline with `precision` decimal digits,
    // or nothing when the text is not one.
    static std::optional<QList<Coordinate>> decodePolyline(QByteArrayView encoded,
                                                           int precision = 6);

private:
    QNetworkAccessManager *m_network;
    QUrl m_endpoint;
    QString m_profile;
    QString m_userAgent;
    int m_timeout = 30000;
};
