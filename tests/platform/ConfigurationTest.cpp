#include "FileBytes.h"
#include "TestMain.h"

#include "platform/Configuration.h"
#include "platform/PreferredLanguages.h"

#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

// Where each setting comes from: command line, then environment, then the
// config file, then the default; and what stops the start.
class ConfigurationTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString configPath() const { return m_dir.filePath(u"trekmime.conf"_s); }

    // `given` holds "--option value" and "VARIABLE=value" (CONFIG standing for the
    // config file's path); the config file, holding `file`, is named if given
    bool load(const QStringList &given, const QByteArray &file, Configuration &configuration,
              QString *error = nullptr)
    {
        QStringList words{u"trekmime"_s};
        QProcessEnvironment environment;
        if (!file.isNull() && writeBytes(configPath(), file))
            environment.insert(u"TREKMIME_CONFIG"_s, configPath());
        for (const QString &item : given) {
            const bool option = item.startsWith(u"--");
            const QString value =
                item.section(option ? u' ' : u'=', 1).replace(u"CONFIG"_s, configPath());
            if (option)
                words << item.section(u' ', 0, 0) << value;
            else if (!item.isEmpty())
                environment.insert(item.section(u'=', 0, 0), value);
        }
        QCommandLineParser parser;
        Configuration::addOptionsTo(parser);
        return parser.parse(words) &&
               Configuration::load(&parser, environment, configuration, error);
    }

