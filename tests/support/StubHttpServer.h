#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QTcpServer>
#include <QUrl>

#include <functional>

// A tiny HTTP/1.1 server on 127.0.0.1 for tests: every request is recorded
// and answered by a handler. A handler that answers `status == 0` leaves the
// connection open without an answer, for timeout tests.
class StubHttpServer : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QByteArray target;                     // path and query exactly as sent
        QHash<QByteArray, QByteArray> headers; // names in lower case
    };
    struct Response
    {
        int status = 200;
        QByteArray contentType = "application/json; charset=UTF-8";
        QByteArray body;
        QList<QPair<QByteArray, QByteArray>> extraHeaders;
    };
    using Handler = std::function<Response(const Request &)>;

    explicit StubHttpServer(Handler handler = {}, QObject *parent = nullptr);

    bool listen() { return m_server.listen(QHostAddress::LocalHost, 0); }
    QUrl baseUrl() const; // http://127.0.0.1:PORT
    void setHandler(Handler handler) { m_handler = std::move(handler); }
    // Sends the head and only half of each body, then closes the connection.
    void setCutShort(bool on) { m_cutShort = on; }

    const QList<Request> &requests() const { return m_requests; }

private:
    void onNewConnection();
    void serve(QTcpSocket *socket, QByteArray &buffer);

    QTcpServer m_server;
    Handler m_handler;
    QList<Request> m_requests;
    bool m_cutShort = false;
};
