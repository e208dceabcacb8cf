#include "ui/ConfiguredTileSource.h"

#include "platform/Configuration.h"
#include "ui/HttpTileSource.h"
#include "ui/MBTilesTileSource.h"

#include <QStandardPaths>
#include <QUrl>

std::unique_ptr<TileSource> createConfiguredTileSource(const Configuration &configuration,
                                                       QNetworkAccessManager *network,
                                                       const QString &cacheDirectory)
{
    const QString &mbtiles = configuration.mbtiles;
    if (!mbtiles.isEmpty()) {
        auto source = std::make_unique<MBTilesTileSource>(mbtiles);
        if (!source->isOpen())
            qWarning("trekmime: cannot open the MBTiles file %s: %s", qPrintable(mbtiles),
                     qPrintable(source->errorString()));
        return source;
    }
    if (configuration.tileUrl.isEmpty() || !network)
        return nullptr;

    HttpTileSource::Options options;
    options.urlTemplate = configuration.tileUrl;
    options.userAgent = configuration.userAgent();
    options.attribution = configuration.tileAttribution;
    options.cacheDirectory = cacheDirectory.isEmpty()
                                 ? QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
                                       QStringLiteral("/tiles")
                                 : cacheDirectory;
    options.cacheBytes = qint64(configuration.tileCacheMB) * 1024 * 1024;
    return std::make_unique<HttpTileSource>(network, options);
}
