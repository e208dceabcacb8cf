#include "TestMain.h"

#include "app/ModeScreenLayout.h"
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
#include <QTest>

#include <cmath>

// The controls as a screen reader or a test driver finds and works them.
namespace {

enum class Control { SwitchOn, SwitchOff, DisabledSwitch, Button, ModeButton, Map };

// the control, made inside `holder`, which owns it
QWidget *build(Control kind, QWidget *holder)
{
    switch (kind) {
    case Control::Button: {
        auto *button = new FlatButton(holder);
        button->setText(QStringLiteral("&Search"));
        return button;
    }
    case Control::ModeButton:
        return ModeScreenLayout::build(holder, QStringLiteral("Trekmime"), QString(),
                                       QStringLiteral("Spotmime"))
            .exchangeButton;
    case Control::Map:
        return new MapView(holder);
    default: {
        auto *control = new FlatSwitch(QRect(0, 0, 80, 30), holder);
        control->setAccessibleName(QStringLiteral("Enable"));
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
    // (the events that tell screen readers of changes reach nobody on the
    // offscreen platform, which has no accessibility bridge)
    void initTestCase() { installAccessibilityFactories(); }

    // each control's role, name and state, and its first action worked as a tap
    void controlsShowRoleNameStateAndAct_data()
    {
        QTest::addColumn<Control>("control");
        QTest::addColumn<int>("role");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("checked"); // -1: not checkable
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("emitted"); // -1: the action is not tried
        const QString toggle = QAccessibleActionInterface::toggleAction();
        const QString press = QAccessibleActionInterface::pressAction();
        const int button = QAccessible::Button;
        const QString enable = QStringLiteral("Enable");
        QTest::newRow("switch, on") << Control::SwitchOn << button << enable << 1 << toggle << 1;
        QTest::newRow("switch, off") << Control::SwitchOff << button << enable << 0 << toggle << 1;
        QTest::newRow("disabled switch stays")
            << Control::DisabledSwitch << button << enable << 0 << toggle << 0;
        QTest::newRow("flat button, by its title")
            << Control::Button << button << QStringLiteral("Search") << -1 << press << 1;
        // its text is an arrow and the other mode: it is known by its role
        QTest::newRow("mode button")
            << Control::ModeButton << button << QStringLiteral("Mode") << -1 << press << 1;
        QTest::newRow("map") << Control::Map << int(QAccessible::Canvas) << QStringLiteral("Map")
                             << -1 << QAccessibleActionInterface::setFocusAction() << -1;
    }
    void controlsShowRoleNameStateAndAct()
    {
        QFETCH(Control, control);
        QFETCH(int, role);
        QFETCH(QString, name);
        QFETCH(int, checked);
        QFETCH(QString, action);
        QFETCH(int, emitted);
        QWidget holder;
        QWidget *widget = build(control, &holder);
        auto *flatSwitch = qobject_cast<FlatSwitch *>(widget);
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
        QCOMPARE(int(face->role()), role);
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
        // a button's press shows it pressed for a moment before it clicks
        QTRY_COMPARE(spy.count(), emitted);
        if (flatSwitch) {
            QCOMPARE(flatSwitch->isOn(), (checked == 1) != (emitted > 0));
            QCOMPARE(bool(face->state().checked), flatSwitch->isOn());
        }
    }

    void mapPansAndZoomsFromTheKeyboard_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("north"); // the signs of the centre's and the zoom's moves
        QTest::addColumn<int>("east");
        QTest::addColumn<int>("zoom");
        QTest::newRow("left") << int(Qt::Key_Left) << QString() << 0 << -1 << 0;
        QTest::newRow("right") << int(Qt::Key_Right) << QString() << 0 << 1 << 0;
        QTest::newRow("up") << int(Qt::Key_Up) << QString() << 1 << 0 << 0;
        QTest::newRow("down") << int(Qt::Key_Down) << QString() << -1 << 0 << 0;
        QTest::newRow("plus") << int(Qt::Key_Plus) << QString() << 0 << 0 << 1;
        QTest::newRow("= on the plus key") << int(Qt::Key_Equal) << QString() << 0 << 0 << 1;
        QTest::newRow("minus sign") << 0x2212 << QString() << 0 << 0 << -1;
        QTest::newRow("increase action")
            << 0 << QAccessibleActionInterface::increaseAction() << 0 << 0 << 1;
        QTest::newRow("scroll left action")
            << 0 << QAccessibleActionInterface::scrollLeftAction() << 0 << -1 << 0;
    }
    void mapPansAndZoomsFromTheKeyboard()
    {
        QFETCH(int, key);
        QFETCH(QString, action);
        QFETCH(int, north);
        QFETCH(int, east);
        QFETCH(int, zoom);
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
        // a burst, as from a held key, comes to rest once; the key is sent
        // as it comes, since QTest knows no key for the minus sign
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        for (int i = 0; i < 3; ++i)
            key ? void(QApplication::sendEvent(&map, &press))
                : face->actionInterface()->doAction(action);
        QTRY_COMPARE(counter.settled, 2);
        QTest::qWait(60);
        QCOMPARE(counter.settled, 2);
        const Coordinate centre = map.centerCoordinate();
        const auto sign = [](double d) { return std::abs(d) < 1e-9 ? 0 : d > 0 ? 1 : -1; };
        QCOMPARE(sign(centre.latitude - Paris.latitude), north);
        QCOMPARE(sign(centre.longitude - Paris.longitude), east);
        QCOMPARE(map.zoomLevel(), zoomBefore + 3 * zoom);
        QCOMPARE(face->text(QAccessible::Description),
                 QString::asprintf("%.6f, %.6f", centre.latitude, centre.longitude));
    }

    void overlayTextIsReadWhole()
    {
        QWidget host;
        host.resize(200, 300);
        ProgressHUD *hud = ProgressHUD::showHUDAddedTo(&host, false);
        const QString label = QStringLiteral("Looking for the address of the place on the map");
        hud->setLabelText(label);
        hud->setDetailsLabelText(QStringLiteral("route points"));
        // too long for the box: cut short on screen
        QVERIFY(hud->findChild<QLabel *>(QStringLiteral("label"))->text() != label);
        QStringList texts;
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(hud);
        for (int i = 0; i < face->childCount(); ++i)
            if (face->child(i)->role() == QAccessible::StaticText)
                texts.append(face->child(i)->text(QAccessible::Name));
        QVERIFY2(texts.contains(label) && texts.contains(QStringLiteral("route points")),
                 qPrintable(texts.join(QLatin1Char('|'))));
    }
};

TREKMIME_TEST(AccessibilityTest)
#include "AccessibilityTest.moc"
