#include "platform/Configuration.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>

namespace {

const QString NotAWebAddress = QStringLiteral("not a web address with http or https and a host");

bool isWebAddress(const QUrl &url)
{
    return url.isValid() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https")) &&
           !url.host().isEmpty();
}

template <QString Configuration::*Field>
QString anyText(Configuration &configuration, const QString &text)
{
    configuration.*Field = text;
    return {};
}

template <QUrl Configuration::*Field>
QString webAddress(Configuration &configuration, const QString &text)
{
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    if (!isWebAddress(url))
        return NotAWebAddress;
    configuration.*Field = url;
    return {};
}

// A file named must be there at start-up: finding out later would leave the
// map or the position silently empty.
template <QString Configuration::*Field>
QString readableFileOrNone(Configuration &configuration, const QString &text)
{
    const QFileInfo info(text);
    if (!text.isEmpty() && !(info.isFile() && info.isReadable()))
        return QStringLiteral("not a readable file");
    configuration.*Field = text;
    return {};
}

QString folderOrNone(Configuration &configuration, const QString &text)
{
    const QFileInfo info(text);
    if (!text.isEmpty() && info.exists() && !info.isDir())
        return QStringLiteral("not a folder");
    configuration.preferencesDir = text;
    return {};
}

QString tileTemplate(Configuration &configuration, const QString &text)
{
    if (!text.isEmpty()) {
        QString sample = text;
        for (const char *placeholder : {"{z}", "{x}", "{y}"}) {
            if (!sample.contains(QLatin1String(placeholder)))
                return QStringLiteral("not a tile address with {z}, {x} and {y}");
            sample.replace(QLatin1String(placeholder), QLatin1String("0"));
        }
        if (!isWebAddress(QUrl(sample.trimmed(), QUrl::StrictMode)))
            return NotAWebAddress;
    }
    configuration.tileUrl = text.trimmed();
    return {};
}

QString megabytes(Configuration &configuration, const QString &text)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    if (!ok || value < 0)
        return QStringLiteral("not a whole number of 0 or more");
    configuration.tileCacheMB = value;
    return {};
}

QString pathWord(Configuration &configuration, const QString &text)
{
    // it becomes one piece of the routing service's path
    static const QRegularExpression word(QStringLiteral("^[A-Za-z0-9_-]+$"));
    if (!word.match(text.trimmed()).hasMatch())
        return QStringLiteral("not one word of letters, digits, - and _");
    configuration.routingProfile = text.trimmed();
    return {};
}

QString routerName(Configuration &configuration, const QString &text)
{
    using Backend = Configuration::DirectionsBackend;
    const QString name = text.trimmed();
    if (name != QLatin1String("osrm") && name != QLatin1String("routino"))
        return QStringLiteral("not osrm or routino");
    configuration.router = name == QLatin1String("osrm") ? Backend::Osrm : Backend::Routino;
    return {};
}

// Checked here rather than at the first route: a wrong folder would
// otherwise show only when someone plans a trip.
QString routinoDatabase(Configuration &configuration, const QString &text)
{
    if (!text.isEmpty() &&
        !QFileInfo(QDir(text).filePath(QStringLiteral("nodes.mem"))).isReadable())
        return QStringLiteral("not a folder with a Routino database (nodes.mem and the rest, "
                              "made by planetsplitter)");
    configuration.routinoData = text;
    return {};
}

QString mailAddress(Configuration &configuration, const QString &text)
{
    static const QRegularExpression address(QStringLiteral("^[^@\\s]+@[^@\\s]+$"));
    if (!address.match(text.trimmed()).hasMatch())
        return QStringLiteral("not a mail address");
    configuration.supportMail = text.trimmed();
    return {};
}

// BCP 47 tags such as "zh-Hans" or "en-GB", as the system lists them
QString languageList(Configuration &configuration, const QString &text)
{
    static const QRegularExpression tag(QStringLiteral("^[A-Za-z]{1,8}(-[A-Za-z0-9]{1,8})*$"));
    QStringList languages;
    for (const QString &part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        if (!tag.match(part.trimmed()).hasMatch())
            return QStringLiteral("not a list of language tags such as zh-Hans,en");
        languages.append(part.trimmed());
    }
    configuration.languages = languages;
    return {};
}

