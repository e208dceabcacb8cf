#pragma once

#include "ScreenWorld.h"

#include "app/ProgressHUD.h"
#include "route/SelectAddressViewController.h"
#include "ui/MapView.h"

#include <algorithm>

// The route screens' world, with what their tests look at.
struct RouteTestWorld : ScreenWorld
{
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
};
