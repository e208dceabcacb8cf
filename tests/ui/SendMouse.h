#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

// One left-button event straight to `widget`, shown or not; held from press to release.
inline void sendMouse(QWidget *widget, QEvent::Type type, QPointF position)
{
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(Qt::LeftButton);
    QMouseEvent event(type, position, widget->mapToGlobal(position), Qt::LeftButton, held,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}
