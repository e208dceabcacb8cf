#include "SpotWorld.h"
#include "TestMain.h"

#include "app/ProgressHUD.h"
#include "settings/FavoriteEntry.h"
#include "settings/TMPreferenceUtil.h"
#include "spot/FavoritesTableView.h"
#include "spot/FavoritesViewController.h"
#include "ui/Accessibility.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

// The fixed-location screen over fake services: what it shows, what it
// writes to the location and favourites files, and what it looks up.
class SpotmimeViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<SpotWorld> m;

    template <class T> T *child(const char *name) const
    {
        T *found = m->screen->findChild<T *>(QLatin1String(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    QString text(const char *label) const { return child<QLabel>(label)->text(); }
    Coordinate centre() const { return child<MapView>("mainMapView")->centerCoordinate(); }
    void search(const QString &typed)
    {
        child<QLineEdit>("searchField")->setText(typed);
        QTest::mouseClick(child<QPushButton>("searchButton"), Qt::LeftButton);
    }
    // The centre the map settles on differs from the place asked for in the
    // last bits; the geocoder learns the address of the exact centre, asked again.
    void answerForTheCentre(const QString &address)
    {
        auto *map = child<MapView>("mainMapView");
        m->geocoder.setAddress(map->centerCoordinate(), address);
        m->screen->regionDidChangeAnimated(map, false);
        SpotWorld::settle();
    }
    static void verifyNear(const Coordinate &actual, const Coordinate &expected)
    {
        QVERIFY2(qAbs(actual.latitude - expected.latitude) < 1e-6 &&
                     qAbs(actual.longitude - expected.longitude) < 1e-6,
                 qPrintable(actual.toString() + QStringLiteral(" != ") + expected.toString()));
    }

private slots:
    void init() { m = std::make_unique<SpotWorld>(); }
    void cleanup() { m.reset(); }

    void firstDisplay_data()
    {
        QTest::addColumn<QString>("enable");
        QTest::addColumn<Coordinate>("shown");
        QTest::newRow("faking on: the stored place")
            << QStringLiteral("1") << Coordinate{48.8584, 2.2945};
        QTest::newRow("faking off: the device") << QStringLiteral("0") << Coordinate{22.3, 114.17};
    }
    void firstDisplay()
    {
        QFETCH(QString, enable);
        QFETCH(Coordinate, shown);
        SpotWorld::storeLocation(m->world, enable, QStringLiteral("48.858400"),
                                 QStringLiteral("2.294500"));
        m->open({22.3, 114.17});
        verifyNear(centre(), shown);
        QCOMPARE(child<FlatSwitch>("enableSwitch")->isOn(), enable == QStringLiteral("1"));
        // about 2000 m of ground from top to bottom at most
        const CoordinateRegion region = child<MapView>("mainMapView")->region();
        QVERIFY(region.span.latitudeDelta >= 2000.0 / 111320.0 * 0.99);
        QVERIFY(region.span.latitudeDelta < 0.1);
        QCOMPARE(text("lb_location"), QString::asprintf("%f\n%f", shown.latitude, shown.longitude));
    }

    void searchForms_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("moves");
        QTest::addColumn<Coordinate>("to");
        const Coordinate paris{48.85, 2.29};
        QTest::newRow("pair") << QStringLiteral("#:48.85,2.29") << true << paris;
        QTest::newRow("south and west")
            << QStringLiteral("#:-33.5,-70.25") << true << Coordinate{-33.5, -70.25};
        QTest::newRow("words without digits")
            << QStringLiteral("#:north,east") << true << Coordinate{0, 0};
        QTest::newRow("number then junk")
            << QStringLiteral("#:12.5abc,7x") << true << Coordinate{12.5, 7};
        QTest::newRow("one part") << QStringLiteral("#:48.85") << false << Coordinate{};
        QTest::newRow("blank") << QStringLiteral("   ") << false << Coordinate{};
    }
    void searchForms()
    {
        QFETCH(QString, typed);
        QFETCH(bool, moves);
        QFETCH(Coordinate, to);
        m->open({10, 10});
        const QVariantMap before = SpotWorld::location(m->world);
        search(typed);
        SpotWorld::settle();
        QVERIFY(m->geocoder.forwardRequests().isEmpty());
        QCOMPARE(child<QLineEdit>("searchField")->text(), moves ? QString() : typed);
        verifyNear(centre(), moves ? to : Coordinate{10, 10});
        verifyNear({m->screen->latitude(), m->screen->longitude()},
                   moves ? to : Coordinate{10, 10});
        // the typed place is only a candidate: the record is as it was
        QCOMPARE(SpotWorld::location(m->world), before);
    }

    void addressSearchKeepsOnlyTheFlag_data()
    {
        QTest::addColumn<bool>("switchOn");
        QTest::addColumn<bool>("found");
        QTest::addColumn<QString>("enableAfter");
        QTest::newRow("on, found") << true << true << QStringLiteral("1");
        QTest::newRow("on, not found") << true << false << QStringLiteral("0");
    }
    void addressSearchKeepsOnlyTheFlag()
    {
        QFETCH(bool, switchOn);
        QFETCH(bool, found);
        QFETCH(QString, enableAfter);
        const Coordinate louvre{48.8606, 2.3376};
        if (found)
            m->geocoder.setCoordinate(QStringLiteral("Louvre, Paris"), louvre);
        SpotWorld::storeLocation(m->world, switchOn ? QStringLiteral("1") : QStringLiteral("0"),
                                 QStringLiteral("1.500000"), QStringLiteral("2.500000"));
        m->open();
        search(QStringLiteral("  Louvre, Paris "));
        // off at once while the look-up runs, under an overlay over the window
        QCOMPARE(SpotWorld::location(m->world).value(QStringLiteral("enable")).toString(),
                 QStringLiteral("0"));
        ProgressHUD *hud = m->screen->HUD();
        QCOMPARE(hud->parentWidget(), m->screen->window());
        QCOMPARE(hud->labelText(), QStringLiteral("Searching"));
        QCOMPARE(child<QLineEdit>("searchField")->text(), QString());
        SpotWorld::settle();

        QCOMPARE(m->geocoder.forwardRequests(), QStringList{QStringLiteral("Louvre, Paris")});
        const QVariantMap record = SpotWorld::location(m->world);
        QCOMPARE(record.value(QStringLiteral("enable")).toString(), enableAfter);
        QCOMPARE(m->world.alerts.messages(),
                 found ? QStringList() : QStringList{QStringLiteral("Search Failed")});
        if (found)
            verifyNear(centre(), louvre);
        // the switch is left as it was either way
        QCOMPARE(child<FlatSwitch>("enableSwitch")->isOn(), switchOn);
    }

    void addressOfTheCentre()
    {
        m->open({22.2793, 114.1628});
        answerForTheCentre(QStringLiteral("Admiralty, Hong Kong"));
        QCOMPARE(text("addressLabel"), QStringLiteral("Admiralty, Hong Kong"));
        QVERIFY(child<QWidget>("spinner")->isHidden());

        // cleared when a move starts, "Unknow" where nothing is known
        search(QStringLiteral("#:0.5,0.5"));
        QCOMPARE(text("addressLabel"), QString());
        QVERIFY(child<QWidget>("spinner")->isVisible());
        SpotWorld::settle();
        QCOMPARE(text("addressLabel"), QStringLiteral("Unknow"));
    }

    void overlayBeforeAndAfterTheFirstSearch()
    {
        m->open();
        ProgressHUD *hud = m->screen->HUD();
        // in no view: showing it shows nothing
        QTest::mouseClick(child<QPushButton>("btn_mine"), Qt::LeftButton);
        QCOMPARE(hud->parentWidget(), nullptr);
        QVERIFY(!hud->isVisible());
        SpotWorld::settle();

        search(QStringLiteral("nowhere at all"));
        SpotWorld::settle();
        m->world.alerts.clear();
        // from now on it covers the window, still saying "Searching"
        QTest::mouseClick(child<QPushButton>("btn_mine"), Qt::LeftButton);
        QCOMPARE(hud->parentWidget(), m->screen->window());
        QVERIFY(hud->isVisible());
        QCOMPARE(hud->geometry(), m->screen->window()->rect());
        QCOMPARE(hud->labelText(), QStringLiteral("Searching"));
    }

    void favourites_data()
    {
        QTest::addColumn<QStringList>("typedNames"); // one per OK; null for CANCEL
        QTest::addColumn<QStringList>("stored");
        QTest::newRow("named") << QStringList{QStringLiteral("  Home \n")}
                               << QStringList{QStringLiteral("Home")};
        QTest::newRow("cancel") << QStringList{QString()} << QStringList{};
    }
    void favourites()
    {
        QFETCH(QStringList, typedNames);
        QFETCH(QStringList, stored);
        const Coordinate place{-22.9068467, -43.1728965};
        m->open(place);
        answerForTheCentre(QStringLiteral("Rio"));
        auto *panel = child<QWidget>("alertView");
        for (const QString &name : typedNames) {
            QTest::mouseClick(child<QPushButton>("addButton"), Qt::LeftButton);
            QVERIFY(panel->isVisible());
            QCOMPARE(panel->geometry(), m->screen->rect());
            // the address is the proposed name
            QCOMPARE(child<QLineEdit>("favoritesNameField")->text(), QStringLiteral("Rio"));
            child<QLineEdit>("favoritesNameField")->setText(name);
            QTest::mouseClick(child<QPushButton>(name.isNull() ? "cancelButton" : "okButton"),
                              Qt::LeftButton);
            QTRY_VERIFY(!panel->isVisible());
        }
        const QVariantList favorites = SpotWorld::favorites(m->world);
        QCOMPARE(favorites.size(), stored.size());
        for (qsizetype i = 0; i < stored.size(); ++i)
            QCOMPARE(favorites[i].toMap().value(QStringLiteral("name")).toString(), stored[i]);
    }

    void choosingAFavourite()
    {
        m->world.preferences().addFavorite(
            FavoriteEntry::make(QStringLiteral("Tower"), 48.8584, 2.2945));
        m->open({10, 10});
        QTest::mouseClick(child<QPushButton>("favoritesButton"), Qt::LeftButton);
        auto *list = m->window->findChild<FavoritesViewController *>();
        QVERIFY(list);
        QCOMPARE(presentedViewController(m->screen), list);
        FavoritesTableView *table = list->tableView();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->visualRect(table->model()->index(0, 0)).center());
        SpotWorld::settle();
        QVERIFY(child<FlatSwitch>("enableSwitch")->isOn());
        verifyNear(centre(), {48.8584, 2.2945});
        QCOMPARE(presentedViewController(m->screen), nullptr);
    }

    void exchange_data()
    {
        QTest::addColumn<QString>("enable");
        QTest::addColumn<bool>("refused");
        QTest::newRow("on: refused") << QStringLiteral("1") << true;
        QTest::newRow("off: to the route mode") << QStringLiteral("0") << false;
    }
    void exchange()
    {
        QFETCH(QString, enable);
        QFETCH(bool, refused);
        SpotWorld::storeLocation(m->world, enable, QStringLiteral("1.0"), QStringLiteral("2.0"));
        m->open();
        QTest::mouseClick(child<QPushButton>("btn_exchange"), Qt::LeftButton);
        QCOMPARE(QFile::exists(m->world.files().masterFile()), !refused);
        QCOMPARE(m->shell.toRouter, refused ? 0 : 1);
        QCOMPARE(m->world.alerts.messages(),
                 refused ? QStringList{QStringLiteral(
                               "Spotmime is working,please turn off the Spotmime first!")}
                         : QStringList{});
        if (!refused)
            QCOMPARE(m->world.preferences().mode(), 0);
    }

    void switchThroughAccessibility()
    {
        installAccessibilityFactories();
        m->open({30.5, 60.25});
        auto *toggle = child<FlatSwitch>("enableSwitch");
        QAccessibleInterface *control = QAccessible::queryAccessibleInterface(toggle);
        QVERIFY(control);
        QCOMPARE(control->text(QAccessible::Name), QStringLiteral("Spotmime"));
        control->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        SpotWorld::settle();
        const QVariantMap record = SpotWorld::location(m->world);
        QCOMPARE(record.value(QStringLiteral("enable")).toString(), QStringLiteral("1"));
        QCOMPARE(record.value(QStringLiteral("latitude")).toString(), QStringLiteral("30.500000"));
        // and back off from the keyboard
        QTest::keyClick(toggle, Qt::Key_Space);
        SpotWorld::settle();
        QCOMPARE(SpotWorld::location(m->world).value(QStringLiteral("enable")).toString(),
                 QStringLiteral("0"));
        for (const char *name : {"btn_mine", "infoButton", "btn_exchange"})
            QVERIFY(!QAccessible::queryAccessibleInterface(child<QWidget>(name))
                         ->text(QAccessible::Name)
                         .isEmpty());
        QTest::mouseClick(child<QPushButton>("infoButton"), Qt::LeftButton);
        QCOMPARE(m->shell.infoViews, 1);
    }

    void destroyedWhileALookupIsOut()
    {
        m->open();
        // a reverse lookup, a position request and a forward lookup that
        // would end in an alert go out
        m->screen->regionDidChangeAnimated(child<MapView>("mainMapView"), false);
        QTest::mouseClick(child<QPushButton>("btn_mine"), Qt::LeftButton);
        search(QStringLiteral("nowhere at all"));
        m->window.reset();
        SpotWorld::settle();
        QVERIFY(m->world.alerts.alerts().isEmpty());
    }
};

TREKMIME_TEST(SpotmimeViewControllerTest)
#include "SpotmimeViewControllerTest.moc"
