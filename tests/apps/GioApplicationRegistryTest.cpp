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
        // hidden from menus, still installed; Nameless and BadText are installed, so an
        // empty name rather than none
        QCOMPARE((QStringList{name("org.example.Maps"), name("org.example.Hidden"),
                              name("org.example.Localised", "de"), name("org.example.Gone"),
                              name(""), name("org.example.Nameless"), name("org.example.BadText")}),
                 id("Maps Hidden Weltatlas <none> <none>  ").split(u' '));
        // icons at the requested size and scale
        const auto size = [this](const char *bundle, qreal scale) {
            const QImage icon = ApplicationIconLoader::load(
                m_registry.icon(id(bundle)), ApplicationIconLoader::SmallIconFormat, scale);
            return icon.isNull() || icon.devicePixelRatio() == scale ? icon.size() : QSize(1, 1);
        };
        // a theme icon, an icon file, SVGs of both kinds; none for a broken icon, an entry
        // without one and one not installed
        QCOMPARE((QList<QSize>{size("org.example.Maps", 2.0), size("org.example.Chat", 3.0),
                               size("org.example.Vector", 2.0), size("org.example.VectorFile", 1.0),
                               size("org.example.BrokenIcon", 1.0), size("org.example.Hidden", 1.0),
                               size("org.example.Gone", 1.0)}),
                 (QList<QSize>{{60, 60}, {90, 90}, {60, 60}, {30, 30}, {0, 0}, {0, 0}, {0, 0}}));
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
