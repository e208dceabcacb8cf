#include "app/ActivityIndicatorView.h"

#include <QPainter>
#include <QTimer>

namespace {
constexpr int Spokes = 12;
}

ActivityIndicatorView::ActivityIndicatorView(QWidget *parent)
    : QWidget(parent), m_timer(new QTimer(this))
{
    resize(sizeHint());
    m_timer->setInterval(1000 / Spokes);
    connect(m_timer, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % Spokes;
        update();
    });
}

void ActivityIndicatorView::startAnimating()
{
    m_animating = true;
    updateTimer();
}

void ActivityIndicatorView::stopAnimating()
{
    m_animating = false;
    updateTimer();
}

void ActivityIndicatorView::setSuspended(bool suspended)
{
    m_suspended = suspended;
    updateTimer();
}

void ActivityIndicatorView::updateTimer()
{
    if (m_animating && !m_suspended)
        m_timer->start();
    else
        m_timer->stop();
    update();
}

void ActivityIndicatorView::setColor(const QColor &color)
{
    m_color = color;
    update();
}

void ActivityIndicatorView::paintEvent(QPaintEvent *)
{
    if (!m_animating)
        return; // a stopped indicator hides itself
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = qMin(width(), height());
    const qreal outer = side / 2;
    const qreal inner = outer * 0.45;
    const qreal thickness = side * 0.09;
    painter.translate(width() / 2.0, height() / 2.0);
    for (int i = 0; i < Spokes; ++i) {
        // the spoke at the current step is brightest, the ones behind it fade
        const int age = (m_step - i + Spokes) % Spokes;
        QColor spoke = m_color;
        spoke.setAlphaF(float(1.0 - 0.75 * age / (Spokes - 1)));
        painter.setPen(QPen(spoke, thickness, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 * i / Spokes);
        painter.drawLine(QPointF(0, -inner), QPointF(0, -outer + thickness / 2));
        painter.restore();
    }
}
