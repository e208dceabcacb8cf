#pragma once

#include "TestServices.h"

#include "app/ApplicationShell.h"
#include "app/ModalPresentation.h"
#include "fakes/FakeDirectionsService.h"
#include "fakes/FakeGeocoder.h"
#include "fakes/FakePositionSourceFactory.h"
#include "location/Location.h"

#include <QTest>

// The test world of a mode screen: fake routing, geocoder and device wired
// into the location service, modal screens without animation, and a shell
// that counts what the screens ask of it.
struct ScreenWorld : TestServices
{
    struct Shell : ApplicationShell
    {
        int toRouter = 0;
        int toLocation = 0;
        int infoViews = 0;
        void changeToRouter() override { ++toRouter; }
        void changeToLocation() override { ++toLocation; }
        void showInfoView(QWidget *, ModalTransition) override { ++infoViews; }
    };

    ScreenWorld()
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
