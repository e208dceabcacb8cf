#include "GoldenFile.h"
#include "TestMain.h"

#include "settings/FavoriteEntry.h"
#include "settings/HideList.h"
#include "settings/MasterRecord.h"
#include "settings/PreferenceFiles.h"
#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"
#include "settings/WhitelistRecord.h"

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

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        PreferenceFiles::setDirectory(m_dir->path());
    }

    void fileNamesAreTheHooksOwn()
    {
        const QString dir = m_dir->path() + QLatin1Char('/');
        QCOMPARE(PreferenceFiles::routeFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.route.plist"));
        QCOMPARE(PreferenceFiles::locationFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.location.plist"));
        QCOMPARE(PreferenceFiles::favoritesFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.favorites.plist"));
        QCOMPARE(PreferenceFiles::whitelistFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.whitelist.plist"));
        QCOMPARE(PreferenceFiles::masterFile(),
                 dir + QStringLiteral("com.velmora.trekmimex.master.plist"));
        QCOMPARE(PreferenceFiles::hideListFile(),
                 dir + QStringLiteral("com.velmora.hushdeck.hidelist.plist"));
    }

    void eachFileIsWrittenExactly()
    {
        TMPreferenceUtil::setLocationEnable(true, 22.2846809, 114.1588);
        COMPARE_GOLDEN("location.plist", PreferenceFiles::locationFile());

        TMPreferenceUtil::writeRoutePreference(routeRecord());
        COMPARE_GOLDEN("route.plist", PreferenceFiles::routeFile());

        TMPreferenceUtil::addFavorite(
            FavoriteEntry::make(QStringLiteral(" Tour Eiffel & Champ-de-Mars\n"), 48.8584, 2.2945));
        TMPreferenceUtil::addFavorite(
            FavoriteEntry::make(QStringLiteral(" \t\n "), -33.8568, 151.2153));
        TMPreferenceUtil::addFavorite(
            FavoriteEntry::make(QStringLiteral("香港 <中环>"), 22.2846809, 114.1588));
        COMPARE_GOLDEN("favorites.plist", PreferenceFiles::favoritesFile());

        QVariantMap whitelist;
        TMPreferenceUtil::toggleWhitelist(whitelist, QStringLiteral("org.example.weather"));
        TMPreferenceUtil::toggleWhitelist(whitelist, QStringLiteral("com.example.maps"));
        TMPreferenceUtil::toggleWhitelist(whitelist, QStringLiteral("org.example.weather"));
        COMPARE_GOLDEN("whitelist.plist", PreferenceFiles::whitelistFile());

        MasterRecord::write(MasterRecord::LocationMode);
        COMPARE_GOLDEN("master.plist", PreferenceFiles::masterFile());
    }

    void nothingStoredReadsAsOff()
    {
        QVERIFY(!TMPreferenceUtil::isLocationEnable());
        QVERIFY(!TMPreferenceUtil::isRouteEnable());
        QCOMPARE(TMPreferenceUtil::locationLatitude(), 0.0);
        QCOMPARE(TMPreferenceUtil::locationLongitude(), 0.0);
        QCOMPARE(TMPreferenceUtil::favoritePreference(), QVariantList());
        QCOMPARE(TMPreferenceUtil::routePreference(), QVariantMap());
        QCOMPARE(TMPreferenceUtil::whitePreference(), QVariantMap());
        QCOMPARE(MasterRecord::readMode(), 0);
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
        PropertyList::write(PreferenceFiles::masterFile(), record);
        QCOMPARE(MasterRecord::readMode(), mode);
        // a mode change writes a fresh one-key record
        MasterRecord::write(MasterRecord::RouteMode);
        QCOMPARE(PropertyList::readDictionary(PreferenceFiles::masterFile()),
                 (QVariantMap{{QStringLiteral("mode"), QStringLiteral("0")}}));
    }

    void coordinatesAreStoredWithSixDecimals()
    {
        TMPreferenceUtil::setLocationEnable(true, 22.2846809, 114.1588);
        const QVariantMap record = TMPreferenceUtil::locationPreference();
        QCOMPARE(record.value(QStringLiteral("latitude")), QVariant(QStringLiteral("22.284681")));
        QCOMPARE(record.value(QStringLiteral("longitude")), QVariant(QStringLiteral("114.158800")));
        QCOMPARE(record.value(QStringLiteral("enable")), QVariant(QStringLiteral("1")));
        QVERIFY(TMPreferenceUtil::isLocationEnable());
        QCOMPARE(TMPreferenceUtil::locationLatitude(), 22.284681);
        TMPreferenceUtil::setLocationEnable(false);
        QCOMPARE(TMPreferenceUtil::locationPreference().value(QStringLiteral("enable")),
                 QVariant(QStringLiteral("0")));
        QCOMPARE(TMPreferenceUtil::locationLongitude(), 114.1588);
    }

    void locationWritesKeepOtherKeys()
    {
        PropertyList::write(PreferenceFiles::locationFile(),
                            QVariantMap{{QStringLiteral("hookVersion"), qint64(3)}});
        TMPreferenceUtil::setLocationEnable(true, 1.0, 2.0);
        QCOMPARE(TMPreferenceUtil::locationPreference()
                     .value(QStringLiteral("hookVersion"))
                     .toLongLong(),
                 3);
    }

    void pannedCoordinatesNeverReachTheFile()
    {
        TMPreferenceUtil::setLocationEnable(true, 10.0, 20.0);
        TMPreferenceUtil::setLocationLatitude(-45.0, 170.0);
        QCOMPARE(TMPreferenceUtil::locationLatitude(), 10.0);
        QCOMPARE(TMPreferenceUtil::locationLongitude(), 20.0);
        QVERIFY(TMPreferenceUtil::isLocationEnable());
    }

    void routeFlagIsWrittenIntoTheLocationFile()
    {
        TMPreferenceUtil::writeRoutePreference(routeRecord());
        const QByteArray routeBefore = bytesOf(PreferenceFiles::routeFile());
        TMPreferenceUtil::setLocationEnable(true, 1.0, 2.0);

        TMPreferenceUtil::setRouteEnable(false);

        QCOMPARE(bytesOf(PreferenceFiles::routeFile()), routeBefore);
        QVariantMap expected = routeRecord();
        expected.insert(QStringLiteral("enable"), QStringLiteral("0"));
        QCOMPARE(TMPreferenceUtil::locationPreference(), expected);
        QVERIFY(TMPreferenceUtil::isRouteEnable());
        QVERIFY(!TMPreferenceUtil::isLocationEnable());
    }

    void favoritesWithTheWrongRootAreReplaced()
    {
        PropertyList::write(PreferenceFiles::favoritesFile(),
                            QVariantMap{{QStringLiteral("name"), QStringLiteral("not a list")}});
        QCOMPARE(TMPreferenceUtil::favoritePreference(), QVariantList());
        TMPreferenceUtil::addFavorite(FavoriteEntry::make(QStringLiteral("Home"), 1.0, 2.0));
        const QVariantList favorites = TMPreferenceUtil::favoritePreference();
        QCOMPARE(favorites.size(), 1);
        QCOMPARE(FavoriteEntry::name(favorites.first()), QStringLiteral("Home"));
    }

    void locationWithTheWrongRootReadsAsEmpty()
    {
        PropertyList::write(PreferenceFiles::locationFile(), QVariantList{QStringLiteral("1")});
        QVERIFY(!TMPreferenceUtil::isLocationEnable());
        TMPreferenceUtil::setLocationEnable(true);
        QCOMPARE(TMPreferenceUtil::locationPreference(),
                 (QVariantMap{{QStringLiteral("enable"), QStringLiteral("1")}}));
    }

    void binaryFilesAreStillTheUsersData()
    {
        TMPreferenceUtil::setLocationEnable(true, 48.85, 2.29);
        // as if the system had converted the file: the same record in binary
        plist_t root = nullptr;
        const QByteArray xml = bytesOf(PreferenceFiles::locationFile());
        plist_from_xml(xml.constData(), uint32_t(xml.size()), &root);
        char *bin = nullptr;
        uint32_t length = 0;
        plist_to_bin(root, &bin, &length);
        writeBytes(PreferenceFiles::locationFile(), QByteArray(bin, qsizetype(length)));
        plist_to_bin_free(bin);
        plist_free(root);

        QVERIFY(TMPreferenceUtil::isLocationEnable());
        QCOMPARE(TMPreferenceUtil::locationLatitude(), 48.85);
        TMPreferenceUtil::setLocationEnable(false);
        QVERIFY(bytesOf(PreferenceFiles::locationFile()).startsWith("<?xml"));
        QCOMPARE(TMPreferenceUtil::locationLongitude(), 2.29);
    }

    void whitelistTapsFlipAndKeepKeys()
    {
        PropertyList::write(PreferenceFiles::whitelistFile(),
                            QVariantMap{{QStringLiteral("a.stored.text"), QStringLiteral("1")}});
        QVariantMap record = TMPreferenceUtil::whitePreference();
        QVERIFY(WhitelistRecord::isWhitelisted(record, QStringLiteral("a.stored.text")));
        QVERIFY(TMPreferenceUtil::toggleWhitelist(record, QStringLiteral("a.stored.text")));
        QVERIFY(TMPreferenceUtil::toggleWhitelist(record, QStringLiteral("new.app")));
        QCOMPARE(TMPreferenceUtil::whitePreference(),
                 (QVariantMap{{QStringLiteral("a.stored.text"), false},
                              {QStringLiteral("new.app"), true}}));
        QVERIFY(TMPreferenceUtil::toggleWhitelist(record, QStringLiteral("new.app")));
        QCOMPARE(TMPreferenceUtil::whitePreference().value(QStringLiteral("new.app")),
                 QVariant(false));
        QVERIFY(!WhitelistRecord::isWhitelisted(record, QStringLiteral("never.tapped")));
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
            TMPreferenceUtil::addFavorite(FavoriteEntry::make(QString::fromLatin1(name), 1.0, 2.0));
        const QByteArray before = bytesOf(PreferenceFiles::favoritesFile());
        QVariantList favorites = TMPreferenceUtil::favoritePreference();
        QCOMPARE(TMPreferenceUtil::removeFavorite(favorites, index), !left.isEmpty());
        if (left.isEmpty()) {
            // out of range: nothing changes, nothing is written
            QCOMPARE(favorites.size(), 3);
            QCOMPARE(bytesOf(PreferenceFiles::favoritesFile()), before);
            return;
        }
        QStringList names;
        for (const QVariant &entry : TMPreferenceUtil::favoritePreference())
            names.append(FavoriteEntry::name(entry));
        QCOMPARE(names, left);
        QCOMPARE(favorites, TMPreferenceUtil::favoritePreference());
    }

    void hideListKeysOnly()
    {
        PropertyList::write(PreferenceFiles::hideListFile(),
                            QVariantMap{{QStringLiteral("com.a"), false},
                                        {QStringLiteral("com.b"), QStringLiteral("x")}});
        QCOMPARE(HideList::bundleIdentifiers(),
                 (QStringList{QStringLiteral("com.a"), QStringLiteral("com.b")}));
    }
};

TREKMIME_TEST(SettingsStoreTest)
#include "SettingsStoreTest.moc"