private slots:
    void precedence_data()
    {
        QTest::addColumn<QStringList>("given");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("expected");
        const QByteArray file = "tile-url = http://file/{z}/{x}/{y}\n";
        const QString environment = u"TREKMIME_TILE_URL=http://env/{z}/{x}/{y}"_s;
        // the default config file is optional
        QTest::newRow("default") << QStringList{u"XDG_CONFIG_HOME=CONFIG.d"_s} << QByteArray()
                                 << u"https://tile.openstreetmap.org/{z}/{x}/{y}.png"_s;
        QTest::newRow("config file") << QStringList() << file << u"http://file/{z}/{x}/{y}"_s;
        QTest::newRow("environment over file")
            << QStringList{environment} << file << u"http://env/{z}/{x}/{y}"_s;
        QTest::newRow("command line over all")
            << QStringList{environment, u"--tile-url http://cli/{z}/{x}/{y}"_s} << file
            << u"http://cli/{z}/{x}/{y}"_s;
        QTest::newRow("empty on the command line means no tiles")
            << QStringList{u"--tile-url "_s} << file << QString();
    }
    void precedence()
    {
        QFETCH(QStringList, given);
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);
        Configuration configuration;
        QVERIFY(load(given, file, configuration));
        QCOMPARE(configuration.tileUrl, expected);
    }

    void valuesAreTyped()
    {
        Configuration configuration;
        QVERIFY(load({u"--routing-profile foot"_s},
                     "tile-cache-mb = \" 50 \"\nrouting-url = http://127.0.0.1:5000/osrm/\n"
                     "tile-attribution = Data, and more\nnmea-file = " +
                         configPath().toUtf8() + "\n",
                     configuration));
        QCOMPARE(configuration.tileCacheMB, 50);
        QCOMPARE(configuration.routingUrl, QUrl(u"http://127.0.0.1:5000/osrm/"_s));
        QCOMPARE(configuration.routingProfile, u"foot"_s);
        QCOMPARE(configuration.tileAttribution, u"Data, and more"_s);
        QCOMPARE(configuration.nmeaFile, configPath());
        QVERIFY(configuration.isExplicit(Configuration::TileCacheMB) &&
                !configuration.isExplicit(Configuration::NominatimUrl));
    }

    // one line naming where the value came from and why it cannot be used
    void unusableValuesStopTheStart_data()
    {
        QTest::addColumn<QString>("given");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const char *given, const char *message,
                            const QByteArray &file = "") {
            QTest::newRow(name) << QString::fromUtf8(given) << file << QString::fromUtf8(message);
        };
        row("cache size not a number", "--tile-cache-mb lots",
            "--tile-cache-mb \"lots\" is not a whole number of 0 or more");
        row("URL without a host", "TREKMIME_ROUTING_URL=http://",
            "TREKMIME_ROUTING_URL \"http://\" is not a web address");
        row("tile template without {y}", "--tile-url https://t.example/{z}/{x}.png",
            "is not a tile address with {z}, {x} and {y}");
        row("tile template without a host", "--tile-url /{z}/{x}/{y}", "is not a web address");
        row("missing NMEA log", "--nmea-file /nonexistent/track.nmea",
            "--nmea-file \"/nonexistent/track.nmea\" is not a readable file");
        row("missing MBTiles file", "",
            "mbtiles \"/nonexistent/map.mbtiles\" in CONFIG is not a readable file",
            "mbtiles = /nonexistent/map.mbtiles\n");
        row("routing profile with a slash", "--routing-profile car/../x",
            "--routing-profile \"car/../x\" is not one word");
        row("router unknown", "--router graphhopper",
            "--router \"graphhopper\" is not osrm or routino");
        row("routino without its database", "TREKMIME_ROUTER=routino",
            "--router routino needs --routino-data");
        row("Routino database missing", "--routino-data CONFIG.d",
            "--routino-data \"CONFIG.d\" is not a folder with a Routino database");
        row("named config file missing", "--config /nonexistent/trekmime.conf",
            "cannot read config file /nonexistent/trekmime.conf");
        row("preferences folder is a file", "TREKMIME_PREFERENCES_DIR=CONFIG",
            "TREKMIME_PREFERENCES_DIR \"CONFIG\" is not a folder");
    }
    void unusableValuesStopTheStart()
    {
        QFETCH(QString, given);
        QFETCH(QByteArray, file);
        QFETCH(QString, message);
        Configuration configuration;
        QString error;
        QVERIFY(!load({given}, file, configuration, &error));
        QVERIFY2(error.contains(message.replace(u"CONFIG"_s, configPath())), qPrintable(error));
        QVERIFY(!error.contains(u'\n'));
    }

    void preferencesDirectory()
    {
        Configuration configuration;
        QVERIFY(load({u"TREKMIME_PREFERENCES_DIR=CONFIG.d/a"_s}, {}, configuration));
        QString announcement;
        const QString chosen = choosePreferencesDirectory(configuration, &announcement);
        QCOMPARE(QDir(chosen).absolutePath(), configPath() + u".d/a"_s);
        QVERIFY(QDir(chosen).exists());
        QVERIFY(announcement.isEmpty()); // the user named it
        if (QFileInfo::exists(u"/var/mobile/Library/Preferences"_s))
            QSKIP("this machine has the device's preferences folder");
        QVERIFY(load({}, {}, configuration));
        const QString fallback = choosePreferencesDirectory(configuration, &announcement);
        QVERIFY(fallback.startsWith(
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
        QVERIFY(QDir(fallback).exists() && announcement.contains(fallback));
    }

    // the system's locale names become the language tags the screens compare
    void systemLanguages_data()
    {
        QTest::addColumn<QString>("language"); // LANGUAGE
        QTest::addColumn<QString>("lcAll");
        QTest::addColumn<QString>("lang");
        QTest::addColumn<QString>("tags");
        addRow("simplified", "", "", "zh_CN.UTF-8", "zh-Hans");
        addRow("singapore", "", "", "zh_SG.GB2312", "zh-Hans");
        addRow("traditional", "", "", "zh_TW.UTF-8", "zh-Hant");
        addRow("hong kong", "", "", "zh_HK", "zh-Hant");
        addRow("region kept", "", "", "en_GB.UTF-8@euro", "en-GB");
        addRow("no region", "", "", "de", "de");
        addRow("list first", "zh_CN:fr_FR:zh_CN", "", "de_DE.UTF-8", "zh-Hans fr-FR de-DE");
        addRow("list in C", "zh_CN", "C.UTF-8", "", "zh-Hans");
        addRow("LC_ALL wins", "", "pt_BR.UTF-8", "de_DE", "pt-BR");
        addRow("C", "", "C", "zh_CN", "");
        addRow("POSIX", "", "", "POSIX", "");
        addRow("nothing", "", "", "", "");
        addRow("nonsense", "::x y:", "", "/etc/passwd", "");
    }
    void systemLanguages()
    {
        QFETCH(QString, language);
        QFETCH(QString, lcAll);
        QFETCH(QString, lang);
        QFETCH(QString, tags);
        QProcessEnvironment environment;
        for (const auto &[name, value] : {std::pair{"LANGUAGE", language},
                                          {"LC_ALL", lcAll},
                                          {"LANG", lang},
                                          {"LC_MESSAGES", QString()}}) {
            if (!value.isEmpty())
                environment.insert(QString::fromLatin1(name), value);
        }
        QCOMPARE(systemPreferredLanguages(environment).join(u' '), tags);
    }
};

TREKMIME_TEST(ConfigurationTest)
#include "ConfigurationTest.moc"
