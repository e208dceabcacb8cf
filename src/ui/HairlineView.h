#pragma once

#include <QWidget>

// A one-device-pixel line. A widget's geometry is in whole points, so the
// view is one point thick and paints its background colour over only the
// line's own thickness (half a point on a screen of scale 2).
class HairlineView : public QWidget
{
    Q_OBJECT

public:
    HairlineView(Qt::Orientation orientation, qreal thickness, QWidget *parent = nullptr);

    Qt::Orientation orientation() const { return m_orientation; }
    qreal thickness() const { return m_thickness; }
    QColor color() const { return m_color; }
    void setColor(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Qt::Orientation m_orientation;
    qreal m_thickness;
    QColor m_color = Qt::transparent;
};
