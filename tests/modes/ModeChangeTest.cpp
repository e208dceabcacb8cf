#include "TestMain.h"

#include "modes/ModeChange.h"
#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {
QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVariantMap enable(const QString &flag)
{
    return {{QStringLiteral("enable"), flag}};
}
} // namespace

// The one mode change behind both mode buttons and trekmime-ctl: a refusal
// leaves the master file exactly as it was; a change writes it afresh.
class ModeChangeTest : public QObject
{
    Q_OBJECT

private slots:
    void refusalNeverWritesTheMasterFile_data()
    {
        // stored mode, route and location "enable", the button pressed
        // (route, location, or stored: the stored mode's), and the refusal
        // or, when there is none, the new mode
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<QString>("newMode");
        const QString route =
            QStringLiteral("Trekmime is working,please turn off the Trekmime first!");
        const QString spot =
            QStringLiteral("Spotmime is working,please turn off the Spotmime first!");
        auto files = [](const char *mode, const char *routeOn, const char *spotOn) {
            return QStringList{QLatin1String(mode), QLatin1String(routeOn), QLatin1String(spotOn)};
        };
        QTest::newRow("route on") << files("0", "1", "0") << "route" << route << "";
        QTest::newRow("route off, location on") << files("0", "0", "1") << "route"
                                                << ""
                                                << "1";
        QTest::newRow("location on") << files("1", "0", "1") << "location" << spot << "";
        QTest::newRow("location off, route on") << files("1", "1", "0") << "location"
                                                << ""
                                                << "0";
        QTest::newRow("stored route mode, route on")
            << files("0", "1", "0") << "stored" << route << "";
        QTest::newRow("stored mode 2 asks the location file")
            << files("2", "1", "1") << "stored" << spot << "";
        QTest::newRow("stored mode x is the route mode") << files("x", "0", "1") << "stored"
                                                         << ""
                                                         << "1";
    }
    void refusalNeverWritesTheMasterFile()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, button);
        QFETCH(QString, refusal);
        QFETCH(QString, newMode);
        QTemporaryDir dir;
        TMPreferenceUtil store{PreferenceFiles(dir.path())};
        const QString master = store.files().masterFile();
        PropertyList::write(master, QVariantMap{{QStringLiteral("mode"), files[0]},
                                                {QStringLiteral("theme"), QStringLiteral("dark")}});
        const QByteArray before = bytesOf(master);
        store.writeRoutePreference(RouteRecord::fromPropertyList(enable(files[1])));
        store.writeLocationPreference(LocationRecord::fromPropertyList(enable(files[2])));

        ModeChange change(store);
        const ModeChange::Result result =
            button == QLatin1String("route")      ? change.fromRouteMode(store.routePreference())
            : button == QLatin1String("location") ? change.fromLocationMode()
                                                  : change.fromStoredMode();
        QCOMPARE(result.refusal, refusal);
        QCOMPARE(result.written, refusal.isEmpty());
        if (result.refused()) {
            QCOMPARE(bytesOf(master), before);
        } else {
            QCOMPARE(QString::number(result.mode), newMode);
            // a fresh one-key dictionary: the other key is gone
            QCOMPARE(PropertyList::readDictionary(master),
                     (QVariantMap{{QStringLiteral("mode"), newMode}}));
        }
    }
};

TREKMIME_TEST(ModeChangeTest)
#include "ModeChangeTest.moc"
