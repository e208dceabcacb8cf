#include "FileBytes.h"
#include "GpxDocument.h"
#include "RouteTestWorld.h"
#include "TestMain.h"

#include "route/DateTimePicker.h"
#include "route/TrekmimeViewController.h"
#include "settings/PropertyList.h"
#include "shell/ScreenNeeds.h"
#include "ui/Accessibility.h"
#include "ui/FlatSwitch.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <QWheelEvent>

namespace {
const Coordinate Central{22.2846809, 114.1588};
const Coordinate Tst{22.2988, 114.1722};
const QString Busy = u"Trekmime is working,please turn off the Trekmime first!"_s;
} // namespace

// What the route screen adds to its trip, whose rules are tested in tests/modes.
class TrekmimeViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RouteTestWorld> m_world;
    std::unique_ptr<TrekmimeViewController> m_screen;

    TrekmimeViewController &open()
    {
        installAccessibilityFactories(); // as the application does, before any screen
        m_screen = std::make_unique<TrekmimeViewController>(ScreenNeeds::route(m_world->services()),
                                                            m_world->shell);
        m_screen->setAnimationDuration(0);
        m_screen->resize(390, 844);
        m_screen->loadViewIfNeeded();
        m_screen->show();
        return *m_screen;
    }
    template <class T> T *child(const char *name)
    {
        return m_screen->findChild<T *>(QLatin1String(name));
    }
    QString text(const char *label) { return child<QLabel>(label)->text(); }
    // Central to Tsim Sha Tsui, as the address picker hands them over
    void choosePlaces()
    {
        m_screen->startChosen(Central.latitude, Central.longitude, u"Central"_s);
        m_screen->endChosen(Tst.latitude, Tst.longitude, u"Tsim Sha Tsui"_s);
    }
    void pickTime(void (TrekmimeViewController::*choose)(), int minutes)
    {
        (m_screen.get()->*choose)();
        m_screen->datePicker()->step(DateTimePicker::Minute, minutes);
        m_screen->pickerButtonClicked();
    }

