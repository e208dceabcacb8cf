#include "location/RequestPacer.h"

RequestPacer::RequestPacer(int minimumIntervalMsecs, QObject *parent)
    : QObject(parent), m_minimumInterval(minimumIntervalMsecs)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RequestPacer::runDue);
}

void RequestPacer::schedule(std::function<void()> job)
{
    m_queue.append(std::move(job));
    runDue();
}

void RequestPacer::runDue()
{
    if (m_queue.isEmpty() || m_timer.isActive())
        return;
    const qint64 elapsed = m_sinceLastStart.isValid() ? m_sinceLastStart.elapsed() : -1;
    if (elapsed >= 0 && elapsed < m_minimumInterval) {
        m_timer.start(int(m_minimumInterval - elapsed));
        return;
    }
    m_sinceLastStart.start();
    const std::function<void()> job = m_queue.takeFirst();
    job();
    if (!m_queue.isEmpty() && !m_timer.isActive())
        m_timer.start(m_minimumInterval);
}
