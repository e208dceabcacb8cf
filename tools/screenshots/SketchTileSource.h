#pragma once

#include "ui/TileSource.h"

// Map tiles drawn on the spot, for pictures that must not reach a
// tile server: land, a street grid that runs on across tile edges, wider
// avenues and the odd park, the same for the same tile every time.
class SketchTileSource : public TileSource
{
    Q_OBJECT

public:
    using TileSource::TileSource;

    QString attribution() const override { return QStringLiteral("Sketch tiles"); }
    void requestTile(const TileId &tile) override;

    static QImage draw(const TileId &tile);
};
