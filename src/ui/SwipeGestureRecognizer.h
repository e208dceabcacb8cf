#pragma once

#include "ui/GestureRecognizer.h"

// A quick stroke in one direction (right unless told otherwise), recognised
// on release when the pointer went far enough that way and not too far across.
class SwipeGestureRecognizer : public GestureRecognizer
{
    Q_OBJECT

public:
    enum Direction { Right = 1, Left = 2, Up = 4, Down = 8 };

    using GestureRecognizer::GestureRecognizer;

    int direction() const { return m_direction; }
    void setDirection(int directions) { m_direction = directions; }

    static constexpr qreal MinimumDistance = 50.0;

protected:
    void pressed(QPointF position) override;
    void moved(QPointF position) override;
    void released(QPointF position) override;

private:
    QPointF m_start;
    int m_direction = Right;
};
