#include "app/RoundProgressView.h"

#include <QPainter>

RoundProgressView::RoundProgressView(QWidget *parent) : QWidget(parent)
{
    resize(sizeHint());
}

void RoundProgressView::setProgress(float progress)
{
    m_progress = progress;
    update();
}

void RoundProgressView::setAnnular(bool annular)
{
    m_annular = annular;
    update();
}

void RoundProgressView::setProgressTintColor(const QColor &color)
{
    m_progressTintColor = color;
    update();
}

void RoundProgressView::setBackgroundTintColor(const QColor &color)
{
    m_backgroundTintColor = color;
    update();
}

void RoundProgressView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = qMin(width(), height());
    const QRectF square((width() - side) / 2, (height() - side) / 2, side, side);
    const float progress = qBound(0.0f, m_progress, 1.0f);
    // angles in sixteenths of a degree, from twelve o'clock clockwise
    const int start = 90 * 16;
    const int span = -qRound(progress * 360.0f * 16.0f);
    if (m_annular) {
        const qreal line = 5.0;
        const QRectF ring = square.adjusted(line / 2, line / 2, -line / 2, -line / 2);
        painter.setPen(QPen(m_backgroundTintColor, line));
        painter.drawEllipse(ring);
        painter.setPen(QPen(m_progressTintColor, line, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(ring, start, span);
        return;
    }
    const qreal line = 2.0;
    const QRectF outline = square.adjusted(line / 2, line / 2, -line / 2, -line / 2);
    painter.setPen(QPen(m_progressTintColor, line));
    painter.setBrush(m_backgroundTintColor);
    painter.drawEllipse(outline);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_progressTintColor);
    painter.drawPie(outline.adjusted(line, line, -line, -line), start, span);
}
