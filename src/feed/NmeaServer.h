#pragma once

#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>

class QIODevice;
class QLocalServer;
class QTcpServer;

// Hands the same lines to every connected client, over TCP, a Unix socket
// or both. Writing never waits: a client that stops reading only gathers
// output in its own buffer, and once that passes the bound it is dropped,
// so one stuck reader cannot hold up the others or fill the memory.
class NmeaServer : public QObject
{
    Q_OBJECT

public:
    explicit NmeaServer(QObject *parent = nullptr);

    // Each answers false with one line in `error` when it cannot listen.
    bool listenTcp(const QHostAddress &address, quint16 port, QString *error);
    // The socket file goes with the server. An old socket file that nobody answers on is replaced;
    // any other file at `path` is left alone and refused. The socket is open to the owner and the
    // folder's group (a receiver running as another user).
    bool listenLocal(const QString &path, QString *error);

    // "127.0.0.1:10110" or "unix:/run/trekmime/nmea.sock", one per listener.
    QStringList addresses() const;

    // What a new client gets at once, before the next broadcast.
    void setGreeting(std::function<QByteArray()> greeting) { m_greeting = std::move(greeting); }
    void broadcast(const QByteArray &lines);
    qsizetype clientCount() const { return m_clients.size(); }

    // Bytes a client may leave unread before it is dropped.
    void setMaxPending(qint64 bytes) { m_maxPending = bytes; }

signals:
    void clientDropped();

private:
    void adopt(QIODevice *client);
    void forget(QIODevice *client);

    QTcpServer *m_tcp = nullptr;
    QLocalServer *m_local = nullptr;
    QList<QPointer<QIODevice>> m_clients;
    std::function<QByteArray()> m_greeting;
    qint64 m_maxPending = 64 * 1024; // about five minutes of sentences
};
