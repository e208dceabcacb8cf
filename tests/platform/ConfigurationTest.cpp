#include "TestMain.h"

#include "platform/Configuration.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {
QStringList args(std::initializer_list<const char *> words)
{
    QStringList result{QStringLiteral("trekmime")};
    for (const char *word : words)
        result.append(QString::fromUtf8(word));
    return result;
}
} // namespace

// Where each setting comes from: command line, then environment, then the
// config file, then the default.
class ConfigurationTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString writeConfig(const QByteArray &content,
                        const QString &name = QStringLiteral("trekmime.conf"))
    {
        const QString path = m_dir.filePath(name);
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(content);
        return path;
    }

    bool load(const QStringList &arguments, const QProcessEnvironment &environment,
              Configuration &configuration, QString *error = nullptr)
    {
        QCommandLineParser parser;
        Configuration::addOptionsTo(parser);
        if (!parser.parse(arguments))
            return false;
        return Configuration::load(&parser, environment, configuration, error);
    }

private slots:
    void precedence_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("expected");
        const QByteArray file = "tile-url = http://file.example/{z}/{x}/{y}.png\n";
        QTest::newRow("default") << args({}) << QString() << QByteArray()
                                 << QStringLiteral(
                                        "https://tile.openstreetmap.org/{z}/{x}/{y}.png");
        QTest::newRow("config file") << args({}) << QString() << file
                                     << QStringLiteral("http://file.example/{z}/{x}/{y}.png");
        const QString environment = QStringLiteral("http://env.example/{z}/{x}/{y}");
        QTest::newRow("environment over file") << args({}) << environment << file << environment;
        QTest::newRow("command line over all")
            << args({"--tile-url", "http://cli.example/{z}/{x}/{y}"}) << environment << file
            << QStringLiteral("http://cli.example/{z}/{x}/{y}");
        QTest::newRow("empty on the command line means no tiles")
            << args({"--tile-url", ""}) << QString() << file << QString();
    }
    void precedence()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, environment);
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);
        QProcessEnvironment env;
        env.insert(QStringLiteral("TREKMIME_CONFIG"), writeConfig(file));
        if (!environment.isEmpty())
            env.insert(QStringLiteral("TREKMIME_TILE_URL"), environment);
        Configuration configuration;
        QVERIFY(load(arguments, env, configuration));
        QCOMPARE(configuration.tileUrl, expected);
    }

    void valuesAreTyped()
    {
        const QString log = writeConfig("", QStringLiteral("track.nmea"));
        QProcessEnvironment env;
        env.insert(QStringLiteral("TREKMIME_CONFIG"),
                   writeConfig("tile-cache-mb = \" 50 \"\n"
                               "routing-url = http://127.0.0.1:5000/osrm/\n"
                               "tile-attribution = Data, and more\n"
                               "nmea-file = " +
                               log.toUtf8() + "\n"));
        Configuration configuration;
        QVERIFY(load(args({"--routing-profile", "foot"}), env, configuration));
        QCOMPARE(configuration.tileCacheMB, 50);
        QCOMPARE(configuration.routingUrl, QUrl(QStringLiteral("http://127.0.0.1:5000/osrm/")));
        QCOMPARE(configuration.routingProfile, QStringLiteral("foot"));
        QCOMPARE(configuration.tileAttribution, QStringLiteral("Data, and more"));
        QCOMPARE(configuration.nmeaFile, log);
        QVERIFY(configuration.isExplicit(Configuration::TileCacheMB));
        QVERIFY(!configuration.isExplicit(Configuration::NominatimUrl));
    }

    // One line naming where the value came from and why it cannot be used,
    // before anything is created.
    void unusableValuesStopTheStart_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("variable"); // "NAME=value"
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("message"); // CONFIG: the config file's path
        const auto row = [](const char *name, const QStringList &arguments, const char *variable,
                            const QByteArray &file, const char *message) {
            QTest::newRow(name) << arguments << QString::fromUtf8(variable) << file
                                << QString::fromUtf8(message);
        };
        row("cache size not a number", args({"--tile-cache-mb", "lots"}), "", "",
            "--tile-cache-mb \"lots\" is not a whole number of 0 or more");
        row("negative cache size", args({}), "TREKMIME_TILE_CACHE_MB=-1", "",
            "TREKMIME_TILE_CACHE_MB \"-1\" is not a whole number of 0 or more");
        row("fractional cache size in the file", args({}), "", "tile-cache-mb = 1.5\n",
            "tile-cache-mb \"1.5\" in CONFIG is not a whole number of 0 or more");
        row("URL without a scheme", args({"--nominatim-url", "nominatim.example.org"}), "", "",
            "--nominatim-url \"nominatim.example.org\" is not a web address");
        row("URL without a host", args({}), "TREKMIME_ROUTING_URL=http://", "",
            "TREKMIME_ROUTING_URL \"http://\" is not a web address");
        row("URL that does not parse", args({"--geocoding-url", "http://exa mple.org"}), "", "",
            "--geocoding-url \"http://exa mple.org\" is not a web address");
        row("empty URL", args({"--routing-url", ""}), "", "",
            "--routing-url \"\" is not a web address");
        row("tile template without {y}", args({"--tile-url", "https://t.example/{z}/{x}.png"}), "",
            "", "is not a tile address with {z}, {x} and {y}");
        row("tile template without a host", args({"--tile-url", "/tiles/{z}/{x}/{y}.png"}), "", "",
            "is not a web address");
        row("missing NMEA log", args({"--nmea-file", "/nonexistent/track.nmea"}), "", "",
            "--nmea-file \"/nonexistent/track.nmea\" is not a readable file");
        row("missing MBTiles file", args({}), "", "mbtiles = /nonexistent/map.mbtiles\n",
            "mbtiles \"/nonexistent/map.mbtiles\" in CONFIG is not a readable file");
        row("routing profile with a slash", args({"--routing-profile", "car/../x"}), "", "",
            "--routing-profile \"car/../x\" is not one word");
        row("preferences folder is a file", args({}), "TREKMIME_PREFERENCES_DIR=CONFIG", "",
            "TREKMIME_PREFERENCES_DIR \"CONFIG\" is not a folder");
    }
    void unusableValuesStopTheStart()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, variable);
        QFETCH(QByteArray, file);
        QFETCH(QString, message);
        const QString config = writeConfig(file);
        QProcessEnvironment env;
        env.insert(QStringLiteral("TREKMIME_CONFIG"), config);
        if (!variable.isEmpty())
            env.insert(variable.section(u'=', 0, 0),
                       variable.section(u'=', 1).replace(QStringLiteral("CONFIG"), config));
        Configuration configuration;
        QString error;
        QVERIFY(!load(arguments, env, configuration, &error));
        QVERIFY2(error.contains(message.replace(QStringLiteral("CONFIG"), config)),
                 qPrintable(error));
        QVERIFY(!error.contains(u'\n'));
    }

    void aNamedConfigFileMustExist()
    {
        Configuration configuration;
        QString error;
        QProcessEnvironment env;
        QVERIFY(
            !load(args({"--config", "/nonexistent/trekmime.conf"}), env, configuration, &error));
        QCOMPARE(error, QStringLiteral("cannot read config file /nonexistent/trekmime.conf"));
        // the default one is optional
        env.insert(QStringLiteral("XDG_CONFIG_HOME"),
                   m_dir.filePath(QStringLiteral("nothing-here")));
        QVERIFY(load(args({}), env, configuration));
    }

    void preferencesDirectory()
    {
        Configuration configuration;
        QProcessEnvironment env;
        env.insert(QStringLiteral("TREKMIME_PREFERENCES_DIR"),
                   m_dir.filePath(QStringLiteral("a/b")));
        QVERIFY(load(args({}), env, configuration));
        QString announcement;
        const QString chosen = choosePreferencesDirectory(configuration, &announcement);
        QCOMPARE(QDir(chosen).absolutePath(), m_dir.filePath(QStringLiteral("a/b")));
        QVERIFY(QDir(chosen).exists());
        QVERIFY(announcement.isEmpty()); // the user named it

        if (QFileInfo::exists(QStringLiteral("/var/mobile/Library/Preferences")))
            QSKIP("this machine has the device's preferences folder");
        QVERIFY(load(args({}), QProcessEnvironment(), configuration));
        const QString fallback = choosePreferencesDirectory(configuration, &announcement);
        QVERIFY(fallback.startsWith(
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
        QVERIFY(QDir(fallback).exists());
        QVERIFY(announcement.contains(fallback));
    }
};

TREKMIME_TEST(ConfigurationTest)
#include "ConfigurationTest.moc"
