#include "ui/Accessibility.h"

#include "ui/FlatSwitch.h"
#include "ui/MapView.h"

#include <QAccessibleWidget>

namespace {

class AccessibleFlatSwitch : public QAccessibleWidget
{
public:
    explicit AccessibleFlatSwitch(FlatSwitch *control)
        : QAccessibleWidget(control, QAccessible::Button)
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
