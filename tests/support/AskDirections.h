#pragma once

#include "routing/DirectionsService.h"

#include <QTest>

// One unguarded request: its answer when exactly one comes, else an error
// saying how many came.
inline DirectionsAnswer askOnce(DirectionsService &service, const QList<Coordinate> &waypoints)
{
    QList<DirectionsAnswer> answers;
    service.calculateDirections(waypoints, nullptr,
                                [&](const DirectionsAnswer &a) { answers.append(a); });
    if (QTest::qWaitFor([&] { return !answers.isEmpty(); }, 5000))
        QTest::qWait(50); // time for a second answer
    return answers.size() == 1 ? answers.first()
                               : DirectionsAnswer::failure(QString::number(answers.size()));
}
