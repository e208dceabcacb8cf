#pragma once

#include "ui/ColorPalette.h"

#include <QColor>
#include <QGraphicsEffect>

class QWidget;

// What a widget lacks next to a phone's view layer: an opacity (alpha) that
// also covers its children, a scale about its centre, rounded clipping and a
// border drawn over its content. Attached to a widget as its graphics effect;
// forLayer() finds or creates it.
class ViewLayer : public QGraphicsEffect
{
    Q_OBJECT
    Q_PROPERTY(qreal opacity READ opacity WRITE setOpacity)
    Q_PROPERTY(qreal scale READ scale WRITE setScale)

public:
    explicit ViewLayer(QObject *parent = nullptr);

    // The widget's layer, made on first use. Replaces any other effect.
    static ViewLayer *of(QWidget *view);
    // The widget's layer if it has one.
    static ViewLayer *existing(const QWidget *view);

    qreal opacity() const { return m_opacity; }
    void setOpacity(qreal opacity);
    qreal scale() const { return m_scale; }
    void setScale(qreal scale);
    qreal cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(qreal radius);
    bool masksToBounds() const { return m_masksToBounds; }
    void setMasksToBounds(bool on);
    qreal borderWidth() const { return m_borderWidth; }
    void setBorderWidth(qreal width);
    QColor borderColor() const { return m_borderColor; }
    void setBorderColor(const QColor &color);

protected:
    QRectF boundingRectFor(const QRectF &sourceRect) const override;
    void draw(QPainter *painter) override;

private:
    bool isPlain() const;

    qreal m_opacity = 1.0;
    qreal m_scale = 1.0;
    qreal m_cornerRadius = 0.0;
    bool m_masksToBounds = false;
    qreal m_borderWidth = 0.0;
    QColor m_borderColor = ColorPalette::blackColor();
};
