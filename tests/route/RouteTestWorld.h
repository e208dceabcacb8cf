#pragma once

#include "TestServices.h"

#include "app/ApplicationShell.h"
#include "fakes/FakeDirectionsService.h"
#include "fakes/FakeGeocoder.h"
#include "fakes/FakePositionSourceFactory.h"
#include "location/Location.h"

#include <QWidget>

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

    FakeDirectionsService directions;
    FakeGeocoder geocoder;
    FakePositionSourceFactory positionSources;
    Shell shell;
    // last: the location service goes before the fakes it uses
    std::unique_ptr<Location> location;
};
