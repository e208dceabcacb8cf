#pragma once

#include <QByteArray>
#include <QObject>

class Clock;
class ClockTimer;
class FeedSettings;
class NmeaServer;

// Once a second, the sentences for where the settings put the device now,
// to every client of the server; a new client gets them at once.
class PositionFeed : public QObject
{
    Q_OBJECT

public:
    PositionFeed(FeedSettings &settings, NmeaServer &server, const Clock &clock,
                 QObject *parent = nullptr);

    void start();
    // The sentences for this moment; `hasFix` tells whether they carry a place.
    QByteArray current(bool *hasFix = nullptr) const;

private:
    void tick();

    FeedSettings &m_settings;
    NmeaServer &m_server;
    const Clock &m_clock;
    ClockTimer *m_timer;
};
