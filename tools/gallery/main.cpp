#include "Gallery.h"

#include "platform/Configuration.h"
#include "ui/Accessibility.h"
#include "ui/ConfiguredTileSource.h"
#include "ui/Theme.h"
#include "ui/TileSource.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QNetworkAccessManager>
#include <QTextStream>
#include <QTimer>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("trekmime-gallery"));
    Theme::apply(application);
    installAccessibilityFactories();
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows the interface toolkit."));
    parser.addHelpOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save the window to FILE (PNG) and exit."),
                                        QStringLiteral("FILE"));
    parser.addOption(screenshot);
    Configuration::addOptionsTo(parser);
    parser.process(application);

    // the map shows tiles only when a source is named, so that looking at the
    // toolkit never reaches a public server by surprise
    Configuration configuration;
    QString error;
    if (!Configuration::load(&parser, QProcessEnvironment::systemEnvironment(), configuration,
                             &error)) {
        QTextStream(stderr) << "trekmime-gallery: " << error << Qt::endl;
        return 2;
    }
    QNetworkAccessManager network;
    std::unique_ptr<TileSource> tiles;
    if (configuration.isExplicit(Configuration::TileUrl) ||
        configuration.isExplicit(Configuration::MBTiles))
        tiles = createConfiguredTileSource(configuration, &network);

    Gallery gallery(tiles.get());
    gallery.show();
    if (parser.isSet(screenshot)) {
        const QString path = parser.value(screenshot);
        // let the first layout and paint happen before grabbing
        QTimer::singleShot(tiles ? 1500 : 200, &gallery, [&gallery, path] {
            QApplication::exit(gallery.saveScreenshot(path) ? 0 : 1);
        });
    }
    return application.exec();
}
