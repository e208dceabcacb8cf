#include "ui/TileLayer.h"

#include "ui/MapCamera.h"
#include "ui/TileSource.h"

#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <cmath>

const QColor TileLayer::BackgroundColor(0xf2, 0xef, 0xe9);
const QColor TileLayer::GraticuleColor(0xd4, 0xd0, 0xc8);

namespace {
constexpr int AncestorLevels = 4;
}

TileLayer::TileLayer(QObject *parent) : QObject(parent)
{
    setMemoryLimitBytes(96 * 1024 * 1024);
    m_composed.setMaxCost(48 * 1024);
    m_elapsed.start();
}

void TileLayer::setSource(TileSource *source)
{
    if (m_source == source)
        return;
    if (m_source)
        disconnect(m_source, nullptr, this, nullptr);
    m_source = source;
    m_tiles.clear();
    retireComposites();
    m_requested.clear();
    m_failedAt.clear();
    if (m_source) {
        connect(m_source, &TileSource::tileLoaded, this, &TileLayer::onLoaded);
        connect(m_source, &TileSource::tileFailed, this, &TileLayer::onFailed);
    }
    emit changed();
}

int TileLayer::tileZoomFor(double zoom) const
{
    const int maximum = m_source ? m_source->maximumZoom() : 0;
    return std::clamp(int(std::lround(zoom)), 0, std::max(0, maximum));
}

void TileLayer::onLoaded(const TileId &tile, const QImage &image)
{
    m_requested.remove(tile);
    m_failedAt.remove(tile);
    // kept in a format the raster painter copies without conversion
    auto *stored = new QImage(image.convertToFormat(
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32));
    m_tiles.insert(tile, stored, qMax<qsizetype>(1, stored->sizeInBytes() / 1024));
    // kept tiles are numbered by the copy of the world they lie in
    const int count = 1 << tile.z;
    const QList<TileId> kept = m_composed.keys();
    for (const TileId &id : kept) {
        if (id.z == tile.z && id.y == tile.y && ((id.x % count) + count) % count == tile.x)
            m_composed.remove(id);
    }
    emit changed();
}

void TileLayer::onFailed(const TileId &tile)
{
    // no repaint: nothing new to draw, and asking again at once would loop
    m_requested.remove(tile);
    m_failedAt.insert(tile, m_elapsed.elapsed());
}

bool TileLayer::shouldRequest(const TileId &tile) const
{
    if (m_requested.contains(tile))
        return false;
    const auto failed = m_failedAt.constFind(tile);
    return failed == m_failedAt.cend() || m_elapsed.elapsed() - *failed >= m_retryAfterMs;
}

