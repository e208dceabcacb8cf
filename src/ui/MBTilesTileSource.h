#pragma once

#include "ui/TileSource.h"

#include <QList>
#include <QString>

// Tiles from an MBTiles file (an SQLite database of raster tiles) for maps
// without a network. The file numbers tile rows from the south (TMS), the
// other way round from the XYZ ids the map uses.
class MBTilesTileSource : public TileSource
{
    Q_OBJECT

public:
    explicit MBTilesTileSource(const QString &path, QObject *parent = nullptr);
    ~MBTilesTileSource() override;

    bool isOpen() const { return m_open; }
    QString errorString() const { return m_error; }

    QString attribution() const override { return m_attribution; }
    int maximumZoom() const override { return m_maximumZoom; }
    void requestTile(const TileId &tile) override;

private:
    void answerRequests();

    QString m_connection;
    bool m_open = false;
    QString m_error;
    QString m_attribution;
    int m_maximumZoom = 19;
    QList<TileId> m_requests;
};
