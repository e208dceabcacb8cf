#include "ui/TapGestureRecognizer.h"
#include "ui/PointerThresholds.h"

#include <QLineF>

void TapGestureRecognizer::pressed(QPointF position)
{
    m_start = position;
}

void TapGestureRecognizer::moved(QPointF position)
{
    if (state() == Possible && QLineF(m_start, position).length() > tapMovementLimit())
        setState(Failed);
}

void TapGestureRecognizer::released(QPointF position)
{
    moved(position);
    if (state() == Possible)
        setState(Ended);
}