QString localeName(Configuration &configuration, const QString &text)
{
    static const QRegularExpression name(
        QStringLiteral("^([A-Za-z]{1,8}([_-][A-Za-z0-9]{1,8})*)?$"));
    if (!name.match(text.trimmed()).hasMatch())
        return QStringLiteral("not a language such as zh_CN or en");
    configuration.language = text.trimmed();
    return {};
}

} // namespace

const QList<Configuration::Option> &Configuration::options()
{
    static const QList<Option> all{
        {PreferencesDir, "TREKMIME_PREFERENCES_DIR", "DIR",
         "Folder of the settings files the location hook reads.", "", folderOrNone},
        {ConfigFile, "TREKMIME_CONFIG", "FILE", "Config file (INI) to read settings from.", "",
         anyText<&Configuration::configFile>},
        {TileUrl, "TREKMIME_TILE_URL", "URL",
         "Map tile URL template with {z}, {x} and {y}; empty for no tiles.",
         "https://tile.openstreetmap.org/{z}/{x}/{y}.png", tileTemplate},
        // the public servers and local ones alike draw OpenStreetMap data,
        // whose licence asks for this credit on the map
        {TileAttribution, "TREKMIME_TILE_ATTRIBUTION", "TEXT",
         "Credit shown on the map for the tiles from the URL.", "\u00a9 OpenStreetMap contributors",
         anyText<&Configuration::tileAttribution>},
        {MBTiles, "TREKMIME_MBTILES", "FILE", "MBTiles file for offline maps (replaces the URL).",
         "", readableFileOrNone<&Configuration::mbtiles>},
        {TileCacheMB, "TREKMIME_TILE_CACHE_MB", "MB", "Size of the tile disk cache.", "200",
         megabytes},
        {RoutingUrl, "TREKMIME_ROUTING_URL", "URL", "OSRM routing service.",
         "https://router.project-osrm.org", webAddress<&Configuration::routingUrl>},
        {RoutingProfile, "TREKMIME_ROUTING_PROFILE", "PROFILE",
         "Profile asked of the routing service (with routino: driving, walking or cycling).",
         "driving", pathWord},
        {Router, "TREKMIME_ROUTER", "NAME",
         "Who plans routes: osrm (the routing service) or routino (offline, from "
         "--routino-data).",
         "osrm", routerName},
        {RoutinoData, "TREKMIME_ROUTINO_DATA", "DIR",
         "Folder of the Routino database (made by planetsplitter) for --router routino.", "",
         routinoDatabase},
        {NominatimUrl, "TREKMIME_NOMINATIM_URL", "URL", "Nominatim geocoding service.",
         "https://nominatim.openstreetmap.org", webAddress<&Configuration::nominatimUrl>},
        {GeocodingUrl, "TREKMIME_GEOCODING_URL", "URL", "Web geocoding (Google JSON) host.",
         "https://maps.googleapis.com", webAddress<&Configuration::geocodingUrl>},
        {NmeaFile, "TREKMIME_NMEA_FILE", "FILE",
         "Replay this NMEA log as the device position instead of the system source.", "",
         readableFileOrNone<&Configuration::nmeaFile>},
        // the maker's own addresses; the shipped ones are placeholders for a
        // build to replace
        {SupportMail, "TREKMIME_SUPPORT_MAIL", "ADDRESS",
         "Address the information screen's contact button writes to.", "support@velmora.invalid",
         mailAddress},
        {ShopUrl, "TREKMIME_SHOP_URL", "URL",
         "Page the visit button opens when the first preferred language is zh-Hans.",
         "https://shop.velmora.invalid/", webAddress<&Configuration::shopUrl>},
        {WebsiteUrl, "TREKMIME_WEBSITE_URL", "URL", "Page the visit button opens otherwise.",
         "https://www.velmora.invalid/", webAddress<&Configuration::websiteUrl>},
        {Languages, "TREKMIME_LANGUAGES", "LIST",
         "Preferred languages, most preferred first (e.g. zh-Hans,en); empty for the system's.", "",
         languageList},
        {Language, "TREKMIME_LANGUAGE", "LANGUAGE",
         "Language of the texts shown (e.g. zh_CN, en, or C for the original texts); empty for "
         "the system's.",
         "", localeName},
    };
    return all;
}

