#include "TestMain.h"
#include "TestServices.h"

#include "applications/ApplicationList.h"
#include "fakes/FakeApplicationRegistry.h"
#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"

#include <QTest>

namespace {
QStringList bundlesOf(const QList<ApplicationModel> &models)
{
    QStringList bundles;
    for (const ApplicationModel &model : models)
        bundles.append(model.appBundle());
    return bundles;
}
} // namespace

// Which applications the whitelist offers, from a fake registry and a hide
// list written by the test.
class ApplicationListTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    FakeApplicationRegistry m_registry;

    void writeHideList(const QStringList &keys)
    {
        QVariantMap hideList;
        for (const QString &key : keys)
            hideList.insert(key, false); // values are never looked at
        QVERIFY(PropertyList::write(m_world->files().hideListFile(), hideList));
    }

private slots:
    void init()
    {
        m_world = std::make_unique<TestServices>();
        m_registry = FakeApplicationRegistry();
        m_registry.addShown({QStringLiteral("org.gnome.Maps"), QStringLiteral("com.apple.Maps"),
                             QStringLiteral("org.example.Chat")});
        m_registry.add({QStringLiteral("org.example.Hidden"), QStringLiteral("Hidden"), {}, false});
        m_registry.add(
            {QStringLiteral("org.example.AHidden"), QStringLiteral("AHidden"), {}, false});
        m_registry.add({QStringLiteral("org.example.Nameless"), QString(), {}, false});
    }
    void cleanup() { m_world.reset(); }

    void hideListCompletesThePlatformsList_data()
    {
        QTest::addColumn<QStringList>("hideList"); // null: no file
        QTest::addColumn<QStringList>("expected");
        const QStringList shown{QStringLiteral("org.gnome.Maps"), QStringLiteral("com.apple.Maps"),
                                QStringLiteral("org.example.Chat")};
        QTest::newRow("no hide list") << QStringList() << shown;
        QTest::newRow("installed hidden ones appended, in the file's order")
            << QStringList{QStringLiteral("org.example.Hidden"),
                           QStringLiteral("org.example.AHidden")}
            << shown + QStringList{QStringLiteral("org.example.AHidden"),
                                   QStringLiteral("org.example.Hidden")};
        QTest::newRow("already listed, not installed, no name: skipped")
            << QStringList{QStringLiteral("org.example.Chat"), QStringLiteral("org.example.Gone"),
                           QStringLiteral("org.example.Nameless"),
                           QStringLiteral("org.example.Hidden")}
            << shown + QStringList{QStringLiteral("org.example.Hidden")};
    }
    void hideListCompletesThePlatformsList()
    {
        QFETCH(QStringList, hideList);
        QFETCH(QStringList, expected);
        if (!hideList.isEmpty())
            writeHideList(hideList);
        QCOMPARE(ApplicationList::installedAppBundle(m_registry, m_world->preferences()), expected);
        QCOMPARE(bundlesOf(ApplicationList::installedAppModel(m_registry, m_world->preferences())),
                 expected);
    }

    void recordsAreFilledAfresh()
    {
        writeHideList({QStringLiteral("org.example.Hidden")});
        const QList<ApplicationModel> models =
            ApplicationList::installedAppModel(m_registry, m_world->preferences());
        QCOMPARE(models.size(), 4);
        const ApplicationModel &chat = models.at(2);
        QCOMPARE(chat.appName(), QStringLiteral("Chat"));
        QVERIFY(!chat.appIcon().isNull());
        QCOMPARE(chat.appIconBig(), chat.appIcon());
        QVERIFY(models.at(3).appIcon().isNull()); // a hidden one without an icon
        for (const ApplicationModel &model : models)
            QCOMPARE(m_registry.iconQueries.value(model.appBundle()), 2);

        // nothing is kept: a second list asks everything again
        const int asked = m_registry.iconQueries.value(QStringLiteral("org.example.Chat"));
        ApplicationList::installedAppModel(m_registry, m_world->preferences());
        QCOMPARE(m_registry.iconQueries.value(QStringLiteral("org.example.Chat")), 2 * asked);
        QCOMPARE(m_registry.identifierQueries, 2);
    }

    void duplicatesAndOrderAreKept()
    {
        const QList<ApplicationModel> models = ApplicationModel::appModelListWithAppList(
            m_registry, {QStringLiteral("org.example.Chat"), QStringLiteral("org.example.Gone"),
                         QStringLiteral("org.example.Chat")});
        QCOMPARE(bundlesOf(models), (QStringList{QStringLiteral("org.example.Chat"),
                                                 QStringLiteral("org.example.Gone"),
                                                 QStringLiteral("org.example.Chat")}));
        QVERIFY(models.at(1).appName().isNull()); // no fallback to the identifier
    }

    void userListDropsThePlatformMakersApplications_data()
    {
        QTest::addColumn<QString>("bundle");
        QTest::addColumn<bool>("inUserList");
        QTest::newRow("maker's application") << QStringLiteral("com.apple.Maps") << false;
        QTest::newRow("look-alike without the second point")
            << QStringLiteral("com.applemaps") << true;
        QTest::newRow("another case") << QStringLiteral("com.Apple.Maps") << true;
    }
    void userListDropsThePlatformMakersApplications()
    {
        QFETCH(QString, bundle);
        QFETCH(bool, inUserList);
        m_registry.addShown({bundle});
        QVERIFY(bundlesOf(ApplicationList::installedAppModel(m_registry, m_world->preferences()))
                    .contains(bundle));
        const QStringList user =
            bundlesOf(ApplicationList::installedUserAppModel(m_registry, m_world->preferences()));
        QCOMPARE(user.contains(bundle), inUserList);
        QCOMPARE(user.first(), QStringLiteral("org.gnome.Maps")); // order kept
    }

    void runningApplicationsComeFromTheRegistry()
    {
        m_registry.running = {QStringLiteral("org.example.Chat"),
                              QStringLiteral("org.example.Gone")};
        QCOMPARE(ApplicationList::currentRunningAppBundle(m_registry),
                 QStringList{QStringLiteral("org.example.Chat")});
    }

    void proxiesLeaveOutTheHiddenServices()
    {
        QCOMPARE(ApplicationList::identifierArrayFromProxyArray(
                     {{QStringLiteral("com.apple.springboard")},
                      {QStringLiteral("org.gnome.Maps")},
                      {QStringLiteral("com.apple.StoreDemoViewService")},
                      {QStringLiteral("com.apple.Springboard")}}),
                 (QStringList{QStringLiteral("org.gnome.Maps"),
                              QStringLiteral("com.apple.Springboard")}));
    }
};

TREKMIME_TEST(ApplicationListTest)
#include "ApplicationListTest.moc"
