#include "fakes/ManualClock.h"

class ManualClock::Timer : public ClockTimer
{
public:
    Timer(const ManualClock *clock, QObject *parent) : ClockTimer(parent), m_clock(clock) {}

    void start(int msecs) override
    {
        m_interval = msecs;
        m_deadline = m_clock->currentMSecsSinceEpoch() + msecs;
        m_active = true;
    }
    void stop() override { m_active = false; }
    bool isActive() const override { return m_active; }
    int interval() const override { return m_interval; }
    qint64 deadline() const { return m_deadline; }

    void fire()
    {
        if (isSingleShot())
            m_active = false;
        else
            m_deadline += qMax(m_interval, 1);
        emit timeout();
    }

private:
    const ManualClock *m_clock;
    qint64 m_deadline = 0;
    int m_interval = 0;
    bool m_active = false;
};

ClockTimer *ManualClock::createTimer(QObject *parent) const
{
    auto *timer = new Timer(this, parent);
    m_timers.append(timer);
    return timer;
}

void ManualClock::advance(qint64 msecs)
{
    const qint64 target = m_now + msecs;
    for (;;) {
        m_timers.removeAll(nullptr);
        Timer *next = nullptr;
        for (const QPointer<Timer> &timer : std::as_const(m_timers))
            if (timer->isActive() && timer->deadline() <= target &&
                (!next || timer->deadline() < next->deadline()))
                next = timer;
        if (!next)
            break;
        m_now = qMax(m_now, next->deadline());
        next->fire();
    }
    m_now = target;
}
