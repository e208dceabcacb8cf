#include "StubHttpServer.h"
#include "TestMain.h"

#include "platform/Configuration.h"
#include "ui/ConfiguredTileSource.h"
#include "ui/HttpTileSource.h"
#include "ui/MBTilesTileSource.h"
#include "ui/SlippyMap.h"

#include <QBuffer>
#include <QNetworkAccessManager>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

QByteArray pngOf(const QColor &color)
{
    QImage image(256, 256, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// answers on the next turn of the event loop with one colour per tile
class SolidTileSource : public TileSource
{
public:
    QString attribution() const override { return QString(); }
    void requestTile(const TileId &tile) override
    {
        requested.append(tile);
        if (!answer)
            return;
        QImage image(256, 256, QImage::Format_RGB32);
        image.fill(color);
        QTimer::singleShot(0, this, [this, tile, image] { emit tileLoaded(tile, image); });
    }
    const QColor color = Qt::blue;
    bool answer = true;
    QList<TileId> requested;
};

} // namespace

class TileSourceTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_cacheDir;
    QNetworkAccessManager m_network;

    HttpTileSource::Options optionsFor(const StubHttpServer &server) const
    {
        HttpTileSource::Options options;
        options.urlTemplate =
            server.baseUrl().toString() + QStringLiteral("/tiles/{z}/{x}/{y}.png");
        options.userAgent = Configuration().userAgent();
        options.cacheDirectory = m_cacheDir.path() + QStringLiteral("/") +
                                 QString::fromLatin1(QTest::currentDataTag()) +
                                 QString::fromLatin1(QTest::currentTestFunction());
        return options;
    }

private slots:
    void fetchesThenServesFromTheCache_data()
    {
        QTest::addColumn<QByteArray>("cacheControl");
        QTest::addColumn<QList<int>>("statuses"); // the server's answer to each ask in turn
        QTest::addColumn<int>("requests");
        const QList<int> twoFine{200, 200};
        QTest::newRow("fresh for an hour") << QByteArray("max-age=3600") << twoFine << 1;
        QTest::newRow("no expiry: kept by default") << QByteArray() << twoFine << 1;
        QTest::newRow("already expired: asked again") << QByteArray("max-age=0") << twoFine << 2;
        QTest::newRow("errors fail, yet an old tile serves")
            << QByteArray("max-age=0") << QList<int>{404, 200, 500} << 3;
    }
    void fetchesThenServesFromTheCache()
    {
        QFETCH(QByteArray, cacheControl);
        QFETCH(QList<int>, statuses);
        QFETCH(int, requests);
        qsizetype ask = 0;
        StubHttpServer server([&, png = pngOf(Qt::red)](const StubHttpServer::Request &) {
            StubHttpServer::Response response{statuses.value(ask), "image/png", png, {}};
            if (!cacheControl.isEmpty())
                response.extraHeaders.append({"Cache-Control", cacheControl});
            return response;
        });
        QVERIFY(server.listen());
        // every ask by a new source over the same cache; once the server fails,
        // an expired copy is better than nothing
        bool cached = false;
        for (ask = 0; ask < statuses.size(); ++ask) {
            HttpTileSource source(&m_network, optionsFor(server));
            QSignalSpy tiles(&source, &TileSource::tileLoaded);
            QSignalSpy failed(&source, &TileSource::tileFailed);
            source.requestTile(TileId{3, 4, 2});
            QTRY_COMPARE(tiles.size() + failed.size(), 1);
            cached = cached || statuses.at(ask) == 200;
            QCOMPARE(tiles.size(), cached ? 1 : 0);
            if (cached)
                QCOMPARE(tiles.first().at(1).value<QImage>().pixelColor(5, 5), QColor(Qt::red));
        }
        QCOMPARE(server.requests().size(), requests);
        QCOMPARE(server.requests().first().target, QByteArray("/tiles/3/4/2.png"));
        QCOMPARE(server.requests().first().headers.value("user-agent"),
                 Configuration().userAgent().toUtf8());
    }

    void asksTheServerSparingly()
    {
        StubHttpServer server([](const StubHttpServer::Request &) {
            return StubHttpServer::Response{0, {}, {}, {}}; // never answers
        });
        QVERIFY(server.listen());
        HttpTileSource::Options options = optionsFor(server);
        options.maximumRequests = 2;
        HttpTileSource source(&m_network, options);
        for (int x = 0; x < 6; ++x)
            source.requestTile(TileId{3, x, 0});
        source.requestTile(TileId{3, 0, 0}); // on its way already
        QTRY_COMPARE(server.requests().size(), 2);
        QTest::qWait(50);
        QCOMPARE(server.requests().size(), 2);
        QCOMPARE(server.requests().first().target, QByteArray("/tiles/3/0/0.png"));
    }

    void readsMBTiles()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("offline.mbtiles"));
        {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("writer"));
            db.setDatabaseName(path);
            QVERIFY(db.open());
            // rows count from the south: XYZ row 1 of 4 is row 2 here
            for (const QString &statement :
                 {QStringLiteral("CREATE TABLE metadata (name text, value text)"),
                  QStringLiteral("CREATE TABLE tiles (zoom_level integer, tile_column integer, "
                                 "tile_row integer, tile_data blob)"),
                  QStringLiteral("INSERT INTO metadata VALUES ('attribution', '<a href=\"x\">"
                                 "&copy; OpenStreetMap contributors</a>'), ('maxzoom', '14')"),
                  QStringLiteral("INSERT INTO tiles VALUES (2, 1, 2, X'%1'), (2, 1, 1, X'%2')")
                      .arg(QString::fromLatin1(pngOf(Qt::yellow).toHex()),
                           QString::fromLatin1(pngOf(Qt::cyan).toHex()))})
                QVERIFY(QSqlQuery(db).exec(statement));
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("writer"));
        MBTilesTileSource source(path);
        QVERIFY2(source.isOpen(), qPrintable(source.errorString()));
        QCOMPARE(source.attribution(), QStringLiteral("\u00a9 OpenStreetMap contributors"));
        QCOMPARE(source.maximumZoom(), 14);
        QSignalSpy loaded(&source, &TileSource::tileLoaded);
        QSignalSpy failed(&source, &TileSource::tileFailed);
        source.requestTile(TileId{2, 1, 1});
        source.requestTile(TileId{2, 1, 2});
        source.requestTile(TileId{2, 3, 3});
        QCOMPARE(loaded.size() + failed.size(), 0); // answered later
        QTRY_COMPARE(loaded.size() + failed.size(), 3);
        QCOMPARE(loaded.at(0).at(0).value<TileId>(), (TileId{2, 1, 1}));
        QCOMPARE(loaded.at(0).at(1).value<QImage>().pixelColor(0, 0), QColor(Qt::yellow));
        QCOMPARE(loaded.at(1).at(1).value<QImage>().pixelColor(0, 0), QColor(Qt::cyan));
        QCOMPARE(failed.first().at(0).value<TileId>(), (TileId{2, 3, 3}));
    }

    void configurationChoosesTheSource()
    {
        Configuration configuration;
        configuration.set(Configuration::TileUrl,
                          QStringLiteral("http://127.0.0.1:9/{z}/{x}/{y}.png"));
        auto web = createConfiguredTileSource(configuration, &m_network, m_cacheDir.path());
        QCOMPARE(qobject_cast<HttpTileSource *>(web.get())->urlFor(TileId{5, 17, 11}).toString(),
                 QStringLiteral("http://127.0.0.1:9/5/17/11.png"));
        configuration.mbtiles = m_cacheDir.filePath(QStringLiteral("none.mbtiles"));
        // a file that cannot be opened is reported, and the map shows its grid
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("cannot open the MBTiles file")));
        QVERIFY(qobject_cast<MBTilesTileSource *>(
            createConfiguredTileSource(configuration, &m_network, m_cacheDir.path()).get()));

        configuration.mbtiles.clear();
        configuration.tileUrl.clear();
        QVERIFY(!createConfiguredTileSource(configuration, &m_network, m_cacheDir.path()));
    }

    void layerDrawsTilesAndFillsTheGaps()
    {
        SolidTileSource source;
        SlippyMap map;
        map.setTileSource(&source);
        map.camera().setViewportSize(QSizeF(512, 512));
        map.camera().setZoom(3.0);
        map.camera().setCenterWorld(QPointF(0.5, 0.5));
        QSignalSpy changed(&map, &SlippyMap::changed);

        // first frame: the tiles in sight asked for, the gaps light, never black
        const QImage frame = map.render();
        QCOMPARE(source.requested.size(), 4);
        for (const QPoint &point : {QPoint(10, 10), QPoint(256, 256), QPoint(500, 400)})
            QVERIFY(qGray(frame.pixel(point)) > 150);
        // the middle tiles are asked for last, as sources serve the newest first
        QTRY_VERIFY(changed.size() >= 4);
        QCOMPARE(map.render().pixelColor(400, 300), QColor(Qt::blue));
        QCOMPARE(source.requested.size(), 4); // nothing asked twice

        // one level in, before those tiles come: the parents, enlarged
        source.answer = false;
        map.camera().setZoom(4.0);
        QCOMPARE(map.render().pixelColor(100, 100), QColor(Qt::blue));
        QVERIFY(!map.tiles().hasTile(TileId{4, 7, 7}));
    }

    void keptTilesFollowTheLines_data()
    {
        QTest::addColumn<double>("zoom");
        QTest::newRow("whole level") << 5.0;
        QTest::newRow("between levels") << 5.4;
    }
    void keptTilesFollowTheLines()
    {
        QFETCH(double, zoom);
        SolidTileSource source;
        SlippyMap map;
        map.setTileSource(&source);
        map.camera().setViewportSize(QSizeF(300, 300));
        map.camera().setZoom(zoom);
        map.camera().setCenter(Coordinate{10.0, 10.0});
        const auto across = [&](double y) {
            return std::make_shared<MapPolyline>(
                QList<Coordinate>{map.camera().pointToCoordinate(QPointF(-10, y)),
                                  map.camera().pointToCoordinate(QPointF(310, y + 40))});
        };
        const MapOverlayPtr line = across(100);
        map.addOverlay(line, MapPolylineRenderer{3.0, QColor(Qt::red)});
        map.render();
        QTRY_VERIFY(map.tiles().hasTile(TileId{5, 16, 15}));
        map.render(); // the zoom has come to rest: tiles are kept with the line

        map.camera().setZoom(zoom + 1e-9); // a moving zoom draws the line afresh
        const QImage direct = map.render();
        map.camera().setZoom(zoom);
        map.render();
        const QImage kept = map.render();
        const auto redPixels = [](const QImage &image, int x) {
            int count = 0;
            for (int y = 0; y < image.height(); ++y)
                count += qRed(image.pixel(x, y)) > 200 && qBlue(image.pixel(x, y)) < 100;
            return count;
        };
        for (int x : {5, 150, 295}) {
            QVERIFY(redPixels(direct, x) >= 2);
            QCOMPARE(redPixels(kept, x), redPixels(direct, x));
        }

        // lines taken away or added show at once
        map.removeOverlay(line);
        QCOMPARE(redPixels(map.render(), 150), 0);
        map.addOverlay(across(200), MapPolylineRenderer{3.0, QColor(Qt::red)});
        QVERIFY(qRed(map.render().pixel(150, 220)) > 200);
    }
};

TREKMIME_TEST(TileSourceTest)
#include "TileSourceTest.moc"
