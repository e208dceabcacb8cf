#include "RouteTestWorld.h"
#include "TestMain.h"

#include "app/ProgressHUD.h"
#include "route/DateTimePicker.h"
#include "route/SelectAddressViewController.h"
#include "route/TrekmimeViewController.h"
#include "settings/TMPreferenceUtil.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(Coordinate)

namespace {
const Coordinate Central{22.2846809, 114.1588};
const Coordinate Tst{22.2988, 114.1722};
const QString Busy = QStringLiteral("Trekmime is working,please turn off the Trekmime first!");
const qint32 Now = 1700000000; // the test clock's start

QVariantMap point(double lat, double lng)
{
    return {{QStringLiteral("lat"), lat}, {QStringLiteral("lng"), lng}};
}

DirectionsAnswer route(QList<Coordinate> coordinates)
{
    return DirectionsAnswer::found({DirectionsRoute{std::move(coordinates), 0, 0}});
}

bool near(const Coordinate &a, const Coordinate &b)
{
    return std::abs(a.latitude - b.latitude) < 1e-6 && std::abs(a.longitude - b.longitude) < 1e-6;
}

QList<int> tags(MapView *map)
{
    QList<int> result;
    const auto annotations = map->annotations();
    for (const auto &a : annotations)
        result.append(a->tag());
    return result;
}
} // namespace

// The route screen: planning and its markers, the switch and the preview,
// the guard, restoring from the route file, and the time and place choices.
class TrekmimeViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RouteTestWorld> m_world;
    std::unique_ptr<TrekmimeViewController> m_screen;

    TrekmimeViewController &open()
    {
        m_screen = std::make_unique<TrekmimeViewController>(m_world->services(), m_world->shell);
        m_screen->setAnimationDuration(0);
        m_screen->resize(390, 844);
        m_screen->loadViewIfNeeded();
        m_screen->show();
        return *m_screen;
    }
    // both places chosen and the route answered
    void plan(TrekmimeViewController &screen)
    {
        screen.startChosen(Central.latitude, Central.longitude, QStringLiteral("Central"));
        screen.endChosen(Tst.latitude, Tst.longitude, QStringLiteral("Tsim Sha Tsui"));
        QTRY_COMPARE(screen.points().size(), 3);
    }
    bool hintShown(const QString &text)
    {
        const auto huds = m_screen->findChildren<ProgressHUD *>();
        for (ProgressHUD *hud : huds) {
            if (hud->labelText() == text)
                return true;
        }
        return false;
    }

