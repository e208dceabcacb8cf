#include "platform/Clock.h"

#include <QTimer>

namespace {

// The real clock's timers are Qt's own.
class SystemClockTimer : public ClockTimer
{
public:
    explicit SystemClockTimer(QObject *parent) : ClockTimer(parent)
    {
        m_timer->setTimerType(Qt::PreciseTimer);
        connect(m_timer, &QTimer::timeout, this, [this] {
            if (isSingleShot())
                m_timer->stop();
            emit timeout();
        });
    }

    void start(int msecs) override { m_timer->start(msecs); }
    void stop() override { m_timer->stop(); }
    bool isActive() const override { return m_timer->isActive(); }
    int interval() const override { return m_timer->interval(); }

private:
    // a child, so that it follows its owner to another thread
    QTimer *m_timer = new QTimer(this);
};

} // namespace

const Clock *SystemClock::instance()
{
    static const SystemClock clock;
    return &clock;
}

ClockTimer *Clock::createTimer(QObject *parent) const
{
    return new SystemClockTimer(parent);
}

void Clock::singleShot(int msecs, QObject *context, std::function<void()> action) const
{
    // the timer belongs to the context: if the context goes first, the
    // timer and its action go with it
    ClockTimer *timer = createTimer(context);
    timer->setSingleShot(true);
    QObject::connect(timer, &ClockTimer::timeout, timer, [timer, action = std::move(action)] {
        timer->deleteLater();
        action();
    });
    timer->start(msecs);
}
