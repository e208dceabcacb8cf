#pragma once

#include "platform/Configuration.h"

class AlertPresenter;
class ApplicationRegistry;
class Clock;
class DeviceMetrics;
class DirectionsService;
class Geocoder;
class Location;
class PositionSourceFactory;
class QNetworkAccessManager;
class TileSource;
class UrlOpener;

// Everything a screen or service may ask of the outside world, handed down
// from the entry point (real implementations) or from a test (fakes). The
// pointers are not owned; whoever builds a Services value keeps them alive.
struct Services
{
    Clock *clock = nullptr;
    AlertPresenter *alerts = nullptr;
    DeviceMetrics *deviceMetrics = nullptr;
    UrlOpener *urlOpener = nullptr;
    QNetworkAccessManager *network = nullptr;
    PositionSourceFactory *positionSources = nullptr;
    TileSource *tiles = nullptr; // nullptr: the map shows its grid only
    Geocoder *geocoder = nullptr;
    Location *location = nullptr; // the device's position and the address lookups
    DirectionsService *directions = nullptr;
    ApplicationRegistry *applications = nullptr;
    Configuration configuration;
};
