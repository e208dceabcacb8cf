// The information screen, the whitelist over it, and a main screen in
// Simplified Chinese.

#include "Scene.h"
#include "ScreenshotWorld.h"

#include "app/BaseViewController.h"
#include "app/ModalPresentation.h"
#include "fakes/DesktopEntryFolder.h"
#include "info/InfoViewController.h"
#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"
#include "shell/AppDelegate.h"
#include "shell/AppWindow.h"
#include "shell/Translations.h"
#include "ui/ColorPalette.h"

#include <QGuiApplication>
#include <QIcon>
#include <QTemporaryDir>
#include <QWidget>

namespace {

AppDelegate *launch(ScreenshotWorld &world)
{
    AppDelegate *delegate = world.keep(new AppDelegate(world.services()));
    delegate->didFinishLaunching();
    return delegate;
}

// Opens the information screen at once over the screen on display.
InfoViewController *showInfo(QWidget *window)
{
    setModalAnimationsEnabled(false);
    auto *shell = window->property("shell").value<AppDelegate *>();
    QWidget *root = static_cast<AppWindow *>(window)->rootViewController();
    shell->showInfoView(root, ModalTransition::FlipHorizontal);
    auto *info = qobject_cast<InfoViewController *>(presentedViewController(root));
    setModalAnimationsEnabled(true);
    return info;
}

QWidget *launchedWindow(ScreenshotWorld &world)
{
    // the information screen shows the running program's name and version
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Trekmime"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TREKMIME_VERSION));
    AppDelegate *delegate = launch(world);
    delegate->window()->setProperty("shell", QVariant::fromValue(delegate));
    return delegate->window();
}

// A dozen applications with an icon theme of their own, made once for the
// process: GLib reads the data folders the first time it is asked.
void makeApplications()
{
    static QTemporaryDir folder;
    static bool made = false;
    if (made)
        return;
    made = true;
    const DesktopEntryFolder data(folder.filePath(QStringLiteral("data")));
    const struct
    {
        const char *bundle;
        const char *name;
        const char *glyph;
        const QColor &(*color)();
    } apps[] = {
        {"org.gnome.Maps", "Maps", "M", &ColorPalette::nephritisColor},
        {"org.example.RideShare", "Ride Share", "R", &ColorPalette::midnightBlueColor},
        {"org.example.Weather", "Weather", "W", &ColorPalette::peterRiverColor},
        {"org.example.Camera", "Camera", "C", &ColorPalette::asbestosColor},
        {"org.example.Chat", "Chat", "\u2709", &ColorPalette::emerlandColor},
        {"org.example.FoodDelivery", "Food Delivery", "F", &ColorPalette::carrotColor},
        {"org.example.Fitness", "Fitness Tracker", "\u2665", &ColorPalette::alizarinColor},
        {"org.example.Photos", "Photos", "P", &ColorPalette::sunflowerColor},
        {"org.example.Social", "Social", "S", &ColorPalette::amethystColor},
        {"org.example.Transit", "Transit", "T", &ColorPalette::greenSeaColor},
        {"org.example.Games", "Treasure Hunt", "\u2605", &ColorPalette::pumpkinColor},
        {"org.example.Browser", "Browser", "B", &ColorPalette::belizeHoleColor},
    };
    for (const auto &app : apps) {
        const QString bundle = QString::fromLatin1(app.bundle);
        data.addThemeIcon(bundle, app.color(), QString::fromUtf8(app.glyph));
        data.addApplication(bundle, QString::fromUtf8(app.name), bundle);
    }
    qputenv("XDG_DATA_DIRS", data.root().toLocal8Bit());
    qputenv("XDG_DATA_HOME", folder.filePath(QStringLiteral("home")).toLocal8Bit());
    QIcon::setThemeSearchPaths({data.root() + QStringLiteral("/icons")});
    if (QIcon::themeName().isEmpty())
        QIcon::setThemeName(QStringLiteral("hicolor"));
}

} // namespace

TREKMIME_SCENE(QStringLiteral("info"), launchedWindow,
               [](ScreenshotWorld &, QWidget *window) { showInfo(window); })

TREKMIME_SCENE(
    QStringLiteral("whitelist"),
    [](ScreenshotWorld &world) {
        makeApplications();
        PropertyList::write(
            world.preferences().files().whitelistFile(),
            QVariantMap{{QStringLiteral("org.gnome.Maps"), true},
                        {QStringLiteral("org.example.RideShare"), true},
                        {QStringLiteral("org.example.Chat"), false},
                        {QStringLiteral("org.example.Fitness"), QStringLiteral("1")}});
        return launchedWindow(world);
    },
    [](ScreenshotWorld &, QWidget *window) {
        InfoViewController *info = showInfo(window);
        setModalAnimationsEnabled(false);
        if (info)
            info->wihteList();
        setModalAnimationsEnabled(true);
    })

TREKMIME_SCENE(
    QStringLiteral("start-spot-mode-zh"),
    [](ScreenshotWorld &world) {
        installTranslations(QStringLiteral("zh_CN"));
        world.preferences().writeMode(MasterRecord::LocationMode);
        return launchedWindow(world);
    },
    // the screen keeps the texts it was made with; the scenes after this
    // one show the texts as written
    [](ScreenshotWorld &, QWidget *) { installTranslations(QStringLiteral("C")); })
