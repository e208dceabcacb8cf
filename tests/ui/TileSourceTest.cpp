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
        image.fill(Qt::blue);
        QTimer::singleShot(0, this, [this, tile, image] { emit tileLoaded(tile, image); });
    }
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
        options.urlTemplate = server.baseUrl().toString() + u"/tiles/{z}/{x}/{y}.png"_s;
        options.userAgent = Configuration().userAgent();
        options.cacheDirectory = m_cacheDir.path() + u"/"_s +
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
        addRow("fresh for an hour", QByteArray("max-age=3600"), twoFine, 1);
        addRow("already expired: asked again", QByteArray("max-age=0"), twoFine, 2);
        addRow("errors fail, yet an old tile serves", QByteArray("max-age=0"),
               QList<int>{404, 200, 500}, 3);
    }
    void fetchesThenServesFromTheCache()
    {
        QFETCH(QByteArray, cacheControl);
        QFETCH(QList<int>, statuses);
        QFETCH(int, requests);
        qsizetype ask = 0;
        StubHttpServer server([&, png = pngOf(Qt::red)](const StubHttpServer::Request &) {
            return StubHttpServer::Response{
                statuses.value(ask), "image/png", png, {{"Cache-Control", cacheControl}}};
        });
        QVERIFY(server.listen());
        // each ask by a new source over one cache; once the server fails, an old copy serves
        bool cached = false;
        for (ask = 0; ask < statuses.size(); ++ask) {
            HttpTileSource source(&m_network, optionsFor(server));
            QSignalSpy tiles(&source, &TileSource::tileLoaded);
            QSignalSpy failed(&source, &TileSource::tileFailed);
            source.requestTile(TileId{3, 4, 2});
            QTRY_COMPARE(tiles.size() + failed.size(), 1);
            cached = cached || statuses.at(ask) == 200;
            QCOMPARE(tiles.size(), cached ? 1 : 0);
        }
        QCOMPARE(server.requests().size(), requests);
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
        const QString path = dir.filePath(u"offline.mbtiles"_s);
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"writer"_s);
            db.setDatabaseName(path);
            QVERIFY(db.open());
            // rows count from the south: XYZ row 1 of 4 is row 2 here
            QVERIFY(QSqlQuery(db).exec(u"CREATE TABLE tiles (zoom_level, "
                                       "tile_column, tile_row, tile_data)"_s));
            QVERIFY(QSqlQuery(db).exec(u"INSERT INTO tiles VALUES (2, 1, 2, X'%1')"_s.arg(
                QString::fromLatin1(pngOf(Qt::red).toHex()))));
        }
        QSqlDatabase::removeDatabase(u"writer"_s);
        MBTilesTileSource source(path);
        QSignalSpy loaded(&source, &TileSource::tileLoaded);
        source.requestTile(TileId{2, 1, 1});
        QTRY_COMPARE(loaded.size(), 1);
        QCOMPARE(loaded.first().at(0).value<TileId>(), (TileId{2, 1, 1}));
    }

    void configurationChoosesTheSource()
    {
        Configuration configuration;
        configuration.set(Configuration::TileUrl, u"http://127.0.0.1:9/{z}/{x}/{y}.png"_s);
        auto web = createConfiguredTileSource(configuration, &m_network, m_cacheDir.path());
        QCOMPARE(qobject_cast<HttpTileSource *>(web.get())->urlFor(TileId{5, 17, 11}).toString(),
                 u"http://127.0.0.1:9/5/17/11.png"_s);
        configuration.mbtiles = m_cacheDir.filePath(u"none.mbtiles"_s);
        // a file that cannot be opened is reported, and the map shows its grid
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot open the MBTiles file"_s));
        QVERIFY(qobject_cast<MBTilesTileSource *>(
            createConfiguredTileSource(configuration, &m_network, m_cacheDir.path()).get()));

        configuration.mbtiles.clear();
        configuration.tileUrl.clear();
        QVERIFY(!createConfiguredTileSource(configuration, &m_network, m_cacheDir.path()));
    }

    void layerDrawsTilesKeptWithTheLines()
    {
        SolidTileSource source;
        SlippyMap map;
        map.setTileSource(&source);
        map.camera().setViewportSize(QSizeF(512, 512));
        map.camera().setZoom(3.0);
        map.camera().setCenterWorld(QPointF(0.5, 0.5));
        const MapOverlayPtr line = std::make_shared<MapPolyline>(
            QList<Coordinate>{map.camera().pointToCoordinate(QPointF(-10, 150)),
                              map.camera().pointToCoordinate(QPointF(520, 150))});
        map.addOverlay(line, MapPolylineRenderer{3.0, QColor(Qt::red)});
        QSignalSpy changed(&map, &SlippyMap::changed);
        map.render();
        QTRY_VERIFY(changed.size() >= 4);
        map.render(); // at rest: the tiles are kept with the line drawn in
        QVERIFY(qRed(map.render().pixel(150, 150)) > 200);
        QCOMPARE(source.requested.size(), 4); // nothing asked twice
        map.removeOverlay(line);
        QCOMPARE(map.render().pixelColor(150, 150), QColor(Qt::blue));
        source.answer = false;
        map.camera().setZoom(4.0); // one level in, before those tiles come: the parents, enlarged
        QCOMPARE(map.render().pixelColor(100, 100), QColor(Qt::blue));
    }
};

TREKMIME_TEST(TileSourceTest)
#include "TileSourceTest.moc"
