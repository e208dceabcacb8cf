#include "SketchTileSource.h"

#include "ui/ColorPalette.h"

#include <QPainter>
#include <QTimer>

namespace {

constexpr int TileSize = 256;
constexpr int Block = 96;      // street spacing, in pixels at every zoom
constexpr int AvenueEvery = 5; // every fifth street is an avenue

// A stable pseudo-random number for a block of the world.
quint32 blockHash(qint64 column, qint64 row)
{
    quint64 h = quint64(column) * 0x9E3779B97F4A7C15ull ^ quint64(row) * 0xC2B2AE3D27D4EB4Full;
    h ^= h >> 31;
    return quint32(h * 0x94D049BB133111EBull >> 32);
}

} // namespace

void SketchTileSource::requestTile(const TileId &tile)
{
    QTimer::singleShot(0, this, [this, tile] { emit tileLoaded(tile, draw(tile)); });
}

QImage SketchTileSource::draw(const TileId &tile)
{
    QImage image(TileSize, TileSize, QImage::Format_RGB32);
    image.fill(ColorPalette::sketchPaperColor());
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const qint64 left = qint64(tile.x) * TileSize;
    const qint64 top = qint64(tile.y) * TileSize;
    const qint64 firstColumn = left / Block - 1;
    const qint64 firstRow = top / Block - 1;
    const int blocks = TileSize / Block + 3;

    // parks and the odd pond fill whole blocks
    for (qint64 c = firstColumn; c < firstColumn + blocks; ++c) {
        for (qint64 r = firstRow; r < firstRow + blocks; ++r) {
            const quint32 h = blockHash(c, r);
            QColor fill;
            if (h % 11 == 0)
                fill = ColorPalette::sketchParkColor();
            else if (h % 23 == 1)
                fill = ColorPalette::sketchWaterColor();
            else
                continue;
            painter.fillRect(QRectF(c * Block - left, r * Block - top, Block, Block), fill);
        }
    }
    // streets, then avenues over them
    for (const bool avenues : {false, true}) {
        painter.setPen(
            QPen(avenues ? ColorPalette::sketchAvenueColor() : ColorPalette::whiteColor(),
                 avenues ? 9.0 : 5.0, Qt::SolidLine, Qt::FlatCap));
        for (qint64 i = 0; i < blocks; ++i) {
            const qint64 column = firstColumn + i;
            const qint64 row = firstRow + i;
            if ((column % AvenueEvery == 0) == avenues) {
                const qreal x = qreal(column * Block - left);
                painter.drawLine(QPointF(x, 0), QPointF(x, TileSize));
            }
            if ((row % AvenueEvery == 0) == avenues) {
                const qreal y = qreal(row * Block - top);
                painter.drawLine(QPointF(0, y), QPointF(TileSize, y));
            }
        }
    }
    return image;
}
