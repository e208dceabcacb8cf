#include "SettingsFiles.h"
#include "TestMain.h"

#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"

#include <QDir>
#include <QTemporaryDir>

#include <cmath>
#include <limits>
#include <memory>

using SettingsFiles::bytesOf;

namespace {
QVariantMap routeRecord()
{
    return {
        {QStringLiteral("enable"), QStringLiteral("1")},
        {QStringLiteral("start"), QStringLiteral("1700000000.000000")},
        {QStringLiteral("end"), QStringLiteral("1700003600.000000")},
        {QStringLiteral("s"), QStringLiteral("Central")},
        {QStringLiteral("e"), QStringLiteral("Kowloon")},
        {QStringLiteral("points"),
         QVariantList{QVariantMap{{QStringLiteral("lat"), 22.5}, {QStringLiteral("lng"), 114.25}},
                      QVariantMap{{QStringLiteral("lat"), -0.5}, {QStringLiteral("lng"), 114.0}}}}};
}
} // namespace

// The files the hooking component reads, exactly as the store writes them,
// and the store's reading rules.
class SettingsStoreTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<TMPreferenceUtil> m_store;
    const PreferenceFiles &files() const { return m_store->files(); }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_store = std::make_unique<TMPreferenceUtil>(PreferenceFiles(m_dir->path()));
    }

    void eachFileIsWrittenExactly()
    {
        m_store->setLocationEnable(true, 22.2846809, 114.1588);
        COMPARE_GOLDEN("location.plist", files().locationFile());

        m_store->writeRoutePreference(RouteRecord::fromPropertyList(routeRecord()));
        COMPARE_GOLDEN("route.plist", files().routeFile());

        m_store->addFavorite(
            FavoriteEntry::make(QStringLiteral(" Tour Eiffel & Champ-de-Mars\n"), 48.8584, 2.2945));
        m_store->addFavorite(FavoriteEntry::make(QStringLiteral(" \t\n "), -33.8568, 151.2153));
        m_store->addFavorite(
            FavoriteEntry::make(QStringLiteral("香港 <中环>"), 22.2846809, 114.1588));
        COMPARE_GOLDEN("favorites.plist", files().favoritesFile());

        WhitelistRecord whitelist;
        m_store->toggleWhitelist(whitelist, QStringLiteral("org.example.weather"));
        m_store->toggleWhitelist(whitelist, QStringLiteral("com.example.maps"));
        m_store->toggleWhitelist(whitelist, QStringLiteral("org.example.weather"));
        COMPARE_GOLDEN("whitelist.plist", files().whitelistFile());

        m_store->writeMode(MasterRecord::LocationMode);
        COMPARE_GOLDEN("master.plist", files().masterFile());

        // the names the hooking component looks for
        PropertyList::write(files().hideListFile(), QVariantMap());
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files),
                 (QStringList{QStringLiteral("com.velmora.hushdeck.hidelist.plist"),
                              QStringLiteral("com.velmora.trekmimex.favorites.plist"),
                              QStringLiteral("com.velmora.trekmimex.location.plist"),
                              QStringLiteral("com.velmora.trekmimex.master.plist"),
                              QStringLiteral("com.velmora.trekmimex.route.plist"),
                              QStringLiteral("com.velmora.trekmimex.whitelist.plist")}));
    }

    void nothingStoredReadsAsOff()
    {
        QVERIFY(!m_store->isLocationEnable());
        QVERIFY(!m_store->isRouteEnable());
        QCOMPARE(m_store->locationLatitude(), 0.0);
        QVERIFY(m_store->favoritePreference().isEmpty());
        QVERIFY(m_store->routePreference().isEmpty());
        QCOMPARE(m_store->whitePreference().size(), 0);
        QCOMPARE(m_store->mode(), 0);
        // reading never creates a file
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
    }

    void locationWritesKeepCoordinatesAndOtherKeys()
    {
        PropertyList::write(files().locationFile(),
                            QVariantMap{{QStringLiteral("hookVersion"), qint64(3)}});
        m_store->setLocationEnable(true, 22.2846809, 114.1588);
        QCOMPARE(m_store->locationLatitude(), 22.284681);
        // panned coordinates never reach the file
        m_store->setLocationLatitude(-45.0, 170.0);
        m_store->setLocationEnable(false);
        QCOMPARE(m_store->locationPreference().toPropertyList(),
                 (QVariantMap{{QStringLiteral("hookVersion"), qint64(3)},
                              {QStringLiteral("enable"), QStringLiteral("0")},
                              {QStringLiteral("latitude"), QStringLiteral("22.284681")},
                              {QStringLiteral("longitude"), QStringLiteral("114.158800")}}));
        QVERIFY(!m_store->isLocationEnable());
    }

    void routeFlagIsWrittenIntoTheLocationFile()
    {
        m_store->writeRoutePreference(RouteRecord::fromPropertyList(routeRecord()));
        const QByteArray routeBefore = bytesOf(files().routeFile());
        m_store->setLocationEnable(true, 1.0, 2.0);
        m_store->setRouteEnable(false);
        QCOMPARE(bytesOf(files().routeFile()), routeBefore);
        QVariantMap expected = routeRecord();
        expected.insert(QStringLiteral("enable"), QStringLiteral("0"));
        QCOMPARE(m_store->locationPreference().toPropertyList(), expected);
        QVERIFY(m_store->isRouteEnable());
        QVERIFY(!m_store->isLocationEnable());
    }

    void nonFiniteCoordinatesAreNeverWritten()
    {
        constexpr double inf = std::numeric_limits<double>::infinity();
        const std::pair<double, double> places[] = {{std::nan(""), 2.0}, {1.0, inf}, {-inf, 2.0}};
        for (const auto &[latitude, longitude] : places) {
            QVERIFY(!m_store->setLocationEnable(false, latitude, longitude));
            QVERIFY(!m_store->addFavorite(FavoriteEntry::make(QString(), latitude, longitude)));
            RouteRecord planned;
            planned.setPoints({RoutePoint(1.0, 2.0), RoutePoint(latitude, longitude)});
            QVERIFY(!m_store->writeRoutePreference(planned));
        }
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
    }

    void filesWithTheWrongRootAreReplaced()
    {
        PropertyList::write(files().favoritesFile(),
                            QVariantMap{{QStringLiteral("name"), QStringLiteral("not a list")}});
        QVERIFY(m_store->favoritePreference().isEmpty());
        m_store->addFavorite(FavoriteEntry::make(QStringLiteral("Home"), 1.0, 2.0));
        QCOMPARE(FavoriteEntry::listToPropertyList(m_store->favoritePreference()).size(), 1);

        PropertyList::write(files().locationFile(), QVariantList{QStringLiteral("1")});
        QVERIFY(!m_store->isLocationEnable());
        m_store->setLocationEnable(true);
        QCOMPARE(m_store->locationPreference().toPropertyList(),
                 (QVariantMap{{QStringLiteral("enable"), QStringLiteral("1")}}));
    }

    void binaryFilesAreStillTheUsersData()
    {
        m_store->setLocationEnable(true, 48.85, 2.29);
        // as if the system had converted the file: the same record in binary
        SettingsFiles::writeBytes(files().locationFile(),
                                  SettingsFiles::toBinary(bytesOf(files().locationFile())));
        QVERIFY(m_store->isLocationEnable());
        QCOMPARE(m_store->locationLatitude(), 48.85);
        m_store->setLocationEnable(false);
        QVERIFY(bytesOf(files().locationFile()).startsWith("<?xml"));
        QCOMPARE(m_store->locationLongitude(), 2.29);
    }

    void whitelistTapsFlipAndKeepKeys()
    {
        PropertyList::write(files().whitelistFile(),
                            QVariantMap{{QStringLiteral("a.stored.text"), QStringLiteral("1")}});
        WhitelistRecord record = m_store->whitePreference();
        QVERIFY(record.isWhitelisted(QStringLiteral("a.stored.text")));
        QVERIFY(m_store->toggleWhitelist(record, QStringLiteral("a.stored.text")));
        QVERIFY(m_store->toggleWhitelist(record, QStringLiteral("new.app")));
        QCOMPARE(m_store->whitePreference().toPropertyList(),
                 (QVariantMap{{QStringLiteral("a.stored.text"), false},
                              {QStringLiteral("new.app"), true}}));
        QVERIFY(!record.isWhitelisted(QStringLiteral("never.tapped")));
    }

    void removingAFavoriteRewritesTheList()
    {
        for (const char *name : {"a", "b", "c", "d"})
            m_store->addFavorite(FavoriteEntry::make(QString::fromLatin1(name), 1.0, 2.0));
        const QByteArray before = bytesOf(files().favoritesFile());
        QList<FavoriteEntry> favorites = m_store->favoritePreference();
        // out of range: nothing changes, nothing is written
        QVERIFY(!m_store->removeFavorite(favorites, 4));
        QVERIFY(!m_store->removeFavorite(favorites, -1));
        QCOMPARE(favorites.size(), 4);
        QCOMPARE(bytesOf(files().favoritesFile()), before);
        QVERIFY(m_store->removeFavorite(favorites, 0));
        QVERIFY(m_store->removeFavorite(favorites, 2));
        QStringList names;
        for (const FavoriteEntry &entry : m_store->favoritePreference())
            names.append(entry.name());
        QCOMPARE(names, (QStringList{QStringLiteral("b"), QStringLiteral("c")}));
    }

    void entriesNotUnderstoodPassThrough()
    {
        const QString routeFile = files().routeFile();
        const QVariantList points{QStringLiteral("not a point"),
                                  QVariantMap{{QStringLiteral("lat"), QStringLiteral("1.5")},
                                              {QStringLiteral("lng"), qint64(2)},
                                              {QStringLiteral("alt"), 9.0}},
                                  QVariantMap{{QStringLiteral("lat"), 3.0}}};
        PropertyList::write(routeFile, QVariantMap{{QStringLiteral("enable"), true},
                                                   {QStringLiteral("start"), 12.75},
                                                   {QStringLiteral("points"), points}});
        const QByteArray before = bytesOf(routeFile);
        RouteRecord route = m_store->routePreference();
        QVERIFY(route.isEnabled() && !route.hasEnd());
        QCOMPARE(route.startSeconds(), 12);
        // every entry counts; what cannot be read reads as 0
        QList<double> read;
        for (int i = 0; i < route.pointCount(); ++i)
            read << route.pointAt(i).latitude() << route.pointAt(i).longitude();
        QCOMPARE(read, (QList<double>{0, 0, 1.5, 2, 3, 0}));
        route.setPoints(route.points());
        m_store->writeRoutePreference(route);
        QCOMPARE(bytesOf(routeFile), before);

        const QString favoritesFile = files().favoritesFile();
        PropertyList::write(favoritesFile,
                            QVariantList{QStringLiteral("a text"),
                                         QVariantMap{{QStringLiteral("name"), qint64(5)}},
                                         qint64(7)});
        QList<FavoriteEntry> favorites = m_store->favoritePreference();
        QVERIFY(!favorites.at(0).isPlace());
        QVERIFY(favorites.at(1).isPlace());
        QCOMPARE(favorites.at(1).name(), QString()); // only a text is a name
        QVERIFY(m_store->removeFavorite(favorites, 1));
        QCOMPARE(PropertyList::readArray(favoritesFile),
                 (QVariantList{QStringLiteral("a text"), qint64(7)}));
    }
};

TREKMIME_TEST(SettingsStoreTest)
#include "SettingsStoreTest.moc"
