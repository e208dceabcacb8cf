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
