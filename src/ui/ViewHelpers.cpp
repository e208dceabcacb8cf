#include "ui/ViewHelpers.h"

#include "ui/ColorPalette.h"
#include "ui/FlatImages.h"
#include "ui/HairlineView.h"
#include "ui/ViewLayer.h"

#include <QCoreApplication>
#include <QLayout>
#include <QPropertyAnimation>
#include <QResizeEvent>

namespace {

const char *const MaskProperty = "trekmimeAutoresizingMask";
const char *const SizeProperty = "trekmimeLastSize";
const char *const FadeName = "trekmimeFade";

// Moves the children of a resized parent by their resizing rules, and
// follows a child to its new parent.
class AutoresizingWatcher : public QObject
{
public:
    static AutoresizingWatcher *instance()
    {
        // lives as long as the application; filters vanish with their objects
        static AutoresizingWatcher *watcher = new AutoresizingWatcher;
        return watcher;
    }

    void watch(QWidget *view)
    {
        view->removeEventFilter(this);
        view->installEventFilter(this);
        remember(view);
        if (QWidget *parent = view->parentWidget()) {
            remember(parent);
            parent->removeEventFilter(this);
            parent->installEventFilter(this);
        }
    }

private:
    static void remember(QWidget *widget)
    {
        if (!widget->property(SizeProperty).isValid())
            widget->setProperty(SizeProperty, widget->size());
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *widget = qobject_cast<QWidget *>(watched);
        if (!widget)
            return false;
        if (event->type() == QEvent::ParentChange && widget->property(MaskProperty).isValid()) {
            watch(widget);
        } else if (event->type() == QEvent::Resize) {
            // a hidden widget gets its resize only when shown, without the old
            // size, so the last size seen is kept on the widget itself
            const QSize newSize = static_cast<QResizeEvent *>(event)->size();
            const QSize oldSize = widget->property(SizeProperty).toSize();
            widget->setProperty(SizeProperty, newSize);
            if (oldSize.isValid() && oldSize != newSize)
                resizeChildren(widget, oldSize, newSize);
        }
        return false;
    }

private:
    // one axis: the flexible parts among margin before, size and margin
    // after share the change in proportion to their sizes
    static void resizeAxis(int &position, int &length, int oldParent, int newParent, bool before,
                           bool flexibleLength, bool after)
    {
        const int delta = newParent - oldParent;
        if (delta == 0 || !(before || flexibleLength || after))
            return;
        const double parts[3] = {double(position), double(length),
                                 double(oldParent - position - length)};
        const bool flexible[3] = {before, flexibleLength, after};
        double total = 0;
        int count = 0;
        for (int i = 0; i < 3; ++i) {
            if (flexible[i]) {
                total += qMax(0.0, parts[i]);
                ++count;
            }
        }
        double share[3] = {0, 0, 0};
        for (int i = 0; i < 3; ++i) {
            if (flexible[i])
                share[i] = total > 0 ? delta * qMax(0.0, parts[i]) / total : double(delta) / count;
        }
        position = qRound(parts[0] + share[0]);
        length = qMax(0, qRound(parts[0] + parts[1] + share[0] + share[1]) - position);
    }

