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
    const QString mbtiles = configuration.value(Configuration::MBTiles);
    if (!mbtiles.isEmpty()) {
        auto source = std::make_unique<MBTilesTileSource>(mbtiles);
        if (!source->isOpen())
            qWarning("trekmime: cannot open the MBTiles file %s: %s", qPrintable(mbtiles),
                     qPrintable(source->errorString()));
        return source;
    }
    const QString urlTemplate = configuration.value(Configuration::TileUrl);
    if (urlTemplate.isEmpty() || !network)
        return nullptr;

    HttpTileSource::Options options;
    options.urlTemplate = urlTemplate;
    options.userAgent = configuration.userAgent();
    options.attribution = configuration.value(Configuration::TileAttribution);
    options.cacheDirectory = cacheDirectory.isEmpty()
                                 ? QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
                                       QStringLiteral("/tiles")
                                 : cacheDirectory;
    bool ok = false;
    const qint64 megabytes = configuration.value(Configuration::TileCacheMB).toLongLong(&ok);
    options.cacheBytes = (ok && megabytes > 0 ? megabytes : 200) * 1024 * 1024;
    return std::make_unique<HttpTileSource>(network, options);
}
