#pragma once

#include "platform/PositionSource.h"

#include <QList>
#include <QPointer>

// A position source that the test drives by hand; it counts its starts
// and stops.
class FakePositionSource : public PositionSource
{
    Q_OBJECT

public:
    using PositionSource::PositionSource;

    bool locationServicesEnabled() const override { return true; }
    void startUpdatingLocation() override
    {
        ++starts;
        running = true;
    }
    void stopUpdatingLocation() override
    {
        ++stops;
        running = false;
    }

    void report(const Coordinate &coordinate, double accuracy = 10.0)
    {
        emit locationUpdated(PositionFix{coordinate, accuracy});
    }
    void fail(int code, const QString &description) { emit failed(code, description); }

    int starts = 0;
    int stops = 0;
    bool running = false;
};

class FakePositionSourceFactory : public PositionSourceFactory
{
public:
    PositionSource *create(QObject *parent) override
    {
        auto *source = new FakePositionSource(parent);
        created.append(source);
        return source;
    }
    FakePositionSource *last() const { return created.isEmpty() ? nullptr : created.last().data(); }

    QList<QPointer<FakePositionSource>> created;
};
