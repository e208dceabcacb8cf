#include "TestMain.h"

#include "platform/Configuration.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

// Where each setting comes from: command line, then environment, then the
// config file, then the default.
using namespace Qt::StringLiterals;

class ConfigurationTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString configPath() const { return m_dir.filePath(QStringLiteral("trekmime.conf")); }

    // loads from the command line, the environment ("NAME=value", CONFIG standing
    // for the config file's path) and a config file holding `file`, named if given
    bool load(const QStringList &words, const QStringList &variables, const QByteArray &file,
              Configuration &configuration, QString *error = nullptr)
    {
        QProcessEnvironment environment;
        if (!file.isNull()) {
            QFile config(configPath());
            config.open(QIODevice::WriteOnly);
            config.write(file);
            environment.insert(QStringLiteral("TREKMIME_CONFIG"), configPath());
        }
        for (QString variable : variables)
            environment.insert(variable.section(u'=', 0, 0),
                               variable.section(u'=', 1).replace(u"CONFIG"_s, configPath()));
        QCommandLineParser parser;
        Configuration::addOptionsTo(parser);
        return parser.parse(QStringList{QStringLiteral("trekmime")} + words) &&
               Configuration::load(&parser, environment, configuration, error);
    }

private slots:
    void precedence_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QStringList>("variables");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("expected");
        const QByteArray file = "tile-url = http://file.example/{z}/{x}/{y}.png\n";
        const QStringList environment{QStringLiteral("TREKMIME_TILE_URL=http://env/{z}/{x}/{y}")};
        // the default config file is optional
        QTest::newRow("default") << QStringList() << QStringList{u"XDG_CONFIG_HOME=CONFIG.d"_s}
                                 << QByteArray()
                                 << u"https://tile.openstreetmap.org/{z}/{x}/{y}.png"_s;
        QTest::newRow("config file")
            << QStringList() << QStringList() << file << u"http://file.example/{z}/{x}/{y}.png"_s;
        QTest::newRow("environment over file")
            << QStringList() << environment << file << u"http://env/{z}/{x}/{y}"_s;
        QTest::newRow("command line over all")
            << QStringList{u"--tile-url"_s, u"http://cli/{z}/{x}/{y}"_s} << environment << file
            << u"http://cli/{z}/{x}/{y}"_s;
        QTest::newRow("empty on the command line means no tiles")
            << QStringList{u"--tile-url"_s, QString()} << QStringList() << file << QString();
    }
    void precedence()
    {
        QFETCH(QStringList, words);
        QFETCH(QStringList, variables);
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);
        Configuration configuration;
        QVERIFY(load(words, variables, file, configuration));
        QCOMPARE(configuration.tileUrl, expected);
    }

    void valuesAreTyped()
    {
        Configuration configuration;
        QVERIFY(load({u"--routing-profile"_s, u"foot"_s}, {},
                     "tile-cache-mb = \" 50 \"\nrouting-url = http://127.0.0.1:5000/osrm/\n"
                     "tile-attribution = Data, and more\nnmea-file = " +
                         configPath().toUtf8() + "\n",
                     configuration));
        QCOMPARE(configuration.tileCacheMB, 50);
        QCOMPARE(configuration.routingUrl, QUrl(u"http://127.0.0.1:5000/osrm/"_s));
        QCOMPARE(configuration.routingProfile, u"foot"_s);
        QCOMPARE(configuration.tileAttribution, u"Data, and more"_s);
        QCOMPARE(configuration.nmeaFile, configPath());
        QVERIFY(configuration.isExplicit(Configuration::TileCacheMB));
        QVERIFY(!configuration.isExplicit(Configuration::NominatimUrl));
    }

    // One line naming where the value came from and why it cannot be used,
    // before anything is created.
    void unusableValuesStopTheStart_data()
    {
        QTest::addColumn<QString>("given"); // "--option value" or "VARIABLE=value"
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("message"); // CONFIG: the config file's path
        const auto row = [](const char *name, const char *given, const QByteArray &file,
                            const char *message) {
            QTest::newRow(name) << QString::fromUtf8(given) << file << QString::fromUtf8(message);
        };
        row("cache size not a number", "--tile-cache-mb lots", "",
            "--tile-cache-mb \"lots\" is not a whole number of 0 or more");
        row("URL without a scheme", "--nominatim-url nominatim.example.org", "",
            "--nominatim-url \"nominatim.example.org\" is not a web address");
        row("URL without a host", "TREKMIME_ROUTING_URL=http://", "",
            "TREKMIME_ROUTING_URL \"http://\" is not a web address");
        row("tile template without {y}", "--tile-url https://t.example/{z}/{x}.png", "",
            "is not a tile address with {z}, {x} and {y}");
        row("tile template without a host", "--tile-url /tiles/{z}/{x}/{y}.png", "",
            "is not a web address");
        row("missing NMEA log", "--nmea-file /nonexistent/track.nmea", "",
            "--nmea-file \"/nonexistent/track.nmea\" is not a readable file");
        row("missing MBTiles file", "", "mbtiles = /nonexistent/map.mbtiles\n",
            "mbtiles \"/nonexistent/map.mbtiles\" in CONFIG is not a readable file");
        row("routing profile with a slash", "--routing-profile car/../x", "",
            "--routing-profile \"car/../x\" is not one word");
        row("named config file missing", "--config /nonexistent/trekmime.conf", "",
            "cannot read config file /nonexistent/trekmime.conf");
        row("preferences folder is a file", "TREKMIME_PREFERENCES_DIR=CONFIG", "",
            "TREKMIME_PREFERENCES_DIR \"CONFIG\" is not a folder");
    }
    void unusableValuesStopTheStart()
    {
        QFETCH(QString, given);
        QFETCH(QByteArray, file);
        QFETCH(QString, message);
        const bool option = given.startsWith(u"--");
        Configuration configuration;
        QString error;
        QVERIFY(!load(option ? given.split(u' ') : QStringList(),
                      option || given.isEmpty() ? QStringList() : QStringList{given}, file,
                      configuration, &error));
        QVERIFY2(error.contains(message.replace(u"CONFIG"_s, configPath())), qPrintable(error));
        QVERIFY(!error.contains(u'\n'));
    }

    void preferencesDirectory()
    {
        Configuration configuration;
        QVERIFY(load({}, {u"TREKMIME_PREFERENCES_DIR=CONFIG.d/a"_s}, {}, configuration));
        QString announcement;
        const QString chosen = choosePreferencesDirectory(configuration, &announcement);
        QCOMPARE(QDir(chosen).absolutePath(), configPath() + u".d/a"_s);
        QVERIFY(QDir(chosen).exists());
        QVERIFY(announcement.isEmpty()); // the user named it

        if (QFileInfo::exists(u"/var/mobile/Library/Preferences"_s))
            QSKIP("this machine has the device's preferences folder");
        QVERIFY(load({}, {}, {}, configuration));
        const QString fallback = choosePreferencesDirectory(configuration, &announcement);
        QVERIFY(fallback.startsWith(
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
        QVERIFY(QDir(fallback).exists());
        QVERIFY(announcement.contains(fallback));
    }
};

TREKMIME_TEST(ConfigurationTest)
#include "ConfigurationTest.moc"
