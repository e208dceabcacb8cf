#include "FileBytes.h"
#include "TestMain.h"
#include "TestServices.h"

#include "modes/SpotController.h"
#include "settings/FavoriteEntry.h"
#include "settings/PropertyList.h"

namespace {
const Coordinate Pin{30.5, 60.25}, Found{48.8606, 2.3376};

} // namespace

// What each operation of the fixed place writes to the location file. The
// candidate (the map's centre) is 30.5, 60.25; the file holds "1.5", "2.5".
class SpotControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void writes_data()
    {
        // "enable" before and after ("-": the file is untouched), the latitude after
        QTest::addColumn<QStringList>("file");
        QTest::addColumn<Coordinate>("candidate");
        const auto row = [](const char *operation, const char *file, Coordinate candidate) {
            QTest::newRow(operation) << QString::fromLatin1(file).split(u' ') << candidate;
        };
        row("switch on", "0 1 30.500000", Pin);
        row("switch off", "1 0 30.500000", Pin);
        row("flag", "0 1 1.5", Pin);
        row("map settled", "1 - 1.5", Found);
        row("search", "1 0 1.5", Pin); // a search turns faking off
        row("found, switch on", "0 1 1.5", Found);
        row("found, switch off", "1 0 1.5", Found);
        row("favourite", "0 1 -22.250000", Pin);
    }
    void writes()
    {
        QFETCH(QStringList, file);
        QFETCH(Coordinate, candidate);
        TestServices world;
        const QString path = world.files().locationFile();
        QVERIFY(PropertyList::write(path, QVariantMap{{u"enable"_s, file[0]},
                                                      {u"latitude"_s, u"1.5"_s},
                                                      {u"longitude"_s, u"2.5"_s},
                                                      {u"odd"_s, 7}}));
        const QByteArray before = bytesOf(path);
        SpotController spot(world.preferences());
        QCOMPARE(spot.takeStoredPlace(), (Coordinate{1.5, 2.5}));
        spot.setCandidate(Pin);
        const QString operation = QString::fromLatin1(QTest::currentDataTag());
        if (operation.startsWith(u"switch"_s))
            spot.switchTo(operation.endsWith(u"on"_s));
        else if (operation == u"flag"_s)
            spot.setFlag(true);
        else if (operation == u"map settled"_s)
            spot.mapSettled(Found);
        else if (operation == u"favourite"_s)
            spot.chooseFavorite(FavoriteEntry::make(u"Tower"_s, -22.25, 43.5));
        else
            spot.searchStarted();
        if (operation.startsWith(u"found"_s))
            spot.searchFound(Found, operation.endsWith(u"on"_s));
        QCOMPARE(spot.candidate(), candidate);
        if (file[1] == u'-') {
            QCOMPARE(bytesOf(path), before);
            return;
        }
        const QVariantMap record = PropertyList::readDictionary(path);
        QCOMPARE(record.value(u"enable"_s).toString(), file[1]);
        QCOMPARE(record.value(u"latitude"_s).toString(), file[2]);
        QCOMPARE(record.value(u"odd"_s), QVariant(7));
        QCOMPARE(spot.isOn(), file[1] == u'1');
    }
};

TREKMIME_TEST(SpotControllerTest)
#include "SpotControllerTest.moc"
