#pragma once

#include "SketchTileSource.h"
#include "app/Services.h"
#include "applications/GioApplicationRegistry.h"
#include "fakes/FakeDirectionsService.h"
#include "fakes/FakeGeocoder.h"
#include "fakes/FakePositionSourceFactory.h"
#include "fakes/FixedDeviceMetrics.h"
#include "fakes/ManualClock.h"
#include "fakes/RecordingAlertPresenter.h"
#include "fakes/RecordingUrlOpener.h"
#include "location/Location.h"
#include "settings/TMPreferenceUtil.h"

#include <QNetworkAccessManager>
#include <QTemporaryDir>

#include <memory>
#include <vector>

// Everything a screen may ask of the outside world, faked for a picture: an
// empty preferences folder of its own, a clock fixed at one moment, drawn map
// tiles, a device standing in Hong Kong, and a geocoder that knows a few
// places there. Nothing reaches a network.
class ScreenshotWorld
{
public:
    ScreenshotWorld();
    ~ScreenshotWorld();

    const Services &services() const { return m_services; }
    // Keeps `object` until the picture is taken; the last kept goes first.
    template <class T> T *keep(T *object)
    {
        m_kept.emplace_back(object);
        return object;
    }
    QString preferencesDir() const { return m_dir.path(); }
    TMPreferenceUtil &preferences() { return *m_preferences; }

    ManualClock clock;
    RecordingAlertPresenter alerts;
    FixedDeviceMetrics deviceMetrics;
    RecordingUrlOpener urlOpener;
    QNetworkAccessManager network;
    FakePositionSourceFactory positionSources;
    FakeGeocoder geocoder;
    FakeDirectionsService directions;
    SketchTileSource tiles;
    // the desktop entries of the data folders a scene points XDG_DATA_DIRS at
    GioApplicationRegistry applications;

private:
    QTemporaryDir m_dir;
    std::unique_ptr<TMPreferenceUtil> m_preferences; // over m_dir
    std::unique_ptr<Location> m_location;
    std::vector<std::unique_ptr<QObject>> m_kept;
    Services m_services;
};
