#pragma once

#include "applications/ApplicationRegistry.h"

#include <QImage>

// Draws the icon a registry names: the picture file, or the first of the
// theme names the icon theme holds, at the size of an icon format.
class ApplicationIconLoader
{
public:
    ApplicationIconLoader() = delete;

    // The icon format the whitelist rows show: a small square icon.
    static constexpr int SmallIconFormat = 0;
    // The size in points of an icon of `format`.
    static int iconPointSize(int format) { return format == SmallIconFormat ? 30 : 60; }

    // The icon at the size of `format` and `scale` device pixels per point,
    // or a null image. Theme icons need a QGuiApplication; without one there
    // are none.
    static QImage load(const ApplicationIcon &icon, int format, qreal scale);

    // Device pixels per point of the primary screen; 1 without a screen.
    static qreal mainScreenScale();
};
