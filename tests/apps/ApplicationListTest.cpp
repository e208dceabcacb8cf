#include "TestMain.h"
#include "TestServices.h"

#include "applications/ApplicationList.h"
#include "applications/GioApplicationRegistry.h"
#include "apps/ApplicationIconLoader.h"
#include "fakes/DesktopEntryFolder.h"
#include "fakes/FakeApplicationRegistry.h"
#include "settings/PropertyList.h"

#include <QProcess>
#include <QTemporaryDir>

#undef signals
#include <gio/gio.h>

namespace {
QStringList bundlesOf(const QList<ApplicationModel> &models)
{
    QStringList bundles;
    for (const ApplicationModel &model : models)
        bundles.append(model.appBundle());
    return bundles;
}
QStringList ids(const char *names) // "a b c": org.example.a, org.example.b, ...
{
    QStringList result;
    for (const QString &name : QString::fromLatin1(names).split(u' ', Qt::SkipEmptyParts))
        result.append(name.contains(u'.') ? name : u"org.example."_s + name);
    return result;
}
} // namespace

// Which applications the whitelist offers, from a fake registry and a hide list written here;
// then the desktop-entry backend over folders made here (GLib reads the XDG folders once per
// process, so every entry is written before the first question).
class ApplicationListTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    FakeApplicationRegistry m_registry;
    QTemporaryDir m_dir;
    GioApplicationRegistry m_gio;
    static QString id(const char *name) { return QString::fromLatin1(name); }

    QList<ApplicationModel> models(const QStringList &hideList = {})
    {
        QVariantMap keys; // values are never looked at
        for (const QString &key : hideList)
            keys.insert(key, false);
        if (!hideList.isEmpty())
            PropertyList::write(m_world->files().hideListFile(), keys);
        return ApplicationList::installedAppModel(m_registry, m_world->preferences());
    }

private slots:
    void init()
    {
        m_world = std::make_unique<TestServices>();
        m_registry = FakeApplicationRegistry();
        m_registry.addShown(ids("org.gnome.Maps com.apple.Maps Chat"));
        for (const QString &hidden : ids("Hidden AHidden"))
            m_registry.add({hidden, hidden.section(u'.', -1), {}, false});
        m_registry.add({u"org.example.Nameless"_s, QString(), {}, false});
    }

    void hideListCompletesThePlatformsList_data()
    {
        QTest::addColumn<QStringList>("hideList");
        QTest::addColumn<QStringList>("expected");
        addRow("no hide list", QStringList(), ids("org.gnome.Maps com.apple.Maps Chat"));
        addRow("installed hidden ones appended, in the file's order", ids("Hidden AHidden"),
               ids("org.gnome.Maps com.apple.Maps Chat AHidden Hidden"));
        addRow("already listed, not installed, no name: skipped", ids("Chat Gone Nameless Hidden"),
               ids("org.gnome.Maps com.apple.Maps Chat Hidden"));
    }
    void hideListCompletesThePlatformsList()
    {
        QFETCH(QStringList, hideList);
        QFETCH(QStringList, expected);
        QCOMPARE(bundlesOf(models(hideList)), expected);
    }

    void recordsAreFilledAfresh()
    {
        const QList<ApplicationModel> list = models(ids("Hidden"));
        const ApplicationModel &chat = list.at(2);
        QCOMPARE(chat.appName(), u"Chat"_s);
        QVERIFY(!chat.appIcon().isNull());
        QCOMPARE(chat.appIconBig(), chat.appIcon());
        QVERIFY(list.at(3).appIcon().isNull()); // a hidden one without an icon
        for (const ApplicationModel &model : list)
            QCOMPARE(m_registry.iconQueries.value(model.appBundle()), 2);
        // nothing is kept: a second list asks everything again
        models();
        QCOMPARE(m_registry.iconQueries.value(u"org.example.Chat"_s), 4);
        QCOMPARE(m_registry.identifierQueries, 2);
        // duplicates and order are kept, and there is no fallback to the identifier
        const QList<ApplicationModel> given =
            ApplicationModel::appModelListWithAppList(m_registry, ids("Chat Gone Chat"));
        QCOMPARE(bundlesOf(given), ids("Chat Gone Chat"));
        QVERIFY(given.at(1).appName().isNull());
    }

    void userListRunningAndProxies()
    {
        m_registry.addShown(ids("com.applemaps com.Apple.Maps"));
        QCOMPARE(
            bundlesOf(ApplicationList::installedUserAppModel(m_registry, m_world->preferences())),
            ids("org.gnome.Maps Chat com.applemaps com.Apple.Maps"));
        // the running ones; proxies for hidden services are left out
        m_registry.running = {u"org.example.Chat"_s, u"org.example.Gone"_s};
        QCOMPARE(ApplicationList::currentRunningAppBundle(m_registry), ids("Chat"));
        QCOMPARE(
            ApplicationList::identifierArrayFromProxyArray({{u"com.apple.springboard"_s},
                                                            {u"org.gnome.Maps"_s},
                                                            {u"com.apple.StoreDemoViewService"_s},
                                                            {u"com.apple.Springboard"_s}}),
            ids("org.gnome.Maps com.apple.Springboard"));
    }

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
        QStringList shown = m_gio.displayIdentifiers(false, false);
        shown.sort();
        // GIO shows entries without a usable name too (as "Unnamed")
        QCOMPARE(shown.join(u' '), id("org.example.BadText org.example.BrokenIcon org.example.Chat "
                                      "org.example.Localised org.example.Maps org.example.Nameless "
                                      "org.example.Vector org.example.VectorFile"));
        const auto name = [this](const char *bundle, const char *language = "C") {
            qputenv("LANGUAGE", language);
            const QString answer = m_gio.localizedName(id(bundle));
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
                m_gio.icon(id(bundle)), ApplicationIconLoader::SmallIconFormat, scale);
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
        QCOMPARE(m_gio.displayIdentifiers(true, false), QStringList{id("org.example.Maps")});
        g_object_unref(app);
        daemon.terminate();
        daemon.waitForFinished(5000);
        // the bus is gone, then there is none at all
        QCOMPARE(m_gio.displayIdentifiers(true, false), QStringList());
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", m_dir.path().toLocal8Bit());
        const QByteArray display = qgetenv("DISPLAY");
        qunsetenv("DISPLAY");
        QCOMPARE(m_gio.displayIdentifiers(true, false), QStringList());
        qputenv("DISPLAY", display);
    }
};

TREKMIME_TEST(ApplicationListTest)
#include "ApplicationListTest.moc"
