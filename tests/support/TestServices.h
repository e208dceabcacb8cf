#pragma once

#include "app/Services.h"
#include "fakes/FixedDeviceMetrics.h"
#include "fakes/ManualClock.h"
#include "fakes/RecordingAlertPresenter.h"
#include "fakes/RecordingUrlOpener.h"
#include "settings/TMPreferenceUtil.h"

#include <QNetworkAccessManager>
#include <QTemporaryDir>

#include <memory>

// A world of fakes for one test: a temporary preferences folder with the
// settings store over it, a manual clock, recorded alerts and URLs, fixed device
// metrics and a network manager that tests point at stub servers.
class TestServices
{
public:
    TestServices();
    ~TestServices();

    const Services &services() const { return m_services; }
    Services &services() { return m_services; }
    QString preferencesDir() const { return m_dir.path(); }
    TMPreferenceUtil &preferences() { return *m_preferences; }
    const PreferenceFiles &files() const { return m_preferences->files(); }

    ManualClock clock{qint64(1700000000) * 1000};
    RecordingAlertPresenter alerts;
    FixedDeviceMetrics deviceMetrics;
    RecordingUrlOpener urlOpener;
    QNetworkAccessManager network;

private:
    QTemporaryDir m_dir;
    std::unique_ptr<TMPreferenceUtil> m_preferences; // over m_dir
    Services m_services;
};
