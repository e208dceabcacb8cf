#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTimer>

#include <functional>

// Starts jobs in the order they arrive, no two closer together than the
// minimum interval: public services ask for at most one request a second,
// and every request must still be sent, just later.
class RequestPacer : public QObject
{
    Q_OBJECT

public:
    explicit RequestPacer(int minimumIntervalMsecs = 1000, QObject *parent = nullptr);

    int minimumInterval() const { return m_minimumInterval; }
    void setMinimumInterval(int msecs) { m_minimumInterval = msecs; }

    // Runs `job` now when its turn has come, otherwise once it has.
    void schedule(std::function<void()> job);
    qsizetype waiting() const { return m_queue.size(); }

private:
    void runDue();

    int m_minimumInterval;
    QList<std::function<void()>> m_queue;
    QElapsedTimer m_sinceLastStart;
    QTimer m_timer;
};
