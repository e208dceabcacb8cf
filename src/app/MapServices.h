#pragma once

class PositionSourceFactory;
class TileSource;

// What a screen showing the map hands its map view: the tiles and the
// device's position sources. The pointers are not owned; either may be null
// (no tiles: the map shows its grid only; no sources: no position dot).
struct MapServices
{
    TileSource *tiles = nullptr;
    PositionSourceFactory *positionSources = nullptr;
};
