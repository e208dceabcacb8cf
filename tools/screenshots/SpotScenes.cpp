// The fixed-location screen, its name panel and search overlay, and the
// favourites list.

#include "Scene.h"
#include "ScreenshotWorld.h"

#include "location/Geocoder.h"
#include "location/Location.h"
#include "settings/FavoriteEntry.h"
#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"
#include "shell/AppDelegate.h"
#include "shell/AppWindow.h"
#include "spot/FavoritesTableView.h"
#include "spot/FavoritesViewController.h"
#include "spot/SpotmimeViewController.h"
#include "ui/MapView.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>

namespace {

// A geocoder that never answers, so that a search stays under way.
class SilentGeocoder : public QObject, public Geocoder
{
public:
    void reverseGeocodeLocation(const Coordinate &, QObject *, Completion) override {}
    void geocodeAddressString(const QString &, QObject *, Completion) override {}
};

// The real window in the fixed-location mode, as a user sees it after starting.
QWidget *spotWindow(ScreenshotWorld &world, const Services &services)
{
    world.preferences().writeMode(MasterRecord::LocationMode);
    AppDelegate *delegate = world.keep(new AppDelegate(services));
    delegate->didFinishLaunching();
    return delegate->window();
}

QWidget *spotWindow(ScreenshotWorld &world)
{
    return spotWindow(world, world.services());
}

SpotmimeViewController *screenOf(QWidget *window)
{
    return window->findChild<SpotmimeViewController *>();
}

// The drawn map settles on a centre that differs from the named place in the
// last digits; the fake geocoder is told the address of the exact centre.
void showAddress(ScreenshotWorld &world, QWidget *window, const QString &address)
{
    SpotmimeViewController *screen = screenOf(window);
    auto *map = screen->findChild<MapView *>(QStringLiteral("mainMapView"));
    world.geocoder.setAddress(map->centerCoordinate(), address);
    screen->regionDidChangeAnimated(map, false);
}

void storeFavourites(TMPreferenceUtil &preferences)
{
    preferences.addFavorite(FavoriteEntry::make(QStringLiteral("Home"), 22.2783, 114.1747));
    preferences.addFavorite(
        FavoriteEntry::make(QStringLiteral("Office, Central Pier 7"), 22.2846809, 114.1588));
    preferences.addFavorite(
        FavoriteEntry::make(QStringLiteral("Tsim Sha Tsui promenade"), 22.2934, 114.1715));
    preferences.addFavorite(
        FavoriteEntry::make(QStringLiteral("Victoria Peak"), 22.2759, 114.1455));
    preferences.addFavorite(FavoriteEntry::make(QString(), 22.3193, 114.1694));
}

FavoritesViewController *openFavourites(QWidget *window)
{
    screenOf(window)->showFavoritesView();
    return window->findChild<FavoritesViewController *>();
}

} // namespace

TREKMIME_SCENE(
    QStringLiteral("spot-off"), [](ScreenshotWorld &world) { return spotWindow(world); },
    [](ScreenshotWorld &world, QWidget *window) {
        showAddress(world, window, QStringLiteral("Queen's Road Central"));
    })
TREKMIME_SCENE(
    QStringLiteral("spot-on"),
    [](ScreenshotWorld &world) {
        world.preferences().setLocationEnable(true, 22.2988, 114.1722);
        return spotWindow(world);
    },
    [](ScreenshotWorld &world, QWidget *window) {
        showAddress(world, window, QStringLiteral("Tsim Sha Tsui, Kowloon, Hong Kong"));
    })
TREKMIME_SCENE(
    QStringLiteral("spot-name-panel"), [](ScreenshotWorld &world) { return spotWindow(world); },
    [](ScreenshotWorld &world, QWidget *window) {
        showAddress(world, window, QStringLiteral("Queen's Road Central"));
        QCoreApplication::processEvents();
        screenOf(window)->findChild<QPushButton *>(QStringLiteral("addButton"))->click();
    })
TREKMIME_SCENE(
    QStringLiteral("spot-searching"),
    [](ScreenshotWorld &world) {
        // the screens keep a reference to their services: these live as long
        // as the picture's world
        struct Holder : QObject
        {
            SilentGeocoder geocoder;
            Services services;
            std::unique_ptr<Location> location;
        };
        Holder *holder = world.keep(new Holder);
        holder->services = world.services();
        holder->services.geocoder = &holder->geocoder;
        holder->location = std::make_unique<Location>(holder->services.positionSources,
                                                      &holder->geocoder, holder->services.alerts);
        holder->services.location = holder->location.get();
        return spotWindow(world, holder->services);
    },
    [](ScreenshotWorld &, QWidget *window) {
        SpotmimeViewController *screen = screenOf(window);
        screen->findChild<QLineEdit *>(QStringLiteral("searchField"))
            ->setText(QStringLiteral("Hong Kong Maritime Museum"));
        screen->searchButtonClicked();
    })
TREKMIME_SCENE(
    QStringLiteral("favorites-browsing"),
    [](ScreenshotWorld &world) {
        storeFavourites(world.preferences());
        return spotWindow(world);
    },
    [](ScreenshotWorld &, QWidget *window) { openFavourites(window); })
TREKMIME_SCENE(
    QStringLiteral("favorites-editing"),
    [](ScreenshotWorld &world) {
        storeFavourites(world.preferences());
        return spotWindow(world);
    },
    [](ScreenshotWorld &, QWidget *window) {
        FavoritesViewController *list = openFavourites(window);
        list->edit();
        list->tableView()->revealDeleteButton(1);
    })
TREKMIME_SCENE(
    QStringLiteral("favorites-empty"), [](ScreenshotWorld &world) { return spotWindow(world); },
    [](ScreenshotWorld &, QWidget *window) { openFavourites(window); })
