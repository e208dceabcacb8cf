#pragma once

#include <QImage>
#include <QString>

// The route screens' pictures, drawn rather than loaded so that they are
// sharp at any device pixel ratio: the start, end and stop markers
// ("icon_start", "icon_end", "icon_stop") and the address picker's centre pin.
namespace RouteImages {
QImage named(const QString &name, qreal devicePixelRatio = 2.0);
// the pin's point is at the bottom centre of the image
QImage centrePin(qreal devicePixelRatio = 2.0);
} // namespace RouteImages
