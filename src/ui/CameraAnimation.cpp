#include "ui/CameraAnimation.h"

#include <cmath>

CameraAnimation::CameraAnimation(MapCamera *camera, QObject *parent)
    : QObject(parent), m_camera(camera)
{
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    m_animation.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        if (m_running)
            step(value.toDouble());
    });
    connect(&m_animation, &QVariantAnimation::finished, this, &CameraAnimation::onFinished);
}

void CameraAnimation::start(const MapCamera &target, int durationMs,
                            std::function<void()> completion)
{
    stop();
    m_fromCenter = m_camera->centerWorld();
    m_delta = target.centerWorld() - m_fromCenter;
    m_delta.rx() -= std::round(m_delta.x()); // the short way round the world
    m_fromZoom = m_camera->zoom();
    m_toZoom = target.zoom();
    m_toCenter = target.centerWorld();
    m_completion = std::move(completion);
    m_running = true;
    m_animation.setDuration(std::max(1, durationMs));
    m_animation.start();
}

void CameraAnimation::stop()
{
    if (!m_running)
        return;
    m_running = false;
    m_animation.stop();
    if (auto completion = std::exchange(m_completion, {}))
        completion();
}

void CameraAnimation::abandon()
{
    m_completion = {};
    m_running = false;
    m_animation.stop();
}

void CameraAnimation::step(double progress)
{
    m_camera->setZoom(m_fromZoom + (m_toZoom - m_fromZoom) * progress);
    m_camera->setCenterWorld(m_fromCenter + m_delta * progress);
    emit stepped();
}

void CameraAnimation::onFinished()
{
    if (!m_running)
        return;
    m_camera->setZoom(m_toZoom);
    m_camera->setCenterWorld(m_toCenter);
    emit stepped();
    m_running = false;
    if (auto completion = std::exchange(m_completion, {}))
        completion();
    emit finished();
}
