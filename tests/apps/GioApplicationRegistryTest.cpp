#include "TestMain.h"

#include "applications/GioApplicationRegistry.h"
#include "apps/ApplicationIconLoader.h"
#include "fakes/DesktopEntryFolder.h"

#include <QProcess>
#include <QTemporaryDir>

#undef signals
#include <gio/gio.h>

// The desktop-entry backend over folders made here. GLib reads the XDG folders once per
// process, so every entry is written before the first question.
class GioApplicationRegistryTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    GioApplicationRegistry m_registry;
    static QString id(const char *name) { return QString::fromLatin1(name); }

private slots:
    void initTestCase()
    {
        const DesktopEntryFolder home(m_dir.filePath(id("home"))),
            system(m_dir.filePath(id("system")));
        qputenv("XDG_DATA_HOME", home.root().toLocal8Bit());
        qputenv("XDG_DATA_DIRS", system.root().toLocal8Bit());

        home.addThemeIcon(id("org.example.Maps"), Qt::darkGreen, {});
        home.addApplication(id("org.example.Maps"), id("Maps"), id("org.example.Maps"));
        system.addApplication(id("org.example.Chat"), id("Chat"),
                              system.addThemeIcon(id("chat-file"), Qt::blue, {}));
        system.addApplication(id("org.example.Hidden"), id("Hidden"), {}, true);
        // many applications ship nothing but an SVG
        home.addSvgThemeIcon(id("org.example.Vector"), Qt::darkCyan);
        home.addApplication(id("org.example.Vector"), id("Vector"), id("org.example.Vector"));
        system.addApplication(id("org.example.VectorFile"), id("Vector file"),
                              system.addSvgThemeIcon(id("vector-file"), Qt::red));
        system.addApplication(id("org.example.BrokenIcon"), id("Broken icon"),
                              id("/nowhere/broken.png"));
        const QByteArray entry = "[Desktop Entry]\nType=Application\nExec=true\n";
        system.addEntry(id("org.example.Nameless"), entry);
        system.addEntry(id("org.example.BadText"), entry + "Name=Bad\xff\xfe name\n");
        system.addEntry(id("org.example.Localised"), entry + "Name=Atlas\nName[de]=Weltatlas\n");
    }

    // Menu entries are the home screen; names come in the user's language.
    void entriesAndNames()
    {
        QStringList shown = m_registry.displayIdentifiers(false, false);
        shown.sort();
        // GIO shows entries without a usable name too (as "Unnamed")
        QCOMPARE(shown.join(u' '), id("org.example.BadText org.example.BrokenIcon org.example.Chat "
                                      "org.example.Localised org.example.Maps org.example.Nameless "
                                      "org.example.Vector org.example.VectorFile"));
        const auto name = [this](const char *bundle, const char *language = "C") {
            qputenv("LANGUAGE", language);
            const QString answer = m_registry.localizedName(id(bundle));
            qunsetenv("LANGUAGE");
            return answer.isNull() ? id("<none>") : answer;
        };
        QCOMPARE(name("org.example.Maps"), id("Maps"));
        QCOMPARE(name("org.example.Hidden"), id("Hidden")); // hidden from menus, still installed
        QCOMPARE(name("org.example.Localised", "de"), id("Weltatlas"));
        QCOMPARE(name("org.example.Gone"), id("<none>"));
        QCOMPARE(name(""), id("<none>"));
        // installed, so an empty name rather than none
        QCOMPARE(name("org.example.Nameless"), id(""));
        QCOMPARE(name("org.example.BadText"), id(""));
        // icons at the requested size and scale
        const auto size = [this](const char *bundle, qreal scale) {
            const QImage icon = ApplicationIconLoader::load(
                m_registry.icon(id(bundle)), ApplicationIconLoader::SmallIconFormat, scale);
            return icon.isNull() || icon.devicePixelRatio() == scale ? icon.size() : QSize(-1, -1);
        };
        QCOMPARE(size("org.example.Maps", 2.0), QSize(60, 60)); // theme icon
        QCOMPARE(size("org.example.Chat", 3.0), QSize(90, 90)); // icon file
        QCOMPARE(size("org.example.Vector", 2.0), QSize(60, 60));
        QCOMPARE(size("org.example.VectorFile", 1.0), QSize(30, 30));
        QVERIFY(size("org.example.BrokenIcon", 1.0).isEmpty());
        QVERIFY(size("org.example.Hidden", 1.0).isEmpty()); // no icon
        QVERIFY(size("org.example.Gone", 1.0).isEmpty());   // not installed
    }

    void runningApplicationsOwnANameOnTheSessionBus()
    {
        QProcess daemon;
        daemon.start(id("dbus-daemon"), {id("--session"), id("--nofork"), id("--print-address=1"),
                                         id("--address=unix:path=") + m_dir.filePath(id("bus"))});
        if (!daemon.waitForStarted(5000))
            QSKIP("dbus-daemon cannot be started here");
        QVERIFY(daemon.waitForReadyRead(5000));
        const QByteArray address = daemon.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        // the running application: it owns its id on the bus
        GDBusConnection *app = g_dbus_connection_new_for_address_sync(
            address.constData(),
            GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                 G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr);
        QVERIFY(app);
        for (const char *name : {"org.example.Maps", "org.example.Hidden"})
            g_variant_unref(g_dbus_connection_call_sync(
                app, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                "RequestName", g_variant_new("(su)", name, 4u), nullptr, G_DBUS_CALL_FLAGS_NONE,
                2000, nullptr, nullptr));
        QCOMPARE(m_registry.displayIdentifiers(true, false), QStringList{id("org.example.Maps")});
        g_object_unref(app);
        daemon.terminate();
        daemon.waitForFinished(5000);
        // the bus is gone, then there is none at all
        QCOMPARE(m_registry.displayIdentifiers(true, false), QStringList());
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", m_dir.path().toLocal8Bit());
        const QByteArray display = qgetenv("DISPLAY");
        qunsetenv("DISPLAY");
        QCOMPARE(m_registry.displayIdentifiers(true, false), QStringList());
        qputenv("DISPLAY", display);
    }
};

TREKMIME_TEST(GioApplicationRegistryTest)
#include "GioApplicationRegistryTest.moc"
