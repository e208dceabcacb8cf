#pragma once

#include <QHash>
#include <QList>
#include <QProcessEnvironment>
#include <QSet>
#include <QString>

class QCommandLineParser;

// Every setting a user may change, each readable from the command line
// (--name VALUE), an environment variable and a config file (INI, key
// "name"), in that order of precedence, with defaults that work on a fresh
// machine.
class Configuration
{
public:
    struct Option
    {
        const char *name;
        const char *environment;
        const char *valueName;
        const char *help;
        const char *defaultValue;
    };
    static const QList<Option> &options();

    static constexpr const char *PreferencesDir = "preferences-dir";
    static constexpr const char *ConfigFile = "config";
    static constexpr const char *TileUrl = "tile-url";
    static constexpr const char *TileAttribution = "tile-attribution";
    static constexpr const char *MBTiles = "mbtiles";
    static constexpr const char *TileCacheMB = "tile-cache-mb";
    static constexpr const char *RoutingUrl = "routing-url";
    static constexpr const char *NominatimUrl = "nominatim-url";
    static constexpr const char *GeocodingUrl = "geocoding-url";
    static constexpr const char *NmeaFile = "nmea-file";

    // Every setting at its default.
    Configuration();

    static void addOptionsTo(QCommandLineParser &parser);
    // Reads the parsed command line, the environment and the config file.
    // Answers false with a message when the config file cannot be read.
    static bool load(const QCommandLineParser *parser, const QProcessEnvironment &environment,
                     Configuration &result, QString *error);
    static QString defaultConfigFile();

    QString value(const char *name) const;
    bool isExplicit(const char *name) const { return m_explicit.contains(QLatin1String(name)); }
    void set(const char *name, const QString &value);

    QString userAgent() const;

private:
    QHash<QString, QString> m_values;
    QSet<QString> m_explicit;
};

// The folder the settings files go in: the configured one, else the device's
// preferences folder where it exists, else a per-user folder. The folder is
// created when missing; `announcement` receives a line naming a folder that
// was chosen by default, for the user to find it.
QString choosePreferencesDirectory(const Configuration &configuration, QString *announcement);
