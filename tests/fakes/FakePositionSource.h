#pragma once

#include "platform/PositionSource.h"

#include <optional>

// A position source for tests and scripted runs. It reports what it is told
// to, and only while started, as a real source does after being stopped.
// A scripted fix, when set, is reported on its own (later) after each start.
class FakePositionSource : public PositionSource
{
    Q_OBJECT

public:
    using PositionSource::PositionSource;

    bool locationServicesEnabled() const override { return m_enabled; }
    void requestAuthorization() override { ++m_authorizationRequests; }
    void startUpdatingLocation() override;
    void stopUpdatingLocation() override;

    void setServicesEnabled(bool on) { m_enabled = on; }
    void setScript(std::optional<PositionFix> fix) { m_script = fix; }

    // Each answers whether the report went out (only while running).
    bool deliver(const PositionFix &fix);
    bool deliver(double latitude, double longitude, double horizontalAccuracy = 5.0);
    bool deliverInvalid() { return deliver(PositionFix{Coordinate{}, -1.0}); }
    bool fail(int code, const QString &description);

    int startCount() const { return m_starts; }
    int stopCount() const { return m_stops; }
    int authorizationRequests() const { return m_authorizationRequests; }

private:
    bool m_enabled = true;
    bool m_running = false;
    int m_starts = 0;
    int m_stops = 0;
    int m_authorizationRequests = 0;
    std::optional<PositionFix> m_script;
};
