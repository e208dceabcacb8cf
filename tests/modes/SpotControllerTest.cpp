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

// What each operation of the fixed place writes to the location file. The
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
        const auto row = [](const char *name, const char *before, const Operation &operation,
                            const char *enable, const char *latitude, Coordinate candidate) {
            QTest::newRow(name) << QString::fromLatin1(before) << operation
                                << (enable ? QString::fromLatin1(enable) : QString())
                                << QString::fromLatin1(latitude) << candidate;
        };
        row(
            "switch on stores the candidate", "0", [](SpotController &s) { s.switchTo(true); }, "1",
            "30.500000", pin);
        row(
            "switch off stores it too", "1", [](SpotController &s) { s.switchTo(false); }, "0",
            "30.500000", pin);
        row(
            "the flag alone", "0", [](SpotController &s) { s.setFlag(true); }, "1", "1.5", pin);
        row(
            "the map settling never writes", "1",
            [found](SpotController &s) { s.mapSettled(found); }, nullptr, "1.5", found);
        row(
            "a search turns faking off", "1", [](SpotController &s) { s.searchStarted(); }, "0",
            "1.5", pin);
        for (const bool on : {true, false})
            row(
                on ? "a found place, switch on" : "a found place, switch off", on ? "0" : "1",
                [found, on](SpotController &s) {
                    s.searchStarted();
                    s.searchFound(found, on);
                },
                on ? "1" : "0", "1.5", found);
        row(
            "a favourite is stored with faking on", "0",
            [](SpotController &s) {
                s.chooseFavorite(FavoriteEntry::make(QStringLiteral("Tower"), -22.25, 43.5));
            },
            "1", "-22.250000", pin);
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
        if (enable.isNull()) {
            QCOMPARE(bytesOf(file), before);
            return;
        }
        const QVariantMap record = PropertyList::readDictionary(file);
        QCOMPARE(record.value(QStringLiteral("enable")).toString(), enable);
        QCOMPARE(record.value(QStringLiteral("latitude")).toString(), latitude);
        QCOMPARE(record.value(QStringLiteral("odd")), QVariant(7));
        QCOMPARE(spot.isOn(), enable == QLatin1String("1"));
    }

    void addFavorite()
    {
        TestServices world;
        SpotController spot(world.preferences());
        spot.setCandidate({-22.9068467, -43.1728965});
        QVERIFY(spot.addFavorite(QStringLiteral("  Home \n")));
        QVERIFY(spot.addFavorite(QStringLiteral("   "))); // blank: "Unknow", same place again
        const QVariantList favorites = PropertyList::readArray(world.files().favoritesFile());
        QCOMPARE(favorites.size(), 2);
        QCOMPARE(favorites.last().toMap().value(QStringLiteral("name")).toString(),
                 QStringLiteral("Unknow"));
        QCOMPARE(
            favorites.first(),
            QVariant(QVariantMap{{QStringLiteral("name"), QStringLiteral("Home")},
                                 {QStringLiteral("latitude"), QStringLiteral("-22.906847")},
                                 {QStringLiteral("longitude"), QStringLiteral("-43.172897")}}));
    }
};

TREKMIME_TEST(SpotControllerTest)
#include "SpotControllerTest.moc"
