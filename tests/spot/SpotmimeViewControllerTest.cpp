#include "SpotWorld.h"
#include "TestMain.h"

#include "ui/Accessibility.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>

// The fixed-location screen's wiring; the writes themselves are tested in tests/modes.
class SpotmimeViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<SpotWorld> m;

    template <class T> T *child(const char *name) const
    {
        return m->screen->findChild<T *>(QLatin1String(name));
    }
    QString text(const char *label) const { return child<QLabel>(label)->text(); }
    // what a screen reader reads out: the name, then the description
    QString readOut(const char *name) const
    {
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(child<QWidget>(name));
        return face->text(QAccessible::Name) + u" -- "_s + face->text(QAccessible::Description);
    }
    Coordinate centre() const { return child<MapView>("mainMapView")->centerCoordinate(); }
    void search(const QString &typed)
    {
        child<QLineEdit>("searchField")->setText(typed);
        QTest::mouseClick(child<QPushButton>("searchButton"), Qt::LeftButton);
    }
    void answerForTheCentre(const QString &address)
    {
        auto *map = child<MapView>("mainMapView");
        m->geocoder.setAddress(map->centerCoordinate(), address);
        m->screen->regionDidChangeAnimated(map, false);
        SpotWorld::settle();
    }
    static void verifyNear(const Coordinate &a, const Coordinate &b)
    {
        QVERIFY(qAbs(a.latitude - b.latitude) < 1e-6 && qAbs(a.longitude - b.longitude) < 1e-6);
    }

