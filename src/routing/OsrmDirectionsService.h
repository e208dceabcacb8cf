#pragma once

#include "location/RequestPacer.h"
#include "routing/DirectionsService.h"

#include <QByteArrayView>
#include <QObject>
#include <QPointer>
#include <QUrl>

class QNetworkAccessManager;
struct HeadlessServices;

// Directions from an OSRM server ("/route/v1/{profile}/{lng},{lat};{lng},{lat}",
// one pair for each waypoint),
// with alternates, the full geometry as a six-digit encoded polyline, and no
// turn-by-turn steps. The network manager is not owned.
//
// As public services ask, it names itself in the User-Agent and sends at
// most one request a second. Only the latest choice of places matters, so a
// request still waiting for its turn when a newer one comes is not sent: it
// is answered (later) as replaced.
class OsrmDirectionsService : public QObject, public DirectionsService
{
    Q_OBJECT

public:
    OsrmDirectionsService(QNetworkAccessManager *network, const QUrl &endpoint,
                          const QString &profile, const QString &userAgent,
                          QObject *parent = nullptr);
    static OsrmDirectionsService *fromServices(const HeadlessServices &services,
                                               QObject *parent = nullptr);

    void calculateDirections(const QList<Coordinate> &waypoints, QObject *receiver,
                             Completion completion) override;

    // How long one request may take; 30 seconds unless changed.
    int timeout() const { return m_timeout; }
    void setTimeout(int msecs) { m_timeout = msecs; }

    RequestPacer &pacer() { return m_pacer; }

    QUrl requestUrl(const QList<Coordinate> &waypoints) const;

    // The answer an HTTP response means: `status` is the HTTP status, `body`
    // what came with it.
    static DirectionsAnswer answerFor(int status, const QByteArray &body);
    // The coordinates of an encoded polyline with `precision` decimal digits,
    // or nothing when the text is not one.
    static std::optional<QList<Coordinate>> decodePolyline(QByteArrayView encoded,
                                                           int precision = 6);

private:
    using Deliver = std::function<void(const DirectionsAnswer &)>;
    struct Request
    {
        QUrl url;
        bool guarded = false;
        QPointer<QObject> receiver;
        Deliver deliver;
    };
    void send(const Request &request);

    QNetworkAccessManager *m_network;
    QUrl m_endpoint;
    QString m_profile;
    QString m_userAgent;
    int m_timeout = 30000;
    RequestPacer m_pacer;
    std::optional<Request> m_waiting; // the one request waiting for its turn
};
