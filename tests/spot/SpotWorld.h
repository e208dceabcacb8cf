#pragma once

#include "TestServices.h"

#include "app/ApplicationShell.h"
#include "app/ModalPresentation.h"
#include "fakes/FakeGeocoder.h"
#include "fakes/FakePositionSourceFactory.h"
#include "location/Location.h"
#include "settings/PropertyList.h"
#include "shell/ScreenNeeds.h"
#include "spot/FavoritesTableView.h"
#include "spot/FavoritesViewController.h"
#include "spot/SpotmimeViewController.h"

#include <QFile>
#include <QPushButton>
#include <QTest>

#include <memory>

inline QVariantMap place(const QString &name, const QString &lat = {}, const QString &lng = {})
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("latitude"), lat},
            {QStringLiteral("longitude"), lng}};
}

struct RecordingShell : ApplicationShell
{
    int toRouter = 0;
    int infoViews = 0;
    void changeToRouter() override { ++toRouter; }
    void changeToLocation() override {}
    void showInfoView(QWidget *, ModalTransition) override { ++infoViews; }
};

// A fixed-location screen in a window of its own, over a fake geocoder and
// device and the location service set up with them.
struct SpotWorld
{
    TestServices world;
    FakeGeocoder geocoder;
    FakePositionSourceFactory positions;
    RecordingShell shell;
    std::unique_ptr<Location> locationService;
    std::unique_ptr<QWidget> window;
    SpotmimeViewController *screen = nullptr;

    SpotWorld()
    {
        world.services().geocoder = &geocoder;
        world.services().positionSources = &positions;
        locationService = std::make_unique<Location>(&positions, &geocoder, &world.alerts);
        world.services().location = locationService.get();
        setModalAnimationsEnabled(false);
    }

    SpotmimeViewController *open(Coordinate device = {22.3, 114.17})
    {
        positions.scriptFix(device.latitude, device.longitude);
        window = std::make_unique<QWidget>();
        window->resize(390, 844);
        screen =
            new SpotmimeViewController(ScreenNeeds::spot(world.services()), shell, window.get());
        screen->resize(390, 844);
        screen->setAnimationsEnabled(false);
        screen->loadViewIfNeeded();
        window->show();
        settle();
        return screen;
    }

    // lets posted answers arrive and map moves come to rest
    static void settle() { QTest::qWait(100); }

    static void tapRow(FavoritesTableView *table, int row)
    {
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->visualRect(table->model()->index(row, 0)).center());
    }
    static void storeLocation(const TestServices &world, const QString &enable,
                              const QString &lat = QStringLiteral("48.858400"),
                              const QString &lng = QStringLiteral("2.294500"))
    {
        PropertyList::write(world.files().locationFile(),
                            QVariantMap{{QStringLiteral("enable"), enable},
                                        {QStringLiteral("latitude"), lat},
                                        {QStringLiteral("longitude"), lng}});
    }
    static QVariantMap location(const TestServices &world)
    {
        return PropertyList::readDictionary(world.files().locationFile());
    }
    static QVariantList favorites(const TestServices &world)
    {
        return PropertyList::readArray(world.files().favoritesFile());
    }
    static void writeFavorites(const TestServices &world, const QVariant &file)
    {
        PropertyList::write(world.files().favoritesFile(), file);
    }
};
