#pragma once

#include "ui/TileSource.h"

#include <QHash>
#include <QList>
#include <QNetworkDiskCache>
#include <QSet>
#include <QUrl>

class QNetworkAccessManager;
class QNetworkReply;

// Tiles from a web tile server through a URL template with {z}, {x} and
// {y}. Every tile fetched is kept in a size-bounded disk cache of this
// source's own (the shared network manager is left as it is), and served
// from there without asking the server again until the server's expiry
// passes, as public tile servers ask of their clients.
class HttpTileSource : public TileSource
{
    Q_OBJECT

public:
    struct Options
    {
        QString urlTemplate;
        QString userAgent;
        QString cacheDirectory;
        qint64 cacheBytes = 200 * 1024 * 1024;
        QString attribution;
        int maximumZoom = 19;
        // public servers ask for few parallel connections per client
        int maximumRequests = 4;
        // tiles asked for while this many wait are given up, oldest first:
        // the map has moved on and will ask again for what it still shows
        int maximumQueued = 64;
    };

    // `network` is not owned and must outlive the source.
    HttpTileSource(QNetworkAccessManager *network, const Options &options,
                   QObject *parent = nullptr);

    QString attribution() const override { return m_options.attribution; }
    int maximumZoom() const override { return m_options.maximumZoom; }
    void requestTile(const TileId &tile) override;

    QUrl urlFor(const TileId &tile) const;
    QNetworkDiskCache *cache() { return &m_cache; }

private:
    bool answerFromCache(const TileId &tile, bool evenIfExpired);
    void startRequests();
    void onFinished(QNetworkReply *reply, const TileId &tile);
    void store(QNetworkReply *reply, const QByteArray &data);

    QNetworkAccessManager *m_network;
    Options m_options;
    QNetworkDiskCache m_cache;
    QList<TileId> m_queue; // newest first
    QSet<TileId> m_running;
};
