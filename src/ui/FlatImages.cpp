#include "ui/FlatImages.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>

#include <cmath>

namespace {

QPixmap canvas(QSizeF points, qreal scale)
{
    QPixmap pixmap(qMax(1, int(std::ceil(points.width() * scale))),
                   qMax(1, int(std::ceil(points.height() * scale))));
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

} // namespace

qreal FlatImages::mainScreenScale()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1.0;
}

StretchableImage FlatImages::imageWithColor(const QColor &color, double cornerRadius, qreal scale)
{
    if (scale <= 0)
        scale = mainScreenScale();
    const double side = 2 * cornerRadius + 1;
    QPixmap pixmap = canvas({side, side}, scale);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.addRoundedRect(QRectF(0, 0, side, side), cornerRadius, cornerRadius);
    painter.fillPath(path, color);
    painter.end();
    return {pixmap, {cornerRadius, cornerRadius, cornerRadius, cornerRadius}};
}

StretchableImage FlatImages::buttonImageWithColor(const QColor &color, double cornerRadius,
                                                  const QColor &shadowColor,
                                                  const EdgeInsets &shadowInsets, qreal scale)
{
    if (scale <= 0)
        scale = mainScreenScale();
    const StretchableImage top = imageWithColor(color, cornerRadius, scale);
    const StretchableImage shadow = imageWithColor(shadowColor, cornerRadius, scale);
    const QSizeF size(top.size().width() + shadowInsets.left + shadowInsets.right,
                      top.size().height() + shadowInsets.top + shadowInsets.bottom);
    QPixmap pixmap = canvas(size, scale);
    QPainter painter(&pixmap);
    const QRectF whole(QPointF(0, 0), size);
    shadow.draw(&painter, whole);
    top.draw(&painter, whole.marginsRemoved(shadowInsets.toMargins()));
    painter.end();
    const EdgeInsets caps{shadowInsets.top + cornerRadius, shadowInsets.left + cornerRadius,
                          shadowInsets.bottom + cornerRadius, shadowInsets.right + cornerRadius};
    return {pixmap, caps};
}