    static void resizeChildren(QWidget *parent, QSize oldSize, QSize newSize)
    {
        for (QObject *object : parent->children()) {
            auto *child = qobject_cast<QWidget *>(object);
            if (!child || child->isWindow())
                continue;
            // a layout places its own widgets; the mask only shaped their policy
            if (parent->layout() && parent->layout()->indexOf(child) >= 0)
                continue;
            const QVariant maskValue = child->property(MaskProperty);
            if (!maskValue.isValid())
                continue;
            const int mask = maskValue.toInt();
            int x = child->x(), w = child->width(), y = child->y(), h = child->height();
            resizeAxis(x, w, oldSize.width(), newSize.width(),
                       mask & ViewHelpers::FlexibleLeftMargin, mask & ViewHelpers::FlexibleWidth,
                       mask & ViewHelpers::FlexibleRightMargin);
            resizeAxis(y, h, oldSize.height(), newSize.height(),
                       mask & ViewHelpers::FlexibleTopMargin, mask & ViewHelpers::FlexibleHeight,
                       mask & ViewHelpers::FlexibleBottomMargin);
            child->setGeometry(x, y, w, h);
        }
    }
};

HairlineView *hairline(Qt::Orientation orientation, int length, qreal scale)
{
    if (scale <= 0)
        scale = FlatImages::mainScreenScale();
    const qreal thickness = scale > 1.0 ? 0.5 : 1.0;
    auto *line = new HairlineView(orientation, thickness);
    // a widget is whole points; the line paints only its own thickness
    line->setGeometry(orientation == Qt::Horizontal ? QRect(0, 0, length, 1)
                                                    : QRect(0, 0, 1, length));
    return line;
}

void fade(QWidget *view, qreal to, double duration, std::function<void()> finished)
{
    for (auto *running : view->findChildren<QPropertyAnimation *>(QLatin1String(FadeName),
                                                                  Qt::FindDirectChildrenOnly))
        running->stop();
    auto *animation = new QPropertyAnimation(ViewLayer::of(view), "opacity", view);
    animation->setObjectName(QLatin1String(FadeName));
    animation->setDuration(qMax(0, qRound(duration * 1000.0)));
    animation->setStartValue(ViewHelpers::alpha(view));
    animation->setEndValue(to);
    QObject::connect(animation, &QAbstractAnimation::finished, view, std::move(finished));
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

} // namespace

namespace ViewHelpers {

QWidget *view()
{
    auto *made = new QWidget;
    made->setGeometry(QRect());
    return made;
}

QWidget *viewWithFrame(const QRect &frame)
{
    auto *made = new QWidget;
    made->setGeometry(frame);
    return made;
}

QWidget *clearView()
{
    QWidget *made = view();
    setClearColor(made);
    return made;
}

QWidget *clearViewWithFrame(const QRect &frame)
{
    QWidget *made = viewWithFrame(frame);
    setClearColor(made);
    return made;
}

QWidget *viewWithColor(const QColor &color)
{
    QWidget *made = view();
    setColor(made, color);
    return made;
}

QWidget *viewWithColor(const QColor &color, const QRect &frame)
{
    QWidget *made = viewWithColor(color);
    made->setGeometry(frame);
    return made;
}

HairlineView *onePixelHeightViewWithWidth(int width, qreal scale)
{
    return hairline(Qt::Horizontal, width, scale);
}

HairlineView *onePixelWidthViewWithHeight(int height, qreal scale)
{
    return hairline(Qt::Vertical, height, scale);
}

void setClearColor(QWidget *view)
{
    setColor(view, Qt::transparent);
}

void setColor(QWidget *view, const QColor &color)
{
    if (auto *line = qobject_cast<HairlineView *>(view)) {
        line->setColor(color);
        return;
    }
    QPalette palette = view->palette();
    palette.setColor(QPalette::Window, color);
    view->setPalette(palette);
    view->setAutoFillBackground(color.alpha() != 0);
}

QColor color(const QWidget *view)
{
    if (const auto *line = qobject_cast<const HairlineView *>(view))
        return line->color();
    return view->autoFillBackground() ? view->palette().color(QPalette::Window)
                                      : QColor(Qt::transparent);
}

QPoint origin(const QWidget *view)
{
    return view->pos();
}

void setOrigin(QWidget *view, QPoint origin)
{
    view->setGeometry(QRect(origin, view->size()));
}

QSize size(const QWidget *view)
{
    return view->size();
}

void setSize(QWidget *view, QSize size)
{
    view->setGeometry(QRect(view->pos(), size));
}

int x(const QWidget *view)
{
    return view->x();
}

void setX(QWidget *view, int x)
{
    view->setGeometry(x, view->y(), view->width(), view->height());
}

int y(const QWidget *view)
{
    return view->y();
}

void setY(QWidget *view, int y)
{
    view->setGeometry(view->x(), y, view->width(), view->height());
}

int width(const QWidget *view)
{
    return view->width();
}

void setWidth(QWidget *view, int width)
{
    view->setGeometry(view->x(), view->y(), width, view->height());
}

int height(const QWidget *view)
{
    return view->height();
}

void setHeight(QWidget *view, int height)
{
    view->setGeometry(view->x(), view->y(), view->width(), height);
}

int tail(const QWidget *view)
{
    return view->y() + view->height();
}

void setTail(QWidget *view, int tail)
{
    view->setGeometry(view->x(), tail - view->height(), view->width(), view->height());
}

int bottom(const QWidget *view)
{
    return tail(view);
}

void setBottom(QWidget *view, int bottom)
{
    setTail(view, bottom);
}

int right(const QWidget *view)
{
    return view->x() + view->width();
}

void setRight(QWidget *view, int right)
{
    view->setGeometry(right - view->width(), view->y(), view->width(), view->height());
}

void setAutoresizingMask(QWidget *view, int mask)
{
    view->setProperty(MaskProperty, mask);
    QSizePolicy policy = view->sizePolicy();
    policy.setHorizontalPolicy((mask & FlexibleWidth) ? QSizePolicy::Expanding
                                                      : QSizePolicy::Preferred);
    policy.setVerticalPolicy((mask & FlexibleHeight) ? QSizePolicy::Expanding
                                                     : QSizePolicy::Preferred);
    view->setSizePolicy(policy);
    AutoresizingWatcher::instance()->watch(view);
}

int autoresizingMask(const QWidget *view)
{
    return view->property(MaskProperty).toInt();
}

void frameSetInSuperViewForFull(QWidget *view)
{
    setAutoresizingMask(view, 63);
}

void frameSetInSuperViewForLeftTop(QWidget *view)
{
    setAutoresizingMask(view, 33);
}

void frameSetInSuperViewForBottom(QWidget *view)
{
    setAutoresizingMask(view, 32);
}

void frameSetInSuperViewForCenter(QWidget *view)
{
    setAutoresizingMask(view, 0);
}

void frameSetInSuperViewForLeftBottmHeightRight(QWidget *view)
{
    setAutoresizingMask(view, 53);
}

void frameSetInSuperViewForRightBottmHeightTop(QWidget *view)
{
    setAutoresizingMask(view, 60);
}

qreal alpha(const QWidget *view)
{
    const ViewLayer *layer = ViewLayer::existing(view);
    return layer ? layer->opacity() : 1.0;
}

void setAlpha(QWidget *view, qreal alpha)
{
    if (alpha >= 1.0 && !ViewLayer::existing(view))
        return;
    ViewLayer::of(view)->setOpacity(alpha);
}

void fadeShowAnimation(QWidget *view)
{
    fadeShowAnimationComplete(view, nullptr);
}

void fadeShowAnimationComplete(QWidget *view, std::function<void()> complete)
{
    fadeShowAnimationDuration(view, DefaultFadeDuration, std::move(complete));
}

void fadeShowAnimationDuration(QWidget *view, double duration, std::function<void()> complete)
{
    setAlpha(view, 0.0);
    view->setEnabled(true);
    view->setVisible(true);
    fade(view, 1.0, duration, [complete = std::move(complete)] {
        if (complete)
            complete();
    });
}

void fadeHideAnimation(QWidget *view)
{
    fadeHideAnimationComplete(view, nullptr);
}

void fadeHideAnimationComplete(QWidget *view, std::function<void()> complete)
{
    fadeHideAnimationDuration(view, DefaultFadeDuration, std::move(complete));
}

void fadeHideAnimationDuration(QWidget *view, double duration, std::function<void()> complete)
{
    // a view on its way out takes no more presses: one press, one action
    view->setEnabled(false);
    fade(view, 0.0, duration, [view, complete = std::move(complete)] {
        view->setVisible(false);
        view->setEnabled(true);
        setAlpha(view, 1.0);
        if (complete)
            complete();
    });
}

void circle(QWidget *view)
{
    ViewLayer *layer = ViewLayer::of(view);
    layer->setMasksToBounds(true);
    layer->setCornerRadius(view->width() / 2.0);
}

void circleWithWhiteBorder(QWidget *view)
{
    circle(view);
    ViewLayer *layer = ViewLayer::of(view);
    layer->setBorderColor(ColorPalette::whiteColor());
    layer->setBorderWidth(2.0);
}

qreal cornerRadius(const QWidget *view)
{
    const ViewLayer *layer = ViewLayer::existing(view);
    return layer ? layer->cornerRadius() : 0.0;
}

} // namespace ViewHelpers