QRegion TileLayer::paint(QPainter &painter, const MapCamera &camera, const OverlayPainter &overlays)
{
    const QSizeF viewport = camera.viewportSize();
    const QRect viewRect(0, 0, int(std::ceil(viewport.width())), int(std::ceil(viewport.height())));
    QRegion bare;
    QRegion composed;
    // during a pinch or a zooming animation every frame has another zoom:
    // there tiles are not worth keeping, the overlays are drawn afresh
    const bool atRest = camera.zoom() == m_lastZoom;
    m_lastZoom = camera.zoom();
    // kept tiles have as many pixels as the screen, so lines stay sharp
    const qreal ratio = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    if (atRest && (camera.zoom() != m_composedZoom || viewport != m_composedViewport ||
                   ratio != m_composedRatio)) {
        retireComposites();
        m_composedZoom = camera.zoom();
        m_composedViewport = viewport;
        m_composedRatio = ratio;
    }
    if (!m_source) {
        bare = QRegion(viewRect);
    } else {
        const int z = tileZoomFor(camera.zoom());
        const int count = 1 << z;
        const double tileSize = camera.worldSize() / count;
        const QPointF topLeft = camera.viewToWorld(QPointF(0, 0));
        const QPointF bottomRight =
            camera.viewToWorld(QPointF(viewport.width(), viewport.height()));
        const int firstX = int(std::floor(topLeft.x() * count));
        // an edge exactly on a tile border does not show the next tile
        const int lastX = int(std::ceil(bottomRight.x() * count)) - 1;
        const int firstY = int(std::floor(topLeft.y() * count));
        const int lastY = int(std::ceil(bottomRight.y() * count)) - 1;
        // tile edges rounded once, so that neighbours meet without seams
        const double originX = viewport.width() / 2.0 - camera.centerWorld().x() * count * tileSize;
        const double originY =
            viewport.height() / 2.0 - camera.centerWorld().y() * count * tileSize;
        const bool scaled = std::abs(tileSize - MapCamera::TileSize) > 1e-6;
        // tiles shown enlarged or reduced are kept at that size as well:
        // copying them is far cheaper than scaling them every frame
        const bool compose = m_source && atRest && (overlays || scaled);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, scaled);

        struct Wanted
        {
            TileId tile;
            double distance;
        };
        QList<Wanted> wanted;
        const QPointF middle(viewport.width() / 2.0, viewport.height() / 2.0);
        for (int ty = firstY; ty <= lastY; ++ty) {
            for (int tx = firstX; tx <= lastX; ++tx) {
                const int left = int(std::lround(originX + tx * tileSize));
                const int right = int(std::lround(originX + (tx + 1) * tileSize));
                const int top = int(std::lround(originY + ty * tileSize));
                const int bottom = int(std::lround(originY + (ty + 1) * tileSize));
                const QRect target(left, top, right - left, bottom - top);
                if (ty < 0 || ty >= count) {
                    bare += target; // beyond the poles
                    continue;
                }
                const TileId tile{z, ((tx % count) + count) % count, ty};
                if (const QImage *image = m_tiles.object(tile)) {
                    if (compose) {
                        const Composite kept =
                            composedTile(TileId{z, tx, ty}, *image, target, camera, overlays);
                        painter.drawImage(QRectF(target), kept.image,
                                          QRectF(QPointF(0, 0), QSizeF(kept.used)));
                        composed += target;
                        continue;
                    }
                    if (scaled)
                        painter.drawImage(target, *image);
                    else
                        painter.drawImage(target.topLeft(), *image);
                    continue;
                }
                if (!drawFromAncestor(painter, tile, target))
                    bare += target;
                if (shouldRequest(tile))
                    wanted.append({tile, QLineF(middle, QRectF(target).center()).length()});
            }
        }
        // sources serve the newest request first: ask for the middle last
        std::sort(wanted.begin(), wanted.end(),
                  [](const Wanted &a, const Wanted &b) { return a.distance > b.distance; });
        for (const Wanted &w : std::as_const(wanted)) {
            m_requested.insert(w.tile);
            m_source->requestTile(w.tile);
        }
        bare &= viewRect;
    }
    if (!bare.isEmpty())
        drawGraticule(painter, camera, bare);
    return overlays ? composed & viewRect : QRegion();
}

TileLayer::Composite TileLayer::composedTile(const TileId &unwrapped, const QImage &tile,
                                             const QRect &target, const MapCamera &camera,
                                             const OverlayPainter &overlays)
{
    const QSize pixels = target.size() * m_composedRatio;
    if (const Composite *done = m_composed.object(unwrapped); done && done->used == pixels)
        return *done;
    auto *kept = new Composite{QImage(), pixels};
    for (qsizetype i = 0; i < m_spare.size(); ++i) {
        const QSize size = m_spare.at(i).size();
        if (size.width() >= pixels.width() && size.height() >= pixels.height() &&
            size.width() < pixels.width() + 128 && size.height() < pixels.height() + 128) {
            kept->image = m_spare.takeAt(i);
            break;
        }
    }
    if (kept->image.isNull()) {
        // sizes rounded up, so that the image serves again at nearby zooms
        kept->image = QImage((pixels.width() + 63) / 64 * 64, (pixels.height() + 63) / 64 * 64,
                             QImage::Format_RGB32); // opaque: the frame copies it without blending
    }
    kept->image.setDevicePixelRatio(m_composedRatio);
    QPainter painter(&kept->image);
    painter.setClipRect(QRect(QPoint(0, 0), target.size()));
    painter.fillRect(QRect(QPoint(0, 0), target.size()), BackgroundColor);
    painter.setRenderHint(QPainter::SmoothPixmapTransform,
                          tile.size() != target.size() || m_composedRatio != 1.0);
    painter.drawImage(QRect(QPoint(0, 0), target.size()), tile);
    painter.translate(-target.topLeft());
    if (overlays)
        overlays(painter, camera, QRectF(target));
    painter.end();
    // a copy shares the pixels, and stays valid should the cache drop the tile
    const Composite result = *kept;
    m_composed.insert(unwrapped, kept, qMax<qsizetype>(1, kept->image.sizeInBytes() / 1024));
    return result;
}

