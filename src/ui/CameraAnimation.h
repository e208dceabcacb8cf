#pragma once

#include "ui/MapCamera.h"

#include <QObject>
#include <QVariantAnimation>

#include <functional>

// An eased move of a camera from where it stands to a target centre and
// zoom. The completion runs exactly once: at the end of the move, or when
// the move is stopped part-way (a new move or the user's hand takes over).
class CameraAnimation : public QObject
{
    Q_OBJECT

public:
    explicit CameraAnimation(MapCamera *camera, QObject *parent = nullptr);

    void start(const MapCamera &target, int durationMs, std::function<void()> completion);
    void stop();
    // stops without calling the completion (its owner is going away)
    void abandon();
    bool isRunning() const { return m_running; }

signals:
    void stepped();
    // the move reached its target (not sent when stopped)
    void finished();

private:
    void step(double progress);
    void onFinished();

    MapCamera *m_camera;
    QVariantAnimation m_animation;
    QPointF m_fromCenter;
    QPointF m_delta;
    QPointF m_toCenter;
    double m_fromZoom = 0.0;
    double m_toZoom = 0.0;
    bool m_running = false;
    std::function<void()> m_completion;
};
