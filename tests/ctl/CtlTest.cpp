#include "CtlRun.h"
#include "FileBytes.h"
#include "GpxDocument.h"
#include "TestMain.h"

#include "settings/PreferenceFiles.h"
#include "settings/PropertyList.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <memory>

#include <limits>

namespace {
QVariantMap routeRecord(qint64 start, qint64 end, int count)
{
    QVariantList points;
    for (int i = 0; i < count; ++i)
        points.append(QVariantMap{{u"lat"_s, 10.0 + i}, {u"lng"_s, -20.0 - i}});
    return {{u"enable"_s, u"1"_s},
            {u"start"_s, QString::asprintf("%lld.500000", start)},
            {u"end"_s, QString::asprintf("%lld.000000", end)},
            {u"s"_s, u"A"_s},
            {u"e"_s, u"B"_s},
            {u"points"_s, points}};
}
} // namespace

// trekmime-ctl as scripts use it: what it writes, prints, and answers.
class CtlTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;

    Run ctl(const QStringList &arguments, const QString &preferences = {})
    {
        return runCtl(m_dir->path(),
                      QStringList{u"--preferences-dir"_s,
                                  preferences.isEmpty() ? m_dir->path() : preferences} +
                          arguments);
    }
    Run ctl(const char *arguments) { return ctl(words(arguments)); }
    QStringList files() const { return QDir(m_dir->path()).entryList(QDir::Files); }
    PreferenceFiles prefs() const { return PreferenceFiles(m_dir->path()); }
    QVariant stored(const QString &file, const char *key) const
    {
        return PropertyList::readDictionary(file).value(QString::fromUtf8(key));
    }

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void badInputWritesNothing_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        // usage errors (an unusable option before the folder is even made)
        // answer 2; a favourite that is not there, 1
        for (const char *arguments : {"--tile-cache-mb lots status",
                                      "--routing-url localhost spot on 1 2",
                                      "--mbtiles /nonexistent/m.mbtiles favorites add x 1 2",
                                      "--router routino route plan 1 2 3 4",
                                      "spot on north 1",
                                      "spot on 90.5 1",
                                      "spot on 1 -180.01",
                                      "spot on 1",
                                      "spot",
                                      "teleport",
                                      "mode plane",
                                      "favorites add x nan 1",
                                      "favorites add x 1",
                                      "favorites remove first",
                                      "whitelist toggle",
                                      "route on",
                                      "route on 0 1 1 1 --start 5000000000 --end 1",
                                      "route on 0 1 1 1 --start 0 --end -1",
                                      "route on 1 1 2 2 --start 0 --end 1 --via",
                                      "route plan 1 1 2 2 --via 1;2",
                                      "route plan 1 1 2 2 --via 91,2",
                                      "route plan 1 1 2 2 --via 1,north",
                                      "route plan --gpx t.gpx --via 1,2",
                                      "where --at soon",
                                      "apps",
                                      "apps list --all",
                                      "favorites import /nonexistent.gpx",
                                      "favorites export",
                                      "route on 0 1 1 1 --start 0 --end 1 --speed 5",
                                      "route on 0 1 1 1 --start 0 --speed 0",
                                      ""})
            QTest::newRow(*arguments ? arguments : "no command") << words(arguments) << 2;
        for (const char *arguments :
             {"favorites remove 0", "favorites remove -1", "route export x"})
            QTest::newRow(arguments) << words(arguments) << 1;
    }
    void badInputWritesNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        const QString folder = m_dir->filePath(u"preferences"_s);
        const Run run = ctl(arguments, folder);
        QCOMPARE(run.status, status);
        QVERIFY(run.out.isEmpty());
        // one line, naming the option when one is unusable; no command: the usage listing
        const QString start = arguments.value(0).startsWith(u'-') ? u"--"_s : QString();
        QVERIFY2(arguments.isEmpty() ||
                     (run.err.count(u'\n') == 1 && run.err.startsWith(u"trekmime-ctl: "_s + start)),
                 qPrintable(run.err));
        QVERIFY(start.isEmpty() ? QDir(folder).isEmpty(QDir::Files) : !QFileInfo::exists(folder));
    }

    // A GPX file that cannot be used is refused in one line, and neither the
    // route nor the favourites are written.
    void badGpxFilesWriteNothing_data()
    {
        QTest::addColumn<QByteArray>("xml"); // empty: a file over the size limit
        QTest::addColumn<QString>("error");
        // what the reader refuses is in GpxFileTest; here that its words reach the user
        QTest::newRow("waypoints only") // refused as a route only
            << gpxDocument(R"(<wpt lat="1" lon="2"/>)") << u"holds no track or route points"_s;
        QTest::newRow("latitude out of range")
            << gpxDocument(R"(<rte><rtept lat="1" lon="2"/><rtept lat="-90.5" lon="2"/></rte>)")
            << u"latitude that is not a number from -90 to 90: \"-90.5\""_s;
        QTest::newRow("too large") << QByteArray() << u"larger than 64 MB"_s;
    }
    void badGpxFilesWriteNothing()
    {
        QFETCH(QByteArray, xml);
        QFETCH(QString, error);
        const QString file = m_dir->filePath(u"bad.gpx"_s);
        QVERIFY(writeBytes(file, xml) && (!xml.isEmpty() || QFile::resize(file, 64 << 20 | 1)));
        for (const char *command :
             {"route plan --gpx F", "route on --gpx F --start 0 --end 1",
              "route on --gpx F --start 0 --speed walk", "favorites import F"}) {
            const Run run = ctl(words(command).replaceInStrings(u"F"_s, file));
            const bool refused = !error.startsWith(u"holds no track"_s) || command[0] == 'r';
            QCOMPARE(run.status, refused ? 2 : 0);
            QCOMPARE(run.out.isEmpty(), refused);
            QVERIFY2(!refused || (run.err.contains(error) && run.err.count(u'\n') == 1),
                     qPrintable(run.err));
            QCOMPARE(files().size(), refused ? 1 : 2); // the favourites file only when not refused
        }
    }

    // A directory where the file should be: the write fails, and the tool
    // says so in one line instead of reporting success (after a line on the
    // read, for the commands that read the file first).
    void failedWritesAreReported_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("record");
        QTest::newRow("spot on") << words("spot on 1 2") << u"location"_s;
        QTest::newRow("spot off") << words("spot off") << u"location"_s;
        QTest::newRow("favorites") << words("favorites add x 1 2") << u"favorites"_s;
        QTest::newRow("whitelist") << words("whitelist toggle com.a") << u"whitelist"_s;
        QTest::newRow("mode") << words("mode spot") << u"master"_s;
        QTest::newRow("route off") << words("route off") << u"route"_s;
    }
    void failedWritesAreReported()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, record);
        const QString file = prefs().directory() + u"com.velmora.trekmimex.%1.plist"_s.arg(record);
        QVERIFY(QDir().mkpath(file));
        const Run run = ctl(arguments);
        QCOMPARE(run.status, 1);
        QCOMPARE(run.out, QString());
        QVERIFY2(run.err.endsWith(u"trekmime-ctl: cannot write %1\n"_s.arg(file)),
                 qPrintable(run.err));
        QVERIFY(
            run.err.count(u'\n') == 1 ||
            run.err.startsWith(u"trekmime-ctl: %1 is unreadable (not a regular file)"_s.arg(file)));
    }

    void modeChangesAsTheButtonsDo()
    {
        QCOMPARE(ctl("mode").out, u"route\n"_s);
        PropertyList::write(prefs().routeFile(), routeRecord(1000, 2000, 3));
        Run run = ctl("mode spot");
        QCOMPARE(run.status, 1);
        QVERIFY(run.err.contains(u"Trekmime is working,please turn off the Trekmime first!"_s));
        QVERIFY(!QFile::exists(prefs().masterFile()));

        QCOMPARE(ctl("route off").status, 0);
        QVariantMap off = routeRecord(1000, 2000, 3);
        off.insert(u"enable"_s, u"0"_s);
        QCOMPARE(PropertyList::readDictionary(prefs().routeFile()), off);
        QCOMPARE(ctl("mode spot").status, 0);
        QCOMPARE(stored(prefs().masterFile(), "mode"), QVariant(u"1"_s));

        QCOMPARE(ctl("spot on 22.2846809 114.1588").status, 0);
        QCOMPARE(stored(prefs().locationFile(), "latitude"), QVariant(u"22.284681"_s));
        QCOMPARE(ctl("--json mode").out.simplified(), u"{ \"mode\": 1 }"_s);
        QCOMPARE(ctl("spot off").status, 0);
        QCOMPARE(stored(prefs().locationFile(), "enable"), QVariant(u"0"_s));
    }

    void favoritesWhitelistAndStatus()
    {
        for (const char *name : {"  Home\t", "   "})
            QCOMPARE(
                ctl({u"favorites"_s, u"add"_s, QString::fromUtf8(name), u"-1"_s, u"-2"_s}).status,
                0);
        // a GPX file carries the favourites to another folder unchanged
        const QString gpx = m_dir->filePath(u"places.gpx"_s);
        QCOMPARE(ctl({u"favorites"_s, u"export"_s, gpx}).status, 0);
        QTemporaryDir other;
        QCOMPARE(ctl({u"favorites"_s, u"import"_s, gpx}, other.path()).status, 0);
        QCOMPARE(PropertyList::readArray(PreferenceFiles(other.path()).favoritesFile()),
                 PropertyList::readArray(prefs().favoritesFile()));
        QCOMPARE(ctl("favorites remove 0").status, 0);
        QCOMPARE(ctl("whitelist toggle com.a").out, u"com.a\ton\n"_s);
        QCOMPARE(ctl("whitelist toggle com.b").out, u"com.b\ton\n"_s);
        QCOMPARE(ctl("whitelist toggle com.b").out, u"com.b\toff\n"_s);
        PropertyList::write(prefs().routeFile(), routeRecord(1000, 2000, 4));

        const Run run = ctl("--json status");
        QCOMPARE(run.status, 0);
        const QJsonObject status = QJsonDocument::fromJson(run.out.toUtf8()).object();
        QCOMPARE(status.value(u"mode"_s).toInt(-1), 0);
        const QJsonObject route = status.value(u"route"_s).toObject();
        QCOMPARE(route.value(u"start"_s).toDouble(), 1000.5);
        QCOMPARE(route.value(u"points"_s).toInt(), 4);
        const QJsonValue favorite = status.value(u"favorites"_s).toArray().first();
        QCOMPARE(favorite.toObject().value(u"name"_s).toString(), u"Unknow"_s);
        QCOMPARE(favorite.toObject().value(u"latitude"_s).toDouble(), -1.0);
        QCOMPARE(status.value(u"whitelist"_s).toObject(),
                 (QJsonObject{{u"com.a"_s, true}, {u"com.b"_s, false}}));
    }

    // the arithmetic itself is tested in tests/modes; here the time given
    // and the answer printed
    void where()
    {
        // (1000000 x 3000) wraps negative in 32 bits: outside the list
        PropertyList::write(prefs().routeFile(), routeRecord(0, 2000000, 3000));
        const Run run = ctl("where --at 1000000");
        QCOMPARE(run.status, 1);
        QVERIFY(run.err.contains(u"outside"_s));
        // a point that is no place is named, not printed
        QVariantMap record = routeRecord(0, 10, 1);
        record.insert(u"points"_s,
                      QVariantList{QVariantMap{{u"lat"_s, std::numeric_limits<double>::infinity()},
                                               {u"lng"_s, 1.0}}});
        PropertyList::write(prefs().routeFile(), record);
        const Run bad = ctl("where --at 5");
        QCOMPARE(bad.status, 1);
        QCOMPARE(bad.out, QString());
        QVERIFY2(bad.err.contains(u"route point 0 is unusable"_s), qPrintable(bad.err));
    }
};

TREKMIME_TEST(CtlTest)
#include "CtlTest.moc"
