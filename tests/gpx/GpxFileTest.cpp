#include "TestMain.h"
#include "support/FileBytes.h"
#include "support/GpxDocument.h"

#include "gpx/GpxFile.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <QTimeZone>

namespace {

using Places = QList<std::pair<double, double>>;

Places placesOf(const QList<Coordinate> &points)
{
    Places places;
    for (const Coordinate &point : points)
        places.append({point.latitude, point.longitude});
    return places;
}

const auto gpx = gpxDocument;

} // namespace

class GpxFileTest : public QObject
{
    Q_OBJECT

private slots:
    void favouritesAndTrackSurviveAWriteAndARead()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"trip.gpx"_s);
        const QList<FavoriteEntry> favorites{
            FavoriteEntry::make(u"Café & <Bar> \"quoted\" 中文"_s, 22.284681, 114.158177),
            FavoriteEntry::fromPropertyList(u"not a place"_s), // left out
            FavoriteEntry::make(u"  South  "_s, -33.856784, -0.000001),
        };
        const QList<RoutePoint> track{{22.2846809, 114.1581773}, {-89.999999999, 179.123456789}};
        const QDateTime away(QDate(2024, 2, 29), QTime(14, 30, 15), QTimeZone(7200));
        QCOMPARE(Gpx::write(path, favorites, track, {away, away.addSecs(61)}), QString());
        QVERIFY(!Gpx::write(dir.filePath(u"missing/trip.gpx"_s), favorites, track).isEmpty());

        const QByteArray xml = bytesOf(path);
        QVERIFY(xml.contains("<time>2024-02-29T12:31:16Z</time>"));
        QVERIFY(xml.contains(R"(lon="-0.000001")")); // never in exponent form
        const Gpx::Content back = Gpx::read(path);
        QCOMPARE(back.error, QString());
        QCOMPARE(placesOf(back.track),
                 (Places{{22.2846809, 114.1581773}, {-89.999999999, 179.123456789}}));
        QCOMPARE(FavoriteEntry::listToPropertyList(back.waypoints),
                 FavoriteEntry::listToPropertyList({favorites[0], favorites[2]}));
    }

    // Which points a file's track is made of.
    void theTrackComesFromTheFirstTrackOrElseTheFirstRoute_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<Places>("track");
        QTest::addColumn<QStringList>("names");
        const char *route = R"(<rte><rtept lat="3" lon="4"/><rtept lat="5" lon="6"/></rte>)";
        addRow("segments in order",
               gpx(R"(<trk><name>a</name><trkseg><trkpt lat=" +1 " lon="2.0">)"
                   R"(<ele>4</ele><time>x</time></trkpt></trkseg><trkseg>)"
                   R"(<trkpt lat="-1" lon="-2"/></trkseg></trk>)"),
               Places{{1, 2}, {-1, -2}}, QStringList());
        addRow("route points", gpx(route), Places{{3, 4}, {5, 6}}, QStringList());
        addRow("a track before a route",
               gpx(QByteArray(route) + R"(<trk><trkseg><trkpt lat="7" lon="8"/></trkseg></trk>)"
                                       R"(<trk><trkseg><trkpt lat="9" lon="9"/></trkseg></trk>)"),
               Places{{7, 8}}, QStringList());
        addRow("an empty track, then a route", gpx(QByteArray("<trk><trkseg/></trk>") + route),
               Places{{3, 4}, {5, 6}}, QStringList());
        addRow("waypoints only",
               gpx(R"(<wpt lat="1.5" lon="2.5"><ele>3</ele><name> Home </name></wpt>)"
                   R"(<wpt lat="0" lon="0"/><extensions><wpt lat="99" lon="0"/></extensions>)"),
               Places(), QStringList{u"Home"_s, u"Unknow"_s});
        addRow("GPX 1.0",
               QByteArray(R"(<gpx xmlns="http://www.topografix.com/GPX/1/0" version="1.0">)"
                          R"(<rte><rtept lat="3" lon="4"/></rte></gpx>)"),
               Places{{3, 4}}, QStringList());
    }
    void theTrackComesFromTheFirstTrackOrElseTheFirstRoute()
    {
        QFETCH(QByteArray, xml);
        QFETCH(Places, track);
        QFETCH(QStringList, names);
        const Gpx::Content content = Gpx::fromXml(xml);
        QCOMPARE(content.error, QString());
        QCOMPARE(placesOf(content.track), track);
        QStringList read;
        for (const FavoriteEntry &waypoint : content.waypoints)
            read.append(waypoint.name());
        QCOMPARE(read, names);
    }

    void badFilesAreRefusedWithOneLine_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("error");
        const char *point = R"(<rte><rtept lat="1" lon="1"/><rtept lat="2" lon="2"/></rte>)";
        addRow("empty", QByteArray(), u"not a GPX file"_s);
        addRow("text", QByteArray("lat=1 lon=2"), u"not a GPX file"_s);
        addRow("no points", gpx("<metadata/><trk><trkseg/></trk>"), u"holds no points"_s);
        addRow("truncated", gpx(point).left(90), u"not a readable GPX file"_s);
        addRow("junk after the points", gpx(point) + "<", u"not a readable GPX file"_s);
        addRow("latitude 90.5", gpx(R"(<wpt lat="90.5" lon="0"/>)"), u"latitude"_s);
        addRow("latitude nan", gpx(R"(<trk><trkseg><trkpt lat="nan" lon="0"/></trkseg></trk>)"),
               u"latitude"_s);
        addRow("latitude missing", gpx(R"(<rte><rtept lon="0"/></rte>)"), u"latitude"_s);
        addRow("longitude -180.1", gpx(R"(<wpt lat="0" lon="-180.1"/>)"), u"longitude"_s);
        addRow("longitude inf", gpx(R"(<rte><rtept lat="0" lon="inf"/></rte>)"), u"longitude"_s);
        addRow("longitude text", gpx(R"(<wpt lat="0" lon="1,5"/>)"), u"longitude"_s);
        addRow("too many points", gpx(QByteArray(point) + R"(<wpt lat="1" lon="1"/>)"),
               u"more than 2 points"_s);
    }
    void badFilesAreRefusedWithOneLine()
    {
        QFETCH(QByteArray, xml);
        QFETCH(QString, error);
        const Gpx::Content content = Gpx::fromXml(xml, 2);
        QVERIFY2(content.error.contains(error), qPrintable(content.error));
        QVERIFY(!content.error.contains(u'\n'));
        QVERIFY(content.waypoints.isEmpty() && content.track.isEmpty());
    }
};

TREKMIME_TEST(GpxFileTest)
#include "GpxFileTest.moc"
