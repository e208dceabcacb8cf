#include "CtlRun.h"
#include "TestMain.h"

#include "settings/PreferenceFiles.h"
#include "settings/PropertyList.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {
QStringList args(std::initializer_list<const char *> words)
{
    QStringList result;
    for (const char *word : words)
        result.append(QString::fromUtf8(word));
    return result;
}

QVariantMap routeRecord(qint64 start, qint64 end, int count)
{
    QVariantList points;
    for (int i = 0; i < count; ++i)
        points.append(
            QVariantMap{{QStringLiteral("lat"), 10.0 + i}, {QStringLiteral("lng"), -20.0 - i}});
    return {{QStringLiteral("enable"), QStringLiteral("1")},
            {QStringLiteral("start"), QString::asprintf("%lld.500000", start)},
            {QStringLiteral("end"), QString::asprintf("%lld.000000", end)},
            {QStringLiteral("s"), QStringLiteral("A")},
            {QStringLiteral("e"), QStringLiteral("B")},
            {QStringLiteral("points"), points}};
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
                      QStringList{QStringLiteral("--preferences-dir"),
                                  preferences.isEmpty() ? m_dir->path() : preferences} +
                          arguments);
    }
    QStringList files() const { return QDir(m_dir->path()).entryList(QDir::Files); }
    PreferenceFiles prefs() const { return PreferenceFiles(m_dir->path()); }

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void spotOnStoresTheContractsStrings()
    {
        const Run run = ctl({QStringLiteral("spot"), QStringLiteral("on"),
                             QStringLiteral("22.2846809"), QStringLiteral("114.1588")});
        QCOMPARE(run.status, 0);
        QCOMPARE(PropertyList::readDictionary(prefs().locationFile()),
                 (QVariantMap{{QStringLiteral("enable"), QStringLiteral("1")},
                              {QStringLiteral("latitude"), QStringLiteral("22.284681")},
                              {QStringLiteral("longitude"), QStringLiteral("114.158800")}}));
        QCOMPARE(ctl({QStringLiteral("spot"), QStringLiteral("off")}).status, 0);
        QCOMPARE(
            PropertyList::readDictionary(prefs().locationFile()).value(QStringLiteral("enable")),
            QVariant(QStringLiteral("0")));
        QCOMPARE(
            PropertyList::readDictionary(prefs().locationFile()).value(QStringLiteral("latitude")),
            QVariant(QStringLiteral("22.284681")));
    }

    void badInputWritesNothing_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::newRow("latitude not a number") << args({"spot", "on", "north", "1"}) << 2;
        QTest::newRow("latitude above 90") << args({"spot", "on", "90.5", "1"}) << 2;
        QTest::newRow("longitude below -180") << args({"spot", "on", "1", "-180.01"}) << 2;
        QTest::newRow("one coordinate") << args({"spot", "on", "1"}) << 2;
        QTest::newRow("spot without action") << args({"spot"}) << 2;
        QTest::newRow("unknown command") << args({"teleport"}) << 2;
        QTest::newRow("unknown mode") << args({"mode", "plane"}) << 2;
        QTest::newRow("favorite with nan") << args({"favorites", "add", "x", "nan", "1"}) << 2;
        QTest::newRow("favorite missing longitude") << args({"favorites", "add", "x", "1"}) << 2;
        QTest::newRow("remove index not a number") << args({"favorites", "remove", "first"}) << 2;
        QTest::newRow("remove index out of range") << args({"favorites", "remove", "0"}) << 1;
        QTest::newRow("remove negative index") << args({"favorites", "remove", "-1"}) << 1;
        QTest::newRow("toggle without bundle") << args({"whitelist", "toggle"}) << 2;
        QTest::newRow("route verb") << args({"route", "on"}) << 2;
        QTest::newRow("where with a bad time") << args({"where", "--at", "soon"}) << 2;
        QTest::newRow("no command") << QStringList() << 2;
    }
    void badInputWritesNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        const Run run = ctl(arguments);
        QCOMPARE(run.status, status);
        QVERIFY(run.out.isEmpty());
        // one clear line (usage listings for a missing command aside)
        if (!arguments.isEmpty())
            QCOMPARE(run.err.count(QLatin1Char('\n')), 1);
        QCOMPARE(files(), QStringList());
    }

    void unusableConfigurationStopsBeforeTheFolderIsMade_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("cache size") << args({"--tile-cache-mb", "lots", "status"});
        QTest::newRow("URL") << args({"--routing-url", "localhost", "spot", "on", "1", "2"});
        QTest::newRow("MBTiles file")
            << args({"--mbtiles", "/nonexistent/map.mbtiles", "favorites", "add", "x", "1", "2"});
    }
    void unusableConfigurationStopsBeforeTheFolderIsMade()
    {
        QFETCH(QStringList, arguments);
        const QString folder = m_dir->filePath(QStringLiteral("preferences"));
        const Run run = ctl(arguments, folder);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err.count(QLatin1Char('\n')), 1);
        QVERIFY2(run.err.startsWith(QStringLiteral("trekmime-ctl: --")), qPrintable(run.err));
        QVERIFY(!QFileInfo::exists(folder));
    }

    // A directory where the file should be: the write fails, and the tool
    // says so in one line instead of reporting success.
    void failedWritesAreReported_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("record");
        QTest::newRow("spot on") << args({"spot", "on", "1", "2"}) << QStringLiteral("location");
        QTest::newRow("spot off") << args({"spot", "off"}) << QStringLiteral("location");
        QTest::newRow("favorites add")
            << args({"favorites", "add", "x", "1", "2"}) << QStringLiteral("favorites");
        QTest::newRow("whitelist toggle")
            << args({"whitelist", "toggle", "com.a"}) << QStringLiteral("whitelist");
        QTest::newRow("mode") << args({"mode", "spot"}) << QStringLiteral("master");
        QTest::newRow("route off") << args({"route", "off"}) << QStringLiteral("route");
    }
    void failedWritesAreReported()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, record);
        const QString file =
            prefs().directory() + QStringLiteral("com.velmora.trekmimex.%1.plist").arg(record);
        QVERIFY(QDir().mkpath(file));
        const Run run = ctl(arguments);
        QCOMPARE(run.status, 1);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err, QStringLiteral("trekmime-ctl: cannot write %1\n").arg(file));
    }

    void modeChangesAsTheButtonsDo()
    {
        QCOMPARE(ctl({QStringLiteral("mode")}).out.trimmed(), QStringLiteral("route"));
        PropertyList::write(prefs().routeFile(), routeRecord(0, 10, 2));
        Run run = ctl({QStringLiteral("mode"), QStringLiteral("spot")});
        QCOMPARE(run.status, 1);
        QVERIFY(run.err.contains(
            QStringLiteral("Trekmime is working,please turn off the Trekmime first!")));
        QVERIFY(!QFile::exists(prefs().masterFile()));

        QCOMPARE(ctl({QStringLiteral("route"), QStringLiteral("off")}).status, 0);
        QCOMPARE(ctl({QStringLiteral("mode"), QStringLiteral("spot")}).status, 0);
        QCOMPARE(PropertyList::readDictionary(prefs().masterFile()),
                 (QVariantMap{{QStringLiteral("mode"), QStringLiteral("1")}}));

        QCOMPARE(ctl({QStringLiteral("spot"), QStringLiteral("on")}).status, 0);
        run = ctl({QStringLiteral("mode"), QStringLiteral("route")});
        QCOMPARE(run.status, 1);
        QVERIFY(run.err.contains(
            QStringLiteral("Spotmime is working,please turn off the Spotmime first!")));
        QCOMPARE(ctl({QStringLiteral("--json"), QStringLiteral("mode")}).out.simplified(),
                 QStringLiteral("{ \"mode\": 1 }"));
    }

    void routeOffChangesOnlyTheFlag()
    {
        const QVariantMap before = routeRecord(1000, 2000, 3);
        PropertyList::write(prefs().routeFile(), before);
        QCOMPARE(ctl({QStringLiteral("route"), QStringLiteral("off")}).status, 0);
        QVariantMap expected = before;
        expected.insert(QStringLiteral("enable"), QStringLiteral("0"));
        QCOMPARE(PropertyList::readDictionary(prefs().routeFile()), expected);
    }

    void favoritesAndWhitelist()
    {
        QCOMPARE(ctl(args({"favorites", "add", "  Home\t", "48.85", "2.29"})).status, 0);
        QCOMPARE(ctl(args({"favorites", "add", "   ", "-1", "-2"})).status, 0);
        QCOMPARE(ctl(args({"favorites", "add", "Work", "1", "2"})).status, 0);
        QCOMPARE(ctl(args({"favorites", "remove", "0"})).status, 0);
        const QVariantList favorites = PropertyList::readArray(prefs().favoritesFile());
        QCOMPARE(favorites.size(), 2);
        QCOMPARE(favorites[0].toMap().value(QStringLiteral("name")),
                 QVariant(QStringLiteral("Unknow")));
        QCOMPARE(favorites[0].toMap().value(QStringLiteral("latitude")),
                 QVariant(QStringLiteral("-1.000000")));
        QCOMPARE(favorites[1].toMap().value(QStringLiteral("name")),
                 QVariant(QStringLiteral("Work")));

        QCOMPARE(ctl(args({"whitelist", "toggle", "com.example.maps"})).out.trimmed(),
                 QStringLiteral("com.example.maps\ton"));
        QCOMPARE(ctl(args({"whitelist", "toggle", "com.example.maps"})).out.trimmed(),
                 QStringLiteral("com.example.maps\toff"));
        QCOMPARE(PropertyList::readDictionary(prefs().whitelistFile()),
                 (QVariantMap{{QStringLiteral("com.example.maps"), false}}));
    }

    void statusAsJson()
    {
        PropertyList::write(prefs().routeFile(), routeRecord(1000, 2000, 4));
        ctl(args({"spot", "on", "22.2846809", "114.1588"}));
        ctl(args({"favorites", "add", "Home", "1.5", "2.5"}));
        ctl(args({"whitelist", "toggle", "com.a"}));
        const Run run = ctl(args({"--json", "status"}));
        QCOMPARE(run.status, 0);
        const QJsonObject status = QJsonDocument::fromJson(run.out.toUtf8()).object();
        QCOMPARE(status.value(QStringLiteral("mode")).toInt(-1), 0);
        const QJsonObject location = status.value(QStringLiteral("location")).toObject();
        QCOMPARE(location.value(QStringLiteral("enable")).toBool(), true);
        QCOMPARE(location.value(QStringLiteral("latitude")).toDouble(), 22.284681);
        const QJsonObject route = status.value(QStringLiteral("route")).toObject();
        QCOMPARE(route.value(QStringLiteral("start")).toDouble(), 1000.5);
        QCOMPARE(route.value(QStringLiteral("points")).toInt(), 4);
        QCOMPARE(route.value(QStringLiteral("s")).toString(), QStringLiteral("A"));
        QCOMPARE(status.value(QStringLiteral("favorites"))
                     .toArray()
                     .first()
                     .toObject()
                     .value(QStringLiteral("name"))
                     .toString(),
                 QStringLiteral("Home"));
        QCOMPARE(status.value(QStringLiteral("whitelist"))
                     .toObject()
                     .value(QStringLiteral("com.a"))
                     .toBool(),
                 true);

        PropertyList::write(prefs().routeFile(), QVariantMap());
        const QJsonObject empty =
            QJsonDocument::fromJson(ctl(args({"--json", "status"})).out.toUtf8()).object();
        QVERIFY(
            empty.value(QStringLiteral("route")).toObject().value(QStringLiteral("s")).isNull());
    }

    void anotherPlistReaderSeesTheContract()
    {
        // Python's plistlib stands in for the hooking component's reader:
        // roots, keys, value types and strings as they must be.
        ctl(args({"spot", "on", "22.2846809", "114.1588"}));
        ctl(args({"favorites", "add", " Café <1> ", "-33.8568", "151.2153"}));
        ctl(args({"whitelist", "toggle", "com.example.maps"}));
        ctl(args({"mode", "spot"}));
        PropertyList::write(prefs().routeFile(), routeRecord(1000, 2000, 2));
        ctl(args({"route", "off"}));
        const char *script = R"(
import json, plistlib, sys
def describe(v):
    if isinstance(v, dict): return {k: describe(x) for k, x in v.items()}
    if isinstance(v, list): return [describe(x) for x in v]
    return [type(v).__name__, v]
out = {}
for name in ("route", "location", "favorites", "whitelist", "master"):
    with open(sys.argv[1] + "/com.velmora.trekmimex." + name + ".plist", "rb") as f:
        out[name] = describe(plistlib.load(f))
print(json.dumps(out))
)";
        QProcess python;
        python.start(QStringLiteral("python3"),
                     {QStringLiteral("-c"), QString::fromUtf8(script), m_dir->path()});
        QVERIFY2(python.waitForFinished(20000), "python3 is installed by scripts/setup");
        QCOMPARE(python.exitCode(), 0);
        const QJsonObject seen = QJsonDocument::fromJson(python.readAllStandardOutput()).object();
        auto typed = [](const char *type, const QJsonValue &value) {
            return QJsonArray{QString::fromUtf8(type), value};
        };
        QCOMPARE(seen.value(QStringLiteral("location")).toObject(),
                 (QJsonObject{
                     {QStringLiteral("enable"), typed("str", QStringLiteral("1"))},
                     {QStringLiteral("latitude"), typed("str", QStringLiteral("22.284681"))},
                     {QStringLiteral("longitude"), typed("str", QStringLiteral("114.158800"))}}));
        QCOMPARE(seen.value(QStringLiteral("favorites")).toArray(),
                 (QJsonArray{QJsonObject{
                     {QStringLiteral("latitude"), typed("str", QStringLiteral("-33.856800"))},
                     {QStringLiteral("longitude"), typed("str", QStringLiteral("151.215300"))},
                     {QStringLiteral("name"), typed("str", QStringLiteral("Café <1>"))}}}));
        QCOMPARE(seen.value(QStringLiteral("whitelist")).toObject(),
                 (QJsonObject{{QStringLiteral("com.example.maps"), typed("bool", true)}}));
        QCOMPARE(seen.value(QStringLiteral("master")).toObject(),
                 (QJsonObject{{QStringLiteral("mode"), typed("str", QStringLiteral("1"))}}));
        const QJsonObject route = seen.value(QStringLiteral("route")).toObject();
        QCOMPARE(route.value(QStringLiteral("enable")).toArray(),
                 typed("str", QStringLiteral("0")));
        QCOMPARE(route.value(QStringLiteral("start")).toArray(),
                 typed("str", QStringLiteral("1000.500000")));
        QCOMPARE(route.value(QStringLiteral("points"))
                     .toArray()
                     .at(1)
                     .toObject()
                     .value(QStringLiteral("lat"))
                     .toArray(),
                 typed("float", 11.0));
    }

    // the arithmetic itself is tested in tests/modes; here the time given
    // and the answer printed
    void whereFollowsThePreviewArithmetic_data()
    {
        QTest::addColumn<qint64>("start");
        QTest::addColumn<qint64>("end");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("at");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("printed");
        QTest::newRow("halfway") << 1000ll << 2000ll << 10 << QStringLiteral("1500") << 0
                                 << QStringLiteral("15.000000 -25.000000");
        QTest::newRow("index truncates toward zero")
            << 1000ll << 2000ll << 10 << QStringLiteral("1199.99") << 0
            << QStringLiteral("11.000000 -21.000000");
        // (1000000 x 5000) wraps to 705032704 in 32 bits: index 352, not 2500
        QTest::newRow("long trip wraps") << 0ll << 2000000ll << 5000 << QStringLiteral("1000000")
                                         << 0 << QStringLiteral("362.000000 -372.000000");
        // (1000000 x 3000) wraps negative: outside the list
        QTest::newRow("wrapped index outside the list")
            << 0ll << 2000000ll << 3000 << QStringLiteral("1000000") << 1 << QStringLiteral("");
    }
    void whereFollowsThePreviewArithmetic()
    {
        QFETCH(qint64, start);
        QFETCH(qint64, end);
        QFETCH(int, count);
        QFETCH(QString, at);
        QFETCH(int, status);
        QFETCH(QString, printed);
        PropertyList::write(prefs().routeFile(), routeRecord(start, end, count));
        const Run run = ctl({QStringLiteral("where"), QStringLiteral("--at"), at});
        QCOMPARE(run.status, status);
        QCOMPARE(run.out.trimmed(), printed);
        if (status != 0)
            QVERIFY(run.err.contains(QStringLiteral("outside")));
    }
};

TREKMIME_TEST(CtlTest)
#include "CtlTest.moc"
