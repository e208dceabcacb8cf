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
    return {{u"enable"_s, u"1"_s},
            {u"start"_s, u"1700000000.000000"_s},
            {u"end"_s, u"1700003600.000000"_s},
            {u"s"_s, u"Central"_s},
            {u"e"_s, u"Kowloon"_s},
            {u"points"_s, QVariantList{QVariantMap{{u"lat"_s, 22.5}, {u"lng"_s, 114.25}},
                                       QVariantMap{{u"lat"_s, -0.5}, {u"lng"_s, 114.0}}}}};
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
            FavoriteEntry::make(u" Tour Eiffel & Champ-de-Mars\n"_s, 48.8584, 2.2945));
        m_store->addFavorite(FavoriteEntry::make(u" \t\n "_s, -33.8568, 151.2153));
        m_store->addFavorite(FavoriteEntry::make(u"香港 <中环>"_s, 22.2846809, 114.1588));
        COMPARE_GOLDEN("favorites.plist", files().favoritesFile());

        WhitelistRecord whitelist;
        m_store->toggleWhitelist(whitelist, u"org.example.weather"_s);
        m_store->toggleWhitelist(whitelist, u"com.example.maps"_s);
        m_store->toggleWhitelist(whitelist, u"org.example.weather"_s);
        COMPARE_GOLDEN("whitelist.plist", files().whitelistFile());

        m_store->writeMode(MasterRecord::LocationMode);
        COMPARE_GOLDEN("master.plist", files().masterFile());

        // the names the hooking component looks for
        PropertyList::write(files().hideListFile(), QVariantMap());
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files),
                 (QStringList{u"com.velmora.hushdeck.hidelist.plist"_s,
                              u"com.velmora.trekmimex.favorites.plist"_s,
                              u"com.velmora.trekmimex.location.plist"_s,
                              u"com.velmora.trekmimex.master.plist"_s,
                              u"com.velmora.trekmimex.route.plist"_s,
                              u"com.velmora.trekmimex.whitelist.plist"_s}));
    }

    // Text XML cannot hold (control characters, a NUL) still gives files
    // that parse, with the text's length kept.
    void everyFileParsesWhateverTheText()
    {
        QString odd = u"A"_s;
        for (char16_t c = 0; c < 0x20; ++c)
            odd += QChar(c);
        odd += QChar(0xFFFE) + u"B"_s;
        m_store->addFavorite(FavoriteEntry::make(odd, 22.3, 114.2));
        WhitelistRecord whitelist;
        m_store->toggleWhitelist(whitelist, odd);
        RouteRecord route;
        route.setStartAddress(odd);
        route.setEndAddress(odd);
        m_store->writeRoutePreference(route);
        for (const QString &file :
             {files().favoritesFile(), files().whitelistFile(), files().routeFile()}) {
            QProcess xmllint;
            xmllint.start(u"xmllint"_s, {u"--noout"_s, file});
            QVERIFY(xmllint.waitForFinished());
            QVERIFY2(xmllint.exitCode() == 0, xmllint.readAllStandardError().constData());
        }
        QString expected = odd;
        for (QChar &c : expected) {
            if (c != u'A' && c != u'B' && c != u'\t' && c != u'\n' && c != u'\r')
                c = QChar::ReplacementCharacter;
        }
        QCOMPARE(m_store->routePreference().startAddress(), expected);
    }

    void nothingStoredReadsAsOff()
    {
        QVERIFY(!m_store->isLocationEnable() && !m_store->isRouteEnable() && m_store->mode() == 0);
        QVERIFY(m_store->favoritePreference().isEmpty() && m_store->routePreference().isEmpty());
        QVERIFY(m_store->locationLatitude() == 0.0 && m_store->whitePreference().size() == 0);
        // reading never creates a file
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
    }

    void locationWritesKeepCoordinatesAndOtherKeys()
    {
        PropertyList::write(files().locationFile(), QVariantMap{{u"hookVersion"_s, qint64(3)}});
        m_store->setLocationEnable(true, 22.2846809, 114.1588);
        QCOMPARE(m_store->locationLatitude(), 22.284681);
        // panned coordinates never reach the file
        m_store->setLocationLatitude(-45.0, 170.0);
        m_store->setLocationEnable(false);
        QCOMPARE(m_store->locationPreference().toPropertyList(),
                 (QVariantMap{{u"hookVersion"_s, qint64(3)},
                              {u"enable"_s, u"0"_s},
                              {u"latitude"_s, u"22.284681"_s},
                              {u"longitude"_s, u"114.158800"_s}}));
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
        expected.insert(u"enable"_s, u"0"_s);
        QCOMPARE(m_store->locationPreference().toPropertyList(), expected);
        QVERIFY(m_store->isRouteEnable() && !m_store->isLocationEnable());
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
        PropertyList::write(files().favoritesFile(), QVariantMap{{u"name"_s, u"not a list"_s}});
        QVERIFY(m_store->favoritePreference().isEmpty());
        m_store->addFavorite(FavoriteEntry::make(u"Home"_s, 1.0, 2.0));
        QCOMPARE(FavoriteEntry::listToPropertyList(m_store->favoritePreference()).size(), 1);

        PropertyList::write(files().locationFile(), QVariantList{u"1"_s});
        QVERIFY(!m_store->isLocationEnable());
        m_store->setLocationEnable(true);
        QCOMPARE(m_store->locationPreference().toPropertyList(),
                 (QVariantMap{{u"enable"_s, u"1"_s}}));
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
        PropertyList::write(files().whitelistFile(), QVariantMap{{u"a.stored.text"_s, u"1"_s}});
        WhitelistRecord record = m_store->whitePreference();
        QVERIFY(record.isWhitelisted(u"a.stored.text"_s));
        QVERIFY(m_store->toggleWhitelist(record, u"a.stored.text"_s) &&
                m_store->toggleWhitelist(record, u"new.app"_s));
        QCOMPARE(m_store->whitePreference().toPropertyList(),
                 (QVariantMap{{u"a.stored.text"_s, false}, {u"new.app"_s, true}}));
        QVERIFY(!record.isWhitelisted(u"never.tapped"_s));
    }

    void removingAFavoriteRewritesTheList()
    {
        for (const char *name : {"a", "b", "c", "d"})
            m_store->addFavorite(FavoriteEntry::make(QString::fromLatin1(name), 1.0, 2.0));
        const QByteArray before = bytesOf(files().favoritesFile());
        QList<FavoriteEntry> favorites = m_store->favoritePreference();
        // out of range: nothing changes, nothing is written
        QVERIFY(!m_store->removeFavorite(favorites, 4) && !m_store->removeFavorite(favorites, -1));
        QCOMPARE(favorites.size(), 4);
        QCOMPARE(bytesOf(files().favoritesFile()), before);
        QVERIFY(m_store->removeFavorite(favorites, 0) && m_store->removeFavorite(favorites, 2));
        QStringList names;
        for (const FavoriteEntry &entry : m_store->favoritePreference())
            names.append(entry.name());
        QCOMPARE(names, (QStringList{u"b"_s, u"c"_s}));
    }

    void entriesNotUnderstoodPassThrough()
    {
        const QString routeFile = files().routeFile();
        const QVariantList points{
            u"not a point"_s,
            QVariantMap{{u"lat"_s, u"1.5"_s}, {u"lng"_s, qint64(2)}, {u"alt"_s, 9.0}},
            QVariantMap{{u"lat"_s, 3.0}}};
        PropertyList::write(
            routeFile,
            QVariantMap{{u"enable"_s, true}, {u"start"_s, 12.75}, {u"points"_s, points}});
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
        PropertyList::write(
            favoritesFile,
            QVariantList{u"a text"_s, QVariantMap{{u"name"_s, qint64(5)}}, qint64(7)});
        QList<FavoriteEntry> favorites = m_store->favoritePreference();
        QVERIFY(!favorites.at(0).isPlace() && favorites.at(1).isPlace());
        QCOMPARE(favorites.at(1).name(), QString()); // only a text is a name
        QVERIFY(m_store->removeFavorite(favorites, 1));
        QCOMPARE(PropertyList::readArray(favoritesFile), (QVariantList{u"a text"_s, qint64(7)}));
    }
};

TREKMIME_TEST(SettingsStoreTest)
#include "SettingsStoreTest.moc"
