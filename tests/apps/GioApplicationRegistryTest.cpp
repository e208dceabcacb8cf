#include "TestMain.h"

#include "applications/GioApplicationRegistry.h"
#include "apps/ApplicationIconLoader.h"
#include "fakes/DesktopEntryFolder.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#undef signals
#include <gio/gio.h>

namespace {
QString id(const char *name)
{
    return QString::fromLatin1(name);
}
} // namespace

// The desktop-entry backend over folders made here. GLib reads the XDG
// folders once per process, so every entry is written before the first
// question.
class GioApplicationRegistryTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    GioApplicationRegistry m_registry;
    QString m_iconFile;

private slots:
    void initTestCase()
    {
        const DesktopEntryFolder home(m_dir.filePath(QStringLiteral("home")));
        const DesktopEntryFolder system(m_dir.filePath(QStringLiteral("system")));
        qputenv("XDG_DATA_HOME", home.root().toLocal8Bit());
        qputenv("XDG_DATA_DIRS", system.root().toLocal8Bit());

        home.addThemeIcon(id("org.example.Maps"), Qt::darkGreen, {});
        home.addApplication(id("org.example.Maps"), id("Maps"), id("org.example.Maps"));
        m_iconFile = system.addThemeIcon(id("chat-file"), Qt::blue, {});
        system.addApplication(id("org.example.Chat"), id("Chat"), m_iconFile);
        system.addApplication(id("org.example.Hidden"), id("Hidden"), {}, true);
        system.addApplication(id("org.example.BrokenIcon"), id("Broken icon"),
                              id("/nowhere/broken.png"));
        system.addEntry(id("org.example.Nameless"),
                        "[Desktop Entry]\nType=Application\nExec=true\n");
        system.addEntry(id("org.example.BadText"),
                        "[Desktop Entry]\nType=Application\nExec=true\nName=Bad\xff\xfe name\n");
        system.addEntry(id("org.example.Localised"),
                        "[Desktop Entry]\nType=Application\nExec=true\nName=Atlas\n"
                        "Name[de]=Weltatlas\n");
    }

    void menuEntriesAreTheHomeScreen()
    {
        QStringList shown = m_registry.displayIdentifiers(false, false);
        shown.sort();
        // GIO shows entries without a usable name too (as "Unnamed")
        QCOMPARE(shown, (QStringList{id("org.example.BadText"), id("org.example.BrokenIcon"),
                                     id("org.example.Chat"), id("org.example.Localised"),
                                     id("org.example.Maps"), id("org.example.Nameless")}));
    }

    void namesInTheUsersLanguage_data()
    {
        QTest::addColumn<QString>("bundle");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << id("org.example.Maps") << id("C") << id("Maps");
        QTest::newRow("hidden from menus, still installed")
            << id("org.example.Hidden") << id("C") << id("Hidden");
        QTest::newRow("localised") << id("org.example.Localised") << id("de") << id("Weltatlas");
        QTest::newRow("not installed") << id("org.example.Gone") << id("C") << QString();
        QTest::newRow("empty identifier") << QString() << id("C") << QString();
        // installed, so an empty name rather than none
        QTest::newRow("no name") << id("org.example.Nameless") << id("C") << id("");
        QTest::newRow("invalid text") << id("org.example.BadText") << id("C") << id("");
    }
    void namesInTheUsersLanguage()
    {
        QFETCH(QString, bundle);
        QFETCH(QString, language);
        QFETCH(QString, name);
        qputenv("LANGUAGE", language.toLatin1());
        const QString answer = m_registry.localizedName(bundle);
        qunsetenv("LANGUAGE");
        QCOMPARE(answer, name);
        QCOMPARE(answer.isNull(), name.isNull());
    }

    void iconsAtTheRequestedSizeAndScale_data()
    {
        QTest::addColumn<QString>("bundle");
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<QSize>("pixels"); // 0 x 0: no icon
        QTest::newRow("theme icon, scale 2") << id("org.example.Maps") << 2.0 << QSize(60, 60);
        QTest::newRow("icon file, scale 3") << id("org.example.Chat") << 3.0 << QSize(90, 90);
        QTest::newRow("broken path") << id("org.example.BrokenIcon") << 1.0 << QSize(0, 0);
        QTest::newRow("no icon") << id("org.example.Hidden") << 1.0 << QSize(0, 0);
        QTest::newRow("not installed") << id("org.example.Gone") << 1.0 << QSize(0, 0);
    }
    void iconsAtTheRequestedSizeAndScale()
    {
        QFETCH(QString, bundle);
        QFETCH(qreal, scale);
        QFETCH(QSize, pixels);
        const QImage icon = ApplicationIconLoader::load(
            m_registry.icon(bundle), ApplicationIconLoader::SmallIconFormat, scale);
        QCOMPARE(icon.size(), pixels);
        if (!icon.isNull())
            QCOMPARE(icon.devicePixelRatio(), scale);
    }

    void runningApplicationsOwnANameOnTheSessionBus()
    {
        const QString socket = m_dir.filePath(QStringLiteral("bus"));
        QProcess daemon;
        daemon.start(QStringLiteral("dbus-daemon"),
                     {QStringLiteral("--session"), QStringLiteral("--nofork"),
                      QStringLiteral("--print-address=1"),
                      QStringLiteral("--address=unix:path=") + socket});
        if (!daemon.waitForStarted(5000))
            QSKIP("dbus-daemon cannot be started here");
        QVERIFY(daemon.waitForReadyRead(5000));
        const QByteArray address = daemon.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);

        // the running application: it owns its id on the bus
        GError *error = nullptr;
        GDBusConnection *app = g_dbus_connection_new_for_address_sync(
            address.constData(),
            GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                 G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, &error);
        QVERIFY2(app, error ? error->message : "");
        for (const char *name : {"org.example.Maps", "org.example.Hidden"}) {
            GVariant *reply = g_dbus_connection_call_sync(
                app, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                "RequestName", g_variant_new("(su)", name, 4u), nullptr, G_DBUS_CALL_FLAGS_NONE,
                2000, nullptr, nullptr);
            QVERIFY(reply);
            g_variant_unref(reply);
        }

        QCOMPARE(m_registry.displayIdentifiers(true, false), QStringList{id("org.example.Maps")});

        g_dbus_connection_close_sync(app, nullptr, nullptr);
        g_object_unref(app);
        daemon.terminate();
        daemon.waitForFinished(5000);

        // the bus is gone
        QCOMPARE(m_registry.displayIdentifiers(true, false), QStringList());
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", m_dir.path().toLocal8Bit());
        const QByteArray display = qgetenv("DISPLAY");
        qunsetenv("DISPLAY");
        QCOMPARE(m_registry.displayIdentifiers(true, false), QStringList());
        if (!display.isEmpty())
            qputenv("DISPLAY", display);
    }
};

TREKMIME_TEST(GioApplicationRegistryTest)
#include "GioApplicationRegistryTest.moc"
