#pragma once

#include "platform/Coordinate.h"

#include <QList>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

class QObject;

// One road route: its vertices in travel order, every one of them, and the
// distance (metres) and duration (seconds) the service gives for display.
struct DirectionsRoute
{
    QList<Coordinate> coordinates;
    double distance = 0.0;
    double duration = 0.0;
};

// A directions answer: the routes in the service's order (the first is the
// one it recommends), or an error with a description a person can read. A
// request that a newer one replaced before it was sent is answered with an
// error marked `replaced`: nothing failed, the newer answer follows.
struct DirectionsAnswer
{
    QList<DirectionsRoute> routes;
    std::optional<QString> error;
    bool replaced = false;

    bool isError() const { return error.has_value(); }
    static DirectionsAnswer found(QList<DirectionsRoute> routes) { return {std::move(routes), {}}; }
    static DirectionsAnswer failure(QString description) { return {{}, std::move(description)}; }
    static DirectionsAnswer replacedRequest(QString description)
    {
        return {{}, std::move(description), true};
    }
};

// Plans road routes through two or more places in travel order (start,
// stops on the way, end), asking for alternates too. Each
// request gets exactly one answer, later, on the GUI thread, and none at all
// once `receiver` is destroyed (a screen that is gone hears nothing).
class DirectionsService
{
public:
    using Completion = std::function<void(const DirectionsAnswer &)>;

    virtual ~DirectionsService() = default;
    // `waypoints` holds at least two places; with fewer the answer is an error.
    virtual void calculateDirections(const QList<Coordinate> &waypoints, QObject *receiver,
                                     Completion completion) = 0;

protected:
    // `completion`, called only while `receiver` exists; a null receiver
    // asks for an unguarded answer.
    static Completion guarded(QObject *receiver, Completion completion)
    {
        return [watching = receiver != nullptr, guard = QPointer<QObject>(receiver),
                completion = std::move(completion)](const DirectionsAnswer &answer) {
            if (!watching || guard)
                completion(answer);
        };
    }
};
