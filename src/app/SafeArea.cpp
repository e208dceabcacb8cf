#include "app/SafeArea.h"

#include "platform/gui/DeviceMetrics.h"

SafeArea SafeArea::of(const DeviceMetrics *metrics)
{
    SafeArea area;
    if (metrics) {
        area.statusBar = metrics->isVersion7OrLater();
        area.tallScreen = metrics->isTallScreen();
    }
    return area;
}