private slots:
    void init() { m_world = std::make_unique<RouteTestWorld>(); }
    void cleanup()
    {
        m_screen.reset();
        m_world.reset();
    }

    void planningMarksAndDraws()
    {
        TrekmimeViewController &screen = open();
        screen.startChosen(Central.latitude, Central.longitude, QStringLiteral("Central"));
        QCOMPARE(m_world->directions.requests().size(), 0); // the end is still missing
        screen.endChosen(Tst.latitude, Tst.longitude, QStringLiteral("Tsim Sha Tsui"));
        QCOMPARE(m_world->directions.requests().size(), 1);
        QTRY_COMPARE(screen.points().size(), 3);
        QCOMPARE(screen.points().first().toPropertyList(),
                 QVariant(point(Central.latitude, Central.longitude)));
        QCOMPARE(screen.points().last().toPropertyList(),
                 QVariant(point(Tst.latitude, Tst.longitude)));
        QVERIFY(!screen.isRouteError());

        // the start marker at the last point, the end marker at the first
        const auto annotations = screen.mapView()->annotations();
        QCOMPARE(tags(screen.mapView()), (QList<int>{111111, 222222}));
        QCOMPARE(annotations[0]->coordinate(), Tst);
        QCOMPARE(annotations[1]->coordinate(), Central);
        QVERIFY(!screen.viewForAnnotation(screen.mapView(), *annotations[0]).isNull());
        QCOMPARE(screen.mapView()->overlays().size(), 1);
        QCOMPARE(screen.mapView()->overlays().first()->pointCount(), 3);
        const auto renderer = screen.rendererForOverlay(screen.mapView(), MapPolyline());
        QCOMPARE(renderer->lineWidth, 2.5);
        QCOMPARE(renderer->strokeColor, QColor(Qt::green));
        // framed on the two places
        QTRY_VERIFY(
            near(screen.mapView()->region().center,
                 {(Central.latitude + Tst.latitude) / 2, (Central.longitude + Tst.longitude) / 2}));
    }

    void failedPlanKeepsPointsAndLastAnswerWins()
    {
        TrekmimeViewController &screen = open();
        plan(screen);
        m_world->directions.setHeld(true);
        screen.drawMapLine();
        screen.drawMapLine();
        QCOMPARE(m_world->directions.pending().size(), 2);
        QVERIFY(m_world->directions.release(1, route({{1, 1}, {2, 2}})));
        QCOMPARE(screen.points().size(), 2);
        QVERIFY(m_world->directions.release(0, DirectionsAnswer::failure(QStringLiteral("x"))));
        QVERIFY(screen.isRouteError());
        QCOMPARE(screen.points().size(), 2); // the last good route's points stay
        QVERIFY(screen.mapView()->annotations().isEmpty());
        QVERIFY(screen.mapView()->overlays().isEmpty());
    }

    void cleanRemovesFirstTaggedOnly()
    {
        TrekmimeViewController &screen = open();
        MapView *map = screen.mapView();
        for (int tag : {111111, 222222, 111111, 0, 222222})
            map->addAnnotation(std::make_shared<MapPointAnnotation>(Coordinate{1, 1}, tag));
        map->addOverlay(std::make_shared<MapPolyline>());
        map->addOverlay(std::make_shared<MapPolyline>());
        screen.cleanStart();
        QCOMPARE(tags(map), (QList<int>{222222, 111111, 0, 222222}));
        screen.cleanEnd();
        QCOMPARE(tags(map), (QList<int>{111111, 0, 222222}));
        screen.cleanPath();
        QVERIFY(map->overlays().isEmpty());
        // a single-point route puts both markers on it
        m_world->directions.setAnswer(route({{5, 6}}));
        screen.startChosen(Central.latitude, Central.longitude, QStringLiteral("Central"));
        screen.endChosen(Tst.latitude, Tst.longitude, QStringLiteral("Tsim Sha Tsui"));
        QTRY_COMPARE(screen.points().size(), 1);
        // the answer cleared one of each tag, then marked both ends on the one point
        QCOMPARE(tags(map), (QList<int>{0, 111111, 222222}));
        QCOMPARE(map->annotations()[1]->coordinate(), (Coordinate{5, 6}));
        QCOMPARE(map->annotations()[2]->coordinate(), (Coordinate{5, 6}));
    }

    void switchOnWritesAndPreviews()
    {
        TrekmimeViewController &screen = open();
        plan(screen);
        // a failing check: alert, switch back off, nothing written
        auto *enable = screen.findChild<FlatSwitch *>(QStringLiteral("enableSwitch"));
        enable->setOn(false);
        enable->toggle();
        QCOMPARE(m_world->alerts.alerts().last().message,
                 QStringLiteral("Please choose Start Time"));
        QVERIFY(!enable->isOn());
        QVERIFY(m_world->preferences().routePreference().isEmpty());

        screen.chooseStartTime();
        screen.datePicker()->step(DateTimePicker::Minute, 1);
        screen.pickerButtonClicked();
        screen.chooseEndTime();
        screen.datePicker()->step(DateTimePicker::Minute, 3);
        screen.pickerButtonClicked();
        QCOMPARE(screen.startTime(), double(Now + 60));
        QCOMPARE(screen.endTime(), double(Now + 180));

        // the switch plans again; its answer comes after the write
        m_world->directions.setAnswer(route({Central, {22.29, 114.16}, {22.295, 114.17}, Tst}));
        enable->toggle();
        QVERIFY(enable->isOn());
        QVERIFY(screen.timer() && screen.timer()->isActive());
        QVERIFY(screen.panelTop() < 0);
        QCOMPARE(screen.findChild<QLabel *>(QStringLiteral("lb_tip"))->text(),
                 QStringLiteral("Trekmime is working"));
        const QVariantMap written = m_world->preferences().routePreference().toPropertyList();
        QCOMPARE(written.value(QStringLiteral("start")).toString(),
                 QStringLiteral("1700000060.000000"));
        QCOMPARE(written.value(QStringLiteral("s")).toString(), QStringLiteral("Central"));
        QCOMPARE(written.value(QStringLiteral("points")).toList().size(), 3);

        // memory takes the new route, the file keeps the one written
        QTRY_COMPARE(screen.preferences().pointCount(), 4);
        QCOMPARE(m_world->preferences().routePreference().pointCount(), 3);

        // the preview: the first point before the start, then in proportion, then the last
        MapView *map = screen.mapView();
        m_world->clock.advance(1000);
        QVERIFY(near(map->centerCoordinate(), Central));
        m_world->clock.advance(59000 + 60000); // half way: index 2 of 4
        QVERIFY(near(map->centerCoordinate(), {22.295, 114.17}));
        m_world->clock.advance(60000);
        QVERIFY(near(map->centerCoordinate(), Tst));

        // while on: every choice and the mode button are refused
        for (auto choose :
             {&TrekmimeViewController::chooseStart, &TrekmimeViewController::chooseEnd,
              &TrekmimeViewController::chooseStartTime, &TrekmimeViewController::chooseEndTime}) {
            (screen.*choose)();
        }
        QVERIFY(hintShown(Busy));
        QVERIFY(!screen.addressPicker());
        QVERIFY(!screen.findChild<QWidget *>(QStringLiteral("v_picker"))->isVisible());
        screen.exchange();
        QCOMPARE(m_world->alerts.alerts().last().message, Busy);
        QCOMPARE(m_world->shell.toLocation, 0);

        // switching off writes "enable" "0" and keeps the rest as it is in memory
        enable->toggle();
        QVERIFY(!screen.timer());
        QVERIFY(screen.panelTop() >= 0);
        QVERIFY(map->annotations().isEmpty());
        const QVariantMap off = m_world->preferences().routePreference().toPropertyList();
        QCOMPARE(off.value(QStringLiteral("enable")).toString(), QStringLiteral("0"));
        QCOMPARE(off.value(QStringLiteral("points")).toList().size(), 4);
        QCOMPARE(off.value(QStringLiteral("start")), written.value(QStringLiteral("start")));
        screen.exchange();
        QCOMPARE(m_world->shell.toLocation, 1);
    }

    void restore_data()
    {
        QTest::addColumn<QVariantMap>("record");
        QTest::addColumn<bool>("on");
        QTest::addColumn<int>("requests");
        QTest::addColumn<Coordinate>("centre");
        QTest::newRow("no file") << QVariantMap() << false << 0 << Coordinate{};
        const QVariantList points{point(22.28, 114.15), point(22.29, 114.16), point(22.3, 114.17)};
        QVariantMap off{{QStringLiteral("enable"), QStringLiteral("0")},
                        {QStringLiteral("points"), points}};
        QTest::newRow("off") << off << false << 0 << Coordinate{};
        QVariantMap on{{QStringLiteral("enable"), QStringLiteral("1")},
                       {QStringLiteral("start"), QStringLiteral("1699999000.500000")},
                       {QStringLiteral("end"), QStringLiteral("1700001000.000000")},
                       {QStringLiteral("s"), QStringLiteral("Central")},
                       {QStringLiteral("e"), QStringLiteral("TST")},
                       {QStringLiteral("points"), points}};
        // half way through: index (1000 x 3) / 2000 = 1
        QTest::newRow("on") << on << true << 1 << Coordinate{22.29, 114.16};
        QVariantMap empty = on;
        empty.insert(QStringLiteral("points"), QVariantList());
        QTest::newRow("on without points") << empty << true << 0 << Coordinate{0, 0};
    }
    void restore()
    {
        QFETCH(QVariantMap, record);
        QFETCH(bool, on);
        QFETCH(int, requests);
        QFETCH(Coordinate, centre);
        if (!record.isEmpty())
            QVERIFY(
                m_world->preferences().writeRoutePreference(RouteRecord::fromPropertyList(record)));
        TrekmimeViewController &screen = open();
        QCOMPARE(screen.findChild<FlatSwitch *>(QStringLiteral("enableSwitch"))->isOn(), on);
        QCOMPARE(m_world->directions.requests().size(), requests);
        QCOMPARE(bool(screen.timer()), on);
        if (!on) {
            QCOMPARE(screen.findChild<QLabel *>(QStringLiteral("lb_start"))->text(),
                     QStringLiteral("Please choose Start"));
            QCOMPARE(screen.findChild<QLabel *>(QStringLiteral("lb_tip"))->text(), QString());
            return;
        }
        QCOMPARE(screen.startTime(), 1699999000.0);
        QCOMPARE(screen.findChild<QLabel *>(QStringLiteral("lb_start"))->text(),
                 QStringLiteral("Central"));
        QCOMPARE(screen.findChild<QLabel *>(QStringLiteral("lb_startTime"))->text(),
                 QStringLiteral("11-14 21:56")); // UTC in the tests
        QVERIFY(screen.panelTop() < 0);
        QVERIFY(near(screen.mapView()->centerCoordinate(), centre));
    }

    void datePickerByKeyboard()
    {
        TrekmimeViewController &screen = open();
        screen.chooseEndTime();
        auto *holder = screen.findChild<QWidget *>(QStringLiteral("v_picker"));
        QVERIFY(holder->isVisible());
        DateTimePicker *picker = screen.datePicker();
        QCOMPARE(picker->date().toSecsSinceEpoch(), qint64(Now));
        QCOMPARE(picker->minimumDate().toSecsSinceEpoch(), qint64(Now));
        QTest::keyClick(picker, Qt::Key_Up);   // already at the minimum
        QTest::keyClick(picker, Qt::Key_Down); // a day later
        QTest::keyClick(picker, Qt::Key_Right);
        QTest::keyClick(picker, Qt::Key_Down); // an hour later
        QTest::keyClick(picker, Qt::Key_Return);
        QVERIFY(!holder->isVisible());
        QVERIFY(!screen.isStart());
        QCOMPARE(screen.endTime(), double(Now + 86400 + 3600));
        QCOMPARE(screen.findChild<QLabel *>(QStringLiteral("lb_endTime"))->text(),
                 QStringLiteral("11-15 23:13"));

        // confirming without moving stores the moment of opening, seconds and all
        m_world->clock.advance(7500);
        screen.chooseStartTime();
        m_world->clock.advance(30000);
        QTest::mouseClick(screen.findChild<QPushButton *>(QStringLiteral("btn_picker")),
                          Qt::LeftButton);
        QCOMPARE(screen.startTime(), double(Now + 7));
    }

    void addressChoices()
    {
        TrekmimeViewController &screen = open();
        auto *row = screen.findChild<QPushButton *>(QStringLiteral("row_start"));
        QTest::mouseClick(row, Qt::LeftButton);
        QPointer<SelectAddressViewController> picker = screen.addressPicker();
        QVERIFY(picker);
        picker->cancelButtonClicked(); // zeros: nothing changes
        QCOMPARE(screen.startCoordinate(), Coordinate{});
        screen.startChosen(0.0, 114.1, QStringLiteral("on the equator"));
        QCOMPARE(screen.findChild<QLabel *>(QStringLiteral("lb_start"))->text(),
                 QStringLiteral("Please choose Start"));
        screen.startChosen(22.3, 114.1, QStringLiteral("Kowloon"));
        QCOMPARE(screen.startCoordinate(), (Coordinate{22.3, 114.1}));
        QCOMPARE(screen.findChild<QLabel *>(QStringLiteral("lb_start"))->text(),
                 QStringLiteral("Kowloon"));
        QAccessibleInterface *access = QAccessible::queryAccessibleInterface(row);
        QCOMPARE(access->text(QAccessible::Name), QStringLiteral("Start"));
        QCOMPARE(access->text(QAccessible::Description), QStringLiteral("Kowloon"));

        QTest::mouseClick(screen.findChild<QPushButton *>(QStringLiteral("btn_info")),
                          Qt::LeftButton);
        QCOMPARE(m_world->shell.infoViews, 1);
    }

    void panelOnTallScreen_data()
    {
        QTest::addColumn<int>("pixelHeight");
        QTest::addColumn<int>("visible"); // of the panel once up
        QTest::newRow("ordinary") << 1334 << 54;
        QTest::newRow("tall") << 2532 << 78;
    }
    void panelOnTallScreen()
    {
        QFETCH(int, pixelHeight);
        QFETCH(int, visible);
        m_world->deviceMetrics = FixedDeviceMetrics(QStringLiteral("16.0"), pixelHeight);
        TrekmimeViewController &screen = open();
        auto *arrow = screen.findChild<QPushButton *>(QStringLiteral("btn_upDown"));
        QCOMPARE(arrow->text(), QStringLiteral("\u2b06\ufe0f"));
        QTest::mouseClick(arrow, Qt::LeftButton);
        const QWidget *panel = screen.findChild<QWidget *>(QStringLiteral("v_top"));
        QCOMPARE(panel->y() + panel->height(), visible);
        QCOMPARE(arrow->text(), QStringLiteral("\u2b07\ufe0f"));
        QTest::mouseClick(arrow, Qt::LeftButton);
        QCOMPARE(panel->y(), 0);
        const int bottom = screen.findChild<QWidget *>(QStringLiteral("bottomView"))->height();
        QCOMPARE(bottom, pixelHeight > 2400 ? 104 : 70);
    }

    // a screen closed while its route is being planned hears nothing
    void closedWhilePlanning()
    {
        m_world->directions.setHeld(true);
        TrekmimeViewController &screen = open();
        screen.startChosen(Central.latitude, Central.longitude, QStringLiteral("Central"));
        screen.endChosen(Tst.latitude, Tst.longitude, QStringLiteral("Tsim Sha Tsui"));
        QCOMPARE(m_world->directions.pending().size(), 1);
        m_screen.reset();
        QVERIFY(!m_world->directions.release(0, route({{1, 1}, {2, 2}})));
    }
};

TREKMIME_TEST(TrekmimeViewControllerTest)
#include "TrekmimeViewControllerTest.moc"
