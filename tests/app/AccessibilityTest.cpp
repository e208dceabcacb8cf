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
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

// The controls as a screen reader or a test driver finds and works them
// through Qt's accessibility interfaces.
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

// counts the moves that came to rest
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

    void controlsShowRoleNameAndState_data()
    {
        QTest::addColumn<Control>("control");
        QTest::addColumn<int>("role");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<bool>("checked");
        QTest::addColumn<bool>("focusable");
        QTest::addColumn<QString>("defaultAction");
        const QString toggle = QAccessibleActionInterface::toggleAction();
        const QString press = QAccessibleActionInterface::pressAction();
        const QString focus = QAccessibleActionInterface::setFocusAction();
        const int button = QAccessible::Button;
        QTest::newRow("switch, on") << Control::SwitchOn << button << QStringLiteral("Enable")
                                    << true << true << false << toggle;
        QTest::newRow("switch, off") << Control::SwitchOff << button << QStringLiteral("Enable")
                                     << true << false << false << toggle;
        QTest::newRow("flat button, by its title")
            << Control::Button << button << QStringLiteral("Search") << false << false << true
            << press;
        // its text is an arrow and the other mode: it is known by its role
        QTest::newRow("mode button") << Control::ModeButton << button << QStringLiteral("Mode")
                                     << false << false << true << press;
        QTest::newRow("map") << Control::Map << int(QAccessible::Canvas) << QStringLiteral("Map")
                             << false << false << true << focus;
    }
    void controlsShowRoleNameAndState()
    {
        QFETCH(Control, control);
        QFETCH(int, role);
        QFETCH(QString, name);
        QFETCH(bool, checkable);
        QFETCH(bool, checked);
        QFETCH(bool, focusable);
        QFETCH(QString, defaultAction);
        QWidget holder;
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(build(control, &holder));
        QVERIFY(face);
        QCOMPARE(int(face->role()), role);
        QCOMPARE(face->text(QAccessible::Name), name);
        QCOMPARE(bool(face->state().checkable), checkable);
        QCOMPARE(bool(face->state().checked), checked);
        QCOMPARE(bool(face->state().focusable), focusable);
        QVERIFY(face->actionInterface());
        QCOMPARE(face->actionInterface()->actionNames().value(0), defaultAction);
        // the switch's on and off labels are not read out as text of their own
        if (checkable)
            QCOMPARE(face->childCount(), 0);
    }

    void actionsWorkAsATap_data()
    {
        QTest::addColumn<Control>("control");
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("emitted");
        const QString toggle = QAccessibleActionInterface::toggleAction();
        const QString press = QAccessibleActionInterface::pressAction();
        QTest::newRow("toggle turns a switch off") << Control::SwitchOn << toggle << 1;
        QTest::newRow("press turns a switch on") << Control::SwitchOff << press << 1;
        QTest::newRow("a disabled switch stays") << Control::DisabledSwitch << toggle << 0;
        QTest::newRow("press clicks a flat button") << Control::Button << press << 1;
        QTest::newRow("press clicks the mode button") << Control::ModeButton << press << 1;
    }
    void actionsWorkAsATap()
    {
        QFETCH(Control, control);
        QFETCH(QString, action);
        QFETCH(int, emitted);
        QWidget holder;
        QWidget *widget = build(control, &holder);
        auto *flatSwitch = qobject_cast<FlatSwitch *>(widget);
        const bool wasOn = flatSwitch && flatSwitch->isOn();
        QSignalSpy spy(widget, flatSwitch ? SIGNAL(valueChanged(bool)) : SIGNAL(clicked(bool)));
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);

        face->actionInterface()->doAction(action);

        // a button's press shows it pressed for a moment before it clicks
        QTRY_COMPARE(spy.count(), emitted);
        if (!flatSwitch)
            return;
        const bool flipped = emitted > 0;
        QCOMPARE(flatSwitch->isOn(), wasOn != flipped);
        if (flipped)
            QCOMPARE(spy.first().first().toBool(), !wasOn);
        QCOMPARE(bool(face->state().checked), flatSwitch->isOn());
    }

    void mapPansAndZoomsFromTheKeyboard_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("north"); // the sign of the centre's move
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
        QCOMPARE(face->text(QAccessible::Description), QStringLiteral("48.856600, 2.352200"));
        const double zoomBefore = map.zoomLevel();

        // a burst, as from a held key, comes to rest once
        for (int i = 0; i < 3; ++i) {
            if (key) {
                // sent as it comes, since QTest knows no key for the minus sign
                QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
                QApplication::sendEvent(&map, &press);
            } else
                face->actionInterface()->doAction(action);
        }

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
        for (int i = 0; i < face->childCount(); ++i) {
            if (face->child(i)->role() == QAccessible::StaticText)
                texts.append(face->child(i)->text(QAccessible::Name));
        }
        QVERIFY2(texts.contains(label), qPrintable(texts.join(QLatin1Char('|'))));
        QVERIFY2(texts.contains(QStringLiteral("route points")),
                 qPrintable(texts.join(QLatin1Char('|'))));
    }
};

TREKMIME_TEST(AccessibilityTest)
#include "AccessibilityTest.moc"
