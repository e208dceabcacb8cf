#pragma once

#include "platform/Coordinate.h"

#include <QHash>
#include <QLineF>
#include <QList>
#include <QPointF>
#include <QRectF>

class MapCamera;
class QPainter;
class QPen;

// What drawing a long line needs, kept beside the line: its points
// projected once, and per zoom level a copy without the points that would
// move the drawn line by less than half a point (close neighbours first,
// then Douglas-Peucker), cut into runs with bounds
// so that a frame draws only the runs in view. Built on first use of a
// level; the line's own points are never changed.
class PolylineGeometry
{
public:
    explicit PolylineGeometry(const QList<Coordinate> &coordinates);

    // draws the part of the line within `area` (view points) and a little beyond
    void paint(QPainter &painter, const MapCamera &camera, const QPen &pen, const QRectF &area);

    // points a frame at this zoom draws when the whole line is in view
    qsizetype simplifiedPointCount(double zoom);

    static constexpr double TolerancePoints = 0.5;
    static constexpr int ChunkPoints = 64;
    // above this level the raw points are used unchanged
    static constexpr int FinestLevel = 21;

private:
    struct Chunk
    {
        qsizetype first = 0; // runs share their end points
        qsizetype last = 0;
        QRectF bounds;
    };
    struct Level
    {
        QList<QPointF> points;
        QList<Chunk> chunks;
    };
    const Level &levelFor(double zoom);
    static QList<QPointF> dropCloseNeighbours(const QList<QPointF> &points, double tolerance);
    static QList<QPointF> simplify(const QList<QPointF> &points, double tolerance);

    QList<QPointF> m_world;
    QRectF m_bounds;
    QHash<int, Level> m_levels;
    QList<QLineF> m_scratch;
};
