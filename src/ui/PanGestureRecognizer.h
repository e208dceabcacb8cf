#pragma once

#include "ui/GestureRecognizer.h"

#include <QElapsedTimer>

// A drag: begins once the pointer has moved past the threshold, changes with
// every move, ends on release. The translation counts from the press (or
// from the last setTranslation()).
class PanGestureRecognizer : public GestureRecognizer
{
    Q_OBJECT

public:
    using GestureRecognizer::GestureRecognizer;

    QPointF translationInView(const QWidget *view = nullptr) const;
    // Makes the current translation `translation`: handlers that apply the
    // movement step by step reset it to zero.
    void setTranslation(QPointF translation, const QWidget *view = nullptr);
    // points per second over the last movement
    QPointF velocityInView() const { return m_velocity; }

protected:
    void pressed(QPointF position) override;
    void moved(QPointF position) override;
    void released(QPointF position) override;

private:
    QPointF m_start;
    QPointF m_current;
    QPointF m_velocity;
    QElapsedTimer m_sinceLastMove;
};
