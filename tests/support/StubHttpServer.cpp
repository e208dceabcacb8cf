#include "StubHttpServer.h"

#include <QTcpSocket>
#include <QTimer>

StubHttpServer::StubHttpServer(Handler handler, QObject *parent)
    : QObject(parent), m_handler(std::move(handler))
{
    connect(&m_server, &QTcpServer::newConnection, this, &StubHttpServer::onNewConnection);
}

QUrl StubHttpServer::baseUrl() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort()));
}

void StubHttpServer::onNewConnection()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        auto buffer = std::make_shared<QByteArray>();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, buffer] {
            buffer->append(socket->readAll());
            serve(socket, *buffer);
        });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void StubHttpServer::serve(QTcpSocket *socket, QByteArray &buffer)
{
    // several requests may arrive on one kept-alive connection
    for (;;) {
        const qsizetype headerEnd = buffer.indexOf("\r\n\r\n");
        if (headerEnd < 0)
            return;
        const QList<QByteArray> lines = buffer.left(headerEnd).split('\n');
        Request request;
        request.target = lines.value(0).trimmed().split(' ').value(1);
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const qsizetype colon = lines[i].indexOf(':');
            if (colon > 0)
                request.headers.insert(lines[i].left(colon).trimmed().toLower(),
                                       lines[i].mid(colon + 1).trimmed());
        }
        const qsizetype length = request.headers.value("content-length", "0").toLongLong();
        if (buffer.size() < headerEnd + 4 + length)
            return;
        buffer.remove(0, headerEnd + 4 + length);
        m_requests.append(request);

        const Response response =
            m_handler ? m_handler(request) : Response{404, "text/plain", "no handler", {}};
        if (response.status == 0)
            continue; // never answer
        QByteArray reply = "HTTP/1.1 " + QByteArray::number(response.status) + " Stub\r\n";
        if (!response.contentType.isEmpty())
            reply += "Content-Type: " + response.contentType + "\r\n";
        for (const auto &header : response.extraHeaders)
            reply += header.first + ": " + header.second + "\r\n";
        reply += "Content-Length: " + QByteArray::number(response.body.size()) + "\r\n\r\n";
        if (m_cutShort) {
            // the head first, so that the client has taken it in before the cut
            socket->write(reply);
            QTimer::singleShot(50, socket,
                               [socket, half = response.body.left(response.body.size() / 2)] {
                                   socket->write(half);
                                   socket->disconnectFromHost();
                               });
            return;
        }
        reply += response.body;
        socket->write(reply);
    }
}
