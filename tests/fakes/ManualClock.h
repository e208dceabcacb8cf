#pragma once

#include "platform/Clock.h"

#include <QList>
#include <QPointer>

// A clock that stands still until told otherwise. Its timers fire, in the
// order of their deadlines, only while `advance` carries the time past them,
// so a test of timing runs at once and always the same way.
class ManualClock : public Clock
{
public:
    explicit ManualClock(qint64 msecsSinceEpoch = 0) : m_now(msecsSinceEpoch) {}
    qint64 currentMSecsSinceEpoch() const override { return m_now; }
    // Moves the time on by `msecs`, firing every timer that falls due on the
    // way, each with the clock set to its deadline.
    void advance(qint64 msecs);

    ClockTimer *createTimer(QObject *parent) const override;

private:
    class Timer;
    qint64 m_now;
    mutable QList<QPointer<Timer>> m_timers;
};
