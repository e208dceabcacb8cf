#pragma once

#include <QDateTime>
#include <QObject>

#include <functional>

class ClockTimer;

// The current time, injectable so that tests and scripts can fix it. Timers
// that measure time on the user's behalf (the progress overlay's grace and
// minimum-show times, the route preview) come from the clock too, so that a
// test clock can run them without waiting.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual qint64 currentMSecsSinceEpoch() const = 0;

    QDateTime now() const { return QDateTime::fromMSecsSinceEpoch(currentMSecsSinceEpoch()); }
    double secondsSince1970() const { return double(currentMSecsSinceEpoch()) / 1000.0; }

    // A stopped timer running on this clock's time, owned by `parent`.
    virtual ClockTimer *createTimer(QObject *parent) const;
    // Calls `action` once, `msecs` from now, unless `context` is gone by then.
    void singleShot(int msecs, QObject *context, std::function<void()> action) const;
};

class SystemClock : public Clock
{
public:
    qint64 currentMSecsSinceEpoch() const override { return QDateTime::currentMSecsSinceEpoch(); }

    // The one real clock, for what nobody gave a clock to.
    static const Clock *instance();
};

// A timer of a Clock: single-shot or repeating, started and stopped by its
// owner, signalling `timeout` on the GUI thread.
class ClockTimer : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void start(int msecs) = 0;
    virtual void stop() = 0;
    virtual bool isActive() const = 0;
    virtual int interval() const = 0;

    bool isSingleShot() const { return m_singleShot; }
    void setSingleShot(bool on) { m_singleShot = on; }

signals:
    void timeout();

private:
    bool m_singleShot = false;
};
