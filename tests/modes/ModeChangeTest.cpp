#include "FileBytes.h"
#include "TestMain.h"

#include "modes/ModeChange.h"
#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"

#include <QTemporaryDir>

// The one mode change behind both mode buttons and trekmime-ctl: a refusal
// leaves the master file exactly as it was; a change writes it afresh.
class ModeChangeTest : public QObject
{
    Q_OBJECT

private slots:
    void refusalNeverWritesTheMasterFile_data()
    {
        // stored mode, route "enable", location "enable", the button pressed
        // ("stored": the stored mode's); the refusal, or else the new mode
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("outcome");
        const char *route = "Trekmime is working,please turn off the Trekmime first!";
        const char *spot = "Spotmime is working,please turn off the Spotmime first!";
        const auto row = [](const char *name, const char *files, const char *out) {
            QTest::newRow(name) << QString::fromLatin1(files).split(u' ') << QString::fromUtf8(out);
        };
        row("route on", "0 1 0 route", route);
        row("route off, location on", "0 0 1 route", "1");
        row("location on", "1 0 1 location", spot);
        row("location off, route on", "1 1 0 location", "0");
        row("stored route mode, route on", "0 1 0 stored", route);
        row("stored mode 2 asks the location file", "2 1 1 stored", spot);
        row("stored mode x is the route mode", "x 0 1 stored", "1");
    }
    void refusalNeverWritesTheMasterFile()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, outcome);
        QTemporaryDir dir;
        TMPreferenceUtil store{PreferenceFiles(dir.path())};
        const QString master = store.files().masterFile();
        PropertyList::write(master, QVariantMap{{u"mode"_s, files[0]}, {u"theme"_s, u"dark"_s}});
        const QByteArray before = bytesOf(master);
        const QString key = u"enable"_s;
        store.writeRoutePreference(RouteRecord::fromPropertyList(QVariantMap{{key, files[1]}}));
        store.writeLocationPreference(
            LocationRecord::fromPropertyList(QVariantMap{{key, files[2]}}));

        ModeChange change(store);
        const ModeChange::Result result = files[3] == u"route"_s
                                              ? change.fromRouteMode(store.routePreference())
                                          : files[3] == u"location"_s ? change.fromLocationMode()
                                                                      : change.fromStoredMode();
        QCOMPARE(result.written, outcome.size() == 1); // a mode, not a refusal
        QCOMPARE(result.refusal, result.written ? QString() : outcome);
        if (result.refused())
            QCOMPARE(bytesOf(master), before);
        else // the new mode alone: the theme goes
            QCOMPARE(PropertyList::readDictionary(master),
                     (QVariantMap{{u"mode"_s, QString::number(result.mode)}}));
        QCOMPARE(result.refused() ? result.refusal : QString::number(result.mode), outcome);
    }
};

TREKMIME_TEST(ModeChangeTest)
#include "ModeChangeTest.moc"
