#include "TestMain.h"

#include "app/ProgressHUD.h"
#include "ui/Accessibility.h"
#include "ui/FlatButton.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"
#include "ui/MapViewDelegate.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalSpy>

#include <cmath>

namespace {

enum class Control { SwitchOn, DisabledSwitch, Button, Map };

QWidget *build(Control kind, QWidget *holder)
{
    switch (kind) {
    case Control::Button: {
        auto *button = new FlatButton(holder);
        button->setText(u"&Search"_s);
        return button;
    }
    case Control::Map:
        return new MapView(holder);
    default: {
        auto *control = new FlatSwitch(QRect(0, 0, 80, 30), holder);
        control->setAccessibleName(u"Enable"_s);
        control->setScrollDuration(0);
        control->setOn(kind == Control::SwitchOn);
        control->setEnabled(kind != Control::DisabledSwitch);
        return control;
    }
    }
}

struct SettleCounter : MapViewDelegate
{
    int settled = 0;
    void regionDidChangeAnimated(MapView *, bool) override { ++settled; }
};

const Coordinate Paris{48.8566, 2.3522};

} // namespace

class AccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installAccessibilityFactories(); }

    void controlsShowRoleNameStateAndAct_data()
    {
        QTest::addColumn<Control>("control");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("checked"); // -1: not checkable
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("emitted"); // -1: the action is not tried
        const QString toggle = QAccessibleActionInterface::toggleAction();
        const QString press = QAccessibleActionInterface::pressAction();
        const QString enable = u"Enable"_s;
        addRow("switch, on", Control::SwitchOn, enable, 1, toggle, 1);
        addRow("disabled switch stays", Control::DisabledSwitch, enable, 0, toggle, 0);
        addRow("flat button, by its title", Control::Button, u"Search"_s, -1, press, 1);
        addRow("map, a canvas", Control::Map, u"Map"_s, -1,
               QAccessibleActionInterface::setFocusAction(), -1);
    }
    void controlsShowRoleNameStateAndAct()
    {
        QFETCH(Control, control);
        QFETCH(QString, name);
        QFETCH(int, checked);
        QFETCH(QString, action);
        QFETCH(int, emitted);
        QWidget holder;
        QWidget *widget = build(control, &holder);
        auto *flatSwitch = qobject_cast<FlatSwitch *>(widget);
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
        QCOMPARE(face->role(), control == Control::Map ? QAccessible::Canvas
                               : flatSwitch            ? QAccessible::CheckBox
                                                       : QAccessible::Button);
        QCOMPARE(face->text(QAccessible::Name), name);
        QCOMPARE(bool(face->state().checkable), checked >= 0);
        QCOMPARE(bool(face->state().checked), checked == 1);
        // a switch takes no focus, and its labels are not read out as text of their own
        QCOMPARE(bool(face->state().focusable), !flatSwitch);
        QVERIFY(!flatSwitch || face->childCount() == 0);
        QCOMPARE(face->actionInterface()->actionNames().value(0), action);
        if (emitted < 0)
            return;
        QSignalSpy spy(widget, flatSwitch ? SIGNAL(valueChanged(bool)) : SIGNAL(clicked(bool)));
        face->actionInterface()->doAction(checked == 0 ? QAccessibleActionInterface::pressAction()
                                                       : action);
        QTRY_COMPARE(spy.count(), emitted);
        if (flatSwitch) // the state read out follows the new value
            QCOMPARE(bool(face->state().checked), (checked == 1) != (emitted > 0));
    }

    void mapPansAndZoomsFromTheKeyboard_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QList<int>>("moves"); // north and east (signs), levels zoomed in
        using L = QList<int>;
        addRow("arrow", int(Qt::Key_Up), QString(), L{1, 0, 0});
        addRow("= on the plus key", int(Qt::Key_Equal), QString(), L{0, 0, 3});
        addRow("minus sign", 0x2212, QString(), L{0, 0, -3});
        addRow("scroll left action", 0, QAccessibleActionInterface::scrollLeftAction(),
               L{0, -1, 0});
    }
    void mapPansAndZoomsFromTheKeyboard()
    {
        QFETCH(int, key);
        QFETCH(QString, action);
        QFETCH(QList<int>, moves);
        MapView map;
        map.resize(390, 844);
        map.setWheelSettleDelay(40);
        map.show();
        QVERIFY(QTest::qWaitForWindowExposed(&map));
        SettleCounter counter;
        map.setDelegate(&counter);
        map.setRegion(CoordinateRegionMakeWithDistance(Paris, 2000, 2000));
        QTRY_COMPARE(counter.settled, 1);
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(&map);
        const double zoomBefore = map.zoomLevel();
        // a held key's burst comes to rest once; sent raw, as QTest has no minus sign
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        for (int i = 0; i < 3; ++i)
            key ? void(QApplication::sendEvent(&map, &press))
                : face->actionInterface()->doAction(action);
        QTRY_COMPARE(counter.settled, 2);
        QTest::qWait(60);
        QCOMPARE(counter.settled, 2);
        const Coordinate centre = map.centerCoordinate();
        const auto sign = [](double d) { return std::abs(d) < 1e-9 ? 0 : d > 0 ? 1 : -1; };
        QCOMPARE((QList<int>{sign(centre.latitude - Paris.latitude),
                             sign(centre.longitude - Paris.longitude),
                             qRound(map.zoomLevel() - zoomBefore)}),
                 moves);
        QCOMPARE(face->text(QAccessible::Description),
                 QString::asprintf("%.6f, %.6f", centre.latitude, centre.longitude));
    }

    void overlayTextIsReadWhole()
    {
        QWidget host;
        host.resize(200, 300);
        ProgressHUD *hud = ProgressHUD::showHUDAddedTo(&host, false);
        const QString label = u"Looking for the address of the place on the map"_s;
        hud->setLabelText(label);
        QVERIFY(hud->findChild<QLabel *>(u"label"_s)->text() != label); // cut short
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(hud);
        QStringList texts;
        for (int i = 0; i < face->childCount(); ++i)
            texts.append(face->child(i)->text(QAccessible::Name));
        QVERIFY(texts.contains(label));
        QCOMPARE(QAccessible::queryAccessibleInterface(&host)->childCount(), 1);
        hud->hide(false); // faded out, it stays in place with nothing to read
        QCOMPARE(QAccessible::queryAccessibleInterface(&host)->childCount(), 0);
    }
};

TREKMIME_TEST(AccessibilityTest)
#include "AccessibilityTest.moc"
