// The route screen: empty, with a planned route, with stops and a pace,
// choosing a time, running, and its address picker while it looks an address
// up and once it has.

#include "Scene.h"
#include "ScreenshotWorld.h"

#include "app/ModalPresentation.h"
#include "route/DateTimePicker.h"
#include "route/SelectAddressViewController.h"
#include "route/TrekmimeViewController.h"
#include "shell/AppDelegate.h"
#include "shell/AppWindow.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"

#include <QComboBox>
#include <QTimer>
#include <QWidget>

namespace {

const Coordinate Pier{22.2846809, 114.1588};
const Coordinate Tst{22.2988, 114.1722};

// a road-like way from Central Pier 7 round the harbour to Tsim Sha Tsui
DirectionsAnswer harbourRoute()
{
    DirectionsRoute route;
    route.coordinates = {Pier,
                         {22.2838, 114.1612},
                         {22.2829, 114.1650},
                         {22.2851, 114.1689},
                         {22.2873, 114.1712},
                         {22.2905, 114.1725},
                         {22.2940, 114.1731},
                         {22.2966, 114.1728},
                         Tst};
    route.distance = 4200;
    route.duration = 540;
    return DirectionsAnswer::found({route});
}

QWidget *routeWindow(ScreenshotWorld &world)
{
    setModalAnimationsEnabled(false);
    world.directions.setAnswer(harbourRoute());
    AppDelegate *delegate = world.keep(new AppDelegate(world.services()));
    delegate->didFinishLaunching();
    return delegate->window();
}

TrekmimeViewController *screenIn(QWidget *window)
{
    return window->findChild<TrekmimeViewController *>();
}

void planRoute(QWidget *window)
{
    TrekmimeViewController *screen = screenIn(window);
    screen->startChosen(Pier.latitude, Pier.longitude, QStringLiteral("Central Pier 7"));
    screen->endChosen(Tst.latitude, Tst.longitude, QStringLiteral("Tsim Sha Tsui"));
}

void chooseTimes(TrekmimeViewController *screen)
{
    screen->setAnimationDuration(0);
    screen->chooseStartTime();
    screen->datePicker()->step(DateTimePicker::Minute, 5);
    screen->pickerButtonClicked();
    screen->chooseEndTime();
    screen->datePicker()->step(DateTimePicker::Hour, 1);
    screen->pickerButtonClicked();
    screen->setAnimationDuration(500);
}

SelectAddressViewController *openPicker(QWidget *window)
{
    TrekmimeViewController *screen = screenIn(window);
    screen->chooseStart();
    return screen->addressPicker();
}

} // namespace

TREKMIME_SCENE(QStringLiteral("route-empty"), routeWindow)
TREKMIME_SCENE(QStringLiteral("route-planned"), routeWindow,
               [](ScreenshotWorld &, QWidget *window) { planRoute(window); })
// two stops on the way and a pace chosen for the end time
TREKMIME_SCENE(QStringLiteral("route-stops"), routeWindow, [](ScreenshotWorld &, QWidget *window) {
    TrekmimeViewController *screen = screenIn(window);
    planRoute(window);
    screen->stopChosen(22.2829, 114.1650, QStringLiteral("Admiralty Centre"));
    screen->stopChosen(22.2940, 114.1731, QStringLiteral("Hong Kong Cultural Centre"));
    chooseTimes(screen);
    QTimer::singleShot(300, screen, [screen] {
        auto *pace = screen->findChild<QComboBox *>(QStringLiteral("paceChoice"));
        pace->setCurrentIndex(0);
        screen->choosePace(0);
    });
})
TREKMIME_SCENE(QStringLiteral("route-date-picker"), routeWindow,
               [](ScreenshotWorld &, QWidget *window) {
                   planRoute(window);
                   screenIn(window)->chooseStartTime();
                   screenIn(window)->datePicker()->step(DateTimePicker::Minute, 5);
               })
TREKMIME_SCENE(QStringLiteral("route-running"), routeWindow,
               [](ScreenshotWorld &world, QWidget *window) {
                   TrekmimeViewController *screen = screenIn(window);
                   planRoute(window);
                   chooseTimes(screen);
                   // once the route has answered, as a person turns the switch on; a
                   // second later the preview shows where the trip stands
                   QTimer::singleShot(300, screen, [&world, screen] {
                       screen->findChild<FlatSwitch *>(QStringLiteral("enableSwitch"))->toggle();
                       QTimer::singleShot(300, screen, [&world] { world.clock.advance(1000); });
                   });
               })
TREKMIME_SCENE(QStringLiteral("address-picker-loading"), routeWindow,
               [](ScreenshotWorld &, QWidget *window) {
                   SelectAddressViewController *picker = openPicker(window);
                   // the map is moving: the address is being looked up
                   QTimer::singleShot(600, picker, [picker] {
                       picker->regionWillChangeAnimated(picker->mapView(), false);
                   });
               })
TREKMIME_SCENE(QStringLiteral("address-picker-settled"), routeWindow,
               [](ScreenshotWorld &world, QWidget *window) {
                   SelectAddressViewController *picker = openPicker(window);
                   QTimer::singleShot(600, picker, [&world, picker] {
                       MapView *map = picker->mapView();
                       world.geocoder.setAddress(map->centerCoordinate(),
                                                 QStringLiteral("Queen's Road Central, Central"));
                       picker->regionWillChangeAnimated(map, false);
                       picker->regionDidChangeAnimated(map, false);
                   });
               })
