#pragma once

#include "ScreenWorld.h"

#include "settings/PropertyList.h"
#include "shell/ScreenNeeds.h"
#include "spot/FavoritesTableView.h"
#include "spot/FavoritesViewController.h"
#include "spot/SpotmimeViewController.h"

#include <QFile>
#include <QPushButton>

#include <memory>

inline QVariantMap place(const QString &name, const QString &lat = {}, const QString &lng = {})
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("latitude"), lat},
            {QStringLiteral("longitude"), lng}};
}

// A fixed-location screen in a window of its own, over a fake geocoder and
// device and the location service set up with them.
struct SpotWorld : ScreenWorld
{
    std::unique_ptr<QWidget> window;
    SpotmimeViewController *screen = nullptr;

    SpotmimeViewController *open(Coordinate device = {22.3, 114.17})
    {
        positionSources.scriptFix(device.latitude, device.longitude);
        window = std::make_unique<QWidget>();
        window->resize(390, 844);
        screen = new SpotmimeViewController(ScreenNeeds::spot(services()), shell, window.get());
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
