#include "GoldenFile.h"
#include "TestMain.h"

#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <plist/plist.h>

namespace {
QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

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

#define COMPARE_GOLDEN(name, path)                                                                 \
    do {                                                                                           \
        const QString difference = GoldenFile::compare(QStringLiteral(name), bytesOf(path));       \
        QVERIFY2(difference.isEmpty(), qPrintable(difference));                                    \
    } while (false)

// The files the hooking component reads, exactly as the store writes them,
// and the store's reading rules.
class SettingsStoreTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<TMPreferenceUtil> m_store;

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_store = std::make_unique<TMPreferenceUtil>(PreferenceFiles(m_dir->path()));
    }

    void fileNamesAreTheHooksOwn()
    {
        const QString dir = m_dir->path() + QLatin1Char('/');
        QCOMPARE(m_store->files().routeFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.route.plist"));
        QCOMPARE(m_store->files().locationFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.location.plist"));
        QCOMPARE(m_store->files().favoritesFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.favorites.plist"));
        QCOMPARE(m_store->files().whitelistFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.whitelist.plist"));
        QCOMPARE(m_store->files().masterFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.master.plist"));
        QCOMPARE(m_store->files().hideListFile(),
                 dir + QStringLiteral("com.velmora.hushdeck.hidelist.plist"));
    }

    void eachFileIsWrittenExactly()
    {
        m_store->setLocationEnable(true, 22.2846809, 114.1588);
        COMPARE_GOLDEN("location.plist", m_store->files().locationFile());

        m_store->writeRoutePreference(RouteRecord::fromPropertyList(routeRecord()));
        COMPARE_GOLDEN("route.plist", m_store->files().routeFile());

        m_store->addFavorite(
            FavoriteEntry::make(QStringLiteral(" Tour Eiffel & Champ-de-Mars\n"), 48.8584, 2.2945));
        m_store->addFavorite(FavoriteEntry::make(QStringLiteral(" \t\n "), -33.8568, 151.2153));
        m_store->addFavorite(
            FavoriteEntry::make(QStringLiteral("香港 <中环>"), 22.2846809, 114.1588));
        COMPARE_GOLDEN("favorites.plist", m_store->files().favoritesFile());

        WhitelistRecord whitelist;
        m_store->toggleWhitelist(whitelist, QStringLiteral("org.example.weather"));
        m_store->toggleWhitelist(whitelist, QStringLiteral("com.example.maps"));
        m_store->toggleWhitelist(whitelist, QStringLiteral("org.example.weather"));
        COMPARE_GOLDEN("whitelist.plist", m_store->files().whitelistFile());

        m_store->writeMode(MasterRecord::LocationMode);
        COMPARE_GOLDEN("master.plist", m_store->files().masterFile());
    }

    void nothingStoredReadsAsOff()
    {
        QVERIFY(!m_store->isLocationEnable());
        QVERIFY(!m_store->isRouteEnable());
        QCOMPARE(m_store->locationLatitude(), 0.0);
        QCOMPARE(m_store->locationLongitude(), 0.0);
        QVERIFY(m_store->favoritePreference().isEmpty());
        QVERIFY(m_store->routePreference().isEmpty());
        QCOMPARE(m_store->whitePreference().size(), 0);
        QCOMPARE(m_store->mode(), 0);
        // reading never creates a file
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
    }

    void modeReadsTheLeadingInteger_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("mode");
        QTest::newRow("1") << QVariant(QStringLiteral("1")) << 1;
        QTest::newRow("2 is the fixed-location mode too") << QVariant(QStringLiteral("2")) << 2;
        QTest::newRow("x is the route mode") << QVariant(QStringLiteral("x")) << 0;
        QTest::newRow("a number, not a text") << QVariant(qint64(1)) << 1;
        QTest::newRow("missing key") << QVariant() << 0;
    }
    void modeReadsTheLeadingInteger()
    {
        QFETCH(QVariant, stored);
        QFETCH(int, mode);
        QVariantMap record{{QStringLiteral("other"), QStringLiteral("kept?")}};
        if (stored.isValid())
            record.insert(QStringLiteral("mode"), stored);
        PropertyList::write(m_store->files().masterFile(), record);
        QCOMPARE(m_store->mode(), mode);
        // a mode change writes a fresh one-key record
        m_store->writeMode(MasterRecord::RouteMode);
        QCOMPARE(PropertyList::readDictionary(m_store->files().masterFile()),
                 (QVariantMap{{QStringLiteral("mode"), QStringLiteral("0")}}));
    }

    void coordinatesAreStoredWithSixDecimals()
    {
        m_store->setLocationEnable(true, 22.2846809, 114.1588);
        const QVariantMap record = m_store->locationPreference().toPropertyList();
        QCOMPARE(record.value(QStringLiteral("latitude")), QVariant(QStringLiteral("22.284681")));
        QCOMPARE(record.value(QStringLiteral("longitude")), QVariant(QStringLiteral("114.158800")));
        QCOMPARE(record.value(QStringLiteral("enable")), QVariant(QStringLiteral("1")));
        QVERIFY(m_store->isLocationEnable());
        QCOMPARE(m_store->locationLatitude(), 22.284681);
        m_store->setLocationEnable(false);
        QCOMPARE(m_store->locationPreference().toPropertyList().value(QStringLiteral("enable")),
                 QVariant(QStringLiteral("0")));
        QCOMPARE(m_store->locationLongitude(), 114.1588);
    }

    void locationWritesKeepOtherKeys()
    {
        PropertyList::write(m_store->files().locationFile(),
                            QVariantMap{{QStringLiteral("hookVersion"), qint64(3)}});
        m_store->setLocationEnable(true, 1.0, 2.0);
        QCOMPARE(m_store->locationPreference()
                     .toPropertyList()
                     .value(QStringLiteral("hookVersion"))
                     .toLongLong(),
                 3);
    }

    void pannedCoordinatesNeverReachTheFile()
    {
        m_store->setLocationEnable(true, 10.0, 20.0);
        m_store->setLocationLatitude(-45.0, 170.0);
        QCOMPARE(m_store->locationLatitude(), 10.0);
        QCOMPARE(m_store->locationLongitude(), 20.0);
        QVERIFY(m_store->isLocationEnable());
    }

    void routeFlagIsWrittenIntoTheLocationFile()
    {
        m_store->writeRoutePreference(RouteRecord::fromPropertyList(routeRecord()));
        const QByteArray routeBefore = bytesOf(m_store->files().routeFile());
        m_store->setLocationEnable(true, 1.0, 2.0);

        m_store->setRouteEnable(false);

        QCOMPARE(bytesOf(m_store->files().routeFile()), routeBefore);
        QVariantMap expected = routeRecord();
        expected.insert(QStringLiteral("enable"), QStringLiteral("0"));
        QCOMPARE(m_store->locationPreference().toPropertyList(), expected);
        QVERIFY(m_store->isRouteEnable());
        QVERIFY(!m_store->isLocationEnable());
    }

    void favoritesWithTheWrongRootAreReplaced()
    {
        PropertyList::write(m_store->files().favoritesFile(),
                            QVariantMap{{QStringLiteral("name"), QStringLiteral("not a list")}});
        QVERIFY(m_store->favoritePreference().isEmpty());
        m_store->addFavorite(FavoriteEntry::make(QStringLiteral("Home"), 1.0, 2.0));
        const QList<FavoriteEntry> favorites = m_store->favoritePreference();
        QCOMPARE(favorites.size(), 1);
        QCOMPARE(favorites.first().name(), QStringLiteral("Home"));
    }

    void locationWithTheWrongRootReadsAsEmpty()
    {
        PropertyList::write(m_store->files().locationFile(), QVariantList{QStringLiteral("1")});
        QVERIFY(!m_store->isLocationEnable());
        m_store->setLocationEnable(true);
        QCOMPARE(m_store->locationPreference().toPropertyList(),
                 (QVariantMap{{QStringLiteral("enable"), QStringLiteral("1")}}));
    }

    void binaryFilesAreStillTheUsersData()
    {
        m_store->setLocationEnable(true, 48.85, 2.29);
        // as if the system had converted the file: the same record in binary
        plist_t root = nullptr;
        const QByteArray xml = bytesOf(m_store->files().locationFile());
        plist_from_xml(xml.constData(), uint32_t(xml.size()), &root);
        char *bin = nullptr;
        uint32_t length = 0;
        plist_to_bin(root, &bin, &length);
        writeBytes(m_store->files().locationFile(), QByteArray(bin, qsizetype(length)));
        plist_to_bin_free(bin);
        plist_free(root);

        QVERIFY(m_store->isLocationEnable());
        QCOMPARE(m_store->locationLatitude(), 48.85);
        m_store->setLocationEnable(false);
        QVERIFY(bytesOf(m_store->files().locationFile()).startsWith("<?xml"));
        QCOMPARE(m_store->locationLongitude(), 2.29);
    }

    void whitelistTapsFlipAndKeepKeys()
    {
        PropertyList::write(m_store->files().whitelistFile(),
                            QVariantMap{{QStringLiteral("a.stored.text"), QStringLiteral("1")}});
        WhitelistRecord record = m_store->whitePreference();
        QVERIFY(record.isWhitelisted(QStringLiteral("a.stored.text")));
        QVERIFY(m_store->toggleWhitelist(record, QStringLiteral("a.stored.text")));
        QVERIFY(m_store->toggleWhitelist(record, QStringLiteral("new.app")));
        QCOMPARE(m_store->whitePreference().toPropertyList(),
                 (QVariantMap{{QStringLiteral("a.stored.text"), false},
                              {QStringLiteral("new.app"), true}}));
        QVERIFY(m_store->toggleWhitelist(record, QStringLiteral("new.app")));
        QCOMPARE(m_store->whitePreference().toPropertyList().value(QStringLiteral("new.app")),
                 QVariant(false));
        QVERIFY(!record.isWhitelisted(QStringLiteral("never.tapped")));
    }

    void removingAFavoriteRewritesTheList_data()
    {
        QTest::addColumn<qsizetype>("index");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("first") << qsizetype(0)
                               << QStringList{QStringLiteral("b"), QStringLiteral("c")};
        QTest::newRow("last") << qsizetype(2)
                              << QStringList{QStringLiteral("a"), QStringLiteral("b")};
        QTest::newRow("past the end") << qsizetype(3) << QStringList();
        QTest::newRow("negative") << qsizetype(-1) << QStringList();
    }
    void removingAFavoriteRewritesTheList()
    {
        QFETCH(qsizetype, index);
        QFETCH(QStringList, left);
        for (const char *name : {"a", "b", "c"})
            m_store->addFavorite(FavoriteEntry::make(QString::fromLatin1(name), 1.0, 2.0));
        const QByteArray before = bytesOf(m_store->files().favoritesFile());
        QList<FavoriteEntry> favorites = m_store->favoritePreference();
        QCOMPARE(m_store->removeFavorite(favorites, index), !left.isEmpty());
        if (left.isEmpty()) {
            // out of range: nothing changes, nothing is written
            QCOMPARE(favorites.size(), 3);
            QCOMPARE(bytesOf(m_store->files().favoritesFile()), before);
            return;
        }
        QStringList names;
        for (const FavoriteEntry &entry : m_store->favoritePreference())
            names.append(entry.name());
        QCOMPARE(names, left);
        QCOMPARE(FavoriteEntry::listToPropertyList(favorites),
                 FavoriteEntry::listToPropertyList(m_store->favoritePreference()));
    }

    void entriesNotUnderstoodPassThrough()
    {
        const QString routeFile = m_store->files().routeFile();
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
        QVERIFY(route.isEnabled());
        QCOMPARE(route.start(), 12.75);
        QCOMPARE(route.startSeconds(), 12);
        QVERIFY(!route.hasEnd());
        // every entry counts; what cannot be read reads as 0
        QCOMPARE(route.pointCount(), 3);
        QCOMPARE(route.pointAt(0).latitude(), 0.0);
        QCOMPARE(route.pointAt(1).latitude(), 1.5);
        QCOMPARE(route.pointAt(1).longitude(), 2.0);
        QCOMPARE(route.pointAt(2).longitude(), 0.0);
        route.setPoints(route.points());
        m_store->writeRoutePreference(route);
        QCOMPARE(bytesOf(routeFile), before);

        const QString favoritesFile = m_store->files().favoritesFile();
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

    void hideListKeysOnly()
    {
        PropertyList::write(m_store->files().hideListFile(),
                            QVariantMap{{QStringLiteral("com.a"), false},
                                        {QStringLiteral("com.b"), QStringLiteral("x")}});
        QCOMPARE(m_store->hideListBundles(),
                 (QStringList{QStringLiteral("com.a"), QStringLiteral("com.b")}));
    }
};

TREKMIME_TEST(SettingsStoreTest)
#include "SettingsStoreTest.moc"