private slots:
    void init() { m_world = std::make_unique<RouteTestWorld>(); }
    void cleanup()
    {
        m_screen.reset();
        m_world.reset();
    }

    void planningShowsOverlayThenRoute()
    {
        TrekmimeViewController &screen = open();
        m_world->directions.setHeld(true);
        choosePlaces();
        QVERIFY(screen.HUD()->isVisible() && !screen.HUD()->isFinished());
        QVERIFY(
            m_world->directions.release(0, FakeDirectionsService::defaultAnswer({Central, Tst})));
        QTRY_VERIFY(screen.HUD()->isFinished());
        MapView *map = screen.mapView();
        QCOMPARE(map->annotations().size(), 2);
        QCOMPARE(map->annotations()[0]->coordinate(), Tst); // the start marker at the route's end
        QCOMPARE(map->overlays().first()->pointCount(), 3);
        // only one marker of each tag goes
        map->addAnnotation(std::make_shared<MapPointAnnotation>(Coordinate{1, 1}, 111111));
        screen.trip().plan();
        QVERIFY(m_world->directions.release(0, DirectionsAnswer::failure(u"x"_s)));
        QCOMPARE(map->annotations().size(), 1);
        QVERIFY(map->overlays().isEmpty());
    }

    void switchAndGuard()
    {
        TrekmimeViewController &screen = open();
        auto *enable = child<FlatSwitch>("enableSwitch");
        enable->toggle();
        QCOMPARE(m_world->alerts.alerts().last().message, u"Please choose Start"_s);
        QVERIFY(!enable->isOn());

        choosePlaces();
        QTRY_COMPARE(screen.points().size(), 3);
        pickTime(&TrekmimeViewController::chooseStartTime, 1);
        pickTime(&TrekmimeViewController::chooseEndTime, 3);
        QVERIFY(!child<FlatSwitch>("evenPaceSwitch")->isOn());
        QTest::keyClick(child<FlatSwitch>("evenPaceSwitch"), Qt::Key_Space);
        QTest::keyClick(enable, Qt::Key_Space);
        QCOMPARE(text("lb_tip"), u"Trekmime is working"_s);
        // even pace: a point a second of the two-minute trip, not the route's three
        QCOMPARE(screen.preferences().pointCount(), 121);
        m_world->clock.advance(180000);
        QTRY_VERIFY(std::abs(screen.mapView()->centerCoordinate().latitude - Tst.latitude) < 1e-6);

        for (auto choose :
             {&TrekmimeViewController::chooseStart, &TrekmimeViewController::chooseEnd,
              &TrekmimeViewController::chooseStartTime, &TrekmimeViewController::chooseEndTime,
              &TrekmimeViewController::addStop}) {
            (screen.*choose)();
            QVERIFY(m_world->hintShown(&screen, Busy));
        }
        // the even-pace switch and the pace are choices too
        child<FlatSwitch>("evenPaceSwitch")->toggle();
        QVERIFY(child<FlatSwitch>("evenPaceSwitch")->isOn() && screen.trip().evenPace());
        const double end = screen.trip().endTime();
        screen.choosePace(0);
        QCOMPARE(screen.trip().endTime(), end);
        QVERIFY(!screen.addressPicker() && !child<QWidget>("v_picker")->isVisible());
        QTest::mouseClick(child<QPushButton>("btn_exchange"), Qt::LeftButton);
        QCOMPARE(m_world->alerts.alerts().last().message, Busy);
        QCOMPARE(m_world->shell.toLocation, 0);

        enable->toggle();
        QVERIFY(!screen.timer() && screen.mapView()->annotations().isEmpty());
        QTest::mouseClick(child<QPushButton>("btn_exchange"), Qt::LeftButton);
        QCOMPARE(m_world->shell.toLocation, 1);
        QTest::mouseClick(child<QPushButton>("btn_info"), Qt::LeftButton);
        QCOMPARE(m_world->shell.infoViews, 1);
    }

    // "Load GPX…", reached by Tab after the last choice: a bad file is reported
    // and changes nothing; a good one's track is the route, drawn and
    // switched on without a routing request, its ends' addresses looked up.
    void loadsAGpxTrackAsTheRoute()
    {
        TrekmimeViewController &screen = open();
        m_world->geocoder.setAddress(Central, u"Central"_s);
        QTemporaryDir dir;
        const QString bad = dir.filePath(u"bad.gpx"_s), good = dir.filePath(u"good.gpx"_s);
        QVERIFY(writeBytes(bad, gpxDocument(R"(<rte><rtept lat="95" lon="1"/></rte>)")));
        QVERIFY(
            writeBytes(good, gpxDocument(R"(<rte><rtept lat="22.2846809" lon="114.1588"/><rtept )"
                                         R"(lat="22.29" lon="114.16"/><rtept lat="22.2988" )"
                                         R"(lon="114.1722"/></rte>)")));
        QString chosen = bad;
        screen.setFileChoice([&](QWidget *, FileChoice::Mode, const QString &) { return chosen; });
        QVERIFY(QTest::qWaitForWindowActive(&screen));
        child<FlatSwitch>("evenPaceSwitch")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        auto *load = child<QPushButton>("btn_gpx");
        QCOMPARE(QApplication::focusWidget(), load);
        QVERIFY(!QAccessible::queryAccessibleInterface(load)->text(QAccessible::Name).isEmpty());
        QTest::keyClick(load, Qt::Key_Space);
        QVERIFY(m_world->alerts.messages().last().contains(u"latitude"_s));
        QVERIFY(screen.points().isEmpty());

        chosen = good;
        QTest::keyClick(load, Qt::Key_Space);
        QCOMPARE(screen.mapView()->overlays().first()->pointCount(), 3);
        QTRY_COMPARE(text("lb_start"), u"Central"_s);
        QTRY_COMPARE(text("lb_end"), u"Unknow"_s); // the geocoder knows no address there
        pickTime(&TrekmimeViewController::chooseStartTime, 1);
        pickTime(&TrekmimeViewController::chooseEndTime, 3);
        child<FlatSwitch>("enableSwitch")->toggle();
        QCOMPARE(screen.preferences().pointCount(), 3);
        QCOMPARE(screen.preferences().startAddress(), u"Central"_s);
        QVERIFY(m_world->directions.requests().isEmpty());
    }

    // A stop is chosen with the address picker, planned through, marked
    // between the start and end markers, reached by Tab, and removed.
    void addAndRemoveAStop()
    {
        TrekmimeViewController &screen = open();
        choosePlaces();
        QTest::mouseClick(child<QPushButton>("addStopButton"), Qt::LeftButton);
        QPointer<SelectAddressViewController> picker = screen.addressPicker();
        picker->mapView()->setCenterCoordinate({22.29, 114.16});
        m_world->settlePicker(*picker, u"Admiralty"_s);
        QTRY_VERIFY(!picker->isLoading());
        picker->okButtonClicked();
        const Coordinate stop = screen.trip().stops().value(0).place;
        QVERIFY(std::abs(stop.latitude - 22.29) < 1e-6);
        QTRY_COMPARE(m_world->directions.requests().last(),
                     (QList<Coordinate>{Central, stop, Tst}));
        QTRY_VERIFY(!screen.trip().isPlanning());
        QList<int> tags;
        for (const MapAnnotationPtr &annotation : screen.mapView()->annotations())
            tags.append(annotation->tag());
        QCOMPARE(tags, (QList<int>{RouteStartAnnotationTag, RouteStopAnnotationTag,
                                   RouteEndAnnotationTag}));

        QVERIFY(QTest::qWaitForWindowActive(&screen));
        child<QWidget>("row_start")->setFocus();
        QStringList order;
        for (int i = 0; i < 7; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            order.append(QApplication::focusWidget()->accessibleName());
        }
        QCOMPARE(order, (QStringList{u"Remove stop 1"_s, u"Add stop"_s, u"Tsim Sha Tsui"_s,
                                     u"Please choose Start Time"_s, u"Please choose End Time"_s,
                                     u"Pace"_s, u"Even pace"_s}));
        QAccessibleInterface *remove =
            QAccessible::queryAccessibleInterface(child<QPushButton>("removeStopButton"));
        QCOMPARE(remove->text(QAccessible::Description), u"Admiralty"_s);
        remove->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(screen.trip().stops().isEmpty()); // the trip plans again (TripControllerTest)
        QTRY_VERIFY(!child<QPushButton>("removeStopButton"));
    }

    // A pace fills the end time from the start time and the route's length;
    // without both it says what is missing and leaves the end time alone.
    void paceFillsTheEndTime_data()
    {
        QTest::addColumn<bool>("places");
        QTest::addColumn<bool>("startTime");
        QTest::addColumn<int>("downs"); // presses of Down on the choice: 1 walk ... 4 drive
        QTest::addColumn<double>("kmh");
        QTest::addColumn<QString>("refusal");
        addRow("walk", true, true, 1, 5.0, QString());
        addRow("drive", true, true, 4, 50.0, QString());
        addRow("no start time", true, false, 1, 0.0, u"Please choose Start Time"_s);
        addRow("no route", false, true, 1, 0.0,
               u"Choose Start and End first: the pace needs the planned route"_s);
    }
    void paceFillsTheEndTime()
    {
        QFETCH(bool, places);
        QFETCH(bool, startTime);
        QFETCH(int, downs);
        QFETCH(double, kmh);
        QFETCH(QString, refusal);
        TrekmimeViewController &screen = open();
        if (places)
            choosePlaces();
        QTRY_VERIFY(!screen.trip().isPlanning());
        if (startTime)
            pickTime(&TrekmimeViewController::chooseStartTime, 1);
        const QString endBefore = text("lb_endTime");
        auto *pace = child<QComboBox>("paceChoice");
        for (int i = 0; i < downs; ++i)
            QTest::keyClick(pace, Qt::Key_Down);
        if (!refusal.isEmpty()) {
            QVERIFY(m_world->hintShown(&screen, refusal));
            QCOMPARE(text("lb_endTime"), endBefore);
            return;
        }
        // the trip's length at that speed, rounded up to a whole second
        const double meters = screen.trip().routeLengthMeters();
        const double end = screen.trip().startTime() + std::ceil(meters * 3.6 / kmh);
        QCOMPARE(screen.trip().endTime(), end);
        QCOMPARE(text("lb_endTime"),
                 QDateTime::fromSecsSinceEpoch(qint64(end)).toString(u"MM-dd HH:mm"_s));
        pickTime(&TrekmimeViewController::chooseEndTime, 3); // still editable
        QVERIFY(screen.trip().endTime() != end && pace->currentIndex() == -1);
    }

    void restoresARunningTrip()
    {
        const QVariantMap point{{u"lat"_s, 22.28}, {u"lng"_s, 114.15}};
        PropertyList::write(m_world->files().routeFile(),
                            QVariantMap{{u"enable"_s, u"1"_s},
                                        {u"start"_s, u"1699999000.5"_s},
                                        {u"end"_s, u"1700001000"_s},
                                        {u"points"_s, QVariantList{point, point}}});
        TrekmimeViewController &screen = open();
        QVERIFY(child<FlatSwitch>("enableSwitch")->isOn() && screen.timer());
        QCOMPARE(text("lb_startTime"), u"11-14 21:56"_s); // UTC in the tests
    }

    void datePickerByKeyboard()
    {
        TrekmimeViewController &screen = open();
        screen.chooseEndTime();
        DateTimePicker *picker = screen.datePicker();
        // the sheet holds the keyboard, and a screen reader finds nothing under it
        QVERIFY(QTest::qWaitForWindowActive(&screen));
        QTest::keyClick(picker, Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), picker);
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(&screen);
        QCOMPARE(face->childCount(), 1);
        QCOMPARE(face->child(0)->object(), child<QWidget>("v_picker"));
        QTest::keyClick(picker, Qt::Key_Up);   // already at the minimum
        QTest::keyClick(picker, Qt::Key_Down); // a day later
        QTest::keyClick(picker, Qt::Key_Right);
        QTest::keyClick(picker, Qt::Key_Down); // an hour later
        QTest::keyClick(picker, Qt::Key_Return);
        QVERIFY(!child<QWidget>("v_picker")->isVisible());
        QCOMPARE(text("lb_endTime"), u"11-15 23:13"_s);

        // confirming without moving stores the moment of opening, seconds and all
        m_world->clock.advance(7500);
        screen.chooseStartTime();
        m_world->clock.advance(30000);
        QTest::mouseClick(child<QPushButton>("btn_picker"), Qt::LeftButton);
        QCOMPARE(screen.trip().startTime(), double(1700000000 + 7));
    }

    void addressPickerReachesTheRightEnd()
    {
        TrekmimeViewController &screen = open();
        for (const bool end : {false, true}) {
            QTest::mouseClick(child<QPushButton>(end ? "row_end" : "row_start"), Qt::LeftButton);
            QPointer<SelectAddressViewController> picker = screen.addressPicker();
            picker->mapView()->setCenterCoordinate({end ? 22.3 : 22.28, 114.15});
            m_world->settlePicker(*picker, end ? u"Star Ferry"_s : u"Pier 7"_s);
            QTRY_VERIFY(!picker->isLoading());
            picker->okButtonClicked();
        }
        QCOMPARE(text("lb_start"), u"Pier 7"_s);
        QCOMPARE(text("lb_end"), u"Star Ferry"_s);
        QAccessibleInterface *row =
            QAccessible::queryAccessibleInterface(child<QPushButton>("row_start"));
        // the value is read first, then what it is; the labels inside are not read again
        QCOMPARE(row->text(QAccessible::Name), u"Pier 7"_s);
        QCOMPARE(row->text(QAccessible::Description), u"Start"_s);
        QCOMPARE(row->childCount(), 0);
        QVERIFY(std::abs(screen.trip().start().latitude - 22.28) < 1e-6 &&
                std::abs(screen.trip().end().latitude - 22.3) < 1e-6);
    }

    void pickerTurnsByDragTapWheelAndPage()
    {
        DateTimePicker picker;
        picker.resize(picker.sizeHint());
        const QDateTime start(QDate(2030, 1, 1), QTime(8, 0));
        picker.setMinimumDate(start);
        picker.setMaximumDate(DateTimePicker::distantFuture());
        picker.setDate(start);
        const int mid = picker.height() / 2;
        // the middles of the day, hour and minute columns
        const int day = picker.width() / 4, hour = picker.width() * 5 / 8,
                  minute = picker.width() * 7 / 8;
        // dragging the minutes up two rows: two minutes later
        QTest::mousePress(&picker, Qt::LeftButton, {}, QPoint(minute, mid));
        QMouseEvent move(QEvent::MouseMove, QPointF(minute, mid - 80),
                         picker.mapToGlobal(QPointF(minute, mid - 80)), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(&picker, &move);
        QVERIFY(!picker.grab().isNull()); // drawn mid-drag
        QTest::mouseRelease(&picker, Qt::LeftButton, {}, QPoint(minute, mid - 80));
        // a tap one row below the band: an hour later
        QTest::mouseClick(&picker, Qt::LeftButton, {}, QPoint(hour, mid + 40));
        // the wheel turns the day under it; Page Down then turns that column a week
        QWheelEvent wheel(QPointF(day, mid), picker.mapToGlobal(QPointF(day, mid)), {},
                          QPoint(0, -120), Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&picker, &wheel);
        QTest::keyClick(&picker, Qt::Key_PageDown);
        QCOMPARE(picker.date(), QDateTime(QDate(2030, 1, 9), QTime(9, 2)));
        QVERIFY(!picker.grab().isNull());
    }
};

TREKMIME_TEST(TrekmimeViewControllerTest)
#include "TrekmimeViewControllerTest.moc"
