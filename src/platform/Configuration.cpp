#include "platform/Configuration.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

const QList<Configuration::Option> &Configuration::options()
{
    static const QList<Option> all{
        {PreferencesDir, "TREKMIME_PREFERENCES_DIR", "DIR",
         "Folder of the settings files the location hook reads.", ""},
        {ConfigFile, "TREKMIME_CONFIG", "FILE", "Config file (INI) to read settings from.", ""},
        {TileUrl, "TREKMIME_TILE_URL", "URL",
         "Map tile URL template with {z}, {x} and {y}; empty for no tiles.",
         "https://tile.openstreetmap.org/{z}/{x}/{y}.png"},
        // the public servers and local ones alike draw OpenStreetMap data,
        // whose licence asks for this credit on the map
        {TileAttribution, "TREKMIME_TILE_ATTRIBUTION", "TEXT",
         "Credit shown on the map for the tiles from the URL.",
         "\u00a9 OpenStreetMap contributors"},
        {MBTiles, "TREKMIME_MBTILES", "FILE", "MBTiles file for offline maps (replaces the URL).",
         ""},
        {TileCacheMB, "TREKMIME_TILE_CACHE_MB", "MB", "Size of the tile disk cache.", "200"},
        {RoutingUrl, "TREKMIME_ROUTING_URL", "URL", "OSRM routing service.",
         "https://router.project-osrm.org"},
        {NominatimUrl, "TREKMIME_NOMINATIM_URL", "URL", "Nominatim geocoding service.",
         "https://nominatim.openstreetmap.org"},
        {GeocodingUrl, "TREKMIME_GEOCODING_URL", "URL", "Web geocoding (Google JSON) host.",
         "https://maps.googleapis.com"},
        {NmeaFile, "TREKMIME_NMEA_FILE", "FILE",
         "Replay this NMEA log as the device position instead of the system source.", ""},
    };
    return all;
}

Configuration::Configuration()
{
    for (const Option &option : options())
        m_values.insert(QString::fromLatin1(option.name), QString::fromUtf8(option.defaultValue));
}

void Configuration::addOptionsTo(QCommandLineParser &parser)
{
    for (const Option &option : options()) {
        QString help = QString::fromUtf8(option.help);
        if (*option.defaultValue)
            help += QStringLiteral(" Default: %1.").arg(QString::fromUtf8(option.defaultValue));
        help += QStringLiteral(" Environment: %1.").arg(QString::fromLatin1(option.environment));
        parser.addOption(QCommandLineOption(QString::fromLatin1(option.name), help,
                                            QString::fromLatin1(option.valueName)));
    }
}

QString Configuration::defaultConfigFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/trekmime/trekmime.conf");
}

bool Configuration::load(const QCommandLineParser *parser, const QProcessEnvironment &environment,
                         Configuration &result, QString *error)
{
    result = Configuration();
    for (const Option &option : options())
        result.m_values.insert(QString::fromLatin1(option.name),
                               QString::fromUtf8(option.defaultValue));

    auto fromCommandLine = [&](const Option &option, QString *value) {
        const QString name = QString::fromLatin1(option.name);
        if (parser && parser->isSet(name)) {
            *value = parser->value(name);
            return true;
        }
        return false;
    };
    auto fromEnvironment = [&](const Option &option, QString *value) {
        const QString name = QString::fromLatin1(option.environment);
        if (environment.contains(name)) {
            *value = environment.value(name);
            return true;
        }
        return false;
    };

    // the config file named on the command line or in the environment must
    // exist; the default one is optional
    QString configFile;
    const Option &configOption = options().at(1);
    const bool configNamed =
        fromCommandLine(configOption, &configFile) || fromEnvironment(configOption, &configFile);
    if (!configNamed)
        configFile = defaultConfigFile();
    if (configNamed && !QFileInfo(configFile).isReadable()) {
        if (error)
            *error = QStringLiteral("cannot read config file %1").arg(configFile);
        return false;
    }
    result.m_values.insert(QString::fromLatin1(ConfigFile), configFile);

    QSettings file(configFile, QSettings::IniFormat);
    for (const Option &option : options()) {
        const QString name = QString::fromLatin1(option.name);
        QString value;
        if (fromCommandLine(option, &value) || fromEnvironment(option, &value)) {
            result.set(option.name, value);
        } else if (file.contains(name)) {
            result.set(option.name, file.value(name).toString());
        }
    }
    return true;
}

QString Configuration::value(const char *name) const
{
    return m_values.value(QLatin1String(name));
}

void Configuration::set(const char *name, const QString &value)
{
    m_values.insert(QLatin1String(name), value);
    m_explicit.insert(QLatin1String(name));
}

QString Configuration::userAgent() const
{
    // public tile and geocoding services ask every client to identify itself
    return QStringLiteral("Trekmime/%1 (Qt %2; +https://trekmime.invalid/about)")
        .arg(QStringLiteral(TREKMIME_VERSION), QString::fromLatin1(qVersion()));
}

QString choosePreferencesDirectory(const Configuration &configuration, QString *announcement)
{
    QString directory = configuration.value(Configuration::PreferencesDir);
    if (directory.isEmpty()) {
        const QString device = QStringLiteral("/var/mobile/Library/Preferences/");
        if (QFileInfo(device).isDir()) {
            directory = device;
        } else {
            directory = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                        QStringLiteral("/trekmime/Preferences/");
            if (announcement)
                *announcement =
                    QStringLiteral("trekmime: settings files are kept in %1").arg(directory);
        }
    }
    QDir().mkpath(directory);
    return directory;
}
