#pragma once

#include "routing/DirectionsService.h"

#include <QObject>

#include <memory>

struct HeadlessServices;

// Directions without a network, from a Routino database on this machine
// (a folder made by Routino's planetsplitter from an OpenStreetMap extract).
// The routing profiles and the texts Routino needs come from the files its
// Debian package installs, unless the database folder holds its own
// profiles.xml or translations.xml.
//
// A route can take a while on a large map, so it is computed on a worker
// thread and answered on the GUI thread. There is one such worker for the
// whole program, shared by every instance: libroutino keeps its profiles in
// process-wide state and is not documented as thread-safe. Only the latest
// choice of places matters, so a request still waiting for the worker when a
// newer one comes is answered (later) as replaced. Destroying the service
// stops the route being computed; nothing is answered after that.
class RoutinoDirectionsService : public QObject, public DirectionsService
{
    Q_OBJECT

public:
    // `profile` is one of the routing profiles (driving, walking, cycling);
    // any other is refused when a route is asked.
    RoutinoDirectionsService(const QString &databaseDir, const QString &profile,
                             QObject *parent = nullptr);
    ~RoutinoDirectionsService() override;
    static RoutinoDirectionsService *fromServices(const HeadlessServices &services,
                                                  QObject *parent = nullptr);

    void calculateDirections(const QList<Coordinate> &waypoints, QObject *receiver,
                             Completion completion) override;

    // Routino's name for the transport of a routing profile, or an empty text
    // when it has none.
    static QString transportFor(const QString &profile);

private:
    struct Engine;
    std::shared_ptr<Engine> m_engine; // shared with the worker's jobs
};
