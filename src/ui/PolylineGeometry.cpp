#include "ui/PolylineGeometry.h"

#include "ui/MapCamera.h"

#include <QPainter>

#include <cmath>

namespace {
// QRectF::intersects counts a rectangle of zero width or height as empty,
// but a straight horizontal or vertical run of the line has such bounds
bool overlaps(const QRectF &a, const QRectF &b)
{
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() &&
           b.top() <= a.bottom();
}
} // namespace

PolylineGeometry::PolylineGeometry(const QList<Coordinate> &coordinates)
{
    m_world.reserve(coordinates.size());
    // points off the globe or no numbers at all are left out, so the
    // painter only ever sees finite places
    for (const Coordinate &c : coordinates) {
        if (c.isValid())
            m_world.append(MapCamera::project(c));
    }
    // a line that crosses the antimeridian stays continuous
    for (qsizetype i = 1; i < m_world.size(); ++i) {
        const double jump = m_world[i].x() - m_world[i - 1].x();
        m_world[i].rx() -= std::round(jump);
    }
    if (m_world.isEmpty())
        return;
    double left = m_world.first().x(), right = left;
    double top = m_world.first().y(), bottom = top;
    for (const QPointF &p : std::as_const(m_world)) {
        left = std::min(left, p.x());
        right = std::max(right, p.x());
        top = std::min(top, p.y());
        bottom = std::max(bottom, p.y());
    }
    m_bounds = QRectF(QPointF(left, top), QPointF(right, bottom));
}

QList<QPointF> PolylineGeometry::dropCloseNeighbours(const QList<QPointF> &points, double tolerance)
{
    if (points.size() < 3)
        return points;
    QList<QPointF> result;
    result.reserve(points.size());
    result.append(points.first());
    const double tolerance2 = tolerance * tolerance;
    for (qsizetype i = 1; i + 1 < points.size(); ++i) {
        const QPointF d = points[i] - result.last();
        if (d.x() * d.x() + d.y() * d.y() > tolerance2)
            result.append(points[i]);
    }
    result.append(points.last());
    return result;
}

QList<QPointF> PolylineGeometry::simplify(const QList<QPointF> &points, double tolerance)
{
    // Douglas-Peucker with an explicit stack: keep the point farthest from
    // the chord while it lies farther than the tolerance
    const qsizetype n = points.size();
    if (n < 3)
        return points;
    QList<bool> keep(n, false);
    keep[0] = keep[n - 1] = true;
    QList<std::pair<qsizetype, qsizetype>> stack{{0, n - 1}};
    const double tolerance2 = tolerance * tolerance;
    while (!stack.isEmpty()) {
        const auto [first, last] = stack.takeLast();
        const QPointF a = points[first];
        const QPointF d = points[last] - a;
        const double length2 = d.x() * d.x() + d.y() * d.y();
        double farthest = -1.0;
        qsizetype index = -1;
        for (qsizetype i = first + 1; i < last; ++i) {
            const QPointF v = points[i] - a;
            double distance2;
            if (length2 <= 0.0) {
                distance2 = v.x() * v.x() + v.y() * v.y();
            } else {
                const double t = std::clamp((v.x() * d.x() + v.y() * d.y()) / length2, 0.0, 1.0);
                const QPointF off = v - t * d;
                distance2 = off.x() * off.x() + off.y() * off.y();
            }
            if (distance2 > farthest) {
                farthest = distance2;
                index = i;
            }
        }
        if (index > 0 && farthest > tolerance2) {
            keep[index] = true;
            stack.append({first, index});
            stack.append({index, last});
        }
    }
    QList<QPointF> result;
    for (qsizetype i = 0; i < n; ++i) {
        if (keep[i])
            result.append(points[i]);
    }
    return result;
}

const PolylineGeometry::Level &PolylineGeometry::levelFor(double zoom)
{
    // the next whole level up, so the tolerance never exceeds half a point
    const int level = std::min(FinestLevel, int(std::ceil(zoom)));
    auto found = m_levels.find(level);
    if (found != m_levels.end())
        return *found;
    Level built;
    built.points =
        level >= FinestLevel
            ? m_world
            : simplify(m_world, TolerancePoints / (MapCamera::TileSize * std::exp2(level)));
    const qsizetype n = built.points.size();
    for (qsizetype first = 0; first + 1 < n || (n == 1 && first == 0); first += ChunkPoints) {
        Chunk chunk;
        chunk.first = first;
        chunk.last = std::min(n - 1, first + ChunkPoints);
        double left = built.points[first].x(), right = left;
        double top = built.points[first].y(), bottom = top;
        for (qsizetype i = first + 1; i <= chunk.last; ++i) {
            const QPointF &p = built.points[i];
            left = std::min(left, p.x());
            right = std::max(right, p.x());
            top = std::min(top, p.y());
            bottom = std::max(bottom, p.y());
        }
        chunk.bounds = QRectF(QPointF(left, top), QPointF(right, bottom));
        built.chunks.append(chunk);
        if (n == 1)
            break;
    }
    return *m_levels.insert(level, std::move(built));
}

qsizetype PolylineGeometry::simplifiedPointCount(double zoom)
{
    return levelFor(zoom).points.size();
}

void PolylineGeometry::paint(QPainter &painter, const MapCamera &camera, const QPen &pen,
                             const QRectF &area)
{
    if (m_world.isEmpty())
        return;
    const Level &level = levelFor(camera.zoom());
    const double size = camera.worldSize();
    const QSizeF viewport = camera.viewportSize();
    // draw the copy of the line nearest the centre of the view
    const double shift = std::round(camera.centerWorld().x() - m_bounds.center().x());
    const double offsetX = viewport.width() / 2.0 - (camera.centerWorld().x() - shift) * size;
    const double offsetY = viewport.height() / 2.0 - camera.centerWorld().y() * size;
    const double margin = pen.widthF() / size;
    const QRectF visible =
        QRectF(camera.viewToWorld(area.topLeft()), camera.viewToWorld(area.bottomRight()))
            .translated(-shift, 0)
            .adjusted(-margin, -margin, margin, margin);

    // Separate segments with square ends, not one polyline: the raster
    // engine strokes short lines several times faster than one long outline
    // with joins, and the square ends of neighbours cover each other's
    // corners at the angles a simplified road makes.
    QPen segmentPen = pen;
    segmentPen.setCapStyle(Qt::SquareCap);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(segmentPen);
    painter.setBrush(Qt::NoBrush);
    m_scratch.clear();
    for (const Chunk &chunk : level.chunks) {
        if (!overlaps(chunk.bounds, visible))
            continue;
        QPointF previous(offsetX + level.points[chunk.first].x() * size,
                         offsetY + level.points[chunk.first].y() * size);
        if (chunk.first == chunk.last)
            m_scratch.append(QLineF(previous, previous));
        for (qsizetype i = chunk.first + 1; i <= chunk.last; ++i) {
            const QPointF next(offsetX + level.points[i].x() * size,
                               offsetY + level.points[i].y() * size);
            m_scratch.append(QLineF(previous, next));
            previous = next;
        }
    }
    if (!m_scratch.isEmpty())
        painter.drawLines(m_scratch.constData(), int(m_scratch.size()));
    painter.restore();
}