Configuration::Configuration()
{
    for (const Option &option : options()) {
        [[maybe_unused]] const QString why =
            option.parse(*this, QString::fromUtf8(option.defaultValue));
        Q_ASSERT_X(why.isEmpty(), option.name, "a default must be usable");
    }
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
    // Where an option's text comes from, in order of precedence, with the
    // name the user knows it by there ("%1" stands for the text); false when
    // none gives it.
    auto find = [&](const Option &option, const QSettings *file, QString *text, QString *where) {
        const QString name = QString::fromLatin1(option.name);
        const QString variable = QString::fromLatin1(option.environment);
        if (parser && parser->isSet(name)) {
            *text = parser->value(name);
            *where = QStringLiteral("--%1 \"%2\"").arg(name);
        } else if (environment.contains(variable)) {
            *text = environment.value(variable);
            *where = QStringLiteral("%1 \"%2\"").arg(variable);
        } else if (file && file->contains(name)) {
            const QVariant value = file->value(name);
            // an unquoted INI value with commas in it reads as a list
            *text = value.metaType().id() == QMetaType::QStringList
                        ? value.toStringList().join(QStringLiteral(", "))
                        : value.toString();
            *where = QStringLiteral("%1 \"%3\" in %2").arg(name, file->fileName());
        } else {
            return false;
        }
        return true;
    };
    auto fail = [error](const QString &message) {
        if (error)
            *error = message;
        return false;
    };

    // the config file named on the command line or in the environment must
    // exist; the default one is optional
    Configuration loaded;
    QString configFile;
    QString where;
    const Option &configOption = options().at(1);
    Q_ASSERT(qstrcmp(configOption.name, ConfigFile) == 0);
    if (find(configOption, nullptr, &configFile, &where)) {
        if (!QFileInfo(configFile).isReadable())
            return fail(QStringLiteral("cannot read config file %1").arg(configFile));
        loaded.m_explicit.insert(QString::fromLatin1(ConfigFile));
    } else {
        configFile = defaultConfigFile();
    }
    loaded.configFile = configFile;
    const QSettings file(configFile, QSettings::IniFormat);
    if (file.status() != QSettings::NoError)
        return fail(QStringLiteral("cannot read config file %1").arg(configFile));

    for (const Option &option : options()) {
        QString text;
        if (&option == &configOption || !find(option, &file, &text, &where))
            continue;
        const QString why = option.parse(loaded, text);
        if (!why.isEmpty())
            return fail(QStringLiteral("%1 is %2").arg(where.arg(text), why));
        loaded.m_explicit.insert(QString::fromLatin1(option.name));
    }
    if (loaded.router == DirectionsBackend::Routino && loaded.routinoData.isEmpty()) {
        return fail(QStringLiteral("--router routino needs --routino-data, the folder of a Routino "
                                   "database"));
    }
    result = loaded;
    return true;
}

QString Configuration::set(const char *name, const QString &text)
{
    for (const Option &option : options()) {
        if (qstrcmp(option.name, name) != 0)
            continue;
        const QString why = option.parse(*this, text);
        if (why.isEmpty())
            m_explicit.insert(QLatin1String(name));
        return why;
    }
    return QStringLiteral("not a setting");
}

QString Configuration::userAgent() const
{
    // public tile and geocoding services ask every client to identify itself
    return QStringLiteral("Trekmime/%1 (Qt %2; +https://trekmime.invalid/about)")
        .arg(QStringLiteral(TREKMIME_VERSION), QString::fromLatin1(qVersion()));
}

QString choosePreferencesDirectory(const Configuration &configuration, QString *announcement)
{
    QString directory = configuration.preferencesDir;
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
