#include "TestMain.h"
#include "TestServices.h"

#include "route/TrekmimeViewController.h"
#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"
#include "shell/AppDelegate.h"
#include "shell/AppWindow.h"
#include "spot/SpotmimeViewController.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QPushButton>

namespace {
QVariantMap routeOn()
{
    return {{u"enable"_s, u"1"_s}, {u"s"_s, u"Central"_s}};
}
} // namespace

// Launch, becoming active and the two mode buttons.
class ModeSwitchTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    std::unique_ptr<AppDelegate> m_delegate;

    TMPreferenceUtil &store() { return m_world->preferences(); }

    AppDelegate &launch()
    {
        m_delegate = std::make_unique<AppDelegate>(m_world->services());
        const bool launched = m_delegate->didFinishLaunching();
        Q_ASSERT(launched);
        return *m_delegate;
    }
    QWidget *root() const { return m_delegate->window()->rootViewController(); }
    void pressModeButton()
    {
        auto *button = root()->findChild<QPushButton *>(u"btn_exchange"_s);
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton);
    }

private slots:
    void init() { m_world = std::make_unique<TestServices>(); }
    void cleanup() { m_delegate.reset(), m_world.reset(); }

    void launchShowsTheStoredModesScreen_data()
    {
        QTest::addColumn<QVariant>("mode");
        QTest::addColumn<bool>("routeScreen");
        QTest::newRow("first start, no files") << QVariant() << true;
        QTest::newRow("mode 1") << QVariant(u"1"_s) << false;
        QTest::newRow("mode 2") << QVariant(u"2"_s) << false;
        QTest::newRow("mode x") << QVariant(u"x"_s) << true;
    }
    void launchShowsTheStoredModesScreen()
    {
        QFETCH(QVariant, mode);
        QFETCH(bool, routeScreen);
        if (mode.isValid())
            PropertyList::write(m_world->files().masterFile(), QVariantMap{{u"mode"_s, mode}});
        AppDelegate &delegate = launch();
        QCOMPARE(root(), routeScreen ? static_cast<QWidget *>(delegate.trekmimeController())
                                     : delegate.locationController());
        QVERIFY(root()->isVisible());
        // launching never writes a file
        QCOMPARE(QFile::exists(m_world->files().masterFile()), mode.isValid());
    }

    void becomingActiveRefreshesTheStoredModesScreen()
    {
        AppDelegate &delegate = launch();
        store().writeRoutePreference(RouteRecord::fromPropertyList(routeOn()));
        delegate.applicationDidBecomeActive();
        QCOMPARE(delegate.trekmimeController()->preferences().toPropertyList(), routeOn());

        // the mode on disk now says fixed location: the route screen is left as it was
        store().writeMode(MasterRecord::LocationMode);
        store().writeRoutePreference(RouteRecord());
        delegate.applicationDidBecomeActive();
        QCOMPARE(delegate.trekmimeController()->preferences().toPropertyList(), routeOn());
        QCOMPARE(root(), delegate.trekmimeController());
    }

    // The route button trusts the screen's memory, not a file switched on
    // behind its back; the master file keeps only the mode.
    void switchingKeepsBothScreensAndDropsOtherMasterKeys()
    {
        PropertyList::write(m_world->files().masterFile(),
                            QVariantMap{{u"mode"_s, u"0"_s}, {u"theme"_s, u"dark"_s}});
        AppDelegate &delegate = launch();
        QPointer<QWidget> route = delegate.trekmimeController();
        QPointer<QWidget> spot = delegate.locationController();
        store().writeRoutePreference(RouteRecord::fromPropertyList(routeOn()));
        pressModeButton();
        QVERIFY(m_world->alerts.alerts().isEmpty());
        QCOMPARE(root(), spot.data());
        QCOMPARE(PropertyList::readDictionary(m_world->files().masterFile()),
                 (QVariantMap{{u"mode"_s, u"1"_s}}));
        store().writeRoutePreference(RouteRecord());
        pressModeButton();
        pressModeButton();
        QCOMPARE(root(), spot.data());
        QVERIFY(route && spot);
        QCOMPARE(delegate.trekmimeController(), route.data());
        QVERIFY(!route->isVisible());
    }

    void aFailedMasterWriteStillSwapsTheScreen()
    {
        AppDelegate &delegate = launch();
        QVERIFY(QDir().mkpath(m_world->files().masterFile())); // cannot be replaced
        pressModeButton();
        QCOMPARE(root(), delegate.locationController());
        QCOMPARE(store().mode(), 0);
        // back in the foreground, the stored mode's screen is refreshed
        delegate.applicationDidBecomeActive();
        QVERIFY(m_world->alerts.alerts().isEmpty());
    }
};

TREKMIME_TEST(ModeSwitchTest)
#include "ModeSwitchTest.moc"
