#pragma once

#include "platform/Clock.h"

// A clock that stands still until told otherwise.
class ManualClock : public Clock
{
public:
    explicit ManualClock(qint64 msecsSinceEpoch = 0) : m_now(msecsSinceEpoch) {}
    qint64 currentMSecsSinceEpoch() const override { return m_now; }
    void setSecondsSince1970(double seconds) { m_now = qint64(seconds * 1000.0); }
    void advance(qint64 msecs) { m_now += msecs; }

private:
    qint64 m_now;
};
