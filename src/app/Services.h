#pragma once

#include "platform/HeadlessServices.h"

class DeviceMetrics;
class TileSource;
class UrlOpener;

// Everything the screens and services may ask of the outside world: the services
// without a window and those of the window (device metrics, URL opener, map
// tiles). Handed down from the entry point (real implementations) or from a
// test (fakes); the pointers are not owned. A screen never sees the whole:
// it takes its own Needs, picked out by shell/ScreenNeeds.h.
struct Services : HeadlessServices
{
    DeviceMetrics *deviceMetrics = nullptr;
    UrlOpener *urlOpener = nullptr;
    TileSource *tiles = nullptr; // nullptr: the map shows its grid only
};