void TileLayer::invalidateOverlays()
{
    retireComposites();
}

void TileLayer::retireComposites()
{
    const QList<TileId> ids = m_composed.keys();
    for (const TileId &id : ids) {
        std::unique_ptr<Composite> retired(m_composed.take(id));
        if (retired && m_spare.size() < 64)
            m_spare.append(std::move(retired->image));
    }
}

bool TileLayer::drawFromAncestor(QPainter &painter, const TileId &tile, const QRect &target)
{
    TileId ancestor = tile;
    for (int level = 1; level <= AncestorLevels && ancestor.z > 0; ++level) {
        ancestor = ancestor.parent();
        const QImage *image = m_tiles.object(ancestor);
        if (!image)
            continue;
        const int parts = 1 << level;
        const double part = double(image->width()) / parts;
        const QRectF source((tile.x - (ancestor.x << level)) * part,
                            (tile.y - (ancestor.y << level)) * part, part, part);
        const bool smooth = painter.testRenderHint(QPainter::SmoothPixmapTransform);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
        painter.drawImage(QRectF(target), *image, source);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
        return true;
    }
    return false;
}

void TileLayer::drawGraticule(QPainter &painter, const MapCamera &camera, const QRegion &where)
{
    painter.save();
    painter.setClipRegion(where, Qt::IntersectClip);
    for (const QRect &rect : where)
        painter.fillRect(rect, BackgroundColor);

    // the finest step of whole or simple fractional degrees that keeps
    // meridians at least 64 points apart
    const double pointsPerDegree = camera.worldSize() / 360.0;
    static const double steps[] = {0.0001, 0.0002, 0.0005, 0.001, 0.002, 0.005, 0.01,
                                   0.02,   0.05,   0.1,    0.2,   0.5,   1.0,   2.0,
                                   5.0,    10.0,   15.0,   30.0,  45.0,  90.0};
    double step = 90.0;
    for (double candidate : steps) {
        if (candidate * pointsPerDegree >= 64.0) {
            step = candidate;
            break;
        }
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(GraticuleColor, 1.0));
    const QRectF bounds = where.boundingRect();
    const Coordinate topLeft = camera.pointToCoordinate(bounds.topLeft());
    const Coordinate bottomRight = camera.pointToCoordinate(bounds.bottomRight());
    const QPointF leftWorld = camera.viewToWorld(bounds.topLeft());
    const double westLongitude = leftWorld.x() * 360.0 - 180.0; // unwrapped
    const double eastLongitude = westLongitude + bounds.width() / pointsPerDegree;
    for (double longitude = std::ceil(westLongitude / step) * step; longitude <= eastLongitude;
         longitude += step) {
        const double x = bounds.left() + (longitude - westLongitude) * pointsPerDegree;
        painter.drawLine(QPointF(x, bounds.top()), QPointF(x, bounds.bottom()));
    }
    const double north = std::min(topLeft.latitude, MapCamera::MaximumLatitude);
    const double south = std::max(bottomRight.latitude, -MapCamera::MaximumLatitude);
    for (double latitude = std::ceil(south / step) * step; latitude <= north; latitude += step) {
        const double y = camera.coordinateToPoint(Coordinate{latitude, 0.0}).y();
        painter.drawLine(QPointF(bounds.left(), y), QPointF(bounds.right(), y));
    }
    painter.restore();
}
