#include "fakes/FakeDirectionsService.h"

#include <QTimer>

DirectionsAnswer FakeDirectionsService::defaultAnswer(const QList<Coordinate> &waypoints)
{
    QList<Coordinate> route{waypoints.first()};
    for (qsizetype i = 1; i < waypoints.size(); ++i)
        route << Coordinate{waypoints[i - 1].latitude, waypoints[i].longitude} << waypoints[i];
    return DirectionsAnswer::found({DirectionsRoute{route, 1000.0, 120.0}});
}

void FakeDirectionsService::calculateDirections(const QList<Coordinate> &waypoints,
                                                QObject *receiver, Completion completion)
{
    m_requests.append(waypoints);
    Request request{receiver, receiver != nullptr, std::move(completion)};
    if (m_held) {
        m_pending.append(std::move(request));
        return;
    }
    const DirectionsAnswer answer = m_answer ? *m_answer : defaultAnswer(waypoints);
    QTimer::singleShot(0, this, [request = std::move(request), answer] {
        if (!request.guarded || request.receiver)
            request.completion(answer);
    });
}

bool FakeDirectionsService::release(qsizetype index, const DirectionsAnswer &answer)
{
    const Request request = m_pending.takeAt(index);
    if (request.guarded && !request.receiver)
        return false;
    request.completion(answer);
    return true;
}