private slots:
    void init() { m = std::make_unique<SpotWorld>(); }
    void cleanup() { m.reset(); }

    void firstDisplay()
    {
        for (const bool on : {true, false}) { // the stored place, or the device
            SpotWorld::storeLocation(*m, on ? u"1"_s : u"0"_s);
            m->open({22.3, 114.17});
            const Coordinate shown = on ? Coordinate{48.8584, 2.2945} : Coordinate{22.3, 114.17};
            verifyNear(centre(), shown);
            QCOMPARE(child<FlatSwitch>("enableSwitch")->isOn(), on);
            QCOMPARE(text("lb_location"),
                     QString::asprintf("%f\n%f", shown.latitude, shown.longitude));
        }
    }

    void searching_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<Coordinate>("to"); // {10, 10}: the map stays
        QTest::addColumn<QString>("lookup");
        const Coordinate stays{10, 10};
        addRow("pair", "#:48.85,2.29", Coordinate{48.85, 2.29}, QString());
        addRow("one part", "#:48.85", stays, QString());
        for (const char *typed : {"#:10,1e999", "#:inf,10", "#:10, nan", "#:-INF,2", "#:-1e400,2"})
            addRow(typed, typed, stays, QString());
        addRow("blank", "   ", stays, QString());
        addRow("address", " Louvre, Paris ", Coordinate{48.8606, 2.3376}, "Louvre, Paris");
        addRow("unknown address: alerted", "Atlantis", stays, "Atlantis");
    }
    void searching()
    {
        QFETCH(QString, typed);
        QFETCH(Coordinate, to);
        QFETCH(QString, lookup);
        m->geocoder.setCoordinate(u"Louvre, Paris"_s, {48.8606, 2.3376});
        m->open({10, 10});
        search(typed);
        SpotWorld::settle();
        QCOMPARE(m->geocoder.forwardRequests(),
                 lookup.isNull() ? QStringList{} : QStringList{lookup});
        QCOMPARE(m->alerts.messages().size(), int(typed == u"Atlantis"_s));
        const bool kept = to == Coordinate{10, 10} && lookup.isNull();
        QCOMPARE(child<QLineEdit>("searchField")->text(), kept ? typed : QString());
        verifyNear(centre(), to);
    }

    void addressOfTheCentre()
    {
        m->open({22.2793, 114.1628});
        answerForTheCentre(u"Admiralty, Hong Kong"_s);
        QCOMPARE(readOut("addressLabel"), u"Admiralty, Hong Kong -- Address"_s);
        QCOMPARE(readOut("lb_location"), text("lb_location") + u" -- Coordinate"_s);
        search(u"#:0.5,0.5"_s);
        QVERIFY(child<QWidget>("spinner")->isVisible());
        QTRY_COMPARE(readOut("addressLabel"), u"Unknow -- Address"_s); // slow under sanitizers
    }

    void overlayBeforeAndAfterTheFirstSearchThenPositionFailure()
    {
        m->open();
        QTest::mouseClick(child<QPushButton>("btn_mine"), Qt::LeftButton);
        QVERIFY(!m->screen->HUD()->isVisible());
        SpotWorld::settle();
        // the overlay has no view until the first search gives it the window
        search(u"nowhere at all"_s);
        SpotWorld::settle();
        QTest::mouseClick(child<QPushButton>("btn_mine"), Qt::LeftButton);
        ProgressHUD *hud = m->screen->HUD();
        QVERIFY(hud->isVisible() && !hud->isFinished());
        QCOMPARE(hud->geometry(), m->screen->window()->rect());
        const QVariantMap stored = SpotWorld::location(*m);
        QVERIFY(m->positionSources.last()->fail(PositionSource::AccessDenied, u"denied"_s));
        QTRY_VERIFY(hud->isFinished()); // faded out, nothing written
        QCOMPARE(SpotWorld::location(*m), stored);
    }

    void favourites()
    {
        m->open({-22.9068467, -43.1728965});
        m->screen->setAnimationsEnabled(true);
        answerForTheCentre(u"Rio"_s);
        auto *panel = child<QWidget>("alertView");
        for (const char *button : {"cancelButton", "okButton"}) {
            QTest::mouseClick(child<QPushButton>("addButton"), Qt::LeftButton);
            QVERIFY(panel->isVisible());
            QCOMPARE(child<QLineEdit>("favoritesNameField")->text(), u"Rio"_s);
            QTest::mouseClick(child<QPushButton>(button), Qt::LeftButton);
            QTest::mouseClick(child<QPushButton>(button), Qt::LeftButton);
            QTRY_VERIFY(!panel->isVisible());
        }
        QCOMPARE(SpotWorld::favorites(*m).size(), 1);
    }

    void choosingAFavourite()
    {
        SpotWorld::writeFavorites(*m, QVariantList{place(u"Tower"_s, u"48.8584"_s, u"2.2945"_s)});
        m->open({10, 10});
        QTest::mouseClick(child<QPushButton>("favoritesButton"), Qt::LeftButton);
        SpotWorld::tapRow(m->window->findChild<FavoritesViewController *>()->tableView(), 0);
        SpotWorld::settle();
        QVERIFY(child<FlatSwitch>("enableSwitch")->isOn());
        verifyNear(centre(), {48.8584, 2.2945});
        QCOMPARE(presentedViewController(m->screen), nullptr);
    }

    void returningFromTheListReReadsTheSwitch()
    {
        m->open({10, 10});
        auto *toggle = child<FlatSwitch>("enableSwitch");
        toggle->toggle();
        search(u"Atlantis"_s); // fails: the file says off, the switch still on
        SpotWorld::settle();
        QVERIFY(toggle->isOn());
        QTest::mouseClick(child<QPushButton>("favoritesButton"), Qt::LeftButton);
        auto *list = m->window->findChild<FavoritesViewController *>();
        QVERIFY(m->screen->isHidden());
        QTest::keyClick(list->tableView(), Qt::Key_Escape); // closes as Back does
        QVERIFY(!presentedViewController(m->screen) && m->screen->isVisible());
        QVERIFY(!toggle->isOn());
    }

    void exchange()
    {
        SpotWorld::storeLocation(*m, u"1"_s);
        m->open();
        QTest::mouseClick(child<QPushButton>("btn_exchange"), Qt::LeftButton); // refused
        QVERIFY(!QFile::exists(m->files().masterFile()) && m->shell.toRouter == 0);
        QCOMPARE(m->alerts.messages().size(), 1);
        child<FlatSwitch>("enableSwitch")->toggle();
        QTest::mouseClick(child<QPushButton>("btn_exchange"), Qt::LeftButton);
        QVERIFY(QFile::exists(m->files().masterFile()) && m->shell.toRouter == 1);
    }

    void switchThroughAccessibility()
    {
        installAccessibilityFactories();
        m->open({30.5, 60.25});
        auto *toggle = child<FlatSwitch>("enableSwitch");
        QAccessibleInterface *control = QAccessible::queryAccessibleInterface(toggle);
        QCOMPARE(control->text(QAccessible::Name), u"Spotmime"_s);
        control->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        SpotWorld::settle();
        QCOMPARE(SpotWorld::location(*m).value(u"latitude"_s).toString(), u"30.500000"_s);
        QTest::keyClick(toggle, Qt::Key_Space);
        SpotWorld::settle();
        QCOMPARE(SpotWorld::location(*m).value(u"enable"_s).toString(), u"0"_s);
        for (const char *name : {"btn_mine", "infoButton", "btn_exchange"})
            QVERIFY(!QAccessible::queryAccessibleInterface(child<QWidget>(name))
                         ->text(QAccessible::Name)
                         .isEmpty());
        QTest::mouseClick(child<QPushButton>("infoButton"), Qt::LeftButton);
        QCOMPARE(m->shell.infoViews, 1);
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(m->screen);
        QStringList listed;
        for (int i = 0; i < face->childCount(); ++i)
            listed << face->child(i)->object()->objectName();
        // the pin and the hidden name panel are not read; the coordinate is
        QVERIFY(!listed.contains(u"locationImageView") && !listed.contains(u"alertView"));
        QVERIFY(listed.contains(u"lb_location"));
        QVERIFY(QTest::qWaitForWindowActive(m->window.get()));
        const QStringList order =
            u"infoButton searchField searchButton mainMapView btn_mine btn_exchange "
            "enableSwitch favoritesButton addButton"_s.split(u' ');
        child<QWidget>("infoButton")->setFocus();
        QStringList visited{QApplication::focusWidget()->objectName()};
        while (visited.size() < order.size()) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            visited << QApplication::focusWidget()->objectName();
        }
        QCOMPARE(visited, order);
    }

    void destroyedWhileALookupIsOut()
    {
        m->open();
        m->screen->regionDidChangeAnimated(child<MapView>("mainMapView"), false);
        QTest::mouseClick(child<QPushButton>("btn_mine"), Qt::LeftButton);
        search(u"nowhere at all"_s);
        m->window.reset();
        SpotWorld::settle();
        QVERIFY(m->alerts.alerts().isEmpty());
    }
};

TREKMIME_TEST(SpotmimeViewControllerTest)
#include "SpotmimeViewControllerTest.moc"
