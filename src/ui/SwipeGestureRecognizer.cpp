#include "ui/SwipeGestureRecognizer.h"

#include <QtMath>

void SwipeGestureRecognizer::pressed(QPointF position)
{
    m_start = position;
}

void SwipeGestureRecognizer::moved(QPointF) {}

void SwipeGestureRecognizer::released(QPointF position)
{
    const QPointF d = position - m_start;
    const bool horizontal = qAbs(d.x()) > 2 * qAbs(d.y());
    const bool vertical = qAbs(d.y()) > 2 * qAbs(d.x());
    int went = 0;
    if (horizontal && qAbs(d.x()) >= MinimumDistance)
        went = d.x() > 0 ? Right : Left;
    else if (vertical && qAbs(d.y()) >= MinimumDistance)
        went = d.y() > 0 ? Down : Up;
    setState((went & m_direction) ? Ended : Failed);
}
