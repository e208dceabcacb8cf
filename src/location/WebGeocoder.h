#pragma once

#include "location/WebPlacemark.h"
#include "platform/Coordinate.h"

#include <QByteArray>
#include <QList>
#include <QNetworkRequest>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QUrl>
#include <QVariant>

#include <functional>
#include <optional>

class Clock;
class ClockTimer;
class QNetworkAccessManager;
class QNetworkReply;
struct HeadlessServices;

// An error of the web geocoding client, in the manner of the platform's
// error objects: a domain, a code, a readable text, and for errors of the
// URL domain the URL that failed.
struct WebGeocoderError
{
    QString domain;
    int code = 0;
    QString localizedDescription;
    QUrl failingURL;
    QString failingURLString;
};

// The HTTP response head as received.
struct WebGeocoderResponse
{
    QUrl url;
    int statusCode = 0;
    QString mimeType;
};

// A circle on the earth: centre and radius in metres.
struct CircularRegion
{
    Coordinate center;
    double radius = 0.0;
};

// Where the service is and how to reach it.
struct WebGeocoderEndpoint
{
    QNetworkAccessManager *network = nullptr; // not owned
    QUrl host;
    QString userAgent;
    // The watchdog of each operation, in milliseconds, on this clock (the
    // system's when null); tests shorten it or run a clock of their own.
    int timeoutInterval = 20000;
    const Clock *clock = nullptr;
    // The "language" asked for; the system's first preferred one when empty.
    QString language = {};

    static WebGeocoderEndpoint fromServices(const HeadlessServices &services);
};

// One lookup against the Google Geocoding JSON interface, by address or by
// coordinate: an asynchronous operation that can be cancelled, with a
// watchdog, whose completion runs at most once and always later on the GUI
// thread, receiving the places found (may be empty or absent), the HTTP
// response (absent when none arrived) and an error (absent on success).
class WebGeocoder : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int state READ state WRITE setState NOTIFY stateChanged)
    Q_PROPERTY(bool isExecuting READ isExecuting NOTIFY isExecutingChanged)
    Q_PROPERTY(bool isFinished READ isFinished NOTIFY isFinishedChanged)

public:
    enum State { Ready = 0, Executing = 1, Finished = 2 };
    enum ErrorCode {
        ZeroResults = 1,
        OverQueryLimit = 2,
        RequestDenied = 3,
        InvalidRequest = 4,
    };
    enum URLErrorCode { TimedOut = -1001, BadServerResponse = -1011 };

    using PlacemarkList = QList<WebPlacemark>;
    using Completion = std::function<void(const std::optional<PlacemarkList> &placemarks,
                                          const std::optional<WebGeocoderResponse> &response,
                                          const std::optional<WebGeocoderError> &error)>;
    // Query parameters in the order they are written.
    using Parameters = QList<QPair<QString, QVariant>>;

    static const QString ErrorDomain;    // "WebGeocoderErrorDomain"
    static const QString URLErrorDomain; // the URL errors' domain
    static const QString EndpointPath;   // "/maps/api/geocode/json"

    // Each creates an operation, starts it and answers it; the operation
    // deletes itself once finished, so keep it in a QPointer to cancel it.
    // The receiver is the caller's context, as for QTimer::singleShot: when
    // it is destroyed first, the operation cancels itself and the completion
    // is never called. A null receiver is never answered.
    static WebGeocoder *geocode(const WebGeocoderEndpoint &endpoint, const QString &address,
                                QObject *receiver, Completion completion);
    static WebGeocoder *geocode(const WebGeocoderEndpoint &endpoint, const QString &address,
                                const CircularRegion &region, QObject *receiver,
                                Completion completion);
    static WebGeocoder *reverseGeocode(const WebGeocoderEndpoint &endpoint,
                                       const Coordinate &coordinate, QObject *receiver,
                                       Completion completion);

    WebGeocoder(const WebGeocoderEndpoint &endpoint, const QString &address, Completion completion,
                QObject *parent = nullptr);
    WebGeocoder(const WebGeocoderEndpoint &endpoint, const QString &address,
                const CircularRegion &region, Completion completion, QObject *parent = nullptr);
    WebGeocoder(const WebGeocoderEndpoint &endpoint, const Coordinate &coordinate,
                Completion completion, QObject *parent = nullptr);
    // Adds "sensor" and "language" to the caller's parameters, replacing any
    // value they had, and builds the request from them.
    WebGeocoder(const WebGeocoderEndpoint &endpoint, Parameters &parameters, Completion completion,
                QObject *parent = nullptr);
    ~WebGeocoder() override;

    void start();
    void cancel();

    bool isConcurrent() const { return true; }
    bool isExecuting() const { return m_state == Executing; }
    bool isFinished() const { return m_state == Finished; }
    bool isCancelled() const { return m_cancelled; }
    int state() const { return m_state; }
    void setState(int state);

    QUrl requestURL() const { return m_operationRequest.url(); }
    // The watchdog: the endpoint's (20 seconds unless changed) unless
    // changed before `start`. A caller that owns the operation itself ties
    // it to its own lifetime by parenting it.
    int timeoutInterval() const { return m_timeoutInterval; }
    void setTimeoutInterval(int msecs) { m_timeoutInterval = msecs; }
    void setDeleteWhenFinished(bool on) { m_deleteWhenFinished = on; }

    // The "bounds" value for a region: south-west and north-east corners of
    // a box whose height and width equal the radius.
    static QString boundsText(const CircularRegion &region);
    // What the body of a JSON response means: the places found (absent when
    // the answer has no "results" list) and the error it reports, if any.
    struct Parsed
    {
        std::optional<PlacemarkList> placemarks;
        std::optional<WebGeocoderError> error;
    };
    static Parsed parseResponseData(const QByteArray &data);
    static void setParameter(Parameters &parameters, const QString &key, const QVariant &value);
    static QByteArray queryText(const Parameters &parameters);

signals:
    void stateChanged();
    void isExecutingChanged();
    void isFinishedChanged();

private:
    static WebGeocoder *launch(WebGeocoder *operation, QObject *receiver);
    void build(const WebGeocoderEndpoint &endpoint, Parameters &parameters, Completion completion);
    void keepResponse(QNetworkReply *reply);
    void finishedLoading();
    void failWithError(const WebGeocoderError &error);
    void requestTimeout();
    void callCompletionBlockWithResponse(const std::optional<PlacemarkList> &placemarks,
                                         const std::optional<WebGeocoderError> &error);
    void finish();
    void dropConnection();
    WebGeocoderError urlError(int code, const QString &text) const;

    QNetworkAccessManager *m_network = nullptr;
    QNetworkRequest m_operationRequest;
    QByteArray m_operationData;
    QPointer<QNetworkReply> m_operationConnection;
    std::optional<WebGeocoderResponse> m_operationURLResponse;
    int m_state = Ready;
    Completion m_operationCompletionBlock;
    ClockTimer *m_timeoutTimer; // a child, so that it follows the operation to its thread
    int m_timeoutInterval = 20000;
    bool m_cancelled = false;
    bool m_delivering = false;
    bool m_deleteWhenFinished = false;
    bool m_hasReceiver = false;
    QPointer<QObject> m_receiver;
};
