#include "ui/GestureRecognizer.h"

#include <QMouseEvent>
#include <QWidget>

GestureRecognizer::GestureRecognizer(QWidget *view) : QObject(view), m_view(view)
{
    view->installEventFilter(this);
}

QPointF GestureRecognizer::locationInView(const QWidget *view) const
{
    return mapToView(m_location, view);
}

QPointF GestureRecognizer::mapToView(QPointF position, const QWidget *view) const
{
    if (!view || view == m_view || !m_view)
        return position;
    return view->mapFrom(m_view->window(), m_view->mapTo(m_view->window(), position));
}

void GestureRecognizer::setState(State state)
{
    m_state = state;
    if (state == Began || state == Changed || state == Ended || state == Cancelled)
        emit triggered(this);
}

void GestureRecognizer::cancelled()
{
    if (m_state == Began || m_state == Changed)
        setState(Cancelled);
    else
        m_state = Failed;
}

bool GestureRecognizer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_view)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() != Qt::LeftButton || m_tracking)
            break;
        m_tracking = true;
        m_state = Possible;
        m_location = mouse->position();
        pressed(m_location);
        break;
    }
    case QEvent::MouseMove:
        if (m_tracking) {
            m_location = static_cast<QMouseEvent *>(event)->position();
            moved(m_location);
        }
        break;
    case QEvent::MouseButtonRelease: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        if (!m_tracking || mouse->button() != Qt::LeftButton)
            break;
        m_tracking = false;
        m_location = mouse->position();
        released(m_location);
        break;
    }
    case QEvent::Hide:
    case QEvent::UngrabMouse:
        if (m_tracking) {
            m_tracking = false;
            cancelled();
        }
        break;
    default:
        break;
    }
    return false;
}
