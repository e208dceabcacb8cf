#pragma once

#include "fakes/FakePositionSource.h"

#include <QList>
#include <QPointer>

// Makes fake sources that share the factory's settings: whether location
// services are on, and a fix scripted for every start.
class FakePositionSourceFactory : public PositionSourceFactory
{
public:
    PositionSource *create(QObject *parent) override;

    void setServicesEnabled(bool on);
    void scriptFix(double latitude, double longitude, double horizontalAccuracy = 5.0);

    // The sources made so far that still exist, oldest first.
    QList<FakePositionSource *> sources() const;
    FakePositionSource *last() const;
    int created() const { return int(m_sources.size()); }

private:
    bool m_enabled = true;
    std::optional<PositionFix> m_script;
    QList<QPointer<FakePositionSource>> m_sources;
};
