#include "TestMain.h"
#include "TestServices.h"

#include "modes/SpotController.h"
#include "settings/FavoriteEntry.h"
#include "settings/PropertyList.h"

#include <QFile>
#include <QTest>

#include <functional>

namespace {
using Operation = std::function<void(SpotController &)>;

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

Q_DECLARE_METATYPE(Operation)

// The fixed place behind the fixed-location screen, its favourites list and
// trekmime-ctl: what each operation writes to the location file. The
// candidate (the map's centre) is 30.5, 60.25; the file holds "1.5", "2.5".
class SpotControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void writes_data()
    {
        QTest::addColumn<QString>("enableBefore");
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("enable"); // null: the file is not changed at all
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<Coordinate>("candidate");
        const Coordinate pin{30.5, 60.25}, found{48.8606, 2.3376};
        const QString stored = QStringLiteral("1.5");
        QTest::newRow("switch on stores the candidate")
            << "0" << Operation([](SpotController &s) { s.switchTo(true); }) << "1"
            << "30.500000" << pin;
        QTest::newRow("switch off stores it too")
            << "1" << Operation([](SpotController &s) { s.switchTo(false); }) << "0"
            << "30.500000" << pin;
        QTest::newRow("the flag alone")
            << "0" << Operation([](SpotController &s) { s.setFlag(true); }) << "1" << stored << pin;
        QTest::newRow("the map settling never moves the stored place")
            << "1" << Operation([found](SpotController &s) { s.mapSettled(found); }) << QString()
            << stored << found;
        QTest::newRow("a search turns faking off")
            << "1" << Operation([](SpotController &s) { s.searchStarted(); }) << "0" << stored
            << pin;
        QTest::newRow("a found place: the flag as the switch shows it")
            << "0" << Operation([found](SpotController &s) {
                   s.searchStarted();
                   s.searchFound(found, true);
               })
            << "1" << stored << found;
        QTest::newRow("a found place, switch off") << "1" << Operation([found](SpotController &s) {
            s.searchStarted();
            s.searchFound(found, false);
        }) << "0" << stored << found;
        QTest::newRow("a favourite is stored with faking on")
            << "0" << Operation([](SpotController &s) {
                   s.chooseFavorite(FavoriteEntry::make(QStringLiteral("Tower"), -22.25, 43.5));
               })
            << "1"
            << "-22.250000" << pin;
    }
    void writes()
    {
        QFETCH(QString, enableBefore);
        QFETCH(Operation, operation);
        QFETCH(QString, enable);
        QFETCH(QString, latitude);
        QFETCH(Coordinate, candidate);
        TestServices world;
        const QString file = world.files().locationFile();
        QVERIFY(PropertyList::write(
            file, QVariantMap{{QStringLiteral("enable"), enableBefore},
                              {QStringLiteral("latitude"), QStringLiteral("1.5")},
                              {QStringLiteral("longitude"), QStringLiteral("2.5")},
                              {QStringLiteral("odd"), 7}}));
        const QByteArray before = bytesOf(file);
        SpotController spot(world.preferences());
        QCOMPARE(spot.takeStoredPlace(), (Coordinate{1.5, 2.5}));
        spot.setCandidate({30.5, 60.25});
        operation(spot);
        QCOMPARE(spot.candidate(), candidate);
        const QVariantMap record = PropertyList::readDictionary(file);
        if (enable.isNull()) {
            QCOMPARE(bytesOf(file), before);
            return;
        }
        QCOMPARE(record.value(QStringLiteral("enable")).toString(), enable);
        QCOMPARE(record.value(QStringLiteral("latitude")).toString(), latitude);
        QCOMPARE(record.value(QStringLiteral("odd")), QVariant(7));
        QCOMPARE(spot.isOn(), enable == QLatin1String("1"));
    }

    void addFavorite_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("name");
        QTest::newRow("trimmed") << QStringLiteral("  Home \n") << QStringLiteral("Home");
        QTest::newRow("blank") << QStringLiteral("   ") << QStringLiteral("Unknow");
    }
    void addFavorite()
    {
        QFETCH(QString, typed);
        QFETCH(QString, name);
        TestServices world;
        SpotController spot(world.preferences());
        spot.setCandidate({-22.9068467, -43.1728965});
        QVERIFY(spot.addFavorite(typed));
        QVERIFY(spot.addFavorite(typed)); // twice on one place: two entries
        const QVariantList favorites = PropertyList::readArray(world.files().favoritesFile());
        QCOMPARE(favorites.size(), 2);
        QCOMPARE(
            favorites.first(),
            QVariant(QVariantMap{{QStringLiteral("name"), name},
                                 {QStringLiteral("latitude"), QStringLiteral("-22.906847")},
                                 {QStringLiteral("longitude"), QStringLiteral("-43.172897")}}));
    }
};

TREKMIME_TEST(SpotControllerTest)
#include "SpotControllerTest.moc"
