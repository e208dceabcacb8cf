#pragma once

#include <QString>

#include <memory>

class Configuration;
class QNetworkAccessManager;
class QObject;
class TileSource;

// The map tiles the configuration asks for: an MBTiles file when one is
// named, else the tile URL template through `network` (not owned), else
// none (nullptr: the map shows its grid). `cacheDirectory` empty means the
// user's cache folder.
std::unique_ptr<TileSource> createConfiguredTileSource(const Configuration &configuration,
                                                       QNetworkAccessManager *network,
                                                       const QString &cacheDirectory = {});
