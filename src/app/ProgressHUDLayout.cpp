#include "app/ProgressHUDLayout.h"

#include <QFontMetricsF>

#include <cmath>

ProgressHUDLayout ProgressHUDLayout::compute(const Input &in)
{
    ProgressHUDLayout out;
    const qreal margin = in.margin;
    const qreal maxWidth = qMax(0.0, in.bounds.width() - 4 * margin);

    // each present item and its height; absent ones take no room and no gap
    QSizeF indicator = in.indicator.isEmpty() ? QSizeF(0, 0) : in.indicator;
    indicator.setWidth(qMin(indicator.width(), maxWidth));

    QSizeF label(0, 0);
    if (!in.labelText.isEmpty()) {
        const QFontMetricsF metrics(in.labelFont);
        out.labelText = metrics.elidedText(in.labelText, Qt::ElideRight, maxWidth);
        label = QSizeF(qMin(metrics.horizontalAdvance(in.labelText), maxWidth), metrics.height());
    }

    qreal contentWidth = qMax(indicator.width(), label.width());
    qreal contentHeight = indicator.height() + label.height();
    if (!indicator.isEmpty() && !label.isEmpty())
        contentHeight += Padding;

    QSizeF details(0, 0);
    if (!in.detailsLabelText.isEmpty()) {
        const qreal remaining =
            qMax(0.0, in.bounds.height() - contentHeight - Padding - 4 * margin);
        const QFontMetricsF metrics(in.detailsLabelFont);
        const QRectF wrapped =
            metrics.boundingRect(QRectF(0, 0, maxWidth, remaining),
                                 Qt::TextWordWrap | Qt::AlignHCenter, in.detailsLabelText);
        details = QSizeF(qMin(wrapped.width(), maxWidth), qMin(wrapped.height(), remaining));
        contentWidth = qMax(contentWidth, details.width());
        if (contentHeight > 0)
            contentHeight += Padding;
        contentHeight += details.height();
    }

    QSizeF box(contentWidth + 2 * margin, contentHeight + 2 * margin);
    if (in.square) {
        const qreal side = qMax(box.width(), box.height());
        box = QSizeF(side, side);
    }
    box = box.expandedTo(in.minSize);

    const qreal centreX = std::round(in.bounds.width() / 2 + in.xOffset);
    const qreal centreY = std::round(in.bounds.height() / 2 + in.yOffset);
    out.box = QRectF(std::round(centreX - box.width() / 2), std::round(centreY - box.height() / 2),
                     box.width(), box.height());

    qreal y = std::round(out.box.top() + (box.height() - contentHeight) / 2);
    auto place = [&](QSizeF item) {
        const QRectF rect(std::round(centreX - item.width() / 2), y, item.width(), item.height());
        if (!item.isEmpty())
            y += item.height() + Padding;
        return rect;
    };
    out.indicator = place(indicator);
    out.label = place(label);
    out.detailsLabel = place(details);
    return out;
}
