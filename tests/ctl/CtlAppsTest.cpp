#include "CtlRun.h"
#include "TestMain.h"

#include "fakes/DesktopEntryFolder.h"
#include "settings/PreferenceFiles.h"
#include "settings/PropertyList.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

// `trekmime-ctl apps list` over desktop entries made here.
class CtlAppsTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    PreferenceFiles files() const { return PreferenceFiles(m_dir.filePath(u"prefs"_s)); }

    Run ctl(const QStringList &arguments)
    {
        return runCtl(
            m_dir.path(),
            QStringList{u"--preferences-dir"_s, m_dir.filePath(u"prefs"_s)} + arguments,
            {{u"XDG_DATA_HOME"_s, m_dir.filePath(u"home"_s)},
             {u"XDG_DATA_DIRS"_s, m_dir.filePath(u"system"_s)},
             {u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path="_s + m_dir.filePath(u"no-bus"_s)}});
    }

private slots:
    void initTestCase()
    {
        const DesktopEntryFolder home(m_dir.filePath(u"home"_s));
        const DesktopEntryFolder system(m_dir.filePath(u"system"_s));
        home.addApplication(u"org.example.Maps"_s, u"Maps"_s);
        system.addApplication(u"com.apple.Notes"_s, u"Notes"_s);
        system.addApplication(u"org.example.Secret"_s, u"Secret"_s, {}, true);
        system.addApplication(u"org.example.Hidden"_s, u"Hidden"_s, {}, true);
        QDir().mkpath(files().directory());
        QVERIFY(PropertyList::write(
            files().whitelistFile(),
            QVariantMap{{u"org.example.Maps"_s, true}, {u"org.example.Secret"_s, u"1"_s}}));
    }

    void listsWhatTheWhitelistShows_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("out"); // sorted, then the hide list's additions
        QTest::newRow("all") << words("list")
                             << u"com.apple.Notes\tNotes\t-\n"
                                "org.example.Maps\tMaps\twhitelisted\n"
                                "org.example.Secret\tSecret\twhitelisted\n"_s;
        QTest::newRow("user's only") << words("list --user")
                                     << u"org.example.Maps\tMaps\twhitelisted\n"
                                        "org.example.Secret\tSecret\twhitelisted\n"_s;
        QTest::newRow("running, without a session bus") << words("list --running") << QString();
    }
    void listsWhatTheWhitelistShows()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, out);
        QVERIFY(PropertyList::write(files().hideListFile(),
                                    QVariantMap{{u"org.example.Secret"_s, true},
                                                {u"org.example.Maps"_s, true},
                                                {u"org.example.Gone"_s, true}}));
        const Run run = ctl(QStringList{u"apps"_s} + arguments);
        QCOMPARE(run.status, 0);
        QStringList shown = run.out.split(u'\n', Qt::SkipEmptyParts);
        // GIO's own order comes before the hidden one the hide list adds
        QVERIFY(shown.isEmpty() || shown.constLast().startsWith(u"org.example.Secret"_s));
        std::sort(shown.begin(), shown.end());
        QCOMPARE(shown, out.split(u'\n', Qt::SkipEmptyParts));
    }

    void json()
    {
        QFile::remove(files().hideListFile());
        const Run run = ctl(words("--json apps list --user"));
        QCOMPARE(run.status, 0);
        QCOMPARE(QJsonDocument::fromJson(run.out.toUtf8()).array(),
                 (QJsonArray{QJsonObject{{u"bundle"_s, u"org.example.Maps"_s},
                                         {u"name"_s, u"Maps"_s},
                                         {u"whitelisted"_s, true}}}));
    }
};

TREKMIME_TEST(CtlAppsTest)
#include "CtlAppsTest.moc"
