#pragma once

#include "platform/Configuration.h"

class AlertPresenter;
class ApplicationRegistry;
class Clock;
class DirectionsService;
class Geocoder;
class Location;
class PositionSourceFactory;
class QNetworkAccessManager;
class TMPreferenceUtil;

// What the parts without a window (the location service, the network
// clients, trekmime-ctl) may ask of the outside world, handed down from the
// entry point (real implementations) or from a test (fakes). The pointers
// are not owned; whoever builds the value keeps them alive. Services
// (app/Services.h) adds the window's own services; the shell hands each
// screen only its part of the whole (shell/ScreenNeeds.h).
struct HeadlessServices
{
    Clock *clock = nullptr;
    AlertPresenter *alerts = nullptr;
    QNetworkAccessManager *network = nullptr;
    PositionSourceFactory *positionSources = nullptr;
    Geocoder *geocoder = nullptr;
    Location *location = nullptr; // the device's position and the address lookups
    DirectionsService *directions = nullptr;
    ApplicationRegistry *applications = nullptr;
    TMPreferenceUtil *preferences = nullptr; // the settings store; the screens need it
    Configuration configuration;
};
