#pragma once

#include "fakes/FakePositionSource.h"

#include <QList>
#include <QPointer>

// Makes fake sources with the factory's settings at the time: whether location
// services are on, and a fix scripted for every start.
class FakePositionSourceFactory : public PositionSourceFactory
{
public:
    PositionSource *create(QObject *parent) override;

    void setServicesEnabled(bool on) { m_enabled = on; }
    void scriptFix(double latitude, double longitude, double accuracy = 5.0)
    {
        m_script = PositionFix{Coordinate{latitude, longitude}, accuracy};
    }

    // The newest source that still exists.
    FakePositionSource *last() const;
    int created() const { return int(m_sources.size()); }

private:
    bool m_enabled = true;
    std::optional<PositionFix> m_script;
    QList<QPointer<FakePositionSource>> m_sources;
};
