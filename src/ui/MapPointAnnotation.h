#pragma once

#include "platform/Coordinate.h"

#include <QString>

#include <memory>

// The tags of the route's start, end and stop markers.
constexpr int RouteStartAnnotationTag = 111111;
constexpr int RouteEndAnnotationTag = 222222;
constexpr int RouteStopAnnotationTag = 333333;

// A marked place on the map. The tag lets a screen find its own markers
// again among the map's annotations (the route screen marks its start and
// end with fixed tags). The map reads the coordinate whenever it paints.
class MapPointAnnotation
{
public:
    MapPointAnnotation() = default;
    explicit MapPointAnnotation(const Coordinate &coordinate, int tag = 0,
                                const QString &title = {})
        : m_coordinate(coordinate), m_tag(tag), m_title(title)
    {
    }

    Coordinate coordinate() const { return m_coordinate; }
    void setCoordinate(const Coordinate &coordinate) { m_coordinate = coordinate; }
    int tag() const { return m_tag; }
    void setTag(int tag) { m_tag = tag; }
    QString title() const { return m_title; }
    void setTitle(const QString &title) { m_title = title; }

private:
    Coordinate m_coordinate;
    int m_tag = 0;
    QString m_title;
};

// Annotations are identified by the object, as the screens hold on to them
// and remove exactly those they added.
using MapAnnotationPtr = std::shared_ptr<MapPointAnnotation>;
