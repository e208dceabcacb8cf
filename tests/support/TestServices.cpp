#include "TestServices.h"

#include <QStandardPaths>

TestServices::TestServices()
{
    QStandardPaths::setTestModeEnabled(true);
    m_preferences = std::make_unique<TMPreferenceUtil>(PreferenceFiles(m_dir.path()));
    m_services.preferences = m_preferences.get();
    m_services.clock = &clock;
    m_services.alerts = &alerts;
    m_services.deviceMetrics = &deviceMetrics;
    m_services.urlOpener = &urlOpener;
    m_services.network = &network;
}

TestServices::~TestServices() = default;
