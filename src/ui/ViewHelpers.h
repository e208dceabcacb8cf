#pragma once

#include "ui/PanGestureRecognizer.h"
#include "ui/SwipeGestureRecognizer.h"
#include "ui/TapGestureRecognizer.h"

#include <QColor>
#include <QRect>
#include <QWidget>

#include <functional>

class HairlineView;

// Small operations every view of the screens uses: making plain views,
// reading and changing one component of a frame, attaching gestures,
// resizing rules, fades and round clipping. Frames are in points in the
// parent's coordinates; every setter reads the other components at the time
// of the call and sets the whole frame at once.
namespace ViewHelpers {

// --- making views (each new, without a parent; the caller owns it)
QWidget *view();
QWidget *viewWithFrame(const QRect &frame);
QWidget *clearView();
QWidget *clearViewWithFrame(const QRect &frame);
QWidget *viewWithColor(const QColor &color);
QWidget *viewWithColor(const QColor &color, const QRect &frame);
// A one-pixel line at (0, 0): half a point thick when `scale` (the main
// screen's device pixel ratio when 0) is above 1, else one point.
HairlineView *onePixelHeightViewWithWidth(int width, qreal scale = 0);
HairlineView *onePixelWidthViewWithHeight(int height, qreal scale = 0);

// --- background
void setClearColor(QWidget *view);
void setColor(QWidget *view, const QColor &color);
QColor color(const QWidget *view);

// --- gestures: each creates a recogniser on `view`, reports to `action` of
// `target` (a member function taking the recogniser, or any callable taking
// it) and answers the recogniser
template <typename Recognizer, typename Target, typename Action>
Recognizer *addGesture(QWidget *view, Target *target, Action action)
{
    auto *recognizer = new Recognizer(view);
    QObject::connect(recognizer, &GestureRecognizer::triggered, target, [=] {
        if constexpr (std::is_member_function_pointer_v<Action>)
            (target->*action)(recognizer);
        else
            action(recognizer);
    });
    return recognizer;
}
template <typename Target, typename Action>
TapGestureRecognizer *addTapGestureWithTarget(QWidget *view, Target *target, Action action)
{
    return addGesture<TapGestureRecognizer>(view, target, action);
}
template <typename Target, typename Action>
PanGestureRecognizer *addPanGestureWithTarget(QWidget *view, Target *target, Action action)
{
    return addGesture<PanGestureRecognizer>(view, target, action);
}
template <typename Target, typename Action>
SwipeGestureRecognizer *addSwipeGestureWithTarget(QWidget *view, Target *target, Action action)
{
    return addGesture<SwipeGestureRecognizer>(view, target, action);
}

// --- frame components
QPoint origin(const QWidget *view);
void setOrigin(QWidget *view, QPoint origin);
QSize size(const QWidget *view);
void setSize(QWidget *view, QSize size);
int x(const QWidget *view);
void setX(QWidget *view, int x);
int y(const QWidget *view);
void setY(QWidget *view, int y);
int width(const QWidget *view);
void setWidth(QWidget *view, int width);
int height(const QWidget *view);
void setHeight(QWidget *view, int height);
// bottom edge, y + height; the setter moves the view, keeping its size
int tail(const QWidget *view);
void setTail(QWidget *view, int tail);
int bottom(const QWidget *view);
void setBottom(QWidget *view, int bottom);
// right edge, x + width; the setter moves the view, keeping its size
int right(const QWidget *view);
void setRight(QWidget *view, int right);

// --- resizing rules: what follows the parent when it changes size
enum AutoresizingFlag {
    FlexibleLeftMargin = 1,
    FlexibleWidth = 2,
    FlexibleRightMargin = 4,
    FlexibleTopMargin = 8,
    FlexibleHeight = 16,
    FlexibleBottomMargin = 32,
};
// The flexible parts of each axis share the parent's change in proportion to
// their sizes; the others keep theirs. In a Qt layout the flexible width and
// height become expanding size policies.
void setAutoresizingMask(QWidget *view, int mask);
int autoresizingMask(const QWidget *view);
void frameSetInSuperViewForFull(QWidget *view);
void frameSetInSuperViewForLeftTop(QWidget *view);
void frameSetInSuperViewForBottom(QWidget *view);
void frameSetInSuperViewForCenter(QWidget *view);
void frameSetInSuperViewForLeftBottmHeightRight(QWidget *view);
void frameSetInSuperViewForRightBottmHeightTop(QWidget *view);

// --- alpha: covers the view and its children
qreal alpha(const QWidget *view);
void setAlpha(QWidget *view, qreal alpha);

// --- fades (the default duration is 0.3 s taken in single precision)
inline constexpr double DefaultFadeDuration = double(0.3f);
void fadeShowAnimation(QWidget *view);
void fadeShowAnimationComplete(QWidget *view, std::function<void()> complete);
void fadeShowAnimationDuration(QWidget *view, double duration, std::function<void()> complete);
void fadeHideAnimation(QWidget *view);
void fadeHideAnimationComplete(QWidget *view, std::function<void()> complete);
// While it fades the view takes no presses (it is disabled). At the end it is
// hidden, enabled and its alpha set back to 1, so that a later plain show
// needs no reset.
void fadeHideAnimationDuration(QWidget *view, double duration, std::function<void()> complete);

// --- rounding: a corner radius of half the width (also for views that are not
// square), clipping the view's content to it
void circle(QWidget *view);
// circle, then a white border 2.0 points wide
void circleWithWhiteBorder(QWidget *view);
qreal cornerRadius(const QWidget *view);

} // namespace ViewHelpers
