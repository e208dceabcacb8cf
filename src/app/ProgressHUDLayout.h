#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

// Where the overlay's box and its content go: from top to bottom the
// indicator, the label and the details label, 4 points apart and centred.
struct ProgressHUDLayout
{
    struct Input
    {
        QSizeF bounds;
        QSizeF indicator; // empty when there is no indicator
        QString labelText;
        QFont labelFont;
        QString detailsLabelText;
        QFont detailsLabelFont;
        float margin = 20.0f;
        float xOffset = 0.0f;
        float yOffset = 0.0f;
        bool square = false;
        QSizeF minSize;
    };

    static constexpr qreal Padding = 4.0;

    QRectF box;
    QRectF indicator;
    QRectF label;
    QRectF detailsLabel;
    // the label's text, cut to fit on its one line
    QString labelText;

    static ProgressHUDLayout compute(const Input &input);
};
