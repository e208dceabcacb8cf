#include "ui/Accessibility.h"

#include "ui/FlatSwitch.h"
#include "ui/MapView.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QLabel>

#include <algorithm>

namespace {

const char *const DecorativeProperty = "trekmime-decorative";
const char *const CoveredProperty = "trekmime-covered";

bool isListed(const QWidget *child)
{
    return !child->isWindow() && !child->isHidden() &&
           !child->property(DecorativeProperty).toBool() &&
           !child->property(CoveredProperty).toBool();
}

// A plain container: lists only the children a person can see and use, so
// that a screen reader does not walk into a covered screen or read a
// background. Hidden children stay out too: a pressed control that cannot be
// seen must not be found.
class AccessibleContainer : public QAccessibleWidget
{
public:
    explicit AccessibleContainer(QWidget *widget) : QAccessibleWidget(widget) {}

    int childCount() const override { return int(listed().size()); }
    QAccessibleInterface *child(int index) const override
    {
        const QList<QWidget *> children = listed();
        return index >= 0 && index < children.size()
                   ? QAccessible::queryAccessibleInterface(children.at(index))
                   : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return child ? int(listed().indexOf(qobject_cast<QWidget *>(child->object()))) : -1;
    }

private:
    QList<QWidget *> listed() const
    {
        QList<QWidget *> children;
        for (QObject *object : widget()->children()) {
            auto *child = qobject_cast<QWidget *>(object);
            if (child && isListed(child))
                children.append(child);
        }
        return children;
    }
};

bool drawnInside(const QWidget *button)
{
    const QList<QWidget *> parts = button->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    return std::any_of(parts.begin(), parts.end(), [](const QWidget *part) {
        return part->property(DecorativeProperty).toBool();
    });
}

// A button drawn with labels inside it: one control, read by its own name
// and description, whose labels are not listed again.
class AccessibleDrawnButton : public QAccessibleWidget
{
public:
    explicit AccessibleDrawnButton(QAbstractButton *button)
        : QAccessibleWidget(button, QAccessible::Button)
    {
    }

    int childCount() const override { return 0; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    QStringList actionNames() const override
    {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString &action) override
    {
        auto *button = static_cast<QAbstractButton *>(widget());
        if (action != pressAction())
            QAccessibleWidget::doAction(action);
        else if (button->isEnabled())
            button->click();
    }
};

class AccessibleFlatSwitch : public QAccessibleWidget
{
public:
    // A check box to assistive technology: Qt's AT-SPI bridge tells on and
    // off only for check boxes, and a screen reader reads a switch's state
    // the same way ("checked", "not checked").
    explicit AccessibleFlatSwitch(FlatSwitch *control)
        : QAccessibleWidget(control, QAccessible::CheckBox)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = flatSwitch()->isOn();
        return state;
    }

    // the labels and the knob inside are drawing, not controls of their own
    int childCount() const override { return 0; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    QStringList actionNames() const override
    {
        return QStringList{toggleAction(), pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString &action) override
    {
        if (action != toggleAction() && action != pressAction()) {
            QAccessibleWidget::doAction(action);
            return;
        }
        if (flatSwitch()->isEnabled())
            flatSwitch()->toggle();
    }

private:
    FlatSwitch *flatSwitch() const { return static_cast<FlatSwitch *>(widget()); }
};

class AccessibleMapView : public QAccessibleWidget
{
public:
    explicit AccessibleMapView(MapView *map) : QAccessibleWidget(map, QAccessible::Canvas) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Description)
            return QAccessibleWidget::text(kind);
        // the same six decimals as every coordinate the application stores
        const Coordinate centre = static_cast<MapView *>(widget())->centerCoordinate();
        return QString::asprintf("%.6f, %.6f", centre.latitude, centre.longitude);
    }

    QStringList actionNames() const override
    {
        return QAccessibleWidget::actionNames() +
               QStringList{increaseAction(),    decreaseAction(), scrollLeftAction(),
                           scrollRightAction(), scrollUpAction(), scrollDownAction()};
    }
    void doAction(const QString &action) override
    {
        auto *map = static_cast<MapView *>(widget());
        if (action == increaseAction())
            map->zoomStep(1);
        else if (action == decreaseAction())
            map->zoomStep(-1);
        else if (action == scrollLeftAction())
            map->panStep(-1, 0);
        else if (action == scrollRightAction())
            map->panStep(1, 0);
        else if (action == scrollUpAction())
            map->panStep(0, -1);
        else if (action == scrollDownAction())
            map->panStep(0, 1);
        else
            QAccessibleWidget::doAction(action);
    }
};

QAccessibleInterface *toolkitInterface(const QString &className, QObject *object)
{
    // asked once per class of the object's ancestry, its own class first
    if (className == QLatin1String(FlatSwitch::staticMetaObject.className()))
        return new AccessibleFlatSwitch(static_cast<FlatSwitch *>(object));
    if (className == QLatin1String(MapView::staticMetaObject.className()))
        return new AccessibleMapView(static_cast<MapView *>(object));
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget)
        return nullptr;
    if (className == QLatin1String("QPushButton") && drawnInside(widget))
        return new AccessibleDrawnButton(static_cast<QAbstractButton *>(widget));
    // reached only by widgets no class of their own describes better
    if (className == QLatin1String("QWidget"))
        return new AccessibleContainer(widget);
    return nullptr;
}

} // namespace

void installAccessibilityFactories()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    QAccessible::installFactory(toolkitInterface);
}

void makeValueLabel(QLabel *label, const QString &role)
{
    // with no name of its own, a label is named by its text
    label->setAccessibleName(QString());
    label->setAccessibleDescription(role);
}

void setDecorative(QWidget *widget, bool decorative)
{
    widget->setProperty(DecorativeProperty, decorative);
}

void setSiblingsCovered(QWidget *cover, bool covered)
{
    // children are listed bottom to top; uncovering frees every sibling, also
    // one raised over the cover meanwhile
    bool below = true;
    for (QObject *sibling : cover->parentWidget()->children()) {
        below = below && sibling != cover;
        if (sibling != cover)
            sibling->setProperty(CoveredProperty, covered && below);
    }
}
