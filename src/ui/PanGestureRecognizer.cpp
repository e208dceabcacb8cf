#include "ui/PanGestureRecognizer.h"
#include "ui/PointerThresholds.h"

#include <QLineF>

// widgets are only ever offset from one another, never scaled or turned, so a
// translation reads the same in every widget's coordinates
QPointF PanGestureRecognizer::translationInView(const QWidget *) const
{
    return m_current - m_start;
}

void PanGestureRecognizer::setTranslation(QPointF translation, const QWidget *)
{
    m_start = m_current - translation;
}

void PanGestureRecognizer::pressed(QPointF position)
{
    m_start = m_current = position;
    m_velocity = {};
    m_sinceLastMove.start();
}

void PanGestureRecognizer::moved(QPointF position)
{
    const qint64 elapsed = qMax<qint64>(1, m_sinceLastMove.restart());
    m_velocity = (position - m_current) * (1000.0 / double(elapsed));
    m_current = position;
    if (state() == Possible) {
        if (QLineF(m_start, position).length() > tapMovementLimit())
            setState(Began);
    } else if (state() == Began || state() == Changed) {
        setState(Changed);
    }
}

void PanGestureRecognizer::released(QPointF position)
{
    if (position != m_current)
        moved(position);
    if (state() == Began || state() == Changed)
        setState(Ended);
    else
        setState(Failed);
}
