#include "fakes/FakeDirectionsService.h"

#include <QTimer>

DirectionsAnswer FakeDirectionsService::defaultAnswer(const Coordinate &source,
                                                      const Coordinate &destination)
{
    return DirectionsAnswer::found({DirectionsRoute{
        {source, {source.latitude, destination.longitude}, destination}, 1000.0, 120.0}});
}

void FakeDirectionsService::calculateDirections(const Coordinate &source,
                                                const Coordinate &destination, QObject *receiver,
                                                Completion completion)
{
    m_requests.append({source, destination});
    Request request{receiver, receiver != nullptr, std::move(completion)};
    if (m_held) {
        m_pending.append(std::move(request));
        return;
    }
    const DirectionsAnswer answer = m_answer ? *m_answer : defaultAnswer(source, destination);
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
