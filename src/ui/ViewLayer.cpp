#include "ui/ViewLayer.h"
#include "ui/ColorPalette.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

ViewLayer::ViewLayer(QObject *parent) : QGraphicsEffect(parent) {}

ViewLayer *ViewLayer::of(QWidget *view)
{
    if (ViewLayer *layer = existing(view))
        return layer;
    auto *layer = new ViewLayer(view);
    view->setGraphicsEffect(layer);
    return layer;
}

ViewLayer *ViewLayer::existing(const QWidget *view)
{
    return qobject_cast<ViewLayer *>(view->graphicsEffect());
}

void ViewLayer::setOpacity(qreal opacity)
{
    opacity = qBound(0.0, opacity, 1.0);
    if (qFuzzyCompare(opacity, m_opacity))
        return;
    m_opacity = opacity;
    update();
}

void ViewLayer::setScale(qreal scale)
{
    if (qFuzzyCompare(scale, m_scale))
        return;
    m_scale = scale;
    updateBoundingRect();
    update();
}

void ViewLayer::setCornerRadius(qreal radius)
{
    m_cornerRadius = radius;
    update();
}

void ViewLayer::setMasksToBounds(bool on)
{
    m_masksToBounds = on;
    update();
}

void ViewLayer::setBorderWidth(qreal width)
{
    m_borderWidth = width;
    update();
}

void ViewLayer::setBorderColor(const QColor &color)
{
    m_borderColor = color;
    update();
}

bool ViewLayer::isPlain() const
{
    return m_opacity >= 1.0 && m_scale == 1.0 && m_borderWidth <= 0.0 &&
           !(m_masksToBounds && m_cornerRadius > 0.0);
}

QRectF ViewLayer::boundingRectFor(const QRectF &sourceRect) const
{
    if (m_scale <= 1.0)
        return sourceRect;
    const QPointF centre = sourceRect.center();
    const QSizeF size = sourceRect.size() * m_scale;
    return QRectF(centre.x() - size.width() / 2, centre.y() - size.height() / 2, size.width(),
                  size.height());
}

void ViewLayer::draw(QPainter *painter)
{
    // a view this transparent is not drawn at all (and takes no touches)
    if (m_opacity <= 0.0)
        return;
    if (isPlain()) {
        drawSource(painter);
        return;
    }
    QPoint offset;
    const QPixmap source = sourcePixmap(Qt::LogicalCoordinates, &offset, NoPad);
    if (source.isNull())
        return;
    const qreal ratio = source.devicePixelRatio();
    const QRectF bounds(offset, source.deviceIndependentSize());
    QPainterPath rounded;
    rounded.addRoundedRect(bounds, m_cornerRadius, m_cornerRadius);

    QImage content(source.size(), QImage::Format_ARGB32_Premultiplied);
    content.setDevicePixelRatio(ratio);
    content.fill(Qt::transparent);
    {
        QPainter p(&content);
        p.setRenderHint(QPainter::Antialiasing);
        p.drawPixmap(0, 0, source);
        p.translate(-bounds.topLeft());
        if (m_masksToBounds && m_cornerRadius > 0.0) {
            // keep only what lies inside the rounded outline, with smooth edges
            QImage mask(source.size(), QImage::Format_ARGB32_Premultiplied);
            mask.setDevicePixelRatio(ratio);
            mask.fill(Qt::transparent);
            QPainter m(&mask);
            m.setRenderHint(QPainter::Antialiasing);
            m.translate(-bounds.topLeft());
            m.fillPath(rounded, ColorPalette::blackColor());
            m.end();
            p.resetTransform();
            p.setCompositionMode(QPainter::CompositionMode_DestinationIn);
            p.drawImage(0, 0, mask);
            p.setCompositionMode(QPainter::CompositionMode_SourceOver);
            p.translate(-bounds.topLeft());
        }
        if (m_borderWidth > 0.0) {
            // the border lies inside the outline, over the content
            const qreal half = m_borderWidth / 2;
            QPainterPath border;
            border.addRoundedRect(bounds.adjusted(half, half, -half, -half),
                                  qMax(0.0, m_cornerRadius - half),
                                  qMax(0.0, m_cornerRadius - half));
            p.setPen(QPen(m_borderColor, m_borderWidth));
            p.setBrush(Qt::NoBrush);
            p.drawPath(border);
        }
    }

    painter->save();
    painter->setOpacity(painter->opacity() * m_opacity);
    if (m_scale != 1.0) {
        const QPointF centre = bounds.center();
        painter->translate(centre);
        painter->scale(m_scale, m_scale);
        painter->translate(-centre);
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
    }
    painter->drawImage(bounds.topLeft(), content);
    painter->restore();
}
