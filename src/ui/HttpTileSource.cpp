#include "ui/HttpTileSource.h"

#include <QDateTime>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QRegularExpression>
#include <QTimer>

namespace {
// without expiry headers, the shortest time public tile servers ask
// clients to keep a tile
constexpr qint64 DefaultLifetimeSeconds = 7 * 24 * 3600;

QDateTime expiryOf(QNetworkReply *reply)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    static const QRegularExpression maxAge(QStringLiteral("max-age\\s*=\\s*(\\d+)"));
    const QString control = QString::fromLatin1(reply->rawHeader("Cache-Control"));
    const QRegularExpressionMatch match = maxAge.match(control);
    if (match.hasMatch())
        return now.addSecs(match.captured(1).toLongLong());
    const QDateTime expires =
        QDateTime::fromString(QString::fromLatin1(reply->rawHeader("Expires")), Qt::RFC2822Date);
    if (expires.isValid())
        return expires;
    return now.addSecs(DefaultLifetimeSeconds);
}
} // namespace

HttpTileSource::HttpTileSource(QNetworkAccessManager *network, const Options &options,
                               QObject *parent)
    : TileSource(parent), m_network(network), m_options(options)
{
    m_cache.setCacheDirectory(m_options.cacheDirectory);
    m_cache.setMaximumCacheSize(m_options.cacheBytes);
}

QUrl HttpTileSource::urlFor(const TileId &tile) const
{
    QString url = m_options.urlTemplate;
    url.replace(QLatin1String("{z}"), QString::number(tile.z));
    url.replace(QLatin1String("{x}"), QString::number(tile.x));
    url.replace(QLatin1String("{y}"), QString::number(tile.y));
    return QUrl(url);
}

void HttpTileSource::requestTile(const TileId &tile)
{
    if (m_running.contains(tile))
        return;
    if (answerFromCache(tile, false))
        return;
    m_queue.removeOne(tile);
    m_queue.prepend(tile);
    while (m_queue.size() > m_options.maximumQueued)
        m_queue.removeLast();
    startRequests();
}

bool HttpTileSource::answerFromCache(const TileId &tile, bool evenIfExpired)
{
    const QUrl url = urlFor(tile);
    const QNetworkCacheMetaData meta = m_cache.metaData(url);
    if (!meta.isValid())
        return false;
    if (!evenIfExpired && meta.expirationDate().isValid() &&
        meta.expirationDate() <= QDateTime::currentDateTimeUtc())
        return false;
    std::unique_ptr<QIODevice> device(m_cache.data(url));
    if (!device)
        return false;
    const QImage image = QImage::fromData(device->readAll());
    if (image.isNull())
        return false;
    // answers come later, never from inside the request
    QTimer::singleShot(0, this, [this, tile, image] { emit tileLoaded(tile, image); });
    return true;
}

void HttpTileSource::startRequests()
{
    while (m_running.size() < m_options.maximumRequests && !m_queue.isEmpty()) {
        const TileId tile = m_queue.takeFirst();
        QNetworkRequest request(urlFor(tile));
        request.setHeader(QNetworkRequest::UserAgentHeader, m_options.userAgent);
        // this source keeps its own cache; the shared manager's, if any, is bypassed
        request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                             QNetworkRequest::AlwaysNetwork);
        request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
        request.setTransferTimeout(15000);
        QNetworkReply *reply = m_network->get(request);
        m_running.insert(tile);
        connect(reply, &QNetworkReply::finished, this,
                [this, reply, tile] { onFinished(reply, tile); });
    }
}

void HttpTileSource::onFinished(QNetworkReply *reply, const TileId &tile)
{
    reply->deleteLater();
    m_running.remove(tile);
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    // a reply that failed to connect was never opened: reading it only warns
    const bool answered = reply->error() == QNetworkReply::NoError && status == 200;
    const QByteArray data = answered ? reply->readAll() : QByteArray();
    const QImage image = answered ? QImage::fromData(data) : QImage();
    if (!image.isNull()) {
        store(reply, data);
        emit tileLoaded(tile, image);
    } else if (!answerFromCache(tile, true)) {
        // an old tile is better than none while the server cannot be reached
        emit tileFailed(tile);
    }
    startRequests();
}

void HttpTileSource::store(QNetworkReply *reply, const QByteArray &data)
{
    QNetworkCacheMetaData meta;
    meta.setUrl(reply->request().url());
    meta.setRawHeaders(reply->rawHeaderPairs());
    meta.setExpirationDate(expiryOf(reply));
    meta.setLastModified(reply->header(QNetworkRequest::LastModifiedHeader).toDateTime());
    meta.setSaveToDisk(true);
    if (QIODevice *device = m_cache.prepare(meta)) {
        device->write(data);
        m_cache.insert(device);
    }
}
