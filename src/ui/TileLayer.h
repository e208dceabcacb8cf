#pragma once

#include "ui/TileId.h"
#include "ui/TileSource.h"

#include <QCache>
#include <QColor>
#include <QElapsedTimer>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QRegion>
#include <QSet>

#include <functional>

class MapCamera;
class QPainter;

// The map's base: tiles from a source, kept decoded in memory, drawn for
// any camera. Where no tile is at hand, an ancestor tile is drawn enlarged,
// and failing that a light background with a graticule, so the map is never
// black or blank, with no network or no source at all.
class TileLayer : public QObject
{
    Q_OBJECT

public:
    static const QColor BackgroundColor;
    static const QColor GraticuleColor;

    explicit TileLayer(QObject *parent = nullptr);

    // not owned; nullptr draws the graticule only
    void setSource(TileSource *source);
    TileSource *source() const { return m_source; }

    // draws what lies over the tiles (the lines) within `area` of the view
    using OverlayPainter =
        std::function<void(QPainter &painter, const MapCamera &camera, const QRectF &area)>;

    // Paints the tiles of the camera's view. With `overlays`, once the zoom
    // has come to rest (the same as the last frame's), each tile is kept with
    // the overlays drawn into it, as a map keeps its overlay renderings per
    // tile, and later frames copy it whole; the answer is the area where the
    // overlays are drawn that way, the caller draws them elsewhere.
    QRegion paint(QPainter &painter, const MapCamera &camera, const OverlayPainter &overlays = {});
    // the overlays changed: tiles with them drawn in are stale
    void invalidateOverlays();

    // the tile level drawn for a camera's zoom
    int tileZoomFor(double zoom) const;
    bool hasTile(const TileId &tile) const { return m_tiles.contains(tile); }
    // Forgets which tiles were asked for and not answered, so that the next
    // paint asks again for those still in view (a source may give up
    // requests that newer ones crowd out).
    void forgetRequests() { m_requested.clear(); }
    void setMemoryLimitBytes(qint64 bytes) { m_tiles.setMaxCost(qMax<qint64>(1, bytes / 1024)); }
    void setRetryAfterMs(qint64 ms) { m_retryAfterMs = ms; }

signals:
    // a tile arrived: whoever shows the layer should paint again
    void changed();

private:
    struct Composite
    {
        QImage image; // may be larger than needed, so it can be used again
        QSize used;   // pixels in use, from the top-left corner
    };
    void onLoaded(const TileId &tile, const QImage &image);
    void onFailed(const TileId &tile);
    Composite composedTile(const TileId &unwrapped, const QImage &tile, const QRect &target,
                           const MapCamera &camera, const OverlayPainter &overlays);
    void retireComposites();
    bool drawFromAncestor(QPainter &painter, const TileId &tile, const QRect &target);
    void drawGraticule(QPainter &painter, const MapCamera &camera, const QRegion &where);
    bool shouldRequest(const TileId &tile) const;

    QPointer<TileSource> m_source;
    QCache<TileId, QImage> m_tiles; // cost in KiB
    // tiles with the overlays drawn in, for one zoom and viewport; their
    // column is not wrapped round the world, as each copy of the world
    // shows a line once only
    QCache<TileId, Composite> m_composed;
    // images of retired kept tiles: fresh memory costs more to fill than the
    // drawing itself, so they are painted over again
    QList<QImage> m_spare;
    double m_composedZoom = -1.0;
    QSizeF m_composedViewport;
    qreal m_composedRatio = 1.0;
    double m_lastZoom = -1.0;
    QSet<TileId> m_requested;
    QHash<TileId, qint64> m_failedAt;
    QElapsedTimer m_elapsed;
    qint64 m_retryAfterMs = 30000;
};
