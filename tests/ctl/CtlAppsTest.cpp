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

    PreferenceFiles files() const
    {
        return PreferenceFiles(m_dir.filePath(QStringLiteral("prefs")));
    }

    Run ctl(const QStringList &arguments)
    {
        return runCtl(m_dir.path(),
                      QStringList{QStringLiteral("--preferences-dir"),
                                  m_dir.filePath(QStringLiteral("prefs"))} +
                          arguments,
                      {{QStringLiteral("XDG_DATA_HOME"), m_dir.filePath(QStringLiteral("home"))},
                       {QStringLiteral("XDG_DATA_DIRS"), m_dir.filePath(QStringLiteral("system"))},
                       {QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                        QStringLiteral("unix:path=") + m_dir.filePath(QStringLiteral("no-bus"))}});
    }

private slots:
    void initTestCase()
    {
        const DesktopEntryFolder home(m_dir.filePath(QStringLiteral("home")));
        const DesktopEntryFolder system(m_dir.filePath(QStringLiteral("system")));
        home.addApplication(QStringLiteral("org.example.Maps"), QStringLiteral("Maps"));
        system.addApplication(QStringLiteral("com.apple.Notes"), QStringLiteral("Notes"));
        system.addApplication(QStringLiteral("org.example.Secret"), QStringLiteral("Secret"), {},
                              true);
        system.addApplication(QStringLiteral("org.example.Hidden"), QStringLiteral("Hidden"), {},
                              true);
        QDir().mkpath(files().directory());
        QVERIFY(PropertyList::write(
            files().whitelistFile(),
            QVariantMap{{QStringLiteral("org.example.Maps"), true},
                        {QStringLiteral("org.example.Secret"), QStringLiteral("1")}}));
    }

    void listsWhatTheWhitelistShows_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("out"); // sorted, then the hide list's additions
        QTest::newRow("all") << words("list")
                             << QStringLiteral("com.apple.Notes\tNotes\t-\n"
                                               "org.example.Maps\tMaps\twhitelisted\n"
                                               "org.example.Secret\tSecret\twhitelisted\n");
        QTest::newRow("user's only") << words("list --user")
                                     << QStringLiteral("org.example.Maps\tMaps\twhitelisted\n"
                                                       "org.example.Secret\tSecret\twhitelisted\n");
        QTest::newRow("running, without a session bus") << words("list --running") << QString();
    }
    void listsWhatTheWhitelistShows()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, out);
        QVERIFY(PropertyList::write(files().hideListFile(),
                                    QVariantMap{{QStringLiteral("org.example.Secret"), true},
                                                {QStringLiteral("org.example.Maps"), true},
                                                {QStringLiteral("org.example.Gone"), true}}));
        const Run run = ctl(QStringList{QStringLiteral("apps")} + arguments);
        QCOMPARE(run.status, 0);
        QStringList shown = run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        // GIO's own order comes before the hidden one the hide list adds
        QVERIFY(shown.isEmpty() ||
                shown.constLast().startsWith(QStringLiteral("org.example.Secret")));
        std::sort(shown.begin(), shown.end());
        QCOMPARE(shown, out.split(QLatin1Char('\n'), Qt::SkipEmptyParts));
    }

    void json()
    {
        QFile::remove(files().hideListFile());
        const Run run = ctl(words("--json apps list --user"));
        QCOMPARE(run.status, 0);
        QCOMPARE(
            QJsonDocument::fromJson(run.out.toUtf8()).array(),
            (QJsonArray{QJsonObject{{QStringLiteral("bundle"), QStringLiteral("org.example.Maps")},
                                    {QStringLiteral("name"), QStringLiteral("Maps")},
                                    {QStringLiteral("whitelisted"), true}}}));
    }
};

TREKMIME_TEST(CtlAppsTest)
#include "CtlAppsTest.moc"
