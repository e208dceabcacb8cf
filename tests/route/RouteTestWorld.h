#pragma once

#include "TestServices.h"

#include "app/ApplicationShell.h"
#include "app/ProgressHUD.h"
#include "fakes/FakeDirectionsService.h"
#include "fakes/FakeGeocoder.h"
#include "fakes/FakePositionSourceFactory.h"
#include "location/Location.h"
#include "route/SelectAddressViewController.h"
#include "ui/MapView.h"

#include <QTest>

#include <algorithm>
#include <memory>

// The fakes a route screen needs, wired into the location service, and a
// shell that records what the screens ask of it.
struct RouteTestWorld : TestServices
{
    struct Shell : ApplicationShell
    {
        int toLocation = 0;
        int infoViews = 0;
        void changeToRouter() override {}
        void changeToLocation() override { ++toLocation; }
        void showInfoView(QWidget *, ModalTransition) override { ++infoViews; }
    };

    RouteTestWorld()
    {
        services().directions = &directions;
        services().geocoder = &geocoder;
        services().positionSources = &positionSources;
        location = std::make_unique<Location>(&positionSources, &geocoder, &alerts);
        services().location = location.get();
        setModalAnimationsEnabled(false);
    }

    // the picker's map comes to rest where the geocoder knows `address`
    void settlePicker(SelectAddressViewController &picker, const QString &address)
    {
        MapView *map = picker.mapView();
        geocoder.setAddress(map->centerCoordinate(), address);
        picker.regionWillChangeAnimated(map, false);
        picker.regionDidChangeAnimated(map, false);
    }

    // whether an overlay on `screen` shows `text` now
    static bool hintShown(QWidget *screen, const QString &text)
    {
        const auto huds = screen->findChildren<ProgressHUD *>();
        return std::any_of(huds.begin(), huds.end(), [&](ProgressHUD *hud) {
            return hud->labelText() == text && hud->isVisible();
        });
    }

    FakeDirectionsService directions;
    FakeGeocoder geocoder;
    FakePositionSourceFactory positionSources;
    Shell shell;
    // last: the location service goes before the fakes it uses
    std::unique_ptr<Location> location;
};
