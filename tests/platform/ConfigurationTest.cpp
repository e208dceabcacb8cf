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

    QString writeConfig(const QByteArray &content)
    {
        const QString path = m_dir.filePath(QStringLiteral("trekmime.conf"));
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
        QTest::newRow("environment over file") << args({}) << QStringLiteral("http://env.example/t")
                                               << file << QStringLiteral("http://env.example/t");
        QTest::newRow("command line over all") << args({"--tile-url", "http://cli.example/t"})
                                               << QStringLiteral("http://env.example/t") << file
                                               << QStringLiteral("http://cli.example/t");
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
        QCOMPARE(configuration.value(Configuration::TileUrl), expected);
    }

    void aNamedConfigFileMustExist()
    {
        Configuration configuration;
        QString error;
        QProcessEnvironment env;
        QVERIFY(
            !load(args({"--config", "/nonexistent/trekmime.conf"}), env, configuration, &error));
        QVERIFY(error.contains(QStringLiteral("/nonexistent/trekmime.conf")));
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
