#include "ui/HairlineView.h"

#include <QPainter>

HairlineView::HairlineView(Qt::Orientation orientation, qreal thickness, QWidget *parent)
    : QWidget(parent), m_orientation(orientation), m_thickness(thickness)
{
}

void HairlineView::setColor(const QColor &color)
{
    m_color = color;
    update();
}

void HairlineView::paintEvent(QPaintEvent *)
{
    if (m_color.alpha() == 0)
        return;
    QPainter painter(this);
    const QRectF line = m_orientation == Qt::Horizontal ? QRectF(0, 0, width(), m_thickness)
                                                        : QRectF(0, 0, m_thickness, height());
    painter.fillRect(line, m_color);
}
