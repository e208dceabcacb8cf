#pragma once

#include "ui/EdgeInsets.h"
#include "ui/StretchableImage.h"

#include <QColor>

// Makers of the flat controls' rounded, stretchable background images.
class FlatImages
{
public:
    // A square of side 2r + 1 points filled with `color` and rounded with
    // radius r, stretchable so that only its middle point row and column grow.
    // `scale` is the device pixel ratio; 0 takes the primary screen's.
    static StretchableImage imageWithColor(const QColor &color, double cornerRadius,
                                           qreal scale = 0);
    // The shadow image over the whole canvas, the colour image inside the
    // canvas less `shadowInsets`; caps are each inset plus the radius.
    static StretchableImage buttonImageWithColor(const QColor &color, double cornerRadius,
                                                 const QColor &shadowColor,
                                                 const EdgeInsets &shadowInsets, qreal scale = 0);

    static qreal mainScreenScale();
};
