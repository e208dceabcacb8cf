#pragma once

#include <QDateTime>

// The current time, injectable so that tests and scripts can fix it.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual qint64 currentMSecsSinceEpoch() const = 0;

    QDateTime now() const { return QDateTime::fromMSecsSinceEpoch(currentMSecsSinceEpoch()); }
    double secondsSince1970() const { return double(currentMSecsSinceEpoch()) / 1000.0; }
};

class SystemClock : public Clock
{
public:
    qint64 currentMSecsSinceEpoch() const override { return QDateTime::currentMSecsSinceEpoch(); }
};

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
