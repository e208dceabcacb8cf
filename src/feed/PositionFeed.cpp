#include "feed/PositionFeed.h"

#include "feed/FeedSettings.h"
#include "feed/NmeaServer.h"
#include "platform/Clock.h"

PositionFeed::PositionFeed(FeedSettings &settings, NmeaServer &server, const Clock &clock,
                           QObject *parent)
    : QObject(parent), m_settings(settings), m_server(server), m_clock(clock),
      m_timer(clock.createTimer(this))
{
    connect(m_timer, &ClockTimer::timeout, this, &PositionFeed::tick);
    m_server.setGreeting([this] { return current(); });
}

void PositionFeed::start()
{
    m_settings.watch();
    m_timer->start(1000);
}

QByteArray PositionFeed::current(bool *hasFix) const
{
    const qint64 now = m_clock.currentMSecsSinceEpoch();
    const std::optional<FeedFix> fix = m_settings.fixAt(now);
    if (hasFix)
        *hasFix = fix.has_value();
    return NmeaSentences::forMoment(now, fix);
}

void PositionFeed::tick()
{
    // without a folder watch, look at the files' stamps each second instead
    if (!m_settings.watch())
        m_settings.refresh();
    if (m_server.clientCount() > 0)
        m_server.broadcast(current());
}
