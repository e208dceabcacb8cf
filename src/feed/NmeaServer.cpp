#include "feed/NmeaServer.h"

#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTcpServer>
#include <QTcpSocket>

#include <sys/stat.h>

namespace {

void abortClient(QIODevice *client)
{
    // close() would wait to hand over what is pending, which is the trouble
    if (auto *tcp = qobject_cast<QAbstractSocket *>(client))
        tcp->abort();
    else if (auto *local = qobject_cast<QLocalSocket *>(client))
        local->abort();
}

} // namespace

NmeaServer::NmeaServer(QObject *parent) : QObject(parent) {}

bool NmeaServer::listenTcp(const QHostAddress &address, quint16 port, QString *error)
{
    auto *server = new QTcpServer(this);
    if (!server->listen(address, port)) {
        *error = QStringLiteral("cannot listen on %1:%2: %3")
                     .arg(address.toString())
                     .arg(port)
                     .arg(server->errorString());
        delete server;
        return false;
    }
    connect(server, &QTcpServer::newConnection, this, [this, server] {
        while (QTcpSocket *client = server->nextPendingConnection())
            adopt(client);
    });
    m_tcp = server;
    return true;
}

bool NmeaServer::listenLocal(const QString &given, QString *error)
{
    // Qt would put a bare name in the temporary folder
    const QString path = QFileInfo(given).absoluteFilePath();
    struct stat status;
    if (::lstat(QFile::encodeName(path).constData(), &status) == 0) {
        if (!S_ISSOCK(status.st_mode)) {
            *error = QStringLiteral("%1 exists and is not a socket").arg(path);
            return false;
        }
        QLocalSocket probe;
        probe.connectToServer(path);
        if (probe.waitForConnected(300)) {
            *error = QStringLiteral("%1 is in use by another program").arg(path);
            return false;
        }
        QLocalServer::removeServer(path); // left behind by a feed that was killed
    }
    auto *server = new QLocalServer(this);
    server->setSocketOptions(QLocalServer::UserAccessOption | QLocalServer::GroupAccessOption);
    if (!server->listen(path)) {
        *error = QStringLiteral("cannot listen on %1: %2").arg(path, server->errorString());
        delete server;
        return false;
    }
    connect(server, &QLocalServer::newConnection, this, [this, server] {
        while (QLocalSocket *client = server->nextPendingConnection())
            adopt(client);
    });
    m_local = server;
    return true;
}

QStringList NmeaServer::addresses() const
{
    QStringList all;
    if (m_tcp) {
        const QHostAddress address = m_tcp->serverAddress();
        const QString host = address.protocol() == QAbstractSocket::IPv6Protocol
                                 ? QStringLiteral("[%1]").arg(address.toString())
                                 : address.toString();
        all.append(QStringLiteral("%1:%2").arg(host).arg(m_tcp->serverPort()));
    }
    if (m_local)
        all.append(QStringLiteral("unix:") + m_local->fullServerName());
    return all;
}

void NmeaServer::adopt(QIODevice *client)
{
    m_clients.append(client);
    // receivers may talk (gpsd probes); nothing they say matters
    connect(client, &QIODevice::readyRead, client, [client] { client->readAll(); });
    if (auto *tcp = qobject_cast<QAbstractSocket *>(client))
        connect(tcp, &QAbstractSocket::disconnected, this, [this, client] { forget(client); });
    else if (auto *local = qobject_cast<QLocalSocket *>(client))
        connect(local, &QLocalSocket::disconnected, this, [this, client] { forget(client); });
    if (m_greeting)
        client->write(m_greeting());
}

void NmeaServer::forget(QIODevice *client)
{
    m_clients.removeAll(client);
    client->deleteLater();
}

void NmeaServer::broadcast(const QByteArray &lines)
{
    const QList<QPointer<QIODevice>> clients = m_clients;
    for (const QPointer<QIODevice> &client : clients) {
        if (!client)
            continue;
        if (client->bytesToWrite() + lines.size() > m_maxPending) {
            forget(client);
            abortClient(client);
            emit clientDropped();
            continue;
        }
        client->write(lines);
    }
}
