#include "fakes/FakePositionSource.h"

#include <QTimer>

void FakePositionSource::startUpdatingLocation()
{
    m_running = true;
    ++m_starts;
    if (m_script)
        QTimer::singleShot(0, this, [this, fix = *m_script] { deliver(fix); });
}

void FakePositionSource::stopUpdatingLocation()
{
    m_running = false;
    ++m_stops;
}

bool FakePositionSource::deliver(const PositionFix &fix)
{
    if (!m_running)
        return false;
    emit locationUpdated(fix);
    return true;
}

bool FakePositionSource::deliver(double latitude, double longitude, double horizontalAccuracy)
{
    return deliver(PositionFix{Coordinate{latitude, longitude}, horizontalAccuracy});
}

bool FakePositionSource::fail(int code, const QString &description)
{
    if (!m_running)
        return false;
    emit failed(code, description);
    return true;
}
