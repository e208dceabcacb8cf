#include "route/RouteImages.h"

#include "ui/ColorPalette.h"

#include <QPainter>
#include <QPainterPath>

namespace {

// A teardrop pin with a white dot, its point at the bottom centre.
QImage pin(const QColor &color, const QColor &shadow, QSizeF size, qreal ratio)
{
    QImage image((size * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double w = size.width();
    const double h = size.height();
    const double r = w / 2.0 - 1.0;
    QPainterPath path;
    path.moveTo(w / 2.0, h - 1.0);
    path.cubicTo(w / 2.0 - r * 0.4, h - r * 1.2, 1.0, r * 1.9, 1.0, r + 1.0);
    path.arcTo(QRectF(1.0, 1.0, 2 * r, 2 * r), 180.0, -180.0);
    path.cubicTo(w - 1.0, r * 1.9, w / 2.0 + r * 0.4, h - r * 1.2, w / 2.0, h - 1.0);
    painter.setPen(QPen(shadow, 1.5));
    painter.setBrush(color);
    painter.drawPath(path);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColorPalette::whiteColor());
    painter.drawEllipse(QPointF(w / 2.0, r + 1.0), r * 0.42, r * 0.42);
    return image;
}

} // namespace

QImage RouteImages::named(const QString &name, qreal ratio)
{
    if (name == QLatin1String("icon_start"))
        return pin(ColorPalette::emerlandColor(), ColorPalette::nephritisColor(), {28, 40}, ratio);
    if (name == QLatin1String("icon_end"))
        return pin(ColorPalette::alizarinColor(), ColorPalette::pomegranateColor(), {28, 40},
                   ratio);
    if (name == QLatin1String("icon_stop")) // smaller: a place passed, not an end
        return pin(ColorPalette::carrotColor(), ColorPalette::pumpkinColor(), {20, 29}, ratio);
    return {};
}

QImage RouteImages::centrePin(qreal ratio)
{
    return pin(ColorPalette::peterRiverColor(), ColorPalette::belizeHoleColor(), {32, 46}, ratio);
}
