#pragma once

#include <QList>
#include <QProcessEnvironment>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>

class QCommandLineParser;

// Every setting a user may change, each readable from the command line
// (--name VALUE), an environment variable and a config file (INI, key
// "name"), in that order of precedence, with defaults that work on a fresh
// machine. Values are checked and typed once, at start-up: whatever holds a
// Configuration may use its fields as they are.
class Configuration
{
public:
    // One setting: where it is read from, its help, its default (in the text
    // form a user would type) and how its text becomes the typed field.
    struct Option
    {
        const char *name;
        const char *environment;
        const char *valueName;
        const char *help;
        const char *defaultValue;
        // Stores the text in its field, or answers why it cannot be used
        // ("not a ..."), leaving the field as it was.
        QString (*parse)(Configuration &configuration, const QString &text);
    };
    // The one list of settings and their defaults; a new setting is a field
    // below and a row there.
    static const QList<Option> &options();

    static constexpr const char *PreferencesDir = "preferences-dir";
    static constexpr const char *ConfigFile = "config";
    static constexpr const char *TileUrl = "tile-url";
    static constexpr const char *TileAttribution = "tile-attribution";
    static constexpr const char *MBTiles = "mbtiles";
    static constexpr const char *TileCacheMB = "tile-cache-mb";
    static constexpr const char *RoutingUrl = "routing-url";
    static constexpr const char *RoutingProfile = "routing-profile";
    static constexpr const char *Router = "router";
    static constexpr const char *RoutinoData = "routino-data";
    static constexpr const char *NominatimUrl = "nominatim-url";
    static constexpr const char *GeocodingUrl = "geocoding-url";
    static constexpr const char *NmeaFile = "nmea-file";
    static constexpr const char *SupportMail = "support-mail";
    static constexpr const char *ShopUrl = "shop-url";
    static constexpr const char *WebsiteUrl = "website-url";
    static constexpr const char *Languages = "languages";
    static constexpr const char *Language = "language";

    QString preferencesDir;  // empty: chosen at start-up, which then fills it in
    QString configFile;      // empty: the default one (defaultConfigFile)
    QString tileUrl;         // http(s) template with {z}, {x} and {y}; empty: no tiles
    QString tileAttribution; // credit shown on the map for those tiles
    QString mbtiles;         // an existing file, or empty
    int tileCacheMB = 0;     // 0 or more
    QUrl routingUrl;         // http(s) with a host, as are the other URLs
    QString routingProfile;  // one path word, e.g. "driving"
    // who plans routes: the OSRM service over the network, or Routino on
    // this machine from the database in routinoData
    enum class DirectionsBackend { Osrm, Routino };
    DirectionsBackend router = DirectionsBackend::Osrm;
    QString routinoData; // a folder holding a Routino database, or empty; given with Routino
    QUrl nominatimUrl;
    QUrl geocodingUrl;
    QString nmeaFile; // an existing file, or empty

    // the information screen and the texts' language
    QString supportMail;   // the maker's support address, for the contact mail
    QUrl shopUrl;          // the maker's page for users whose first language is "zh-Hans"
    QUrl websiteUrl;       // the maker's page for everyone else
    QStringList languages; // preferred languages, most preferred first; empty: the system's
    QString language;      // the language of the texts ("zh_CN", "en", "C"); empty: the system's

    // Every setting at its default.
    Configuration();

    static void addOptionsTo(QCommandLineParser &parser);
    // Reads the parsed command line, the environment and the config file.
    // Answers false with one line in `error` when the config file cannot be
    // read or a value cannot be used; nothing is created either way.
    static bool load(const QCommandLineParser *parser, const QProcessEnvironment &environment,
                     Configuration &result, QString *error);
    static QString defaultConfigFile();

    // Sets one setting from its text as a user gives it; answers why it
    // cannot be used, or an empty text when it was taken.
    QString set(const char *name, const QString &text);
    // Whether the user gave the setting rather than leaving the default.
    bool isExplicit(const char *name) const { return m_explicit.contains(QLatin1String(name)); }

    QString userAgent() const;

private:
    QSet<QString> m_explicit;
};

// The folder the settings files go in: the configured one, else the device's
// preferences folder where it exists, else a per-user folder. The folder is
// created when missing; `announcement` receives a line naming a folder that
// was chosen by default, for the user to find it.
QString choosePreferencesDirectory(const Configuration &configuration, QString *announcement);
