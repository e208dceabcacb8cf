#pragma once

#include "routing/DirectionsService.h"

#include <QObject>
#include <QPointer>

// A directions service for tests: records every request and answers it on
// the event loop with the answer set beforehand (or the default route), or,
// while held, keeps the requests until a test releases them one by one. A
// request whose receiver is gone is never answered.
class FakeDirectionsService : public QObject, public DirectionsService
{
    Q_OBJECT

public:
    struct Request
    {
        QPointer<QObject> receiver;
        bool guarded = false;
        Completion completion;
    };

    using QObject::QObject;

    void calculateDirections(const QList<Coordinate> &waypoints, QObject *receiver,
                             Completion completion) override;

    // Unless an answer is set: from each waypoint to the next via the
    // corner between them.
    static DirectionsAnswer defaultAnswer(const QList<Coordinate> &waypoints);
    // The answer every request gets from now on; unset: the default route.
    void setAnswer(const DirectionsAnswer &answer) { m_answer = answer; }

    // Held requests wait in `pending()` until released.
    void setHeld(bool held) { m_held = held; }
    const QList<Request> &pending() const { return m_pending; }
    // Answers the held request at `index` now with `answer`; false when its
    // receiver is gone (nothing is called).
    bool release(qsizetype index, const DirectionsAnswer &answer);

    // The waypoints of every request, in order.
    const QList<QList<Coordinate>> &requests() const { return m_requests; }

private:
    std::optional<DirectionsAnswer> m_answer;
    bool m_held = false;
    QList<Request> m_pending;
    QList<QList<Coordinate>> m_requests;
};
