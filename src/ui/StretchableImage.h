#pragma once

#include "ui/EdgeInsets.h"

#include <QPixmap>

class QPainter;

// An image with cap insets: drawn into a larger rectangle, the caps keep
// their size and only the part between them stretches (a nine-patch).
class StretchableImage
{
public:
    StretchableImage() = default;
    StretchableImage(QPixmap pixmap, EdgeInsets capInsets)
        : m_pixmap(std::move(pixmap)), m_capInsets(capInsets)
    {
    }

    bool isNull() const { return m_pixmap.isNull(); }
    const QPixmap &pixmap() const { return m_pixmap; }
    EdgeInsets capInsets() const { return m_capInsets; }
    // in points: the pixmap's pixel size divided by its device pixel ratio
    QSizeF size() const { return m_pixmap.deviceIndependentSize(); }

    void draw(QPainter *painter, const QRectF &target) const;

private:
    QPixmap m_pixmap;
    EdgeInsets m_capInsets;
};
