#include "ui/MBTilesTileSource.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTimer>

MBTilesTileSource::MBTilesTileSource(const QString &path, QObject *parent)
    : TileSource(parent),
      m_connection(QStringLiteral("trekmime-mbtiles-%1").arg(quintptr(this), 0, 16))
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    m_open = db.open();
    if (!m_open) {
        m_error = db.lastError().text();
        return;
    }
    QSqlQuery metadata(db);
    if (metadata.exec(QStringLiteral("SELECT name, value FROM metadata"))) {
        while (metadata.next()) {
            const QString name = metadata.value(0).toString();
            const QString value = metadata.value(1).toString();
            if (name == QLatin1String("attribution")) {
                // files often carry the credit as an HTML link; the map shows plain text
                static const QRegularExpression tags(QStringLiteral("<[^>]*>"));
                m_attribution = QString(value).remove(tags).replace(QLatin1String("&copy;"),
                                                                    QStringLiteral("\u00a9"));
            } else if (name == QLatin1String("maxzoom") && value.toInt() > 0) {
                m_maximumZoom = value.toInt();
            }
        }
    }
}

MBTilesTileSource::~MBTilesTileSource()
{
    {
        QSqlDatabase db = QSqlDatabase::database(m_connection, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(m_connection);
}

void MBTilesTileSource::requestTile(const TileId &tile)
{
    if (m_requests.contains(tile))
        return;
    if (m_requests.isEmpty())
        QTimer::singleShot(0, this, &MBTilesTileSource::answerRequests);
    m_requests.append(tile);
}

void MBTilesTileSource::answerRequests()
{
    const QList<TileId> requests = std::exchange(m_requests, {});
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    QSqlQuery query(db);
    const bool prepared =
        m_open && query.prepare(QStringLiteral("SELECT tile_data FROM tiles WHERE zoom_level = ? "
                                               "AND tile_column = ? AND tile_row = ?"));
    for (const TileId &tile : requests) {
        QImage image;
        if (prepared && tile.isValid()) {
            query.bindValue(0, tile.z);
            query.bindValue(1, tile.x);
            query.bindValue(2, (1 << tile.z) - 1 - tile.y);
            if (query.exec() && query.next())
                image = QImage::fromData(query.value(0).toByteArray());
            query.finish();
        }
        if (image.isNull())
            emit tileFailed(tile);
        else
            emit tileLoaded(tile, image);
    }
}
