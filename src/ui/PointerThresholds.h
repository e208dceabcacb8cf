#pragma once

#include <QGuiApplication>
#include <QStyleHints>

// How far a pointer may wander while still pressing in place, shared by the
// gesture recognisers and the map so that a tap means the same everywhere:
// the platform's drag distance, which a phone sets for fingers and a
// desktop for a mouse.
inline qreal tapMovementLimit()
{
    return QGuiApplication::styleHints()->startDragDistance();
}

// Two taps this close together (in points), within the platform's
// double-click interval, are one double tap.
constexpr qreal DoubleTapDistance = 30.0;
