#pragma once

#include <QMargins>
#include <QMarginsF>

// Insets in the order the controls give them: top, left, bottom, right.
struct EdgeInsets
{
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;

    QMarginsF toMargins() const { return {left, top, right, bottom}; }
    friend bool operator==(const EdgeInsets &, const EdgeInsets &) = default;
};
