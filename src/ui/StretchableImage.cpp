#include "ui/StretchableImage.h"

#include <QPainter>

void StretchableImage::draw(QPainter *painter, const QRectF &target) const
{
    if (m_pixmap.isNull() || target.isEmpty())
        return;
    const qreal ratio = m_pixmap.devicePixelRatio();
    const QMarginsF caps = m_capInsets.toMargins();
    const QSizeF source = QSizeF(m_pixmap.size());
    // cap insets are in points; the pixmap's own columns are device pixels
    const qreal sl = caps.left() * ratio, st = caps.top() * ratio;
    const qreal sr = caps.right() * ratio, sb = caps.bottom() * ratio;
    const qreal xs[4] = {0, sl, source.width() - sr, source.width()};
    const qreal ys[4] = {0, st, source.height() - sb, source.height()};
    // the caps never grow; if the target is too small they share it evenly
    const qreal cw = qMin(1.0, target.width() / qMax(1e-9, caps.left() + caps.right()));
    const qreal ch = qMin(1.0, target.height() / qMax(1e-9, caps.top() + caps.bottom()));
    const qreal xt[4] = {target.left(), target.left() + caps.left() * cw,
                         target.right() - caps.right() * cw, target.right()};
    const qreal yt[4] = {target.top(), target.top() + caps.top() * ch,
                         target.bottom() - caps.bottom() * ch, target.bottom()};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRectF from(QPointF(xs[column], ys[row]), QPointF(xs[column + 1], ys[row + 1]));
            const QRectF to(QPointF(xt[column], yt[row]), QPointF(xt[column + 1], yt[row + 1]));
            if (from.isEmpty() || to.isEmpty())
                continue;
            painter->drawPixmap(to, m_pixmap, from);
        }
    }
}
