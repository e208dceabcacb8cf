// How the map view is drawn and how it answers the pointer, the wheel, the
// keys and touches. Moves, content and the user's position are in MapView.cpp.

#include "ui/MapView.h"

#include "ui/MapViewDelegate.h"
#include "ui/PointerThresholds.h"
#include "ui/ZoomGeometry.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QStyleHints>
#include <QTouchEvent>
#include <QWheelEvent>

#include <cmath>

namespace {
// one notch of a mouse wheel zooms by half a level
constexpr double WheelZoomPerNotch = 0.5;
// an arrow key moves the map by this part of the view
constexpr double KeyPanFraction = 0.25;
} // namespace

void MapView::paintEvent(QPaintEvent *)
{
    liveCamera();
    QPainter painter(this);
    m_map.paint(painter);
}

void MapView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    liveCamera().setViewportSize(QSizeF(size()));
    if (m_requestedRegion && !m_animation.isRunning())
        liveCamera().setRegion(*m_requestedRegion);
}

void MapView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    // a hand on the map stops any move in progress
    m_animation.stop();
    m_pressed = true;
    m_pressPosition = m_lastPosition = event->position();
}

void MapView::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_pressed)
        return;
    const QPointF position = event->position();
    if (!m_dragging) {
        if ((position - m_pressPosition).manhattanLength() < tapMovementLimit())
            return;
        m_dragging = true;
        m_requestedRegion.reset();
        beginChange(false);
    }
    liveCamera().panBy(m_lastPosition, position);
    m_lastPosition = position;
    update();
}

void MapView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_pressed)
        return;
    if (m_dragging) {
        liveCamera().panBy(m_lastPosition, event->position());
        update();
    }
    m_pressed = false;
    m_dragging = false;
    settleSoon();
}

void MapView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        zoomInAround(event->position());
}

void MapView::zoomInAround(const QPointF &point)
{
    m_requestedRegion.reset();
    MapCamera target = camera();
    target.zoomAround(point, target.zoom() + 1.0);
    animateTo(target, m_animationDuration, {});
}

void MapView::wheelEvent(QWheelEvent *event)
{
    double notches = event->angleDelta().y() / 120.0;
    if (notches == 0.0 && !event->pixelDelta().isNull())
        notches = event->pixelDelta().y() / 120.0;
    if (notches == 0.0)
        return;
    m_animation.stop();
    m_requestedRegion.reset();
    beginChange(false);
    MapCamera &camera = liveCamera();
    camera.zoomAround(event->position(), camera.zoom() + notches * WheelZoomPerNotch);
    update();
    settleSoon(m_wheelSettleDelay);
    event->accept();
}

void MapView::panStep(int dx, int dy)
{
    m_animation.stop();
    m_requestedRegion.reset();
    beginChange(false);
    // looking west drags the map's content to the east
    const QPointF drag(-dx * width() * KeyPanFraction, -dy * height() * KeyPanFraction);
    liveCamera().panBy(QPointF(), drag);
    update();
    settleSoon(m_wheelSettleDelay);
}

void MapView::zoomStep(int levels)
{
    m_animation.stop();
    m_requestedRegion.reset();
    beginChange(false);
    MapCamera &camera = liveCamera();
    camera.zoomAround(QRectF(rect()).center(), camera.zoom() + levels);
    update();
    settleSoon(m_wheelSettleDelay);
}

void MapView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        panStep(-1, 0);
        break;
    case Qt::Key_Right:
        panStep(1, 0);
        break;
    case Qt::Key_Up:
        panStep(0, -1);
        break;
    case Qt::Key_Down:
        panStep(0, 1);
        break;
    // + shares its key with = on most keyboards; the keypad sends Plus and Minus
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomStep(1);
        break;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
    case 0x2212: // the typographic minus sign, from layouts that have one
        zoomStep(-1);
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

bool MapView::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        return handleTouch(static_cast<QTouchEvent *>(event));
    case QEvent::NativeGesture: {
        // touchpad pinch
        auto *gesture = static_cast<QNativeGestureEvent *>(event);
        if (gesture->gestureType() == Qt::BeginNativeGesture) {
            m_animation.stop();
            m_requestedRegion.reset();
        } else if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            beginChange(false);
            MapCamera &camera = liveCamera();
            camera.zoomAround(gesture->position(),
                              camera.zoom() + std::log2(std::max(0.01, 1.0 + gesture->value())));
            update();
        } else if (gesture->gestureType() == Qt::EndNativeGesture) {
            settleSoon();
        }
        return true;
    }
    default:
        return QWidget::event(event);
    }
}

bool MapView::handleTouch(QTouchEvent *event)
{
    QPointF centroid;
    int active = 0;
    for (const QEventPoint &point : event->points()) {
        if (point.state() == QEventPoint::Released)
            continue;
        centroid += point.position();
        ++active;
    }
    if (active > 0)
        centroid /= active;
    double distance = 0.0;
    for (const QEventPoint &point : event->points()) {
        if (point.state() != QEventPoint::Released)
            distance += QLineF(point.position(), centroid).length();
    }
    if (active > 0)
        distance /= active;

    if (event->type() == QEvent::TouchBegin) {
        m_animation.stop();
        m_touchMoved = false;
    }
    MapCamera &camera = liveCamera();
    if (active != m_touchPoints) {
        // fingers added or lifted: the gesture goes on from here
        m_touchPoints = active;
        m_touchCentroid = centroid;
        m_touchDistance = distance;
        m_touchZoom = camera.zoom();
    } else if (active > 0) {
        const bool moved = (centroid - m_touchCentroid).manhattanLength() >= 1.0 ||
                           (active > 1 && std::abs(distance - m_touchDistance) >= 1.0);
        if (moved || m_touchMoved) {
            if (!m_touchMoved) {
                m_touchMoved = true;
                m_requestedRegion.reset();
                beginChange(false);
            }
            camera.panBy(m_touchCentroid, centroid);
            if (active > 1 && m_touchDistance > 0.0 && distance > 0.0)
                camera.zoomAround(centroid, m_touchZoom + std::log2(distance / m_touchDistance));
            m_touchCentroid = centroid;
            update();
        }
    }
    if (event->type() == QEvent::TouchEnd || event->type() == QEvent::TouchCancel) {
        m_touchPoints = 0;
        if (!m_touchMoved && event->type() == QEvent::TouchEnd && !event->points().isEmpty()) {
            const QPointF position = event->points().first().position();
            const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
            if (m_lastTap.isValid() && m_lastTap.elapsed() <= interval &&
                (position - m_lastTapPosition).manhattanLength() < DoubleTapDistance) {
                m_lastTap.invalidate();
                zoomInAround(position);
            } else {
                m_lastTap.start();
                m_lastTapPosition = position;
            }
        }
        settleSoon();
    }
    event->accept();
    return true;
}
